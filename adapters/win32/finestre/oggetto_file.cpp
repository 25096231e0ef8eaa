#include "win32/finestre/oggetto_file.h"

#include <windows.h>

#include <objbase.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "values/errori_file.h"
#include "win32/finestre/testo.h"

namespace orve::adapters::win32::finestre {

namespace {

namespace fs = std::filesystem;

using values::ErroreFile;
using enum values::NumeroErroreFile;

values::NumeroErroreFile Numero(DWORD codice) {
  switch (codice) {
    case ERROR_FILE_NOT_FOUND:
      return kFileNonTrovato;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_INVALID_DRIVE:
    case ERROR_NOT_READY:
      return kPercorsoNonTrovato;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_WRITE_PROTECT:
      return kPermessoNegato;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
      return kFileGiaEsistente;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      return kDiscoPieno;
    case ERROR_INVALID_NAME:
    case ERROR_FILENAME_EXCED_RANGE:
      return kNomeFileNonValido;
    default:
      return kErroreDispositivo;
  }
}

host::Errore ErroreDiSistema(const std::string& percorso) {
  return ErroreFile(Numero(GetLastError()), percorso);
}

constexpr std::wstring_view kPrefissoCopie = L"orve-allegati-";

bool NomeSemplice(const std::string& nome) {
  return !nome.empty() && nome.find_first_not_of('.') != std::string::npos &&
         nome.find_first_of("\\/:*?\"<>|") == std::string::npos && nome.find('\0') == std::string::npos;
}

std::wstring NomeNuovo() {
  GUID guid = {};
  constexpr int kLungo = 40;
  std::array<wchar_t, kLungo> testo = {};
  if (FAILED(CoCreateGuid(&guid)) || StringFromGUID2(guid, testo.data(), kLungo) == 0) {
    throw host::Errore(host::kOggettoNonCreabile);
  }
  return std::wstring(kPrefissoCopie) + testo.data();
}

std::wstring CartellaTemporanea() {
  std::array<wchar_t, MAX_PATH + 1> percorso = {};
  const DWORD lunga = GetTempPathW(static_cast<DWORD>(percorso.size()), percorso.data());
  if (lunga == 0 || lunga > percorso.size()) throw ErroreFile(kPercorsoNonTrovato, "TEMP");
  return percorso.data();
}

// A copy of a read-only file is ours to delete all the same.
void TogliProtezione(const fs::path& radice) {
  std::error_code ignorato;
  for (auto voce = fs::recursive_directory_iterator(radice, ignorato);
       voce != fs::recursive_directory_iterator(); voce.increment(ignorato)) {
    SetFileAttributesW(voce->path().c_str(), FILE_ATTRIBUTE_NORMAL);
  }
}

bool CopieVecchie(const fs::path& cartella) {
  const DWORD attributi = GetFileAttributesW(cartella.c_str());
  const bool vera = attributi != INVALID_FILE_ATTRIBUTES && (attributi & FILE_ATTRIBUTE_DIRECTORY) != 0 &&
                    (attributi & FILE_ATTRIBUTE_REPARSE_POINT) == 0;
  std::error_code codice;
  const auto ultima = fs::last_write_time(cartella, codice);
  return vera && !codice && fs::file_time_type::clock::now() - ultima > values::kVitaDelleCopie;
}

// What cannot be removed is left for next time.
void RimuoviCopieVecchie(const fs::path& genitore) {
  std::error_code ignorato;
  for (auto voce = fs::directory_iterator(genitore, ignorato); voce != fs::directory_iterator();
       voce.increment(ignorato)) {
    const bool nostra = voce->path().filename().native().starts_with(kPrefissoCopie);
    if (!nostra || !CopieVecchie(voce->path())) continue;
    TogliProtezione(voce->path());
    fs::remove_all(voce->path(), ignorato);
  }
}

}  // namespace

bool SuSupportoEsterno(const std::string& percorso) {
  std::array<wchar_t, MAX_PATH + 1> volume = {};
  if (GetVolumePathNameW(Largo(percorso).c_str(), volume.data(), MAX_PATH) == FALSE) return false;
  const UINT tipo = GetDriveTypeW(volume.data());
  return tipo == DRIVE_REMOVABLE || tipo == DRIVE_REMOTE || tipo == DRIVE_CDROM;
}

std::string CartellaCopie::PostoPer(const std::string& nome) {
  if (!NomeSemplice(nome)) throw ErroreFile(kNomeFileNonValido, nome);
  // Something that cleans up temporary folders may have removed it.
  if (std::error_code ignorato; !fs::is_directory(radice_, ignorato)) {
    const fs::path genitore = genitore_.empty() ? CartellaTemporanea() : Largo(genitore_);
    RimuoviCopieVecchie(genitore);
    const fs::path radice = genitore / NomeNuovo();
    if (CreateDirectoryW(radice.c_str(), nullptr) == FALSE) throw ErroreDiSistema(Stretto(radice.native()));
    radice_ = radice.native();
  }
  const std::wstring cartella = radice_ + L"\\" + std::to_wstring(++copie_);
  if (CreateDirectoryW(cartella.c_str(), nullptr) == FALSE) throw ErroreDiSistema(Stretto(cartella));
  return Stretto(cartella) + "\\" + nome;
}

bool OggettoFile::Esiste() {
  const std::wstring percorso = Largo(Percorso());
  const DWORD attributi = GetFileAttributesW(percorso.c_str());
  if (attributi == INVALID_FILE_ATTRIBUTES || (attributi & FILE_ATTRIBUTE_DIRECTORY) != 0) return false;
  constexpr DWORD kConTutti = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  auto* file = CreateFileW(percorso.c_str(), GENERIC_READ, kConTutti, nullptr, OPEN_EXISTING,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  CloseHandle(file);
  return true;
}

void OggettoFile::CopiaIn(const std::shared_ptr<host::OggettoFile>& altro, std::int32_t /*opzioni*/) {
  const std::string destinazione = host::Richiesto(altro).Percorso();
  if (CopyFileW(Largo(Percorso()).c_str(), Largo(destinazione).c_str(), TRUE) == FALSE) {
    throw ErroreDiSistema(Percorso());
  }
}

}  // namespace orve::adapters::win32::finestre
