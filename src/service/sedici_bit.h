// Counters and positions held in 16 bits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

#include "orve-mailserver/host/errore.h"

namespace orve {

/// The count or position as a 16-bit number; raises 6 when it does not fit.
[[nodiscard]] inline std::int16_t InSediciBit(std::size_t valore) {
  if (valore > static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max())) {
    throw host::Errore(host::kOverflow);
  }
  return static_cast<std::int16_t>(valore);
}

}  // namespace orve
