// The window controls of the host application, as far as procedures outside the dialogs reach them by name.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "host/oggetto.h"
#include "host/variant.h"

namespace orve::host {

/// Any control of a form.
class Controllo : public Oggetto {};

/// A combo box whose entries carry a number.
class KVL_COMBO : public Controllo {
 public:
  /// Empties the list.
  virtual void EraseCombo() = 0;
  virtual void AutoOpen(bool apre) = 0;
  /// Adds an entry; raises an error when the data do not fit.
  virtual void AddItemData(const std::string& testo, std::int16_t dati) = 0;
  /// Writing the number of an entry selects it.
  virtual void Text(const Variant& valore) = 0;
};

/// A window with named controls.
class Form : public Oggetto {
 public:
  /// The control of that name, compared without case; raises 438 when the form has none.
  [[nodiscard]] virtual std::shared_ptr<Controllo> Controlli(std::string_view nome) = 0;
};

}  // namespace orve::host
