// The text operations that everything builds on: positions and counts are characters, over any bytes.
#include "text/text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "support.h"

namespace orve::fuzz {
namespace {

void CheckCutting(std::string_view all, std::size_t count) {
  const std::size_t length = text::Length(all);
  Require(length <= all.size(), "a character has a byte at least");
  const std::string_view left = text::Left(all, count);
  const std::string_view rest = text::Mid(all, count + 1);
  RequireSame(std::string(left) + std::string(rest), all, "left and rest make the whole");
  Require(text::Length(left) == std::min(count, length), "left has as many characters as were asked for");
  Require(text::Length(rest) == length - std::min(count, length), "the rest has the others");
  Require(text::Mid(all, count + 1, 1).size() <= 4, "no character has more than four bytes");
  RequireSame(text::WithoutLast(all, length - std::min(count, length)), left, "cut from either end");
}

// In the plainest way: the needle is looked for at each character.
std::size_t PlainFind(std::string_view all, std::string_view needle, std::size_t start) {
  std::size_t position = std::max<std::size_t>(start, 1);
  if (position > text::Length(all) + 1) return 0;
  for (std::string_view rest = text::Mid(all, position);; ++position) {
    if (rest.starts_with(needle)) return position;
    if (rest.empty()) return 0;
    rest = text::Mid(rest, 2);
  }
}

void CheckFind(std::string_view all, std::string_view needle, std::size_t start) {
  const std::size_t found = text::Find(all, needle, start);
  Require(found <= text::Length(all) + 1, "a find lies within the text");
  Require(found == PlainFind(all, needle, start), "found at the first character where it stands");
}

void CheckReplace(std::string_view all, std::string_view from, std::string_view to) {
  RequireSame(text::Replace(all, from, to), PlainReplace(all, from, to, false), "replaced");
  RequireSame(text::ReplaceIgnoreCase(std::string(all), from, to), PlainReplace(all, from, to, true),
              "replaced without case");
}

void CheckSplit(std::string_view all, char separator) {
  const auto parts = text::Split(all, separator);
  Require(parts.empty() == all.empty(), "an empty text alone has no parts");
  std::string joined;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i > 0) joined.push_back(separator);
    joined.append(parts[i]);
    Require(parts[i].find(separator) == std::string_view::npos, "no part holds the separator");
  }
  RequireSame(joined, all, "the parts make the whole");
}

void CheckTrim(std::string_view all) {
  const std::string_view right = text::TrimRight(all);
  const std::string_view both = text::Trim(all);
  Require(right.empty() || right.back() != ' ', "no blank at the end");
  Require(both.empty() || (both.front() != ' ' && both.back() != ' '), "no blank at either end");
  Require(all.substr(0, right.size()) == right, "only the end is cut");
  Require(all.find_first_not_of(' ', right.size()) == std::string_view::npos, "only blanks are cut");
}

void CheckCase(std::string_view all) {
  const std::string folded = text::FoldCase(all);
  Require(text::Length(folded) == text::Length(all), "folding keeps the characters");
  RequireSame(text::FoldCase(folded), folded, "folding twice folds once");
  Require(text::EqualsIgnoreCase(all, folded), "a text equals its folded form");
}

void CheckCodePage(std::string_view all) {
  const std::string bytes = text::ToWindows1252(all);
  Require(bytes.size() == text::Length(all), "a byte for each character");
  const std::string back = text::FromWindows1252(bytes);
  // What the code page lacks became a question mark; everything else must come back.
  RequireSame(text::ToWindows1252(back), bytes, "the bytes come back");
  const std::string wide = text::FromWindows1252(all);
  Require(text::Length(wide) == all.size(), "a character for each byte");
}

}  // namespace
}  // namespace orve::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orve::fuzz;
  Input input(data, size);
  const std::size_t number = input.Byte();
  const Exact needle(input.Text());
  const Exact other(input.Text());
  const Exact all(input.Rest());
  CheckCutting(all.View(), number);
  CheckFind(all.View(), needle.View(), number);
  CheckReplace(all.View(), needle.View(), other.View());
  CheckSplit(all.View(), ';');
  CheckTrim(all.View());
  CheckCase(all.View());
  CheckCodePage(all.View());
  return 0;
}
