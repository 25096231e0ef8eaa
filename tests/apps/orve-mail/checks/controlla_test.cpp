// The check of an installation against real servers: what is in order, what is not and what to do about it,
// and that no message is ever begun and no secret revealed.
#include <fstream>
#include <sstream>

#include "apps/orve-mail/prova_intera.h"
#include "sqlite/schema.h"
#include "support/scripted_server.h"

namespace orve::app {

namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class Controlla : public ProvaIntera {
 protected:
  Esecuzione Controllo(std::vector<std::string> argomenti = {}) {
    std::vector<std::string> comando = {"controlla", "--ca", Ca(), "--dialogo", File("dialogo.txt")};
    comando.insert(comando.end(), argomenti.begin(), argomenti.end());
    Esecuzione esecuzione = Esegui(comando);
    const std::string dialogo = Dialogo();
    EXPECT_THAT(dialogo, Not(HasSubstr("C: DATA")));
    EXPECT_THAT(dialogo, Not(HasSubstr("C: RCPT")));
    for (int account = 1; account <= 8; ++account) {
      const std::string password = adapters::sqlite::PasswordDiProva(account);
      EXPECT_THAT(esecuzione.uscita + esecuzione.errori + dialogo, Not(HasSubstr(password)));
    }
    return esecuzione;
  }

  [[nodiscard]] std::string Dialogo() const {
    std::ifstream file(File("dialogo.txt"));
    std::stringstream testo;
    testo << file.rdbuf();
    return testo.str();
  }

  /// The only line that begins like this after its marker; empty when there is none or several.
  [[nodiscard]] static std::string Riga(const Esecuzione& esecuzione, const std::string& controllo) {
    std::istringstream righe(esecuzione.uscita);
    std::string trovata;
    for (std::string riga; std::getline(righe, riga);) {
      const std::size_t chiusa = riga.find(']');
      if (chiusa == std::string::npos) continue;
      const std::size_t nome = riga.find_first_not_of(' ', chiusa + 1);
      if (nome == std::string::npos || riga.compare(nome, controllo.size() + 1, controllo + ":") != 0)
        continue;
      if (!trovata.empty()) return {};
      trovata = riga;
    }
    return trovata;
  }

  /// One account on one server: the user's ordinary default.
  void UnSoloAccount() {
    Sql("DELETE FROM FW9A_MAILAZIENDAACCOUNT");
    Sql("DELETE FROM FW99_MAILUSERACCOUNT WHERE FW99_IDACCOUNT_FW98 <> 1");
  }

  static constexpr const char* kAccount = "account 1 (fatture@arvenia.example)";
  static std::string Di(const char* controllo) { return std::string(kAccount) + ", " + controllo; }
};

TEST_F(Controlla, AnInstallationInOrderHasALineForEachCheckAndStatusZero) {
  auto& server = AvviaServerOrdinario();
  Sql("UPDATE FW98_MAILACCOUNT SET FW98_IDSERVER_FW23 = 1");
  Sql("DELETE FROM FW9A_MAILAZIENDAACCOUNT");
  Sql("INSERT INTO FW23_FAXER SELECT 50, FW23_SERVERNAME, FW23_PORT, FW23_TIMEOUT, 2, FW23_INDAUTH, FW23_SSL "
      "FROM"
      " FW23_FAXER WHERE FW23_IDSERVER = 1");
  Sql("UPDATE FW98_MAILACCOUNT SET FW98_IDSERVER_FW23 = 50, FW98_USERNAME = 'fatture@arvenia.example',"
      " FW98_PASSWORD = (SELECT FW98_PASSWORD FROM FW98_MAILACCOUNT WHERE FW98_IDACCOUNT = 1)"
      " WHERE FW98_IDACCOUNT = 4");
  const Esecuzione esecuzione = Controllo();
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(esecuzione.errori, "");
  for (const std::string& controllo : {std::string("chiave delle password"),
                                       std::string("database"),
                                       std::string("registro degli invii"),
                                       std::string("tabelle"),
                                       std::string("firme"),
                                       std::string("utente"),
                                       std::string("funzione FNCG_GETCODANAG"),
                                       std::string("procedura SPFW_GetUserIDFromConnection"),
                                       std::string("procedura SPFW_AttivaEventoGestionale"),
                                       std::string("ditta"),
                                       std::string("impostazioni"),
                                       std::string("account dell'utente"),
                                       std::string("account PEC dell'utente"),
                                       std::string("account nelle finestre"),
                                       std::string("account PEC nelle finestre"),
                                       Di("nome del server"),
                                       Di("connessione"),
                                       Di("TLS"),
                                       Di("AUTH"),
                                       Di("dimensione massima"),
                                       Di("mittente"),
                                       std::string("cartella temporanea")}) {
    EXPECT_THAT(Riga(esecuzione, controllo), StartsWith("[ok]")) << controllo << "\n" << esecuzione;
  }
  EXPECT_THAT(Riga(esecuzione, Di("TLS")), AllOf(HasSubstr("TLSv1."), HasSubstr("certificato valido")));
  EXPECT_THAT(esecuzione.uscita, HasSubstr(" controlli, 0 errori, 0 avvisi. Nessun messaggio inviato.\n"));
  EXPECT_EQ(server.Count(), 0U);
  EXPECT_THAT(Dialogo(), AllOf(HasSubstr("C: MAIL FROM:<fatture@arvenia.example>"), HasSubstr("C: RSET")));
  EXPECT_THAT(Registro(), ::testing::IsEmpty());
  EXPECT_THAT(CodiciEventi(), ::testing::IsEmpty());
}

TEST_F(Controlla, AMachineWithoutADirectorySaysSoAndThatIsNoError) {
  EXPECT_THAT(Riga(Controllo(), "directory aziendale"),
              StartsWith("[saltato] directory aziendale: nessuna directory configurata"));
}

TEST_F(Controlla, AServerThatIsNotThereStopsAtItsConnection) {
  UnSoloAccount();
  ImpostaServerSemplice(1);
  const Esecuzione esecuzione = Controllo();
  EXPECT_EQ(esecuzione.stato, 1) << esecuzione;
  EXPECT_THAT(Riga(esecuzione, Di("nome del server")), StartsWith("[ok]")) << esecuzione;
  EXPECT_THAT(Riga(esecuzione, Di("connessione")), AllOf(StartsWith("[ERRORE]"), HasSubstr("Che fare: ")));
  EXPECT_THAT(Riga(esecuzione, Di("mittente")), StartsWith("[saltato]"));
}

TEST_F(Controlla, AServerNameThatNobodyKnowsStopsThere) {
  UnSoloAccount();
  Sql("UPDATE FW23_FAXER SET FW23_SERVERNAME = 'non-esiste.invalid' WHERE FW23_IDSERVER = 1");
  const Esecuzione esecuzione = Controllo();
  EXPECT_EQ(esecuzione.stato, 1) << esecuzione;
  EXPECT_THAT(Riga(esecuzione, Di("nome del server")), StartsWith("[ERRORE]")) << esecuzione;
  EXPECT_THAT(Riga(esecuzione, Di("connessione")), StartsWith("[saltato]"));
}

TEST_F(Controlla, AnAccountThatKeepsTheWindowsFromOpeningIsToldByItsColumns) {
  UnSoloAccount();
  ImpostaServerSemplice(1);
  struct Caso {
    const char* guasto;
    const char* voluto;
  };
  for (const Caso& caso :
       {Caso{"UPDATE FW98_MAILACCOUNT SET FW98_INDREADRCPT = NULL", "account 1: FW98_INDREADRCPT è vuoto"},
        Caso{"UPDATE FW98_MAILACCOUNT SET FW98_INDREADRCPT = 1, FW98_INDDELIVERYSTATUS = 'x'",
             "account 1: FW98_INDDELIVERYSTATUS non è un numero"},
        Caso{"UPDATE FW98_MAILACCOUNT SET FW98_INDDELIVERYSTATUS = 70000",
             "account 1: FW98_INDDELIVERYSTATUS è 70000, oltre i 16 bit"},
        Caso{"UPDATE FW98_MAILACCOUNT SET FW98_INDDELIVERYSTATUS = 1, FW98_MAILADDRESS = NULL",
             "account 1: FW98_MAILADDRESS è vuoto"},
        Caso{"UPDATE FW23_FAXER SET FW23_PORT = NULL, FW23_INDAUTH = NULL, FW23_SSL = NULL",
             "account 1: FW98_MAILADDRESS è vuoto, FW23_PORT è vuoto, FW23_INDAUTH è vuoto"}}) {
    Sql(caso.guasto);
    Sql("UPDATE FW24_FAXCONFIG SET FW24_INDMODALITA = 2 WHERE FW24_CODICE = 'MAIL'");
    const Esecuzione esecuzione = Controllo();
    EXPECT_EQ(esecuzione.stato, 1);
    EXPECT_THAT(Riga(esecuzione, "account nelle finestre"),
                AllOf(StartsWith("[ERRORE]"), HasSubstr(caso.voluto)))
        << esecuzione;
    Sql("UPDATE FW24_FAXCONFIG SET FW24_INDMODALITA = 1 WHERE FW24_CODICE = 'MAIL'");
    EXPECT_THAT(Riga(Controllo(), "account nelle finestre"),
                AllOf(StartsWith("[avviso]"), HasSubstr(caso.voluto)));
  }
}

TEST_F(Controlla, AnAccountNumberTooLargeForTheWindowsIsTold) {
  UnSoloAccount();
  ImpostaServerSemplice(1);
  Sql("UPDATE FW98_MAILACCOUNT SET FW98_IDACCOUNT = 40000 WHERE FW98_IDACCOUNT = 1");
  Sql("UPDATE FW99_MAILUSERACCOUNT SET FW99_IDACCOUNT_FW98 = 40000");
  EXPECT_THAT(Riga(Controllo(), "account nelle finestre"),
              AllOf(StartsWith("[avviso]"), HasSubstr("FW98_IDACCOUNT è 40000, oltre i 16 bit")));
}

TEST_F(Controlla, AnAccountWithoutAServerIsTold) {
  UnSoloAccount();
  Sql("UPDATE FW23_FAXER SET FW23_SERVERNAME = NULL WHERE FW23_IDSERVER = 1");
  EXPECT_THAT(Riga(Controllo(), Di("nome del server")), StartsWith("[ERRORE]"));
}

TEST_F(Controlla, ANumberThatTheLibraryCouldNotReadIsToldThoughItLooksLikeAPort) {
  UnSoloAccount();
  ImpostaServerSemplice(1);
  for (const char* colonna : {"FW23_PORT", "FW23_TIMEOUT", "FW23_INDAUTH", "FW23_SSL"}) {
    Sql("UPDATE FW23_FAXER SET " + std::string(colonna) + " = 40000 WHERE FW23_IDSERVER = 1");
    const Esecuzione esecuzione = Controllo();
    EXPECT_EQ(esecuzione.stato, 1) << esecuzione;
    EXPECT_THAT(Riga(esecuzione, "account dell'utente"),
                AllOf(StartsWith("[ERRORE]"), HasSubstr(std::string(colonna) + " è 40000")))
        << esecuzione;
    Sql("UPDATE FW23_FAXER SET " + std::string(colonna) + " = 1 WHERE FW23_IDSERVER = 1");
  }
}

TEST_F(Controlla, APortAbove32767StandsInItsColumnAsANegativeNumber) {
  UnSoloAccount();
  Sql("UPDATE FW23_FAXER SET FW23_SERVERNAME = '127.0.0.1', FW23_PORT = -25536 WHERE FW23_IDSERVER = 1");
  EXPECT_THAT(Riga(Controllo(), Di("connessione")), HasSubstr("40000"));
}

TEST_F(Controlla, ACertificateOfAnotherNameIsRefused) {
  UnSoloAccount();
  AvviaServerOrdinario();
  // The same machine by an address that its certificate does not name.
  Sql("UPDATE FW23_FAXER SET FW23_SERVERNAME = '0.0.0.0' WHERE FW23_IDSERVER = 1");
  const Esecuzione esecuzione = Controllo();
  EXPECT_EQ(esecuzione.stato, 1) << esecuzione;
  EXPECT_THAT(Riga(esecuzione, Di("connessione")), StartsWith("[ok]"));
  EXPECT_THAT(Riga(esecuzione, Di("TLS")), AllOf(StartsWith("[ERRORE]"), HasSubstr("certificat")))
      << esecuzione;
}

TEST_F(Controlla, AnAuthorityThatNobodyTrustsIsRefused) {
  UnSoloAccount();
  AvviaServerOrdinario();
  const Esecuzione esecuzione = Esegui({"controlla"});
  EXPECT_EQ(esecuzione.stato, 1) << esecuzione;
  EXPECT_THAT(Riga(esecuzione, Di("connessione")), StartsWith("[ok]"));
  EXPECT_THAT(Riga(esecuzione, Di("TLS")), AllOf(StartsWith("[ERRORE]"), HasSubstr("--ca"))) << esecuzione;
  EXPECT_THAT(Riga(esecuzione, Di("AUTH")), StartsWith("[saltato]"));
}

TEST_F(Controlla, AServerWithoutEncryptionFailsWhereTheAccountWantsIt) {
  UnSoloAccount();
  support::ScriptedServer server({support::Say("220 pronto"), support::On("EHLO *", "250 salve")});
  ImpostaServerSemplice(server.Port());
  Sql("UPDATE FW23_FAXER SET FW23_SSL = 1 WHERE FW23_IDSERVER = 1");
  const Esecuzione esecuzione = Controllo();
  EXPECT_EQ(esecuzione.stato, 1) << esecuzione;
  EXPECT_THAT(Riga(esecuzione, Di("TLS")), StartsWith("[ERRORE]")) << esecuzione;
}

TEST_F(Controlla, AWrongPasswordStopsAtTheLogin) {
  UnSoloAccount();
  auto& server = AvviaServerOrdinario();
  EXPECT_EQ(Esegui({"imposta-password", "1"}, "sbagliata-7391\n").stato, 0);
  const Esecuzione esecuzione = Controllo();
  EXPECT_EQ(esecuzione.stato, 1) << esecuzione;
  EXPECT_THAT(Riga(esecuzione, Di("TLS")), StartsWith("[ok]"));
  EXPECT_THAT(Riga(esecuzione, Di("AUTH")), AllOf(StartsWith("[ERRORE]"), HasSubstr("imposta-password")))
      << esecuzione;
  EXPECT_THAT(esecuzione.uscita + esecuzione.errori + Dialogo(), Not(HasSubstr("sbagliata-7391")));
  EXPECT_EQ(server.Count(), 0U);
}

TEST_F(Controlla, APasswordOfAnotherKeyIsTold) {
  UnSoloAccount();
  AvviaServerOrdinario();
  EXPECT_EQ(Esegui({"crea-db", File("altro.db")}).stato, 0);
  const Esecuzione esecuzione = Controllo({"--chiave", File("altro.db.chiave")});
  EXPECT_EQ(esecuzione.stato, 1) << esecuzione;
  EXPECT_THAT(Riga(esecuzione, Di("password")), StartsWith("[ERRORE]"));
}

TEST_F(Controlla, ASenderThatTheServerRefusesIsToldInItsWordsAndNothingIsLeftBehind) {
  UnSoloAccount();
  support::ScriptedServer server({support::Say("220 pronto"),
                                  support::On("EHLO *", "250-salve\r\n250 SIZE 35000000"),
                                  support::On("MAIL FROM:<fatture@arvenia.example>", "553 5.7.1 non tuo")});
  ImpostaServerSemplice(server.Port());
  const Esecuzione esecuzione = Controllo();
  EXPECT_EQ(server.Complaint(), "");
  EXPECT_EQ(esecuzione.stato, 1) << esecuzione;
  EXPECT_THAT(Riga(esecuzione, Di("dimensione massima")), AllOf(StartsWith("[ok]"), HasSubstr("35000000")));
  EXPECT_THAT(Riga(esecuzione, Di("mittente")),
              AllOf(StartsWith("[ERRORE]"), HasSubstr("553 5.7.1 non tuo")));
}

TEST_F(Controlla, ASenderThatTheServerTakesIsTakenBack) {
  UnSoloAccount();
  support::ScriptedServer server(
      {support::Say("220 pronto"), support::On("EHLO *", "250-salve\r\n250 SIZE 1000000"),
       support::On("MAIL FROM:<fatture@arvenia.example>", "250 ok"), support::On("RSET", "250 ok")});
  ImpostaServerSemplice(server.Port());
  const Esecuzione esecuzione = Controllo();
  EXPECT_EQ(server.Complaint(), "");
  EXPECT_THAT(Riga(esecuzione, Di("mittente")), StartsWith("[ok]")) << esecuzione;
  EXPECT_THAT(Riga(esecuzione, Di("TLS")), StartsWith("[avviso]"));
  EXPECT_THAT(Riga(esecuzione, Di("dimensione massima")), StartsWith("[avviso]")) << "a small one";
  EXPECT_THAT(Riga(esecuzione, Di("AUTH")), StartsWith("[saltato]"));
  EXPECT_EQ(esecuzione.stato, 7) << "warnings alone: " << esecuzione;
}

TEST_F(Controlla, WithoutAnyAccountThereIsNothingToSendFrom) {
  UnSoloAccount();
  Sql("DELETE FROM FW99_MAILUSERACCOUNT");
  const Esecuzione esecuzione = Controllo();
  EXPECT_EQ(esecuzione.stato, 1) << esecuzione;
  EXPECT_THAT(Riga(esecuzione, "account"), StartsWith("[ERRORE]"));
  EXPECT_THAT(Riga(esecuzione, "account PEC"), StartsWith("[avviso]"));
}

TEST_F(Controlla, ATableThatIsMissingIsNamed) {
  UnSoloAccount();
  Sql("ALTER TABLE MG17_AGENTI RENAME TO NASCOSTA");
  const Esecuzione esecuzione = Controllo();
  EXPECT_EQ(esecuzione.stato, 1) << esecuzione;
  EXPECT_THAT(Riga(esecuzione, "tabelle"),
              AllOf(StartsWith("[ERRORE]"), HasSubstr("non leggibili: MG17_AGENTI (")));
}

TEST_F(Controlla, SettingsThatCannotServeAreTold) {
  struct Caso {
    const char* istruzione;
    const char* want;
    const char* testo;
  };
  const std::vector<Caso> casi = {
      {"UPDATE FW24_FAXCONFIG SET FW24_INDFAXATTIVO = 3 WHERE FW24_INDCANALE = 1", "[avviso]",
       "disabilitato"},
      {"UPDATE FW24_FAXCONFIG SET FW24_INDFAXATTIVO = 1 WHERE FW24_INDCANALE = 1", "[ERRORE]", "Outlook"},
      {"UPDATE FW24_FAXCONFIG SET FW24_INDFAXATTIVO = 55 WHERE FW24_INDCANALE = 1", "[ERRORE]", "55"},
      {"UPDATE FW24_FAXCONFIG SET FW24_INDFAXATTIVO = NULL WHERE FW24_INDCANALE = 1", "[ERRORE]",
       "FW24_INDFAXATTIVO non è compilato"},
      {"DELETE FROM FW24_FAXCONFIG WHERE FW24_INDCANALE = 1", "[ERRORE]", "manca la riga"},
  };
  UnSoloAccount();
  ImpostaServerSemplice(1);
  for (const auto& caso : casi) {
    Sql(caso.istruzione);
    EXPECT_THAT(Riga(Controllo(), "impostazioni"), AllOf(StartsWith(caso.want), HasSubstr(caso.testo)))
        << caso.istruzione;
  }
}

TEST_F(Controlla, AMapiChannelWantsASendmail) {
  UnSoloAccount();
  ImpostaServerSemplice(1);
  Sql("UPDATE FW24_FAXCONFIG SET FW24_INDFAXATTIVO = 0 WHERE FW24_INDCANALE = 1");
  EXPECT_THAT(Riga(Controllo({"--sendmail", File("manca")}), "sendmail"), StartsWith("[ERRORE]"));
  EXPECT_THAT(Riga(Controllo({"--sendmail", "/bin/true"}), "sendmail"), StartsWith("[ok]"));
}

// The stand-alone send goes through the accounts' servers whatever the channel is.
TEST_F(Controlla, TheServersAreAskedUnderEveryChannel) {
  UnSoloAccount();
  ImpostaServerSemplice(1);
  for (const char* canale : {"0", "1", "2", "3", "55", "76", "77"}) {
    Sql(std::string("UPDATE FW24_FAXCONFIG SET FW24_INDFAXATTIVO = ") + canale + " WHERE FW24_INDCANALE = 1");
    const Esecuzione esecuzione = Controllo({"--sendmail", "/bin/true"});
    EXPECT_THAT(Riga(esecuzione, Di("connessione")), StartsWith("[ERRORE]")) << canale;
  }
}

TEST_F(Controlla, ATemporaryFolderThatIsNotThereIsTold) {
  UnSoloAccount();
  ImpostaServerSemplice(1);
  Sql("UPDATE FW24_FAXCONFIG SET FW24_PATHTMP = '" + File("manca") + "' WHERE FW24_INDCANALE = 1");
  EXPECT_THAT(Riga(Controllo(), "cartella temporanea"),
              AllOf(StartsWith("[ERRORE]"), HasSubstr(File("manca"))));
}

TEST_F(Controlla, AUserOrCompanyThatIsNotThereIsTold) {
  UnSoloAccount();
  ImpostaServerSemplice(1);
  const Esecuzione esecuzione = Controllo({"--utente", "99", "--ditta", "77"});
  EXPECT_EQ(esecuzione.stato, 1) << esecuzione;
  EXPECT_THAT(Riga(esecuzione, "utente"), StartsWith("[ERRORE]"));
  EXPECT_THAT(Riga(esecuzione, "ditta"), StartsWith("[ERRORE]"));
}

TEST_F(Controlla, WithoutADatabaseTheRestIsLookedAtAllTheSame) {
  const Esecuzione esecuzione = Controllo({"--db", File("manca.db")});
  EXPECT_EQ(esecuzione.stato, 1) << esecuzione;
  EXPECT_THAT(Riga(esecuzione, "database"), StartsWith("[ERRORE]"));
  EXPECT_THAT(Riga(esecuzione, "chiave delle password"), StartsWith("[ERRORE]"));
  EXPECT_THAT(Riga(esecuzione, "cartella temporanea"), StartsWith("[ok]"));
}

}  // namespace

}  // namespace orve::app
