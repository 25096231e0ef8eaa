// The call that bypasses the send procedure: always SMTP, always the default account.
#include <string>

#include "apps/orve-mail/prova_intera.h"
#include "sqlite/schema.h"

namespace orve::app {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;
using Riga = std::vector<std::string>;

class InviaSmtp : public ProvaIntera {
 protected:
  InviaSmtp() { Sql("UPDATE FW95_SETTINGS SET FW95_VALORE = '0' WHERE FW95_CODICE = 'AIT_MAIL_HTML'"); }
  Esecuzione Invia(std::vector<std::string> argomenti) const {
    argomenti.insert(argomenti.begin(), {"invia-smtp", "--ca", Ca()});
    return Esegui(argomenti);
  }
};

}  // namespace

TEST_F(InviaSmtp, AMessageArrivesWithAllItsBoxesAndAttachments) {
  auto& server = AvviaServerOrdinario();
  const std::string uno = cartella.Write("perché.pdf", "uno");
  const Esecuzione esecuzione =
      Invia({"--a", "Rossi, Mario <mario@example.org>", "--a", "neri@example.org", "--cc",
             "Caffè «Perù» <caffe@example.org>", "--ccn", "Niccolò <niccolo@example.org>", "--oggetto",
             "Perché no?", "--corpo", "Per ***(AziendaCorr)***", "--allegato", uno, "--allegato",
             cartella.Write("due.txt", "due"), "--azienda", "Rossi S.p.A."});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_THAT(esecuzione.uscita, StartsWith("Messaggio inviato a 4 destinatari.\n"));
  const support::ReceivedMessage messaggio = server.OnlyMessage();
  EXPECT_EQ(messaggio.sender, "fatture@arvenia.example");
  EXPECT_THAT(messaggio.recipients, UnorderedElementsAre("mario@example.org", "neri@example.org",
                                                         "caffe@example.org", "niccolo@example.org"));
  EXPECT_THAT(messaggio.to, ElementsAre(support::Mailbox{"Rossi, Mario", "mario@example.org"},
                                        support::Mailbox{"", "neri@example.org"}));
  EXPECT_THAT(messaggio.cc, ElementsAre(support::Mailbox{"Caffè «Perù»", "caffe@example.org"}));
  EXPECT_THAT(support::ReadFile(messaggio.file), Not(HasSubstr("niccolo@example.org")));
  EXPECT_EQ(messaggio.subject, "Perché no?");
  EXPECT_EQ(messaggio.body, "Per Arvenia Distribuzione S.p.A.\r\n");
  EXPECT_THAT(messaggio.attachments, SizeIs(2));
  EXPECT_THAT(
      Sql("SELECT ESITOINVIO AS C1, MITTENTEINVIO AS C2, INDIRIZZO AS C3, AZIENDA AS C4, ALLEGATO AS C5"
          " FROM REGISTRO_INVII ORDER BY ID LIMIT 1"),
      ElementsAre(Riga{"0", "fatture@arvenia.example", "Rossi, Mario <mario@example.org>", "Rossi S.p.A.",
                       Rovesciato(uno)}));
  EXPECT_THAT(CodiciEventi(), ElementsAre("89", "89", "89", "89"));
}

TEST_F(InviaSmtp, CopiesAloneAreEnough) {
  auto& server = AvviaServerOrdinario();
  EXPECT_EQ(Invia({"--ccn", "neri@example.org", "--corpo", "x"}).stato, 0);
  EXPECT_THAT(server.OnlyMessage().recipients, ElementsAre("neri@example.org"));
}

TEST_F(InviaSmtp, TheChannelOfTheSettingsPlaysNoPart) {
  auto& server = AvviaServerOrdinario();
  for (const std::string canale : {"0", "1", "2", "3", "76"}) {
    Sql("UPDATE FW24_FAXCONFIG SET FW24_INDFAXATTIVO = " + canale + " WHERE FW24_INDCANALE = 1");
    const Esecuzione esecuzione = Invia({"--a", "x@example.org", "--corpo", "x"});
    EXPECT_EQ(esecuzione.stato, 0) << canale << esecuzione;
  }
  EXPECT_EQ(server.Count(), 5U);
  EXPECT_THAT(Sql("SELECT CANALEINVIO AS C1 FROM REGISTRO_INVII ORDER BY ID"),
              ElementsAre(Riga{"0"}, Riga{"1"}, Riga{"2"}, Riga{"3"}, Riga{"77"}));
}

