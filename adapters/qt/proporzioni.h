// The control that keeps a window's controls in proportion.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "qt/form_qt.h"

namespace orve::adapters::qt {

class FormQt::Proporzioni : public Controllo<host::KVL_RESIZEFORM> {
 public:
  Proporzioni(const host::LayoutControllo& layout, FormQt& form);
  void Avvia() override;
  void RegistraControllo(const std::string& nome, std::int16_t modo) override;

  /// Brings the controls in proportion to the window as it is now. Nothing before Avvia.
  void Segui();

 private:
  struct Base {
    Elemento* elemento;
    host::Rettangolo rettangolo;
  };

  [[nodiscard]] std::int16_t ModoDi(const Elemento& elemento) const;

  FormQt& form_;
  bool avviata_ = false;
  float width_ = 0;
  float height_ = 0;
  std::vector<Base> base_;
  std::map<std::string, std::int16_t> registrati_;  // by folded name
};

}  // namespace orve::adapters::qt
