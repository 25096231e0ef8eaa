// The account name in the library's query, whose filter contains it as it is.
#pragma once

#include <string_view>

namespace orve::adapters::ldap {

/// Raises 5 when `query` is the library's search for a user and the name in it could make it find others:
/// with a star, a bracket, a NUL or a backslash. Characters that are already escaped (a backslash and two
/// digits) remain part of a name. Other queries pass.
void RequirePlainAccountName(std::string_view query);

/// True when the backslash at that position begins an escape: two hexadecimal digits follow.
[[nodiscard]] bool BeginsEscape(std::string_view filter, std::size_t backslash);

}  // namespace orve::adapters::ldap
