// The enumerator of a for-each loop over a collection.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>

#include "errori.h"
#include "modulo.h"
#include "win32/com_ptr.h"

namespace orve::com {

/// Walks the items by position, so changing the collection during the loop skips or repeats an item at worst.
/// `Pubblica` creates the item's public object.
template <class Collezione, class Pubblica>
class Enumeratore final : public IEnumVARIANT {
 public:
  Enumeratore(std::shared_ptr<Collezione> collezione, Pubblica pubblica, std::int32_t posizione = 0)
      : collezione_(std::move(collezione)), pubblica_(std::move(pubblica)), posizione_(posizione) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** oggetto) override {
    if (oggetto == nullptr) return E_POINTER;
    *oggetto = iid == IID_IUnknown || iid == IID_IEnumVARIANT ? this : nullptr;
    if (*oggetto == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override {
    return static_cast<ULONG>(InterlockedIncrement(&riferimenti_));
  }
  ULONG STDMETHODCALLTYPE Release() override {
    const LONG rimasti = InterlockedDecrement(&riferimenti_);
    if (rimasti == 0) delete this;
    return static_cast<ULONG>(rimasti);
  }

  HRESULT STDMETHODCALLTYPE Next(ULONG quanti, VARIANT* valori, ULONG* dati) override {
    if (valori == nullptr || (dati == nullptr && quanti > 1)) return E_POINTER;
    ULONG presi = 0;
    const HRESULT esito = Esegui(IID_IEnumVARIANT, [&] {
      for (; presi < quanti && posizione_ < collezione_->Count(); ++presi) {
        const auto oggetto = pubblica_(collezione_->Item(host::Variant(posizione_ + 1)));
        valori[presi] = adapters::win32::VariantCom::DiOggetto(oggetto.Get()).Cedi();
        ++posizione_;
      }
    });
    if (FAILED(esito)) {
      while (presi > 0) VariantClear(&valori[--presi]);
    }
    if (dati != nullptr) *dati = presi;
    if (FAILED(esito)) return esito;
    return presi == quanti ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG quanti) override {
    const auto rimasti = static_cast<ULONG>(std::max(0, collezione_->Count() - posizione_));
    posizione_ += static_cast<std::int32_t>(std::min(quanti, rimasti));
    return quanti <= rimasti ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    posizione_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** copia) override {
    if (copia == nullptr) return E_POINTER;
    *copia = nullptr;
    return Esegui(IID_IEnumVARIANT, [&] {
      *copia = new Enumeratore(collezione_, pubblica_, posizione_);
      (*copia)->AddRef();
    });
  }

 private:
  ~Enumeratore() = default;

  Presenza presenza_;
  LONG riferimenti_ = 0;
  std::shared_ptr<Collezione> collezione_;
  Pubblica pubblica_;
  std::int32_t posizione_;
};

template <class Collezione, class Pubblica>
void EsportaEnumeratore(std::shared_ptr<Collezione> collezione, Pubblica pubblica, IUnknown** valore) {
  *valore = new Enumeratore<Collezione, Pubblica>(std::move(collezione), std::move(pubblica));
  (*valore)->AddRef();
}

}  // namespace orve::com
