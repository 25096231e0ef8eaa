// The control that keeps a window's controls in proportion.
#pragma once

#include <string>

#include "forms/proporzioni.h"
#include "qt/form_qt.h"

namespace orve::adapters::qt {

class FormQt::Proporzioni : public Controllo<host::KVL_RESIZEFORM> {
 public:
  Proporzioni(const host::LayoutControllo& layout, FormQt& form);
  void Avvia() override;
  void RegistraControllo(const std::string& nome, std::int16_t modo) override;

  /// Brings the controls into proportion with the window as it is now. Does nothing before Avvia.
  void Segui();

 private:
  FormQt& form_;
  bool avviata_ = false;
  forms::Proporzioni misure_;
};

}  // namespace orve::adapters::qt
