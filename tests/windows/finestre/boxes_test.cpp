// The boxes of text: what the person types and pastes is limited, what the program writes is not.
#include <string>

#include "prova.h"

namespace orve::adapters::win32::finestre {
namespace {

constexpr const char* kEmoji = "😀";

std::string Volte(const std::string& testo, int volte) {
  std::string tutto;
  for (int i = 0; i < volte; ++i) tutto += testo;
  return tutto;
}

class Caselle : public ::testing::Test {
 protected:
  void Mostra(std::function<void(const Vista&)> persona) {
    const Compagno qualcuno(InFinestra(programma, LayoutOpzMail(), std::move(persona)));
    form->Show(host::Form::kModale, nullptr);
  }
  template <class Tipo>
  std::string Letto(const char* nome) {
    std::string testo;
    programma.Esegui([&] { testo = host::ControlloDi<Tipo>(*form, nome)->Text(); });
    return testo;
  }
  template <class Tipo>
  void Scritto(const char* nome, const std::string& testo) {
    programma.Esegui([&] { host::ControlloDi<Tipo>(*form, nome)->Text(testo); });
  }
  std::string Oggetto() { return Letto<host::TxtEdit>("TXT_OGGETTO"); }
  std::string Corpo() { return Letto<host::KvlRichTextBox>("TXT_CORPO"); }

