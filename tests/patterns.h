// Patterns in the texts that tests look at. <regex> is slow to compile, so most tests look through these.
#pragma once

#include <set>
#include <string>

namespace orve::patterns {

/// The different places of `text` that match `pattern`, an ECMAScript regular expression.
[[nodiscard]] std::set<std::string> Found(const std::string& text, const std::string& pattern);

/// `text` with `with` wherever it matched `pattern`.
[[nodiscard]] std::string Replaced(const std::string& text, const std::string& pattern,
                                   const std::string& with);

}  // namespace orve::patterns
