#include "service/address_check.h"

#include <cstddef>

namespace orve {

namespace {

// The pattern's classes are ASCII, so single bytes can be examined: no byte of another character belongs to
// any of them.

bool IsLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
bool IsAlphanumeric(char c) {
  return IsLetter(c) || (c >= '0' && c <= '9');
}
bool IsWord(char c) {
  return IsAlphanumeric(c) || c == '_';
}
bool IsLocal(char c) {
  return IsWord(c) || c == '.' || c == '%' || c == '+' || c == '-';
}
bool IsDomain(char c) {
  return IsAlphanumeric(c) || c == '.' || c == '-';
}

// The text before the at sign ends in characters of a local part, and one of them follows a word boundary.
// Every word character is allowed in a local part, so the first one in the run is at a boundary, and a run
// without any has none.
bool EndsInLocalPart(std::string_view prima) {
  for (std::size_t i = prima.size(); i > 0 && IsLocal(prima[i - 1]); --i) {
    if (IsWord(prima[i - 1])) return true;
  }
  return false;
}

// 2 to 15 letters and then a word boundary.
bool StartsWithTopLevelDomain(std::string_view testo) {
  std::size_t letters = 0;
  while (letters < testo.size() && IsLetter(testo[letters])) ++letters;
  const bool boundary = letters == testo.size() || !IsWord(testo[letters]);
  return boundary && letters >= 2 && letters <= 15;
}

// At least one character of a domain, a point, and then a top-level domain.
bool StartsWithDomain(std::string_view dopo) {
  std::size_t i = 0;
  while (i < dopo.size() && IsDomain(dopo[i])) {
    if (dopo[i] == '.' && i > 0 && StartsWithTopLevelDomain(dopo.substr(i + 1))) return true;
    ++i;
  }
  return false;
}

}  // namespace

bool ContieneIndirizzo(std::string_view testo) noexcept {
  // Neither part can hold an at sign, so no character is examined more than a few times.
  for (std::size_t at = testo.find('@'); at != std::string_view::npos; at = testo.find('@', at + 1)) {
    if (EndsInLocalPart(testo.substr(0, at)) && StartsWithDomain(testo.substr(at + 1))) return true;
  }
  return false;
}

}  // namespace orve
