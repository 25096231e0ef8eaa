// Somebody else's text as a person may see it.
#pragma once

#include <string>
#include <string_view>

namespace orve::adapters::forms {

/// Whatever would reverse the text or hide part of it is shown as an escape; tabs and line breaks stay.
[[nodiscard]] std::string TestoVisibile(std::string_view testo);

}  // namespace orve::adapters::forms
