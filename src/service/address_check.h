// The address check: whether the pattern \b[A-Z0-9._%+-]+@[A-Z0-9.-]+\.[A-Z]{2,15}\b, without regard to case,
// is found anywhere in a text.
#pragma once

#include <string_view>

namespace orve {

/// Linear in the length of the text, without recursion and without allocation.
[[nodiscard]] bool ContieneIndirizzo(std::string_view testo) noexcept;

}  // namespace orve
