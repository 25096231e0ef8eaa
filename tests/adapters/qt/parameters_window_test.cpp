// The parameters window as the person has it.
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

TEST_F(FinestraDeiParametri, AScreenReaderHasANameForEveryAnswer) {
  Parametri([](QWidget& finestra) {
    EXPECT_EQ(Trova(finestra, "CMB_TIPO").accessibleName().toStdString(), "Tipo");
    EXPECT_EQ(Trova(finestra, "CMB_ACCOUNT").accessibleName().toStdString(), "Mittente");
    EXPECT_EQ(Trova(finestra, "TXT_ALLEGATO").accessibleName().toStdString(), "Allega");
  });
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

}  // namespace
}  // namespace orve::adapters::qt
