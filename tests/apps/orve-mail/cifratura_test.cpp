#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "host/errore.h"
#include "orve-mail/chiave.h"
#include "orve-mail/cifratore_sodium.h"
#include "orve-mail/uscita.h"
#include "support/temp_dir.h"

namespace orve::app {

namespace {

using namespace std::string_literals;

std::shared_ptr<const Chiave> NuovaChiave() {
  return std::make_shared<const Chiave>(Chiave::Nuova());
}

std::string MotivoDi(const std::function<void()>& azione) {
  try {
    azione();
  } catch (const ErroreProgramma& errore) {
    EXPECT_EQ(errore.Stato(), Uscita::kNonUtilizzabile);
    return errore.what();
  }
  return "nessun errore";
}

}  // namespace

TEST(CifratoreSodium, WhatWasEncipheredComesBack) {
  CifratoreSodium cifratore(NuovaChiave());
  for (const std::string& password : {""s, "a"s, "perché? «sì»"s, "con\0nul"s, std::string(5000, 'x')}) {
    const std::string cifrata = cifratore.Cripta(password);
    EXPECT_EQ(cifrata.substr(0, 6), "orve1:");
    EXPECT_EQ(cifratore.Decripta(cifrata), password);
    EXPECT_TRUE(password.size() < 4 || cifrata.find(password) == std::string::npos);
  }
}

TEST(CifratoreSodium, TheSamePasswordNeverGivesTheSameTextTwice) {
  CifratoreSodium cifratore(NuovaChiave());
  EXPECT_NE(cifratore.Cripta("segreta"), cifratore.Cripta("segreta"));
}

TEST(CifratoreSodium, ATextThatWasNotEncipheredIsAnErrorThatDoesNotRepeatIt) {
  CifratoreSodium cifratore(NuovaChiave());
  for (const std::string& testo :
       {""s, "segreta"s, "orve1:"s, "orve1:segreta"s, "orve1:c2VncmV0YQ=="s, "orve2:AAAA"s}) {
    try {
      (void)cifratore.Decripta(testo);
      FAIL() << testo;
    } catch (const host::Errore& errore) {
      EXPECT_EQ(errore.Numero(), 5);
      EXPECT_EQ(errore.Descrizione(), "La password memorizzata non è stata cifrata con questa chiave");
    }
  }
}

TEST(CifratoreSodium, AChangedTextAndAnotherKeyAreErrors) {
  CifratoreSodium cifratore(NuovaChiave());
  std::string cifrata = cifratore.Cripta("segreta");
  EXPECT_THROW((void)CifratoreSodium(NuovaChiave()).Decripta(cifrata), host::Errore);
  char& cifra = cifrata[cifrata.size() / 2];
  cifra = cifra == 'A' ? 'B' : 'A';
  EXPECT_THROW((void)cifratore.Decripta(cifrata), host::Errore);
}

TEST(FileDellaChiave, IsMadeForItsOwnerAloneAndReadsBack) {
  const support::TempDir cartella;
  const std::string file = (cartella.Path() / "chiave").string();
  const Chiave chiave = Chiave::Nuova();
  chiave.Scrivi(file);
  struct stat stato {};
  ASSERT_EQ(::stat(file.c_str(), &stato), 0);
  EXPECT_EQ(stato.st_mode & 0777U, 0600U);
  EXPECT_EQ(Chiave::Leggi(file).Byte(), chiave.Byte());
}

TEST(FileDellaChiave, IsNeverWrittenOver) {
  const support::TempDir cartella;
  const std::string file = cartella.Write("chiave", "mia");
  EXPECT_EQ(MotivoDi([&] { Chiave::Nuova().Scrivi(file); }), "File della chiave " + file + ": File exists");
  EXPECT_EQ(support::ReadFile(file), "mia");
}

TEST(FileDellaChiave, ThatOthersMayReadOrWriteIsRefused) {
  const support::TempDir cartella;
  const std::string file = (cartella.Path() / "chiave").string();
  Chiave::Nuova().Scrivi(file);
  for (const mode_t permessi : {0640U, 0604U, 0620U, 0602U, 0610U, 0601U}) {
    ASSERT_EQ(::chmod(file.c_str(), permessi), 0);
    EXPECT_EQ(
        MotivoDi([&] { (void)Chiave::Leggi(file); }),
        "File della chiave " + file + ": è accessibile ad altri utenti; impostare i permessi con: chmod 600")
        << std::oct << permessi;
  }
}

TEST(FileDellaChiave, OfAnotherUserIsRefused) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can give a file away";
  const support::TempDir cartella;
  const std::string file = (cartella.Path() / "chiave").string();
  Chiave::Nuova().Scrivi(file);
  ASSERT_EQ(::chown(file.c_str(), 65534, 65534), 0);
  EXPECT_EQ(MotivoDi([&] { (void)Chiave::Leggi(file); }),
            "File della chiave " + file + ": appartiene a un altro utente");
}

TEST(FileDellaChiave, WithoutAKeyInItIsRefused) {
  const support::TempDir cartella;
  const Chiave chiave = Chiave::Nuova();
  chiave.Scrivi((cartella.Path() / "buona").string());
  const std::string buona = support::ReadFile(cartella.Path() / "buona");
  for (const std::string& contenuto : {""s, "segreto"s, buona.substr(0, 40), buona + "x"s, "x"s + buona,
                                       buona.substr(0, 20) + std::string(43, '*') + "\n"}) {
    const std::string file = cartella.Write("chiave", contenuto);
    ASSERT_EQ(::chmod(file.c_str(), 0600), 0);
    EXPECT_EQ(MotivoDi([&] { (void)Chiave::Leggi(file); }),
              "File della chiave " + file + ": non contiene una chiave di orve-mail");
  }
}

TEST(FileDellaChiave, ThatIsMissingOrAFolderOrAPipeIsRefusedAtOnce) {
  const support::TempDir cartella;
  const std::string manca = (cartella.Path() / "manca").string();
  EXPECT_EQ(MotivoDi([&] { (void)Chiave::Leggi(manca); }).find("File della chiave " + manca + ": "), 0U);
  EXPECT_NE(MotivoDi([&] { (void)Chiave::Leggi(cartella.Path().string()); }), "nessun errore");
  const std::string pipe = (cartella.Path() / "pipe").string();
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(MotivoDi([&] { (void)Chiave::Leggi(pipe); }), "File della chiave " + pipe + ": non è un file");
}

}  // namespace orve::app
