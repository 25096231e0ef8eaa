// The arithmetic of a window that keeps its controls in proportion: every size is measured against the
// proportions as they were first fixed, so rounding errors do not add up.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "orve-mailserver/host/controlli.h"
#include "orve-mailserver/host/layout.h"

namespace orve::adapters::forms {

class Proporzioni {
 public:
  struct Elemento {
    std::string nome;
    std::string cornice;  // empty: the window itself
    host::Rettangolo base;
  };

  /// Takes the window and its controls as they are now as the proportions to keep. A window without a size
  /// keeps none.
  void Fissa(float width, float height, std::vector<Elemento> elementi);
  /// Which of the control's measures follow, as host::KVL_RESIZEFORM::Modo. As long as nothing is registered
  /// every control follows in every measure; afterwards what is in a frame moves with its frame, and the
  /// others stay.
  void Registra(const std::string& nome, std::int16_t modo);
  [[nodiscard]] bool Fissate() const { return width_ > 0 && height_ > 0; }
  /// Where the control of that position goes in a window of this size; `attuale` is where it is now.
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
