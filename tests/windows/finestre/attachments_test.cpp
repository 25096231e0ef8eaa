// Attachments in the real window, on real files of Windows.
#include <fstream>
#include <iterator>

#include "prova.h"
#include "win32/finestre/oggetto_file.h"
#include "win32/finestre/testo.h"

namespace orve::adapters::win32::finestre {
namespace {

using host::Variant;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Allegati : public FinestraVera {
 protected:
  Allegati() { Collezione().AddFromLista("anna@x.example", "Anna", "", 0); }

  void Allega(const Vista& finestra, const std::string& percorso) {
    finestra.Clicca("KVL_ALLEGA");
    EXPECT_EQ(ScegliFile(programma, percorso), "Allega file");
  }
  static void Invia(const Vista& finestra) {
    finestra.Clicca("cmd_Invia");
    EXPECT_TRUE(Attendi([&] { return !finestra.Aperta(); }));
  }
  [[nodiscard]] std::vector<std::string> Consegnati() const {
    std::vector<std::string> percorsi;
    if (servizio->vElencoAllegati.IsEmpty()) return percorsi;
    for (const auto& uno : std::as_const(servizio->vElencoAllegati).ToArray())
      percorsi.push_back(uno.Joined());
    return percorsi;
  }
};

const std::vector<std::string> kSpente = {"(Elimina allegato)", "(Elimina tutti gli allegati)"};
const std::vector<std::string> kAccese = {"Elimina allegato", "Elimina tutti gli allegati"};

TEST_F(Allegati, AChosenFileIsListedAndSent) {
  const std::string uno = cartella.File("uno.pdf");
  const std::string due = cartella.File("due è.pdf");
  Apri([&](const Vista& finestra) {
    EXPECT_EQ(finestra.VociDiMenu("BTN_ELIMINA"), kSpente);
    Allega(finestra, uno);
    Allega(finestra, due);
    EXPECT_THAT(finestra.Righe(), ElementsAre("uno.pdf", "due è.pdf"));
    EXPECT_EQ(finestra.RigaSelezionata(), 2);
    EXPECT_EQ(finestra.VociDiMenu("BTN_ELIMINA"), kAccese);
    Invia(finestra);
  });
  EXPECT_THAT(Consegnati(), ElementsAre(uno, due));
}

TEST_F(Allegati, AFileChosenTwiceIsListedOnce) {
  const std::string uno = cartella.File("uno.pdf");
  Apri([&](const Vista& finestra) {
    Allega(finestra, uno);
    Allega(finestra, uno);
    EXPECT_THAT(finestra.Righe(), ElementsAre("uno.pdf"));
  });
}

TEST_F(Allegati, LeavingTheChoiceAddsNothing) {
  Apri([&](const Vista& finestra) {
    Allega(finestra, "");
    EXPECT_THAT(finestra.Righe(), IsEmpty());
    EXPECT_TRUE(finestra.Aperta());
  });
}

TEST_F(Allegati, DroppedFilesAreListedAndSentWithoutAsking) {
  const std::string uno = cartella.File("uno.pdf");
  const std::string due = cartella.File("due è.pdf");
  Apri([&](const Vista& finestra) {
    finestra.Lascia({uno, due});
    EXPECT_THAT(finestra.Righe(), ElementsAre("uno.pdf", "due è.pdf"));
    EXPECT_EQ(finestra.RigaSelezionata(), 2);
    finestra.Lascia({due});
    EXPECT_THAT(finestra.Righe(), ElementsAre("uno.pdf", "due è.pdf"));
    Invia(finestra);
  });
  EXPECT_THAT(Consegnati(), ElementsAre(uno, due));
}

TEST_F(Allegati, ANameThatTurnsTheTextRoundIsShownAsItStandsAndAttachedAsItIs) {
  const std::string file = cartella.File("fattura\u200Ffdp.exe");
  Apri([&](const Vista& finestra) {
    finestra.Lascia({file});
    EXPECT_THAT(finestra.Righe(), ElementsAre("fattura\\u200Ffdp.exe"));
    Invia(finestra);
  });
  EXPECT_THAT(Consegnati(), ElementsAre(file));
}

TEST_F(Allegati, ADroppedFileFromOutsideTravelsAsACopy) {
  vaCopiato = true;
  const std::string chiavetta = cartella.File("chiavetta.txt", "dati");
  Apri([&](const Vista& finestra) {
    finestra.Lascia({chiavetta});
    EXPECT_THAT(finestra.Righe(), ElementsAre("chiavetta.txt"));
    Invia(finestra);
  });
  ASSERT_EQ(Consegnati().size(), 1U);
  EXPECT_NE(Consegnati().front(), chiavetta);
}

// It asks the person for each file and would lose the dropped one.
TEST_F(Allegati, NothingCanBeDroppedWhereTheChooserIsTheHosts) {
  ambiente->accettaFile = false;
  Apri([&](const Vista& finestra) {
    EXPECT_EQ(GetWindowLongPtrW(finestra.Finestra(), GWL_EXSTYLE) & WS_EX_ACCEPTFILES, 0);
    finestra.Lascia({cartella.File("uno.pdf")});
    EXPECT_THAT(finestra.Righe(), IsEmpty());
    Invia(finestra);
  });
  EXPECT_THAT(Consegnati(), IsEmpty());
}

// A choice that comes afterwards is the person's again.
TEST_F(Allegati, WhatWasDroppedIsUsedUp) {
  Apri([&](const Vista& finestra) {
    finestra.Lascia({cartella.File("uno.pdf")});
    Allega(finestra, cartella.File("due.pdf"));
    EXPECT_THAT(finestra.Righe(), ElementsAre("uno.pdf", "due.pdf"));
  });
}

TEST_F(Allegati, NothingCanBeDroppedBehindAMessage) {
  servizio->vElencoAllegati = Variant::Array{cartella.File("a.txt")};
  Apri([&](const Vista& finestra) {
    finestra.Sceglie("BTN_ELIMINA", "Elimina tutti gli allegati");
    EXPECT_TRUE(Attendi([&] { return IsWindowEnabled(finestra.Finestra()) == FALSE; }));
    finestra.Lascia({cartella.File("b.txt")});
    Risponde(programma, "Rimuovere tutti gli allegati dalla mail?", IDNO);
    EXPECT_THAT(finestra.Righe(), ElementsAre("a.txt"));
  });
}

TEST_F(Allegati, TheRowThatIsChosenIsTheOneThatGoes) {
  servizio->vElencoAllegati =
      Variant::Array{cartella.File("a.txt"), cartella.File("b.txt"), cartella.File("c.txt")};
  Apri([&](const Vista& finestra) {
    EXPECT_THAT(finestra.Righe(), ElementsAre("a.txt", "b.txt", "c.txt"));
    EXPECT_EQ(finestra.RigaSelezionata(), 3);
    finestra.Fuoco("GRID_ALLEGATI");
    finestra.Tasto(VK_UP);
    EXPECT_EQ(finestra.RigaSelezionata(), 2);
    finestra.Sceglie("BTN_ELIMINA", "Elimina allegato");
    EXPECT_TRUE(Attendi([&] { return finestra.Righe().size() == 2; }));
    EXPECT_THAT(finestra.Righe(), ElementsAre("a.txt", "c.txt"));
    Invia(finestra);
  });
  EXPECT_EQ(Consegnati().size(), 2U);
}

TEST_F(Allegati, AfterARemovalTheRowInItsPlaceIsSelected) {
  servizio->vElencoAllegati =
      Variant::Array{cartella.File("a.txt"), cartella.File("b.txt"), cartella.File("c.txt")};
  Apri([&](const Vista& finestra) {
    finestra.Fuoco("GRID_ALLEGATI");
    finestra.Tasto(VK_HOME);
    finestra.Sceglie("BTN_ELIMINA", "Elimina allegato");
    EXPECT_TRUE(Attendi([&] { return finestra.Righe().size() == 2; }));
    programma.Respira();
    EXPECT_EQ(finestra.RigaSelezionata(), 1);
    finestra.Sceglie("BTN_ELIMINA", "Elimina allegato");
    EXPECT_TRUE(Attendi([&] { return finestra.Righe().size() == 1; }));
    EXPECT_THAT(finestra.Righe(), ElementsAre("c.txt"));
  });
}

TEST_F(Allegati, AllOfThemGoOnlyWhenThePersonSaysYes) {
  servizio->vElencoAllegati = Variant::Array{cartella.File("a.txt"), cartella.File("b.txt")};
  Apri([&](const Vista& finestra) {
    finestra.Sceglie("BTN_ELIMINA", "Elimina tutti gli allegati");
    Risponde(programma, "Rimuovere tutti gli allegati dalla mail?", IDNO);
    EXPECT_THAT(finestra.Righe(), ElementsAre("a.txt", "b.txt"));
    finestra.Sceglie("BTN_ELIMINA", "Elimina tutti gli allegati");
    Risponde(programma, "Rimuovere tutti gli allegati dalla mail?", IDYES);
    EXPECT_TRUE(Attendi([&] { return finestra.Righe().empty(); }));
    EXPECT_EQ(finestra.VociDiMenu("BTN_ELIMINA"), kSpente);
  });
}

TEST_F(Allegati, AFileThatIsNotThereIsNotListed) {
  servizio->vElencoAllegati = Variant::Array{cartella.Radice() + "\\manca.pdf"};
  Apri([&](const Vista& finestra) { EXPECT_THAT(finestra.Righe(), IsEmpty()); });
}

TEST_F(Allegati, AFileFromOutsideTravelsAsACopy) {
  vaCopiato = true;
  const std::string chiavetta = cartella.File("chiavetta.txt", "dati");
  Apri([&](const Vista& finestra) {
    Allega(finestra, chiavetta);
    EXPECT_THAT(finestra.Righe(), ElementsAre("chiavetta.txt"));
    std::filesystem::remove(Largo(chiavetta));
    Invia(finestra);
  });
  ASSERT_EQ(Consegnati().size(), 1U);
  const std::string copia = Consegnati().front();
  EXPECT_NE(copia, chiavetta);
  EXPECT_TRUE(copia.ends_with("\\chiavetta.txt"));
  std::ifstream flusso(std::filesystem::path(Largo(copia)), std::ios::binary);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(flusso), {}), "dati");
}

