// Texts for header lines: what is allowed there, and what is done about the rest.
#pragma once

#include <string>
#include <string_view>

namespace orve::adapters::mime {

/// The text as valid UTF-8: each byte that belongs to no character, and NUL, becomes U+FFFD.
[[nodiscard]] std::string ValidUtf8(std::string_view text);

/// The text in a form safe for a terminal: valid UTF-8, with tabs as blanks, and no other control characters
/// except line feeds, since texts come from servers and databases that may contain anything. Other control
/// characters, and those that reverse the text or show nothing, become escapes: "\u202E".
[[nodiscard]] std::string TerminalSafe(std::string_view text);
/// The same on one line.
[[nodiscard]] std::string TerminalSafeLine(std::string_view text);

/// The text fit for one header line: control characters (line ends included) become blanks, the rest as in
/// ValidUtf8.
[[nodiscard]] std::string HeaderSafe(std::string_view text);

/// A name of a person or a file that recipients see: header-safe, and whatever would reverse it or hide part
/// of it becomes "_".
[[nodiscard]] std::string NameSafe(std::string_view text);

/// True when every byte is ASCII.
[[nodiscard]] bool IsAscii(std::string_view text);

/// Raises 5 when `name` is not a header name, or names a header that the message writes itself or must never
/// show.
void RequireOwnHeaderName(std::string_view name);

/// A short form of `text` for an error message: header-safe, with escapes for what would reverse it, and cut
/// after some eighty characters.
[[nodiscard]] std::string ForDisplay(std::string_view text);

}  // namespace orve::adapters::mime