TEST_F(InviaSmtp, CertifiedMailGoesFromTheCertifiedDefaultAccount) {
  support::SmtpServerOptions opzioni;
  opzioni.user = "fatture@pec.arvenia.example";
  opzioni.password = adapters::sqlite::PasswordDiProva(4);
  auto& certificato = AvviaServer(2, opzioni);
  const Esecuzione esecuzione = Invia({"--a", "x@pec.example.org", "--corpo", "x", "--pec"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(certificato.OnlyMessage().sender, "fatture@pec.arvenia.example");
  EXPECT_THAT(Sql("SELECT TIPOCANALE AS C1 FROM REGISTRO_INVII"), ElementsAre(Riga{"5"}));
}

TEST_F(InviaSmtp, WithoutABodyTheStandardNoticeLeavesWithItsPlaceholdersFilled) {
  auto& server = AvviaServerOrdinario();
  const Esecuzione esecuzione =
      Invia({"--a", "Bianchi <bianchi@example.org>", "--azienda", "Bianchi S.p.A."});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_THAT(server.OnlyMessage().body,
              StartsWith("Gli allegati inclusi in questa mail sono destinati  a \r\n Bianchi\r\n\r\n"
                         "dell'azienda:\r\n Bianchi S.p.A.\r\n\r\nPosta elettronica:\r\n"
                         "  bianchi@example.org \r\n\r\n"));
}

TEST_F(InviaSmtp, AnEmptyBodyOfTheCallersStaysEmpty) {
  auto& server = AvviaServerOrdinario();
  EXPECT_EQ(Invia({"--a", "x@example.org", "--corpo", ""}).stato, 0);
  EXPECT_THAT(server.OnlyMessage().body, Not(HasSubstr("Gli allegati")));
}

TEST_F(InviaSmtp, AServerThatRefusesIsAFailureThoughTheLibraryCallsItDone) {
  auto& server = AvviaServerOrdinario({"no@example.org"});
  for (const bool silenzioso : {false, true}) {
    Sql("DELETE FROM REGISTRO_INVII");
    std::vector<std::string> argomenti = {"--a", "No <no@example.org>", "--corpo", "x"};
    if (silenzioso) argomenti.emplace_back("--silenzioso");
    const Esecuzione esecuzione = Invia(argomenti);
    EXPECT_EQ(esecuzione.stato, 1) << esecuzione;
    EXPECT_EQ(esecuzione.uscita, "");
    EXPECT_EQ(esecuzione.errori,
              "Messaggio non inviato: Server si rifiuta di inoltrare mail ad uno o più indirizzi\n"
              "  server: RCPT TO:<no@example.org>: 550 5.1.1 Casella inesistente\n");
    EXPECT_THAT(Registro(), ElementsAre(Riga{"1", "No", "No <no@example.org>",
                                             "Server si rifiuta di inoltrare mail ad uno o più indirizzi"}));
  }
  EXPECT_EQ(server.Count(), 0U);
}

TEST_F(InviaSmtp, WithoutAnAccountNothingLeavesAndThePersonLearnsWhy) {
  const Esecuzione esecuzione =
      Invia({"--a", "x@example.org", "--corpo", "x", "--utente", "5", "--ditta", "99"});
  EXPECT_EQ(esecuzione.stato, 4) << esecuzione;
  EXPECT_EQ(esecuzione.errori, "Messaggio non inviato: nessun account di posta per l'utente e la ditta\n");
  EXPECT_THAT(Registro(), IsEmpty());
}

TEST_F(InviaSmtp, AnErrorIsShownByTheLibraryOrKeptForTheProgram) {
  AvviaServerOrdinario();
  Sql("DROP TABLE FW00_GRPUSRASSOC");  // which the placeholders need
  const Esecuzione mostrato = Invia({"--a", "x@example.org", "--corpo", "x"});
  EXPECT_EQ(mostrato.stato, 4) << mostrato;
  EXPECT_THAT(mostrato.errori, HasSubstr("Avviso: no such table: FW00_GRPUSRASSOC"));
  EXPECT_THAT(mostrato.errori, HasSubstr(" [ORVE_MAIL: InviaMailSMTP]\n"));
  EXPECT_THAT(mostrato.errori, Not(HasSubstr("  errore: ")));
  const Esecuzione silenzioso = Invia({"--a", "x@example.org", "--corpo", "x", "--silenzioso"});
  EXPECT_EQ(silenzioso.stato, 4) << silenzioso;
  EXPECT_THAT(silenzioso.errori, Not(HasSubstr("Avviso: ")));
  EXPECT_THAT(silenzioso.errori,
              StartsWith("Messaggio non inviato: l'invio è stato interrotto da un errore\n"
                         "  errore: 1 no such table: FW00_GRPUSRASSOC in ORVE_MAIL: InviaMailSMTP\n"));
  EXPECT_THAT(Registro(), IsEmpty());
}

TEST_F(InviaSmtp, ARegisterThatIsNotThereMakesASentMessageNoCleanSuccess) {
  auto& server = AvviaServerOrdinario();
  Sql("DROP TABLE REGISTRO_INVII");
  for (const bool silenzioso : {false, true}) {
    std::vector<std::string> argomenti = {"--a", "x@example.org", "--corpo", "x"};
    if (silenzioso) argomenti.emplace_back("--silenzioso");
    EXPECT_EQ(Invia(argomenti).stato, 7) << silenzioso;
  }
  EXPECT_EQ(server.Count(), 2U);
}

TEST_F(InviaSmtp, WhatMakesNoSenseIsRefused) {
  EXPECT_EQ(Invia({"--corpo", "x"}).errori,
            "orve-mail invia-smtp: manca il destinatario\nVedere «orve-mail invia-smtp --help».\n");
  for (const Riga& opzione : {Riga{"--cliente", "1001"}, Riga{"--modo", "semi"}, Riga{"--mittente", "1"},
                              Riga{"--password", "segreta"}, Riga{"--data", "01/01/2026"}}) {
    const Esecuzione esecuzione = Invia({"--a", "x@example.org", opzione[0], opzione[1]});
    EXPECT_EQ(esecuzione.stato, 2) << opzione[0] << esecuzione;
  }
  EXPECT_EQ(Invia({"--a", "x@example.org", "--allegato", File("manca.pdf")}).stato, 6);
  EXPECT_THAT(Registro(), IsEmpty());
}

}  // namespace orve::app
