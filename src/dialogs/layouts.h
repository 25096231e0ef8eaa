// The layout tables of the two windows, from which any toolkit builds them.
#pragma once

#include "orve-mailserver/host/layout.h"

namespace orve {

[[nodiscard]] const host::LayoutForm& LayoutOpzMail();
[[nodiscard]] const host::LayoutForm& LayoutMailParams();

}  // namespace orve
