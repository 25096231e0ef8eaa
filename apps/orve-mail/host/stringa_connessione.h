// Connection strings on the command line, where they may stand in the wrong place.
#pragma once

#include <string_view>

namespace orve::app {

/// Whether a text looks like a connection string, with "odbc:" in front or without. A password may stand in
/// it, so that nothing repeats it.
[[nodiscard]] bool SembraStringaDiConnessione(std::string_view testo);

}  // namespace orve::app
