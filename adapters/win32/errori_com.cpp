#include "win32/errori_com.h"

#include <array>
#include <iterator>
#include <string>
#include <utility>

#include "win32/com_ptr.h"
#include "win32/conversions.h"

namespace orve::adapters::win32 {

namespace {

constexpr const char* kSorgente = "ORVE_MAILSERVER";

// Failures of automation that its languages know by a number of their own.
constexpr auto kNumeri = std::to_array<std::pair<HRESULT, std::int32_t>>({
    {DISP_E_UNKNOWNNAME, host::kMembroNonSupportato},
    {DISP_E_MEMBERNOTFOUND, host::kMembroNonSupportato},
    {DISP_E_UNKNOWNINTERFACE, host::kMembroNonSupportato},
    {DISP_E_TYPEMISMATCH, host::kTipoNonCorrispondente},
    {DISP_E_OVERFLOW, host::kOverflow},
    {DISP_E_DIVBYZERO, 11},
    {DISP_E_BADINDEX, host::kIndiceFuoriIntervallo},
    {DISP_E_ARRAYISLOCKED, 10},
    {DISP_E_PARAMNOTOPTIONAL, 449},
    {DISP_E_BADPARAMCOUNT, 450},
    {DISP_E_NONAMEDARGS, 446},
    {DISP_E_PARAMNOTFOUND, 448},
    {E_OUTOFMEMORY, host::kMemoriaInsufficiente},
    {E_INVALIDARG, host::kArgomentoNonValido},
    {E_NOTIMPL, 445},
    {E_ACCESSDENIED, 70},
    {E_NOINTERFACE, 430},
    {CO_E_CLASSSTRING, host::kOggettoNonCreabile},
    {REGDB_E_CLASSNOTREG, host::kOggettoNonCreabile},
    {CLASS_E_CLASSNOTAVAILABLE, host::kOggettoNonCreabile},
    {CO_E_SERVER_EXEC_FAILURE, host::kOggettoNonCreabile},
    {HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE), 462},
    {HRESULT_FROM_WIN32(RPC_S_CALL_FAILED), 462},
    {RPC_E_DISCONNECTED, 462},
});

// The numbers below this one belong to the language; objects add theirs to it (0x800A0000 plus the number).
constexpr WORD kControllo = FACILITY_CONTROL;

struct Parti {
  std::int32_t numero = 0;
  std::string sorgente;
  std::string descrizione;
};

std::string TestoDiSistema(HRESULT esito) {
  std::array<wchar_t, 512> testo{};
  const DWORD letti =
      FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                     static_cast<DWORD>(esito), 0, testo.data(), static_cast<DWORD>(testo.size()), nullptr);
  std::wstring_view vista(testo.data(), letti);
  while (!vista.empty() && (vista.back() == L'\r' || vista.back() == L'\n' || vista.back() == L' ')) {
    vista.remove_suffix(1);
  }
  return ToUtf8(vista);
}

Parti DaEccezione(HRESULT esito, EXCEPINFO& eccezione) {
  if (eccezione.pfnDeferredFillIn != nullptr) eccezione.pfnDeferredFillIn(&eccezione);
  const Bstr sorgente = Bstr::Adotta(std::exchange(eccezione.bstrSource, nullptr));
  const Bstr descrizione = Bstr::Adotta(std::exchange(eccezione.bstrDescription, nullptr));
  const Bstr aiuto = Bstr::Adotta(std::exchange(eccezione.bstrHelpFile, nullptr));
  Parti parti{NumeroDi(esito), FromBstr(sorgente.Get()), FromBstr(descrizione.Get())};
  if (eccezione.wCode != 0) {
    parti.numero = eccezione.wCode;
  } else if (eccezione.scode != 0) {
    parti.numero = NumeroDi(eccezione.scode);
  }
  return parti;
}

// Objects that are scripts say nothing in the exception itself.
void Completa(Parti& parti) {
  ComPtr<IErrorInfo> lasciato;
  if (GetErrorInfo(0, lasciato.Uscita()) != S_OK) return;
  Bstr testo;
  if (parti.descrizione.empty() && SUCCEEDED(lasciato->GetDescription(testo.Uscita()))) {
    parti.descrizione = FromBstr(testo.Get());
  }
  if (parti.sorgente.empty() && SUCCEEDED(lasciato->GetSource(testo.Uscita()))) {
    parti.sorgente = FromBstr(testo.Get());
  }
}

// The library's own words for a number that it knows, else the system's.
std::string DescrizioneDi(HRESULT esito, std::int32_t numero) {
  switch (numero) {
    case host::kArgomentoNonValido:
    case host::kOverflow:
    case host::kMemoriaInsufficiente:
    case host::kIndiceFuoriIntervallo:
    case host::kTipoNonCorrispondente:
    case host::kOggettoNonCreabile:
    case host::kMembroNonSupportato:
      return host::Errore(static_cast<host::NumeroErrore>(numero)).Descrizione();
    default:
      break;
  }
  std::string testo = TestoDiSistema(esito);
  return testo.empty() ? host::Errore(host::kErroreAutomazione).Descrizione() : testo;
}

}  // namespace

std::int32_t NumeroDi(HRESULT esito) noexcept {
  for (const auto& [codice, numero] : kNumeri) {
    if (codice == esito) return numero;
  }
  if (FAILED(esito) && HRESULT_FACILITY(esito) == kControllo) return HRESULT_CODE(esito);
  return static_cast<std::int32_t>(esito);
}

host::Errore ErroreDi(HRESULT esito, EXCEPINFO* eccezione) {
  Parti parti{NumeroDi(esito), {}, {}};
  if (eccezione != nullptr && esito == DISP_E_EXCEPTION) parti = DaEccezione(esito, *eccezione);
  Completa(parti);
  if (parti.descrizione.empty()) parti.descrizione = DescrizioneDi(esito, parti.numero);
  if (parti.sorgente.empty()) parti.sorgente = kSorgente;
  return {parti.numero, std::move(parti.sorgente), std::move(parti.descrizione)};
}

}  // namespace orve::adapters::win32
