// An ordered list whose items answer to a position, counted from 1, or to a text key compared without case.
// The recipient and sender collections are both built on it.
//
// An iteration holds a position, not a pointer into the list, so changing the list during an iteration skips
// or repeats an item at worst, and never crashes the process.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/errore.h"
#include "orve-mailserver/host/variant.h"

namespace orve {

/// The key in the form in which keys are compared: without case.
[[nodiscard]] ORVE_API std::string PiegaChiave(const std::string& chiave);

/// The list; its items are shared with whoever asks for them, and never absent.
template <class T>
class ORVE_API KeyedList {
 public:
  /// One item; sharing it keeps it alive after its removal.
  using Item = std::shared_ptr<T>;

  /// Walks the items in the order in which they were added; `end()` is wherever the list ends at that moment.
  class Iterator {
   public:
    ///@{
    /// What the standard library asks of an iterator.
    using iterator_category = std::input_iterator_tag;
    using value_type = Item;
    using difference_type = std::ptrdiff_t;
    using pointer = const Item*;
    using reference = Item;
    ///@}

    Iterator() = default;
    /// At a position, from 0; the list must outlive the iterator.
    Iterator(const KeyedList& lista, std::size_t posizione) : lista_(&lista), posizione_(posizione) {}
    /// The item shares ownership, so it outlives its removal. Must not be called at the end.
    [[nodiscard]] Item operator*() const { return lista_->voci_[posizione_].item; }
    /// The next item, whatever has changed meanwhile.
    Iterator& operator++() {
      ++posizione_;
      return *this;
    }
    /// The next item; returns where it was.
    Iterator operator++(int) {
      Iterator prima = *this;
      ++posizione_;
      return prima;
    }
    /// Whether both are at the same position, or both at the end.
    friend bool operator==(const Iterator& a, const Iterator& b) {
      return a.posizione_ == b.posizione_ || (a.AllaFine() && b.AllaFine());
    }

   private:
    [[nodiscard]] bool AllaFine() const { return !lista_ || posizione_ >= lista_->voci_.size(); }
    const KeyedList* lista_ = nullptr;
    std::size_t posizione_ = 0;
  };

  /// What a for-each loop walks; it must not outlive the list.
  class Enumerator {
   public:
    /// Over this list.
    explicit Enumerator(const KeyedList& lista) : lista_(&lista) {}
    /// The first item.
    [[nodiscard]] Iterator begin() const { return lista_->begin(); }
    /// Past the last.
    [[nodiscard]] Iterator end() const { return lista_->end(); }

   private:
    const KeyedList* lista_;
  };

  /// Appends the item; an empty key means no key. Raises 457 when the key is already present; whatever it
  /// raises, the list is unchanged.
  void Add(Item item, const std::string& chiave) {
    std::string piegata = PiegaChiave(chiave);
    if (perChiave_.contains(piegata)) throw host::Errore(host::kChiaveGiaPresente);
    voci_.push_back({item, piegata});
    if (piegata.empty()) return;
    try {
      perChiave_.emplace(std::move(piegata), std::move(item));
    } catch (...) {
      voci_.pop_back();
      throw;
    }
  }

  /// A text is a key (5 when it is unknown), a number a position (9 when there is none); anything else raises
  /// 13.
  [[nodiscard]] Item operator[](const host::Variant& indice) const {
    if (!indice.IsText()) return voci_[Posizione(indice)].item;
    const auto trovata = perChiave_.find(PiegaChiave(indice.ToText()));
    if (trovata == perChiave_.end()) throw host::Errore(host::kArgomentoNonValido);
    return trovata->second;
  }

  /// Same index rules as above.
  void Remove(const host::Variant& indice) {
    const std::size_t posizione = indice.IsText() ? PosizioneDiChiave(indice.ToText()) : Posizione(indice);
    perChiave_.erase(voci_[posizione].chiave);
    voci_.erase(voci_.begin() + static_cast<std::ptrdiff_t>(posizione));
  }

  /// How many items there are.
  [[nodiscard]] std::int32_t Count() const { return static_cast<std::int32_t>(voci_.size()); }

  /// The first item, in the order in which they were added.
  [[nodiscard]] Iterator begin() const { return {*this, 0}; }
  /// Past the last.
  [[nodiscard]] Iterator end() const { return {*this, static_cast<std::size_t>(-1)}; }

 private:
  struct Voce {
    Item item;
    std::string chiave;  // folded; empty for an item without a key
  };

  [[nodiscard]] std::size_t Posizione(const host::Variant& indice) const {
    if (indice.IsNull()) throw host::Errore(host::kTipoNonCorrispondente);
    const double posizione =
        std::nearbyint(indice.ToDouble());  ///< to even, like every number rounded to an integer
    const bool esiste = posizione >= 1 && posizione <= static_cast<double>(voci_.size());
    if (!esiste) throw host::Errore(host::kIndiceFuoriIntervallo);
    return static_cast<std::size_t>(posizione) - 1;
  }

  [[nodiscard]] std::size_t PosizioneDiChiave(const std::string& chiave) const {
    const std::string piegata = PiegaChiave(chiave);
    if (!perChiave_.contains(piegata)) throw host::Errore(host::kArgomentoNonValido);
    const auto trovata =
        std::find_if(voci_.begin(), voci_.end(), [&](const Voce& voce) { return voce.chiave == piegata; });
    return static_cast<std::size_t>(trovata - voci_.begin());
  }

  std::vector<Voce> voci_;
  std::unordered_map<std::string, Item> perChiave_;
};

}  // namespace orve
