#include "patterns.h"

#include <regex>

namespace orve::patterns {

std::set<std::string> Found(const std::string& text, const std::string& pattern) {
  const std::regex expression(pattern);
  std::set<std::string> found;
  for (std::sregex_iterator match(text.begin(), text.end(), expression); match != std::sregex_iterator();
       ++match) {
    found.insert(match->str());
  }
  return found;
}

std::string Replaced(const std::string& text, const std::string& pattern, const std::string& with) {
  return std::regex_replace(text, std::regex(pattern), with);
}

}  // namespace orve::patterns