  Programma programma;
  Finestre finestre;
  std::shared_ptr<host::Form> form = finestre.CreaForm(LayoutOpzMail());
};

TEST_F(Caselle, AnEmojiArrivesInHalvesAndCountsAsOneCharacter) {
  Mostra([this](const Vista& finestra) {
    finestra.Riscrive("TXT_OGGETTO", Volte(kEmoji, 101));
    EXPECT_EQ(Oggetto(), Volte(kEmoji, 100));
  });
}

TEST_F(Caselle, UndoingNeverMeetsWhatWasRefused) {
  Mostra([this](const Vista& finestra) {
    finestra.Digita("TXT_OGGETTO", "prima");
    finestra.Incolla("TXT_OGGETTO", std::string(200, 'z'));
    SendMessageW(finestra.Trova("TXT_OGGETTO"), WM_UNDO, 0, 0);
    EXPECT_THAT(Oggetto(), ::testing::AnyOf("", "prima"));
  });
}

// This is how tools for people who cannot type write into a box.
TEST_F(Caselle, WhatAnotherProgramWritesIsThePersonsAndIsCut) {
  Mostra([this](const Vista& finestra) {
    Scritto<host::TxtEdit>("TXT_OGGETTO", "del programma");
    const std::wstring lungo(150, L'd');
    SendMessageW(finestra.Trova("TXT_OGGETTO"), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(lungo.c_str()));
    EXPECT_EQ(Oggetto(), std::string(100, 'd'));
    SendMessageW(finestra.Trova("TXT_CORPO"), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"detto\r\na voce"));
    EXPECT_EQ(Corpo(), "detto\r\na voce");
  });
}

TEST_F(Caselle, TheMenuOfTheBodyOffersWhatCanBeDone) {
  using ::testing::ElementsAre;
  Mostra([this](const Vista& finestra) {
    finestra.Appunti("altro");
    EXPECT_THAT(finestra.VociDelTesto("TXT_CORPO"),
                ElementsAre("(&Annulla)", "", "(&Taglia)", "(&Copia)", "&Incolla", "(&Elimina)", "",
                            "(&Seleziona tutto)"));
    finestra.Digita("TXT_CORPO", "uno due");
    EXPECT_THAT(finestra.VociDelTesto("TXT_CORPO"),
                ElementsAre("&Annulla", "", "(&Taglia)", "(&Copia)", "&Incolla", "(&Elimina)", "",
                            "&Seleziona tutto"));
    finestra.Seleziona("TXT_CORPO", 0, 3);
    EXPECT_THAT(
        finestra.VociDelTesto("TXT_CORPO"),
        ElementsAre("&Annulla", "", "&Taglia", "&Copia", "&Incolla", "&Elimina", "", "&Seleziona tutto"));
    EXPECT_EQ(Corpo(), "uno due");
  });
}

TEST_F(Caselle, WhatTheProgramWroteIsNotForThePersonToUndo) {
  Mostra([this](const Vista& finestra) {
    finestra.Digita("TXT_CORPO", "scritto a mano");
    Scritto<host::KvlRichTextBox>("TXT_CORPO", "del programma");
    EXPECT_EQ(finestra.VociDelTesto("TXT_CORPO").front(), "(&Annulla)");
    SendMessageW(finestra.Trova("TXT_CORPO"), EM_UNDO, 0, 0);
    EXPECT_EQ(Corpo(), "del programma");
  });
}

TEST_F(Caselle, TheMenuOfTheBodyDoesWhatItOffers) {
  Mostra([this](const Vista& finestra) {
    finestra.Digita("TXT_CORPO", "uno due");
    finestra.Seleziona("TXT_CORPO", 0, 3);
    finestra.ScegliePerTesto("TXT_CORPO", "&Copia");
    EXPECT_EQ(finestra.Appunti(), "uno");
    EXPECT_EQ(Corpo(), "uno due");
    finestra.Seleziona("TXT_CORPO", 3, 7);
    finestra.ScegliePerTesto("TXT_CORPO", "&Taglia");
    EXPECT_EQ(finestra.Appunti(), " due");
    EXPECT_EQ(Corpo(), "uno");
    finestra.ScegliePerTesto("TXT_CORPO", "&Annulla");
    EXPECT_EQ(Corpo(), "uno due");
    finestra.Seleziona("TXT_CORPO", 0, 4);
    finestra.ScegliePerTesto("TXT_CORPO", "&Elimina");
    EXPECT_EQ(Corpo(), "due");
    EXPECT_EQ(finestra.Appunti(), " due");
    finestra.ScegliePerTesto("TXT_CORPO", "&Seleziona tutto");
    finestra.ScegliePerTesto("TXT_CORPO", "&Incolla");
    EXPECT_EQ(Corpo(), " due");
  });
}

TEST_F(Caselle, TheMenuOfTheBodyPastesAsFarAsThereIsRoom) {
  Mostra([this](const Vista& finestra) {
    finestra.Digita("TXT_CORPO", "a");
    finestra.Appunti(std::string(3000, 'b'));
    finestra.ScegliePerTesto("TXT_CORPO", "&Incolla");
    EXPECT_EQ(Corpo(), "a" + std::string(1999, 'b'));
  });
}

TEST_F(Caselle, MoreDotsToTheInchMakeEverythingLarger) {
  Mostra([](const Vista& finestra) {
    RECT posto = {0, 0, 900, 700};
    SendMessageW(finestra.Finestra(), WM_DPICHANGED, MAKEWPARAM(120, 120), reinterpret_cast<LPARAM>(&posto));
    const RECT casella = finestra.Posto("TXT_OGGETTO");
    EXPECT_EQ(casella.left, 76);
    EXPECT_EQ(casella.top, 20);
    EXPECT_EQ(casella.bottom - casella.top, 25);
    const RECT combo = finestra.Posto("CMB_ACCOUNT");
    EXPECT_EQ(combo.bottom - combo.top, 26);
  });
}

TEST_F(Caselle, ARequestToEndTheProgramClosesTheWindowAndIsPassedOn) {
  int chiusure = 0;
  form->Unload = [&] { ++chiusure; };
  PostQuitMessage(7);
  form->Show(host::Form::kModale, nullptr);
  EXPECT_EQ(chiusure, 1);
  MSG messaggio = {};
  ASSERT_EQ(PeekMessageW(&messaggio, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE), TRUE);
  EXPECT_EQ(messaggio.wParam, 7U);
}

TEST_F(Caselle, TheWindowsOfTheApplicationTakeNoInputWhileTheWindowIsThere) {
  auto* una = CreateWindowExW(0, L"Static", L"", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr, nullptr,
                              nullptr, nullptr);
  auto* spenta = CreateWindowExW(0, L"Static", L"", WS_POPUP | WS_VISIBLE | WS_DISABLED, 0, 0, 50, 50,
                                 nullptr, nullptr, nullptr, nullptr);
  Mostra([&](const Vista&) {
    EXPECT_FALSE(IsWindowEnabled(una));
    EXPECT_FALSE(IsWindowEnabled(spenta));
  });
  EXPECT_TRUE(IsWindowEnabled(una));
  EXPECT_FALSE(IsWindowEnabled(spenta));
  DestroyWindow(una);
  DestroyWindow(spenta);
}

// From a handler of the first window, as a program's own code may.
TEST_F(Caselle, AWindowOpensInsideAnother) {
  const auto parametri = finestre.CreaForm(LayoutMailParams());
  host::ControlloDi<host::KVL_TBARMENU>(*form, "KVL_ALLEGA")->ButtonClick = [&] {
    parametri->Show(host::Form::kModale, form);
  };
  Mostra([this](const Vista& finestra) {
    finestra.Clicca("KVL_ALLEGA");
    InFinestra(programma, LayoutMailParams(), [&](const Vista& seconda) {
      EXPECT_FALSE(IsWindowEnabled(finestra.Finestra()));
      EXPECT_EQ(GetWindow(seconda.Finestra(), GW_OWNER), finestra.Finestra());
      seconda.Chiude();
    })();
    EXPECT_TRUE(Attendi([&] { return IsWindowEnabled(finestra.Finestra()) != FALSE; }));
    EXPECT_TRUE(finestra.Aperta());
  });
}

}  // namespace
}  // namespace orve::adapters::win32::finestre
