// The enumerators that the interfaces of connection points ask for, over a fixed list.
#pragma once

#include <windows.h>

#include <ocidl.h>

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "modulo.h"

namespace orve::com {

/// `Interfaccia` is the enumerator's interface, `Voce` an owner of one element; `Copia` writes the element
/// for the client, which then owns it.
template <class Interfaccia, class Elemento, class Voce, void (*Copia)(const Voce&, Elemento&)>
class ElencoFisso final : public Interfaccia {
 public:
  explicit ElencoFisso(std::vector<Voce> voci, std::size_t posizione = 0)
      : voci_(std::move(voci)), posizione_(posizione) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** oggetto) override {
    if (oggetto == nullptr) return E_POINTER;
    *oggetto = iid == IID_IUnknown || iid == __uuidof(Interfaccia) ? this : nullptr;
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

  HRESULT STDMETHODCALLTYPE Next(ULONG quanti, Elemento* elementi, ULONG* dati) override {
    if (elementi == nullptr || (dati == nullptr && quanti != 1)) return E_POINTER;
    ULONG presi = 0;
    for (; presi < quanti && posizione_ < voci_.size(); ++presi) Copia(voci_[posizione_++], elementi[presi]);
    if (dati != nullptr) *dati = presi;
    return presi == quanti ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG quanti) override {
    const std::size_t saltati = std::min<std::size_t>(quanti, voci_.size() - posizione_);
    posizione_ += saltati;
    return saltati == quanti ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    posizione_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(Interfaccia** copia) override {
    if (copia == nullptr) return E_POINTER;
    *copia = nullptr;
    return Esegui(__uuidof(Interfaccia), [&] {
      *copia = new ElencoFisso(voci_, posizione_);
      (*copia)->AddRef();
    });
  }

 private:
  ~ElencoFisso() = default;

  Presenza presenza_;
  LONG riferimenti_ = 0;
  std::vector<Voce> voci_;
  std::size_t posizione_;
};

}  // namespace orve::com
