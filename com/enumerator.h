// The enumerators that clients walk: of a for-each loop over a collection, and those of connection points.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "contato.h"
#include "errori.h"
#include "orve-mailserver/host/variant.h"
#include "win32/com_ptr.h"

namespace orve::com {

/// `Interfaccia` is the enumerator's interface. `Elenco` says how many elements there are (Quanti), hands out
/// an owner of the one at a position (Voce) and writes it for the client, which then owns it (Consegna).
template <class Interfaccia, class Elemento, class Elenco>
class Enumerator final : public Contato<Interfaccia> {
 public:
  explicit Enumerator(Elenco elenco, std::int32_t posizione = 0)
      : elenco_(std::move(elenco)), posizione_(posizione) {}

  HRESULT STDMETHODCALLTYPE Next(ULONG quanti, Elemento* elementi, ULONG* dati) override {
    if (elementi == nullptr || (dati == nullptr && quanti > 1)) return E_POINTER;
    std::vector<decltype(elenco_.Voce(0))> prese;
    const HRESULT esito = Esegui(__uuidof(Interfaccia), [&] {
      for (; prese.size() < quanti && posizione_ < elenco_.Quanti(); ++posizione_) {
        prese.push_back(elenco_.Voce(posizione_));
      }
    });
    if (FAILED(esito)) prese.clear();
    for (auto& presa : prese) Elenco::Consegna(presa, *elementi++);
    if (dati != nullptr) *dati = static_cast<ULONG>(prese.size());
    if (FAILED(esito)) return esito;
    return prese.size() == quanti ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG quanti) override {
    const auto rimasti = static_cast<ULONG>(std::max(0, elenco_.Quanti() - posizione_));
    posizione_ += static_cast<std::int32_t>(std::min(quanti, rimasti));
    return quanti <= rimasti ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    posizione_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(Interfaccia** copia) override {
    if (copia == nullptr) return E_POINTER;
    *copia = nullptr;
    return Esegui(__uuidof(Interfaccia), [&] {
      *copia = adapters::win32::ComPtr<Interfaccia>(new Enumerator(elenco_, posizione_)).Cedi();
    });
  }

 private:
  Elenco elenco_;
  std::int32_t posizione_;
};

template <class Interfaccia, class Elemento, class Elenco>
adapters::win32::ComPtr<Interfaccia> NuovoEnumeratore(Elenco elenco) {
  return adapters::win32::ComPtr<Interfaccia>(
      new Enumerator<Interfaccia, Elemento, Elenco>(std::move(elenco)));
}

/// The items of a collection by position, so changing the collection during the loop skips or repeats an item
/// at worst. `Pubblica` creates the item's public object.
template <class Collezione, class Pubblica>
class ElencoCollezione {
 public:
  ElencoCollezione(std::shared_ptr<Collezione> collezione, Pubblica pubblica)
      : collezione_(std::move(collezione)), pubblica_(std::move(pubblica)) {}

  [[nodiscard]] std::int32_t Quanti() const { return collezione_->Count(); }
  [[nodiscard]] adapters::win32::VariantCom Voce(std::int32_t posizione) const {
    return adapters::win32::VariantCom::DiOggetto(
        pubblica_(collezione_->Item(host::Variant(posizione + 1))).Get());
  }
  static void Consegna(adapters::win32::VariantCom& voce, VARIANT& valore) { valore = voce.Cedi(); }

 private:
  std::shared_ptr<Collezione> collezione_;
  Pubblica pubblica_;
};

template <class Collezione, class Pubblica>
adapters::win32::ComPtr<IEnumVARIANT> EnumeratoreDi(std::shared_ptr<Collezione> collezione,
                                                    Pubblica pubblica) {
  return NuovoEnumeratore<IEnumVARIANT, VARIANT>(
      ElencoCollezione<Collezione, Pubblica>(std::move(collezione), std::move(pubblica)));
}

/// A fixed list of owners.
template <class Tipo>
class ElencoFisso {
 public:
  explicit ElencoFisso(std::vector<Tipo> voci) : voci_(std::move(voci)) {}

  [[nodiscard]] std::int32_t Quanti() const { return static_cast<std::int32_t>(voci_.size()); }
  [[nodiscard]] Tipo Voce(std::int32_t posizione) const { return voci_[static_cast<std::size_t>(posizione)]; }

 private:
  std::vector<Tipo> voci_;
};

}  // namespace orve::com
