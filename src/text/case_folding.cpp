// The table is our own because the standard library has none: its functions depend on the locale of the
// process, which is the application's to choose, and on Windows they see half a character at a time.
#include "text/case_folding.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace orve::text {

namespace {

// Letters at the same distance from their folded form, contiguous or every other one.
struct Letters {
  char32_t first;
  char32_t last;
  std::uint32_t step;
  std::int32_t shift;
};

constexpr auto kLetters = std::to_array<Letters>({
#include "text/case_folding.inc"
});

}  // namespace

char32_t FoldedCase(char32_t code) {
  const auto* const letters =
      std::lower_bound(kLetters.begin(), kLetters.end(), code,
                       [](const Letters& one, char32_t wanted) { return one.last < wanted; });
  const bool found =
      letters != kLetters.end() && code >= letters->first && (code - letters->first) % letters->step == 0;
  return found ? static_cast<char32_t>(static_cast<std::int32_t>(code) + letters->shift) : code;
}

}  // namespace orve::text
