#include "class_factory.h"

#include <algorithm>
#include <array>

#include "contato.h"
#include "destinatari_com.h"
#include "errori.h"
#include "mittenti_com.h"
#include "service_com.h"
#include "win32/ambiente_win32.h"

namespace orve::com {

namespace {

template <class Classe, class Interfaccia, class Nucleo>
IUnknown* Crea() {
  return PubblicoDi<Classe, Interfaccia>(std::make_shared<Nucleo>(adapters::win32::CreaAmbienteWin32()))
      .Cedi();
}

const std::array<CreatableClass, 4> kClassi = {{
    {&CLSID_CLSFW_MAILSERVER, L"CLSFW_MAILSERVER",
     Crea<CLSFW_MAILSERVERCom, ICLSFW_MAILSERVER, CLSFW_MAILSERVER>},
    {&CLSID_CollDestinatari, L"CollDestinatari", Crea<CollDestinatariCom, ICollDestinatari, CollDestinatari>},
    {&CLSID_CollMittenti, L"CollMittenti", Crea<CollMittentiCom, ICollMittenti, CollMittenti>},
    {&CLSID_Mittente, L"Mittente", Crea<MittenteCom, IMittente, Mittente>},
}};

class ClassFactory final : public Contato<IClassFactory> {
 public:
  explicit ClassFactory(const CreatableClass& classe) : classe_(classe) {}

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* esterno, REFIID iid, void** oggetto) override {
    if (oggetto == nullptr) return E_POINTER;
    *oggetto = nullptr;
    if (esterno != nullptr) return CLASS_E_NOAGGREGATION;
    HRESULT preso = S_OK;
    const HRESULT esito = Esegui(IID_IClassFactory, [&] {
      const auto nuovo = adapters::win32::ComPtr<IUnknown>::Adotta(classe_.crea());
      preso = nuovo->QueryInterface(iid, oggetto);
    });
    return FAILED(esito) ? esito : preso;
  }

  HRESULT STDMETHODCALLTYPE LockServer(BOOL blocca) override {
    if (blocca != FALSE) {
      InterlockedIncrement(&blocchi_);
      AddRef();
    } else if (InterlockedDecrement(&blocchi_) >= 0) {
      Release();
    } else {
      InterlockedIncrement(&blocchi_);  // more unlocks than locks
    }
    return S_OK;
  }

 private:
  LONG blocchi_ = 0;
  const CreatableClass& classe_;
};

}  // namespace

std::span<const CreatableClass> ClassiCreabili() {
  return kClassi;
}

HRESULT FabbricaDi(REFCLSID classe, REFIID iid, void** fabbrica) noexcept {
  if (fabbrica == nullptr) return E_POINTER;
  *fabbrica = nullptr;
  const auto* const trovata = std::ranges::find_if(
      kClassi, [&](const CreatableClass& creabile) { return *creabile.identificatore == classe; });
  if (trovata == std::end(kClassi)) return CLASS_E_CLASSNOTAVAILABLE;
  HRESULT preso = S_OK;
  const HRESULT esito = Esegui(IID_IClassFactory, [&] {
    // Esegui takes care of running out of memory. NOLINTNEXTLINE(bugprone-unhandled-exception-at-new)
    const adapters::win32::ComPtr<ClassFactory> nuova(new ClassFactory(*trovata));
    preso = nuova->QueryInterface(iid, fabbrica);
  });
  return FAILED(esito) ? esito : preso;
}

}  // namespace orve::com
