#include "text/text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "text/case_folding.h"
#include "text/utf8.h"

namespace orve::text {

namespace {

void Append(std::string& testo, char32_t code) {
  const auto continuation = [&](unsigned bits) {
    testo.push_back(static_cast<char>(0x80U | ((code >> bits) & 0x3FU)));
  };
  if (code < 0x80) {
    testo.push_back(static_cast<char>(code));
  } else if (code < 0x800) {
    testo.push_back(static_cast<char>(0xC0U | (code >> 6U)));
    continuation(0);
  } else if (code < 0x10000) {
    testo.push_back(static_cast<char>(0xE0U | (code >> 12U)));
    continuation(6);
    continuation(0);
  } else {
    testo.push_back(static_cast<char>(0xF0U | (code >> 18U)));
    continuation(12);
    continuation(6);
    continuation(0);
  }
}

// The byte offset after `count` characters.
std::size_t Offset(std::string_view testo, std::size_t count) {
  std::size_t offset = 0;
  while (count-- > 0 && offset < testo.size()) offset += Front(testo.substr(offset)).size;
  return offset;
}

char LowerAscii(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool SameLetter(char a, char b) {
  return LowerAscii(a) == LowerAscii(b);
}

bool IsAsciiLetter(char c) {
  const char lower = LowerAscii(c);
  return lower >= 'a' && lower <= 'z';
}

// The byte offset of a non-empty needle. The standard library searches for the last character before its
// first letter, which is far faster than comparing at each place; placeholders have such a character, and a
// rare one.
std::size_t FindIgnoreCase(std::string_view testo, std::string_view needle, std::size_t start) {
  const auto* const letter = std::find_if(needle.begin(), needle.end(), IsAsciiLetter);
  const auto exact = static_cast<std::size_t>(letter - needle.begin());
  for (std::size_t at = start;; ++at) {
    if (exact > 0) {
      const std::size_t found = testo.find(needle[exact - 1], at + exact - 1);
      if (found == std::string_view::npos) return found;
      at = found - (exact - 1);
    }
    if (at >= testo.size() || testo.size() - at < needle.size()) return std::string_view::npos;
    if (std::equal(needle.begin(), needle.end(), testo.begin() + static_cast<std::ptrdiff_t>(at), SameLetter))
      return at;
  }
}

// `find` takes the text and the offset to search from. A text without a match is returned as it came.
template <class FindNext>
std::string ReplaceFound(std::string testo, std::size_t width, std::string_view to, FindNext find) {
  std::size_t at = find(testo, 0);
  if (at == std::string_view::npos) return testo;
  const std::string_view all = testo;
  std::string result;
  result.reserve(testo.size());
  std::size_t done = 0;
  for (; at != std::string_view::npos; at = find(testo, done)) {
    result.append(all.substr(done, at - done)).append(to);
    done = at + width;
  }
  return result.append(all.substr(done));
}

// What code page 1252 holds at 0x80 to 0x9F; 0 where it holds nothing.
constexpr std::array<char32_t, 32> kCodePage1252 = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

}  // namespace

std::size_t Length(std::string_view testo) {
  std::size_t count = 0;
  while (!testo.empty()) {
    testo.remove_prefix(Front(testo).size);
    ++count;
  }
  return count;
}

std::string_view Left(std::string_view testo, std::size_t count) {
  return testo.substr(0, Offset(testo, count));
}

std::string_view WithoutLast(std::string_view testo, std::size_t count) {
  const std::size_t length = Length(testo);
  return Left(testo, length > count ? length - count : 0);
}

std::string_view Mid(std::string_view testo, std::size_t start, std::size_t count) {
  const std::string_view rest = testo.substr(Offset(testo, start > 0 ? start - 1 : 0));
  return count == kToEnd ? rest : Left(rest, count);
}

// The bytes of a needle that is not valid text may be found inside a character; such a place has no position.
std::size_t Find(std::string_view testo, std::string_view needle, std::size_t start) {
  std::size_t position = start > 0 ? start : 1;
  std::size_t here = Offset(testo, position - 1);
  if (needle.empty() && position > Length(testo) + 1) return 0;
  for (std::size_t at = testo.find(needle, here); at != std::string_view::npos;
       at = testo.find(needle, at + 1)) {
    for (; here < at; ++position) here += Front(testo.substr(here)).size;
    if (here == at) return position;
  }
  return 0;
}

std::string_view Trim(std::string_view testo) {
  const std::size_t first = testo.find_first_not_of(' ');
  return first == std::string_view::npos ? std::string_view() : TrimRight(testo.substr(first));
}

std::string_view TrimRight(std::string_view testo) {
  const std::size_t last = testo.find_last_not_of(' ');
  return last == std::string_view::npos ? std::string_view() : testo.substr(0, last + 1);
}

std::vector<std::string_view> Split(std::string_view testo, char separator) {
  std::vector<std::string_view> parts;
  if (testo.empty()) return parts;
  for (;;) {
    const std::size_t at = testo.find(separator);
    parts.push_back(testo.substr(0, at));
    if (at == std::string_view::npos) return parts;
    testo.remove_prefix(at + 1);
  }
}

std::string Replace(std::string_view testo, std::string_view from, std::string_view to) {
  if (from.empty()) return std::string(testo);
  return ReplaceFound(std::string(testo), from.size(), to,
                      [&](std::string_view all, std::size_t start) { return all.find(from, start); });
}

std::string ReplaceIgnoreCase(std::string testo, std::string_view from, std::string_view to) {
  if (from.empty()) return testo;
  return ReplaceFound(std::move(testo), from.size(), to, [&](std::string_view all, std::size_t start) {
    return FindIgnoreCase(all, from, start);
  });
}

std::string FoldCase(std::string_view testo) {
  std::string folded;
  folded.reserve(testo.size());
  while (!testo.empty()) {
    const auto [code, size] = Front(testo);
    if (size == 1) {
      folded.push_back(LowerAscii(testo.front()));  // an invalid byte stays as it is
    } else {
      Append(folded, FoldedCase(code));
    }
    testo.remove_prefix(size);
  }
  return folded;
}

bool EqualsIgnoreCase(std::string_view a, std::string_view b) {
  return FoldCase(a) == FoldCase(b);
}

std::string ToWindows1252(std::string_view testo) {
  std::string bytes;
  bytes.reserve(testo.size());
  while (!testo.empty()) {
    const auto [code, size] = Front(testo);
    const bool same = code < 0x80 || (code >= 0xA0 && code <= 0xFF);
    const auto* const special = std::find(kCodePage1252.begin(), kCodePage1252.end(), code);
    if (same) {
      bytes.push_back(static_cast<char>(code));
    } else if (special != kCodePage1252.end()) {
      bytes.push_back(static_cast<char>(0x80 + (special - kCodePage1252.begin())));
    } else {
      bytes.push_back('?');
    }
    testo.remove_prefix(size);
  }
  return bytes;
}

std::string FromWindows1252(std::string_view byte) {
  std::string testo;
  testo.reserve(byte.size() + byte.size() / 8);
  for (const char c : byte) {
    const auto numero = static_cast<unsigned char>(c);
    char32_t code = numero;
    if (numero >= 0x80 && numero < 0xA0 && kCodePage1252[numero - 0x80] != 0) {
      code = kCodePage1252[numero - 0x80];
    }
    Append(testo, code);
  }
  return testo;
}

}  // namespace orve::text
