// What a box accepts of text that the person types or pastes. What the program writes does not pass through
// here.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orve::adapters::forms {

/// The part of `digitato` that still fits after `presente` in a box of at most `maxchar` characters (0: no
/// limit), with its line breaks turned into blanks, or on a box of several lines into carriage return and
/// line feed. A character is never cut in two. A box that the program has overfilled accepts nothing more.
[[nodiscard]] std::string TestoAccettato(std::string_view presente, std::string_view digitato,
                                         std::int32_t maxchar, bool multiriga);

}  // namespace orve::adapters::forms
