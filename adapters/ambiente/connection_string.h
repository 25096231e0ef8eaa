// What names a database: a file, or a connection string.
#pragma once

#include <string>
#include <string_view>

namespace orve::adapters::ambiente {

/// "odbc:" and a connection string name a database of a server; FILE and "sqlite:FILE" an embedded one.
struct DatabaseName {
  bool suServer = false;
  std::string nome;  // the connection string, or the file
};
[[nodiscard]] DatabaseName ReadDatabaseName(std::string_view testo);

/// Whether a text looks like a connection string, with or without "odbc:" before it. It may contain a
/// password, so nothing repeats it.
[[nodiscard]] bool SembraStringaDiConnessione(std::string_view testo);

}  // namespace orve::adapters::ambiente
