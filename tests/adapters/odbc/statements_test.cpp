// Every statement of the library over ODBC: parsed and run by an engine that is not ours, H2 in its SQL
// Server mode behind PostgreSQL's driver, and by SQLite's driver with the adapter's dialect before it.
#include "adapters/statements_contract.h"

#include "adapters/odbc/dati_h2.h"
#include "adapters/odbc/driver_sqlite.h"
#include "odbc/odbc_connection.h"
#include "sqlite/schema.h"
#include "support/temp_dir.h"

namespace orve::contract {

namespace {

using adapters::odbc::Esegui;
using adapters::odbc::OdbcConnection;

// Each test in a transaction that is rolled back.
class BancoDatiH2 : public BancoDati {
 public:
  BancoDatiH2() : connessione_(adapters::odbc::ApriDatiH2("dati")) { Esegui(*connessione_, "BEGIN"); }
  ~BancoDatiH2() override {
    try {
      Esegui(*connessione_, "ROLLBACK");
      Esegui(*connessione_, "DROP VIEW IF EXISTS FIRME_VISTA");
    } catch (const host::Errore& errore) {
      ADD_FAILURE() << errore.Descrizione();
    }
  }
  BancoDatiH2(const BancoDatiH2&) = delete;
  BancoDatiH2& operator=(const BancoDatiH2&) = delete;
  BancoDatiH2(BancoDatiH2&&) = delete;
  BancoDatiH2& operator=(BancoDatiH2&&) = delete;

  host::Connection& Connessione() override { return *connessione_; }

 private:
  std::shared_ptr<OdbcConnection> connessione_;
};

// A file of its own for each test, with the sample data as the embedded database gets them.
class BancoDatiDriverSqlite : public BancoDati {
 public:
  BancoDatiDriverSqlite() {
    const auto percorso = (cartella_.Path() / "dati.db").string();
    adapters::sqlite::CreaDatabase(percorso, [](const auto& password) {
      return std::string(password.chiara.rbegin(), password.chiara.rend());
    });
    connessione_ = std::make_shared<adapters::odbc::ConDialetto>(adapters::odbc::ApriDriverSqlite(percorso));
  }

  host::Connection& Connessione() override { return *connessione_; }

 private:
  support::TempDir cartella_;
  std::shared_ptr<host::Connection> connessione_;
};

std::unique_ptr<BancoDati> CreaBancoDatiDriverSqlite() {
  return std::make_unique<BancoDatiDriverSqlite>();
}

std::unique_ptr<BancoDati> CreaBancoDatiH2() {
  return std::make_unique<BancoDatiH2>();
}

std::string NomeBancoDati(const ::testing::TestParamInfo<CreaBancoDati>& info) {
  return info.param == &CreaBancoDatiH2 ? "H2" : "SqliteDriver";
}

INSTANTIATE_TEST_SUITE_P(Odbc, ContrattoIstruzioni,
                         ::testing::Values(&CreaBancoDatiDriverSqlite, &CreaBancoDatiH2), NomeBancoDati);

}  // namespace

}  // namespace orve::contract
