#include "oggetto_nominato.h"

#include "orve-mailserver/host/errore.h"
#include "win32/conversions.h"

namespace orve::prova {

using adapters::win32::ComPtr;
using adapters::win32::VariantCom;

namespace {

const VARIANT& Dietro(const VARIANT& valore) {
  return V_VT(&valore) == (VT_BYREF | VT_VARIANT) ? *V_VARIANTREF(&valore) : valore;
}

}  // namespace

const VARIANT& Argomenti::operator[](std::size_t indice) const {
  if (indice >= parametri_.cArgs) throw host::Errore(450, "script_host", "Numero di argomenti errato");
  return Dietro(parametri_.rgvarg[parametri_.cArgs - 1 - indice]);
}

std::string Argomenti::Testo(std::size_t indice) const {
  return TestoDi((*this)[indice]);
}

ComPtr<IDispatch> Argomenti::Oggetto(std::size_t indice) const {
  const VARIANT& valore = (*this)[indice];
  if (V_VT(&valore) == VT_DISPATCH) return ComPtr(V_DISPATCH(&valore));
  if (V_VT(&valore) == (VT_DISPATCH | VT_BYREF)) return ComPtr(*V_DISPATCHREF(&valore));
  throw host::Errore(424, "script_host", "Necessario oggetto");
}

std::string TestoDi(const VARIANT& valore) {
  VariantCom copia;
  if (FAILED(VariantCopyInd(copia.Uscita(), const_cast<VARIANT*>(&valore)))) return "(?)";
  const VARTYPE tipo = V_VT(&copia.Get());
  if ((tipo & VT_ARRAY) != 0) return "(array)";
  switch (tipo) {
    case VT_EMPTY:
      return "(vuoto)";
    case VT_NULL:
      return "(null)";
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return V_UNKNOWN(&copia.Get()) == nullptr ? "(assente)" : "(oggetto)";
    case VT_BOOL:
      return V_BOOL(&copia.Get()) != VARIANT_FALSE ? "true" : "false";
    case VT_ERROR:
      return "(omesso)";
    default:
      break;
  }
  // English words, so that a test reads alike under every system language.
  const LCID inglese = MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT);
  if (FAILED(VariantChangeTypeEx(&copia.Get(), &copia.Get(), inglese, 0, VT_BSTR))) return "(?)";
  return adapters::win32::FromBstr(V_BSTR(&copia.Get()));
}

HRESULT OggettoSenzaTipo::GetTypeInfoCount(UINT* quanti) {
  *quanti = 0;
  return S_OK;
}

HRESULT OggettoSenzaTipo::GetTypeInfo(UINT /*quale*/, LCID /*lingua*/, ITypeInfo** tipo) {
  *tipo = nullptr;
  return DISP_E_BADINDEX;
}

HRESULT OggettoNominato::GetIDsOfNames(REFIID /*riservato*/, LPOLESTR* nomi, UINT quanti, LCID /*lingua*/,
                                       DISPID* numeri) {
  for (UINT indice = 0; indice < quanti; ++indice) numeri[indice] = DISPID_UNKNOWN;
  for (std::size_t indice = 0; indice < membri_.size(); ++indice) {
    if (_wcsicmp(membri_[indice].nome.c_str(), nomi[0]) != 0) continue;
    numeri[0] = static_cast<DISPID>(indice + 1);
    return quanti == 1 ? S_OK : DISP_E_UNKNOWNNAME;
  }
  return DISP_E_UNKNOWNNAME;
}

HRESULT OggettoNominato::Invoke(DISPID membro, REFIID /*riservato*/, LCID /*lingua*/, WORD modi,
                                DISPPARAMS* argomenti, VARIANT* risultato, EXCEPINFO* eccezione,
                                UINT* /*argomentoErrato*/) {
  if ((modi & (DISPATCH_METHOD | DISPATCH_PROPERTYGET | DISPATCH_PROPERTYPUT)) == 0)
    return DISP_E_MEMBERNOTFOUND;
  for (std::size_t indice = 0; indice < membri_.size(); ++indice) {
    const bool predefinito = membro == DISPID_VALUE && membri_[indice].nome.empty();
    if (!predefinito && membro != static_cast<DISPID>(indice + 1)) continue;
    return Rispondi([&] { return membri_[indice].membro(Argomenti(*argomenti)); }, risultato, eccezione);
  }
  return DISP_E_MEMBERNOTFOUND;
}

HRESULT Rispondi(const std::function<VariantCom()>& azione, VARIANT* risultato, EXCEPINFO* eccezione) {
  try {
    VariantCom valore = azione();
    if (risultato != nullptr) *risultato = valore.Cedi();
    return S_OK;
  } catch (...) {
    const host::Errore errore = host::ErroreCorrente();
    if (eccezione == nullptr) return DISP_E_EXCEPTION;
    *eccezione = {};
    eccezione->scode = errore.Numero() < 0
                           ? errore.Numero()
                           : MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, errore.Numero() & 0xFFFF);
    eccezione->bstrSource = adapters::win32::ToBstr(errore.Sorgente()).Cedi();
    eccezione->bstrDescription = adapters::win32::ToBstr(errore.Descrizione()).Cedi();
    return DISP_E_EXCEPTION;
  }
}

}  // namespace orve::prova
