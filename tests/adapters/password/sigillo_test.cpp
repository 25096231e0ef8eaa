#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "orve-mailserver/host/errore.h"
#include "password/chiave.h"
#include "password/sigillo_password.h"
#include "support/temp_dir.h"

namespace orve::adapters::password {

namespace {

using namespace std::string_literals;

const LegamePassword kLegame{"fatture", "posta.example.net", 587, true};

std::shared_ptr<const Chiave> NuovaChiave() {
  return std::make_shared<const Chiave>(Chiave::Nuova());
}

std::string MotivoDi(const std::function<void()>& azione) {
  try {
    azione();
  } catch (const host::Errore& errore) {
    EXPECT_EQ(errore.Numero(), 70);
    return errore.Descrizione();
  }
  return "nessun errore";
}

}  // namespace

TEST(SigilloPassword, WhatWasSealedComesBack) {
  const SigilloPassword sigillo(NuovaChiave());
  for (const std::string& password : {""s, "a"s, "perché? «sì»"s, "con\0nul"s, std::string(5000, 'x')}) {
    const std::string sigillata = sigillo.Sigilla(password, kLegame);
    EXPECT_EQ(sigillata.substr(0, 6), "orve2:");
    EXPECT_EQ(sigillo.Apri(sigillata, kLegame).View(), password);
    EXPECT_TRUE(password.size() < 4 || sigillata.find(password) == std::string::npos);
  }
}

TEST(SigilloPassword, TheSamePasswordNeverGivesTheSameTextTwice) {
  const SigilloPassword sigillo(NuovaChiave());
  EXPECT_NE(sigillo.Sigilla("segreta", kLegame), sigillo.Sigilla("segreta", kLegame));
}

TEST(SigilloPassword, OpensForItsOwnLoginAndServerAlone) {
  const SigilloPassword sigillo(NuovaChiave());
  const std::string sigillata = sigillo.Sigilla("segreta", kLegame);
  const LegamePassword uguale{" fatture ", "POSTA.Example.net ", 587, true};
  EXPECT_EQ(sigillo.Apri(sigillata, uguale).View(), "segreta") << "written otherwise, and the same";
  for (const LegamePassword& altro : {LegamePassword{"fattur", "eposta.example.net", 587, true},
                                      LegamePassword{"Fatture", "posta.example.net", 587, true},
                                      LegamePassword{"fatture", "posta.example.org", 587, true},
                                      LegamePassword{"fatture", "posta.example.net", 588, true},
                                      LegamePassword{"fatture", "posta.example.net", 587, false}}) {
    EXPECT_THROW((void)sigillo.Apri(sigillata, altro), host::Errore) << altro.utente << " " << altro.Dove();
  }
}

TEST(SigilloPassword, ATextThatWasNotSealedIsAnErrorThatDoesNotRepeatIt) {
  const SigilloPassword sigillo(NuovaChiave());
  for (const std::string& testo : {""s, "segreta"s, "orve2:"s, "orve2:segreta"s, "orve2:c2VncmV0YQ=="s,
                                   "orve1:c2VncmV0YQ=="s, "orve3:AAAA"s}) {
    try {
      (void)sigillo.Apri(testo, kLegame);
      FAIL() << testo;
    } catch (const host::Errore& errore) {
      EXPECT_EQ(errore.Numero(), 5);
      EXPECT_EQ(errore.Descrizione(),
                "La password memorizzata non si apre con questa chiave per questo account e questo server");
    }
  }
}

TEST(SigilloPassword, AChangedTextAndAnotherKeyAreErrors) {
  const SigilloPassword sigillo(NuovaChiave());
  std::string sigillata = sigillo.Sigilla("segreta", kLegame);
  EXPECT_THROW((void)SigilloPassword(NuovaChiave()).Apri(sigillata, kLegame), host::Errore);
  char& cifra = sigillata[sigillata.size() / 2];
  cifra = cifra == 'A' ? 'B' : 'A';
  EXPECT_THROW((void)sigillo.Apri(sigillata, kLegame), host::Errore);
  EXPECT_THROW((void)SigilloPassword(nullptr).Apri(sigillata, kLegame), host::Errore);
}

TEST(SigilloPassword, ATextFromBeforeTheBindingOpensAnywhereWithAKeyOfThatTimeAlone) {
  const support::TempDir cartella;
  const auto leggi = [&](const std::string& testo) {
    const std::string file = cartella.Write("chiave", testo);
    EXPECT_EQ(::chmod(file.c_str(), 0600), 0);
    return std::make_shared<const Chiave>(Chiave::Leggi(file));
  };
  const std::string cifre = "BesN1L5LHd9xSgdiS/SdPS47R9ez9KsYDmeVDMNtDrY=\n";
  const std::string vecchia =
      "orve1:g8md1/IYHC3X9BlDjwFPG+rUQL0JDW0GhmfqSJdNYHFpbq8BTFWSY4lIgkahfaZcoSb/kdeixw==";
  EXPECT_EQ(SigilloPassword(leggi("orve-mail-chiave-1:" + cifre)).Apri(vecchia, kLegame).View(),
            "Prova-1-arvenia");
  EXPECT_THROW((void)SigilloPassword(leggi("orve-mail-chiave-2:" + cifre)).Apri(vecchia, kLegame),
               host::Errore);
  EXPECT_TRUE(SigilloPassword::SenzaLegame(vecchia));
}

TEST(SigilloPassword, WhatClaimsToBeSealedIsTold) {
  for (const char* testo : {"orve1:", "orve2:x", " orve2:x", "ORVE2:x", "orve10:"})
    EXPECT_TRUE(SigilloPassword::Sigillato(testo)) << testo;
  for (const char* testo : {"", "orve", "orve:x", "orve1", "orve1x:", "xorve1:"})
    EXPECT_FALSE(SigilloPassword::Sigillato(testo)) << testo;
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

}  // namespace orve::adapters::password
