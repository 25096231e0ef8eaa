// The texts in which the library speaks to the directory: paths, and queries of four parts.
//
// A user name stands in the query's filter unescaped, and is refused where it would count as more than a name
// (account_name.h). The reader besides takes the parts from both ends and leaves the filter what is between,
// as a single expression.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orve::adapters::ldap {

enum class Depth { kBase, kOneLevel, kSubtree };

struct Query {
  std::string base;  // distinguished name
  std::string filter;
  std::vector<std::string> attributes;
  Depth depth = Depth::kSubtree;
};

/// The path of "adsPath", which is no attribute but what the directory says of every entry.
inline constexpr std::string_view kPathAttribute = "adsPath";

/// The name behind "LDAP://"; empty for "LDAP://rootDSE". Raises 5 for anything else, since the server is a
/// matter of the options and not of paths.
[[nodiscard]] std::string NameOfPath(const std::string& path);
/// The path of an entry.
[[nodiscard]] std::string PathOfName(const std::string& name);

/// Reads "<path>;filter;attribute,attribute;depth". Raises 5 for a text of another form.
[[nodiscard]] Query ReadQuery(const std::string& query);

}  // namespace orve::adapters::ldap
