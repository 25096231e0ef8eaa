// Where the sources and the build are. Only one file is compiled with these paths, so that compiled results
// of the others can be reused by a checkout anywhere.
#ifndef ORVE_TESTS_PLACES_H
#define ORVE_TESTS_PLACES_H

#include <string>

namespace orve::places {

/// The absolute path of `path`, which is relative to the root of the sources.
[[nodiscard]] std::string Source(const std::string& path);
/// The same from the root of the build.
[[nodiscard]] std::string Build(const std::string& path = "");
/// The reference host's program.
[[nodiscard]] std::string Program();

}  // namespace orve::places

#endif  // ORVE_TESTS_PLACES_H
