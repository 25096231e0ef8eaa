// Texts that tests compare whole with a file of the sources.
#ifndef ORVE_TESTS_GOLDEN_H
#define ORVE_TESTS_GOLDEN_H

#include <string>

namespace orve::golden {

/// Where `seen` first differs from the file, both lines told; empty when it does not. `file` counts from the
/// root of the sources. What differs is left in the folder of the build, to be laid beside the other. With
/// ORVE_GOLDEN=rewrite in the environment (`./dev journals`) the file is written anew instead, and nothing
/// differs.
[[nodiscard]] std::string Difference(const std::string& file, const std::string& seen);

}  // namespace orve::golden

#endif  // ORVE_TESTS_GOLDEN_H
