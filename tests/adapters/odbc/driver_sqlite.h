// SQLite's ODBC driver as a server that has the application's function, procedure and comparison, and SQL
// Server's dialect before it.
#pragma once

#include <memory>
#include <string>

#include "odbc/odbc_connection.h"
#include "orve-mailserver/host/connection.h"

namespace orve::adapters::odbc {

/// A file over SQLite's driver; it is created when it is missing. The engine behind the driver knows what the
/// embedded database's own connections know: FNCG_GETCODANAG, SPFW_AttivaEventoGestionale, the comparison of
/// the schema's texts, and the list of tables. SPFW_GetUserIDFromConnection is not among them: the driver has
/// no call of a procedure.
[[nodiscard]] std::shared_ptr<OdbcConnection> ApriDriverSqlite(const std::string& file);

/// A connection whose statements are translated into SQLite's dialect on the way.
class ConDialetto final : public host::Connection {
 public:
  explicit ConDialetto(std::shared_ptr<host::Connection> connessione);
  [[nodiscard]] std::shared_ptr<host::RecordSet> Execute(const std::string& statement,
                                                         std::int32_t opzione) override;
  [[nodiscard]] std::shared_ptr<host::Command> CreateCommand() override;

 private:
  std::shared_ptr<host::Connection> connessione_;
};

}  // namespace orve::adapters::odbc
