// Somebody else's text as a person may see it.
#pragma once

#include <string>
#include <string_view>

namespace orve::adapters::forms {

/// What would turn the text round or hide a part of it stands there as an escape; tabs and line breaks stay.
[[nodiscard]] std::string TestoVisibile(std::string_view testo);

}  // namespace orve::adapters::forms