// Sets the time of a folder's last change back by that much.
void Invecchia(const std::filesystem::path& cartella, std::chrono::hours ore) {
  auto* aperta = CreateFileW(cartella.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE,
                             nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  ASSERT_NE(aperta, INVALID_HANDLE_VALUE);
  FILETIME adesso = {};
  GetSystemTimeAsFileTime(&adesso);
  constexpr std::int64_t kTacchePerOra = 36'000'000'000;  // of 100 nanoseconds
  ULARGE_INTEGER tacche = {};
  tacche.LowPart = adesso.dwLowDateTime;
  tacche.HighPart = adesso.dwHighDateTime;
  tacche.QuadPart -= static_cast<std::uint64_t>(ore.count() * kTacchePerOra);
  const FILETIME allora = {tacche.LowPart, tacche.HighPart};
  EXPECT_NE(SetFileTime(aperta, nullptr, nullptr, &allora), FALSE);
  CloseHandle(aperta);
}

TEST(FileDiWindows, ACopyOutlivesWhoeverMadeItUntilItIsOldAlsoWhenNobodyMayWriteIt) {
  const CartellaDiProva cartella;
  const std::string origine = cartella.File("sola lettura è.txt", "dati");
  SetFileAttributesW(Largo(origine).c_str(), FILE_ATTRIBUTE_READONLY);
  const auto copiata = [&] {
    const auto copie = std::make_shared<CartellaCopie>(cartella.Radice());
    OggettoFile file(copie);
    file.Apri("sola lettura è.txt", cartella.Radice(), 0);
    const auto nuovo = std::make_shared<OggettoFile>(copie);
    nuovo->Crea(host::OggettoFile::kCopia, file.Nome(), "", 0);
    EXPECT_FALSE(nuovo->Esiste());
    file.CopiaIn(nuovo, 0);
    EXPECT_TRUE(nuovo->Esiste());
    return std::filesystem::path(Largo(nuovo->Percorso()));
  };
  const std::filesystem::path vecchia = copiata();
  const std::filesystem::path recente = copiata();
  EXPECT_TRUE(std::filesystem::exists(vecchia));
  Invecchia(vecchia.parent_path().parent_path(), kVitaDelleCopie + std::chrono::hours(1));
  Invecchia(recente.parent_path().parent_path(), kVitaDelleCopie - std::chrono::hours(1));
  EXPECT_TRUE(std::filesystem::exists(copiata()));
  EXPECT_FALSE(std::filesystem::exists(vecchia));
  EXPECT_TRUE(std::filesystem::exists(recente));
  SetFileAttributesW(Largo(origine).c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST(FileDiWindows, CopiesGoOnWhenTheirFolderHasBeenCleared) {
  const CartellaDiProva cartella;
  CartellaCopie copie(cartella.Radice());
  const std::filesystem::path prima = Largo(copie.PostoPer("a"));
  std::filesystem::remove_all(prima.parent_path().parent_path());
  const std::filesystem::path poi = Largo(copie.PostoPer("a"));
  EXPECT_NE(poi, prima);
  EXPECT_TRUE(std::filesystem::is_directory(poi.parent_path()));
}

TEST(FileDiWindows, AFolderIsNoFileAndAMissingOneIsToldAsSuch) {
  const CartellaDiProva cartella;
  const auto copie = std::make_shared<CartellaCopie>(cartella.Radice());
  OggettoFile file(copie);
  EXPECT_THROW(static_cast<void>(file.Nome()), host::Errore);
  file.Apri("", cartella.Radice(), 0);
  EXPECT_FALSE(file.Esiste());
  file.Apri("manca.txt", cartella.Radice(), 0);
  EXPECT_EQ(file.Nome(), "manca.txt");
  EXPECT_FALSE(file.Esiste());
  const auto nuovo = std::make_shared<OggettoFile>(copie);
  nuovo->Crea(host::OggettoFile::kCopia, "manca.txt", "", 0);
  try {
    file.CopiaIn(nuovo, 0);
    ADD_FAILURE() << "copied from nothing";
  } catch (const host::Errore& errore) {
    EXPECT_EQ(errore.Numero(), 53);
  }
}

TEST(FileDiWindows, NoNameLeavesTheFolderOfTheCopies) {
  CartellaCopie copie;
  for (const char* nome : {"", ".", "..", "a\\b", "a/b", "C:", "a|b", "stella*"}) {
    EXPECT_THROW(static_cast<void>(copie.PostoPer(nome)), host::Errore) << nome;
  }
}

}  // namespace
}  // namespace orve::adapters::win32::finestre
