// The arithmetic of a window that keeps its controls in proportion: every size is measured against the
// proportions of the moment at which they were fixed, so that no rounding adds up.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "host/controlli.h"
#include "host/layout.h"

namespace orve::adapters::forms {

class Proporzioni {
 public:
  struct Elemento {
    std::string nome;
    std::string cornice;  // empty: the window itself
    host::Rettangolo base;
  };

  /// Takes the window and its controls as they stand as the proportions to keep. A window without a size
  /// keeps none.
  void Fissa(float width, float height, std::vector<Elemento> elementi);
  /// What of the control follows, as host::KVL_RESIZEFORM::Modo. While nothing is registered every control
  /// follows in all; afterwards what stands in a frame goes with its frame, and the others stay.
  void Registra(const std::string& nome, std::int16_t modo);
  [[nodiscard]] bool Fissate() const { return width_ > 0 && height_ > 0; }
  /// Where the control of that position goes in a window of this size; `attuale` is where it stands.
  [[nodiscard]] host::Rettangolo Segue(std::size_t elemento, const host::Rettangolo& attuale, float width,
                                       float height) const;

 private:
  [[nodiscard]] std::int16_t ModoDi(const Elemento& elemento) const;

  float width_ = 0;
  float height_ = 0;
  std::vector<Elemento> elementi_;
  std::map<std::string, std::int16_t> registrati_;  // by folded name
};

}  // namespace orve::adapters::forms
