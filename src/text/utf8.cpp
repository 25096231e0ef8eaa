#include "text/utf8.h"

#include <array>

namespace orve::text {

namespace {

bool IsContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

}  // namespace

Character Front(std::string_view testo) {
  const auto lead = static_cast<unsigned char>(testo.front());
  if (lead < 0x80) return {lead, 1};
  std::size_t size = 0;
  char32_t code = 0;
  if (lead >= 0xC2 && lead <= 0xDF) {
    size = 2;
    code = lead & 0x1FU;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    size = 3;
    code = lead & 0x0FU;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    size = 4;
    code = lead & 0x07U;
  }
  if (size == 0 || testo.size() < size) return {0xFFFD, 1};
  for (std::size_t i = 1; i < size; ++i) {
    if (!IsContinuation(testo[i])) return {0xFFFD, 1};
    code = (code << 6U) | (static_cast<unsigned char>(testo[i]) & 0x3FU);
  }
  constexpr std::array<char32_t, 5> kLeast = {0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
  if (code < kLeast.at(size) || code > 0x10FFFF || surrogate) return {0xFFFD, 1};
  return {code, size};
}

}  // namespace orve::text
