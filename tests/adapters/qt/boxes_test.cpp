// What a box accepts from the person and what from the program.
#include <QClipboard>
#include <QLineEdit>
#include <QMimeData>
#include <QTest>
#include <QUrl>
#include <memory>
#include <string>

#include "dialogs/layouts.h"
#include "prova.h"

namespace orve::adapters::qt {
namespace {

class Caselle : public FinestraVera {
 protected:
  // The window by itself, with nobody listening to its events.
  void Mostra(const Regia::Passo& persona) {
    const auto form = ambiente->CreaForm(LayoutOpzMail());
    regia.Poi("FRMRW_OPZMAIL", [&](QWidget& finestra) {
      persona(finestra);
      finestra.close();
    });
    form_ = form;
    form->Show(host::Form::kModale, nullptr);
    form_.reset();
  }
  template <class Tipo>
  std::shared_ptr<Tipo> Controllo(const char* nome) {
    return host::ControlloDi<Tipo>(*form_, nome);
  }

  std::shared_ptr<host::Form> form_;
};

constexpr const char* kFaccina = "\xF0\x9F\x98\x80";

std::string Volte(const std::string& testo, int quante) {
  std::string risultato;
  for (int i = 0; i < quante; ++i) risultato += testo;
  return risultato;
}

TEST_F(Caselle, UndoingNeverMeetsWhatWasRefused) {
  Mostra([](QWidget& finestra) {
    Digita(finestra, "TXT_OGGETTO", "prima");
    Incolla(finestra, "TXT_OGGETTO", std::string(200, 'z'));
    auto& riga = Trova<QLineEdit>(finestra, "TXT_OGGETTO");
    QTest::keyClick(&riga, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Contenuto(finestra, "TXT_OGGETTO"), "prima");
  });
}

TEST_F(Caselle, WhatTheProgramAddedToAnEmptyBodyComesBackOnceItWasUndone) {
  Mostra([this](QWidget& finestra) {
    const auto corpo = Controllo<host::KvlRichTextBox>("TXT_CORPO");
    Digita(finestra, "TXT_CORPO", "a");
    QTest::keyClick(&Trova(finestra, "TXT_CORPO"), Qt::Key_Backspace);
    corpo->Text("uno\r\ndue\ntre");
    EXPECT_EQ(Contenuto(finestra, "TXT_CORPO"), "uno\ndue\ntre");
    QTest::keyClick(&Trova(finestra, "TXT_CORPO"), Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(&Trova(finestra, "TXT_CORPO"), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(corpo->Text(), "uno\r\ndue\ntre");
  });
}

TEST_F(Caselle, AFullBodyTakesNoCharacterOfAnyKindFromTheKeyboard) {
  Mostra([this](QWidget& finestra) {
    const std::string pieno = Volte(kFaccina, 2000);
    const auto corpo = Controllo<host::KvlRichTextBox>("TXT_CORPO");
    Incolla(finestra, "TXT_CORPO", pieno + "x");
    EXPECT_TRUE(corpo->Text() == pieno);  // too long to be shown
    auto& casella = Trova(finestra, "TXT_CORPO");
    for (const char* scritto : {"a", kFaccina, "\u200F", "\u200D", "\uE000", "è"}) {
      QTest::sendKeyEvent(QTest::Click, &casella, Qt::Key_unknown, QString::fromUtf8(scritto),
                          Qt::NoModifier);
      EXPECT_TRUE(corpo->Text() == pieno) << scritto;
    }
    QTest::keyClick(&casella, Qt::Key_Backspace);
    QTest::sendKeyEvent(QTest::Click, &casella, Qt::Key_unknown, QString::fromUtf8(kFaccina), Qt::NoModifier);
    EXPECT_TRUE(corpo->Text() == pieno);
  });
}

TEST_F(Caselle, AFullBodyStillTakesCommands) {
  Mostra([this](QWidget& finestra) {
    Controllo<host::KvlRichTextBox>("TXT_CORPO")->Text(std::string(5000, 'p'));
    Riscrive(finestra, "TXT_CORPO", "nuovo");
    EXPECT_EQ(Contenuto(finestra, "TXT_CORPO"), "nuovo");
  });
}

TEST_F(Caselle, ALinkCopiedInABrowserIsPasted) {
  Mostra([](QWidget& finestra) {
    for (const char* nome : {"TXT_CORPO", "TXT_OGGETTO"}) {
      auto dati = std::make_unique<QMimeData>();
      dati->setText(QStringLiteral("https://azienda.example/listino"));
      dati->setUrls({QUrl(QStringLiteral("https://azienda.example/listino"))});
      QApplication::clipboard()->setMimeData(dati.release());
      QTest::keyClick(&Trova(finestra, nome), Qt::Key_V, Qt::ControlModifier);
      EXPECT_EQ(Contenuto(finestra, nome), "https://azienda.example/listino") << nome;
    }
  });
}

TEST_F(Caselle, TabLeavesTheBody) {
  Mostra([](QWidget& finestra) {
    Trova(finestra, "TXT_CORPO").setFocus();
    QTest::keyClick(&Trova(finestra, "TXT_CORPO"), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName().toStdString(), "CMD_LEGENDA");
    EXPECT_EQ(Contenuto(finestra, "TXT_CORPO"), "");
  });
}

}  // namespace
}  // namespace orve::adapters::qt
