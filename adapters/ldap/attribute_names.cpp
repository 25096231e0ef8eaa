#include "ldap/attribute_names.h"

#include <algorithm>
#include <array>

#include "text/text.h"

namespace orve::adapters::ldap {

namespace {

struct Name {
  const char* member;
  const char* attribute;
};

constexpr std::array<Name, 8> kNames = {{
    {"FirstName", "givenName"},
    {"LastName", "sn"},
    {"EmployeeID", "employeeID"},
    {"Title", "title"},
    {"Division", "division"},
    {"TelephoneNumber", "telephoneNumber"},
    {"FaxNumber", "facsimileTelephoneNumber"},
    {"EmailAddress", "mail"},
}};

}  // namespace

std::string AttributeOf(std::string_view member) {
  const auto* const found = std::find_if(kNames.begin(), kNames.end(), [member](const Name& name) {
    return text::EqualsIgnoreCase(name.member, member);
  });
  return found != kNames.end() ? found->attribute : std::string(member);
}

const std::vector<std::string>& PersonAttributes() {
  static const std::vector<std::string> kAll = [] {
    std::vector<std::string> all;
    all.reserve(kNames.size());
    for (const Name& name : kNames) all.emplace_back(name.attribute);
    return all;
  }();
  return kAll;
}

}  // namespace orve::adapters::ldap
