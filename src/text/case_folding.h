// Letters without regard to case.
#pragma once

namespace orve::text {

/// The one character that stands for all cases of a letter; anything else stands for itself. A letter that
/// becomes several characters in the other case, such as the German sharp s, stays as it is.
[[nodiscard]] char32_t FoldedCase(char32_t code);

}  // namespace orve::text
