// The application's database on an engine that is not ours: H2 in its SQL Server mode, with the tables, the
// function and the procedures, and the sample data.
#pragma once

#include <memory>
#include <string>

#include "odbc/odbc_connection.h"

namespace orve::adapters::odbc {

/// The login of the mail program. Its name is that of the application user 1, whom the procedure
/// SPFW_GetUserIDFromConnection finds by it. The engine lets only owners in through this protocol, so it may
/// do everything.
inline constexpr const char* kAccessoPosta = "fatturazione";
inline constexpr const char* kPasswordPosta = "se-gre-ta";

/// A connection of the owner to a database of that name, in SQL Server's mode. The database is made on first
/// use, which takes a second, and stays as long as the program.
[[nodiscard]] std::shared_ptr<OdbcConnection> ApriDatiH2(const std::string& nome);

/// The connection string of the mail program's login.
[[nodiscard]] std::string StringaPosta(const std::string& nome, const std::string& password = kPasswordPosta);

void Esegui(OdbcConnection& connessione, const std::string& testo);

}  // namespace orve::adapters::odbc
