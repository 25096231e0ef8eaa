// From an object of the library to the widget behind it.
#pragma once

#include "orve-mailserver/host/oggetto.h"

class QWidget;

namespace orve::adapters::qt {

/// The window of a form made here; nullptr for anything else.
[[nodiscard]] QWidget* FinestraDi(host::Oggetto* oggetto);

}  // namespace orve::adapters::qt
