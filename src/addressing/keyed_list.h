// An ordered list whose items answer to a position, counted from 1, or to a text key compared without case.
// It is the common ground of the recipient and the sender collection.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/errore.h"
#include "host/variant.h"
#include "text/text.h"

namespace orve {

template <class T>
class ListaConChiavi {
 public:
  using Item = std::shared_ptr<T>;

  /// Appends the item; an empty key is no key. Raises 457 when the key is already held.
  void Add(Item item, const std::string& chiave) {
    std::string piegata = text::FoldCase(chiave);
    if (!piegata.empty() && perChiave_.contains(piegata)) throw host::Errore(host::kChiaveGiaPresente);
    if (!piegata.empty()) perChiave_.emplace(piegata, item);
    voci_.push_back(std::move(item));
    chiavi_.push_back(std::move(piegata));
  }

  /// A text is a key (5 when it is unknown), a number a position (9 when there is none); anything else
  /// raises 13.
  [[nodiscard]] const Item& operator[](const host::Variant& indice) const {
    if (!indice.IsText()) return voci_[Posizione(indice)];
    const auto trovata = perChiave_.find(text::FoldCase(indice.ToText()));
    if (trovata == perChiave_.end()) throw host::Errore(host::kArgomentoNonValido);
    return trovata->second;
  }

  /// Same index rules as above.
  void Remove(const host::Variant& indice) {
    const std::size_t posizione = indice.IsText() ? PosizioneDiChiave(indice.ToText()) : Posizione(indice);
    perChiave_.erase(chiavi_[posizione]);
    voci_.erase(voci_.begin() + static_cast<std::ptrdiff_t>(posizione));
    chiavi_.erase(chiavi_.begin() + static_cast<std::ptrdiff_t>(posizione));
  }

  [[nodiscard]] std::int32_t Count() const { return static_cast<std::int32_t>(voci_.size()); }

  /// The items in the order in which they came; the walk ends when the list is changed.
  [[nodiscard]] auto begin() const { return voci_.begin(); }
  [[nodiscard]] auto end() const { return voci_.end(); }

 private:
  [[nodiscard]] std::size_t Posizione(const host::Variant& indice) const {
    const std::int32_t posizione = indice.ToInt32();
    if (posizione < 1 || posizione > Count()) throw host::Errore(host::kIndiceFuoriIntervallo);
    return static_cast<std::size_t>(posizione - 1);
  }

  [[nodiscard]] std::size_t PosizioneDiChiave(const std::string& chiave) const {
    const std::string piegata = text::FoldCase(chiave);
    const auto trovata = std::find(chiavi_.begin(), chiavi_.end(), piegata);
    if (piegata.empty() || trovata == chiavi_.end()) throw host::Errore(host::kArgomentoNonValido);
    return static_cast<std::size_t>(trovata - chiavi_.begin());
  }

  std::vector<Item> voci_;
  std::vector<std::string> chiavi_;  // one for each item, empty for an item without a key
  std::unordered_map<std::string, Item> perChiave_;
};

}  // namespace orve
