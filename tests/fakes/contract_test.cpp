// The fake under the contract of all connections, loaded with the contract's table: tests that build on the
// fake build on what the real ones do.
#include "adapters/connection_contract.h"

#include "fakes/fake_connection.h"

namespace orve::contract {

namespace {

using fakes::FakeConnection;
using fakes::Righe;

class BancoFinto : public Banco {
 public:
  BancoFinto() {
    const host::Variant nullo = host::Null{};
    tabella_ = {
        {{"CODICE", 1}, {"NOME", "Uno"}, {"PESO", 1.5}, {"NOTE", nullo}},
        {{"CODICE", 2}, {"NOME", "Città, d'Oro"}, {"PESO", nullo}, {"NOTE", ""}},
        {{"CODICE", 3}, {"NOME", nullo}, {"PESO", -2.0}, {"NOTE", "riga1\r\nriga2"}},
    };
    connessione_->SoloRegole();
    connessione_->Calcola("SELECT CODICE, NOME, PESO, NOTE FROM CONTRATTO ORDER BY CODICE",
                          [this] { return tabella_; });
    connessione_->Risponde("SELECT CODICE, NOME FROM CONTRATTO WHERE CODICE = 99", {});
    connessione_->Risponde("SELECT CODICE FROM CONTRATTO WHERE PESO = 9", {});
    connessione_->Risponde("SELECT NOME AS ALIAS, COALESCE(NOTE,'niente') NOTA",
                           {{{"ALIAS", "Uno"}, {"NOTA", "niente"}}});
    connessione_->Calcola("UPDATE CONTRATTO SET PESO = ", [this] {
      tabella_.front()["PESO"] = 7.0;
      return Righe{};
    });
  }

  std::shared_ptr<host::Connection> Connessione() override { return connessione_; }
  void Utente(std::optional<std::int32_t> id) override {
    connessione_->utenteConnessione = id ? host::Variant(*id) : host::Variant(host::Null{});
  }
  void Cade() override { connessione_->Chiudi(); }

 private:
  Righe tabella_;
  std::shared_ptr<FakeConnection> connessione_ =
      std::make_shared<FakeConnection>(std::make_shared<fakes::Journal>());
};

std::unique_ptr<Banco> CreaBancoFinto() {
  return std::make_unique<BancoFinto>();
}

std::string NomeBanco(const ::testing::TestParamInfo<CreaBanco>& /*info*/) {
  return "rules";
}

INSTANTIATE_TEST_SUITE_P(Fake, ContrattoConnessione, ::testing::Values(&CreaBancoFinto), NomeBanco);
INSTANTIATE_TEST_SUITE_P(Fake, ContrattoProcedura, ::testing::Values(&CreaBancoFinto), NomeBanco);
// A database of rules has no dialect.
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(ContrattoDialetto);

}  // namespace

}  // namespace orve::contract
