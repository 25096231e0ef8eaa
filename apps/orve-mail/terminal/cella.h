// A text as a cell that spreadsheets open.
#pragma once

#include <string>
#include <string_view>

namespace orve::app {

/// The text so that no spreadsheet runs it: an apostrophe stands in front of what would be a formula,
/// wherever a cell may begin for a program that divides at ",", ";", tabs or line ends. A number stays one.
/// Control characters but tabs and line ends, and those that turn the text round or show nothing, stand there
/// as escapes.
[[nodiscard]] std::string CellaInerte(std::string_view testo);

}  // namespace orve::app
