// Two foreign engines behind ODBC under the contract of all connections: SQLite's driver, and H2 in its SQL
// Server mode behind PostgreSQL's driver.
#include "adapters/connection_contract.h"
#include "adapters/odbc/driver_sqlite.h"
#include "adapters/odbc/motore.h"
#include "odbc/odbc_connection.h"
#include "support/temp_dir.h"

namespace orve::contract {

namespace {

using adapters::odbc::Motore;
using adapters::odbc::OdbcConnection;

constexpr const char* kTabella =
    "CREATE TABLE CONTRATTO (CODICE INT, NOME VARCHAR(50) NULL, PESO FLOAT NULL, NOTE VARCHAR(4000) NULL)";
constexpr const char* kRighe =
    "INSERT INTO CONTRATTO VALUES (1, 'Uno', 1.5, NULL), (2, 'Città, d''Oro', NULL, ''),"
    " (3, NULL, -2, 'riga1\r\nriga2')";

constexpr const char* kProcedura =
    "CREATE ALIAS SPFW_GetUserIDFromConnection AS 'java.sql.ResultSet utente(java.sql.Connection c, "
    "Integer uscita) throws Exception { return c.createStatement().executeQuery(\"SELECT @UTENTE\"); }'";

class BancoDriverSqlite : public Banco {
 public:
  BancoDriverSqlite()
      : connessione_(OdbcConnection::Apri(
            "Driver=SQLite3;Database=" + (cartella_.Path() / "contratto.db").string() + ";Timeout=5000")) {
    for (const char* testo : {kTabella, kRighe}) (void)connessione_->Execute(testo, host::kComandoTesto);
  }

  std::shared_ptr<host::Connection> Connessione() override { return connessione_; }
  void Cade() override { connessione_->Chiudi(); }

 private:
  support::TempDir cartella_;
  std::shared_ptr<OdbcConnection> connessione_;
};

// The same with the adapter's dialect before the driver.
class BancoDriverConDialetto : public Banco {
 public:
  BancoDriverConDialetto()
      : driver_(adapters::odbc::ApriDriverSqlite((cartella_.Path() / "contratto.db").string())),
        connessione_(std::make_shared<adapters::odbc::ConDialetto>(driver_)) {
    for (const char* testo : {kTabella, kRighe}) (void)driver_->Execute(testo, host::kComandoTesto);
  }

  std::shared_ptr<host::Connection> Connessione() override { return connessione_; }
  void Cade() override { driver_->Chiudi(); }

 private:
  support::TempDir cartella_;
  std::shared_ptr<OdbcConnection> driver_;
  std::shared_ptr<host::Connection> connessione_;
};

// The engine takes its time to drop a database whose connection has gone: none is used twice.
std::string NomeNuovo() {
  static int ultimo = 0;
  return "contratto" + std::to_string(++ultimo);
}

class BancoH2 : public Banco {
 public:
  BancoH2() : connessione_(OdbcConnection::Apri(Motore().ConnectionString(NomeNuovo()))) {
    for (const char* testo : {
             "SET COLLATION ENGLISH STRENGTH PRIMARY",
             kTabella,
             kRighe,
             kProcedura,
         }) {
      (void)connessione_->Execute(testo, host::kComandoTesto);
    }
  }

  std::shared_ptr<host::Connection> Connessione() override { return connessione_; }
  void Utente(std::optional<std::int32_t> id) override {
    (void)connessione_->Execute("SET @UTENTE = " + (id ? std::to_string(*id) : "NULL"), host::kComandoTesto);
  }
  void Cade() override { connessione_->Chiudi(); }

 private:
  std::shared_ptr<OdbcConnection> connessione_;
};

std::unique_ptr<Banco> CreaBancoDriverSqlite() {
  return std::make_unique<BancoDriverSqlite>();
}

std::unique_ptr<Banco> CreaBancoDriverConDialetto() {
  return std::make_unique<BancoDriverConDialetto>();
}

std::unique_ptr<Banco> CreaBancoH2() {
  return std::make_unique<BancoH2>();
}

std::string NomeBanco(const ::testing::TestParamInfo<CreaBanco>& info) {
  if (info.param == &CreaBancoH2) return "H2";
  return info.param == &CreaBancoDriverSqlite ? "SqliteDriver" : "SqliteDriverWithDialect";
}

// No command on SQLite's driver, which has no procedure calls.
INSTANTIATE_TEST_SUITE_P(Odbc, ContrattoConnessione,
                         ::testing::Values(&CreaBancoDriverSqlite, &CreaBancoDriverConDialetto, &CreaBancoH2),
                         NomeBanco);
INSTANTIATE_TEST_SUITE_P(Odbc, ContrattoDialetto,
                         ::testing::Values(&CreaBancoDriverConDialetto, &CreaBancoH2), NomeBanco);
INSTANTIATE_TEST_SUITE_P(Odbc, ContrattoProcedura, ::testing::Values(&CreaBancoH2), NomeBanco);

}  // namespace

}  // namespace orve::contract
