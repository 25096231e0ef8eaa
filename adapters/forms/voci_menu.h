// The entries of a menu button, as every toolkit keeps them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "orve-mailserver/host/variant.h"

namespace orve::adapters::forms {

struct VoceMenu {
  std::string didascalia;
  std::string chiave;
  bool attiva = true;
};

class VociMenu {
 public:
  /// Adds an entry at the end, in the state that EnableMenuItem asked for in advance.
  void Aggiungi(const std::string& didascalia, const std::string& chiave);
  /// By key, compared without case, or by position from 1; a key that occurs twice means every such entry.
  /// Remembered for an entry that does not exist yet. Raises 9 for a position below 1.
  void Abilita(const host::Variant& chiaveOPosizione, bool attiva);

  [[nodiscard]] const std::vector<VoceMenu>& Voci() const { return voci_; }
  /// The entry with this key, or nullptr.
  [[nodiscard]] const VoceMenu* ConChiave(const std::string& chiave) const;

 private:
  std::vector<VoceMenu> voci_;
  std::map<std::string, bool> attesePerChiave_;      // folded
  std::map<std::int32_t, bool> attesePerPosizione_;  // from 1
};

}  // namespace orve::adapters::forms
