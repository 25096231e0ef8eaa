// The dialect translator: whatever it rewrites, values stay as they were written and nothing grows out of
// hand.
#include "sqlite/dialect.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "support.h"
#include "text/text.h"

namespace orve::fuzz {
namespace {

struct Shape {
  std::vector<std::string> kept;  // what is in quotes, brackets and comments, delimiters included
  long open = 0;                  // "(" minus ")" outside
  bool cutOff = false;            // the end is inside a quoted text
};

/// One past the end of the text that opens at `from`; npos when nothing closes it.
std::size_t QuoteEnd(std::string_view sql, std::size_t from, char close) {
  for (std::size_t i = from + 1; i < sql.size(); ++i) {
    if (sql[i] != close) continue;
    if (close == ']' || i + 1 >= sql.size() || sql[i + 1] != close) return i + 1;
    ++i;
  }
  return std::string_view::npos;
}

/// Reads as SQLite does, character by character.
Shape Read(std::string_view sql) {
  Shape shape;
  for (std::size_t i = 0; i < sql.size();) {
    const char c = sql[i];
    const std::string_view two = sql.substr(i, 2);
    std::size_t end = i + 1;
    bool keep = false;
    if (two == "--" || two == "/*") {
      const std::string_view close = two == "--" ? "\n" : "*/";
      const std::size_t found = sql.find(close, i + 2);
      end = found == std::string_view::npos ? sql.size() : found + close.size();
      keep = true;
    } else if (c == '\'' || c == '"' || c == '`' || c == '[') {
      end = QuoteEnd(sql, i, c == '[' ? ']' : c);
      shape.cutOff = end == std::string_view::npos;
      end = std::min(end, sql.size());
      keep = true;
    } else if (c == '(') {
      ++shape.open;
    } else if (c == ')') {
      --shape.open;
    }
    if (keep) shape.kept.emplace_back(sql.substr(i, end - i));
    i = end;
  }
  return shape;
}

/// "[dbo]." is a prefix like any other: it may go. Nothing may take a line comment's line feed.
void RemoveOwner(std::vector<std::string>& kept) {
  kept.erase(std::remove_if(kept.begin(), kept.end(),
                            [](const std::string& text) { return text::EqualsIgnoreCase(text, "[dbo]"); }),
             kept.end());
}

bool HoldsATurn(std::string_view sql) {
  static constexpr std::array<std::string_view, 6> kWords = {"nolock", "top",    "isnull",
                                                             "dbo",    "tables", "exec"};
  const std::string folded = text::FoldCase(sql);
  return std::any_of(kWords.begin(), kWords.end(),
                     [&](std::string_view word) { return folded.find(word) != std::string::npos; });
}

}  // namespace
}  // namespace orve::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orve::fuzz;
  const Exact sql({reinterpret_cast<const char*>(data), size});
  const std::string translated = orve::adapters::sqlite::TraduciDialetto(sql.View());
  Require(translated.size() <= 3 * size + 64, "the output is linear");
  if (!HoldsATurn(sql.View())) {
    RequireSame(translated, sql.View(), "a statement without turns comes back byte for byte");
    return 0;
  }
  Shape before = Read(sql.View());
  Shape after = Read(translated);
  RemoveOwner(before.kept);
  RemoveOwner(after.kept);
  Require(before.kept == after.kept, "quoted texts and comments stay as they were, in their order");
  Require(before.cutOff == after.cutOff, "a text that the end cuts off is still cut off, and no other is");
  if (!before.cutOff) Require(before.open == after.open, "what is opened is closed as often as before");
  return 0;
}
