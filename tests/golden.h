// Texts that tests compare as a whole with a file in the sources.
#ifndef ORVE_TESTS_GOLDEN_H
#define ORVE_TESTS_GOLDEN_H

#include <string>

namespace orve::golden {

/// Where `seen` first differs from the file, giving both lines; empty when it does not. `file` is relative to
/// the root of the sources. A differing text is left in the build folder, for comparison. With
/// ORVE_GOLDEN=rewrite in the environment (`./dev journals`) the file is rewritten instead, and nothing
/// differs.
[[nodiscard]] std::string Difference(const std::string& file, const std::string& seen);

}  // namespace orve::golden

#endif  // ORVE_TESTS_GOLDEN_H
