// The secrets in a connection string, so that no text repeats them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orve::adapters::odbc {

/// Every value of the keywords PWD and Password, in whatever case, in the forms in which a text may repeat
/// it: as it is in the string, and without its braces. Longest first; empty values are left out.
[[nodiscard]] std::vector<std::string> Segreti(std::string_view stringaConnessione);

}  // namespace orve::adapters::odbc
