// Which files may be sent with a message, whoever names them, and under which names they are sent.
#include "orve-mail/host/allegati.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "mime/attachment.h"
#include "orve-mail/terminal/uscita.h"
#include "orve-mailserver/posix/percorsi.h"
#include "support/received_message.h"
#include "support/temp_dir.h"

namespace orve::app {

namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;
namespace fs = std::filesystem;

std::string RifiutoAllegato(const std::function<void()>& azione) {
  try {
    azione();
  } catch (const ErroreProgramma& errore) {
    EXPECT_EQ(errore.Stato(), Uscita::kFileMancante);
    return errore.what();
  }
  return "";
}

std::string RifiutoDiPreparare(const std::string& file, const std::vector<std::string>& esclusi = {},
                               const std::vector<std::string>& cartelle = {}, bool controlla = true) {
  const std::string motivo =
      RifiutoAllegato([&] { (void)PreparaAllegato(file, controlla, esclusi, cartelle); });
  const std::string prefisso = file + ": ";
  return motivo.starts_with(prefisso) ? motivo.substr(prefisso.size()) : motivo;
}

constexpr const char* kDelProgramma = "è un file che il programma stesso usa e non si può allegare";
constexpr const char* kDelSistema = "è un file del sistema e non si può allegare";
constexpr const char* kFuori = "sta fuori dalle cartelle da cui si può allegare";

std::string Libreria(const std::string& nativo) {
  return adapters::posix::PercorsoLibreriaAssoluto(nativo);
}

std::string ApertoComeLibreria(const Allegati& allegati, const std::string& percorso) {
  try {
    return support::ReadFile(allegati.Apri(percorso).path);
  } catch (const host::Errore& errore) {
    return std::to_string(errore.Numero()) + " " + errore.Descrizione();
  }
}

}  // namespace

TEST(Allegato, BecomesAnAbsolutePathOfTheLibrary) {
  const support::TempDir cartella;
  const std::string file = cartella.Write("fattura n° 1.pdf", "x");
  std::string atteso = file;
  for (char& c : atteso) c = c == '/' ? '\\' : c;
  EXPECT_EQ(PreparaAllegato(file, true, {}).percorso, atteso);
  const fs::path prima = fs::current_path();
  fs::current_path(cartella.Path());
  EXPECT_EQ(PreparaAllegato("./fattura n° 1.pdf", true, {}).percorso.substr(0, 1), "\\");
  EXPECT_EQ(PreparaAllegato("manca.pdf", false, {}).percorso,
            PreparaAllegato("./x/../manca.pdf", false, {}).percorso);
  fs::current_path(prima);
}

TEST(Allegato, ThatCannotBeReadIsRefused) {
  const support::TempDir cartella;
  const std::string qui = cartella.Path().string();
  EXPECT_EQ(RifiutoDiPreparare(qui), "è una cartella");
  EXPECT_EQ(RifiutoDiPreparare(qui + "/manca.pdf"), "No such file or directory");
  ASSERT_EQ(::mkfifo((qui + "/pipe").c_str(), 0600), 0);
  EXPECT_EQ(RifiutoDiPreparare(qui + "/pipe"), "non è un file");
  EXPECT_EQ(RifiutoDiPreparare(qui + "/pipe", {}, {}, false), "");
}

TEST(Allegato, WhoseNameTheLibraryCannotHoldIsRefused) {
  const support::TempDir cartella;
  EXPECT_EQ(RifiutoDiPreparare(cartella.Write("a;b.pdf", "x")),
            "il nome di un allegato non può contenere «;»");
  const std::string conBarra = cartella.Write("a\\b.pdf", "x");
  EXPECT_EQ(RifiutoDiPreparare(conBarra), "Nome di file non valido: " + conBarra);
}

TEST(Allegato, AFileOfTheProgramsIsRefusedByWhateverWayItIsReached) {
  const support::TempDir cartella;
  const std::string chiave = cartella.Write("x.chiave", "segreto");
  const std::vector<std::string> esclusi = {cartella.Path() / "non-c-è", chiave};
  fs::create_symlink(chiave, cartella.Path() / "fattura.pdf");
  fs::create_hard_link(chiave, cartella.Path() / "bolla.pdf");
  fs::create_directory(cartella.Path() / "sotto");
  for (const char* nome : {"x.chiave", "fattura.pdf", "bolla.pdf", "sotto/../x.chiave"}) {
    const std::string file = cartella.Path().string() + "/" + nome;
    EXPECT_EQ(RifiutoDiPreparare(file, esclusi), kDelProgramma) << nome;
    EXPECT_EQ(RifiutoDiPreparare(file, esclusi, {}, false), kDelProgramma) << nome;
    EXPECT_EQ(RifiutoDiPreparare(file, {}), "") << nome;
  }
}

