// What a box accepts from the person and what from the program, on every toolkit. The window is by itself,
// with nobody listening to its events.
#include <string>

#include "window_contract/contratto.h"

namespace orve::window_contract {
namespace {

constexpr const char* kFaccina = "😀";

std::string Ripetuto(const std::string& testo, int quante) {
  std::string tutto;
  for (int i = 0; i < quante; ++i) tutto += testo;
  return tutto;
}

class ContrattoCaselle : public Contratto {
 protected:
  void Mostra(const Persona& persona) {
    toolkit->Mostra(LayoutOpzMail(), persona, [this] { form->Show(host::Form::kModale, nullptr); });
  }
  template <class Tipo>
  std::string Letto(const char* nome) {
    std::string testo;
    toolkit->NelProgramma([&] { testo = host::ControlloDi<Tipo>(*form, nome)->Text(); });
    return testo;
  }
  template <class Tipo>
  void Scritto(const char* nome, const std::string& testo) {
    toolkit->NelProgramma([&] { host::ControlloDi<Tipo>(*form, nome)->Text(testo); });
  }
  std::string Oggetto() { return Letto<host::TxtEdit>("TXT_OGGETTO"); }
  std::string Corpo() { return Letto<host::KvlRichTextBox>("TXT_CORPO"); }

