// Whole sends that arrive, and sends that the library refuses: the program, a database and a real server.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
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

// Bytes of every value, so that nothing can come through unchanged by chance.
std::string TuttiIByte(std::size_t quanti) {
  std::string byte;
  for (std::size_t i = 0; i < quanti; ++i) byte.push_back(static_cast<char>((i * 7 + i / 256) % 256));
  return byte;
}

class Invio : public ProvaIntera {};

}  // namespace

TEST_F(Invio, AnInvoiceReachesACustomerFoundByCode) {
  auto& server = AvviaServerOrdinario();
  const std::string fattura = cartella.Write("fattura 12.pdf", TuttiIByte(100'000));
  const Esecuzione esecuzione = Invia(
      {"--cliente", "1001", "--oggetto", "Fattura 12", "--corpo", "In allegato.", "--allegato", fattura});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(esecuzione.uscita,
            "Messaggio inviato a 1 destinatario.\n"
            "  Officine Bellariva S.r.l.<acquisti@bellariva.example>\n");
  EXPECT_EQ(esecuzione.errori, "");

  const support::ReceivedMessage messaggio = server.OnlyMessage();
  EXPECT_THAT(messaggio.recipients, ElementsAre("acquisti@bellariva.example"));
  EXPECT_EQ(messaggio.sender, "fatture@arvenia.example");
  EXPECT_EQ(messaggio.user, "fatture@arvenia.example");
  EXPECT_TRUE(messaggio.encrypted);
  EXPECT_THAT(messaggio.from,
              ElementsAre(support::Mailbox{"Ufficio Fatture Arvenia", "fatture@arvenia.example"}));
  EXPECT_THAT(messaggio.to,
              ElementsAre(support::Mailbox{"Officine Bellariva S.r.l.", "acquisti@bellariva.example"}));
  EXPECT_EQ(messaggio.subject, "Fattura 12");
  EXPECT_THAT(messaggio.defects, IsEmpty());
  ASSERT_THAT(messaggio.attachments, SizeIs(1));
  EXPECT_EQ(messaggio.attachments[0].name, "fattura 12.pdf");
  EXPECT_EQ(messaggio.attachments[0].type, "application/pdf");
  EXPECT_EQ(support::ReadFile(messaggio.attachments[0].content), TuttiIByte(100'000));

  EXPECT_THAT(Sql("SELECT ESITOINVIO AS C1, TIPOCANALE AS C2, CANALEINVIO AS C3, MITTENTEINVIO AS C4,"
                  " UTENTEAPPLICAZIONE AS C5, DITTA AS C6, ALLEGATO AS C7, OGGETTO AS C8, RISULTATO AS C9"
                  " FROM REGISTRO_INVII"),
              ElementsAre(Riga{"0", "3", "77", "SMTP: fatture@arvenia.example", "1", "1", Rovesciato(fattura),
                               "Fattura 12", ""}));
  EXPECT_THAT(CodiciEventi(), ElementsAre("89"));
  EXPECT_THAT(Sql("SELECT DATI AS C1 FROM EVENTI_GESTIONALI")[0][0],
              HasSubstr("<USR_COD=U01/><GRP_COD=AMM/><MAIL_DEST=Officine Bellariva S.r.l./><AZ_COD=1/>"));
}

TEST_F(Invio, CertifiedMailGoesFromACertifiedAccountToACertifiedAddress) {
  auto& ordinario = AvviaServerOrdinario();
  support::SmtpServerOptions opzioni;
  opzioni.user = "fatture@pec.arvenia.example";
  opzioni.password = adapters::sqlite::PasswordDiProva(4);
  auto& certificato = AvviaServer(2, opzioni);
  const Esecuzione esecuzione =
      Invia({"--cliente", "1003", "--pec", "--oggetto", "Fattura 13", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(ordinario.Count(), 0U);
  const support::ReceivedMessage messaggio = certificato.OnlyMessage();
  EXPECT_THAT(messaggio.recipients, ElementsAre("legnami@pec.legnami.example"));
  EXPECT_EQ(messaggio.sender, "fatture@pec.arvenia.example");
  EXPECT_THAT(messaggio.to, ElementsAre(support::Mailbox{"Legnami, Travi e Coperture S.r.l.",
                                                         "legnami@pec.legnami.example"}));
  EXPECT_THAT(Sql("SELECT ESITOINVIO AS C1, TIPOCANALE AS C2, MITTENTEINVIO AS C3 FROM REGISTRO_INVII"),
              ElementsAre(Riga{"0", "5", "SMTP: fatture@pec.arvenia.example"}));
}

TEST_F(Invio, AListOfThreeArrivesWithAccentsACommaTwoAttachmentsAndTheSignature) {
  auto& server = AvviaServerOrdinario();
  const Esecuzione esecuzione =
      Invia({"--a", "Rossi, Mario <mario.rossi@example.org>", "--cc", "Caffè «Perù» <caffe@example.org>",
             "--ccn", "Niccolò Bàrberi <niccolo@example.org>", "--oggetto", "Perché no? – «Listino» 2026 €",
             "--corpo", "Buongiorno,\nil listino è qui.", "--allegato",
             cartella.Write("perché.pdf", "%PDF-uno"), "--allegato", cartella.Write("due.txt", "due")});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  const support::ReceivedMessage messaggio = server.OnlyMessage();
  EXPECT_THAT(messaggio.recipients,
              UnorderedElementsAre("mario.rossi@example.org", "caffe@example.org", "niccolo@example.org"));
  EXPECT_THAT(messaggio.to, ElementsAre(support::Mailbox{"Rossi, Mario", "mario.rossi@example.org"}));
  EXPECT_THAT(messaggio.cc, ElementsAre(support::Mailbox{"Caffè «Perù»", "caffe@example.org"}));
  EXPECT_THAT(support::ReadFile(messaggio.file), Not(HasSubstr("niccolo@example.org")));
  EXPECT_EQ(messaggio.subject, "Perché no? – «Listino» 2026 €");
  EXPECT_EQ(messaggio.bodyType, "text/html");
  EXPECT_EQ(messaggio.body,
            "<!DOCTYPE html>\r\n<html>\r\n<body>\r\n"
            "<font face = \"Verdana\" size = \"2\">Buongiorno,</font><br/>\r\n"
            "<font face = \"Verdana\" size = \"2\">\r\nil&nbsp;listino&nbsp;è&nbsp;qui.</font><br/>\r\n"
            "</body>\r\n</html>\r\n"
            "<p>Cordiali saluti<br/><b>Arvenia Distribuzione S.p.A.</b><br/>Ufficio Fatturazione &ndash; "
            "Città di Vicenza</p>\r\n");
  ASSERT_THAT(messaggio.attachments, SizeIs(2));
  EXPECT_EQ(messaggio.attachments[0].name, "perché.pdf");
  EXPECT_EQ(messaggio.attachments[1].name, "due.txt");
  EXPECT_EQ(support::ReadFile(messaggio.attachments[1].content), "due");
  EXPECT_THAT(Registro(),
              ElementsAre(Riga{"0", "Rossi, Mario", "Rossi, Mario<mario.rossi@example.org>", ""},
                          Riga{"0", "Caffè «Perù»", "Caffè «Perù»<caffe@example.org>", ""},
                          Riga{"0", "Niccolò Bàrberi", "Niccolò Bàrberi<niccolo@example.org>", ""}));
  EXPECT_THAT(CodiciEventi(), ElementsAre("89", "89", "89"));
}

TEST_F(Invio, ACustomerWithoutAnAddressIsRefusedOnRecordAndNothingLeaves) {
  auto& server = AvviaServerOrdinario();
  const Esecuzione esecuzione = Invia({"--cliente", "1004", "--modo", "automatico", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 3) << esecuzione;
  EXPECT_EQ(esecuzione.uscita, "");
  EXPECT_EQ(esecuzione.errori, "Invio rifiutato: Non inviato. Indirizzo mancante.\n");
  EXPECT_EQ(server.Count(), 0U);
  EXPECT_THAT(Registro(),
              ElementsAre(Riga{"1", "Ferramenta del Borgo S.a.s.", "", "Non inviato. Indirizzo mancante."}));
  EXPECT_THAT(CodiciEventi(), ElementsAre("88"));
}

TEST_F(Invio, ABadAddressInTheMasterDataIsRefusedOnRecord) {
  auto& server = AvviaServerOrdinario();
  const Esecuzione esecuzione = Invia({"--cliente", "1008", "--modo", "automatico", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 3) << esecuzione;
  EXPECT_EQ(esecuzione.errori,
            "Invio rifiutato: L'elenco dei destinatari contiene un indirizzo non valido.\n");
  EXPECT_EQ(server.Count(), 0U);
  EXPECT_THAT(CodiciEventi(), ElementsAre("88"));
}

TEST_F(Invio, ADisabledServiceRefusesEverything) {
  Sql("UPDATE FW24_FAXCONFIG SET FW24_INDFAXATTIVO = 3 WHERE FW24_INDCANALE = 1");
  for (const Riga& destinatario : {Riga{"--cliente", "1001"}, Riga{"--a", "x@example.org"}}) {
    const Esecuzione esecuzione = Invia(destinatario);
    EXPECT_EQ(esecuzione.stato, 3) << esecuzione;
    EXPECT_EQ(esecuzione.errori, "Invio rifiutato: Invio mail disabilitato\n  stato: 3\n");
  }
  EXPECT_THAT(Registro(), ElementsAre(Riga{"1", "", "", "Invio mail disabilitato"},
                                      Riga{"1", "", "", "Invio mail disabilitato"}));
  EXPECT_THAT(CodiciEventi(), ElementsAre("88", "88"));
}

TEST_F(Invio, EveryKindOfCodeFindsItsAddress) {
  auto& server = AvviaServerOrdinario();
  struct Caso {
    std::vector<std::string> opzioni;
    std::string nome, indirizzo;
  };
  const std::vector<Caso> casi = {
      {{"--cliente", "1002"}, "Pasticceria Città d'Oro S.n.c.", "ordini@cittadoro.example"},
      {{"--cliente", "1001", "--ditta", "2", "--utente", "1"},
       "Enoteca del Ponte S.n.c.",
       "vini@enotecadelponte.example"},
      {{"--fornitore", "1001"}, "Vetreria Laguna S.r.l.", "vendite@vetrerialaguna.example"},
      {{"--agente", "A01"}, "Agenzia Nord Est", "nordest@agenzie.example"},
      {{"--contatto", "501"}, "Ufficio Acquisti", "ufficio.acquisti@bellariva.example"},
      {{"--destinatario", "1/1001/0/SEDE"}, "Bellariva, Stabilimento Sud", "stabilimento@bellariva.example"},
      {{"--destinatario", "1/1001/0/MAG2"}, "Officine Bellariva S.r.l.", "acquisti@bellariva.example"},
      {{"--destinatario", "1/1001/0/A/B/3"}, "Bellariva, Corsia A/B/3", "corsia@bellariva.example"},
      {{"--numero", "fax 0444<***>banco@example.org"}, "", "banco@example.org"},
      {{"--anagrafica", "108"}, "Caffè «Perù» – Torrefazione Αθήνα", "caffe@torrefazione.example"},
      {{"--cliente", "1006", "--data", "31/12/2024"}, "Molino Vecchio S.r.l.", "info@molinovecchio.example"},
      {{"--cliente", "1006", "--data", "2025-01-01"}, "Molino Nuovo S.p.A.", "info@molinonuovo.example"},
  };
  for (const Caso& caso : casi) {
    std::vector<std::string> argomenti = caso.opzioni;
    argomenti.insert(argomenti.end(), {"--corpo", "x", "--oggetto", caso.nome});
    const Esecuzione esecuzione = Invia(argomenti);
    EXPECT_EQ(esecuzione.stato, 0) << caso.opzioni[1] << " " << esecuzione;
  }
  const auto messaggi = server.Messages();
  ASSERT_EQ(messaggi.size(), casi.size());
  for (std::size_t i = 0; i < casi.size(); ++i) {
    EXPECT_THAT(messaggi[i].to, ElementsAre(support::Mailbox{casi[i].nome, casi[i].indirizzo}))
        << casi[i].opzioni[1];
  }
}

TEST_F(Invio, ACodeThatFindsNobodyIsRefused) {
  for (const Riga& destinatario :
       {Riga{"--cliente", "9999"}, Riga{"--agente", "A02"}, Riga{"--contatto", "504"},
        Riga{"--contatto", "503"}, Riga{"--destinatario", "1/1999/0/SEDE"},
        Riga{"--destinatario", "1/1001/1/SEDE"}, Riga{"--numero", "solo testo"}, Riga{"--cliente", "1003"},
        Riga{"--cliente", "1005"}}) {
    const Esecuzione esecuzione = Invia(destinatario);
    EXPECT_EQ(esecuzione.stato, 3) << destinatario[1] << esecuzione;
    EXPECT_EQ(esecuzione.errori.find("Invio rifiutato: Non inviato. Indirizzo mancante.\n"), 0U);
  }
  EXPECT_THAT(CodiciEventi(), SizeIs(9));
}

TEST_F(Invio, ModesThatMayAskSendAtOnceWhenTheAddressIsGood) {
  auto& server = AvviaServerOrdinario();
  for (const std::string modo : {"semi", "lista", "automatico"}) {
    EXPECT_EQ(Invia({"--cliente", "1001", "--modo", modo, "--corpo", "x"}).stato, 0) << modo;
  }
  EXPECT_EQ(server.Count(), 3U);
}

TEST_F(Invio, AUserIsKnownByIdOrByCodeAndGroup) {
  support::SmtpServerOptions opzioni;
  opzioni.user = "vendite@arvenia.example";
  opzioni.password = adapters::sqlite::PasswordDiProva(6);
  auto& server = AvviaServer(1, opzioni);
  EXPECT_EQ(Invia({"--a", "x@example.org", "--utente", "3", "--corpo", "***(Utente)***"}).stato, 0);
  EXPECT_EQ(Invia({"--a", "x@example.org", "--utente", "U03", "--gruppo", "VEN", "--corpo", "***(Utente)***"})
                .stato,
            0);
  for (const auto& messaggio : server.Messages()) {
    EXPECT_EQ(messaggio.sender, "vendite@arvenia.example");
    EXPECT_THAT(messaggio.body, HasSubstr(">vendite</font>"));
    EXPECT_THAT(messaggio.body, HasSubstr("<p>Ufficio Vendite</p>"));
  }
  EXPECT_THAT(Sql("SELECT DISTINCT UTENTEAPPLICAZIONE AS C1 FROM REGISTRO_INVII"), ElementsAre(Riga{"3"}));
  EXPECT_THAT(Sql("SELECT DISTINCT IDUTENTE AS C1 FROM EVENTI_GESTIONALI"), ElementsAre(Riga{"3"}));
}

TEST_F(Invio, AUserWithoutADefaultAccountSendsFromTheCompanys) {
  support::SmtpServerOptions opzioni;
  opzioni.user = "info@arvenia.example";
  opzioni.password = adapters::sqlite::PasswordDiProva(2);
  auto& server = AvviaServer(1, opzioni);
  const Esecuzione esecuzione = Invia({"--a", "x@example.org", "--utente", "2", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_THAT(server.OnlyMessage().from,
              ElementsAre(support::Mailbox{"Arvenia Distribuzione S.p.A.", "info@arvenia.example"}));
}

TEST_F(Invio, WithoutABodyTheStandardNoticeLeavesWithItsPlaceholdersFilled) {
  auto& server = AvviaServerOrdinario();
  Sql("UPDATE FW95_SETTINGS SET FW95_VALORE = '0' WHERE FW95_CODICE = 'AIT_MAIL_HTML'");
  const Esecuzione esecuzione = Invia({"--numero", "<***>bianchi@example.org", "--oggetto", "x"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  const support::ReceivedMessage messaggio = server.OnlyMessage();
  EXPECT_EQ(messaggio.bodyType, "text/plain");
  EXPECT_THAT(messaggio.body, StartsWith("Gli allegati inclusi in questa mail sono destinati  a \r\n \r\n\r\n"
                                         "dell'azienda:\r\n \r\n\r\nPosta elettronica:\r\n"
                                         "   <bianchi@example.org> \r\n\r\n"));
  EXPECT_THAT(messaggio.body,
              HasSubstr("Arvenia Distribuzione S.p.A.,Via dell'Industria, 12 –  36100  Vicenza"));
  EXPECT_THAT(messaggio.body, Not(HasSubstr("***")));
}

TEST_F(Invio, AnEmptyBodyOfTheCallersStaysEmpty) {
  auto& server = AvviaServerOrdinario();
  Sql("UPDATE FW95_SETTINGS SET FW95_VALORE = '0' WHERE FW95_CODICE = 'AIT_MAIL_HTML'");
  EXPECT_EQ(Invia({"--a", "x@example.org", "--corpo", ""}).stato, 0);
  EXPECT_THAT(server.OnlyMessage().body, Not(HasSubstr("Gli allegati")));
}

TEST_F(Invio, TheAccountsWishesReachTheMessage) {
  support::SmtpServerOptions opzioni;
  opzioni.user = "fatture@arvenia.example";
  opzioni.password = adapters::sqlite::PasswordDiProva(1);
  opzioni.extensions = {"DSN"};
  auto& server = AvviaServer(1, opzioni);
  EXPECT_EQ(Invia({"--a", "x@example.org", "--corpo", "x"}).stato, 0);
  const support::ReceivedMessage messaggio = server.OnlyMessage();
  EXPECT_EQ(messaggio.Header("Disposition-Notification-To"), "<fatture@arvenia.example>");
  EXPECT_THAT(messaggio.recipientOptions.at(0), HasSubstr("NOTIFY="));
}

TEST_F(Invio, TheNameInEhloAndAPortOfImplicitTlsMayBeGiven) {
  support::SmtpServerOptions opzioni;
  opzioni.user = "fatture@arvenia.example";
  opzioni.password = adapters::sqlite::PasswordDiProva(1);
  opzioni.tls = "implicit";
  auto& server = AvviaServer(1, opzioni);
  const std::string dialogo = File("dialogo.txt");
  const Esecuzione esecuzione =
      Invia({"--cliente", "1001", "--oggetto", "Prova", "--corpo", "x", "--ehlo", "posta.azienda.example",
             "--porta-tls", std::to_string(server.Port()), "--dialogo", dialogo});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(server.Count(), 1U);
  EXPECT_THAT(support::ReadFile(dialogo), HasSubstr("C: EHLO posta.azienda.example"));
  for (const char* errato : {"due parole", "", "[192.0.2.7], x"}) {
    EXPECT_EQ(Invia({"--cliente", "1001", "--corpo", "x", "--ehlo", errato}).stato, 2) << errato;
  }
  EXPECT_EQ(Invia({"--cliente", "1001", "--corpo", "x", "--porta-tls", "0"}).stato, 2);
}

TEST_F(Invio, TheNameInEhloMayBeWrittenInItsOwnAlphabet) {
  AvviaServerOrdinario();
  const std::string dialogo = File("dialogo.txt");
  const Esecuzione esecuzione =
      Invia({"--a", "x@example.org", "--corpo", "x", "--ehlo", "città.example", "--dialogo", dialogo});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_THAT(support::ReadFile(dialogo), HasSubstr("C: EHLO xn--citt-3na.example"));
}

TEST_F(Invio, TheDialogueIsWrittenIntoNothingThatCouldHoldUpTheSend) {
  auto& server = AvviaServerOrdinario();
  const std::string tubo = File("tubo");
  ASSERT_EQ(::mkfifo(tubo.c_str(), 0600), 0);
  const auto manda = [&](const std::string& dialogo) {
    return Invia({"--a", "x@example.org", "--corpo", "x", "--dialogo", dialogo});
  };
  const Esecuzione senzaLettore = manda(tubo);
  const int lettore = ::open(tubo.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  const Esecuzione conLettore = manda(tubo);
  ::close(lettore);
  for (const Esecuzione& esecuzione :
       {senzaLettore, conLettore, manda("/dev/full"), manda(File("manca/dialogo"))}) {
    EXPECT_EQ(esecuzione.stato, 6) << esecuzione;
    EXPECT_THAT(esecuzione.errori, HasSubstr("--dialogo: impossibile scrivere "));
  }
  EXPECT_THAT(senzaLettore.errori, HasSubstr("non è un file, ma una pipe che nessuno legge"));
  EXPECT_THAT(conLettore.errori, HasSubstr("non è un file; indicarne uno, oppure - per lo standard error"));
  EXPECT_EQ(server.Count(), 0U);
}

TEST_F(Invio, WhatIsTakenDownMayGoNowhere) {
  AvviaServerOrdinario();
  const Esecuzione esecuzione = Invia({"--a", "x@example.org", "--corpo", "x", "--dialogo", "/dev/null"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
}

TEST_F(Invio, TheDialogueMayGoToTheProgramsOwnOutput) {
  AvviaServerOrdinario();
  const Esecuzione esecuzione = Invia({"--a", "x@example.org", "--corpo", "x", "--dialogo", "/dev/stdout"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_THAT(esecuzione.uscita, HasSubstr("C: EHLO"));
  const std::string dialogo = File("dialogo.txt");
  EXPECT_EQ(Invia({"--a", "x@example.org", "--corpo", "x", "--dialogo", dialogo}).stato, 0);
  struct stat stato {};
  ASSERT_EQ(::stat(dialogo.c_str(), &stato), 0);
  EXPECT_EQ(stato.st_mode & 0777U, 0600U);
}

TEST_F(Invio, DocumentDataTravelToTheRegister) {
  AvviaServerOrdinario();
  const Esecuzione esecuzione =
      Invia({"--a", "x@example.org", "--corpo", "x", "--titolo", "Fattura immediata", "--tipo-documento",
             "FI", "--numero-documento", "12", "--sezione-documento", "A", "--numero-registrazione",
             "202600012", "--azienda", "X S.p.A."});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_THAT(Sql("SELECT TITOLOSTAMPA AS C1, TIPODOC AS C2, NUMDOC AS C3, SEZDOC AS C4, NUMREG AS C5,"
                  " AZIENDA AS C6, IDVOCE AS C7 FROM REGISTRO_INVII"),
              ElementsAre(Riga{"Fattura immediata", "FI", "12", "A", "202600012", "X S.p.A.", "orve-mail"}));
}

TEST_F(Invio, ThePasswordStandsNowhereButEnciphered) {
  AvviaServerOrdinario();
  const std::string dialogo = File("dialogo.txt");
  const Esecuzione riuscita = Invia({"--a", "x@example.org", "--corpo", "x", "--dialogo", dialogo});
  EXPECT_EQ(riuscita.stato, 0) << riuscita;
  Sql("UPDATE FW98_MAILACCOUNT SET FW98_PASSWORD = (SELECT FW98_PASSWORD FROM FW98_MAILACCOUNT WHERE"
      " FW98_IDACCOUNT = 2) WHERE FW98_IDACCOUNT = 1");
  const Esecuzione fallita =
      Invia({"--a", "x@example.org", "--corpo", "x", "--dialogo", dialogo, "--modo", "semi"});
  EXPECT_EQ(fallita.stato, 1) << fallita;
  EXPECT_THAT(support::ReadFile(dialogo), HasSubstr("C: AUTH"));
  // In clear, in base64 alone, and in base64 after the NUL and user name of AUTH PLAIN.
  const std::vector<std::string> segreti = {"Prova-1-arvenia", "Prova-2-arvenia", "UHJvdmEtMS1hcnZlbmlh",
                                            "UHJvdmEtMi1hcnZlbmlh", "AFByb3ZhLTEtYXJ2ZW5pY"};
  std::size_t guardati = 0;
  for (const auto& voce : std::filesystem::recursive_directory_iterator(cartella.Path())) {
    if (!voce.is_regular_file()) continue;
    ++guardati;
    const std::string contenuto = support::ReadFile(voce.path());
    for (const std::string& segreto : segreti) EXPECT_THAT(contenuto, Not(HasSubstr(segreto))) << voce.path();
  }
  EXPECT_GE(guardati, 5U);  // database, key, both outputs, dialogue
}

}  // namespace orve::app
