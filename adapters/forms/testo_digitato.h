// What a box takes of a text that the person types or pastes. The program's own writing does not come by
// here.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orve::adapters::forms {

/// The part of `digitato` that still fits behind `presente` in a box of at most `maxchar` characters (0: no
/// limit), with its line breaks turned into blanks, or on a box of several lines into carriage return and
/// line feed. A character is never cut in two. A text that the program made too long takes nothing more.
[[nodiscard]] std::string TestoAccettato(std::string_view presente, std::string_view digitato,
                                         std::int32_t maxchar, bool multiriga);

}  // namespace orve::adapters::forms