TEST(Allegato, WhatTheKernelShowsAsFilesIsRefused) {
  const support::TempDir cartella;
  fs::create_symlink("/proc/self/environ", cartella.Path() / "fattura.pdf");
  for (const std::string& file :
       {std::string("/proc/self/environ"), std::string("/proc/version"),
        std::string("/proc/self/root/proc/stat"), (cartella.Path() / "fattura.pdf").string(),
        std::string("/sys/kernel/uevent_seqnum")}) {
    if (::access(file.c_str(), R_OK) != 0) continue;
    EXPECT_EQ(RifiutoDiPreparare(file), kDelSistema) << file;
  }
  EXPECT_EQ(RifiutoDiPreparare("/dev/zero"), "non è un file");
  std::string memoria = "/dev/shm/orve-allegati-XXXXXX";
  const int numero = ::mkstemp(memoria.data());
  ASSERT_GE(numero, 0);
  EXPECT_EQ(RifiutoDiPreparare(memoria), kDelSistema);
  ::close(numero);
  ::unlink(memoria.c_str());
}

TEST(Allegato, OfARowLiesBelowAFolderGivenWhenAllLinksAreResolved) {
  const support::TempDir elenco;
  const support::TempDir altrove;
  const std::string qui = elenco.Path().string();
  const std::string dentro = elenco.Write("fattura.pdf", "x");
  const std::string fuori = altrove.Write("segreto.pdf", "x");
  fs::create_symlink(fuori, elenco.Path() / "porta.pdf");
  fs::create_directory_symlink(altrove.Path(), elenco.Path() / "porta");
  fs::create_directory_symlink(elenco.Path(), altrove.Path() / "ritorno");
  const std::vector<std::string> cartelle = {qui};
  EXPECT_EQ(RifiutoDiPreparare(dentro, {}, cartelle), "");
  EXPECT_EQ(RifiutoDiPreparare(altrove.Path() / "ritorno/fattura.pdf", {}, cartelle), "");
  EXPECT_EQ(RifiutoDiPreparare(dentro, {}, {altrove.Path() / "ritorno"}), "");
  EXPECT_EQ(RifiutoDiPreparare(fuori, {}, {qui, altrove.Path()}), "");
  for (const std::string& file : {fuori, qui + "/porta.pdf", qui + "/porta/segreto.pdf",
                                  qui + "/../" + altrove.Path().filename().string() + "/segreto.pdf",
                                  std::string("/etc/passwd"), "/proc/self/root" + fuori}) {
    EXPECT_EQ(RifiutoDiPreparare(file, {}, cartelle), kFuori) << file;
    EXPECT_EQ(RifiutoDiPreparare(file, {}, cartelle, false), kFuori) << file;
  }
  // A folder whose name merely begins like the list's is a different one.
  fs::create_directory(qui + "-privata");
  std::ofstream(qui + "-privata/x.pdf") << "x";
  EXPECT_EQ(RifiutoDiPreparare(qui + "-privata/x.pdf", {}, cartelle), kFuori);
  fs::remove_all(qui + "-privata");
}

TEST(Allegati, WhatIsReadIsWhatWasJudgedWhateverHappensToThePath) {
  const support::TempDir cartella;
  const std::string file = cartella.Write("fattura.pdf", "fattura");
  const std::string segreto = cartella.Write("chiave", "segreto");
  const Allegati allegati({segreto});
  const adapters::mime::Attachment aperto = allegati.Apri(Libreria(file));
  EXPECT_EQ(aperto.name, "fattura.pdf");
  fs::remove(file);
  fs::create_symlink(segreto, file);
  EXPECT_EQ(support::ReadFile(aperto.path), "fattura");
  EXPECT_EQ(ApertoComeLibreria(allegati, Libreria(file)),
            std::string("70 Impossibile allegare il file \"fattura.pdf\": ") + kDelProgramma);
}

TEST(Allegati, ARowsFileIsHeldToItsFoldersWhenItIsReadToo) {
  const support::TempDir elenco;
  const support::TempDir altrove;
  const std::string file = elenco.Write("fattura.pdf", "fattura");
  Allegati allegati({});
  const std::string percorso =
      allegati.PerLaLibreria(PreparaAllegato(file, true, {}, {elenco.Path().string()}));
  EXPECT_EQ(ApertoComeLibreria(allegati, percorso), "fattura");
  fs::remove(file);
  fs::create_symlink(altrove.Write("segreto", "segreto"), file);
  EXPECT_THAT(ApertoComeLibreria(allegati, percorso), HasSubstr(kFuori));
}

