// Text as a cell for spreadsheets.
#pragma once

#include <string>
#include <string_view>

namespace orve::app {

/// The text in a form that no spreadsheet executes: what would be a formula gets an apostrophe before it,
/// wherever a cell may begin for a program that splits at ",", ";", tabs or line ends. A number stays a
/// number. Control characters except tabs and line ends, and those that reverse the text or show nothing,
/// become escapes.
[[nodiscard]] std::string CellaInerte(std::string_view testo);

}  // namespace orve::app
