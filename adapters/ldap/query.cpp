#include "ldap/query.h"

#include "ldap/account_name.h"
#include "orve-mailserver/host/errore.h"
#include "text/text.h"

namespace orve::adapters::ldap {

namespace {

constexpr std::string_view kScheme = "LDAP://";
constexpr std::string_view kRoot = "rootDSE";

[[noreturn]] void Refuse(const std::string& description) {
  throw host::Errore(host::kArgomentoNonValido, "Directory", description);
}

Depth DepthOf(std::string_view word) {
  if (text::EqualsIgnoreCase(word, "base")) return Depth::kBase;
  if (text::EqualsIgnoreCase(word, "onelevel")) return Depth::kOneLevel;
  if (text::EqualsIgnoreCase(word, "subtree")) return Depth::kSubtree;
  Refuse("Profondità della ricerca sconosciuta");
}

// One expression in brackets and nothing after it. A bracket that is part of a value is written in digits, so
// counting is exact. libldap would also accept a backslash before a bracket, and so read a different filter
// from the one counted here.
bool OneExpression(std::string_view filter) {
  int open = 0;
  for (std::size_t i = 0; i < filter.size(); ++i) {
    if (filter[i] == '\\' && !BeginsEscape(filter, i)) return false;
    if (filter[i] == '(') ++open;
    if (filter[i] == ')') --open;
    if (open <= 0) return open == 0 && i > 0 && i + 1 == filter.size();
  }
  return false;
}

}  // namespace

std::string NameOfPath(const std::string& path) {
  const bool known = text::EqualsIgnoreCase(path.substr(0, kScheme.size()), kScheme);
  const std::string name = known ? path.substr(kScheme.size()) : std::string();
  if (name.empty() || name.find('\0') != std::string::npos) Refuse("Percorso della directory non valido");
  return text::EqualsIgnoreCase(name, kRoot) ? std::string() : name;
}

std::string PathOfName(const std::string& name) {
  return std::string(kScheme) + name;
}

Query ReadQuery(const std::string& query) {
  RequirePlainAccountName(query);
  const std::size_t base = query.find(">;");
  const std::size_t depth = query.rfind(';');
  const std::size_t attributes = depth == std::string::npos ? depth : query.rfind(';', depth - 1);
  const bool form = query.starts_with("<") && base != std::string::npos && attributes > base + 1 &&
                    depth > attributes && query.find('\0') == std::string::npos;
  if (!form) Refuse("Interrogazione della directory non valida");
  Query read;
  read.base = NameOfPath(query.substr(1, base - 1));
  read.filter = query.substr(base + 2, attributes - base - 2);
  if (!OneExpression(read.filter)) Refuse("Filtro della ricerca nella directory non valido");
  const std::string_view names = std::string_view(query).substr(attributes + 1, depth - attributes - 1);
  for (const std::string_view name : text::Split(names, ',')) read.attributes.emplace_back(text::Trim(name));
  if (read.attributes.empty()) Refuse("Interrogazione della directory senza attributi");
  read.depth = DepthOf(text::Trim(std::string_view(query).substr(depth + 1)));
  return read;
}

}  // namespace orve::adapters::ldap
