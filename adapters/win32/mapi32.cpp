#include "win32/mapi32.h"

#include <array>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "orve-mailserver/host/errore.h"
#include "win32/com_ptr.h"
#include "win32/conversions.h"

namespace orve::adapters::win32 {

namespace {

constexpr const char* kSorgenteMapi = "ORVE_MAILSERVER";
enum : std::int32_t { kFileNonTrovato = 53, kIngressoNonTrovato = 453 };

using Logon = ULONG(WINAPI*)(ULONG_PTR, LPSTR, LPSTR, ULONG, ULONG, ULONG_PTR*);
using SendMail = ULONG(WINAPI*)(ULONG_PTR, ULONG_PTR, MapiMessageRecord*, SAFEARRAY**, SAFEARRAY**, ULONG,
                                ULONG);
using Logoff = ULONG(WINAPI*)(ULONG_PTR, ULONG_PTR, ULONG, ULONG);

HMODULE Libreria(const std::wstring& nome) {
  // Not from the current folder, nor from the program's, where anybody may have left a library of that name.
  HMODULE libreria = LoadLibraryExW(nome.c_str(), nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  if (libreria == nullptr) {
    throw host::Errore(kFileNonTrovato, kSorgenteMapi, "Impossibile trovare il file " + ToUtf8(nome));
  }
  return libreria;
}

template <class Funzione>
Funzione Ingresso(const std::wstring& libreria, const char* nome) {
  const FARPROC ingresso = GetProcAddress(Libreria(libreria), nome);
  if (ingresso == nullptr) {
    throw host::Errore(
        kIngressoNonTrovato, kSorgenteMapi,
        std::string("Impossibile trovare il punto di ingresso ") + nome + " nella DLL " + ToUtf8(libreria));
  }
  // The declared type of the library's function; the detour tells the compiler that this is intended.
  return reinterpret_cast<Funzione>(reinterpret_cast<void*>(ingresso));
}

// Single-byte text, held as automation holds its texts.
BSTR SingoloByte(std::string_view testo) {
  const std::string byte = ToSingleByte(testo);
  BSTR fatto = SysAllocStringByteLen(byte.data(), static_cast<UINT>(byte.size()));
  if (fatto == nullptr) throw std::bad_alloc();
  return fatto;
}

std::string DaSingoloByte(BSTR testo) {
  if (testo == nullptr) return {};
  return FromSingleByte({reinterpret_cast<const char*>(testo), SysStringByteLen(testo)});
}

class RecordMessaggio {
 public:
  // Delegates to the empty record, so that the texts made so far are freed if memory runs out.
  explicit RecordMessaggio(const host::MapiMessage& messaggio) : RecordMessaggio() {
    record_.Reserved = static_cast<std::uint32_t>(messaggio.Reserved);
    for (const auto& [campo, posto] : kTesti) record_.*posto = SingoloByte(messaggio.*campo);
    record_.Flags = static_cast<std::uint32_t>(messaggio.Flags);
    record_.RecipCount = static_cast<std::uint32_t>(messaggio.RecipCount);
    record_.FileCount = static_cast<std::uint32_t>(messaggio.FileCount);
  }
  RecordMessaggio(const RecordMessaggio&) = delete;
  RecordMessaggio& operator=(const RecordMessaggio&) = delete;
  RecordMessaggio(RecordMessaggio&&) = delete;
  RecordMessaggio& operator=(RecordMessaggio&&) = delete;
  ~RecordMessaggio() {
    for (const auto& [campo, posto] : kTesti) SysFreeString(record_.*posto);
  }

  [[nodiscard]] MapiMessageRecord* Get() { return &record_; }
  /// The record as the library left it.
  void Riporta(host::MapiMessage& messaggio) const {
    messaggio.Reserved = static_cast<std::int32_t>(record_.Reserved);
    for (const auto& [campo, posto] : kTesti) messaggio.*campo = DaSingoloByte(record_.*posto);
    messaggio.Flags = static_cast<std::int32_t>(record_.Flags);
    messaggio.RecipCount = static_cast<std::int32_t>(record_.RecipCount);
    messaggio.FileCount = static_cast<std::int32_t>(record_.FileCount);
  }

 private:
  RecordMessaggio() = default;

  using Testo = std::pair<std::string host::MapiMessage::*, BSTR MapiMessageRecord::*>;
  static constexpr std::array<Testo, 5> kTesti = {
      {{&host::MapiMessage::Subject, &MapiMessageRecord::Subject},
       {&host::MapiMessage::NoteText, &MapiMessageRecord::NoteText},
       {&host::MapiMessage::MessageType, &MapiMessageRecord::MessageType},
       {&host::MapiMessage::DateReceived, &MapiMessageRecord::DateReceived},
       {&host::MapiMessage::ConversationID, &MapiMessageRecord::ConversationID}}};

  MapiMessageRecord record_{};
};

void Riempi(MapiRecipRecord& record, const host::MapiRecip& destinatario) {
  record.Reserved = static_cast<std::uint32_t>(destinatario.Reserved);
  record.RecipClass = static_cast<std::uint32_t>(destinatario.RecipClass);
  record.Name = ToBstr(destinatario.Name).Cedi();
  record.Address = ToBstr(destinatario.Address).Cedi();
  record.EIDSize = static_cast<std::uint32_t>(destinatario.EIDSize);
  record.EntryID = ToBstr(destinatario.EntryID).Cedi();
}

void Svuota(MapiRecipRecord& record) {
  for (BSTR testo : {record.Name, record.Address, record.EntryID}) SysFreeString(testo);
}

void Riempi(MapiFileRecord& record, const host::MapiFile& file) {
  record.Reserved = static_cast<std::uint32_t>(file.Reserved);
  record.Flags = static_cast<std::uint32_t>(file.Flags);
  record.Position = static_cast<std::uint32_t>(file.Position);
  record.PathName = ToBstr(file.PathName).Cedi();
  record.FileName = ToBstr(file.FileName).Cedi();
  record.FileType = ToBstr(file.FileType).Cedi();
}

void Svuota(MapiFileRecord& record) {
  for (BSTR testo : {record.PathName, record.FileName, record.FileType}) SysFreeString(testo);
}

// An array of records, counted from 0. Without elements there is no array, as for one that was never
// dimensioned.
template <class Record>
class ArrayDiRecord {
 public:
  template <class Elemento>
  explicit ArrayDiRecord(const std::vector<Elemento>& elementi) : numero_(elementi.size()) {
    if (numero_ == 0) return;
    if (FAILED(SafeArrayAllocDescriptor(1, &array_))) throw std::bad_alloc();
    array_->cbElements = sizeof(Record);
    array_->rgsabound[0] = {static_cast<ULONG>(numero_), 0};
    // The elements are zero at first, so half an array can be freed.
    if (FAILED(SafeArrayAllocData(array_))) {
      SafeArrayDestroyDescriptor(array_);
      throw std::bad_alloc();
    }
    try {
      for (std::size_t posto = 0; posto < numero_; ++posto) Riempi(Elementi()[posto], elementi[posto]);
    } catch (...) {
      Libera();
      throw;
    }
  }
  ArrayDiRecord(const ArrayDiRecord&) = delete;
  ArrayDiRecord& operator=(const ArrayDiRecord&) = delete;
  ArrayDiRecord(ArrayDiRecord&&) = delete;
  ArrayDiRecord& operator=(ArrayDiRecord&&) = delete;
  ~ArrayDiRecord() { Libera(); }

  [[nodiscard]] SAFEARRAY** Get() { return &array_; }

 private:
  [[nodiscard]] Record* Elementi() { return static_cast<Record*>(array_->pvData); }
  void Libera() {
    if (array_ == nullptr) return;
    for (std::size_t posto = 0; posto < numero_; ++posto) Svuota(Elementi()[posto]);
    SafeArrayDestroyData(array_);
    SafeArrayDestroyDescriptor(array_);
    array_ = nullptr;
  }

  std::size_t numero_;
  SAFEARRAY* array_ = nullptr;
};

void ControllaConto(std::int32_t conto, std::size_t elementi) {
  if (conto < 0 || static_cast<std::size_t>(conto) > elementi)
    throw host::Errore(host::kIndiceFuoriIntervallo);
}

}  // namespace

std::int32_t Mapi32Win32::MAPILogon(host::MapiHandle finestra, const std::string& profilo,
                                    const std::string& password, std::int32_t flags, std::int32_t riservato,
                                    host::MapiHandle& sessione) {
  const auto funzione = Ingresso<Logon>(libreria_, "MAPILogon");
  std::string nome = ToSingleByte(profilo);
  std::string segreto = ToSingleByte(password);
  ULONG_PTR maniglia = sessione;
  const ULONG esito = funzione(finestra, nome.data(), segreto.data(), static_cast<ULONG>(flags),
                               static_cast<ULONG>(riservato), &maniglia);
  SecureZeroMemory(segreto.data(), segreto.size());
  sessione = maniglia;
  return static_cast<std::int32_t>(esito);
}

std::int32_t Mapi32Win32::BMAPISendMail(host::MapiHandle sessione, host::MapiHandle finestra,
                                        host::MapiMessage& messaggio,
                                        const std::vector<host::MapiRecip>& destinatari,
                                        const std::vector<host::MapiFile>& file, std::int32_t flags,
                                        std::int32_t riservato) {
  ControllaConto(messaggio.RecipCount, destinatari.size());
  ControllaConto(messaggio.FileCount, file.size());
  const auto funzione = Ingresso<SendMail>(libreria_, "BMAPISendMail");
  RecordMessaggio record(messaggio);
  ArrayDiRecord<MapiRecipRecord> elencoDestinatari(destinatari);
  ArrayDiRecord<MapiFileRecord> elencoFile(file);
  const ULONG esito = funzione(sessione, finestra, record.Get(), elencoDestinatari.Get(), elencoFile.Get(),
                               static_cast<ULONG>(flags), static_cast<ULONG>(riservato));
  record.Riporta(messaggio);
  return static_cast<std::int32_t>(esito);
}

std::int32_t Mapi32Win32::MAPILogoff(host::MapiHandle sessione, host::MapiHandle finestra, std::int32_t flags,
                                     std::int32_t riservato) {
  return static_cast<std::int32_t>(Ingresso<Logoff>(libreria_, "MAPILogoff")(
      sessione, finestra, static_cast<ULONG>(flags), static_cast<ULONG>(riservato)));
}

}  // namespace orve::adapters::win32
