// Sends to addresses: from which account, with which body, and never with a window.
#include <string>

#include "apps/orve-mail/prova_intera.h"
#include "sqlite/schema.h"

namespace orve::app {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Riga = std::vector<std::string>;

class InvioDiretto : public ProvaIntera {
 protected:
  InvioDiretto() { Sql("UPDATE FW95_SETTINGS SET FW95_VALORE = '0' WHERE FW95_CODICE = 'AIT_MAIL_HTML'"); }

  // A server of ordinary (1) or certified (2) accounts that knows this one only.
  support::SmtpServer& AvviaServerDi(int account, const std::string& indirizzo, int idServer = 1) {
    support::SmtpServerOptions opzioni;
    opzioni.user = indirizzo;
    opzioni.password = adapters::sqlite::PasswordDiProva(account);
    return AvviaServer(idServer, opzioni);
  }
};

}  // namespace

TEST_F(InvioDiretto, TheDefaultAccountOfTheUserSends) {
  auto& server = AvviaServerOrdinario();
  const Esecuzione esecuzione = Invia({"--a", "x@example.org", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_THAT(server.OnlyMessage().from,
              ElementsAre(support::Mailbox{"Ufficio Fatture Arvenia", "fatture@arvenia.example"}));
}

TEST_F(InvioDiretto, AnAccountNamedByNumberSendsInsteadOfTheDefaultOne) {
  auto& server = AvviaServerDi(5, "magazzino@arvenia.example");
  const Esecuzione esecuzione = Invia({"--a", "x@example.org", "--corpo", "x", "--mittente", "5"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_THAT(server.OnlyMessage().from,
              ElementsAre(support::Mailbox{"Magazzino Arvenia", "magazzino@arvenia.example"}));
  EXPECT_THAT(Sql("SELECT MITTENTEINVIO AS C1 FROM REGISTRO_INVII"),
              ElementsAre(Riga{"SMTP: magazzino@arvenia.example"}));
}

TEST_F(InvioDiretto, TheDefaultAccountIsTheOneThatASendByCodeUses) {
  auto& server = AvviaServerDi(5, "magazzino@arvenia.example");
  // Several accounts of the company, where neither the number nor the address says which one is taken.
  Sql("INSERT INTO FW9A_MAILAZIENDAACCOUNT (FW9A_IDACCOUNT_FW98, FW9A_DITTA_CG18) VALUES (5, 1), (6, 1)");
  Sql("UPDATE FW98_MAILACCOUNT SET FW98_USERNAME = 'magazzino@arvenia.example', FW98_PASSWORD ="
      " (SELECT FW98_PASSWORD FROM FW98_MAILACCOUNT WHERE FW98_IDACCOUNT = 5) WHERE FW98_IDACCOUNT IN (2, "
      "6)");
  EXPECT_EQ(Invia({"--cliente", "1001", "--corpo", "x", "--utente", "5"}).stato, 0);
  EXPECT_EQ(Invia({"--a", "x@example.org", "--corpo", "x", "--utente", "5"}).stato, 0);
  const auto messaggi = server.Messages();
  ASSERT_THAT(messaggi, SizeIs(2));
  EXPECT_EQ(messaggi[0].sender, messaggi[1].sender);
}

TEST_F(InvioDiretto, CertifiedMailGoesFromTheCertifiedDefaultAccount) {
  auto& ordinario = AvviaServerOrdinario();
  auto& certificato = AvviaServerDi(4, "fatture@pec.arvenia.example", 2);
  const Esecuzione esecuzione = Invia({"--a", "x@pec.example.org", "--corpo", "x", "--pec"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(ordinario.Count(), 0U);
  EXPECT_EQ(certificato.OnlyMessage().sender, "fatture@pec.arvenia.example");
  EXPECT_THAT(Sql("SELECT TIPOCANALE AS C1 FROM REGISTRO_INVII"), ElementsAre(Riga{"5"}));
}

TEST_F(InvioDiretto, AnAccountThatDoesNotExistStopsEverythingBefore) {
  auto& server = AvviaServerOrdinario();
  const Esecuzione esecuzione = Invia({"--a", "x@example.org", "--corpo", "x", "--mittente", "77"});
  EXPECT_EQ(esecuzione.stato, 5) << esecuzione;
  EXPECT_EQ(esecuzione.errori, "orve-mail: Nessun account con il numero 77\n");
  EXPECT_EQ(server.Count(), 0U);
  EXPECT_THAT(Registro(), IsEmpty());
}

TEST_F(InvioDiretto, AnAccountOfTheOtherKindOfMailIsRefused) {
  const Esecuzione certificato = Invia({"--a", "x@example.org", "--corpo", "x", "--mittente", "4"});
  EXPECT_EQ(certificato.stato, 2) << certificato;
  EXPECT_EQ(certificato.errori,
            "orve-mail invia: --mittente: l'account 4 è di posta certificata; indicare anche --pec\n"
            "Vedere «orve-mail invia --help».\n");
  for (const std::string ordinario : {"1", "9"}) {
    const Esecuzione esecuzione =
        Invia({"--a", "x@example.org", "--corpo", "x", "--pec", "--mittente", ordinario});
    EXPECT_EQ(esecuzione.stato, 2) << esecuzione;
    EXPECT_THAT(esecuzione.errori, HasSubstr("l'account " + ordinario + " non è di posta certificata"));
  }
  EXPECT_THAT(Registro(), IsEmpty());
}

TEST_F(InvioDiretto, AnAccountByNumberBelongsToAddressesOnly) {
  const Esecuzione esecuzione = Invia({"--cliente", "1001", "--mittente", "1"});
  EXPECT_EQ(esecuzione.stato, 2) << esecuzione;
  EXPECT_EQ(esecuzione.errori.find("orve-mail invia: --mittente vale solo con --a, --cc, --ccn\n"), 0U);
}

TEST_F(InvioDiretto, AnAccountNumberOutOfRangeIsRefused) {
  for (const std::string numero : {"0", "-1", "32768", "uno", ""}) {
    const Esecuzione esecuzione = Invia({"--a", "x@example.org", "--mittente=" + numero});
    EXPECT_EQ(esecuzione.stato, 2) << numero << esecuzione;
  }
}

TEST_F(InvioDiretto, ADefaultAccountWithANumberTooLargeForADirectSendIsToldApart) {
  Sql("INSERT INTO FW98_MAILACCOUNT (FW98_IDACCOUNT, FW98_MAILADDRESS, FW98_IDSERVER_FW23)"
      " VALUES (40000, 'lontano@arvenia.example', 1)");
  Sql("INSERT INTO FW99_MAILUSERACCOUNT (FW99_IDACCOUNT_FW98, FW99_ID_FW07, FW99_ISDEFAULT)"
      " VALUES (40000, 5, 1)");
  const Esecuzione esecuzione = Invia({"--a", "x@example.org", "--utente", "5"});
  EXPECT_EQ(esecuzione.stato, 5) << esecuzione;
  EXPECT_EQ(esecuzione.errori,
            "orve-mail: L'account predefinito ha un numero troppo grande per un invio diretto: 40000\n");
}

TEST_F(InvioDiretto, ADisabledServiceRefusesEvenWithoutAnAccount) {
  Sql("UPDATE FW24_FAXCONFIG SET FW24_INDFAXATTIVO = 3 WHERE FW24_INDCANALE = 1");
  const Esecuzione esecuzione = Invia({"--a", "x@example.org", "--utente", "5", "--ditta", "99"});
  EXPECT_EQ(esecuzione.stato, 3) << esecuzione;
  EXPECT_THAT(esecuzione.errori, HasSubstr("Invio mail disabilitato"));
}

TEST_F(InvioDiretto, NoWindowOpensWhateverTheMode) {
  auto& server = AvviaServerOrdinario();
  for (const std::string modo : {"manuale", "automatico", "semi", "lista"}) {
    const Esecuzione esecuzione = Invia({"--a", "senzapunto@localhost", "--corpo", "x", "--modo", modo});
    EXPECT_EQ(esecuzione.stato, 0) << modo << esecuzione;
  }
  EXPECT_EQ(server.Count(), 4U);
}

TEST_F(InvioDiretto, WithoutABodyTheMessageLeavesWithAnEmptyOne) {
  auto& server = AvviaServerOrdinario();
  const Esecuzione esecuzione = Invia({"--a", "Bianchi <bianchi@example.org>", "--oggetto", "x"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(server.OnlyMessage().body, "");
}

TEST_F(InvioDiretto, PlaceholdersInTheBodyAreFilled) {
  auto& server = AvviaServerOrdinario();
  const Esecuzione esecuzione =
      Invia({"--a", "Bianchi <bianchi@example.org>", "--a", "Neri <neri@example.org>", "--cc",
             "Verdi <verdi@example.org>", "--azienda", "Bianchi S.p.A.", "--corpo",
             "***(Nome)***|***(Azienda)***|***(IndEmail)***|***(AziendaCorr)***"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(server.OnlyMessage().body,
            "Bianchi, Neri|Bianchi S.p.A.|Bianchi <bianchi@example.org>;Neri <neri@example.org>|"
            "Arvenia Distribuzione S.p.A.\r\n");
}

TEST_F(InvioDiretto, AnAddressWithoutANameTakesNoneFromTheOneBefore) {
  auto& server = AvviaServerOrdinario();
  const Esecuzione esecuzione = Invia({"--a", "Bianchi <bianchi@example.org>", "--a", "neri@example.org",
                                       "--cc", "verdi@example.org", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  const support::ReceivedMessage messaggio = server.OnlyMessage();
  EXPECT_THAT(messaggio.to, ElementsAre(support::Mailbox{"Bianchi", "bianchi@example.org"},
                                        support::Mailbox{"", "neri@example.org"}));
  EXPECT_THAT(messaggio.cc, ElementsAre(support::Mailbox{"", "verdi@example.org"}));
}

TEST_F(InvioDiretto, BlindCopiesAloneAreEnough) {
  auto& server = AvviaServerOrdinario();
  const Esecuzione esecuzione = Invia({"--ccn", "Neri <neri@example.org>", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_THAT(server.OnlyMessage().recipients, ElementsAre("neri@example.org"));
}

TEST_F(InvioDiretto, TheRegisterListsEveryAttachmentOnce) {
  auto& server = AvviaServerOrdinario();
  const std::string uno = cartella.Write("uno.pdf", "uno");
  const std::string due = cartella.Write("due.pdf", "due");
  EXPECT_EQ(Invia({"--a", "x@example.org", "--corpo", "x", "--allegato", uno, "--allegato", due}).stato, 0);
  EXPECT_THAT(server.OnlyMessage().attachments, SizeIs(2));
  EXPECT_THAT(Sql("SELECT ALLEGATO AS C1 FROM REGISTRO_INVII"),
              ElementsAre(Riga{Rovesciato(uno) + "|" + Rovesciato(due)}));
}

}  // namespace orve::app
