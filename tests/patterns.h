// Patterns in the texts that tests look at. What <regex> costs to compile is paid once, here.
#ifndef ORVE_TESTS_PATTERNS_H
#define ORVE_TESTS_PATTERNS_H

#include <set>
#include <string>

namespace orve::patterns {

/// The different places of `text` that match `pattern`, an ECMAScript regular expression.
[[nodiscard]] std::set<std::string> Found(const std::string& text, const std::string& pattern);

/// `text` with `with` wherever it matched `pattern`.
[[nodiscard]] std::string Replaced(const std::string& text, const std::string& pattern,
                                   const std::string& with);

}  // namespace orve::patterns

#endif  // ORVE_TESTS_PATTERNS_H
