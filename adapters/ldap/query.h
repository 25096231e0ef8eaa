// The texts in which the library speaks to the directory: paths, and queries of four parts.
//
// A user name is in the query's filter unescaped, and is refused where it would act as more than a name
// (account_name.h). In addition the reader takes the parts from both ends and leaves what is between them as
// the filter, a single expression.
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

/// The "adsPath", which is not an attribute but something the directory says about every entry.
inline constexpr std::string_view kPathAttribute = "adsPath";

/// The name after "LDAP://"; empty for "LDAP://rootDSE". Raises 5 for anything else, since the server is
/// chosen by the options, not by paths.
[[nodiscard]] std::string NameOfPath(const std::string& path);
/// The path of an entry.
[[nodiscard]] std::string PathOfName(const std::string& name);

/// Reads "<path>;filter;attribute,attribute;depth". Raises 5 for text in any other form.
[[nodiscard]] Query ReadQuery(const std::string& query);

}  // namespace orve::adapters::ldap
