// Sends that fail: server, account, database, key, temporary directory. Each ends with its own status, says
// why, and records nothing that did not happen.
#include <sys/stat.h>
#include <unistd.h>

#include <ctime>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>

#include "apps/orve-mail/prova_intera.h"
#include "sqlite/schema.h"
#include "support/loopback.h"
#include "support/scripted_server.h"

namespace orve::app {

namespace {

using ::testing::AnyOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using Riga = std::vector<std::string>;

class Guasti : public ProvaIntera {
 protected:
  // A send that the server's side fails: status 1, the register's text, and a line that says the same.
  void FallisceCon(const std::string& testo, const std::vector<std::string>& opzioni = {}) {
    std::vector<std::string> argomenti = {"--a", "x@example.org", "--corpo", "x"};
    argomenti.insert(argomenti.end(), opzioni.begin(), opzioni.end());
    const Esecuzione esecuzione = Invia(argomenti);
    EXPECT_EQ(esecuzione.stato, 1) << esecuzione;
    EXPECT_EQ(esecuzione.uscita, "");
    EXPECT_THAT(esecuzione.errori,
                StartsWith("Messaggio non inviato: " + testo + "\n  stato: 2\n  server: "));
    EXPECT_THAT(Registro(), ElementsAre(Riga{"1", "", "<x@example.org>", testo}));
    EXPECT_THAT(CodiciEventi(), ElementsAre("89"));
  }

