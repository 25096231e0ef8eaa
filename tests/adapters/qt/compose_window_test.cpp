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

TEST_F(FinestraDiInvio, EveryControlStandsAtItsPlace) {
  Apri([](QWidget& finestra) {
    EXPECT_EQ(finestra.windowTitle().toStdString(), "Invio email...");
    EXPECT_EQ(finestra.size(), QSize(715, 486));
    for (const auto& controllo : LayoutOpzMail().controlli) {
      if (controllo.tipo == host::TipoControllo::kResizeForm) continue;
      const auto& widget = Trova(finestra, std::string(controllo.nome));
      EXPECT_EQ(widget.geometry(), RettangoloInPixel(controllo.posizione)) << controllo.nome;
    }
    EXPECT_EQ(Trova(finestra, "TXT_EMAIL").geometry(), QRect(61, 19, 637, 20));
    EXPECT_EQ(Trova(finestra, "cmd_Annulla").geometry(), QRect(639, 459, 72, 23));
  });
}

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

TEST_F(FinestraDiInvio, WhatIsHiddenByDesignIsNotSeenAndTheKeyboardPassesIt) {
  Apri([](QWidget& finestra) {
    EXPECT_FALSE(Trova(finestra, "CHK_CORPO").isVisible());
    EXPECT_FALSE(Trova(finestra, "CHK_CONSEGNA").isVisible());
    EXPECT_TRUE(Trova(finestra, "TXT_DITTA").visibleRegion().isEmpty());
    EXPECT_TRUE(Trova(finestra, "Label2").visibleRegion().isEmpty());
    Trova(finestra, "CMB_ACCOUNT").setFocus();
    std::vector<std::string> giro;
    for (int i = 0; i < 15; ++i) {
      giro.push_back(QApplication::focusWidget()->objectName().toStdString());
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_THAT(giro,
                ElementsAre("CMB_ACCOUNT", "BTN_DEST_A", "TXT_EMAIL", "BTN_DEST_CC", "TXT_EMAIL_CC",
                            "BTN_DEST_CCN", "TXT_EMAIL_CCN", "TXT_OGGETTO", "GRID_ALLEGATI", "KVL_ALLEGA",
                            "BTN_ELIMINA", "TXT_CORPO", "CMD_LEGENDA", "CHK_RICEVUTA", "cmd_Invia"));
    EXPECT_EQ(QApplication::focusWidget()->objectName().toStdString(), "cmd_Annulla");
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

TEST_F(FinestraDiInvio, WhatThePersonWroteIsSent) {
  servizio->vOggetto = "Vecchio";
  servizio->vCorpoMail = "Corpo";
  servizio->vFlagCorpo = 1;
  Collezione().AddFromLista("anna@x.example", "Anna", "ACME", 0);
  Apri([](QWidget& finestra) {
    EXPECT_EQ(Contenuto(finestra, "TXT_EMAIL"), "Anna<anna@x.example>");
    EXPECT_EQ(Contenuto(finestra, "TXT_OGGETTO"), "Vecchio");
    EXPECT_EQ(Contenuto(finestra, "TXT_CORPO"), "Corpo");
    Digita(finestra, "TXT_EMAIL", ";bruno@x.example");
    Digita(finestra, "TXT_EMAIL_CC", "capo@x.example");
    Riscrive(finestra, "TXT_OGGETTO", "Nuovo");
    Digita(finestra, "TXT_CORPO", " cambiato");
    Clicca(finestra, "cmd_Invia");
    EXPECT_FALSE(finestra.isVisible());
  });
  EXPECT_TRUE(Consegnato());
  EXPECT_EQ(servizio->vOggetto, "Nuovo");
  EXPECT_EQ(servizio->vCorpoMail, "Corpo cambiato");
  EXPECT_EQ(servizio->vCollDestinatari->Count(), 3);
}

TEST_F(FinestraDiInvio, TheMnemonicSends) {
  Collezione().AddFromLista("anna@x.example", "Anna", "", 0);
  Apri([](QWidget& finestra) {
    QTest::keyClick(&Trova(finestra, "TXT_OGGETTO"), Qt::Key_I, Qt::AltModifier);
    // The button goes down and comes up again, for the eye.
    EXPECT_TRUE(QTest::qWaitFor([&] { return !finestra.isVisible(); }, kPazienza));
  });
  EXPECT_TRUE(Consegnato());
}

TEST_F(FinestraDiInvio, ReturnInABoxSendsNothing) {
  Collezione().AddFromLista("anna@x.example", "Anna", "", 0);
  Apri([](QWidget& finestra) {
    QTest::keyClick(&Trova(finestra, "TXT_OGGETTO"), Qt::Key_Return);
    Respira();
    EXPECT_TRUE(finestra.isVisible());
  });
  EXPECT_FALSE(Consegnato());
}

TEST_F(FinestraDiInvio, ReturnOnTheButtonSends) {
  Collezione().AddFromLista("anna@x.example", "Anna", "", 0);
  Apri([](QWidget& finestra) {
    Trova(finestra, "cmd_Invia").setFocus();
    QTest::keyClick(&Trova(finestra, "cmd_Invia"), Qt::Key_Return);
  });
  EXPECT_TRUE(Consegnato());
}

TEST_F(FinestraDiInvio, WithoutRecipientsTheButtonDoesNothing) {
  Apri([](QWidget& finestra) {
    Clicca(finestra, "cmd_Invia");
    EXPECT_TRUE(finestra.isVisible());
  });
  EXPECT_FALSE(Consegnato());
}

TEST_F(FinestraDiInvio, ABadAddressIsToldAndTheBoxesStay) {
  Apri([this](QWidget& finestra) {
    Digita(finestra, "TXT_EMAIL", "anna@x.example;;");
    regia.Risponde("L'elenco dei destinatari contiene un indirizzo non valido.");
    Clicca(finestra, "cmd_Invia");
    EXPECT_TRUE(finestra.isVisible());
    EXPECT_EQ(Contenuto(finestra, "TXT_EMAIL"), "anna@x.example;;");
  });
  EXPECT_FALSE(Consegnato());
}

TEST_F(FinestraDiInvio, WithoutAnAccountThePersonIsToldAndNoWindowComes) {
  Accounts({});
  regia.Risponde("Non è disponibile alcun account mail");
  ApriForm_OpzInvio(aperto.interno, *servizio);
  EXPECT_FALSE(Consegnato());
}

TEST_F(FinestraDiInvio, AnotherAccountShowsOrHidesTheReceipt) {
  Accounts({RigaAccount(12, "noi@azienda.example", 1), RigaAccount(13, "muto@azienda.example", -1)});
  Apri([](QWidget& finestra) {
    auto& account = Trova<QComboBox>(finestra, "CMB_ACCOUNT");
    EXPECT_EQ(account.currentText().toStdString(), "noi@azienda.example - Mail");
    EXPECT_TRUE(Trova(finestra, "CHK_RICEVUTA").isVisible());
    EXPECT_TRUE(Trova<QCheckBox>(finestra, "CHK_RICEVUTA").isChecked());
    account.setFocus();
    QTest::keyClick(&account, Qt::Key_Down);
    EXPECT_EQ(account.currentText().toStdString(), "muto@azienda.example - Mail");
    EXPECT_FALSE(Trova(finestra, "CHK_RICEVUTA").isVisible());
    QTest::keyClick(&account, Qt::Key_Up);
    EXPECT_TRUE(Trova(finestra, "CHK_RICEVUTA").isVisible());
  });
}

TEST_F(FinestraDiInvio, AnAccountFixedByTheParametersCannotBeChanged) {
  servizio->IsInvioMailConParams(true);
  Apri([](QWidget& finestra) {
    EXPECT_TRUE(Trova(finestra, "CMB_ACCOUNT").isVisible());
    EXPECT_FALSE(Trova(finestra, "CMB_ACCOUNT").isEnabled());
  });
}

TEST_F(FinestraDiInvio, TheReceiptBoxGoesWithTheMessage) {
  Collezione().AddFromLista("anna@x.example", "Anna", "", 0);
  Apri([](QWidget& finestra) {
    EXPECT_FALSE(Trova<QCheckBox>(finestra, "CHK_RICEVUTA").isChecked());
    Clicca(finestra, "CHK_RICEVUTA");
    EXPECT_TRUE(Trova<QCheckBox>(finestra, "CHK_RICEVUTA").isChecked());
    Clicca(finestra, "cmd_Invia");
  });
  EXPECT_TRUE(servizio->ReadReceipt);
}

struct Fine {
  const char* nome;
  void (*azione)(QWidget&);
};

class FinestraLasciata : public FinestraVera, public ::testing::WithParamInterface<Fine> {};

TEST_P(FinestraLasciata, LeavesNoTrace) {
  servizio->vOggetto = "Prima";
  Collezione().AddFromLista("anna@x.example", "Anna", "", 0);
  Apri([](QWidget& finestra) {
    Riscrive(finestra, "TXT_OGGETTO", "Dopo");
    GetParam().azione(finestra);
    Respira();
    EXPECT_FALSE(finestra.isVisible());
  });
  EXPECT_EQ(servizio->vOggetto, "Prima");
  EXPECT_FALSE(Consegnato());
}

INSTANTIATE_TEST_SUITE_P(Modi, FinestraLasciata,
                         ::testing::Values(Fine{"Annulla", [](QWidget& f) { Clicca(f, "cmd_Annulla"); }},
                                           Fine{"Mnemonico",
                                                [](QWidget& f) {
                                                  QTest::keyClick(&f, Qt::Key_A, Qt::AltModifier);
                                                  static_cast<void>(QTest::qWaitFor(
                                                      [&] { return !f.isVisible(); }, kPazienza));
                                                }},
                                           Fine{"Chiudi", [](QWidget& f) { f.close(); }}),
                         [](const auto& caso) { return std::string(caso.param.nome); });

class Abbandono : public FinestraVera {
 protected:
  Abbandono() {
    servizio->vOggetto = "Prima";
    Collezione().AddFromLista("anna@x.example", "Anna", "", 0);
    Accounts({RigaAccount(12, "noi@azienda.example"), RigaAccount(13, "altro@azienda.example")});
  }
  static void Esc(QWidget& finestra) {
    QTest::keyClick(&Trova(finestra, "TXT_CORPO"), Qt::Key_Escape);
    Respira();
  }
};

TEST_F(Abbandono, EscapeLeavesAnUnchangedMessageWithoutAsking) {
  Apri([](QWidget& finestra) {
    Digita(finestra, "TXT_OGGETTO", "!");
    QTest::keyClick(&Trova(finestra, "TXT_OGGETTO"), Qt::Key_Backspace);
    Esc(finestra);
    EXPECT_FALSE(finestra.isVisible());
  });
}

TEST_F(Abbandono, EscapeAsksBeforeAChangedMessageIsLost) {
  Apri([this](QWidget& finestra) {
    Riscrive(finestra, "TXT_OGGETTO", "Dopo");
    regia.Poi("MostraMsg", [](QWidget& domanda) {
      EXPECT_EQ(dynamic_cast<QMessageBox&>(domanda).text().toStdString(), forms::kDomandaAbbandono);
      EXPECT_EQ(domanda.windowTitle().toStdString(), "Invio email...");
      QTest::keyClick(&domanda, Qt::Key_Return);  // a person who only wants the box gone loses nothing
    });
    Esc(finestra);
    EXPECT_TRUE(finestra.isVisible());
    EXPECT_EQ(Contenuto(finestra, "TXT_OGGETTO"), "Dopo");
    regia.Risponde(forms::kDomandaAbbandono, "Sì");
    Esc(finestra);
    EXPECT_FALSE(finestra.isVisible());
  });
  EXPECT_EQ(servizio->vOggetto, "Prima");
  EXPECT_FALSE(Consegnato());
}

class AbbandonoDiUnCambio : public Abbandono, public ::testing::WithParamInterface<Fine> {};

TEST_P(AbbandonoDiUnCambio, IsAskedFor) {
  servizio->vElencoAllegati = Variant::Array{PerLibreria(cartella.File("a.txt"))};
  ambiente->parametriCorpo = Variant::Array{Variant(Variant::Array{"Nome cliente", "#NOME"})};
  Apri([this](QWidget& finestra) {
    GetParam().azione(finestra);
    regia.Risponde(forms::kDomandaAbbandono, "No");
    Esc(finestra);
    EXPECT_TRUE(finestra.isVisible());
  });
}

INSTANTIATE_TEST_SUITE_P(
    Cambi, AbbandonoDiUnCambio,
    ::testing::Values(Fine{"Indirizzi", [](QWidget& f) { Digita(f, "TXT_EMAIL_CCN", "b@x.example"); }},
                      Fine{"Corpo", [](QWidget& f) { Digita(f, "TXT_CORPO", "!"); }},
                      Fine{"CampoSpeciale", [](QWidget& f) { Sceglie(f, "CMD_LEGENDA", "#NOME"); }},
                      Fine{"Allegati", [](QWidget& f) { Sceglie(f, "BTN_ELIMINA", "Del"); }},
                      Fine{"Ricevuta", [](QWidget& f) { Clicca(f, "CHK_RICEVUTA"); }},
                      Fine{"Mittente",
                           [](QWidget& f) {
                             Trova(f, "CMB_ACCOUNT").setFocus();
                             QTest::keyClick(&Trova(f, "CMB_ACCOUNT"), Qt::Key_Down);
                           }}),
    [](const auto& caso) { return std::string(caso.param.nome); });

struct Canale {
  const char* nome;
  std::int32_t numero;
  bool mittente;
};

class FormaPerCanale : public FinestraVera, public ::testing::WithParamInterface<Canale> {};

TEST_P(FormaPerCanale, TheSenderFrameTakesItsHeightAwayWithIt) {
  const auto [nome, numero, mittente] = GetParam();
  servizio->SrvMailInstallato = static_cast<kvEnum_ServizioMail>(numero);
  Apri([conMittente = mittente](QWidget& finestra) {
    EXPECT_EQ(finestra.height(), conMittente ? 486 : 437);
    EXPECT_EQ(finestra.minimumHeight(), finestra.height());
    EXPECT_EQ(Trova(finestra, "FMR_MITTENTE").isVisible(), conMittente);
    EXPECT_EQ(Trova(finestra, "CMB_ACCOUNT").isVisible(), conMittente);
    EXPECT_EQ(Trova(finestra, "CHK_RICEVUTA").isVisible(), conMittente);
    EXPECT_EQ(Trova(finestra, "FMR_DESTINATARIO").y(), conMittente ? 48 : -1);
    EXPECT_EQ(Trova(finestra, "FMR_PERS").y(), conMittente ? 152 : 103);
    EXPECT_EQ(Trova(finestra, "cmd_Invia").y(), conMittente ? 459 : 410);
    EXPECT_EQ(Trova(finestra, "cmd_Annulla").y(), conMittente ? 459 : 410);
  });
}

INSTANTIATE_TEST_SUITE_P(Canali, FormaPerCanale,
                         ::testing::Values(Canale{"SimpleMAPI", 0, false}, Canale{"Outlook", 1, false},
                                           Canale{"MAPI", 2, false}, Canale{"Smtp", 76, true},
                                           Canale{"SmtpSsl", 77, true}),
                         [](const auto& caso) { return std::string(caso.param.nome); });

TEST_F(FinestraDiInvio, ControlsKeepTheirProportionsInALargerWindow) {
  Apri([](QWidget& finestra) {
    finestra.resize(1430, 972);
    Respira();
    EXPECT_EQ(Trova(finestra, "FMR_PERS").geometry(), QRect(8, 304, 1414, 606));
    EXPECT_EQ(Trova(finestra, "TXT_CORPO").geometry(), QRect(12, 224, 1386, 320));
    // A single-line box stays one line high, centred in its place.
    EXPECT_EQ(Trova(finestra, "TXT_OGGETTO").geometry(), QRect(122, 42, 1274, 20));
    EXPECT_EQ(Trova(finestra, "cmd_Annulla").geometry(), QRect(1278, 929, 144, 23));
    finestra.resize(715, 486);
    Respira();
    for (const auto& controllo : LayoutOpzMail().controlli) {
      if (controllo.tipo == host::TipoControllo::kResizeForm) continue;
      EXPECT_EQ(Trova(finestra, std::string(controllo.nome)).geometry(),
                RettangoloInPixel(controllo.posizione))
          << controllo.nome;
    }
  });
}

TEST_F(FinestraDiInvio, TheWindowGetsNoSmallerThanItsTable) {
  Apri([](QWidget& finestra) {
    finestra.resize(100, 100);
    Respira();
    EXPECT_EQ(finestra.size(), QSize(715, 486));
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

TEST_F(FinestraDiInvio, TheBookOfTheApplicationIsSwitchedOffWithoutItsManager) {
  Apri([](QWidget& finestra) {
    EXPECT_THAT(VociDiMenu(finestra, "BTN_DEST_A"), ElementsAre("(Arvio)", "Outlook"));
    EXPECT_THAT(VociDiMenu(finestra, "BTN_DEST_CCN"), ElementsAre("(Arvio)", "Outlook"));
  });
}

// The check box for the body starts switched off, and is then set to off: that alone loads the text.
TEST_F(FinestraDiInvio, WithoutABodyOfTheCallersTheStandingMessageIsOpenForEditing) {
  servizio->vFlagCorpo = 0;
  servizio->vCorpoMail = "messo dal chiamante";
  servizio->FlgMsgPers = true;
  servizio->MsgPers = "Gentile ***(Nome)***";
  Apri([](QWidget& finestra) {
    EXPECT_EQ(Contenuto(finestra, "TXT_CORPO"), "Gentile ***(Nome)***");
    EXPECT_TRUE(Trova(finestra, "TXT_CORPO").isEnabled());
    Digita(finestra, "TXT_CORPO", "!");
    EXPECT_EQ(Contenuto(finestra, "TXT_CORPO"), "Gentile ***(Nome)***!");
  });
}

TEST_F(FinestraDiInvio, ASpecialFieldGoesToTheEndOfTheBody) {
  servizio->vFlagCorpo = 1;
  servizio->vCorpoMail = "Gentile";
  ambiente->parametriCorpo =
      Variant::Array{Variant::Array{"Nome cliente", "#NOME"}, Variant::Array{"Niente", ""}};
  Apri([](QWidget& finestra) {
    EXPECT_THAT(VociDiMenu(finestra, "CMD_LEGENDA"), ElementsAre("Nome cliente"));
    Sceglie(finestra, "CMD_LEGENDA", "#NOME");
    EXPECT_EQ(Contenuto(finestra, "TXT_CORPO"), "Gentile ***(NOME)***");
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

TEST_F(FinestraDiInvio, AnErrorThatLeavesAHandlerIsToldAndTheWindowStays) {
  Accounts({RigaAccount(12, "noi@azienda.example"), RigaAccount(13, "altro@azienda.example")});
  Apri([this](QWidget& finestra) {
    servizio->vCollMittenti.reset();
    regia.Risponde("91 Variabile oggetto non impostata");
    auto& account = Trova<QComboBox>(finestra, "CMB_ACCOUNT");
    account.setFocus();
    QTest::keyClick(&account, Qt::Key_Down);
    EXPECT_TRUE(finestra.isVisible());
  });
}

}  // namespace
}  // namespace orve::adapters::qt
