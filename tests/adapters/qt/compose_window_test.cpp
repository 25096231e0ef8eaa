// The compose window as the person has it: real widgets, real mouse and keyboard events.
#include <QMessageBox>
#include <QTest>
#include <string>
#include <vector>

#include "dialogs/layouts.h"
#include "forms/contenuto.h"
#include "prova.h"
#include "qt/misure.h"

namespace orve::adapters::qt {
namespace {

class FinestraDiInvio : public FinestraVera {};

TEST_F(FinestraDiInvio, NoCaptionIsCut) {
  Apri([](QWidget& finestra) {
    for (const auto& controllo : LayoutOpzMail().controlli) {
      if (controllo.didascalia.empty() || controllo.tipo == host::TipoControllo::kFrame) continue;
      const auto& widget = Trova(finestra, std::string(controllo.nome));
      QString testo = Testo(controllo.didascalia);
      testo.remove(QLatin1Char('&'));
      EXPECT_LE(widget.fontMetrics().horizontalAdvance(testo), widget.width()) << controllo.nome;
    }
  });
}

TEST_F(FinestraDiInvio, WhatIsBelowTheEdgeOfItsFrameIsNotSeen) {
  Apri([](QWidget& finestra) {
    EXPECT_TRUE(Trova(finestra, "TXT_DITTA").visibleRegion().isEmpty());
    EXPECT_TRUE(Trova(finestra, "Label2").visibleRegion().isEmpty());
  });
}

TEST_F(FinestraDiInvio, AScreenReaderHasANameForEveryBox) {
  Apri([](QWidget& finestra) {
    const std::vector<std::pair<std::string, std::string>> kNomi = {
        {"CMB_ACCOUNT", "Da"},       {"TXT_EMAIL", "A"},
        {"TXT_EMAIL_CC", "Cc"},      {"TXT_EMAIL_CCN", "Ccn"},
        {"TXT_OGGETTO", "Oggetto"},  {"GRID_ALLEGATI", "Allegato"},
        {"TXT_CORPO", "Corpo mail"}, {"KVL_ALLEGA", "Allega"},
        {"cmd_Invia", "Invia"},      {"CHK_RICEVUTA", "Ricevuta di ritorno"}};
    for (const auto& [nome, detto] : kNomi) {
      EXPECT_EQ(Trova(finestra, nome).accessibleName().toStdString(), detto) << nome;
    }
  });
}

TEST_F(FinestraDiInvio, ReturnOnTheQuestionBeforeAChangeIsLostLosesNothing) {
  Apri([this](QWidget& finestra) {
    Riscrive(finestra, "TXT_OGGETTO", "Dopo");
    regia.Poi("MostraMsg", [](QWidget& domanda) {
      EXPECT_EQ(dynamic_cast<QMessageBox&>(domanda).text().toStdString(), forms::kDomandaAbbandono);
      QTest::keyClick(&domanda, Qt::Key_Return);  // a person who only wants the box gone
    });
    QTest::keyClick(&Trova(finestra, "TXT_CORPO"), Qt::Key_Escape);
    Respira();
    EXPECT_TRUE(finestra.isVisible());
    EXPECT_EQ(Contenuto(finestra, "TXT_OGGETTO"), "Dopo");
  });
}

}  // namespace
}  // namespace orve::adapters::qt
