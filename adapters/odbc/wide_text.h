// Text as ODBC's wide entry points take and return it, UTF-16 in units of two bytes.
#pragma once

#include <string>
#include <string_view>

namespace orve::adapters::odbc {

/// UTF-8 to UTF-16. Raises 3001 for bytes that are not UTF-8: a statement must not arrive as a different one.
[[nodiscard]] std::u16string Largo(std::string_view testo);

/// UTF-16 to UTF-8; half a surrogate pair becomes U+FFFD.
[[nodiscard]] std::string Stretto(std::u16string_view testo);

}  // namespace orve::adapters::odbc
