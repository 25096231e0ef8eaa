// A value and its replacement: how the service reads every nullable column.
#pragma once

#include "orve-mailserver/host/variant.h"

namespace orve {

/// The value with its type, or the replacement when it is null, empty or all blanks. The number 0 is a value.
/// Raises 13, with the procedure's name after the description, for an object or an array.
[[nodiscard]] host::Variant NVL(const host::Variant& valore, const host::Variant& sostituto);

}  // namespace orve
