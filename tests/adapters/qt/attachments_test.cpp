// Attachments in the real window, on real files.
#include <QPlainTextEdit>
#include <QTableWidget>
#include <QTest>
#include <QTextDocument>
#include <algorithm>
#include <fstream>
#include <iterator>

#include "prova.h"

namespace orve::adapters::qt {
namespace {

using host::Variant;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Allegati : public FinestraVera {
 protected:
  Allegati() { Collezione().AddFromLista("anna@x.example", "Anna", "", 0); }

  void Allega(QWidget& finestra, const std::string& percorso) {
    regia.ScegliFile(percorso);
    Clicca(finestra, "KVL_ALLEGA");
  }
};

const std::vector<std::string> kSpente = {"(Elimina allegato)", "(Elimina tutti gli allegati)"};

TEST_F(Allegati, TheRowThatIsClickedIsTheOneThatGoes) {
  const std::vector<std::string> file = {cartella.File("a.txt"), cartella.File("b.txt"),
                                         cartella.File("c.txt")};
  servizio->vElencoAllegati =
      Variant::Array{PerLibreria(file[0]), PerLibreria(file[1]), PerLibreria(file[2])};
  Apri([&](QWidget& finestra) {
    EXPECT_THAT(Righe(finestra), ElementsAre("a.txt", "b.txt", "c.txt"));
    auto& tabella = Trova<QTableWidget>(finestra, "GRID_ALLEGATI");
    EXPECT_EQ(tabella.horizontalHeaderItem(0)->text().toStdString(), "Allegato");
    QTest::mouseClick(tabella.viewport(), Qt::LeftButton, Qt::NoModifier,
                      tabella.visualItemRect(tabella.item(1, 0)).center());
    EXPECT_EQ(RigaSelezionata(finestra), 2);
    Sceglie(finestra, "BTN_ELIMINA", "Del");
    EXPECT_THAT(Righe(finestra), ElementsAre("a.txt", "c.txt"));
    tabella.setFocus();
    QTest::keyClick(&tabella, Qt::Key_Up);
    EXPECT_EQ(RigaSelezionata(finestra), 1);
    Sceglie(finestra, "BTN_ELIMINA", "Del");
    EXPECT_THAT(Righe(finestra), ElementsAre("c.txt"));
    Sceglie(finestra, "BTN_ELIMINA", "Del");
    EXPECT_THAT(Righe(finestra), IsEmpty());
    EXPECT_EQ(VociDiMenu(finestra, "BTN_ELIMINA"), kSpente);
    Clicca(finestra, "cmd_Invia");
  });
  EXPECT_THAT(Consegnati(), IsEmpty());
}

TEST_F(Allegati, TheRowThatWouldGoIsAlwaysMarked) {
  servizio->vElencoAllegati =
      Variant::Array{PerLibreria(cartella.File("a.txt")), PerLibreria(cartella.File("b.txt"))};
  Apri([&](QWidget& finestra) {
    auto& tabella = Trova<QTableWidget>(finestra, "GRID_ALLEGATI");
    EXPECT_EQ(RigaSelezionata(finestra), 2);
    QTest::mouseClick(tabella.viewport(), Qt::LeftButton, Qt::ControlModifier,
                      tabella.visualItemRect(tabella.item(1, 0)).center());
    EXPECT_EQ(RigaSelezionata(finestra), 2);
    QTest::mouseClick(tabella.viewport(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(5, tabella.viewport()->height() - 1));
    EXPECT_EQ(RigaSelezionata(finestra), 2);
  });
}

TEST_F(Allegati, TheTipOfARowShowsItsNameAsItIs) {
  const std::string nome = "Rossi & Figli <copia>.pdf";
  servizio->vElencoAllegati = Variant::Array{PerLibreria(cartella.File(nome))};
  Apri([&](QWidget& finestra) {
    const QString suggerimento = Trova<QTableWidget>(finestra, "GRID_ALLEGATI").item(0, 0)->toolTip();
    EXPECT_TRUE(Qt::mightBeRichText(suggerimento)) << "else the signs of markup would be shown";
    QTextDocument mostrato;
    mostrato.setHtml(suggerimento);
    EXPECT_EQ(mostrato.toPlainText().toStdString(), nome);
  });
}

class AllegatiLasciati : public Allegati {};

TEST_F(AllegatiLasciati, AFileDroppedOnABoxIsAttachedAndWritesNothingThere) {
  const std::string uno = cartella.File("uno.pdf");
  const std::string due = cartella.File("due.pdf");
  servizio->vFlagCorpo = 1;
  servizio->vCorpoMail = "Corpo";
  Apri([&](QWidget& finestra) {
    Lascia(Trova(finestra, "TXT_EMAIL_CC"), {uno});
    Lascia(*Trova<QPlainTextEdit>(finestra, "TXT_CORPO").viewport(), {due});
    EXPECT_THAT(Righe(finestra), ElementsAre("uno.pdf", "due.pdf"));
    EXPECT_EQ(Contenuto(finestra, "TXT_EMAIL_CC"), "");
    EXPECT_EQ(Contenuto(finestra, "TXT_CORPO"), "Corpo");
  });
}

TEST_F(AllegatiLasciati, AFolderIsNoFile) {
  Apri([&](QWidget& finestra) {
    regia.Risponde("Il file selezionato è inesistente o non raggiungibile.");
    Lascia(finestra, {cartella.Radice()});
    EXPECT_THAT(Righe(finestra), IsEmpty());
  });
}

}  // namespace
}  // namespace orve::adapters::qt