  std::shared_ptr<host::Form> form = ambiente->CreaForm(LayoutOpzMail());
};

TEST_F(ContrattoCaselle, TypingStopsAtTheLimit) {
  Mostra([this](const Vista& finestra) {
    finestra.Digita("TXT_OGGETTO", std::string(99, 'a') + "bcd");
    EXPECT_EQ(finestra.Contenuto("TXT_OGGETTO"), std::string(99, 'a') + "b");
    EXPECT_EQ(Oggetto(), std::string(99, 'a') + "b");
  });
}

TEST_F(ContrattoCaselle, PastingIsCutAtTheLimit) {
  Mostra([this](const Vista& finestra) {
    finestra.Digita("TXT_OGGETTO", "inizio ");
    finestra.Incolla("TXT_OGGETTO", std::string(200, 'z'));
    EXPECT_EQ(finestra.Contenuto("TXT_OGGETTO"), "inizio " + std::string(93, 'z'));
    EXPECT_EQ(Oggetto(), "inizio " + std::string(93, 'z'));
  });
}

TEST_F(ContrattoCaselle, AnEmojiCountsAsOneCharacterAndIsNeverCutInTwo) {
  Mostra([this](const Vista& finestra) {
    finestra.Incolla("TXT_OGGETTO", std::string(98, 'a') + Ripetuto(kFaccina, 5));
    EXPECT_EQ(Oggetto(), std::string(98, 'a') + Ripetuto(kFaccina, 2));
    finestra.Incolla("TXT_OGGETTO", kFaccina);
    EXPECT_EQ(Oggetto(), std::string(98, 'a') + Ripetuto(kFaccina, 2));
    finestra.Digita("TXT_OGGETTO", kFaccina);
    EXPECT_EQ(Oggetto(), std::string(98, 'a') + Ripetuto(kFaccina, 2));
  });
}

TEST_F(ContrattoCaselle, PastedLineBreaksBecomeBlanksInABoxOfOneLine) {
  Mostra([this](const Vista& finestra) {
    finestra.Incolla("TXT_EMAIL", "a@x.example;\r\nb@x.example;\nc@x.example");
    EXPECT_EQ(finestra.Contenuto("TXT_EMAIL"), "a@x.example; b@x.example; c@x.example");
    EXPECT_EQ(Letto<host::TxtEdit>("TXT_EMAIL"), "a@x.example; b@x.example; c@x.example");
  });
}

TEST_F(ContrattoCaselle, TenThousandCharactersFitInAnAddressBoxAndOneMoreDoesNot) {
  Mostra([this](const Vista& finestra) {
    finestra.Incolla("TXT_EMAIL", std::string(10001, 'a'));
    EXPECT_EQ(Letto<host::TxtEdit>("TXT_EMAIL").size(), 10000U);
  });
}

TEST_F(ContrattoCaselle, TheProgramsTextStandsWhateverItsLengthAndTakesNothingMore) {
  Mostra([this](const Vista& finestra) {
    const std::string lungo(40000, 'p');
    Scritto<host::TxtEdit>("TXT_OGGETTO", lungo);
    EXPECT_TRUE(Oggetto() == lungo);
    finestra.Digita("TXT_OGGETTO", "x");
    EXPECT_TRUE(Oggetto() == lungo);
  });
}

TEST_F(ContrattoCaselle, TextOfTheProgramReadsBackByteByByte) {
  Mostra([this](const Vista&) {
    const std::string grezzo = "riga\nsola\xFF";
    Scritto<host::TxtEdit>("TXT_OGGETTO", grezzo);
    EXPECT_EQ(Oggetto(), grezzo);
    Scritto<host::KvlRichTextBox>("TXT_CORPO", "uno\ndue\r\ntre\r");
    EXPECT_EQ(Corpo(), "uno\ndue\r\ntre\r");
  });
}

TEST_F(ContrattoCaselle, TheBodyIsLimitedForThePersonAndNotForTheProgram) {
  Mostra([this](const Vista& finestra) {
    finestra.Digita("TXT_CORPO", "a");
    finestra.Incolla("TXT_CORPO", std::string(3000, 'b'));
    EXPECT_EQ(Corpo(), "a" + std::string(1999, 'b'));
    finestra.Digita("TXT_CORPO", "c");
    EXPECT_EQ(Corpo(), "a" + std::string(1999, 'b'));
    Scritto<host::KvlRichTextBox>("TXT_CORPO", std::string(5000, 'p'));
    EXPECT_TRUE(Corpo() == std::string(5000, 'p'));
    finestra.Digita("TXT_CORPO", "c");
    EXPECT_TRUE(Corpo() == std::string(5000, 'p'));
  });
}

TEST_F(ContrattoCaselle, RightToLeftTextComesBackAsTyped) {
  Mostra([this](const Vista& finestra) {
    const std::string scritto = "שלום ‏abc‎ مرحبا";
    finestra.Digita("TXT_OGGETTO", scritto);
    EXPECT_EQ(Oggetto(), scritto);
    finestra.Incolla("TXT_CORPO", scritto);
    EXPECT_EQ(Corpo(), scritto);
  });
}

TEST_F(ContrattoCaselle, AComboTakesEveryEntryAPositionCanName) {
  const auto combo = host::ControlloDi<host::KVL_COMBO>(*form, "CMB_ACCOUNT");
  std::int16_t cambio = -1;
  toolkit->NelProgramma([&] {
    for (int i = 0; i < 32767; ++i) combo->AddItemData("voce", static_cast<std::int16_t>(i - 16384));
    combo->AddItemData("ultima", 16383);
    EXPECT_THROW(combo->AddItemData("una di troppo", 0), host::Errore);
    EXPECT_EQ(combo->Text(), "");
    combo->Change = [&](std::int16_t posizione) { cambio = posizione; };
    combo->SelezionaPosizione(32767);
    EXPECT_EQ(cambio, 32767);
    EXPECT_EQ(combo->Text(), "16383");
  });
  Mostra([](const Vista& finestra) { EXPECT_EQ(finestra.Contenuto("CMB_ACCOUNT"), "ultima"); });
  toolkit->NelProgramma([&] {
    combo->EraseCombo();
    EXPECT_EQ(combo->Text(), "");
    EXPECT_EQ(cambio, 32767);
  });
}

TEST_F(ContrattoCaselle, SelectingByProgramRaisesChangeOnceAndByThePersonToo) {
  const auto combo = host::ControlloDi<host::KVL_COMBO>(*form, "CMB_ACCOUNT");
  std::vector<int> scelte;
  combo->Change = [&](std::int16_t posizione) { scelte.push_back(posizione); };
  combo->AddItemData("uno", 7);
  combo->AddItemData("due", 9);
  EXPECT_EQ(combo->Text(), "");
  combo->Text(std::int16_t{9});
  combo->Text(std::int16_t{8});
  EXPECT_EQ(combo->Text(), "");
  combo->SelezionaPosizione(0);
  Mostra([](const Vista& finestra) { finestra.VoceDopo("CMB_ACCOUNT"); });
  EXPECT_EQ(combo->Text(), "9");
  EXPECT_EQ(scelte, (std::vector<int>{1, -1, 0, 1}));
}

TEST_F(ContrattoCaselle, TheProgramsChangeOfACheckBoxIsToldBeforeTheCallReturns) {
  toolkit->NelProgramma([this] {
    const auto spunta = host::ControlloDi<host::KVL_CHECKBOX>(*form, "CHK_RICEVUTA");
    std::string visti;
    spunta->Change = [&] { visti += spunta->Text(); };
    spunta->Text("1");
    spunta->Text("1");
    spunta->Text("0");
    EXPECT_EQ(visti, "110");
    spunta->Change = [] { throw host::Errore(host::kOverflow); };
    EXPECT_THROW(spunta->Text("1"), host::Errore);
  });
}

TEST_F(ContrattoCaselle, AControlOutlivesItsForm) {
  const auto casella = host::ControlloDi<host::TxtEdit>(*form, "TXT_OGGETTO");
  const auto combo = host::ControlloDi<host::KVL_COMBO>(*form, "CMB_ACCOUNT");
  const auto proporzioni = host::ControlloDi<host::KVL_RESIZEFORM>(*form, "KVL_RESIZEFORM1");
  form.reset();
  casella->Text("resta");
  EXPECT_EQ(casella->Text(), "resta");
  combo->AddItemData("voce", 1);
  combo->SelezionaPosizione(0);
  EXPECT_EQ(combo->Text(), "1");
  proporzioni->Avvia();
  proporzioni->RegistraControllo("TXT_OGGETTO", 15);
}

}  // namespace
}  // namespace orve::window_contract
