// Names of columns, parameters and keywords are compared without case, as far as ASCII goes.
#pragma once

#include <algorithm>
#include <string_view>

namespace orve::adapters::sqlite {

[[nodiscard]] inline char MinuscolaAscii(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

[[nodiscard]] inline bool UgualiSenzaCaso(std::string_view primo, std::string_view secondo) {
  return std::equal(primo.begin(), primo.end(), secondo.begin(), secondo.end(),
                    [](char a, char b) { return MinuscolaAscii(a) == MinuscolaAscii(b); });
}

}  // namespace orve::adapters::sqlite
