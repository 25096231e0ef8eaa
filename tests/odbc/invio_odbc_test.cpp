// Whole sends on the application's database over ODBC: what arrives, where the register goes, what the
// server's login needs for it, and what the program says when the database cannot be reached.

#include <filesystem>

#include "adapters/odbc/motore.h"
#include "odbc/prova_odbc.h"
#include "sqlite/sqlite_connection.h"
#include "support/loopback.h"
#include "support/silent_relay.h"

namespace orve::app {

namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

class InvioOdbc : public ProvaOdbc {};

TEST_F(InvioOdbc, AnInvoiceReachesACustomerFoundByCodeOnTheServer) {
  auto& server = AvviaServerDiPosta();
  const std::string fattura = cartella.Write("fattura.pdf", "%PDF-1.4 fattura");
  const Esecuzione esecuzione = EseguiSuOdbc({"invia", "--ca", Ca(), "--cliente", "1001", "--oggetto",
                                              "Fattura n. 12 dell'anno", "--allegato", fattura});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(esecuzione.errori, "");
  const auto messaggio = server.OnlyMessage();
  EXPECT_THAT(messaggio.recipients, ElementsAre("acquisti@bellariva.example"));
  EXPECT_EQ(messaggio.sender, "fatture@arvenia.example");
  EXPECT_EQ(messaggio.user, "fatture@arvenia.example");
  EXPECT_TRUE(messaggio.encrypted);
  EXPECT_EQ(messaggio.subject, "Fattura n. 12 dell'anno");
  EXPECT_THAT(messaggio.attachments, SizeIs(1));
  EXPECT_THAT(Colonna("SELECT DATI FROM EVENTI_GESTIONALI", "DATI"),
              ElementsAre(AllOf(HasSubstr("<USR_COD=U01/><GRP_COD=AMM/>"),
                                HasSubstr("<MAIL_OBJ=Fattura n. 12 dell'anno/>"))));
}

TEST_F(InvioOdbc, TheRegisterHasAFileOfItsOwnAndTheServerNoTableForIt) {
  AvviaServerDiPosta();
  for (const char* cliente : {"1001", "1002"}) {
    EXPECT_EQ(EseguiSuOdbc({"invia", "--ca", Ca(), "--cliente", cliente, "--oggetto", "x"}).stato, 0);
  }
  EXPECT_THAT(Registro(), IsEmpty()) << "the embedded database has nothing to do with it";
  const std::string file = Chiave() + ".registro";
  EXPECT_EQ(std::filesystem::status(file).permissions(),
            std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
  const Esecuzione registro = Esegui({"registro", "--db", Odbc(), "--registro", file, "--csv"});
  EXPECT_EQ(registro.stato, 0) << registro;
  EXPECT_THAT(registro.uscita,
              AllOf(HasSubstr("acquisti@bellariva.example"), HasSubstr("ordini@cittadoro.example")));
  EXPECT_EQ(Esegui({"registro", "--db", Odbc(), "--registro", File("manca.registro")}).stato, 5);
  EXPECT_THAT(
      Esegui({"registro", "--db", Odbc()}).errori,
      StartsWith("orve-mail registro: --registro: con un database odbc: indicare il file del registro"));
}

TEST_F(InvioOdbc, ARegisterThatCannotBeWrittenStopsTheSendBeforeItStarts) {
  auto& server = AvviaServerDiPosta();
  const Esecuzione esecuzione = EseguiSuOdbc(
      {"invia", "--ca", Ca(), "--a", "x@example.org", "--corpo", "x", "--registro", File("manca/registro")});
  EXPECT_EQ(esecuzione.stato, 5) << esecuzione;
  EXPECT_THAT(esecuzione.errori, StartsWith("orve-mail: Registro non utilizzabile: "));
  EXPECT_EQ(server.Count(), 0U);
}

TEST_F(InvioOdbc, AMessageByAddressLeavesFromTheDefaultAccountOrTheOneNamed) {
  auto& server = AvviaServerDiPosta();
  EXPECT_EQ(EseguiSuOdbc({"invia", "--ca", Ca(), "--a", "Uno <uno@example.org>", "--corpo", "x"}).stato, 0);
  EXPECT_EQ(server.OnlyMessage().sender, "fatture@arvenia.example");
  const Esecuzione nessuno =
      EseguiSuOdbc({"invia", "--ca", Ca(), "--a", "uno@example.org", "--mittente", "99", "--corpo", "x"});
  EXPECT_EQ(nessuno.stato, 5) << nessuno;
  EXPECT_THAT(nessuno.errori, HasSubstr("Nessun account con il numero 99"));
  EXPECT_EQ(EseguiSuOdbc({"invia", "--a", "uno@example.org", "--mittente", "4", "--corpo", "x"}).stato, 2)
      << "a certified account for ordinary mail";
}

TEST_F(InvioOdbc, AUserIsFoundByCodesWhateverStandsInThem) {
  AvviaServerDiPosta();
  const std::vector<std::string> invio = {"invia", "--ca", Ca(), "--a", "x@example.org", "--corpo", "x"};
  const auto daUtente = [&](const char* utente, const char* gruppo) {
    auto argomenti = invio;
    argomenti.insert(argomenti.end(), {"--utente", utente, "--gruppo", gruppo});
    return EseguiSuOdbc(argomenti);
  };
  EXPECT_EQ(daUtente("u01", "amm").stato, 0);
  for (const char* utente : {"U99", "U01\\"}) {
    const Esecuzione esecuzione = daUtente(utente, "AMM");
    EXPECT_EQ(esecuzione.stato, 5) << utente << esecuzione;
    EXPECT_THAT(esecuzione.errori, HasSubstr("Utente sconosciuto")) << utente;
  }
  for (const char* utente : {"U'01", "U01' OR '1'='1"}) {
    const Esecuzione esecuzione = daUtente(utente, "AMM");
    EXPECT_EQ(esecuzione.stato, 2) << utente << esecuzione;
    EXPECT_THAT(esecuzione.errori, HasSubstr("contiene un apostrofo")) << utente;
  }
}

TEST_F(InvioOdbc, AListIsSentRowByRow) {
  auto& server = AvviaServerDiPosta();
  const std::string elenco =
      cartella.Write("elenco.csv", "tipo;codice\ncliente;1001\ncliente;1002\nagente;A01\n");
  const Esecuzione esecuzione =
      EseguiSuOdbc({"lista", elenco, "--ca", Ca(), "--oggetto", "Listino", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_THAT(server.Recipients(), ElementsAre("acquisti@bellariva.example", "ordini@cittadoro.example",
                                               "nordest@agenzie.example"));
}

TEST_F(InvioOdbc, AStandAloneSendLeavesTheSameWay) {
  auto& server = AvviaServerDiPosta();
  const Esecuzione esecuzione =
      EseguiSuOdbc({"invia-smtp", "--ca", Ca(), "--a", "x@example.org", "--oggetto", "x", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(server.Count(), 1U);
}

TEST_F(InvioOdbc, ATableThatCannotBeReadIsToldSoAndNothingLeaves) {
  auto& server = AvviaServerDiPosta();
  SulServer("ALTER TABLE FW24_FAXCONFIG RENAME TO NASCOSTA");
  const Esecuzione esecuzione = EseguiSuOdbc({"invia", "--ca", Ca(), "--a", "x@example.org", "--corpo", "x"});
  SulServer("ALTER TABLE NASCOSTA RENAME TO FW24_FAXCONFIG");
  EXPECT_EQ(esecuzione.stato, 5) << esecuzione;
  EXPECT_THAT(esecuzione.errori, ::testing::ContainsRegex("(FW24_FAXCONFIG|fw24_faxconfig)"));
  EXPECT_EQ(server.Count(), 0U);
}

TEST_F(InvioOdbc, TheDatabaseMayStandInTheEnvironmentWhereNobodyReadsItsPassword) {
  auto& server = AvviaServerDiPosta();
  const Esecuzione esecuzione = EseguiConAmbiente(
      {"ORVE_MAIL_DB=" + Odbc(), "ORVE_MAIL_CHIAVE=" + Chiave()},
      {"--traccia", TracciaIstanze(), "invia", "--ca", Ca(), "--cliente", "1001", "--oggetto", "x"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(server.Count(), 1U);
}

TEST_F(InvioOdbc, ADatabaseThatCannotBeReachedIsToldWithoutItsPassword) {
  const support::LoopbackSocket muto;
  muto.Listen(4);
  const support::SilentRelay filo(adapters::odbc::Motore().Port(), "extra_float_digits");
  struct Caso {
    const char* label;
    std::string stringa;
  };
  const std::string muta = std::to_string(muto.Port());
  const std::vector<Caso> casi = {
      {"unknown driver", "Driver=Inesistente;Server=x;UID=posta;PWD=pa-ro-la"},
      {"unknown source", "DSN=inesistente;UID=posta;PWD=pa-ro-la"},
      {"nobody there",
       "Driver={PostgreSQL Unicode};Server=127.0.0.1;Port=1;Database=x;UID=posta;PWD=pa-ro-la"},
      {"nobody there, FreeTDS", "Driver=FreeTDS;Server=127.0.0.1;Port=1;Database=x;UID=posta;PWD=pa-ro-la"},
      {"a server that says nothing, FreeTDS",
       "Driver=FreeTDS;TDS_Version=7.4;Server=127.0.0.1;Port=" + muta + ";Database=x;UID=posta;PWD=pa-ro-la"},
      {"a server that says nothing",
       "Driver={PostgreSQL Unicode};Server=127.0.0.1;Port=" + muta + ";Database=x;UID=posta;PWD=pa-ro-la"},
      {"a server that falls silent in the middle of the login",
       support::H2Server::ConnectionStringBy(filo.Port(), kDatabase, "posta", "pa-ro-la")},
      {"a wrong password", adapters::odbc::StringaPosta(kDatabase, "pa-ro-la")},
      {"a password between braces", adapters::odbc::StringaPosta(kDatabase, "{pa-ro-la;}}x}")},
      {"no connection string", "pa-ro-la"},
      {"nothing", ""},
  };
  for (const auto& caso : casi) {
    const Esecuzione esecuzione = EseguiSuOdbc(
        {"invia", "--a", "x@example.org", "--corpo", "x", "--attesa-accesso", "2"}, "odbc:" + caso.stringa);
    EXPECT_EQ(esecuzione.stato, 5) << caso.label << esecuzione;
    EXPECT_THAT(esecuzione.errori, StartsWith("orve-mail: Database non utilizzabile: ")) << caso.label;
    EXPECT_THAT(esecuzione.uscita + esecuzione.errori, Not(HasSubstr("pa-ro-la"))) << caso.label;
  }
}

TEST_F(InvioOdbc, TheCheckLooksTheServersDatabaseOverAndLeavesItAsItWas) {
  auto& server = AvviaServerDiPosta();
  const Esecuzione esecuzione = EseguiSuOdbc({"controlla", "--ca", Ca()});
  for (const char* riga :
       {"[ok]      database: accesso riuscito, per ODBC\n",
        "[ok]      registro degli invii: in un file suo\n", "[ok]      tabelle: 17 leggibili\n",
        "[ok]      funzione FNCG_GETCODANAG: eseguibile\n",
        "[ok]      procedura SPFW_GetUserIDFromConnection: utente 1\n",
        "[ok]      procedura SPFW_AttivaEventoGestionale: presente\n",
        "[ok]      account 1 (fatture@arvenia.example), mittente: il server lo accetta\n"}) {
    EXPECT_THAT(esecuzione.uscita, HasSubstr(riga)) << esecuzione;
  }
  EXPECT_THAT(esecuzione.uscita + esecuzione.errori, Not(HasSubstr(adapters::odbc::kPasswordPosta)));
  EXPECT_THAT(Colonna("SELECT DATI FROM EVENTI_GESTIONALI", "DATI"), IsEmpty());
  EXPECT_EQ(server.Count(), 0U);
}

TEST_F(InvioOdbc, WhatToDoIsSomethingThatCanBeDoneThere) {
  AvviaServerDiPosta();
  SulServer("UPDATE FW98_MAILACCOUNT SET FW98_PASSWORD = 'orve2:AAAA' WHERE FW98_IDACCOUNT = 1");
  const std::vector<std::string> invio = {"invia", "--ca", Ca(), "--a", "x@example.org", "--corpo", "x"};
  const std::string rimedio = "far scrivere di nuovo in FW98_PASSWORD il testo che imposta-password dà";
  EXPECT_THAT(EseguiSuOdbc(invio).errori, HasSubstr(rimedio));
  EXPECT_THAT(EseguiSuOdbc({"controlla", "--ca", Ca()}).uscita, HasSubstr(rimedio));
  SulServer("UPDATE FW23_FAXER SET FW23_SSL = 0");
  for (const Esecuzione& esecuzione : {EseguiSuOdbc(invio), EseguiSuOdbc({"controlla", "--ca", Ca()})}) {
    EXPECT_THAT(
        esecuzione.uscita + esecuzione.errori,
        AllOf(HasSubstr("far attivare TLS per il server nel database"), Not(HasSubstr("imposta-server"))));
  }
}

TEST_F(InvioOdbc, AConnectionStringInTheWrongPlaceIsNotRepeated) {
  const Esecuzione esecuzione = Esegui({"registro", "odbc:Driver=FreeTDS;UID=posta;PWD=pa-ro-la"});
  EXPECT_EQ(esecuzione.stato, 2);
  EXPECT_THAT(esecuzione.errori, HasSubstr("argomento non previsto"));
  EXPECT_THAT(esecuzione.errori, Not(HasSubstr("pa-ro-la")));
}

TEST_F(InvioOdbc, AConnectionStringWithoutItsPrefixIsNoFileWhoseNameIsRepeated) {
  for (const char* db :
       {"Driver=FreeTDS;UID=posta;PWD=pa-ro-la", "ODBC:Driver=FreeTDS;UID=posta;PWD=pa-ro-la",
        "sqlite:DSN=gestionale;Password={pa-ro-la}", "Server=x;pwd=pa-ro-la"}) {
    for (const char* comando : {"invia", "controlla", "registro"}) {
      std::vector<std::string> argomenti = {comando, "--db", db};
      if (comando == std::string("invia")) argomenti.insert(argomenti.end(), {"--a", "x@example.org"});
      const Esecuzione esecuzione = Esegui(argomenti);
      EXPECT_EQ(esecuzione.stato, 2) << comando << " " << db << esecuzione;
      EXPECT_THAT(esecuzione.errori, HasSubstr("--db: una stringa di connessione va preceduta da odbc:"));
      EXPECT_THAT(esecuzione.uscita + esecuzione.errori, Not(HasSubstr("pa-ro-la"))) << comando;
    }
    const Esecuzione fuoriPosto = Esegui({"registro", db});
    EXPECT_EQ(fuoriPosto.stato, 2);
    EXPECT_THAT(fuoriPosto.errori, Not(HasSubstr("pa-ro-la")));
  }
}

TEST_F(InvioOdbc, ADatabaseOnAServerWantsItsKeyNamed) {
  const Esecuzione esecuzione = Esegui({"invia", "--db", Odbc(), "--a", "x@example.org", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 2) << esecuzione;
  EXPECT_THAT(esecuzione.errori, HasSubstr("--chiave: con un database odbc: indicare il file della chiave"));
}

TEST_F(InvioOdbc, WhatOnlyTheEmbeddedDatabaseCanDoIsRefused) {
  const std::vector<std::vector<std::string>> comandi = {
      {"crea-db", Odbc()},
      {"eventi", "--db", Odbc()},
      {"imposta-server", "1", "--db", Odbc(), "--host", "x", "--porta", "25"},
      {"imposta-password", "1", "--db", Odbc()},
  };
  for (const auto& comando : comandi) {
    const Esecuzione esecuzione = Esegui(comando);
    EXPECT_EQ(esecuzione.stato, 2) << comando[0] << esecuzione;
    EXPECT_THAT(esecuzione.errori,
                StartsWith("orve-mail " + comando[0] +
                           ": --db: questo comando lavora solo sul database incorporato, sqlite:FILE\n"));
    EXPECT_THAT(esecuzione.errori, Not(HasSubstr(adapters::odbc::kPasswordPosta)));
  }
}

}  // namespace

}  // namespace orve::app
