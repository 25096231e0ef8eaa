// Whole sends over the two MAPI channels: the program, a database, and the machine's sendmail, real or one
// that fails.
#include <chrono>
#include <filesystem>
#include <string>

#include "apps/orve-mail/prova_intera.h"
#include "support/patience.h"

namespace orve::app {

namespace {

using namespace std::chrono_literals;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;
using Riga = std::vector<std::string>;

constexpr int kSimpleMapi = 0;
constexpr int kMapi32 = 2;

class InvioMapi : public ProvaIntera {
 protected:
  void ImpostaCanale(int canale) const {
    Sql("UPDATE FW24_FAXCONFIG SET FW24_INDFAXATTIVO = " + std::to_string(canale) +
        " WHERE FW24_INDCANALE = 1");
  }

  /// A shell script as the sendmail; $D is the test's folder.
  std::string Comando(const std::string& script) const {
    std::string percorso =
        cartella.Write("sendmail", "#!/bin/sh\nD='" + cartella.Path().string() + "'\n" + script + "\n");
    std::filesystem::permissions(percorso, std::filesystem::perms::owner_all);
    return percorso;
  }

  /// msmtp that delivers to the server.
  std::string Msmtp(const support::SmtpServer& server) const {
    const std::string configurazione =
        cartella.Write("msmtprc", "account default\nhost 127.0.0.1\nport " + std::to_string(server.Port()) +
                                      "\nfrom utente@macchina.example\nauth off\ntls off\n");
    std::filesystem::permissions(configurazione,
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    return Comando(R"(exec /usr/bin/msmtp -C "$D/msmtprc" "$@")");
  }

  /// What both channels send and what arrives.
  Esecuzione InviaFattura(const std::string& sendmail) const {
    const std::string fattura = cartella.Write("Città d'arte 12.pdf", std::string("%PDF\0\r\n\xFF", 8));
    return Invia({"--sendmail", sendmail, "--a", "Rossi, Nicolò <nicolo@x.example>", "--cc", "anna@x.example",
                  "--ccn", "Segreta <segreta@x.example>", "--oggetto", "Fattura n° 12: perché", "--corpo",
                  "Così è.\n.\nSaluti", "--allegato", fattura});
  }

  static void AttendiFattura(const support::ReceivedMessage& messaggio) {
    EXPECT_EQ(messaggio.sender, "utente@macchina.example");
    EXPECT_THAT(messaggio.recipients, ElementsAre("nicolo@x.example", "anna@x.example", "segreta@x.example"));
    EXPECT_THAT(messaggio.from, ElementsAre(support::Mailbox{"", "utente@macchina.example"}));
    EXPECT_THAT(messaggio.to, ElementsAre(support::Mailbox{"Rossi, Nicolò", "nicolo@x.example"}));
    EXPECT_THAT(messaggio.cc, ElementsAre(support::Mailbox{"", "anna@x.example"}));
    EXPECT_THAT(support::ReadFile(messaggio.file), Not(HasSubstr("egreta")));
    EXPECT_EQ(messaggio.subject, "Fattura n° 12: perché");
    EXPECT_EQ(messaggio.body, "Così è.\r\n.\r\nSaluti\r\n");
    ASSERT_THAT(messaggio.attachments, SizeIs(1));
    EXPECT_EQ(messaggio.attachments[0].name, "Città d'arte 12.pdf");
    EXPECT_EQ(support::ReadFile(messaggio.attachments[0].content), std::string("%PDF\0\r\n\xFF", 8));
    EXPECT_THAT(messaggio.defects, IsEmpty());
  }

  Righe RigheRegistro() const {
    return Sql(
        "SELECT ESITOINVIO AS C1, CANALEINVIO AS C2, MITTENTEINVIO AS C3, INDIRIZZO AS C4,"
        " RISULTATO AS C5 FROM REGISTRO_INVII ORDER BY ID");
  }
};

}  // namespace

TEST_F(InvioMapi, TheControlsDeliverAndAreRecorded) {
  const support::SmtpServer server;
  ImpostaCanale(kSimpleMapi);
  const Esecuzione esecuzione = InviaFattura(Msmtp(server));
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(esecuzione.uscita,
            "Messaggio inviato a 3 destinatari.\n  Rossi, Nicolò<nicolo@x.example>\n  <anna@x.example>\n"
            "  Segreta<segreta@x.example>\n");
  EXPECT_EQ(esecuzione.errori, "");
  AttendiFattura(server.OnlyMessage());
  EXPECT_THAT(RigheRegistro(),
              ElementsAre(Riga{"0", "0", "Simple Mapi:", "Rossi, Nicolò<nicolo@x.example>", ""},
                          Riga{"0", "0", "Simple Mapi:", "<anna@x.example>", ""},
                          Riga{"0", "0", "Simple Mapi:", "Segreta<segreta@x.example>", ""}));
  EXPECT_THAT(CodiciEventi(), ElementsAre("89", "89", "89"));
}

TEST_F(InvioMapi, WithoutABodyTheControlsSendNothingAndThePersonLearnsWhatToDo) {
  const support::SmtpServer server;
  ImpostaCanale(kSimpleMapi);
  const Esecuzione esecuzione =
      Invia({"--sendmail", Msmtp(server), "--a", "anna@x.example", "--oggetto", "Vuoto"});
  EXPECT_EQ(esecuzione.stato, 1) << esecuzione;
  EXPECT_THAT(
      esecuzione.errori,
      StartsWith("Messaggio non inviato: il canale Simple MAPI non invia messaggi senza corpo. Scrivere un "
                 "corpo, o impostarne uno per tutti i messaggi\n"));
  EXPECT_EQ(server.Count(), 0U);
  ImpostaCanale(kMapi32);
  EXPECT_EQ(Invia({"--sendmail", Msmtp(server), "--a", "anna@x.example", "--oggetto", "Vuoto"}).stato, 0);
}

TEST_F(InvioMapi, AnEmptyStandingMessageIsABodyThatTheControlsDoNotSend) {
  const support::SmtpServer server;
  ImpostaCanale(kSimpleMapi);
  const auto invia = [&](const std::string& messaggio) {
    Sql("UPDATE FW24_FAXCONFIG SET FW24_FLGMSGPERS = 1, FW24_MSGPERS = '" + messaggio +
        "' WHERE FW24_INDCANALE = 1");
    return Invia({"--sendmail", Msmtp(server), "--cliente", "1001", "--oggetto", "Fattura"});
  };
  const Esecuzione vuoto = invia("");
  EXPECT_EQ(vuoto.stato, 1) << vuoto;
  EXPECT_THAT(vuoto.errori,
              StartsWith("Messaggio non inviato: il canale Simple MAPI non invia messaggi senza"));
  EXPECT_EQ(server.Count(), 0U);
  const Esecuzione pieno = invia("Cordiali saluti");
  EXPECT_EQ(pieno.stato, 0) << pieno;
  EXPECT_EQ(server.OnlyMessage().body, "Cordiali saluti\r\n");
}

TEST_F(InvioMapi, TheSenderMayBeNamed) {
  const support::SmtpServer server;
  for (const int canale : {kSimpleMapi, kMapi32}) {
    ImpostaCanale(canale);
    EXPECT_EQ(Invia({"--sendmail", Msmtp(server), "--sendmail-mittente",
                     "Ufficio Città <ufficio@azienda.example>", "--a", "anna@x.example", "--corpo", "Ciao"})
                  .stato,
              0);
  }
  ASSERT_THAT(server.Messages(), SizeIs(2));
  for (const auto& messaggio : server.Messages()) {
    EXPECT_THAT(messaggio.from, ElementsAre(support::Mailbox{"Ufficio Città", "ufficio@azienda.example"}));
  }
}

TEST_F(InvioMapi, TheLibraryDeliversTellsThePersonAndIsRecorded) {
  const support::SmtpServer server;
  ImpostaCanale(kMapi32);
  const Esecuzione esecuzione = InviaFattura(Msmtp(server));
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_THAT(esecuzione.uscita, HasSubstr("Messaggio inviato a 3 destinatari.\n"));
  EXPECT_EQ(esecuzione.errori, "Message sent!\n");
  AttendiFattura(server.OnlyMessage());
  EXPECT_THAT(RigheRegistro(), ElementsAre(Riga{"0", "2", "MAPI: ", "Rossi, Nicolò<nicolo@x.example>", ""},
                                           Riga{"0", "2", "MAPI: ", "<anna@x.example>", ""},
                                           Riga{"0", "2", "MAPI: ", "Segreta<segreta@x.example>", ""}));
  EXPECT_THAT(CodiciEventi(), ElementsAre("89", "89", "89"));
}

TEST_F(InvioMapi, ACustomerFoundByCodeIsReachedOverBothChannels) {
  const support::SmtpServer server;
  for (const int canale : {kSimpleMapi, kMapi32}) {
    ImpostaCanale(canale);
    const Esecuzione esecuzione =
        Invia({"--sendmail", Msmtp(server), "--cliente", "1001", "--oggetto", "x", "--corpo", "x"});
    EXPECT_EQ(esecuzione.stato, 0) << canale << esecuzione;
  }
  const auto messaggi = server.Messages();
  ASSERT_THAT(messaggi, SizeIs(2));
  for (const auto& messaggio : messaggi) {
    EXPECT_THAT(messaggio.recipients, ElementsAre("acquisti@bellariva.example"));
  }
}

TEST_F(InvioMapi, OnlyTheLibraryTakesTheTextsThroughTheSingleBytePage) {
  const support::SmtpServer server;
  for (const int canale : {kSimpleMapi, kMapi32}) {
    ImpostaCanale(canale);
    EXPECT_EQ(Invia({"--sendmail", Msmtp(server), "--a", "Łukasz <l@x.example>", "--oggetto", "Łódź è €",
                     "--corpo", "日本 è €"})
                  .stato,
              0);
  }
  const auto messaggi = server.Messages();
  ASSERT_THAT(messaggi, SizeIs(2));
  EXPECT_EQ(messaggi[0].subject, "Łódź è €");
  EXPECT_EQ(messaggi[0].body, "日本 è €\r\n");
  EXPECT_EQ(messaggi[1].subject, "?ód? è €");
  EXPECT_EQ(messaggi[1].body, "?? è €\r\n");
  for (const auto& messaggio : messaggi) EXPECT_EQ(messaggio.to.at(0).name, "Łukasz");
}

TEST_F(InvioMapi, AMailSystemThatRefusesIsRecordedAndQuoted) {
  const std::string sendmail = Comando("cat > /dev/null; echo 'coda piena' >&2; exit 75");
  const std::string motivo =
      "  posta della macchina: «" + sendmail + "» terminato con stato 75: coda piena\n";
  ImpostaCanale(kSimpleMapi);
  const Esecuzione controlli = Invia({"--sendmail", sendmail, "--a", "x@example.org", "--corpo", "x"});
  EXPECT_EQ(controlli.stato, 1) << controlli;
  EXPECT_THAT(controlli.errori, AllOf(HasSubstr("Messaggio non inviato: "), HasSubstr(motivo)));
  ImpostaCanale(kMapi32);
  const Esecuzione libreria = Invia({"--sendmail", sendmail, "--a", "x@example.org", "--corpo", "x"});
  EXPECT_EQ(libreria.stato, 1) << libreria;
  EXPECT_THAT(libreria.errori, AllOf(HasSubstr("Message not sent! Result = 23\n"),
                                     HasSubstr("Messaggio non inviato: FALLITO\n"), HasSubstr(motivo)));
  EXPECT_THAT(RigheRegistro(), ElementsAre(Riga{"1", "0", "Simple Mapi:", "<x@example.org>", ""},
                                           Riga{"1", "2", "", "<x@example.org>", "FALLITO"}));
  EXPECT_THAT(CodiciEventi(), ElementsAre("89", "89"));
}

TEST_F(InvioMapi, WithoutASendmailNothingLeavesAndTheReasonIsSaid) {
  const std::string manca = File("manca");
  const std::string motivo = "Il comando per l'invio della posta «" + manca + "» non esiste";
  ImpostaCanale(kSimpleMapi);
  const Esecuzione controlli = Invia({"--sendmail", manca, "--a", "x@example.org", "--corpo", "x"});
  EXPECT_EQ(controlli.stato, 5) << controlli;
  EXPECT_EQ(controlli.errori, "orve-mail: Impostazioni non utilizzabili: 32003 " + motivo +
                                  "ORVE_MAILSERVER: CLSFW_MAILSERVER: GetImpostazioni\n");
  ImpostaCanale(kMapi32);
  const Esecuzione libreria = Invia({"--sendmail", manca, "--a", "x@example.org", "--corpo", "x"});
  EXPECT_EQ(libreria.stato, 4) << libreria;
  EXPECT_EQ(libreria.errori,
            "Logon failed. Result = 3\n"
            "Messaggio non inviato: la posta di questa macchina non è disponibile\n"
            "  posta della macchina: " +
                motivo + "\n");
  EXPECT_THAT(Registro(), IsEmpty());
}

TEST_F(InvioMapi, AFileThatIsLostOnTheWayIsSaidByTheControlsAndStopsTheLibrary) {
  const support::SmtpServer server;
  const std::string buono = cartella.Write("a.pdf", "a");
  const std::vector<std::string> comando = {"--sendmail",
                                            Msmtp(server),
                                            "--a",
                                            "x@example.org",
                                            "--corpo",
                                            "x",
                                            "--allegato",
                                            buono,
                                            "--allegato",
                                            File("manca.pdf"),
                                            "--allegati-senza-controllo"};
  ImpostaCanale(kSimpleMapi);
  const Esecuzione controlli = Invia(comando);
  EXPECT_EQ(controlli.stato, 7) << controlli;
  EXPECT_THAT(controlli.errori, AllOf(HasSubstr("Messaggio inviato, ma non tutto è andato a buon fine.\n"),
                                      HasSubstr("  allegato rimasto fuori: "), HasSubstr("manca.pdf")));
  EXPECT_THAT(server.OnlyMessage().attachments, SizeIs(1));
  ImpostaCanale(kMapi32);
  const Esecuzione libreria = Invia(comando);
  EXPECT_EQ(libreria.stato, 1) << libreria;
  EXPECT_THAT(libreria.errori, AllOf(HasSubstr("Message not sent! Result = 11\n"), HasSubstr("manca.pdf")));
  EXPECT_EQ(server.Count(), 1U);
}

TEST_F(InvioMapi, ASendmailThatHangsIsNotWaitedForLongerThanAsked) {
  const std::string sendmail = Comando("cat > /dev/null; exec sleep 600");
  for (const int canale : {kSimpleMapi, kMapi32}) {
    ImpostaCanale(canale);
    const auto invio = [&](std::chrono::seconds attesa) {
      return Invia({"--sendmail", sendmail, "--attesa-risposta", std::to_string(attesa.count()), "--a",
                    "x@example.org", "--corpo", "x"});
    };
    // A program that is slow to start has not read the message in the shortest of these times.
    const auto letto = [](const Esecuzione& una) {
      return una.errori.find("non ha letto") == std::string::npos;
    };
    const Esecuzione esecuzione = support::WithPatience(invio, letto, {1s, 10s, 30s});
    EXPECT_EQ(esecuzione.stato, 1) << canale << esecuzione;
    EXPECT_THAT(esecuzione.errori,
                AllOf(HasSubstr("non ha finito entro "), HasSubstr("può aver accettato il messaggio")));
  }
}

TEST_F(InvioMapi, AnAddressThatTheChannelsCannotCarryIsRefusedByBoth) {
  const std::string sendmail = Comando("touch \"$D/partito\"");
  for (const int canale : {kSimpleMapi, kMapi32}) {
    ImpostaCanale(canale);
    const Esecuzione esecuzione =
        Invia({"--sendmail", sendmail, "--a", "x@example.org", "--cc", "a b@example.org", "--corpo", "x"});
    EXPECT_EQ(esecuzione.stato, 1) << canale << esecuzione;
    EXPECT_THAT(esecuzione.errori, HasSubstr("Indirizzo non valido"));
  }
  EXPECT_FALSE(std::filesystem::exists(File("partito")));
}

}  // namespace orve::app
