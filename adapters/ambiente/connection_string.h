// Connection strings where the name of a file is expected.
#pragma once

#include <string_view>

namespace orve::adapters::ambiente {

/// Whether a text looks like a connection string, with or without "odbc:" before it. It may contain a
/// password, so nothing repeats it.
[[nodiscard]] bool SembraStringaDiConnessione(std::string_view testo);

}  // namespace orve::adapters::ambiente
