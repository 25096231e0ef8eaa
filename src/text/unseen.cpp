#include "text/unseen.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>

#include "text/utf8.h"

namespace orve::text {

namespace {

struct Range {
  char32_t first;
  char32_t last;
};

constexpr std::array<Range, 9> kFormats = {{{0x061C, 0x061C},
                                            {0x180E, 0x180E},
                                            {0x200B, 0x200B},
                                            {0x200E, 0x200F},
                                            {0x202A, 0x202E},
                                            {0x2060, 0x206F},
                                            {0xFEFF, 0xFEFF},
                                            {0xFFF9, 0xFFFB},
                                            {0xE0000, 0xE007F}}};

std::string Unit(std::uint32_t unit) {
  std::array<char, 8> testo{};
  std::snprintf(testo.data(), testo.size(), "\\u%04X", unit);
  return testo.data();
}

}  // namespace

Unseen Classify(char32_t code) {
  const bool control = code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x2028 || code == 0x2029;
  if (control) return Unseen::kControl;
  const bool format = std::any_of(kFormats.begin(), kFormats.end(), [code](const Range& range) {
    return code >= range.first && code <= range.last;
  });
  return format ? Unseen::kFormat : Unseen::kNo;
}

std::string ReplaceUnseen(std::string_view testo, const Instead& instead) {
  std::string risultato;
  risultato.reserve(testo.size());
  while (!testo.empty()) {
    const Character carattere = Front(testo);
    const Unseen genere = Classify(carattere.code);
    const auto altro = genere == Unseen::kNo ? std::nullopt : instead(carattere.code, genere);
    risultato.append(altro ? *altro : testo.substr(0, carattere.size));
    testo.remove_prefix(carattere.size);
  }
  return risultato;
}

std::string Escaped(char32_t code) {
  if (code < 0x10000) return Unit(code);
  const char32_t rest = code - 0x10000;
  return Unit(0xD800 + (rest >> 10U)) + Unit(0xDC00 + (rest & 0x3FFU));
}

}  // namespace orve::text
