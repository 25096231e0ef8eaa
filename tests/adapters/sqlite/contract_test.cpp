// The embedded database under the contract of all connections.
#include "adapters/connection_contract.h"

#include "adapters/sqlite/prova.h"

namespace orve::contract {

namespace {

using adapters::sqlite::CartellaDiProva;
using adapters::sqlite::SqliteConnection;

class BancoSqlite : public Banco {
 public:
  BancoSqlite() {
    const auto percorso = cartella_ / "contratto.db";
    adapters::sqlite::CreaDatabase(percorso, adapters::sqlite::CifraDiProva);
    connessione_ = SqliteConnection::Apri(percorso);
    (void)connessione_->Execute(
        "CREATE TABLE CONTRATTO (CODICE INT, NOME VARCHAR(50) NULL, PESO FLOAT NULL, NOTE VARCHAR(4000) "
        "NULL)",
        1);
    (void)connessione_->Execute(
        "INSERT INTO CONTRATTO VALUES (1, 'Uno', 1.5, NULL), (2, 'Città, d''Oro', NULL, ''),"
        " (3, NULL, -2, 'riga1\r\nriga2')",
        1);
  }

  std::shared_ptr<host::Connection> Connessione() override { return connessione_; }
  void Utente(std::optional<std::int32_t> id) override { connessione_->UtenteConnessione(id); }
  void Cade() override { connessione_->Chiudi(); }

 private:
  CartellaDiProva cartella_;
  std::shared_ptr<SqliteConnection> connessione_;
};

std::unique_ptr<Banco> CreaBancoSqlite() {
  return std::make_unique<BancoSqlite>();
}

std::string NomeBanco(const ::testing::TestParamInfo<CreaBanco>& /*info*/) {
  return "file";
}

INSTANTIATE_TEST_SUITE_P(Sqlite, ContrattoConnessione, ::testing::Values(&CreaBancoSqlite), NomeBanco);
INSTANTIATE_TEST_SUITE_P(Sqlite, ContrattoDialetto, ::testing::Values(&CreaBancoSqlite), NomeBanco);
INSTANTIATE_TEST_SUITE_P(Sqlite, ContrattoProcedura, ::testing::Values(&CreaBancoSqlite), NomeBanco);

}  // namespace

}  // namespace orve::contract
