#include "chiamata.h"

#include <dispex.h>

#include <algorithm>
#include <optional>

#include "win32/errori_com.h"

namespace orve::prova {

namespace {

constexpr HRESULT kRiferitoAllOspite = static_cast<HRESULT>(0x80020101);  // SCRIPT_E_REPORTED

int livelli = 0;
std::optional<host::Errore> riferito;

struct Livello {
  Livello() { ++livelli; }
  Livello(const Livello&) = delete;
  Livello& operator=(const Livello&) = delete;
  ~Livello() { --livelli; }
};

}  // namespace

bool DentroUnaChiamata() {
  return livelli > 0;
}

void RicordaErroreDelloScript(const host::Errore& errore) {
  riferito = errore;
}

DISPID NumeroDi(IDispatch& oggetto, const std::wstring& nome) {
  DISPID numero = DISPID_UNKNOWN;
  std::wstring copia = nome;
  LPOLESTR testo = copia.data();
  if (SUCCEEDED(oggetto.GetIDsOfNames(IID_NULL, &testo, 1, LOCALE_USER_DEFAULT, &numero))) return numero;
  const auto estesa = adapters::win32::ComPtr(&oggetto).Come<IDispatchEx>(__uuidof(IDispatchEx));
  const auto nomeBstr = adapters::win32::Bstr::Adotta(SysAllocString(nome.c_str()));
  if (estesa && SUCCEEDED(estesa->GetDispID(nomeBstr.Get(), fdexNameCaseInsensitive, &numero))) return numero;
  return DISPID_UNKNOWN;
}

adapters::win32::VariantCom Chiama(IDispatch& oggetto, DISPID membro, WORD modi,
                                   std::vector<VARIANT> argomenti) {
  std::reverse(argomenti.begin(), argomenti.end());
  DISPID scritto = DISPID_PROPERTYPUT;
  const bool scrittura = (modi & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  DISPPARAMS parametri{argomenti.data(), scrittura ? &scritto : nullptr, static_cast<UINT>(argomenti.size()),
                       scrittura ? 1U : 0U};
  adapters::win32::VariantCom risultato;
  EXCEPINFO eccezione{};
  const Livello livello;
  riferito.reset();
  const HRESULT esito = oggetto.Invoke(membro, IID_NULL, LOCALE_USER_DEFAULT, modi, &parametri,
                                       risultato.Uscita(), &eccezione, nullptr);
  if (esito == kRiferitoAllOspite && riferito) throw host::Errore(*riferito);
  if (FAILED(esito)) throw adapters::win32::ErroreDi(esito, &eccezione);
  return risultato;
}

}  // namespace orve::prova