TEST(Allegati, APathThatIsHarmlessGoesThroughToTheByte) {
  const support::TempDir cartella;
  Allegati allegati({});
  for (const char* nome : {"fattura n° 12 – «perché» “sì” ’x’.pdf", "a--b.pdf", "a|b), (c.pdf", "a\"b.pdf"}) {
    const std::string percorso = Libreria(cartella.Write(nome, "x"));
    EXPECT_EQ(allegati.PerLaLibreria(percorso), percorso);
    EXPECT_EQ(allegati.ConPercorsiVeri(percorso), percorso);
    EXPECT_EQ(allegati.Apri(percorso).name, nome);
  }
}

TEST(Allegati, APathThatCouldEndALiteralBecomesThatOfAPrivateCopyWhichGoesWithItsOwner) {
  const support::TempDir cartella;
  const std::string nome = "x'||(SELECT FW98_PASSWORD FROM FW98_MAILACCOUNT)||'.pdf";
  const std::string file = cartella.Write(nome, "fattura");
  fs::create_directory(cartella.Path() / "l'anno");
  const std::string nelNomeDellaCartella = cartella.Write("l'anno/x.pdf", "x");
  std::string copia;
  {
    Allegati allegati({});
    const std::string percorso = allegati.PerLaLibreria(Libreria(file));
    EXPECT_TRUE(Allegati::NomeInnocuo(percorso)) << percorso;
    copia = adapters::posix::PercorsoUnix(percorso);
    struct stat stato {};
    ASSERT_EQ(::stat(copia.c_str(), &stato), 0);
    EXPECT_EQ(stato.st_mode & 0777U, 0600U);
    EXPECT_EQ(allegati.Apri(percorso).name, nome);
    EXPECT_EQ(allegati.NomeVero(percorso), nome);
    EXPECT_EQ(ApertoComeLibreria(allegati, percorso), "fattura");
    EXPECT_EQ(allegati.ConPercorsiVeri(percorso + "|C:\\altro.pdf"), Libreria(file) + "|C:\\altro.pdf");
    const std::string seconda = allegati.PerLaLibreria(Libreria(nelNomeDellaCartella));
    EXPECT_TRUE(Allegati::NomeInnocuo(seconda)) << seconda;
    EXPECT_EQ(allegati.Apri(seconda).name, "x.pdf");
  }
  EXPECT_FALSE(fs::exists(copia));
  EXPECT_FALSE(fs::exists(fs::path(copia).parent_path().parent_path()));
}

TEST(Allegati, ACopyIsMadeOfNoFileThatMayNotGo) {
  const support::TempDir cartella;
  const std::string chiave = cartella.Write("l'x.chiave", "segreto");
  Allegati allegati({chiave});
  EXPECT_EQ(RifiutoAllegato([&] { (void)allegati.PerLaLibreria(Libreria(chiave)); }),
            chiave + ": " + kDelProgramma);
}

TEST(Allegati, AMissingFileWithSuchANameIsMissedWhereTheOthersAre) {
  const support::TempDir cartella;
  Allegati allegati({});
  const std::string percorso = allegati.PerLaLibreria(Libreria(cartella.Path() / "l'ultima.pdf"));
  EXPECT_TRUE(Allegati::NomeInnocuo(percorso)) << percorso;
  EXPECT_THAT(ApertoComeLibreria(allegati, percorso),
              StartsWith("53 Impossibile allegare il file \"l'ultima.pdf\": "));
}

TEST(Allegati, CopiesLieWhereThePathIsHarmlessToo) {
  const support::TempDir cartella;
  const std::string temporanea = cartella.Path() / "l'utente";
  fs::create_directory(temporanea);
  const char* const prima = std::getenv("TMPDIR");
  const std::string vecchia = prima != nullptr ? prima : "";
  ::setenv("TMPDIR", temporanea.c_str(), 1);
  Allegati allegati({});
  const std::string percorso = allegati.PostoPer("l'ultima.pdf");
  if (prima != nullptr) {
    ::setenv("TMPDIR", vecchia.c_str(), 1);
  } else {
    ::unsetenv("TMPDIR");
  }
  EXPECT_TRUE(Allegati::NomeInnocuo(percorso)) << percorso;
}

}  // namespace orve::app
