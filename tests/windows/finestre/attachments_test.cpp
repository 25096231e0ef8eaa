// Attachments in the real window, on real files of Windows.
#include <fstream>
#include <iterator>

#include "prova.h"
#include "win32/finestre/oggetto_file.h"
#include "win32/finestre/testo.h"

namespace orve::adapters::win32::finestre {
namespace {

using ::testing::IsEmpty;

class Allegati : public FinestraVera {
 protected:
  Allegati() { Collezione().AddFromLista("anna@x.example", "Anna", "", 0); }

  static void Invia(const Vista& finestra) {
    finestra.Clicca("cmd_Invia");
    EXPECT_TRUE(Attendi([&] { return !finestra.Aperta(); }));
  }
};

// It asks the person for each file and would lose the dropped one.
TEST_F(Allegati, NothingCanBeDroppedWhereTheChooserIsTheHosts) {
  accettaFile = false;
  Apri([&](const Vista& finestra) {
    EXPECT_EQ(GetWindowLongPtrW(finestra.Finestra(), GWL_EXSTYLE) & WS_EX_ACCEPTFILES, 0);
    finestra.Lascia({cartella.File("uno.pdf")});
    EXPECT_THAT(finestra.Righe(), IsEmpty());
    Invia(finestra);
  });
  EXPECT_THAT(Consegnati(), IsEmpty());
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
  Invecchia(vecchia.parent_path().parent_path(), values::kVitaDelleCopie + std::chrono::hours(1));
  Invecchia(recente.parent_path().parent_path(), values::kVitaDelleCopie - std::chrono::hours(1));
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
