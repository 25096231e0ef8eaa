// What the library calls a person's data, and what directories call it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orve::adapters::ldap {

/// The directory's own name of a member of a person ("FirstName": "givenName"), compared without case. Any
/// other name is taken as the directory's own.
[[nodiscard]] std::string AttributeOf(std::string_view member);

/// The attributes of all members.
[[nodiscard]] const std::vector<std::string>& PersonAttributes();

}  // namespace orve::adapters::ldap
