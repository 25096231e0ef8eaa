// The standard body, for whoever shows it instead of sending it.
#pragma once

#include <string_view>

namespace orve {

/// The notice as it stands, with its placeholders and line ends of carriage return and line feed.
[[nodiscard]] std::string_view CorpoStandard();

}  // namespace orve
