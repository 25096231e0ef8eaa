#include "ldap/account_name.h"

#include <string>

#include "orve-mailserver/host/errore.h"
#include "text/unseen.h"

namespace orve::adapters::ldap {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kBefore = "(&(objectCategory=person)(objectClass=user)(samaccountName=";
constexpr std::string_view kBehind = "))";

bool IsHexDigit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

std::string Visible(std::string_view name) {
  return text::ReplaceUnseen(name, [](char32_t code, text::Unseen) { return text::Escaped(code); });
}

}  // namespace

bool BeginsEscape(std::string_view filter, std::size_t backslash) {
  return backslash + 2 < filter.size() && IsHexDigit(filter[backslash + 1]) &&
         IsHexDigit(filter[backslash + 2]);
}

void RequirePlainAccountName(std::string_view query) {
  const std::size_t before = query.find(kBefore);
  if (before == std::string_view::npos) return;
  const std::size_t begin = before + kBefore.size();
  const std::size_t end = query.rfind(kBehind);
  if (end == std::string_view::npos || end < begin) return;  // not the library's query
  for (std::size_t i = begin; i < end; ++i) {
    if ("*()\0"sv.find(query[i]) == std::string_view::npos &&
        (query[i] != '\\' || BeginsEscape(query.substr(0, end), i)))
      continue;
    throw host::Errore(host::kArgomentoNonValido, "Directory",
                       "Il nome dell'utente di rete «" + Visible(query.substr(begin, end - begin)) +
                           "» contiene caratteri che cambierebbero la ricerca nella directory; se ne fanno "
                           "parte, * si scrive \\2a, ( \\28, ) \\29 e \\ \\5c");
  }
}

}  // namespace orve::adapters::ldap
