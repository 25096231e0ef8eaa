// What somebody who can write the database, but has no key, gets to see of its passwords.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>

#include "apps/orve-mail/prova_intera.h"
#include "sqlite/schema.h"

namespace orve::app {

namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class PasswordLegate : public ProvaIntera {
 protected:
  void NonApre(const Esecuzione& esecuzione) const {
    EXPECT_EQ(esecuzione.stato, 1) << esecuzione;
    EXPECT_THAT(esecuzione.errori, HasSubstr("Errore di autenticazione utente"));
    EXPECT_THAT(esecuzione.errori,
                AllOf(HasSubstr("la password memorizzata di «"), HasSubstr("imposta-password")));
  }
  [[nodiscard]] std::string Memorizzata(int account) const {
    return Sql("SELECT FW98_PASSWORD AS C1 FROM FW98_MAILACCOUNT WHERE FW98_IDACCOUNT = " +
               std::to_string(account))[0][0];
  }
  // As an installation from before the binding has it: its key, and the password of account 1.
  void TornaIndietro() const {
    const std::string file = cartella.Write(
        "prova.db.chiave", "orve-mail-chiave-1:BesN1L5LHd9xSgdiS/SdPS47R9ez9KsYDmeVDMNtDrY=\n");
    ASSERT_EQ(::chmod(file.c_str(), 0600), 0);
    Sql(std::string("UPDATE FW98_MAILACCOUNT SET FW98_PASSWORD = '") + kVecchia +
        "' WHERE FW98_IDACCOUNT = 1");
    Sql("UPDATE FW98_MAILACCOUNT SET FW98_PASSWORD = NULL WHERE FW98_IDACCOUNT <> 1");
  }

  static constexpr const char* kVecchia =
      "orve1:g8md1/IYHC3X9BlDjwFPG+rUQL0JDW0GhmfqSJdNYHFpbq8BTFWSY4lIgkahfaZcoSb/kdeixw==";
  const std::vector<std::string> kMessaggio = {"--a", "x@example.org", "--corpo", "x"};
};

TEST_F(PasswordLegate, AnAccountPointedToAnotherServerSendsNothingThere) {
  AvviaServerOrdinario();
  for (const char* altrove : {"FW23_SERVERNAME = '127.0.0.1'", "FW23_SSL = 0", "FW23_PORT = 25"}) {
    Sql("UPDATE FW23_FAXER SET FW23_SERVERNAME = 'localhost', FW23_SSL = 1 WHERE FW23_IDSERVER = 1");
    Sql(std::string("UPDATE FW23_FAXER SET ") + altrove + " WHERE FW23_IDSERVER = 1");
    NonApre(Invia({"--a", "x@example.org", "--corpo", "x", "--dialogo", File("dialogo")}));
    EXPECT_EQ(support::ReadFile(File("dialogo")), "") << altrove << ": nobody was spoken to";
  }
}

TEST_F(PasswordLegate, TheTextOfOneAccountIsWorthNothingInTheRowOfAnother) {
  auto& server = AvviaServerOrdinario();
  Sql("UPDATE FW98_MAILACCOUNT SET FW98_PASSWORD = (SELECT FW98_PASSWORD FROM FW98_MAILACCOUNT WHERE"
      " FW98_IDACCOUNT = 2) WHERE FW98_IDACCOUNT = 1");
  NonApre(Invia(kMessaggio));
  EXPECT_EQ(server.Count(), 0U);
}

TEST_F(PasswordLegate, ASealedTextThatDoesNotOpenIsNeverSentItself) {
  auto& server = AvviaServerOrdinario();
  for (const char* testo : {"orve1:AAAA", "orve2:AAAA", "orve9:AAAA"}) {
    Sql(std::string("UPDATE FW98_MAILACCOUNT SET FW98_PASSWORD = '") + testo + "' WHERE FW98_IDACCOUNT = 1");
    const Esecuzione esecuzione =
        Invia({"--a", "x@example.org", "--corpo", "x", "--dialogo", File("dialogo")});
    NonApre(esecuzione);
    EXPECT_EQ(support::ReadFile(File("dialogo")), "") << testo << ": nobody was spoken to";
  }
  EXPECT_EQ(server.Count(), 0U);
}

TEST_F(PasswordLegate, APasswordThatWasNeverSealedServesAsItStands) {
  auto& server = AvviaServerOrdinario();
  Sql("UPDATE FW98_MAILACCOUNT SET FW98_PASSWORD = '" + adapters::sqlite::PasswordDiProva(1) +
      "' WHERE FW98_IDACCOUNT = 1");
  EXPECT_EQ(Invia(kMessaggio).stato, 0);
  EXPECT_EQ(server.Count(), 1U);
}

TEST_F(PasswordLegate, OldOnesStillServeAndAreToldAndRewritten) {
  TornaIndietro();
  auto& server = AvviaServerOrdinario();
  Sql(std::string("UPDATE FW98_MAILACCOUNT SET FW98_PASSWORD = '") + kVecchia + "' WHERE FW98_IDACCOUNT = 1");
  EXPECT_EQ(Invia(kMessaggio).stato, 0);
  const std::string dove = "localhost, porta " + std::to_string(server.Port()) + ", TLS";
  const Esecuzione prima = Esegui({"controlla", "--ca", Ca()});
  EXPECT_THAT(prima.uscita,
              HasSubstr("password degli account: riscritte, ora legate al loro server: account 1"
                        " per " +
                        dove))
      << prima;
  EXPECT_THAT(Memorizzata(1), StartsWith("orve2:"));
  const Esecuzione dopo = Esegui({"controlla", "--ca", Ca()});
  EXPECT_THAT(dopo.uscita, HasSubstr("password degli account: 1 cifrata, legate al loro server")) << dopo;
  EXPECT_EQ(Invia(kMessaggio).stato, 0);
  EXPECT_EQ(server.Count(), 2U);
  Sql("UPDATE FW23_FAXER SET FW23_SERVERNAME = '127.0.0.1' WHERE FW23_IDSERVER = 1");
  NonApre(Invia(kMessaggio));
}

TEST_F(PasswordLegate, WhoHasTheKeyTakesThemAlongToAnotherServer) {
  TornaIndietro();
  auto& primo = AvviaServerOrdinario();
  EXPECT_THAT(Memorizzata(1), StartsWith("orve2:")) << "bound on the way";
  auto& secondo = AvviaServerOrdinario();
  EXPECT_EQ(Invia(kMessaggio).stato, 0);
  EXPECT_EQ(primo.Count(), 0U);
  EXPECT_EQ(secondo.Count(), 1U);
}

TEST_F(PasswordLegate, APointerThatSomebodyBentIsPutRightWithoutANewPassword) {
  auto& server = AvviaServerOrdinario();
  Sql("UPDATE FW23_FAXER SET FW23_SERVERNAME = 'predone.example' WHERE FW23_IDSERVER = 1");
  const Esecuzione rimesso =
      Esegui({"imposta-server", "1", "--host", "localhost", "--porta", std::to_string(server.Port())});
  EXPECT_EQ(rimesso.stato, 0) << rimesso;
  EXPECT_THAT(rimesso.uscita, Not(HasSubstr("imposta-password")));
  EXPECT_EQ(Invia(kMessaggio).stato, 0);
}

TEST_F(PasswordLegate, WithoutTheirKeyTheServerStaysWhereItIs) {
  const auto prima = Sql("SELECT FW23_SERVERNAME AS C1 FROM FW23_FAXER WHERE FW23_IDSERVER = 1");
  std::filesystem::rename(Db() + ".chiave", File("altrove"));
  const Esecuzione esecuzione = Esegui({"imposta-server", "1", "--host", "x.example", "--porta", "25"});
  EXPECT_EQ(esecuzione.stato, 5) << esecuzione;
  EXPECT_EQ(Sql("SELECT FW23_SERVERNAME AS C1 FROM FW23_FAXER WHERE FW23_IDSERVER = 1"), prima);
}

TEST_F(PasswordLegate, WithTheKeyOfAnotherDatabaseTheOnesThatStayBehindAreTold) {
  ASSERT_EQ(Esegui({"crea-db", File("altro.db")}).stato, 0);
  const Esecuzione esecuzione = Esegui(
      {"imposta-server", "1", "--host", "x.example", "--porta", "25", "--chiave", File("altro.db.chiave")});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_THAT(
      esecuzione.uscita,
      HasSubstr(
          "Account 1: la password non è di questo server; memorizzarla di nuovo con imposta-password\n"));
}

}  // namespace

}  // namespace orve::app
