#include "errori.h"

#include "win32/com_ptr.h"
#include "win32/conversions.h"

namespace orve::com {

HRESULT HresultDi(const host::Errore& errore) noexcept {
  const std::int32_t numero = errore.Numero();
  if (numero < 0) return numero;
  if (numero > 0 && numero <= 0xFFFF) {
    return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, numero);
  }
  return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, host::kErroreAutomazione);
}

namespace {

HRESULT Riporta(REFIID interfaccia, const host::Errore& errore) {
  adapters::win32::ComPtr<ICreateErrorInfo> nuovo;
  if (SUCCEEDED(CreateErrorInfo(nuovo.Uscita()))) {
    nuovo->SetGUID(interfaccia);
    nuovo->SetSource(adapters::win32::ToBstr(errore.Sorgente()).Get());
    nuovo->SetDescription(adapters::win32::ToBstr(errore.Descrizione()).Get());
    if (const auto informazioni = nuovo.Come<IErrorInfo>(IID_IErrorInfo)) SetErrorInfo(0, informazioni.Get());
  }
  return HresultDi(errore);
}

}  // namespace

HRESULT RiportaErroreCorrente(REFIID interfaccia) noexcept {
  try {
    return Riporta(interfaccia, host::ErroreCorrente());
  } catch (...) {
    return E_OUTOFMEMORY;  // no memory even for the report
  }
}

}  // namespace orve::com
