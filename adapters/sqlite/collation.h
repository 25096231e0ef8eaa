// Comparison of texts as the application's SQL Server databases make it: without case, and without regard to
// blanks at the end. Accents count. The names and codes of the schema are declared with it.
#pragma once

#include <string_view>

struct sqlite3;

namespace orve::adapters::sqlite {

/// The name under which the schema's columns ask for it. A program that opens the file without this adapter
/// can read every row, but can neither compare these columns nor write where they are a key.
inline constexpr const char* kConfrontoItaliano = "ITALIANO_CI";

/// Less than, equal to or greater than 0. Case is folded for the letters of every alphabet.
[[nodiscard]] int ConfrontaItaliano(std::string_view primo, std::string_view secondo);

/// Makes the comparison known to the connection; raises the engine's error.
void RegistraConfronto(sqlite3* database);

}  // namespace orve::adapters::sqlite
