// The three functions of MAPI32.DLL that send a message, and their records. Names, fields and numbers are the
// library's published ones.
//
// A caller passes its records as arrays. The texts of the message record are converted to the single-byte
// code page on their way into the library, with "?" for what it lacks, and back again; the records of the
// arrays go as they are.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/fine_consegna.h"
#include "orve-mailserver/host/oggetto.h"

namespace orve::host {

/// The message.
struct ORVE_API MapiMessage {
  std::int32_t Reserved = 0;    ///< 0
  std::string Subject;          ///< the subject
  std::string NoteText;         ///< the body, plain text
  std::string MessageType;      ///< empty for a mail message
  std::string DateReceived;     ///< empty for a message to be sent
  std::string ConversationID;   ///< the conversation that it belongs to; empty: none
  std::int32_t Flags = 0;       ///< 2 asks for a read receipt
  std::int32_t RecipCount = 0;  ///< how many recipients of the array are used
  std::int32_t FileCount = 0;   ///< how many files of the array are used
};

/// One recipient.
struct ORVE_API MapiRecip {
  std::int32_t Reserved = 0;    ///< 0
  std::int32_t RecipClass = 0;  ///< 1 To, 2 Cc, 3 Bcc
  std::string Name;             ///< a name, "<", the address and ">"
  std::string Address;          ///< empty where Name holds it
  std::int32_t EIDSize = 0;     ///< size of EntryID in bytes
  std::string EntryID;          ///< the library's own identifier; empty: none
};

/// One attachment.
struct ORVE_API MapiFile {
  std::int32_t Reserved = 0;  ///< 0
  std::int32_t Flags = 0;     ///< 0 a file
  std::int32_t Position = 0;  ///< place in the body in characters; -1: wherever the library likes
  std::string PathName;       ///< full path, with `\` between its components
  std::string FileName;       ///< the name that the recipient sees
  std::string FileType;       ///< empty: the library finds it out
};

/// A window or session handle; 0 is none.
using MapiHandle = std::uintptr_t;

/// Each function returns 0 on success, else one of the library's error numbers.
class ORVE_API Mapi32 : public Oggetto {
 public:
  /// Opens a session and writes its handle into `sessione`. flags: 1 the logon dialog is allowed, 2 a new
  /// session. An empty profile is the default one.
  virtual std::int32_t MAPILogon(MapiHandle finestra, const std::string& profilo, const std::string& password,
                                 std::int32_t flags, std::int32_t riservato, MapiHandle& sessione) = 0;
  /// Sends one message; the counts in its record say how many of the arrays' records are used. Session 0 lets
  /// the library use the one that is open. flags 0: no dialog.
  virtual std::int32_t BMAPISendMail(MapiHandle sessione, MapiHandle finestra, MapiMessage& messaggio,
                                     const std::vector<MapiRecip>& destinatari,
                                     const std::vector<MapiFile>& file, std::int32_t flags,
                                     std::int32_t riservato) = 0;
  /// Closes a session; flags and the reserved number are 0.
  virtual std::int32_t MAPILogoff(MapiHandle sessione, MapiHandle finestra, std::int32_t flags,
                                  std::int32_t riservato) = 0;
  /// What the library itself can tell of its last call.
  [[nodiscard]] virtual FineConsegna Fine() const { return {}; }
};

}  // namespace orve::host
