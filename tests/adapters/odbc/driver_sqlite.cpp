#include "adapters/odbc/driver_sqlite.h"

#include <sqlite3.h>

#include <stdexcept>
#include <utility>

#include "sqlite/collation.h"
#include "sqlite/dialect.h"
#include "sqlite/procedures.h"

namespace orve::adapters::odbc {

namespace {

// As the embedded database prepares its own connections. Nothing may be thrown through the engine.
int Prepara(sqlite3* database, char** errore, const sqlite3_api_routines* /*api*/) noexcept {
  try {
    sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite::RegistraConfronto(database);
    sqlite::RegistraProcedure(database);
    return SQLITE_OK;
  } catch (const host::Errore& motivo) {
    *errore = sqlite3_mprintf("%s", motivo.Descrizione().c_str());
    return SQLITE_ERROR;
  } catch (...) {
    return SQLITE_NOMEM;
  }
}

// As long as it lives, every database that this process opens is prepared: the driver uses the library that
// this program is linked with.
class Preparazione {
 public:
  Preparazione() {
    if (sqlite3_auto_extension(Funzione()) != SQLITE_OK) throw std::runtime_error("sqlite3_auto_extension");
  }
  ~Preparazione() { sqlite3_cancel_auto_extension(Funzione()); }
  Preparazione(const Preparazione&) = delete;
  Preparazione& operator=(const Preparazione&) = delete;
  Preparazione(Preparazione&&) = delete;
  Preparazione& operator=(Preparazione&&) = delete;

 private:
  using Registrata = void (*)();
  static Registrata Funzione() { return reinterpret_cast<Registrata>(&Prepara); }
};

constexpr const char* kVistaTabelle =
    "CREATE TEMP VIEW INFORMATION_SCHEMA_TABLES AS SELECT name COLLATE ITALIANO_CI AS TABLE_NAME"
    " FROM main.sqlite_master WHERE type IN ('table', 'view')";

}  // namespace

std::shared_ptr<OdbcConnection> ApriDriverSqlite(const std::string& file) {
  const Preparazione preparazione;
  auto connessione = OdbcConnection::Apri("Driver=SQLite3;Database=" + file + ";Timeout=5000");
  (void)connessione->Execute(kVistaTabelle, host::kComandoTesto);
  return connessione;
}

ConDialetto::ConDialetto(std::shared_ptr<host::Connection> connessione)
    : connessione_(std::move(connessione)) {}

std::shared_ptr<host::RecordSet> ConDialetto::Execute(const std::string& statement, std::int32_t opzione) {
  return connessione_->Execute(sqlite::TraduciDialetto(statement), opzione);
}

std::shared_ptr<host::Command> ConDialetto::CreateCommand() {
  return connessione_->CreateCommand();
}

}  // namespace orve::adapters::odbc
