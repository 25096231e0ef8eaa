// Connection strings on the command line, where they may be in the wrong place.
#pragma once

#include <string_view>

namespace orve::app {

/// Whether a text looks like a connection string, with or without "odbc:" before it. It may contain a
/// password, so nothing repeats it.
[[nodiscard]] bool SembraStringaDiConnessione(std::string_view testo);

}  // namespace orve::app
