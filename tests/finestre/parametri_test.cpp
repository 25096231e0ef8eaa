// The command that asks for the parameters of a send to a list.
#include <QComboBox>
#include <QTest>
#include <string>

#include "finestre/prova_con_finestre.h"

namespace orve::app {

namespace {

using adapters::qt::Clicca;
using adapters::qt::Contenuto;
using adapters::qt::Digita;
using adapters::qt::Riscrive;
using adapters::qt::Trova;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class Parametri : public ProvaConFinestre {};

}  // namespace

TEST_F(Parametri, TheAnswersArePrintedOnePerLine) {
  const std::string listino = cartella.Write("Listino città.pdf", "x");
  NeiParametri([&](QWidget& finestra) {
    EXPECT_EQ(finestra.windowTitle().toStdString(), "Personalizzazione unica invio mail - orve-mail");
    EXPECT_EQ(Contenuto(finestra, "TXT_CORPO"), "Prima");
    auto& tipo = Trova<QComboBox>(finestra, "CMB_TIPO");
    tipo.setFocus();
    QTest::keyClick(&tipo, Qt::Key_Down);
    EXPECT_THAT(Trova<QComboBox>(finestra, "CMB_ACCOUNT").currentText().toStdString(), HasSubstr(" - Pec"));
    Clicca(finestra, "CHK_READ");
    regia.ScegliFile(listino);
    Clicca(finestra, "KVL_ALLEGA");
    Riscrive(finestra, "TXT_CORPO", "Gentile cliente,");
    QTest::keyClick(&Trova(finestra, "TXT_CORPO"), Qt::Key_Return);
    Digita(finestra, "TXT_CORPO", "ecco il listino \\ 2026.");
    Clicca(finestra, "CMD_OK");
  });
  const Esecuzione esecuzione = EseguiQui({"parametri", "--corpo", "Prima"});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(esecuzione.uscita,
            "confermato: sì\n"
            "tipo: pec\n"
            "account: fatture@pec.arvenia.example\n"
            "lettura: sì\n"
            "consegna: no\n"
            "allegato: " +
                listino +
                "\n"
                "corpo: Gentile cliente,\\necco il listino \\\\ 2026.\n");
  EXPECT_EQ(esecuzione.errori, "");
  EXPECT_THAT(Registro(), IsEmpty());
}

TEST_F(Parametri, ACancelledWindowPrintsWhatTheLibraryGaveAndSaysSo) {
  NeiParametri([](QWidget& finestra) { Clicca(finestra, "CMD_ANNULLA"); });
  const Esecuzione esecuzione = EseguiQui({"parametri"});
  EXPECT_EQ(esecuzione.stato, 8) << esecuzione;
  EXPECT_EQ(esecuzione.uscita,
            "confermato: no\ntipo: mail\naccount: fatture@arvenia.example\nlettura: no\nconsegna: no\n"
            "allegato: \ncorpo: \n");
}

TEST_F(Parametri, AnAttachmentThatIsNotThereKeepsTheWindowOpen) {
  NeiParametri([this](QWidget& finestra) {
    Digita(finestra, "TXT_ALLEGATO", "\\nessuno\\manca.pdf");
    regia.Risponde("Percorso allegato non valido.");
    Clicca(finestra, "CMD_OK");
    EXPECT_TRUE(finestra.isVisible());
  });
  EXPECT_EQ(EseguiQui({"parametri"}).stato, 8);
}

}  // namespace orve::app
