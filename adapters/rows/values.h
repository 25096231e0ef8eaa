// Numbers from a database as the library's value type holds them.
#pragma once

#include <cstdint>
#include <limits>

#include "orve-mailserver/host/variant.h"

namespace orve::adapters::rows {

/// A whole number as a 32-bit integer where it fits, else as a 64-bit float.
[[nodiscard]] inline host::Variant DaIntero(std::int64_t numero) {
  if (numero >= std::numeric_limits<std::int32_t>::min() &&
      numero <= std::numeric_limits<std::int32_t>::max()) {
    return static_cast<std::int32_t>(numero);
  }
  return static_cast<double>(numero);
}

}  // namespace orve::adapters::rows
