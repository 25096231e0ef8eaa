// The three functions of MAPI32.DLL, in the form meant for callers that hold their texts as automation's
// texts and pass their records as automation's arrays.
//
// The library is looked for at the first call, in the system's folder alone, and stays loaded: the mail
// programs behind it cannot cope with being unloaded.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "orve-mailserver/host/mapi32.h"

namespace orve::adapters::win32 {

// The records as the library reads them: natural alignment at either pointer width.

struct MapiMessageRecord {
  std::uint32_t Reserved;
  BSTR Subject;  // single-byte texts of automation
  BSTR NoteText;
  BSTR MessageType;
  BSTR DateReceived;
  BSTR ConversationID;
  std::uint32_t Flags;
  std::uint32_t RecipCount;
  std::uint32_t FileCount;
};

struct MapiRecipRecord {
  std::uint32_t Reserved;
  std::uint32_t RecipClass;
  BSTR Name;  // UTF-16 as it is, as everywhere in the arrays
  BSTR Address;
  std::uint32_t EIDSize;
  BSTR EntryID;
};

struct MapiFileRecord {
  std::uint32_t Reserved;
  std::uint32_t Flags;
  std::uint32_t Position;
  BSTR PathName;
  BSTR FileName;
  BSTR FileType;
};

#ifdef _WIN64
static_assert(sizeof(MapiMessageRecord) == 64 && sizeof(MapiRecipRecord) == 40 &&
              sizeof(MapiFileRecord) == 40);
#else
static_assert(sizeof(MapiMessageRecord) == 36 && sizeof(MapiRecipRecord) == 24 &&
              sizeof(MapiFileRecord) == 24);
#endif

static_assert(offsetof(MapiMessageRecord, Subject) == sizeof(void*) &&
              offsetof(MapiMessageRecord, Flags) == 6 * sizeof(void*) &&
              offsetof(MapiRecipRecord, Name) == 8 &&
              offsetof(MapiRecipRecord, EIDSize) == 8 + 2 * sizeof(void*) &&
              offsetof(MapiRecipRecord, EntryID) == 8 + 3 * sizeof(void*) &&
              offsetof(MapiFileRecord, Position) == 8 &&
              offsetof(MapiFileRecord, PathName) == 8 + sizeof(void*));

class Mapi32Win32 final : public host::Mapi32 {
 public:
  explicit Mapi32Win32(std::wstring libreria = L"MAPI32.DLL") : libreria_(std::move(libreria)) {}

  // Each raises 53 on a machine without the library, and 453 when the library lacks the function.

  std::int32_t MAPILogon(host::MapiHandle finestra, const std::string& profilo, const std::string& password,
                         std::int32_t flags, std::int32_t riservato, host::MapiHandle& sessione) override;
  /// Raises 9 when a count of the message record goes beyond its array.
  std::int32_t BMAPISendMail(host::MapiHandle sessione, host::MapiHandle finestra,
                             host::MapiMessage& messaggio, const std::vector<host::MapiRecip>& destinatari,
                             const std::vector<host::MapiFile>& file, std::int32_t flags,
                             std::int32_t riservato) override;
  std::int32_t MAPILogoff(host::MapiHandle sessione, host::MapiHandle finestra, std::int32_t flags,
                          std::int32_t riservato) override;

 private:
  std::wstring libreria_;
};

}  // namespace orve::adapters::win32
