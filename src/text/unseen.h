// Characters that a reader does not see as characters: control characters, and those that reverse the text or
// show nothing. Every place that shows other people's text asks here which they are, so that none of them is
// forgotten.
//
// The joiners U+200C and U+200D are not among them: Persian, the scripts of India and composed emoji need
// them.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace orve::text {

enum class Unseen {
  kNo,
  kControl,  // U+0000 to U+001F, U+007F to U+009F, the line and the paragraph separator
  kFormat,   // marks and overrides of direction, invisible characters, tags
};

[[nodiscard]] Unseen Classify(char32_t code);

/// What replaces one of these characters; none: it stays.
using Instead = std::function<std::optional<std::string>(char32_t, Unseen)>;

/// The text with each of these characters replaced. Bytes that are not valid UTF-8 stay.
[[nodiscard]] std::string ReplaceUnseen(std::string_view testo, const Instead& instead);

/// The character as "\u202E", in units of UTF-16, so that JSON reads it too.
[[nodiscard]] std::string Escaped(char32_t code);

}  // namespace orve::text
