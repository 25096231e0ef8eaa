// Every statement of the library parsed and run by an engine that is not ours: H2 in its SQL Server mode,
// behind PostgreSQL's driver.
#include "adapters/statements_contract.h"

#include "adapters/odbc/dati_h2.h"
#include "odbc/odbc_connection.h"

namespace orve::contract {

namespace {

using adapters::odbc::Esegui;
using adapters::odbc::OdbcConnection;

// Each test in a transaction that is undone.
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

std::unique_ptr<BancoDati> CreaBancoDatiH2() {
  return std::make_unique<BancoDatiH2>();
}

std::string NomeBancoDati(const ::testing::TestParamInfo<CreaBancoDati>& /*info*/) {
  return "H2";
}

INSTANTIATE_TEST_SUITE_P(Odbc, ContrattoIstruzioni, ::testing::Values(&CreaBancoDatiH2), NomeBancoDati);

}  // namespace

}  // namespace orve::contract
