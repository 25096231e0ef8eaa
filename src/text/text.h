// The small text operations that the library shares. Text is UTF-8; positions, widths and counts are
// characters, from 1, as the people who wrote the rules count them. A byte that is not valid UTF-8 counts as
// one character.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orve::text {

inline constexpr std::size_t kToEnd = static_cast<std::size_t>(-1);

[[nodiscard]] std::size_t Length(std::string_view testo);

/// The first `count` characters; all of them when there are fewer.
[[nodiscard]] std::string_view Left(std::string_view testo, std::size_t count);
/// All but the last `count` characters.
[[nodiscard]] std::string_view WithoutLast(std::string_view testo, std::size_t count);
/// `count` characters from position `start`; empty when `start` is past the end.
[[nodiscard]] std::string_view Mid(std::string_view testo, std::size_t start, std::size_t count = kToEnd);
/// Position of the first `needle` at or after `start`, compared exactly; 0 when there is none.
[[nodiscard]] std::size_t Find(std::string_view testo, std::string_view needle, std::size_t start = 1);

/// Without blanks (character 32 only) on both sides, or at the end.
[[nodiscard]] std::string_view Trim(std::string_view testo);
[[nodiscard]] std::string_view TrimRight(std::string_view testo);

/// The parts between the separators; an empty text has no parts.
[[nodiscard]] std::vector<std::string_view> Split(std::string_view testo, char separator);

/// Every `from` replaced by `to`, from left to right; what was inserted is not searched again.
[[nodiscard]] std::string Replace(std::string_view testo, std::string_view from, std::string_view to);
/// The same, comparing ASCII letters without case. A text that holds no `from` comes back without a copy.
[[nodiscard]] std::string ReplaceIgnoreCase(std::string testo, std::string_view from, std::string_view to);

/// A form in which texts that differ only in case are equal, in every alphabet. It has as many characters as
/// the text, but not always as many bytes.
[[nodiscard]] std::string FoldCase(std::string_view testo);
[[nodiscard]] bool EqualsIgnoreCase(std::string_view a, std::string_view b);

/// The single-byte form of code page 1252, with "?" for whatever it lacks.
[[nodiscard]] std::string ToWindows1252(std::string_view testo);
/// The text of code page 1252 as UTF-8. Every byte stands for a character: the five that the page leaves open
/// (81, 8D, 8F, 90, 9D) for the control character of the same number.
[[nodiscard]] std::string FromWindows1252(std::string_view byte);

}  // namespace orve::text
