#include "win32/system.h"

#include <windows.h>

#include <oleauto.h>
#include <winnetwk.h>

#include <array>
#include <cstring>
#include <functional>
#include <vector>

#include "orve-mailserver/host/errore.h"
#include "text/text.h"
#include "win32/conversions.h"
#include "win32/errori_com.h"

namespace orve::adapters::win32 {

namespace {

SYSTEMTIME Tempo(host::DataOra istante) {
  const host::CampiDataOra campi = host::Campi(istante);
  SYSTEMTIME tempo{};
  tempo.wYear = static_cast<WORD>(campi.anno);
  tempo.wMonth = static_cast<WORD>(campi.mese);
  tempo.wDay = static_cast<WORD>(campi.giorno);
  tempo.wHour = static_cast<WORD>(campi.ora);
  tempo.wMinute = static_cast<WORD>(campi.minuto);
  tempo.wSecond = static_cast<WORD>(campi.secondo);
  return tempo;
}

// The output of a function that returns the length it needs, including the NUL, when its buffer is too short,
// and the length written otherwise.
std::wstring Testo(const std::function<DWORD(wchar_t*, DWORD)>& funzione) {
  std::wstring testo(MAX_PATH, L'\0');
  for (;;) {
    const DWORD letti = funzione(testo.data(), static_cast<DWORD>(testo.size()));
    if (letti < testo.size()) {
      testo.resize(letti);
      return testo;
    }
    testo.resize(std::size_t{letti} + 1);
  }
}

// The folder without the separator at its end, which only a root keeps.
std::string SenzaBarraFinale(std::wstring cartella) {
  while (cartella.size() > 3 && (cartella.back() == L'\\' || cartella.back() == L'/')) cartella.pop_back();
  return ToUtf8(cartella);
}

std::wstring CartellaTemporanea() {
  return Testo([](wchar_t* testo, DWORD misura) { return GetTempPathW(misura, testo); });
}

std::wstring CartellaDelProgramma() {
  std::wstring programma = Testo([](wchar_t* testo, DWORD misura) {
    // A name that does not fit is cut, and the buffer is then full.
    const DWORD letti = GetModuleFileNameW(nullptr, testo, misura);
    return letti == misura ? misura * 2 : letti;
  });
  const auto barra = programma.find_last_of(L'\\');
  return barra == std::wstring::npos ? programma : programma.substr(0, barra + 1);
}

}  // namespace

host::DataOra ClockWin32::Adesso() {
  SYSTEMTIME tempo;
  GetLocalTime(&tempo);
  return host::DataOra::Da(tempo.wYear, tempo.wMonth, tempo.wDay, tempo.wHour, tempo.wMinute, tempo.wSecond);
}

std::string ClockWin32::TestoData(host::DataOra istante) {
  const SYSTEMTIME tempo = Tempo(istante);
  std::array<wchar_t, 128> testo{};
  if (GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_SHORTDATE, &tempo, nullptr, testo.data(),
                      static_cast<int>(testo.size()), nullptr) == 0) {
    return host::TestoGiornoMeseAnno(istante);
  }
  return ToUtf8(testo.data());
}

std::string ClockWin32::TestoOra(host::DataOra istante) {
  const SYSTEMTIME tempo = Tempo(istante);
  std::array<wchar_t, 128> testo{};
  if (GetTimeFormatEx(LOCALE_NAME_USER_DEFAULT, 0, &tempo, nullptr, testo.data(),
                      static_cast<int>(testo.size())) == 0) {
    return host::TestoOraMinutiSecondi(istante);
  }
  return ToUtf8(testo.data());
}

void FormatoDataWin32::Data(const std::string& testo) {
  DATE giorni = 0;
  const bool buona = SUCCEEDED(VarDateFromStr(ToBstr(testo).Get(), LOCALE_USER_DEFAULT, 0, &giorni));
  FormatoDataSql::Data(buona ? host::Variant(host::DataOra{giorni}).ToText() : std::string());
}

void DebugOutputWin32::Scrivi(const std::string& riga) noexcept {
  try {
    OutputDebugStringA(ToSingleByte(riga).c_str());
  } catch (...) {  // NOLINT(bugprone-empty-catch): a trace that cannot be written costs nobody anything
  }
}

std::optional<host::Guid> GuidGeneratorWin32::CreaGuid() {
  GUID nuovo;
  if (CoCreateGuid(&nuovo) != S_OK) return std::nullopt;
  host::Guid guid{static_cast<std::uint32_t>(nuovo.Data1), nuovo.Data2, nuovo.Data3, {}};
  std::memcpy(guid.byte.data(), nuovo.Data4, guid.byte.size());
  return guid;
}

std::string EnvironmentWin32::Leggi(const std::string& nome) {
  const std::wstring largo = ToWide(nome);
  return ToUtf8(Testo(
      [&](wchar_t* testo, DWORD misura) { return GetEnvironmentVariableW(largo.c_str(), testo, misura); }));
}

std::int32_t NetworkWin32::WNetGetUserA(std::string& buffer) {
  std::vector<char> nome(buffer.size());
  auto lunghezza = static_cast<DWORD>(nome.size());
  const DWORD esito = ::WNetGetUserA(nullptr, nome.data(), &lunghezza);
  if (esito != NO_ERROR) return static_cast<std::int32_t>(esito);
  // In the library a character may need more bytes than in the system's code page: the buffer grows
  // accordingly.
  const std::string testo = FromSingleByte({nome.data(), strnlen(nome.data(), nome.size())});
  if (buffer.size() < testo.size() + 1) buffer.resize(testo.size() + 1);
  buffer.replace(0, testo.size() + 1, testo + '\0');
  return 0;
}

void RisolutorePercorsiWin32::ImpostaTipoPercorso(std::int32_t tipo, const std::string& /*testo*/) {
  if (tipo == host::kPercorsoTemporaneo) {
    percorso_ = SenzaBarraFinale(CartellaTemporanea());
  } else if (tipo == host::kPercorsoInstallazione) {
    percorso_ = SenzaBarraFinale(CartellaDelProgramma());
  } else {
    throw host::Errore(host::kArgomentoNonValido);
  }
}

void RisolutorePercorsiWin32::ImpostaPercorso(const std::string& percorso, bool /*indicatore*/) {
  const std::wstring configurato = ToWide(text::Trim(percorso));
  if (configurato.empty()) {
    ImpostaTipoPercorso(host::kPercorsoTemporaneo, "");
    return;
  }
  std::wstring esteso = Testo([&](wchar_t* testo, DWORD misura) {
    const DWORD letti = ExpandEnvironmentStringsW(configurato.c_str(), testo, misura);
    return letti <= misura && letti > 0 ? letti - 1 : letti;  // the NUL is always counted
  });
  const bool assoluto = esteso.starts_with(L'\\') || esteso.starts_with(L'/') || esteso.find(L':') == 1;
  if (!assoluto) esteso.insert(0, CartellaDelProgramma());
  percorso_ = SenzaBarraFinale(Testo([&](wchar_t* testo, DWORD misura) {
    return GetFullPathNameW(esteso.c_str(), misura, testo, nullptr);
  }));
}

}  // namespace orve::adapters::win32
