// The parameters window as the person has it.
#include <QCheckBox>
#include <QComboBox>
#include <QTest>
#include <string>

#include "dialogs/layouts.h"
#include "forms/contenuto.h"
#include "prova.h"
#include "qt/misure.h"

namespace orve::adapters::qt {
namespace {

class FinestraDeiParametri : public FinestraVera {
 protected:
  void Parametri(Regia::Passo persona) {
    regia.Poi("FRMFW_MAILPARAMS", [persona = std::move(persona)](QWidget& finestra) {
      persona(finestra);
      Respira();
      if (finestra.isVisible()) finestra.close();
    });
    servizio->ReturnMailParameters();
  }
};

TEST_F(FinestraDeiParametri, OnASmtpChannelEveryControlStandsAtItsPlace) {
  Parametri([](QWidget& finestra) {
    EXPECT_EQ(finestra.windowTitle().toStdString(), "Personalizzazione unica invio mail");
    EXPECT_EQ(finestra.size(), QSize(516, 335));
    for (const auto& controllo : LayoutMailParams().controlli) {
      if (controllo.tipo == host::TipoControllo::kResizeForm) continue;
      const auto& widget = Trova(finestra, std::string(controllo.nome));
      EXPECT_EQ(widget.geometry(), RettangoloInPixel(controllo.posizione)) << controllo.nome;
      EXPECT_TRUE(widget.isVisible()) << controllo.nome;
    }
    EXPECT_EQ(Trova(finestra, "CMB_TIPO").accessibleName().toStdString(), "Tipo");
    EXPECT_EQ(Trova(finestra, "CMB_ACCOUNT").accessibleName().toStdString(), "Mittente");
    EXPECT_EQ(Trova(finestra, "TXT_ALLEGATO").accessibleName().toStdString(), "Allega");
  });
}

TEST_F(FinestraDeiParametri, OnTheOthersWhatStandsBelowMovesUp) {
  servizio->SrvMailInstallato = kvMAPI;
  Parametri([](QWidget& finestra) {
    for (const char* nome :
         {"CMB_TIPO", "CMB_ACCOUNT", "CHK_READ", "CHK_DELIVERY", "KVL_LABEL1", "KVL_LABEL2"}) {
      EXPECT_FALSE(Trova(finestra, nome).isVisible()) << nome;
    }
    EXPECT_EQ(finestra.height(), 314);
    EXPECT_EQ(Trova(finestra, "KVL_ALLEGA").y(), 16);
    EXPECT_EQ(Trova(finestra, "TXT_CORPO").y(), 64);
    EXPECT_EQ(Trova(finestra, "CMD_OK").y(), 283);
  });
}

TEST_F(FinestraDeiParametri, TheAnswersReachTheService) {
  const std::string file = cartella.File("listino.pdf");
  servizio->MailParamCorpoUnico("Prima");
  Parametri([&](QWidget& finestra) {
    regia.ScegliFile(file);
    Clicca(finestra, "KVL_ALLEGA");
    EXPECT_EQ(Contenuto(finestra, "TXT_ALLEGATO"), file);
    Clicca(finestra, "CHK_READ");
    Riscrive(finestra, "TXT_CORPO", "Dopo");
    Clicca(finestra, "CMD_OK");
    EXPECT_FALSE(finestra.isVisible());
  });
  EXPECT_TRUE(servizio->MailParamIsValoriValidi());
  EXPECT_EQ(servizio->MailParamAllegatoUnico(), PerLibreria(file));
  EXPECT_EQ(servizio->MailParamCorpoUnico(), "Dopo");
  EXPECT_TRUE(servizio->MailParamReadRcpt());
  EXPECT_FALSE(servizio->MailParamDeliveryStatus());
}

TEST_F(FinestraDeiParametri, APathThatDoesNotExistIsToldAndTheWindowStays) {
  Parametri([&](QWidget& finestra) {
    Digita(finestra, "TXT_ALLEGATO", "\\manca\\file.pdf");
    regia.Risponde("Percorso allegato non valido.");
    Clicca(finestra, "CMD_OK");
    EXPECT_TRUE(finestra.isVisible());
  });
  EXPECT_FALSE(servizio->MailParamIsValoriValidi());
}

TEST_F(FinestraDeiParametri, APathIsTypedWithTheSeparatorOfTheSystemOrOfTheLibrary) {
  const std::string file = cartella.File("listino.pdf");
  for (const std::string& scritto : {file, PerLibreria(file)}) {
    servizio->MailParamAllegatoUnico("");
    Parametri([&](QWidget& finestra) {
      Digita(finestra, "TXT_ALLEGATO", scritto);
      Clicca(finestra, "CMD_OK");
      EXPECT_FALSE(finestra.isVisible());
    });
    EXPECT_EQ(servizio->MailParamAllegatoUnico(), PerLibreria(file)) << scritto;
  }
}

TEST_F(FinestraDeiParametri, APathThatIsChangedByHandAfterItsChoiceIsTheOneThatCounts) {
  const std::string scelto = cartella.File("listino.pdf");
  const std::string scritto = cartella.File("listino.pdf.p7m");
  Parametri([&](QWidget& finestra) {
    regia.ScegliFile(scelto);
    Clicca(finestra, "KVL_ALLEGA");
    Digita(finestra, "TXT_ALLEGATO", ".p7m");
    Clicca(finestra, "CMD_OK");
  });
  EXPECT_EQ(servizio->MailParamAllegatoUnico(), PerLibreria(scritto));
}

TEST_F(FinestraDeiParametri, APathWithoutItsSeparatorIsToldAndTheWindowStays) {
  Parametri([&](QWidget& finestra) {
    Digita(finestra, "TXT_ALLEGATO", "file.pdf");
    regia.Risponde("5 Chiamata di routine o argomento non validi");
    Clicca(finestra, "CMD_OK");
    EXPECT_TRUE(finestra.isVisible());
  });
}

TEST_F(FinestraDeiParametri, ChoosingPecLoadsTheAccountsOfThatKind) {
  Parametri([&](QWidget& finestra) {
    auto& tipo = Trova<QComboBox>(finestra, "CMB_TIPO");
    EXPECT_EQ(tipo.currentText().toStdString(), "Mail");
    EXPECT_EQ(Trova<QComboBox>(finestra, "CMB_ACCOUNT").currentText().toStdString(),
              "noi@azienda.example - Mail");
    tipo.setFocus();
    QTest::keyClick(&tipo, Qt::Key_Down);
    EXPECT_EQ(Trova<QComboBox>(finestra, "CMB_ACCOUNT").currentText().toStdString(),
              "noi@azienda.example - Pec");
    Clicca(finestra, "CMD_OK");
  });
  EXPECT_EQ(servizio->MailParamTipo(), 1.0F);
  EXPECT_TRUE(servizio->IsPec());
}

TEST_F(FinestraDeiParametri, EscapeLeavesTheAnswersUnconfirmed) {
  servizio->MailParamCorpoUnico("Prima");
  Parametri([&](QWidget& finestra) { QTest::keyClick(&Trova(finestra, "TXT_CORPO"), Qt::Key_Escape); });
  EXPECT_FALSE(servizio->MailParamIsValoriValidi());
  EXPECT_EQ(servizio->MailParamCorpoUnico(), "Prima");
}

TEST_F(FinestraDeiParametri, EscapeAsksBeforeWhatWasWrittenIsLost) {
  Parametri([&](QWidget& finestra) {
    Digita(finestra, "TXT_CORPO", "Scritto a lungo");
    regia.Risponde(forms::kDomandaAbbandono, "No");
    QTest::keyClick(&Trova(finestra, "TXT_CORPO"), Qt::Key_Escape);
    EXPECT_TRUE(finestra.isVisible());
    Clicca(finestra, "CMD_OK");
  });
  EXPECT_EQ(servizio->MailParamCorpoUnico(), "Scritto a lungo");
}

// Two captions share the letter: it moves between them, and Return presses the focused one.
TEST_F(FinestraDeiParametri, TheMnemonicsConfirmAttachAndLeave) {
  const std::string file = cartella.File("listino.pdf");
  Parametri([&](QWidget& finestra) {
    Trova(finestra, "TXT_CORPO").setFocus();
    const auto premeA = [&] { QTest::keyClick(finestra.focusWidget(), Qt::Key_A, Qt::AltModifier); };
    for (int i = 0; i < 2 && finestra.focusWidget()->objectName() != QStringLiteral("KVL_ALLEGA"); ++i) {
      premeA();
    }
    ASSERT_EQ(finestra.focusWidget()->objectName().toStdString(), "KVL_ALLEGA");
    regia.ScegliFile(file);
    QTest::keyClick(finestra.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(Contenuto(finestra, "TXT_ALLEGATO"), file);
    finestra.activateWindow();  // what a window manager does once the choice has gone
    ASSERT_TRUE(QTest::qWaitForWindowActive(&finestra, kPazienza));
    premeA();
    EXPECT_EQ(finestra.focusWidget()->objectName().toStdString(), "CMD_ANNULLA");
    EXPECT_TRUE(finestra.isVisible());
    QTest::keyClick(finestra.focusWidget(), Qt::Key_O, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !finestra.isVisible(); }, kPazienza));
  });
  EXPECT_TRUE(servizio->MailParamIsValoriValidi());
  EXPECT_EQ(servizio->MailParamAllegatoUnico(), PerLibreria(file));
}

TEST_F(FinestraDeiParametri, TheKeyboardGoesByThePlacesAndTheWindowGetsNoSmaller) {
  Parametri([](QWidget& finestra) {
    std::vector<std::string> giro;
    auto* primo = finestra.focusWidget();
    do {
      giro.push_back(finestra.focusWidget()->objectName().toStdString());
      QTest::keyClick(finestra.focusWidget(), Qt::Key_Tab);
    } while (finestra.focusWidget() != primo && giro.size() < 20);
    EXPECT_THAT(giro,
                ::testing::ElementsAre("CMB_TIPO", "CHK_READ", "CHK_DELIVERY", "CMB_ACCOUNT", "KVL_ALLEGA",
                                       "TXT_ALLEGATO", "TXT_CORPO", "CMD_OK", "CMD_ANNULLA"));
    finestra.resize(10, 10);
    Respira();
    EXPECT_EQ(finestra.size(), QSize(516, 335));
  });
}

TEST_F(FinestraDeiParametri, APathIsLimitedForThePersonAndNotForTheChoice) {
  const std::string lungo = cartella.File(std::string(120, 'n') + ".pdf");
  Parametri([&](QWidget& finestra) {
    Incolla(finestra, "TXT_ALLEGATO", std::string(200, 'x'));
    EXPECT_EQ(Contenuto(finestra, "TXT_ALLEGATO"), std::string(100, 'x'));
    regia.ScegliFile(lungo);
    Clicca(finestra, "KVL_ALLEGA");
    EXPECT_EQ(Contenuto(finestra, "TXT_ALLEGATO"), lungo);
    Clicca(finestra, "CMD_OK");
  });
  EXPECT_EQ(servizio->MailParamAllegatoUnico(), PerLibreria(lungo));
}

TEST_F(FinestraDeiParametri, AFileThatVanishesBetweenTheChoiceAndTheOkIsRefused) {
  const std::string file = cartella.File("listino.pdf");
  Parametri([&](QWidget& finestra) {
    regia.ScegliFile(file);
    Clicca(finestra, "KVL_ALLEGA");
    std::filesystem::remove(file);
    regia.Risponde("Percorso allegato non valido.");
    Clicca(finestra, "CMD_OK");
    EXPECT_TRUE(finestra.isVisible());
  });
  EXPECT_FALSE(servizio->MailParamIsValoriValidi());
  EXPECT_EQ(servizio->MailParamAllegatoUnico(), "");
}

TEST_F(FinestraDeiParametri, TheFrameGrowsWithItsContentsAndTheButtonsOnlyMove) {
  Parametri([&](QWidget& finestra) {
    finestra.resize(1032, 670);
    Respira();
    EXPECT_EQ(Trova(finestra, "FRM_PARAM").geometry(), QRect(2, 0, 1018, 604));
    EXPECT_EQ(Trova(finestra, "TXT_CORPO").geometry(), QRect(16, 224, 986, 360));
    EXPECT_EQ(Trova(finestra, "CMD_OK").geometry(), QRect(720, 608, 73, 23));
    EXPECT_EQ(Trova(finestra, "CMD_ANNULLA").geometry(), QRect(874, 608, 73, 23));
  });
}

}  // namespace
}  // namespace orve::adapters::qt
