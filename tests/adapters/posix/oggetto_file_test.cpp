// The host's file objects on real files.
#include "posix/oggetto_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <string>

#include "fakes/errori.h"
#include "posix/errori.h"
#include "prova.h"

namespace orve::adapters::posix {
namespace {

using fakes::NumeroDi;

namespace fs = std::filesystem;

std::string Libreria(std::string percorso) {
  std::replace(percorso.begin(), percorso.end(), '/', '\\');
  return percorso;
}

std::string Unix(std::string percorso) {
  std::replace(percorso.begin(), percorso.end(), '\\', '/');
  return percorso;
}

class FileDellOspite : public ::testing::Test {
 protected:
  std::shared_ptr<OggettoFile> Nuovo() { return std::make_shared<OggettoFile>(copie); }
  std::shared_ptr<OggettoFile> Aperto(const std::string& nome) {
    auto file = Nuovo();
    file->Apri(nome, Libreria(cartella.Radice()), 0);
    return file;
  }
  std::string Scrivi(const std::string& nome, const std::string& contenuto) {
    std::ofstream(cartella / nome, std::ios::binary) << contenuto;
    return cartella / nome;
  }

  CartellaDiProva cartella;
  std::shared_ptr<CartellaCopie> copie = std::make_shared<CartellaCopie>(cartella.Radice());
};

TEST_F(FileDellOspite, AnObjectBoundToNothingRaises91) {
  const auto file = Nuovo();
  EXPECT_EQ(NumeroDi([&] { static_cast<void>(file->Nome()); }), host::kOggettoNonImpostato);
  EXPECT_EQ(NumeroDi([&] { static_cast<void>(file->Esiste()); }), host::kOggettoNonImpostato);
  EXPECT_EQ(NumeroDi([&] { static_cast<void>(file->Percorso()); }), host::kOggettoNonImpostato);
  EXPECT_EQ(NumeroDi([&] { static_cast<void>(file->Posizione()); }), host::kOggettoNonImpostato);
}

TEST_F(FileDellOspite, NameAndPathOutliveTheClosing) {
  Scrivi("a è.pdf", "x");
  const auto file = Aperto("a è.pdf");
  EXPECT_TRUE(file->Esiste());
  file->Chiudi();
  EXPECT_EQ(file->Nome(), "a è.pdf");
  EXPECT_EQ(file->Percorso(), Libreria(cartella / "a è.pdf"));
}

TEST_F(FileDellOspite, AFolderAndAMissingFileDoNotExist) {
  fs::create_directory(cartella / "sotto");
  EXPECT_FALSE(Aperto("sotto")->Esiste());
  EXPECT_FALSE(Aperto("manca")->Esiste());
}

TEST_F(FileDellOspite, AnEmptyDirectoryLeavesTheNameToStandForItself) {
  const auto file = Nuovo();
  file->Apri("solo.txt", "", 0);
  EXPECT_EQ(file->Percorso(), "solo.txt");
  EXPECT_EQ(file->Nome(), "solo.txt");
}

TEST_F(FileDellOspite, AFileOfTheLocalDiskNeedsNoCopy) {
  Scrivi("a", "x");
  EXPECT_EQ(Aperto("a")->Posizione(), 0);
  EXPECT_EQ(Aperto("manca")->Posizione(), 0);
}

TEST_F(FileDellOspite, ACopyHasTheContentTheNameAndAPlaceOfItsOwn) {
  const std::string grande(300000, 'z');
  Scrivi("dati.bin", grande);
  const auto origine = Aperto("dati.bin");
  const auto prima = Nuovo();
  const auto seconda = Nuovo();
  prima->Crea(host::OggettoFile::kCopia, "dati.bin", "", 0);
  seconda->Crea(host::OggettoFile::kCopia, "dati.bin", "", 0);
  EXPECT_NE(prima->Percorso(), seconda->Percorso());
  EXPECT_FALSE(prima->Esiste());
  origine->CopiaIn(prima, 0);
  EXPECT_EQ(prima->Nome(), "dati.bin");
  EXPECT_TRUE(prima->Esiste());
  EXPECT_EQ(Contenuto(Unix(prima->Percorso())), grande);
  struct stat stato {};
  ASSERT_EQ(::stat(Unix(prima->Percorso()).c_str(), &stato), 0);
  EXPECT_EQ(stato.st_mode & 0777, 0600U);
}

TEST_F(FileDellOspite, ACopyIsAsLongAsTheFileWasAtItsOpening) {
  // The kernel's files give more, or less, than they say they hold, as those do that change meanwhile.
  const auto copiaDi = [this](const std::string& cartellaDelNucleo, const std::string& nome) {
    const auto origine = Nuovo();
    origine->Apri(nome, Libreria(cartellaDelNucleo), 0);
    const auto copia = Nuovo();
    copia->Crea(host::OggettoFile::kCopia, nome, "", 0);
    origine->CopiaIn(copia, 0);
    return Contenuto(Unix(copia->Percorso()));
  };
  EXPECT_EQ(copiaDi("/proc/self", "status"), "");
  // A system in a folder, without the kernel's devices, has no such file.
  if (!fs::exists("/sys/class/net/lo/mtu")) return;
  EXPECT_EQ(NumeroDi([&] { copiaDi("/sys/class/net/lo", "mtu"); }), kErroreDispositivo);
}

TEST_F(FileDellOspite, WhatIsNoFileIsNeitherWaitedForNorCopied) {
  ASSERT_EQ(::mkfifo((cartella / "tubo").c_str(), 0600), 0);
  const auto copia = Nuovo();
  copia->Crea(host::OggettoFile::kCopia, "tubo", "", 0);
  EXPECT_EQ(NumeroDi([&] { Aperto("tubo")->CopiaIn(copia, 0); }), kPermessoNegato);
  EXPECT_FALSE(copia->Esiste());
}

TEST_F(FileDellOspite, ACopyOutlivesWhoeverMadeIt) {
  Scrivi("a", "x");
  auto copia = Nuovo();
  copia->Crea(host::OggettoFile::kCopia, "a", "", 0);
  Aperto("a")->CopiaIn(copia, 0);
  const std::string percorso = Unix(copia->Percorso());
  copia.reset();
  copie.reset();
  EXPECT_TRUE(fs::exists(percorso));
}

TEST_F(FileDellOspite, CopiesGoOnWhenTheirFolderHasBeenCleared) {
  const std::string prima = Unix(copie->PostoPer("a"));
  fs::remove_all(fs::path(prima).parent_path().parent_path());
  const std::string poi = Unix(copie->PostoPer("a"));
  EXPECT_NE(poi, prima);
  EXPECT_TRUE(fs::is_directory(fs::path(poi).parent_path()));
}

TEST_F(FileDellOspite, OldCopiesAreRemovedWhenTheNextFolderIsMade) {
  const auto cartellaDi = [this] {
    return fs::path(Unix(CartellaCopie(cartella.Radice()).PostoPer("a"))).parent_path().parent_path();
  };
  const auto invecchia = [](const fs::path& quale, std::chrono::hours ore) {
    fs::last_write_time(quale, fs::file_time_type::clock::now() - ore);
  };
  const fs::path vecchia = cartellaDi();
  const fs::path recente = cartellaDi();
  const fs::path daltri = cartella / "altro-XXXXXX";
  fs::create_directory(daltri);
  fs::create_directory_symlink(daltri, cartella / "orve-allegati-legame");
  invecchia(vecchia, values::kVitaDelleCopie + std::chrono::hours(1));
  invecchia(recente, values::kVitaDelleCopie - std::chrono::hours(1));
  invecchia(daltri, values::kVitaDelleCopie + std::chrono::hours(1));
  const fs::path nuova = cartellaDi();
  EXPECT_FALSE(fs::exists(vecchia));
  EXPECT_TRUE(fs::exists(recente));
  EXPECT_TRUE(fs::exists(nuova));
  EXPECT_TRUE(fs::exists(cartella / "orve-allegati-legame")) << "a link is nobody's copy";
  EXPECT_TRUE(fs::exists(daltri));
}

TEST_F(FileDellOspite, ACopyThatFailsLeavesNoFile) {
  const auto copia = Nuovo();
  copia->Crea(host::OggettoFile::kCopia, "a", "", 0);
  EXPECT_NE(NumeroDi([&] { Aperto("manca")->CopiaIn(copia, 0); }), 0);
  EXPECT_FALSE(copia->Esiste());
  EXPECT_EQ(NumeroDi([&] { Aperto("manca")->CopiaIn(nullptr, 0); }), host::kOggettoNonImpostato);
}

TEST_F(FileDellOspite, ATextThatIsNoPlainFileNameIsRefused) {
  for (const char* nome : {"", ".", "..", "a/b", "a\\b", "..\\fuori"}) {
    EXPECT_EQ(NumeroDi([&] { Nuovo()->Crea(host::OggettoFile::kCopia, nome, "", 0); }), kNomeFileNonValido)
        << nome;
  }
  EXPECT_EQ(NumeroDi([&] { Nuovo()->Crea(3, "a", "", 0); }), host::kArgomentoNonValido);
}

}  // namespace
}  // namespace orve::adapters::posix
