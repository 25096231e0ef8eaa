// The window of the address book, on Qt 6 Widgets: a search that narrows the list while one types, and the
// addresses of the party that is chosen. Qt's headers are not exposed here.
#pragma once

#include <optional>

#include "orve-mail/address-book/rubrica_manager.h"

namespace orve::app {

/// Shows the book over the active window; none when the person leaves it. Raises 429 where no window can be
/// opened.
[[nodiscard]] std::optional<SceltaRubrica> MostraFinestraRubrica(AperturaRubrica apertura);

}  // namespace orve::app
