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
    NonApre(Invia(
        {"--a", "x@example.org", "--corpo", "x", "--password-in-chiaro", "--dialogo", File("dialogo")}));
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

// A server that offers login without encryption.
class PasswordInChiaro : public PasswordLegate {
 protected:
  PasswordInChiaro() : server_(Opzioni()) {}

  [[nodiscard]] Esecuzione Imposta(const std::vector<std::string>& opzioni) const {
    std::vector<std::string> comando = {"imposta-server", "1",       "--host",
                                        "localhost",      "--porta", std::to_string(server_.Port()),
                                        "--senza-tls"};
    comando.insert(comando.end(), opzioni.begin(), opzioni.end());
    return Esegui(comando);
  }
  // As it stands in databases from before anybody was asked.
  void ImpostaSenzaChiedere() const {
    Sql("UPDATE FW23_FAXER SET FW23_SERVERNAME = 'localhost', FW23_SSL = 0, FW23_INDAUTH = 1, FW23_PORT = " +
        std::to_string(static_cast<std::int16_t>(server_.Port())) + " WHERE FW23_IDSERVER = 1");
    EXPECT_EQ(Esegui({"imposta-password", "1"}, adapters::sqlite::PasswordDiProva(1) + "\n").stato, 0);
  }

  support::SmtpServer server_;

 private:
  static support::SmtpServerOptions Opzioni() {
    support::SmtpServerOptions opzioni;
    opzioni.auth = {"PLAIN"};
    opzioni.requireAuth = true;
    opzioni.user = "fatture@arvenia.example";
    opzioni.password = adapters::sqlite::PasswordDiProva(1);
    return opzioni;
  }
};

TEST_F(PasswordInChiaro, WithoutAPermissionNothingIsSaidToTheServer) {
  ImpostaSenzaChiedere();
  const Esecuzione esecuzione = Invia({"--a", "x@example.org", "--corpo", "x", "--dialogo", File("dialogo")});
  EXPECT_EQ(esecuzione.stato, 1) << esecuzione;
  EXPECT_THAT(
      esecuzione.errori,
      HasSubstr(
          "utente e password viaggerebbero in chiaro fino a localhost: attivare TLS con imposta-server, "
          "oppure permetterlo con --password-in-chiaro"));
  EXPECT_EQ(support::ReadFile(File("dialogo")), "");
  EXPECT_EQ(server_.Count(), 0U);
}

TEST_F(PasswordInChiaro, IsAllowedForOneSend) {
  ImpostaSenzaChiedere();
  const Esecuzione esecuzione = Invia({"--a", "x@example.org", "--corpo", "x", "--password-in-chiaro"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(Invia(kMessaggio).stato, 1) << "and not for the next";
  EXPECT_EQ(server_.Count(), 1U);
}

TEST_F(PasswordInChiaro, IsAllowedForAServerUntilThatIsTakenBack) {
  const Esecuzione impostato = Imposta({"--password-in-chiaro"});
  EXPECT_EQ(impostato.stato, 0) << impostato;
  EXPECT_THAT(impostato.uscita, HasSubstr(", senza TLS, autenticazione, password in chiaro\n"));
  EXPECT_EQ(Invia(kMessaggio).stato, 0);
  EXPECT_EQ(server_.Count(), 1U);
  EXPECT_EQ(Imposta({"--senza-autenticazione"}).stato, 0);
  ImpostaSenzaChiedere();
  EXPECT_EQ(Invia(kMessaggio).stato, 1);
  EXPECT_EQ(server_.Count(), 1U);
}

TEST_F(PasswordInChiaro, TheCommandWantsItSaid) {
  const Esecuzione senza = Imposta({});
  EXPECT_EQ(senza.stato, 2) << senza;
  EXPECT_THAT(senza.errori, HasSubstr("--senza-tls: utente e password viaggerebbero in chiaro"));
  EXPECT_EQ(Imposta({"--senza-autenticazione", "--password-in-chiaro"}).stato, 2);
  EXPECT_EQ(Esegui({"imposta-server", "1", "--host", "x", "--porta", "25", "--password-in-chiaro"}).stato, 2);
}

TEST_F(PasswordInChiaro, ACheckTellsThatItIsNotAllowedAndDoesNotLogIn) {
  ImpostaSenzaChiedere();
  Sql("UPDATE FW23_FAXER SET FW23_SERVERNAME = 'nessuno.invalid' WHERE FW23_IDSERVER <> 1");
  const Esecuzione negata = Esegui({"controlla", "--dialogo", File("dialogo")});
  EXPECT_THAT(negata.uscita, HasSubstr("password in chiaro: non è permessa, e gli invii falliscono"))
      << negata;
  EXPECT_THAT(support::ReadFile(File("dialogo")), Not(HasSubstr("C: AUTH")));
  const Esecuzione permessa = Esegui({"controlla", "--password-in-chiaro"});
  EXPECT_THAT(permessa.uscita, Not(HasSubstr("password in chiaro: non è permessa"))) << permessa;
}

}  // namespace

}  // namespace orve::app
