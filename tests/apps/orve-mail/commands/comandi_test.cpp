// The commands other than sending, the words of the command line, and the manual page.
#include <sys/stat.h>

#include <filesystem>
#include <set>
#include <string>

#include "apps/orve-mail/prova_intera.h"
#include "patterns.h"
#include "places.h"
#include "sqlite/schema.h"
#include "support/process.h"

namespace orve::app {

namespace {

using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::StartsWith;
using Riga = std::vector<std::string>;

const std::string kManuale = places::Build("apps/orve-mail/orve-mail.1");

class Comandi : public ProvaIntera {
 protected:
  // Two rows in the register: an odd one and a plain one.
  void RiempiRegistro() const {
    Sql("INSERT INTO REGISTRO_INVII (ISTANTE, ESITOINVIO, TIPOCANALE, NOME, OGGETTO, RISULTATO) VALUES"
        " ('2026-11-14 10:22:05.123', 1, 5, 'Caffè, «Perù»', 'a\"b' || char(10) || char(27) || '[31mc', "
        "NULL)");
    Sql("INSERT INTO REGISTRO_INVII (ISTANTE, ESITOINVIO, TIPOCANALE, NOME) VALUES"
        " ('2026-11-14 10:22:06.000', 0, 3, 'Uno')");
  }
};

std::set<std::string> Opzioni(const std::string& testo) {
  return patterns::Found(testo, "--[a-z][a-z-]*");
}

}  // namespace

TEST_F(Comandi, TheDatabaseAndItsKeyBelongToTheirOwnerAlone) {
  for (const std::string& file : {Db(), Db() + ".chiave"}) {
    struct stat stato {};
    ASSERT_EQ(::stat(file.c_str(), &stato), 0);
    EXPECT_EQ(stato.st_mode & 0777U, 0600U) << file;
  }
}

TEST_F(Comandi, ADatabaseThatIsThereIsNeverMadeAgain) {
  const std::string prima = support::ReadFile(Db());
  const std::string chiave = support::ReadFile(Db() + ".chiave");
  const Esecuzione esecuzione = Esegui({"crea-db", "sqlite:" + Db()});
  EXPECT_EQ(esecuzione.stato, 5) << esecuzione;
  EXPECT_THAT(esecuzione.errori, HasSubstr("esiste già"));
  EXPECT_EQ(support::ReadFile(Db()), prima);
  EXPECT_EQ(support::ReadFile(Db() + ".chiave"), chiave);
}

TEST_F(Comandi, AFailedCreationLeavesNothingBehind) {
  EXPECT_EQ(Esegui({"crea-db", File("manca/x.db")}).stato, 5);
  EXPECT_EQ(Esegui({"crea-db", File("manca/x.db"), "--chiave", File("x.chiave")}).stato, 5);
  EXPECT_FALSE(std::filesystem::exists(File("x.chiave")));
  EXPECT_FALSE(std::filesystem::exists(File("manca")));
}

TEST_F(Comandi, TwoDatabasesMayShareAKey) {
  const std::string chiave = support::ReadFile(Db() + ".chiave");
  const Esecuzione esecuzione = Esegui({"crea-db", File("altro.db"), "--chiave", Db() + ".chiave"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(esecuzione.uscita, "Creato il database " + File("altro.db") + " con i dati di prova.\n" +
                                   "Chiave delle password: " + Db() + ".chiave (già presente)\n");
  EXPECT_EQ(support::ReadFile(Db() + ".chiave"), chiave);
}

TEST_F(Comandi, APasswordIsStoredEncipheredAndServesTheNextSend) {
  support::SmtpServerOptions opzioni;
  opzioni.user = "fatture@arvenia.example";
  opzioni.password = "nuova «perché» password";
  auto& server = AvviaServer(1, opzioni);
  EXPECT_EQ(Invia({"--a", "x@example.org", "--corpo", "x"}).stato, 1);
  const Esecuzione impostata = Esegui({"imposta-password", "1"}, opzioni.password + "\n");
  EXPECT_EQ(impostata.stato, 0) << impostata;
  EXPECT_EQ(impostata.uscita, "Password dell'account 1 memorizzata, per localhost, porta " +
                                  std::to_string(server.Port()) + ", TLS.\n");
  EXPECT_THAT(Sql("SELECT FW98_PASSWORD AS C1 FROM FW98_MAILACCOUNT WHERE FW98_IDACCOUNT = 1")[0][0],
              StartsWith("orve2:"));
  EXPECT_EQ(Invia({"--a", "x@example.org", "--corpo", "x"}).stato, 0);
  EXPECT_EQ(server.Count(), 1U);
}

TEST_F(Comandi, APasswordNeedsATextAndAnAccount) {
  const Esecuzione vuota = Esegui({"imposta-password", "1"}, "\n");
  EXPECT_EQ(vuota.stato, 2) << vuota;
  EXPECT_THAT(vuota.errori, HasSubstr("manca la password sullo standard input"));
  const Esecuzione nessuno = Esegui({"imposta-password", "99"}, "x\n");
  EXPECT_EQ(nessuno.stato, 5) << nessuno;
  EXPECT_EQ(nessuno.errori, "orve-mail: Nessun account con il numero 99\n");
}

TEST_F(Comandi, AServerThatIsNotThereCannotBeSet) {
  const Esecuzione esecuzione = Esegui({"imposta-server", "99", "--host", "x", "--porta", "25"});
  EXPECT_EQ(esecuzione.stato, 5) << esecuzione;
  EXPECT_EQ(esecuzione.errori, "orve-mail: Nessun server di posta con il codice 99\n");
}

TEST_F(Comandi, TheRegisterIsShownInAlignedColumns) {
  RiempiRegistro();
  const Esecuzione esecuzione = Esegui({"registro"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(esecuzione.uscita,
            "ID  ISTANTE              ESITO        CANALE  DITTA  UTENTE  MITTENTE  NOME           AZIENDA  "
            "INDIRIZZO  OGGETTO          RISULTATO  ALLEGATO\n"
            "1   2026-11-14 10:22:05  non inviato  pec                              Caffè, «Perù»           "
            "           a\"b \\u001B[31mc\n"
            "2   2026-11-14 10:22:06  inviato      mail                             Uno\n");
}

TEST_F(Comandi, LongTextsAreCutInColumnsAndOnlyThere) {
  Sql("INSERT INTO REGISTRO_INVII (NOME) VALUES ('" + std::string(100, 'x') + "')");
  EXPECT_THAT(Esegui({"registro"}).uscita, HasSubstr(" " + std::string(31, 'x') + "…"));
  EXPECT_THAT(Esegui({"registro", "--json"}).uscita, HasSubstr(std::string(100, 'x')));
  EXPECT_THAT(Esegui({"registro", "--csv"}).uscita, HasSubstr(std::string(100, 'x')));
}

TEST_F(Comandi, OtherProgramsReadTheRegisterAsJsonAndCsv) {
  RiempiRegistro();
  EXPECT_EQ(Esegui({"registro", "--json"}).uscita,
            "[\n"
            R"(  {"ID":1,"ISTANTE":"2026-11-14 10:22:05","ESITO":"non inviato","CANALE":"pec","DITTA":null,)"
            R"("UTENTE":null,"MITTENTE":null,"NOME":"Caffè, «Perù»","AZIENDA":null,"INDIRIZZO":null,)"
            R"("OGGETTO":"a\"b\n\u001b[31mc","RISULTATO":null,"ALLEGATO":null},)"
            "\n"
            R"(  {"ID":2,"ISTANTE":"2026-11-14 10:22:06","ESITO":"inviato","CANALE":"mail","DITTA":null,)"
            R"("UTENTE":null,"MITTENTE":null,"NOME":"Uno","AZIENDA":null,"INDIRIZZO":null,)"
            R"("OGGETTO":null,"RISULTATO":null,"ALLEGATO":null})"
            "\n]\n");
  EXPECT_EQ(
      Esegui({"registro", "--csv", "--ultimi", "1"}).uscita,
      "ID,ISTANTE,ESITO,CANALE,DITTA,UTENTE,MITTENTE,NOME,AZIENDA,INDIRIZZO,OGGETTO,RISULTATO,ALLEGATO\r\n"
      "2,2026-11-14 10:22:06,inviato,mail,,,,Uno,,,,,\r\n");
  EXPECT_THAT(Esegui({"registro", "--csv"}).uscita, HasSubstr(R"("Caffè, «Perù»",,,"a""b)"
                                                              "\n\\u001B[31mc\",,\r\n"));
}

TEST_F(Comandi, WhatStrangersWroteNeitherRunsNorHidesInWhatIsListed) {
  Sql("INSERT INTO REGISTRO_INVII (NOME, OGGETTO, AZIENDA) VALUES ('=cmd|'' /C calc''!A0', char(0x202E) || "
      "'fdp.exe' || "
      "char(0x9B), '-5')");
  Sql("INSERT INTO EVENTI_GESTIONALI (DITTA, CODICE, IDUTENTE, DATI, FLAG) VALUES (1, 89, 1, 'a;=1' || "
      "char(0x9B), 1)");
  EXPECT_THAT(Esegui({"registro"}).uscita, HasSubstr("\\u202Efdp.exe\\u009B"));
  EXPECT_THAT(Esegui({"registro", "--json"}).uscita, HasSubstr(R"("OGGETTO":"\u202Efdp.exe\u009B")"));
  EXPECT_THAT(Esegui({"registro", "--csv"}).uscita,
              HasSubstr(R"(,'=cmd|' /C calc'!A0,-5,,\u202Efdp.exe\u009B,)"));
  EXPECT_THAT(Esegui({"eventi", "--csv"}).uscita, HasSubstr(R"(,"a;'=1\u009B")"));
  EXPECT_THAT(Esegui({"eventi", "--json"}).uscita, HasSubstr(R"("a;=1\u009B")"));
}

TEST_F(Comandi, BytesThatAreNoTextAreNotPassedOn) {
  Sql("INSERT INTO REGISTRO_INVII (OGGETTO) VALUES (CAST(x'9b33316d41' AS TEXT))");
  EXPECT_THAT(Esegui({"registro", "--json"}).uscita, HasSubstr("\"OGGETTO\":\"\uFFFD31mA\""));
  EXPECT_THAT(Esegui({"registro", "--csv"}).uscita, HasSubstr(",\uFFFD31mA,"));
}

TEST_F(Comandi, AnEmptyListIsStillAList) {
  EXPECT_EQ(Esegui({"eventi"}).uscita, "ID  ISTANTE  DITTA  CODICE  UTENTE  DATI\n");
  EXPECT_EQ(Esegui({"eventi", "--json"}).uscita, "[]\n");
  EXPECT_EQ(Esegui({"eventi", "--csv"}).uscita, "ID,ISTANTE,DITTA,CODICE,UTENTE,DATI\r\n");
}

TEST_F(Comandi, AResultThatCannotBeWrittenIsNoSuccess) {
  const support::ProcessResult risultato = support::RunProgram(
      {"/bin/sh", "-c", R"("$0" registro --db "$1" >/dev/full)", places::Program(), Db()});
  EXPECT_EQ(risultato.status, 7);
  EXPECT_EQ(risultato.output, "orve-mail: errore nella scrittura del risultato\n");
}

TEST_F(Comandi, WhatTheCommandLineLacksOrHasTooMuchIsToldInItalian) {
  struct Caso {
    std::vector<std::string> argomenti;
    const char* errore;
  };
  const std::vector<Caso> casi = {
      {{}, "orve-mail: manca il comando\n"},
      {{"spedisci"}, "orve-mail: comando sconosciuto: «spedisci»\n"},
      {{"invia"}, "orve-mail invia: manca il destinatario\n"},
      {{"invia", "--xyz"}, "orve-mail invia: argomento non previsto: «--xyz»\n"},
      {{"invia", "--a", "x@example.org", "resto"}, "orve-mail invia: argomento non previsto: «resto»\n"},
      {{"invia", "--oggetto"}, "orve-mail invia: --oggetto: manca il valore\n"},
      {{"invia", "--a"}, "orve-mail invia: --a: manca il valore\n"},
      {{"invia", "--oggetto", "a", "--oggetto", "b"},
       "orve-mail invia: --oggetto: va indicata una volta sola\n"},
      {{"invia", "--cliente", "1", "--agente", "2"},
       "orve-mail invia: indicare un solo destinatario per codice\n"},
      {{"invia", "--cliente", "1", "--a", "x@example.org"},
       "orve-mail invia: indicare un codice oppure --a, --cc, --ccn, non entrambi\n"},
      {{"invia", "--a", "Rossi <>"}, "orve-mail invia: Destinatario «Rossi <>»: manca l'indirizzo\n"},
      {{"invia", "--a", "x@example.org", "--modo", "veloce"},
       "orve-mail invia: --modo: «veloce» non è manuale, automatico, semi o lista\n"},
      {{"invia", "--a", "x@example.org", "--ditta", "1 OR 1=1"},
       "orve-mail invia: --ditta: «1 OR 1=1» non è un numero\n"},
      {{"invia", "--a", "x@example.org", "--utente", "U01"},
       "orve-mail invia: --utente: «U01» è un codice; indicare anche --gruppo\n"},
      {{"invia", "--a", "x@example.org", "--data", "domani"},
       "orve-mail invia: --data: «domani» non è una data (gg/mm/aaaa oppure aaaa-mm-gg)\n"},
      {{"invia", "--a", "x@example.org", "--attesa-risposta", "0"},
       "orve-mail invia: --attesa-risposta: «0» non è un numero di secondi\n"},
      {{"invia", "--a", "x@example.org", "--db", "odbc:DSN=azienda"},
       "orve-mail invia: --chiave: con un database odbc: indicare il file della chiave\n"},
      {{"eventi", "--db", "odbc:DSN=azienda"},
       "orve-mail eventi: --db: questo comando lavora solo sul database incorporato, sqlite:FILE\n"},
      {{"registro", "--db", "odbc:DSN=azienda"},
       "orve-mail registro: --registro: con un database odbc: indicare il file del registro\n"},
      {{"registro", "--attesa-istruzione", "0"},
       "orve-mail registro: --attesa-istruzione: «0» non è un numero da 1 a 86400\n"},
      {{"crea-db"}, "orve-mail crea-db: manca FILE\n"},
      {{"imposta-server", "1", "--host", "x"}, "orve-mail imposta-server: manca --porta\n"},
      {{"imposta-server", "1", "--host", "x", "--porta", "65536"},
       "orve-mail imposta-server: --porta: «65536» non è un numero da 1 a 65535\n"},
      {{"imposta-server", "uno", "--host", "x", "--porta", "25"},
       "orve-mail imposta-server: SERVER: «uno» non è un numero da 1 a 2147483647\n"},
      {{"registro", "--ultimi", "-3"},
       "orve-mail registro: --ultimi: «-3» non è un numero da 1 a 999999999\n"},
      {{"registro", "--json", "--csv"}, "orve-mail registro: indicare --json oppure --csv, non entrambi\n"},
  };
  for (const Caso& caso : casi) {
    const Esecuzione esecuzione = Esegui(caso.argomenti);
    EXPECT_EQ(esecuzione.stato, 2) << caso.errore << esecuzione;
    EXPECT_THAT(esecuzione.errori, StartsWith(caso.errore));
    EXPECT_THAT(esecuzione.errori, HasSubstr("\nVedere «orve-mail"));
    EXPECT_EQ(esecuzione.uscita, "");
  }
}

TEST_F(Comandi, WithoutADatabaseTheProgramAsksForOne) {
  const support::ProcessResult risultato =
      support::RunProgram({"/usr/bin/env", "-u", "ORVE_MAIL_DB", places::Program(), "registro"});
  EXPECT_EQ(risultato.status, 2);
  EXPECT_THAT(risultato.output, StartsWith("orve-mail registro: --db: indicare il file del database\n"));
}

TEST_F(Comandi, HelpAndVersionGoToTheOutputAndSucceed) {
  for (const std::vector<std::string>& argomenti :
       {Riga{"--help"}, Riga{"invia", "--help"}, Riga{"registro", "-h"}, Riga{"crea-db", "--help"}}) {
    const Esecuzione esecuzione = Esegui(argomenti);
    EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
    EXPECT_THAT(esecuzione.uscita, HasSubstr("Uso: "));
    EXPECT_THAT(esecuzione.uscita, HasSubstr("Stato di uscita:"));
    EXPECT_EQ(esecuzione.errori, "");
  }
  EXPECT_THAT(Esegui({"--version"}).uscita, MatchesRegex("orve-mail [0-9.]+\n"));
}

TEST_F(Comandi, TheManualPageKnowsEveryOptionOfTheProgramAndNoOther) {
  std::string aiuti;
  for (const char* comando : {"crea-db", "invia", "invia-smtp", "lista", "controlla", "controlla-traccia",
                              "registro", "eventi", "imposta-server", "imposta-password", "parametri"}) {
    aiuti += Esegui({comando, "--help"}).uscita;
  }
  aiuti += Esegui({"--help"}).uscita;
  const std::string manuale = patterns::Replaced(support::ReadFile(kManuale), R"(\\-)", "-");
  EXPECT_EQ(Opzioni(manuale), Opzioni(aiuti));
}

TEST_F(Comandi, TheManualPageIsOfTheProgramsVersion) {
  std::string versione = Esegui({"--version"}).uscita;
  versione.pop_back();
  EXPECT_THAT(support::ReadFile(kManuale),
              HasSubstr("\n.TH ORVE-MAIL 1 \"novembre 2026\" \"" + versione + "\" "));
}

TEST_F(Comandi, TheManualPageIsSetWithoutAWarning) {
  const support::ProcessResult risultato =
      support::RunProgram({"groff", "-k", "-man", "-Tutf8", "-ww", "-z", kManuale});
  EXPECT_EQ(risultato.status, 0);
  EXPECT_EQ(risultato.output, "");
}

}  // namespace orve::app
