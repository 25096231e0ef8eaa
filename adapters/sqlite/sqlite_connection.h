// The application's database in one file: host::Connection over SQLite.
//
// Statements arrive as they are written for SQL Server and are translated on their way to the engine
// (dialect.h). The function and the procedures of the application's database are built in (procedures.h); the
// tables are those of schema.h.
//
// One Execute runs one statement. A text with a second one after a ";" is refused as a whole, and nothing of
// it runs: the library joins values into its statements as they are, and a value must not bring a statement
// of its own.
//
// Errors of the engine carry its extended number and text, those of the objects carry the numbers of
// rows/record_set.h; the source is "SQLite" for both. The file is checked at every statement: one that was
// deleted or replaced is an error, not a stale answer.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orve-mailserver/host/connection.h"
#include "sqlite/database.h"

namespace orve::adapters::sqlite {

class SqliteConnection final : public host::Connection {
 public:
  /// Opens a database that exists. Raises Errore when the path is not a file, the file is not a database, or
  /// it stays locked for longer than the options allow. A file that this process may only read is opened for
  /// reading, and refuses statements that write.
  [[nodiscard]] static std::shared_ptr<SqliteConnection> Apri(const std::string& percorso,
                                                              const SqliteOptions& opzioni = {});
  ~SqliteConnection() override;
  SqliteConnection(const SqliteConnection&) = delete;
  SqliteConnection& operator=(const SqliteConnection&) = delete;
  SqliteConnection(SqliteConnection&&) = delete;
  SqliteConnection& operator=(SqliteConnection&&) = delete;

  /// The result is held in memory as a whole and no longer needs the connection. Option 1 and -1 run a
  /// statement, 4 the procedure of that name with no arguments; any other raises 3001.
  [[nodiscard]] std::shared_ptr<host::RecordSet> Execute(const std::string& statement,
                                                         std::int32_t opzione) override;
  [[nodiscard]] std::shared_ptr<host::Command> CreateCommand() override;

  /// Runs one statement in SQLite's own dialect, its parameters ?1, ?2, ... filled with the values, which may
  /// hold anything. For the host's own tables.
  [[nodiscard]] std::shared_ptr<host::RecordSet> EseguiConValori(const std::string& istruzione,
                                                                 const std::vector<Value>& valori);

  /// The application user to whom this connection belongs, whom SPFW_GetUserIDFromConnection reports; none at
  /// first.
  void UtenteConnessione(std::optional<std::int32_t> idUtente);
  [[nodiscard]] std::optional<std::int32_t> UtenteConnessione() const;

  /// Closes the file. Record sets stay as they are; everything else raises 3704, its commands 3709.
  void Chiudi();
  [[nodiscard]] bool Aperta() const;

 private:
  explicit SqliteConnection(std::shared_ptr<Database> database);

  std::shared_ptr<Database> database_;
};

}  // namespace orve::adapters::sqlite
