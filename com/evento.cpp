#include "evento.h"

#include <utility>

#include "enumerator.h"
#include "errori.h"
#include "orve_mailserver.h"
#include "win32/conversions.h"

namespace orve::com {

namespace {

constexpr DISPID kBeforeSendMail = 1;

struct Ascolto {
  DWORD numero = 0;
  adapters::win32::ComPtr<IDispatch> ascoltatore;
};
struct ElencoAscolti : ElencoFisso<Ascolto> {
  using ElencoFisso::ElencoFisso;
  static void Consegna(Ascolto& ascolto, CONNECTDATA& dati) {
    dati.pUnk = ascolto.ascoltatore.Cedi();
    dati.dwCookie = ascolto.numero;
  }
};

// A handler that does not know the event has nothing to contribute.
bool Ignorato(HRESULT esito) {
  return esito == DISP_E_MEMBERNOTFOUND || esito == E_NOTIMPL;
}

}  // namespace

HRESULT PuntoEvento::QueryInterface(REFIID iid, void** oggetto) {
  if (oggetto == nullptr) return E_POINTER;
  *oggetto = iid == IID_IUnknown || iid == IID_IConnectionPoint ? this : nullptr;
  if (*oggetto == nullptr) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

HRESULT PuntoEvento::GetConnectionInterface(IID* iid) {
  if (iid == nullptr) return E_POINTER;
  *iid = DIID_DCLSFW_MAILSERVEREventi;
  return S_OK;
}

HRESULT PuntoEvento::GetConnectionPointContainer(IConnectionPointContainer** contenitore) {
  if (contenitore == nullptr) return E_POINTER;
  *contenitore = &proprietario_;
  proprietario_.AddRef();
  return S_OK;
}

HRESULT PuntoEvento::Advise(IUnknown* ascoltatore, DWORD* numero) {
  if (ascoltatore == nullptr || numero == nullptr) return E_POINTER;
  *numero = 0;
  adapters::win32::ComPtr<IDispatch> interfaccia;
  if (FAILED(ascoltatore->QueryInterface(DIID_DCLSFW_MAILSERVEREventi, interfaccia.UscitaVoid())) &&
      FAILED(ascoltatore->QueryInterface(IID_IDispatch, interfaccia.UscitaVoid()))) {
    return CONNECT_E_CANNOTCONNECT;
  }
  return Esegui(IID_IConnectionPoint, [&] {
    ascoltatori_.emplace(ultimo_ + 1, std::move(interfaccia));
    *numero = ++ultimo_;
  });
}

HRESULT PuntoEvento::Unadvise(DWORD numero) {
  const auto nodo =
      ascoltatori_.extract(numero);  // released after the removal: the release may re-enter here
  return nodo ? S_OK : CONNECT_E_NOCONNECTION;
}

HRESULT PuntoEvento::EnumConnections(IEnumConnections** elenco) {
  if (elenco == nullptr) return E_POINTER;
  *elenco = nullptr;
  return Esegui(IID_IConnectionPoint, [&] {
    std::vector<Ascolto> ascolti;
    for (const auto& [numero, ascoltatore] : ascoltatori_) ascolti.push_back({numero, ascoltatore});
    *elenco = NuovoEnumeratore<IEnumConnections, CONNECTDATA>(ElencoAscolti(std::move(ascolti))).Cedi();
  });
}

void PuntoEvento::Solleva(const std::vector<std::string*>& testi) {
  const auto presenti = ascoltatori_;  // a handler may attach and detach
  for (const auto& [numero, ascoltatore] : presenti) {
    if (!ascoltatori_.contains(numero)) continue;
    std::vector<BSTR> valori(testi.size());
    std::vector<adapters::win32::Bstr> proprieta(testi.size());
    std::vector<VARIANT> argomenti(testi.size());
    for (std::size_t indice = 0; indice < testi.size(); ++indice) {
      proprieta[indice] = adapters::win32::ToBstr(*testi[indice]);
      VARIANT& argomento = argomenti[testi.size() - 1 - indice];
      VariantInit(&argomento);
      V_VT(&argomento) = VT_BSTR | VT_BYREF;
      V_BSTRREF(&argomento) = &valori[indice];
    }
    for (std::size_t indice = 0; indice < testi.size(); ++indice) valori[indice] = proprieta[indice].Cedi();

    DISPPARAMS parametri{argomenti.data(), nullptr, static_cast<UINT>(argomenti.size()), 0};
    EXCEPINFO eccezione{};
    SetErrorInfo(0, nullptr);  // so that no old error is taken for the handler's
    const HRESULT esito = ascoltatore->Invoke(kBeforeSendMail, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                              &parametri, nullptr, &eccezione, nullptr);
    for (std::size_t indice = 0; indice < testi.size(); ++indice) {
      proprieta[indice] = adapters::win32::Bstr::Adotta(valori[indice]);
    }
    if (Ignorato(esito)) continue;
    if (FAILED(esito)) throw adapters::win32::ErroreDi(esito, &eccezione);
    for (std::size_t indice = 0; indice < testi.size(); ++indice) {
      *testi[indice] = adapters::win32::FromBstr(proprieta[indice].Get());
    }
  }
}

}  // namespace orve::com
