// Sends that go through the compose window, from the command line to the mail server: which of them open it,
// and that what is sent is what the person saw.
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>
#include <filesystem>
#include <string>
#include <vector>

#include "finestre/prova_con_finestre.h"
#include "sqlite/schema.h"

namespace orve::app {

namespace {

using adapters::qt::Clicca;
using adapters::qt::Contenuto;
using adapters::qt::Digita;
using adapters::qt::Riscrive;
using adapters::qt::Sceglie;
using adapters::qt::Trova;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;
using Riga = std::vector<std::string>;

std::vector<std::string> Allegati(QWidget& finestra) {
  return adapters::qt::Righe(finestra);
}

class InvioManuale : public ProvaConFinestre {
 protected:
  // The folders that hold private copies.
  [[nodiscard]] std::vector<std::string> Copie() const {
    std::vector<std::string> trovate;
    for (const auto& voce : std::filesystem::recursive_directory_iterator(cartella.Path())) {
      const std::string nome = voce.path().filename().string();
      if (nome.starts_with("orve-allegati-")) trovate.push_back(nome);
    }
    return trovate;
  }
};

}  // namespace

TEST_F(InvioManuale, WhatThePersonWroteArrivesAndIsRecorded) {
  auto& server = AvviaServerOrdinario();
  Sql("UPDATE FW95_SETTINGS SET FW95_VALORE = '0' WHERE FW95_CODICE = 'AIT_MAIL_HTML'");
  const std::string fattura = cartella.Write("fattura 12.pdf", "il documento");
  const std::string listino = cartella.Write("Listino «città».pdf", "il listino");
  NellaFinestra([&](QWidget& finestra) {
    EXPECT_EQ(finestra.windowTitle().toStdString(), "Invio email... - orve-mail");
    EXPECT_EQ(Contenuto(finestra, "TXT_EMAIL"), "Officine Bellariva S.r.l.<acquisti@bellariva.example>");
    EXPECT_EQ(Contenuto(finestra, "TXT_OGGETTO"), "Fattura 12");
    EXPECT_THAT(Allegati(finestra), ElementsAre("fattura 12.pdf - Standard"));
    Digita(finestra, "TXT_EMAIL", ";Contabilità<contabilita@bellariva.example>");
    Digita(finestra, "TXT_EMAIL_CC", "Agenzia<nordest@agenzie.example>");
    Digita(finestra, "TXT_EMAIL_CCN", "archivio@arvenia.example");
    Riscrive(finestra, "TXT_OGGETTO", "Fattura 12, corretta");
    Riscrive(finestra, "TXT_CORPO", "Buongiorno, perché così è giusta.");
    regia.ScegliFile(listino);
    Clicca(finestra, "KVL_ALLEGA");
    EXPECT_THAT(Allegati(finestra), ElementsAre("fattura 12.pdf - Standard", "Listino «città».pdf"));
    Clicca(finestra, "cmd_Invia");
  });
  const Esecuzione esecuzione = InviaQui({"--cliente", "1001", "--modo", "manuale", "--oggetto", "Fattura 12",
                                          "--corpo", "In allegato.", "--allegato", fattura});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_THAT(esecuzione.uscita, StartsWith("Messaggio inviato a 4 destinatari.\n"));
  EXPECT_EQ(esecuzione.errori, "");

  const support::ReceivedMessage messaggio = server.OnlyMessage();
  EXPECT_THAT(messaggio.recipients,
              UnorderedElementsAre("acquisti@bellariva.example", "contabilita@bellariva.example",
                                   "nordest@agenzie.example", "archivio@arvenia.example"));
  EXPECT_THAT(messaggio.to,
              ElementsAre(support::Mailbox{"Officine Bellariva S.r.l.", "acquisti@bellariva.example"},
                          support::Mailbox{"Contabilità", "contabilita@bellariva.example"}));
  EXPECT_THAT(messaggio.cc, ElementsAre(support::Mailbox{"Agenzia", "nordest@agenzie.example"}));
  EXPECT_EQ(messaggio.sender, "fatture@arvenia.example");
  EXPECT_EQ(messaggio.user, "fatture@arvenia.example");
  EXPECT_TRUE(messaggio.encrypted);
  EXPECT_EQ(messaggio.subject, "Fattura 12, corretta");
  EXPECT_THAT(messaggio.body, HasSubstr("Buongiorno, perché così è giusta."));
  EXPECT_THAT(messaggio.body, Not(HasSubstr("In allegato.")));
  EXPECT_THAT(messaggio.defects, IsEmpty());
  ASSERT_THAT(messaggio.attachments, SizeIs(2));
  EXPECT_EQ(support::ReadFile(messaggio.attachments[0].content), "il documento");
  EXPECT_EQ(messaggio.attachments[1].name, "Listino «città».pdf");
  EXPECT_EQ(support::ReadFile(messaggio.attachments[1].content), "il listino");

  EXPECT_THAT(Registro(),
              ElementsAre(Riga{"0", "Officine Bellariva S.r.l.",
                               "Officine Bellariva S.r.l.<acquisti@bellariva.example>", ""},
                          Riga{"0", "Contabilità", "Contabilità<contabilita@bellariva.example>", ""},
                          Riga{"0", "Agenzia", "Agenzia<nordest@agenzie.example>", ""},
                          Riga{"0", "", "<archivio@arvenia.example>", ""}));
  EXPECT_THAT(Sql("SELECT DISTINCT OGGETTO AS C1, MITTENTEINVIO AS C2 FROM REGISTRO_INVII"),
              ElementsAre(Riga{"Fattura 12, corretta", "SMTP: fatture@arvenia.example"}));
  EXPECT_THAT(CodiciEventi(), ElementsAre("89", "89", "89", "89"));
}

TEST_F(InvioManuale, WhoIsPickedInTheAddressBookReceives) {
  auto& server = AvviaServerOrdinario();
  NellaFinestra([this](QWidget& finestra) {
    regia.Poi("Rubrica", [](QWidget& rubrica) {
      Digita(rubrica, "TXT_CERCA", "aquilone");
      Clicca(rubrica, "CHK_SOLOCONINDIRIZZO");
      Riscrive(rubrica, "TXT_CERCA", "torrefazione");
      Clicca(rubrica, "CMD_SCEGLI");
    });
    Sceglie(finestra, "BTN_DEST_CC", "Key_Arvio");
    EXPECT_EQ(Contenuto(finestra, "TXT_EMAIL_CC"),
              "Caffè «Perù» – Torrefazione Αθήνα<caffe@torrefazione.example>");
    regia.Risponde(
        "La rubrica di Outlook non esiste su questo computer.\n\nUsare la rubrica «Arvio», oppure scrivere "
        "l'indirizzo nella casella.");
    Sceglie(finestra, "BTN_DEST_CCN", "Key_Outl");
    EXPECT_EQ(Contenuto(finestra, "TXT_EMAIL_CCN"), "");
    EXPECT_THAT(adapters::qt::VociDiMenu(finestra, "CMD_LEGENDA"), SizeIs(13));
    Clicca(finestra, "cmd_Invia");
  });
  const Esecuzione esecuzione = InviaQui({"--cliente", "1001", "--modo", "manuale", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_THAT(server.OnlyMessage().recipients,
              UnorderedElementsAre("acquisti@bellariva.example", "caffe@torrefazione.example"));
}

TEST_F(InvioManuale, TheAccountChosenInTheWindowSends) {
  support::SmtpServerOptions opzioni;
  opzioni.user = "info@arvenia.example";
  opzioni.password = adapters::sqlite::PasswordDiProva(2);
  auto& server = AvviaServer(1, opzioni);
  NellaFinestra([](QWidget& finestra) {
    auto& combo = Trova(finestra, "CMB_ACCOUNT");
    combo.setFocus();
    QTest::keyClicks(&combo, QStringLiteral("info"));
    QTest::keyClick(&combo, Qt::Key_Return);
    Clicca(finestra, "cmd_Invia");
  });
  const Esecuzione esecuzione = InviaQui({"--cliente", "1001", "--modo", "manuale", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(server.OnlyMessage().sender, "info@arvenia.example");
}

TEST_F(InvioManuale, TheModeOfTheSettingsOpensTheWindowToo) {
  auto& server = AvviaServerOrdinario();
  Sql("UPDATE FW24_FAXCONFIG SET FW24_INDMODALITA = 0 WHERE FW24_INDCANALE = 1");
  NellaFinestra([](QWidget& finestra) { Clicca(finestra, "cmd_Invia"); });
  EXPECT_EQ(InviaQui({"--cliente", "1001", "--corpo", "x"}).stato, 0);
  EXPECT_EQ(server.Count(), 1U);
}

TEST_F(InvioManuale, ClosingTheWindowInAnyWaySendsAndRecordsNothing) {
  auto& server = AvviaServerOrdinario();
  const std::vector<Regia::Passo> modi = {
      [](QWidget& finestra) { Clicca(finestra, "cmd_Annulla"); },
      [](QWidget& finestra) { QTest::keyClick(&finestra, Qt::Key_Escape); },
      [](QWidget& finestra) { finestra.close(); },
      [this](QWidget& finestra) {  // even after a message in the window
        Riscrive(finestra, "TXT_EMAIL", "nessuno");
        regia.Risponde("L'elenco dei destinatari contiene un indirizzo non valido.");
        Clicca(finestra, "cmd_Invia");
        Clicca(finestra, "cmd_Annulla");
      }};
  for (const auto& modo : modi) {
    NellaFinestra(modo);
    const Esecuzione esecuzione = InviaQui({"--cliente", "1001", "--modo", "manuale", "--corpo", "x"});
    EXPECT_EQ(esecuzione.stato, 8) << esecuzione;
    EXPECT_EQ(esecuzione.uscita, "");
    EXPECT_EQ(esecuzione.errori,
              "Messaggio non inviato: la finestra di invio è stata chiusa senza inviare.\n");
  }
  EXPECT_EQ(server.Count(), 0U);
  EXPECT_THAT(Registro(), IsEmpty());
  EXPECT_THAT(CodiciEventi(), IsEmpty());
}

TEST_F(InvioManuale, ABadAddressIsMendedInTheWindowAndLeavesNoReservation) {
  auto& server = AvviaServerOrdinario();
  NellaFinestra([this](QWidget& finestra) {
    Digita(finestra, "TXT_EMAIL", ";");
    regia.Risponde("L'elenco dei destinatari contiene un indirizzo non valido.");
    Clicca(finestra, "cmd_Invia");
    Riscrive(finestra, "TXT_EMAIL", "giusto@example.org");
    Clicca(finestra, "cmd_Invia");
  });
  const Esecuzione esecuzione = InviaQui({"--cliente", "1001", "--modo", "manuale", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_THAT(server.OnlyMessage().recipients, ElementsAre("giusto@example.org"));
}

TEST_F(InvioManuale, AFileThatVanishesBeforeTheSendButtonIsToldAndTheMessageLeavesWithoutIt) {
  auto& server = AvviaServerOrdinario();
  const std::string fattura = cartella.Write("fattura.pdf", "il documento");
  const std::string bozza = cartella.Write("bozza.pdf", "x");
  NellaFinestra([&](QWidget& finestra) {
    regia.ScegliFile(bozza);
    Clicca(finestra, "KVL_ALLEGA");
    EXPECT_THAT(Allegati(finestra), SizeIs(2));
    std::filesystem::remove(bozza);
    regia.Poi("MostraMsg", [](QWidget& casella) {
      auto& messaggio = dynamic_cast<QMessageBox&>(casella);
      EXPECT_THAT(messaggio.text().toStdString(), HasSubstr("bozza.pdf"));
      EXPECT_EQ(messaggio.windowTitle().toStdString(),
                "ORVE_MAIL:CLSFW_MAILSERVER: AddAdditionalAttachmentSMTP");
      QTest::keyClick(&casella, Qt::Key_Return);
    });
    Clicca(finestra, "cmd_Invia");
  });
  const Esecuzione esecuzione =
      InviaQui({"--cliente", "1001", "--modo", "manuale", "--corpo", "x", "--allegato", fattura});
  EXPECT_EQ(esecuzione.stato, 7) << esecuzione;
  EXPECT_THAT(esecuzione.errori, StartsWith("Messaggio inviato, ma non tutto è andato a buon fine.\n"));
  const support::ReceivedMessage messaggio = server.OnlyMessage();
  ASSERT_THAT(messaggio.attachments, SizeIs(1));
  EXPECT_EQ(messaggio.attachments[0].name, "fattura.pdf");
}

TEST_F(InvioManuale, AFileWithAnApostropheThatIsChosenLeavesUnderItsNameAndCostsNoEvent) {
  auto& server = AvviaServerOrdinario();
  std::filesystem::create_directory(File("l'anno"));
  const std::string fattura = cartella.Write("l'anno/fattura.pdf", "il documento");
  const std::string listino = cartella.Write("l'anno/l'ultimo.pdf", "il listino");
  NellaFinestra([&](QWidget& finestra) {
    EXPECT_THAT(Allegati(finestra), ElementsAre("fattura.pdf - Standard"));
    regia.ScegliFile(listino);
    Clicca(finestra, "KVL_ALLEGA");
    EXPECT_THAT(Allegati(finestra), ElementsAre("fattura.pdf - Standard", "l'ultimo.pdf"));
    Clicca(finestra, "cmd_Invia");
  });
  const Esecuzione esecuzione =
      InviaQui({"--cliente", "1001", "--modo", "manuale", "--corpo", "x", "--allegato", fattura});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  const support::ReceivedMessage messaggio = server.OnlyMessage();
  ASSERT_THAT(messaggio.attachments, SizeIs(2));
  EXPECT_EQ(messaggio.attachments[0].name, "fattura.pdf");
  EXPECT_EQ(messaggio.attachments[1].name, "l'ultimo.pdf");
  EXPECT_EQ(support::ReadFile(messaggio.attachments[1].content), "il listino");
  EXPECT_THAT(CodiciEventi(), ElementsAre("89"));
}

TEST_F(InvioManuale, TheKeyDoesNotLeaveWhenItIsChosenInTheWindow) {
  auto& server = AvviaServerOrdinario();
  NellaFinestra([&](QWidget& finestra) {
    regia.ScegliFile(Db() + ".chiave");
    Clicca(finestra, "KVL_ALLEGA");
    regia.Poi("MostraMsg", [](QWidget& casella) {
      EXPECT_THAT(dynamic_cast<QMessageBox&>(casella).text().toStdString(),
                  HasSubstr("è un file che il programma stesso usa"));
      QTest::keyClick(&casella, Qt::Key_Return);
    });
    Clicca(finestra, "cmd_Invia");
  });
  const Esecuzione esecuzione = InviaQui({"--cliente", "1001", "--modo", "manuale", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 7) << esecuzione;
  EXPECT_THAT(server.OnlyMessage().attachments, IsEmpty());
}

TEST_F(InvioManuale, WhatMayNotGoIsNotCopiedEither) {
  auto& server = AvviaServerOrdinario();
  std::filesystem::create_directory(File("l'anno"));
  const std::string db = File("l'anno/posta.db");
  std::filesystem::copy_file(Db(), db);
  std::filesystem::copy_file(Db() + ".chiave", db + ".chiave");
  std::filesystem::create_symlink(db + ".chiave", File("l'anno/chiave.pdf"));
  std::filesystem::create_symlink("/proc/self/environ", File("l'anno/sistema.pdf"));
  NellaFinestra([&](QWidget& finestra) {
    const auto rifiutato = [&](const std::string& nome, const std::string& motivo) {
      regia.ScegliFile(File("l'anno/" + nome));
      regia.Poi("MostraMsg", [motivo](QWidget& casella) {
        EXPECT_THAT(dynamic_cast<QMessageBox&>(casella).text().toStdString(), HasSubstr(motivo));
        QTest::keyClick(&casella, Qt::Key_Return);
      });
      Clicca(finestra, "KVL_ALLEGA");
    };
    rifiutato("posta.db", "è un file che il programma stesso usa");
    rifiutato("posta.db.chiave", "è un file che il programma stesso usa");
    rifiutato("chiave.pdf",
              "Impossibile allegare il file \"chiave.pdf\": è un file che il programma stesso usa");
    rifiutato("sistema.pdf", "è un file del sistema");
    EXPECT_THAT(Allegati(finestra), IsEmpty());
    Clicca(finestra, "cmd_Invia");
  });
  const Esecuzione esecuzione =
      InviaQui({"--db", db, "--cliente", "1001", "--modo", "manuale", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_THAT(server.OnlyMessage().attachments, IsEmpty());
}

TEST_F(InvioManuale, NoCopyOfWhatWasChosenStaysBehind) {
  auto& server = AvviaServerOrdinario();
  std::filesystem::create_directory(File("l'anno"));
  const std::string listino = cartella.Write("l'anno/listino.pdf", "il listino");
  NellaFinestra([&](QWidget& finestra) {
    regia.ScegliFile(listino);
    Clicca(finestra, "KVL_ALLEGA");
    EXPECT_THAT(Allegati(finestra), ElementsAre("listino.pdf"));
    EXPECT_THAT(Copie(), SizeIs(1));
    Clicca(finestra, "cmd_Invia");
  });
  EXPECT_EQ(InviaQui({"--cliente", "1001", "--modo", "manuale", "--corpo", "x"}).stato, 0);
  const support::ReceivedMessage messaggio = server.OnlyMessage();
  ASSERT_THAT(messaggio.attachments, SizeIs(1));
  EXPECT_EQ(messaggio.attachments[0].name, "listino.pdf");
  EXPECT_THAT(Copie(), IsEmpty());
}

TEST_F(InvioManuale, WithoutAnAccountThePersonLearnsItAndNoWindowOpens) {
  regia.Risponde("Non è disponibile alcun account mail");
  const Esecuzione esecuzione =
      InviaQui({"--cliente", "1001", "--modo", "manuale", "--corpo", "x", "--utente", "5", "--ditta", "99"});
  EXPECT_EQ(esecuzione.stato, 4) << esecuzione;
  EXPECT_EQ(esecuzione.errori, "Messaggio non inviato: nessun account di posta per l'utente e la ditta\n");
  EXPECT_THAT(Registro(), IsEmpty());
  EXPECT_THAT(CodiciEventi(), IsEmpty());
}

TEST_F(InvioManuale, ARefusalOfTheServerIsAFailureAndTheWindowCloses) {
  AvviaServerOrdinario({"chiusa@example.org"});
  NellaFinestra([](QWidget& finestra) {
    Riscrive(finestra, "TXT_EMAIL", "chiusa@example.org");
    Clicca(finestra, "cmd_Invia");
    EXPECT_FALSE(finestra.isVisible());
  });
  const Esecuzione esecuzione = InviaQui({"--cliente", "1001", "--modo", "manuale", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 1) << esecuzione;
  EXPECT_THAT(Registro(), ElementsAre(Riga{"1", "", "<chiusa@example.org>",
                                           "Server si rifiuta di inoltrare mail ad uno o più indirizzi"}));
  EXPECT_THAT(CodiciEventi(), ElementsAre("89"));
}

TEST_F(InvioManuale, SemiAndListAskOnlyWhenAnAddressIsMissing) {
  auto& server = AvviaServerOrdinario();
  for (const std::string modo : {"semi", "lista"}) {
    NellaFinestra([&](QWidget& finestra) {
      EXPECT_EQ(Contenuto(finestra, "TXT_EMAIL"), "");
      Digita(finestra, "TXT_EMAIL", modo + "@example.org");
      Clicca(finestra, "cmd_Invia");
    });
    EXPECT_EQ(InviaQui({"--cliente", "1004", "--modo", modo, "--corpo", "x"}).stato, 0) << modo;
    EXPECT_EQ(InviaQui({"--cliente", "1001", "--modo", modo, "--corpo", "x"}).stato, 0) << modo;
  }
  std::vector<std::string> destinatari;
  for (const auto& messaggio : server.Messages()) destinatari.push_back(messaggio.recipients.at(0));
  EXPECT_THAT(destinatari, ElementsAre("semi@example.org", "acquisti@bellariva.example", "lista@example.org",
                                       "acquisti@bellariva.example"));
}

TEST_F(InvioManuale, SemiTellsOfABadAddressAndThenAsks) {
  auto& server = AvviaServerOrdinario();
  NellaFinestra([](QWidget& finestra) {
    EXPECT_EQ(Contenuto(finestra, "TXT_EMAIL"),
              "Rottami e Recuperi S.r.l.<amministrazione(at)rottami.example>");
    Riscrive(finestra, "TXT_EMAIL", "amministrazione@rottami.example");
    Clicca(finestra, "cmd_Invia");
  });
  const Esecuzione esecuzione = InviaQui({"--cliente", "1008", "--modo", "semi", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(esecuzione.errori,
            "Informazione: L'elenco dei destinatari contiene un indirizzo non valido. [Attenzione]\n");
  EXPECT_THAT(server.OnlyMessage().recipients, ElementsAre("amministrazione@rottami.example"));
}

TEST_F(InvioManuale, TheAutomaticModeNeverOpensTheWindow) {
  for (const std::string cliente : {"1004", "1008"}) {
    EXPECT_EQ(InviaQui({"--cliente", cliente, "--modo", "automatico", "--corpo", "x"}).stato, 3) << cliente;
  }
  EXPECT_THAT(CodiciEventi(), ElementsAre("88", "88"));
}

TEST_F(InvioManuale, ADisabledServiceIsRefusedWithoutAWindow) {
  Sql("UPDATE FW24_FAXCONFIG SET FW24_INDFAXATTIVO = 3 WHERE FW24_INDCANALE = 1");
  const Esecuzione esecuzione = InviaQui({"--cliente", "1001", "--modo", "manuale", "--corpo", "x"});
  EXPECT_EQ(esecuzione.stato, 3) << esecuzione;
}

TEST_F(InvioManuale, RecipientsByAddressLeaveInTheManualModeToo) {
  auto& server = AvviaServerOrdinario();
  EXPECT_EQ(InviaQui({"--a", "x@example.org", "--modo", "manuale", "--corpo", "x"}).stato, 0);
  EXPECT_EQ(server.Count(), 1U);
}

}  // namespace orve::app