  static std::string NomeDelLog(std::time_t istante = std::time(nullptr)) {
    std::tm locale{};
    ::localtime_r(&istante, &locale);
    char nome[32];
    std::strftime(nome, sizeof nome, "ML%d%m%y.log", &locale);
    return nome;
  }
};

}  // namespace

TEST_F(Guasti, ARefusedRecipientFailsTheSendForAllOfThem) {
  auto& server = AvviaServerOrdinario({"no@example.org"});
  const Esecuzione esecuzione =
      Invia({"--a", "Sì <si@example.org>", "--a", "No <no@example.org>", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 1) << esecuzione;
  EXPECT_EQ(esecuzione.errori,
            "Messaggio non inviato: Server si rifiuta di inoltrare mail ad uno o più indirizzi\n"
            "  stato: 2\n"
            "  server: RCPT TO:<no@example.org>: 550 5.1.1 Casella inesistente\n");
  EXPECT_EQ(server.Count(), 0U);
  const std::string testo = "Server si rifiuta di inoltrare mail ad uno o più indirizzi";
  EXPECT_THAT(Registro(), ElementsAre(Riga{"1", "Sì", "Sì<si@example.org>", testo},
                                      Riga{"1", "No", "No<no@example.org>", testo}));
  EXPECT_THAT(CodiciEventi(), ElementsAre("89", "89"));
}

TEST_F(Guasti, NobodyAtThePort) {
  const support::LoopbackSocket chiuso;  // bound, but not listening
  ImpostaServerSemplice(chiuso.Port());
  FallisceCon("Errore di connessione con il server");
}

TEST_F(Guasti, AServerThatNeverSpeaksIsLeftWhenTheTimeIsUp) {
  const support::LoopbackSocket muto;
  muto.Listen(4);
  ImpostaServerSemplice(muto.Port());
  FallisceCon("Errore di connessione con il server", {"--attesa-connessione", "1"});
}

TEST_F(Guasti, AServerWhoseNameNobodyKnows) {
  EXPECT_EQ(Esegui({"imposta-server", "1", "--host", "posta.invalid", "--porta", "25"}).stato, 0);
  FallisceCon("Errore di ricerca DNS", {"--attesa-connessione", "5"});
}

TEST_F(Guasti, AWrongPassword) {
  support::SmtpServerOptions opzioni;
  opzioni.user = "fatture@arvenia.example";
  opzioni.password = "un'altra";
  AvviaServer(1, opzioni);
  FallisceCon("Errore di autenticazione utente");
}

TEST_F(Guasti, ACertificateThatNobodyVouchesFor) {
  AvviaServerOrdinario();
  const Esecuzione esecuzione = Esegui({"invia", "--a", "x@example.org", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 1) << esecuzione;
  EXPECT_THAT(esecuzione.errori, StartsWith("Messaggio non inviato: Errore di connessione con il server\n"));
  EXPECT_THAT(CodiciEventi(), ElementsAre("89"));
}

TEST_F(Guasti, TheDialogueThatBreaksAtEachStageGivesItsText) {
  using support::Body;
  using support::On;
  using support::Say;
  struct Caso {
    const char* testo;
    std::vector<support::Step> script;
  };
  const support::Step saluto = Say("220 prova");
  const support::Step ehlo = On("EHLO *", "250 prova");
  const support::Step mail = On("MAIL *", "250 ok");
  const support::Step rcpt = On("RCPT *", "250 ok");
  const std::vector<Caso> casi = {
      {"Errore di connessione con il server", {Say("554 chiuso")}},
      {"Errore di comunicazione HELO/EHLO", {saluto, On("EHLO *", "500 no"), On("HELO *", "500 no")}},
      {"Errore indirizzo mittente non valido", {saluto, ehlo, On("MAIL *", "550 no")}},
      {"Server si rifiuta di inoltrare mail ad uno o più indirizzi",
       {saluto, ehlo, mail, On("RCPT *", "550 no"), On("RSET", "250 ok")}},
      {"Errore nell'invio dati del destinatario",
       {saluto, ehlo, mail, rcpt, On("DATA", "354 va"), Body("554 virus")}},
      {"Errore di ripristino SMTP", {saluto, ehlo, mail, On("RCPT *", "550 no"), On("RSET", "500 no")}},
  };
  for (const Caso& caso : casi) {
    SCOPED_TRACE(caso.testo);
    Sql("DELETE FROM REGISTRO_INVII");
    Sql("DELETE FROM EVENTI_GESTIONALI");
    support::ScriptedServer server(caso.script);
    ImpostaServerSemplice(server.Port());
    FallisceCon(caso.testo);
    EXPECT_EQ(server.Complaint(), "");
  }
}

TEST_F(Guasti, WithoutAnAccountNothingLeavesAndThePersonLearnsWhy) {
  const Esecuzione esecuzione =
      Invia({"--a", "x@example.org", "--corpo", "x", "--utente", "5", "--ditta", "99"});
  EXPECT_EQ(esecuzione.stato, 4) << esecuzione;
  EXPECT_EQ(esecuzione.errori, "Messaggio non inviato: nessun account di posta per l'utente e la ditta\n");
  EXPECT_THAT(Registro(), IsEmpty());
}

TEST_F(Guasti, WithoutADisplayTheManualModeTriesNothing) {
  auto& server = AvviaServerOrdinario();
  const std::string spiegazione =
      "orve-mail: L'invio manuale vuole la finestra di invio. Impossibile aprire una finestra: non c'è uno "
      "schermo (DISPLAY e WAYLAND_DISPLAY mancano o non rispondono).\n";
  const Esecuzione manuale = Invia({"--cliente", "1001", "--modo", "manuale"});
  EXPECT_EQ(manuale.stato, 5) << manuale;
  EXPECT_EQ(manuale.errori, spiegazione);
  EXPECT_EQ(manuale.uscita, "");
  Sql("UPDATE FW24_FAXCONFIG SET FW24_INDMODALITA = 0 WHERE FW24_INDCANALE = 1");
  const Esecuzione dalleImpostazioni = Invia({"--cliente", "1001"});
  EXPECT_EQ(dalleImpostazioni.stato, 5) << dalleImpostazioni;
  EXPECT_EQ(dalleImpostazioni.errori, spiegazione);
  EXPECT_EQ(server.Count(), 0U);
  EXPECT_THAT(Registro(), IsEmpty());
  EXPECT_THAT(CodiciEventi(), IsEmpty());
  // Nobody is asked about recipients by address.
  EXPECT_EQ(Invia({"--a", "x@example.org", "--corpo", "x"}).stato, 0);
}

TEST_F(Guasti, ADisplayThatDoesNotAnswerIsNone) {
  const Esecuzione manuale =
      EseguiConAmbiente({"DISPLAY=:64999"}, {"invia", "--cliente", "1001", "--modo", "manuale"});
  EXPECT_EQ(manuale.stato, 5) << manuale;
  EXPECT_THAT(manuale.errori, EndsWith("non c'è uno schermo (DISPLAY e WAYLAND_DISPLAY mancano o non "
                                       "rispondono).\n"));
}

TEST_F(Guasti, WithoutADisplayTheParametersAreNotAsked) {
  const Esecuzione parametri = Esegui({"parametri"});
  EXPECT_EQ(parametri.stato, 5) << parametri;
  EXPECT_EQ(parametri.uscita, "");
  EXPECT_EQ(parametri.errori,
            "orve-mail: I parametri si danno in una finestra. Impossibile aprire una finestra: non c'è uno "
            "schermo (DISPLAY e WAYLAND_DISPLAY mancano o non rispondono).\n");
}

TEST_F(Guasti, WithoutADisplayASendThatTurnsOutToNeedTheWindowSaysSo) {
  for (const std::string modo : {"semi", "lista"}) {
    const Esecuzione esecuzione = Invia({"--cliente", "1004", "--modo", modo});
    EXPECT_EQ(esecuzione.stato, 4) << esecuzione;
    EXPECT_THAT(esecuzione.errori,
                StartsWith("Messaggio non inviato: serviva la finestra di invio. Impossibile aprire una "
                           "finestra: non c'è uno schermo (DISPLAY e WAYLAND_DISPLAY mancano o non "
                           "rispondono).\n"));
  }
  EXPECT_THAT(Registro(), IsEmpty());
  EXPECT_THAT(CodiciEventi(), IsEmpty());
}

TEST_F(Guasti, AnUnattendedFailureLeavesALineInTheSendLog) {
  const std::string prima = NomeDelLog();  // midnight may pass meanwhile
  const Esecuzione esecuzione =
      Invia({"--cliente", "1004", "--modo", "semi", "--allegato", cartella.Write("fattura.pdf", "x")});
  EXPECT_EQ(esecuzione.stato, 4) << esecuzione;
  // Columns: recipient, status, the procedure that failed, file, date and time.
  const std::string destinatario = "Ferramenta del Borgo S.a.s.                ErroreInvio   ";
  EXPECT_THAT(esecuzione.errori, StartsWith("Messaggio non inviato: serviva la finestra di invio. "));
  EXPECT_THAT(esecuzione.errori, HasSubstr("\n  registro degli errori: " + destinatario));
  const std::filesystem::path temporanea = File("orve-mail-" + std::to_string(::geteuid()));
  const std::string log =
      support::ReadFile(temporanea / (std::filesystem::exists(temporanea / prima) ? prima : NomeDelLog()));
  EXPECT_THAT(
      log, StartsWith("Destinatario --- StatoInvio --- MetodoFallito --- NomeFile --- Data --- Ora\r\n\r\n" +
                      destinatario));
  EXPECT_THAT(log, HasSubstr("   fattura.pdf   "));
}

TEST_F(Guasti, ANameOfManyLinesIsOneLineOfTheSendLog) {
  const std::string prima = NomeDelLog();
  Sql("UPDATE CG16_ANAGGEN SET CG16_RAGSOANAG = 'Ferramenta' || char(13, 10) || 'Finta' || char(27) || '[2J' "
      "WHERE "
      "CG16_CODICE = 104");
  const Esecuzione esecuzione = Invia({"--cliente", "1004", "--modo", "semi"});
  EXPECT_EQ(esecuzione.stato, 4) << esecuzione;
  const std::filesystem::path temporanea = File("orve-mail-" + std::to_string(::geteuid()));
  const std::string log =
      support::ReadFile(temporanea / (std::filesystem::exists(temporanea / prima) ? prima : NomeDelLog()));
  EXPECT_THAT(log, HasSubstr("\r\n\r\nFerramenta  Finta [2J" + std::string(22, ' ') + "ErroreInvio   "));
  EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 3);
}

TEST_F(Guasti, ATemporaryDirectoryThatDoesNotExistCostsTheLogLineOnly) {
  Sql("UPDATE FW24_FAXCONFIG SET FW24_PATHTMP = '/nessuna/cartella' WHERE FW24_INDCANALE = 1");
  const Esecuzione fallito = Invia({"--cliente", "1004", "--modo", "semi"});
  EXPECT_EQ(fallito.stato, 4) << fallito;
  EXPECT_THAT(fallito.errori,
              HasSubstr("  registro degli errori non scritto: la cartella temporanea non esiste: "
                        "\\nessuna\\cartella\n"));
  EXPECT_FALSE(std::filesystem::exists("/nessuna"));
  auto& server = AvviaServerOrdinario();
  EXPECT_EQ(Invia({"--a", "x@example.org", "--corpo", "x"}).stato, 0);
  EXPECT_EQ(server.Count(), 1U);
}

TEST_F(Guasti, ANeighboursFolderOfTheSameNameEndsNoSend) {
  auto& server = AvviaServerOrdinario();
  const std::filesystem::path presa = cartella.Path() / ("orve-mail-" + std::to_string(::geteuid()));
  std::filesystem::create_directory(presa);
  std::filesystem::permissions(presa, std::filesystem::perms::all);
  const std::filesystem::path casa = cartella.Path() / "casa";
  std::filesystem::create_directory(casa);
  const std::vector<std::string> invia = {"invia", "--ca", Ca(), "--a", "x@example.org", "--corpo", "x"};

  const Esecuzione altrove =
      EseguiConAmbiente({"XDG_RUNTIME_DIR=", "XDG_STATE_HOME=", "HOME=" + casa.string()}, invia);
  EXPECT_EQ(altrove.stato, 0) << altrove;
  EXPECT_EQ(altrove.errori, "");
  EXPECT_TRUE(std::filesystem::is_directory(casa / ".local/state/orve-mail"));

  const Esecuzione senza =
      EseguiConAmbiente({"XDG_RUNTIME_DIR=", "XDG_STATE_HOME=", "HOME=/dev/null"}, invia);
  EXPECT_EQ(senza.stato, 0) << senza;
  EXPECT_EQ(senza.errori,
            "  registro degli errori non tenuto: nessuna cartella temporanea è soltanto di chi invia\n");
  EXPECT_EQ(server.Count(), 2U);
  EXPECT_TRUE(std::filesystem::is_empty(presa));
}

TEST_F(Guasti, AFullTemporaryDirectoryCostsTheLogLineOnly) {
  const std::filesystem::path temporanea = cartella.Path() / "piena";
  std::filesystem::create_directory(temporanea);
  // The device that is always full, in place of today's log, and of tomorrow's when midnight is near.
  const std::string oggi = NomeDelLog();
  const std::string traPoco = NomeDelLog(std::time(nullptr) + 3600);
  for (const std::string& nome : std::set<std::string>{oggi, traPoco}) {
    std::filesystem::create_symlink("/dev/full", temporanea / nome);
  }
  Sql("UPDATE FW24_FAXCONFIG SET FW24_PATHTMP = '" + temporanea.string() + "' WHERE FW24_INDCANALE = 1");
  const Esecuzione esecuzione = Invia({"--cliente", "1004", "--modo", "semi"});
  EXPECT_EQ(esecuzione.stato, 4) << esecuzione;
  const std::string inizio = "  registro degli errori non scritto: Disco pieno: ";
  EXPECT_THAT(esecuzione.errori, AnyOf(HasSubstr(inizio + Rovesciato((temporanea / oggi).string())),
                                       HasSubstr(inizio + Rovesciato((temporanea / traPoco).string()))));
}

TEST_F(Guasti, ATemporaryDirectoryThatMayNotBeWrittenCostsTheLogLineOnly) {
  const std::filesystem::path temporanea = cartella.Path() / "chiusa";
  std::filesystem::create_directory(temporanea);
  Sql("UPDATE FW24_FAXCONFIG SET FW24_PATHTMP = '" + temporanea.string() + "' WHERE FW24_INDCANALE = 1");
  ASSERT_EQ(::chmod(temporanea.c_str(), 0555), 0);
  const Esecuzione esecuzione = EseguiDaUtenteOrdinario({"invia", "--cliente", "1004", "--modo", "semi"});
  EXPECT_EQ(esecuzione.stato, 4) << esecuzione;
  EXPECT_THAT(esecuzione.errori, HasSubstr("  registro degli errori non scritto: Autorizzazione negata: "));
}

TEST_F(Guasti, ADatabaseThatCannotBeOpenedStopsEverythingBefore) {
  const std::string testo = cartella.Write("testo.db", std::string(5000, 'x'));
  const std::string altro = File("vuoto.db");
  std::filesystem::create_directory(altro);
  const std::string chiave = Db() + ".chiave";
  for (const std::string& db : {testo, altro, File("manca.db")}) {
    const Esecuzione esecuzione =
        Esegui({"invia", "--db", db, "--chiave", chiave, "--a", "x@example.org", "--corpo", "x"});
    EXPECT_EQ(esecuzione.stato, 5) << esecuzione;
    EXPECT_THAT(esecuzione.errori, StartsWith("orve-mail: Database non utilizzabile: "));
    EXPECT_EQ(Esegui({"registro", "--db", db}).stato, 5);
    EXPECT_EQ(Esegui({"eventi", "--db", db}).stato, 5);
  }
  EXPECT_FALSE(std::filesystem::exists(File("manca.db")));
}

TEST_F(Guasti, ADatabaseWithoutItsTablesStopsEverythingBefore) {
  Sql("DROP TABLE FW24_FAXCONFIG");
  const Esecuzione senzaImpostazioni = Invia({"--a", "x@example.org", "--corpo", "x"});
  EXPECT_EQ(senzaImpostazioni.stato, 5) << senzaImpostazioni;
  EXPECT_THAT(senzaImpostazioni.errori,
              StartsWith("orve-mail: Impostazioni non utilizzabili: 1 no such table: FW24_FAXCONFIG"));
  Sql("ALTER TABLE FW07_APPUSER RENAME TO ALTRO");
  const Esecuzione senzaUtenti = Invia({"--a", "x@example.org", "--corpo", "x"});
  EXPECT_EQ(senzaUtenti.stato, 5) << senzaUtenti;
  EXPECT_THAT(senzaUtenti.errori,
              StartsWith("orve-mail: Database non utilizzabile: no such table: FW07_APPUSER"));
  EXPECT_THAT(Registro(), IsEmpty());
}

TEST_F(Guasti, ARegisterThatIsNotThereMakesASentMessageNoCleanSuccess) {
  auto& server = AvviaServerOrdinario();
  Sql("DROP TABLE REGISTRO_INVII");
  const Esecuzione esecuzione = Invia({"--a", "x@example.org", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 7) << esecuzione;
  EXPECT_EQ(server.Count(), 1U);
  EXPECT_THAT(esecuzione.errori, StartsWith("Messaggio inviato, ma non tutto è andato a buon fine.\n"));
  EXPECT_THAT(esecuzione.errori,
              HasSubstr("  registro degli invii non scritto: no such table: REGISTRO_INVII"));
}

TEST_F(Guasti, ALockedDatabaseStopsEverythingBefore) {
  const auto altro = adapters::sqlite::SqliteConnection::Apri(Db());
  static_cast<void>(altro->EseguiConValori("BEGIN EXCLUSIVE", {}));
  const Esecuzione esecuzione = Invia({"--a", "x@example.org", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 5) << esecuzione;
  EXPECT_THAT(esecuzione.errori, HasSubstr("database is locked"));
}

TEST_F(Guasti, ADatabaseThatOthersAreWritingMakesASentMessageNoCleanSuccess) {
  auto& server = AvviaServerOrdinario();
  const auto altro = adapters::sqlite::SqliteConnection::Apri(Db());
  static_cast<void>(altro->EseguiConValori("BEGIN IMMEDIATE", {}));
  const Esecuzione esecuzione = Invia({"--a", "x@example.org", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 7) << esecuzione;
  EXPECT_EQ(server.Count(), 1U);
  EXPECT_THAT(esecuzione.errori, HasSubstr("  registro degli invii non scritto: database is locked"));
  static_cast<void>(altro->EseguiConValori("ROLLBACK", {}));
  EXPECT_THAT(Registro(), IsEmpty());
}

TEST_F(Guasti, AReadOnlyDatabaseMakesASentMessageNoCleanSuccess) {
  auto& server = AvviaServerOrdinario();
  ASSERT_EQ(::chmod(Db().c_str(), 0444), 0);
  std::filesystem::copy_file(Ca(), File("ca.pem"));
  const Esecuzione esecuzione =
      EseguiDaUtenteOrdinario({"invia", "--ca", File("ca.pem"), "--a", "x@example.org", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 7) << esecuzione;
  EXPECT_EQ(server.Count(), 1U);
  EXPECT_THAT(esecuzione.errori, HasSubstr("attempt to write a readonly database"));
}

TEST_F(Guasti, ADatabaseThatGoesAwayHalfWayMakesASentMessageNoCleanSuccess) {
  using support::On;
  using support::Say;
  support::ScriptedServer server({Say("220 prova"), On("EHLO *", "250 prova"),
                                  On(
                                      "MAIL *", [this] { std::filesystem::remove(Db()); }, "250 ok"),
                                  On("RCPT *", "250 ok"), On("DATA", "354 va"), support::Body("250 preso"),
                                  On("QUIT", "221 ciao")});
  ImpostaServerSemplice(server.Port());
  const Esecuzione esecuzione = Invia({"--a", "x@example.org", "--corpo", "x"});
  EXPECT_EQ(server.Complaint(), "");
  EXPECT_EQ(esecuzione.stato, 7) << esecuzione;
  EXPECT_THAT(esecuzione.errori, StartsWith("Messaggio inviato, ma non tutto è andato a buon fine.\n"));
  EXPECT_THAT(esecuzione.errori, HasSubstr("  registro degli invii non scritto: "));
  EXPECT_FALSE(std::filesystem::exists(Db()));
}

TEST_F(Guasti, AKeyThatOthersMayReadStopsEverythingBefore) {
  auto& server = AvviaServerOrdinario();
  ASSERT_EQ(::chmod((Db() + ".chiave").c_str(), 0644), 0);
  const Esecuzione esecuzione = Invia({"--a", "x@example.org", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 5) << esecuzione;
  EXPECT_EQ(esecuzione.errori, "orve-mail: File della chiave " + Db() +
                                   ".chiave: è accessibile ad altri utenti; impostare i permessi con: chmod "
                                   "600\n");
  EXPECT_EQ(server.Count(), 0U);
}

TEST_F(Guasti, AMissingKeyStopsEverythingBefore) {
  std::filesystem::remove(Db() + ".chiave");
  EXPECT_EQ(Invia({"--a", "x@example.org", "--corpo", "x"}).stato, 5);
}

TEST_F(Guasti, TheKeyOfAnotherDatabaseMeansAPasswordThatDoesNotOpen) {
  auto& server = AvviaServerOrdinario();
  EXPECT_EQ(Esegui({"crea-db", File("altro.db")}).stato, 0);
  FallisceCon("Errore di autenticazione utente", {"--chiave", File("altro.db.chiave")});
  EXPECT_EQ(server.Count(), 0U);
}

TEST_F(Guasti, AnUnknownUserStopsEverythingBefore) {
  const Esecuzione perId = Invia({"--a", "x@example.org", "--utente", "77"});
  EXPECT_EQ(perId.stato, 5) << perId;
  EXPECT_EQ(perId.errori, "orve-mail: Utente sconosciuto: «77»\n");
  const Esecuzione perCodice = Invia({"--a", "x@example.org", "--utente", "U03", "--gruppo", "AMM"});
  EXPECT_EQ(perCodice.stato, 5) << perCodice;
  EXPECT_EQ(perCodice.errori, "orve-mail: Utente sconosciuto: «U03» nel gruppo «AMM»\n");
}

TEST_F(Guasti, TheChannelOfAnotherPlatformSaysThatItCannotBeMade) {
  Sql("UPDATE FW24_FAXCONFIG SET FW24_INDFAXATTIVO = 1 WHERE FW24_INDCANALE = 1");
  const Esecuzione esecuzione = Invia({"--a", "x@example.org", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 4) << esecuzione;
  EXPECT_THAT(esecuzione.errori,
              StartsWith("Errore: Errore in creazione istanza di Outlook [ORVE_MAILSERVER: CLSFW_MAILSERVER: "
                         "GetImpostazioni]\n"));
  EXPECT_THAT(Registro(), IsEmpty());
}

}  // namespace orve::app
