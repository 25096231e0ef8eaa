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

#include "orve-mailserver/host/fine_consegna.h"
#include "orve-mailserver/host/oggetto.h"

namespace orve::host {

struct MapiMessage {
  std::int32_t Reserved = 0;
  std::string Subject;
  std::string NoteText;
  std::string MessageType;
  std::string DateReceived;
  std::string ConversationID;
  std::int32_t Flags = 0;
  std::int32_t RecipCount = 0;
  std::int32_t FileCount = 0;
};

struct MapiRecip {
  std::int32_t Reserved = 0;
  std::int32_t RecipClass = 0;  // 1 To, 2 Cc, 3 Bcc
  std::string Name;             // a name, "<", the address and ">"
  std::string Address;
  std::int32_t EIDSize = 0;
  std::string EntryID;
};

struct MapiFile {
  std::int32_t Reserved = 0;
  std::int32_t Flags = 0;
  std::int32_t Position = 0;  // place in the body in characters; -1: wherever the library likes
  std::string PathName;
  std::string FileName;  // the name that the recipient sees
  std::string FileType;
};

/// A window or session handle; 0 is none.
using ManigliaMapi = std::uintptr_t;

/// Each function returns 0 on success, else one of the library's error numbers.
class Mapi32 : public Oggetto {
 public:
  /// Opens a session and writes its handle into `sessione`. flags: 1 the logon dialog is allowed, 2 a new
  /// session. An empty profile is the default one.
  virtual std::int32_t MAPILogon(ManigliaMapi finestra, const std::string& profilo,
                                 const std::string& password, std::int32_t flags, std::int32_t riservato,
                                 ManigliaMapi& sessione) = 0;
  /// Sends one message; the counts in its record say how many of the arrays' records are used. Session 0 lets
  /// the library use the one that is open. flags 0: no dialog.
  virtual std::int32_t BMAPISendMail(ManigliaMapi sessione, ManigliaMapi finestra, MapiMessage& messaggio,
                                     const std::vector<MapiRecip>& destinatari,
                                     const std::vector<MapiFile>& file, std::int32_t flags,
                                     std::int32_t riservato) = 0;
  virtual std::int32_t MAPILogoff(ManigliaMapi sessione, ManigliaMapi finestra, std::int32_t flags,
                                  std::int32_t riservato) = 0;
  /// What the library itself can tell of its last call.
  [[nodiscard]] virtual FineConsegna Fine() const { return {}; }
};

}  // namespace orve::host
