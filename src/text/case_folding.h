// Letters without regard to case.
#pragma once

namespace orve::text {

/// The one character that stands for all cases of a letter; anything else stands for itself. What becomes
/// several characters in the other case, as the German sharp s does, stays as it is.
[[nodiscard]] char32_t FoldedCase(char32_t code);

}  // namespace orve::text
