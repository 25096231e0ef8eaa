// The sends whose every operation fails once.
#pragma once

#include <vector>

#include "faults/prova.h"

namespace orve::faults {

/// Named as their tables in tables/*.txt.
[[nodiscard]] const std::vector<Scena>& Scene();

}  // namespace orve::faults
