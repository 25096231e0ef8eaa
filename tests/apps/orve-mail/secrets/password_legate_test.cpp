// How much somebody who can write the database, but has no key, gets to see of its passwords.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>

#include "apps/orve-mail/prova_intera.h"
#include "sqlite/schema.h"

namespace orve::app {

namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
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
  // As in an installation from before the binding: its key, and the password of account 1.
  void TornaIndietro() const {
    const std::string file =
        cartella.Write("prova.db.chiave", std::string("orve-mail-chiave-1:") + kCifre + "\n");
    ASSERT_EQ(::chmod(file.c_str(), 0600), 0);
    Sql(std::string("UPDATE FW98_MAILACCOUNT SET FW98_PASSWORD = '") + kVecchia +
        "' WHERE FW98_IDACCOUNT = 1");
    Sql("UPDATE FW98_MAILACCOUNT SET FW98_PASSWORD = NULL WHERE FW98_IDACCOUNT <> 1");
  }

  [[nodiscard]] std::string Chiave() const { return support::ReadFile(Db() + ".chiave"); }

  static constexpr const char* kCifre = "BesN1L5LHd9xSgdiS/SdPS47R9ez9KsYDmeVDMNtDrY=";
  static constexpr const char* kVecchia =
      "orve1:g8md1/IYHC3X9BlDjwFPG+rUQL0JDW0GhmfqSJdNYHFpbq8BTFWSY4lIgkahfaZcoSb/kdeixw==";
  static constexpr const char* kAltra =
      "orve1:zpyxj60d/n430tXo7kJCOfnlQnIAniIKS/MMkUteCSqlk4/hC0etH4ciHg+idc/vCqGPJ41T0A==";
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

TEST_F(PasswordLegate, WhenNoneIsLeftTheKeyOpensOldOnesNoMore) {
  TornaIndietro();
  AvviaServerOrdinario();
  Sql(std::string("UPDATE FW98_MAILACCOUNT SET FW98_PASSWORD = '") + kVecchia + "' WHERE FW98_IDACCOUNT = 1");
  const Esecuzione controllo = Esegui({"controlla", "--ca", Ca()});
  EXPECT_THAT(
      controllo.uscita,
      HasSubstr("[ok]      chiave delle password: ora apre soltanto password legate al loro server\n"))
      << controllo;
  EXPECT_EQ(Chiave(), std::string("orve-mail-chiave-2:") + kCifre + "\n");
  struct stat stato {};
  ASSERT_EQ(::stat((Db() + ".chiave").c_str(), &stato), 0);
  EXPECT_EQ(stato.st_mode & 0777, 0600U);
  EXPECT_EQ(Invia(kMessaggio).stato, 0) << "the bound ones serve on";
  Sql(std::string("UPDATE FW98_MAILACCOUNT SET FW98_PASSWORD = '") + kVecchia + "' WHERE FW98_IDACCOUNT = 1");
  NonApre(Invia(kMessaggio));
}

TEST_F(PasswordLegate, AKeyThatCannotBeRewrittenOrMayServeOthersIsToldAndStays) {
  TornaIndietro();
  const std::string prima = Chiave();
  const std::string altrove = cartella.Write("altrove", prima);
  ASSERT_EQ(::chmod(altrove.c_str(), 0600), 0);
  const std::string rimedio = " orve-mail-chiave-2 al posto di orve-mail-chiave-1\n";
  const Esecuzione altrui = Esegui({"controlla", "--chiave", altrove});
  EXPECT_THAT(altrui.uscita,
              HasSubstr("[avviso]  chiave delle password: apre ancora le password non legate, e qui non ne"))
      << altrui;
  EXPECT_THAT(altrui.uscita, HasSubstr(rimedio));
  EXPECT_EQ(support::ReadFile(altrove), prima);
  std::filesystem::create_directory(File("prova.db.chiave.nuova"));
  const Esecuzione occupata = Esegui({"controlla"});
  EXPECT_THAT(occupata.uscita,
              HasSubstr("[avviso]  chiave delle password: apre ancora le password non legate: File della"))
      << occupata;
  EXPECT_THAT(occupata.uscita, HasSubstr(rimedio));
  std::filesystem::remove(File("prova.db.chiave.nuova"));
  EXPECT_EQ(Chiave(), prima);
  std::filesystem::remove(Db() + ".chiave");
  std::filesystem::create_symlink(altrove, Db() + ".chiave");
  EXPECT_THAT(Esegui({"controlla"}).uscita, HasSubstr("è un collegamento simbolico"));
  EXPECT_EQ(support::ReadFile(altrove), prima);
}

TEST_F(PasswordLegate, AKeyThatARunLeftHalfWrittenIsInNobodysWay) {
  TornaIndietro();
  cartella.Write("prova.db.chiave.nuova", "orve-mail-chi");
  Sql("UPDATE FW98_MAILACCOUNT SET FW98_PASSWORD = NULL WHERE FW98_IDACCOUNT = 1");
  const Esecuzione controllo = Esegui({"controlla"});
  EXPECT_THAT(
      controllo.uscita,
      HasSubstr("[ok]      chiave delle password: ora apre soltanto password legate al loro server\n"))
      << controllo;
  EXPECT_EQ(Chiave(), std::string("orve-mail-chiave-2:") + kCifre + "\n");
  EXPECT_FALSE(std::filesystem::exists(File("prova.db.chiave.nuova")));
}

TEST_F(PasswordLegate, ATextThatStandsInTwoRowsIsBoundInNeither) {
  TornaIndietro();
  AvviaServerOrdinario();
  Sql(std::string("UPDATE FW98_MAILACCOUNT SET FW98_PASSWORD = '") + kVecchia +
      "' WHERE FW98_IDACCOUNT IN (1, 2)");
  const Esecuzione controllo = Esegui({"controlla", "--ca", Ca()});
  EXPECT_THAT(controllo.uscita,
              HasSubstr("non legate al loro server: account 1 (copiata: lo stesso testo sta in un altro "
                        "account); account 2 (copiata"))
      << controllo;
  EXPECT_EQ(Memorizzata(1), kVecchia);
  EXPECT_EQ(Memorizzata(2), kVecchia);
  EXPECT_THAT(Chiave(), StartsWith("orve-mail-chiave-1:"));
}

TEST_F(PasswordLegate, WithoutAServerThereIsNothingToBindThemTo) {
  TornaIndietro();
  Sql(std::string("UPDATE FW98_MAILACCOUNT SET FW98_PASSWORD = '") + kVecchia +
      "', FW98_IDSERVER_FW23 = NULL WHERE FW98_IDACCOUNT = 1");
  const Esecuzione controllo = Esegui({"controlla"});
  EXPECT_THAT(
      controllo.uscita,
      HasSubstr("[avviso]  password degli account: senza un server a cui legarle: account 1 | Che fare: "))
      << controllo;
  EXPECT_EQ(Memorizzata(1), kVecchia);
  EXPECT_THAT(Chiave(), StartsWith("orve-mail-chiave-1:"));
}

TEST_F(PasswordLegate, APasswordThatWasStoredMeanwhileIsNotOverwritten) {
  TornaIndietro();
  AvviaServerOrdinario();
  Sql(std::string("UPDATE FW98_MAILACCOUNT SET FW98_PASSWORD = '") + kVecchia + "' WHERE FW98_IDACCOUNT = 1");
  Sql(std::string("UPDATE FW98_MAILACCOUNT SET FW98_PASSWORD = ' ") + kAltra + "' WHERE FW98_IDACCOUNT = 2");
  // Somebody stores the second one while the first is being rewritten.
  Sql("CREATE TRIGGER MEANWHILE AFTER UPDATE OF FW98_PASSWORD ON FW98_MAILACCOUNT WHEN NEW.FW98_IDACCOUNT = 1"
      " BEGIN UPDATE FW98_MAILACCOUNT SET FW98_PASSWORD = 'appena scritta' WHERE FW98_IDACCOUNT = 2; END");
  const Esecuzione controllo = Esegui({"controlla", "--ca", Ca()});
  EXPECT_EQ(Memorizzata(2), "appena scritta");
  EXPECT_THAT(controllo.uscita, HasSubstr("account 2 (nel database non si può riscrivere)")) << controllo;
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

struct Modifica {
  const char* quale;
  const char* istruzione;  // by somebody who may write the database and has no key
};

const Modifica kModifiche[] = {
    {"the server goes elsewhere",
     "CREATE TRIGGER t AFTER UPDATE ON FW23_FAXER WHEN NEW.FW23_SERVERNAME <> 'predone.example' BEGIN"
     " UPDATE FW23_FAXER SET FW23_SERVERNAME = 'predone.example', FW23_PORT = 465"
     " WHERE FW23_IDSERVER = NEW.FW23_IDSERVER; END"},
    {"the server goes elsewhere when a password is written",
     "CREATE TRIGGER t AFTER UPDATE ON FW98_MAILACCOUNT BEGIN"
     " UPDATE FW23_FAXER SET FW23_SERVERNAME = 'predone.example' WHERE FW23_IDSERVER = 1; END"},
    {"the login is taken away",
     "CREATE TRIGGER t AFTER UPDATE ON FW23_FAXER WHEN NEW.FW23_INDAUTH <> 0 BEGIN"
     " UPDATE FW23_FAXER SET FW23_INDAUTH = 0 WHERE FW23_IDSERVER = NEW.FW23_IDSERVER; END"},
    {"the accounts go elsewhere",
     "CREATE TRIGGER t AFTER UPDATE ON FW23_FAXER BEGIN"
     " UPDATE FW98_MAILACCOUNT SET FW98_IDSERVER_FW23 = 2; END"},
    {"the accounts change their logins",
     "CREATE TRIGGER t AFTER UPDATE ON FW23_FAXER BEGIN"
     " UPDATE FW98_MAILACCOUNT SET FW98_USERNAME = 'predone' WHERE FW98_IDSERVER_FW23 = 1; END"},
    {"another account takes the place of the first",
     "CREATE TRIGGER t AFTER UPDATE ON FW23_FAXER BEGIN"
     " UPDATE FW98_MAILACCOUNT SET FW98_IDSERVER_FW23 = 2 WHERE FW98_IDACCOUNT = 1;"
     " UPDATE FW98_MAILACCOUNT SET FW98_IDSERVER_FW23 = 1 WHERE FW98_IDACCOUNT = 2; END"},
    {"the old password comes back",
     "CREATE TRIGGER t AFTER UPDATE ON FW98_MAILACCOUNT WHEN NEW.FW98_PASSWORD <> OLD.FW98_PASSWORD BEGIN"
     " UPDATE FW98_MAILACCOUNT SET FW98_PASSWORD = OLD.FW98_PASSWORD"
     " WHERE FW98_IDACCOUNT = NEW.FW98_IDACCOUNT; END"},
};

TEST_F(PasswordLegate, ADatabaseThatChangesWhatIsWrittenKeepsItsServerAndItsPasswords) {
  const auto tutto = [this] {
    Righe righe = Sql(
        "SELECT FW23_SERVERNAME AS C1, FW23_PORT AS C2, FW23_SSL AS C3, FW23_INDAUTH AS C4 FROM FW23_FAXER"
        " ORDER BY FW23_IDSERVER");
    for (auto& riga : Sql("SELECT FW98_USERNAME AS C1, FW98_PASSWORD AS C2, FW98_IDSERVER_FW23 AS C3"
                          " FROM FW98_MAILACCOUNT ORDER BY FW98_IDACCOUNT"))
      righe.push_back(riga);
    return righe;
  };
  const Righe prima = tutto();
  for (const auto& [quale, istruzione] : kModifiche) {
    SCOPED_TRACE(quale);
    Sql(istruzione);
    const Esecuzione esecuzione =
        Esegui({"imposta-server", "1", "--host", "buono.example", "--porta", "587"});
    EXPECT_EQ(esecuzione.stato, 5) << esecuzione;
    EXPECT_EQ(esecuzione.uscita, "");
    EXPECT_THAT(
        esecuzione.errori,
        HasSubstr("Server 1 lasciato com'era: il database ha cambiato da sé quanto vi è stato scritto"));
    EXPECT_EQ(tutto(), prima);
    Sql("DROP TRIGGER t");
  }
  EXPECT_EQ(Esegui({"imposta-server", "1", "--host", "buono.example", "--porta", "587"}).stato, 0);
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
  // As in databases from before anybody was asked.
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

TEST_F(PasswordInChiaro, IsKeptWhileSomeServerThereWantsItAndNoLonger) {
  const auto permessi = [this] {
    return Sql("SELECT SERVER || ':' || PORTA AS C1 FROM SERVER_IN_CHIARO ORDER BY 1");
  };
  const auto imposta = [this](const std::string& server, const std::string& host, const std::string& porta,
                              const std::string& opzione) {
    const Esecuzione esecuzione =
        Esegui({"imposta-server", server, "--host", host, "--porta", porta, "--senza-tls", opzione});
    EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  };
  imposta("1", "H.example", "40025", "--password-in-chiaro");
  imposta("2", "h.example", "40025", "--senza-autenticazione");
  EXPECT_THAT(permessi(), ElementsAre(ElementsAre("h.example:40025"))) << "the first server needs it";
  imposta("3", "h.example", "40025", "--password-in-chiaro");
  imposta("3", "z.example", "25", "--password-in-chiaro");
  EXPECT_THAT(permessi(), ElementsAre(ElementsAre("h.example:40025"), ElementsAre("z.example:25")));
  imposta("3", "y.example", "25", "--senza-autenticazione");
  EXPECT_THAT(permessi(), ElementsAre(ElementsAre("h.example:40025"))) << "nobody is at the old place";
  imposta("1", "h.example", "40025", "--senza-autenticazione");
  EXPECT_THAT(permessi(), IsEmpty());
}

TEST_F(PasswordInChiaro, ARowThatIsNoPermissionStopsNoSend) {
  EXPECT_EQ(Imposta({"--password-in-chiaro"}).stato, 0);
  Sql("DROP TABLE SERVER_IN_CHIARO");
  Sql("CREATE TABLE SERVER_IN_CHIARO (SERVER, PORTA)");
  Sql("INSERT INTO SERVER_IN_CHIARO VALUES ('localhost', NULL), ('localhost', 'x'), (NULL, 25),"
      " ('localhost', 99999999999), ('localhost', " +
      std::to_string(server_.Port()) + ")");
  const Esecuzione esecuzione = Invia(kMessaggio);
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
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
  EXPECT_THAT(negata.uscita, HasSubstr("AUTH: la password in chiaro non è permessa\n"));
  EXPECT_THAT(support::ReadFile(File("dialogo")), Not(HasSubstr("C: AUTH")));
  const Esecuzione permessa = Esegui({"controlla", "--password-in-chiaro"});
  EXPECT_THAT(permessa.uscita, Not(HasSubstr("password in chiaro: non è permessa"))) << permessa;
}

}  // namespace

}  // namespace orve::app
