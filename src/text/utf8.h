// One character of UTF-8 at a time, for the operations of this folder.
#pragma once

#include <cstddef>
#include <string_view>

namespace orve::text {

struct Character {
  char32_t code;     // U+FFFD for a byte that is not valid UTF-8
  std::size_t size;  // in bytes, at least 1
};

/// The first character of a non-empty text.
[[nodiscard]] Character Front(std::string_view testo);

}  // namespace orve::text
