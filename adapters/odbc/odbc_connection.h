// The application's database on a server: host::Connection over ODBC.
//
// Statements go to the driver as they are, in UTF-16. The login decides what they may do: the library joins
// values into its statements as they are, so it should have no more rights than it needs.
//
// Errors of the driver carry its native number, and its text followed by the SQLSTATE; those of the objects
// carry the numbers of rows/record_set.h. The source is "ODBC" for both. A lost connection is an error of the
// statement that discovers it, and of every later one.
#pragma once

#include <memory>
#include <string>

#include "orve-mailserver/host/connection.h"
#include "orve-mailserver/odbc/odbc_options.h"

namespace orve::adapters::odbc {

class Link;

class OdbcConnection final : public host::Connection {
 public:
  /// Connects by a connection string ("Driver=FreeTDS;Server=...;..." or "DSN=..."), without prompting.
  /// Raises Errore, which never contains the password.
  [[nodiscard]] static std::shared_ptr<OdbcConnection> Apri(const std::string& stringaConnessione,
                                                            const OdbcOptions& opzioni = {});

  /// The first result with columns, held in memory as a whole; it no longer needs the connection. Option 1
  /// and -1 run a text, 4 the procedure of that name with no arguments; any other raises 3001.
  [[nodiscard]] std::shared_ptr<host::RecordSet> Execute(const std::string& statement,
                                                         std::int32_t opzione) override;
  [[nodiscard]] std::shared_ptr<host::Command> CreateCommand() override;

  /// Logs out. Record sets stay as they are; everything else raises 3704, its commands 3709.
  void Chiudi();
  [[nodiscard]] bool Aperta() const;

 private:
  explicit OdbcConnection(std::shared_ptr<Link> collegamento);

  std::shared_ptr<Link> collegamento_;
};

}  // namespace orve::adapters::odbc
