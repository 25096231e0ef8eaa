// The compose window as the person has it: real widgets, real mouse and keyboard events.
#include <QCheckBox>
#include <QComboBox>
#include <QCursor>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTableWidget>
#include <QTest>
#include <string>
#include <vector>

#include "dialogs/layouts.h"
#include "forms/contenuto.h"
#include "prova.h"
#include "qt/misure.h"
#include "service/dialog_bridge.h"

namespace orve::adapters::qt {
namespace {

using host::Variant;
using ::testing::ElementsAre;

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

TEST_F(FinestraDiInvio, ASecondActivationOnlyRenewsTheMessageObject) {
  Apri([this](QWidget& finestra) {
    Riscrive(finestra, "TXT_OGGETTO", "Mio");
    const auto prima = journal->Conta("Ambiente.CreaMessaggi");
    regia.Risponde("L'elenco dei destinatari contiene un indirizzo non valido.");
    Digita(finestra, "TXT_EMAIL", ";");
    Clicca(finestra, "cmd_Invia");
    finestra.activateWindow();  // what a window manager does once the message has gone
    EXPECT_TRUE(QTest::qWaitFor([&] { return journal->Conta("Ambiente.CreaMessaggi") > prima; }, kPazienza));
    EXPECT_EQ(journal->Conta("Ambiente.CreaMessaggi"), prima + 1);
    EXPECT_EQ(Contenuto(finestra, "TXT_OGGETTO"), "Mio");
    EXPECT_THAT(VociDiMenu(finestra, "BTN_ELIMINA"),
                ElementsAre("(Elimina allegato)", "(Elimina tutti gli allegati)"));
  });
}

TEST_F(FinestraDiInvio, ASpecialFieldLeavesCaretAndViewBehindItAndCanBeUndone) {
  servizio->vFlagCorpo = 1;
  for (int i = 0; i < 60; ++i) servizio->vCorpoMail += "riga\r\n";
  const std::string prima = servizio->vCorpoMail;
  ambiente->parametriCorpo = Variant::Array{Variant(Variant::Array{"Nome cliente", "#NOME"})};
  Apri([](QWidget& finestra) {
    auto& corpo = Trova<QPlainTextEdit>(finestra, "TXT_CORPO");
    corpo.moveCursor(QTextCursor::Start);
    QTest::keyClicks(&corpo, QStringLiteral("x"));
    corpo.moveCursor(QTextCursor::End);
    QTest::keyClicks(&corpo, QStringLiteral("y"));
    corpo.moveCursor(QTextCursor::Start);
    Sceglie(finestra, "CMD_LEGENDA", "#NOME");
    EXPECT_TRUE(corpo.textCursor().atEnd());
    EXPECT_FALSE(corpo.textCursor().hasSelection());
    EXPECT_TRUE(corpo.viewport()->rect().contains(corpo.cursorRect().center()));
    QTest::keyClick(&corpo, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(Contenuto(finestra, "TXT_CORPO").starts_with("xriga\n"));
    EXPECT_TRUE(Contenuto(finestra, "TXT_CORPO").ends_with("riga\ny"));
    QTest::keyClick(&corpo, Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(&corpo, Qt::Key_Z, Qt::ControlModifier);
    Digita(finestra, "TXT_EMAIL", "anna@x.example");
    Clicca(finestra, "cmd_Invia");
  });
  EXPECT_TRUE(Consegnato());
  EXPECT_EQ(servizio->vCorpoMail, prima);
}

TEST_F(FinestraDiInvio, WhileTheMessageIsDeliveredThePointerWaitsAndTheButtonIsOff) {
  Collezione().AddFromLista("luca@cliente.example", "Luca", "", 0);
  const auto puntatore = [] {
    const auto* imposto = QGuiApplication::overrideCursor();
    return imposto != nullptr ? imposto->shape() : Qt::ArrowCursor;
  };
  int consegne = 0;
  Apri([&](QWidget& finestra) {
    ambiente->allaConsegna = [&] {
      ++consegne;
      EXPECT_EQ(puntatore(), Qt::WaitCursor);
      EXPECT_FALSE(Trova(finestra, "cmd_Invia").isEnabled());
    };
    // Not while the person is asked something.
    Digita(finestra, "TXT_EMAIL", ";");
    regia.Poi("MostraMsg", [&](QWidget& casella) {
      EXPECT_EQ(puntatore(), Qt::ArrowCursor);
      QTest::keyClick(&casella, Qt::Key_Return);
    });
    Clicca(finestra, "cmd_Invia");
    Riscrive(finestra, "TXT_EMAIL", "luca@cliente.example");
    Clicca(finestra, "cmd_Invia");
  });
  EXPECT_EQ(consegne, 1);
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(FinestraDiInvio, AMenuComesUpByTheKeyboard) {
  Apri([](QWidget& finestra) {
    Trova(finestra, "BTN_DEST_A").setFocus();
    QTest::keyClick(&Trova(finestra, "BTN_DEST_A"), Qt::Key_Down);
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    EXPECT_TRUE(finestra.isVisible());
  });
}

}  // namespace
}  // namespace orve::adapters::qt
