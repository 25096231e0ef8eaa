#include "posix/file_system.h"
#include "fakes/errori.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "adapters/posix/prova.h"
#include "orve-mailserver/host/errore.h"
#include "orve-mailserver/posix/percorsi.h"
#include "posix/errori.h"

namespace orve::adapters::posix {

namespace {

using namespace std::string_literals;

class FileSystemDiProva : public ::testing::Test {
 protected:
  std::shared_ptr<host::TextStream> Apri(const std::string& percorso, bool crea = true) {
    return fs.OpenTextFile(percorso, host::FileSystem::kAccoda, crea, host::FileSystem::kSingoloByte);
  }
  host::Errore ErroreDi(const std::string& percorso, bool crea = true) {
    return fakes::ErroreDi([&] { Apri(percorso, crea)->WriteLine("riga"); });
  }

  CartellaDiProva cartella;
  FileSystem fs;
};

}  // namespace

TEST_F(FileSystemDiProva, LinesEndInCarriageReturnAndLineFeedAndAreSingleByte) {
  const auto flusso = Apri(cartella / "log.txt");
  flusso->WriteLine("Perché no – 5 €");
  flusso->WriteLine("日");
  flusso->Close();
  EXPECT_EQ(Contenuto(cartella / "log.txt"), "Perch\xE9 no \x96 5 \x80\r\n?\r\n");
}

TEST_F(FileSystemDiProva, OpeningAgainAppends) {
  Apri(cartella / "log.txt")->WriteLine("uno");
  Apri(cartella / "log.txt")->WriteLine("due");
  EXPECT_EQ(Contenuto(cartella / "log.txt"), "uno\r\ndue\r\n");
}

TEST_F(FileSystemDiProva, EitherSeparatorNamesTheSameFile) {
  Apri(PercorsoLibreria(cartella / "log.txt"))->WriteLine("uno");
  Apri(cartella.Radice() + "\\log.txt")->WriteLine("due");
  EXPECT_TRUE(fs.FileExists(PercorsoLibreria(cartella / "log.txt")));
  EXPECT_TRUE(fs.FolderExists(PercorsoLibreria(cartella.Radice())));
  EXPECT_EQ(Contenuto(cartella / "log.txt"), "uno\r\ndue\r\n");
}

TEST_F(FileSystemDiProva, AFolderIsNoFileAndAFileIsNoFolder) {
  Apri(cartella / "file")->Close();
  EXPECT_TRUE(fs.FileExists(cartella / "file"));
  EXPECT_FALSE(fs.FolderExists(cartella / "file"));
  EXPECT_TRUE(fs.FolderExists(cartella.Radice()));
  EXPECT_FALSE(fs.FileExists(cartella.Radice()));
}

TEST_F(FileSystemDiProva, WhatCannotBeLookedAtIsNotThere) {
  for (const std::string& percorso : {""s, "/nessuna/cartella"s, "a\0b"s, std::string(5000, 'x')}) {
    EXPECT_FALSE(fs.FileExists(percorso));
    EXPECT_FALSE(fs.FolderExists(percorso));
  }
}

TEST_F(FileSystemDiProva, AMissingFolderIsPathNotFound) {
  const host::Errore errore = ErroreDi(cartella / "manca/log.txt");
  EXPECT_EQ(errore.Numero(), 76);
  EXPECT_EQ(errore.Descrizione(), "Percorso non trovato: " + (cartella / "manca/log.txt"));
}

TEST_F(FileSystemDiProva, AFileInTheWayOfAFolderIsPathNotFound) {
  Apri(cartella / "file")->Close();
  EXPECT_EQ(ErroreDi(cartella / "file/log.txt").Numero(), 76);
}

TEST_F(FileSystemDiProva, AMissingFileThatIsNotToBeMadeIsFileNotFound) {
  const host::Errore errore = ErroreDi(cartella / "log.txt", false);
  EXPECT_EQ(errore.Numero(), 53);
  EXPECT_EQ(errore.Descrizione(), "File non trovato: " + (cartella / "log.txt"));
  EXPECT_FALSE(std::filesystem::exists(cartella / "log.txt"));
}

TEST_F(FileSystemDiProva, AFolderCannotBeWritten) {
  const host::Errore errore = ErroreDi(cartella.Radice());
  EXPECT_EQ(errore.Numero(), 70);
  EXPECT_EQ(errore.Descrizione(), "Autorizzazione negata: " + cartella.Radice());
}

TEST_F(FileSystemDiProva, AReadOnlyFolderDeniesAnOrdinaryUserANewFile) {
  ASSERT_EQ(::chmod(cartella.Radice().c_str(), 0555), 0);
  EXPECT_EQ(ComeUtenteOrdinario([&] { return ErroreDi(cartella / "log.txt").Numero(); }), 70);
  ASSERT_EQ(::chmod(cartella.Radice().c_str(), 0755), 0);
}

TEST_F(FileSystemDiProva, AFolderThatMayNotBeEnteredHidesItsFiles) {
  Apri(cartella / "log.txt")->Close();
  ASSERT_EQ(::chmod(cartella.Radice().c_str(), 0000), 0);
  EXPECT_EQ(ComeUtenteOrdinario([&] { return fs.FileExists(cartella / "log.txt") ? 1 : 0; }), 0);
  EXPECT_EQ(ComeUtenteOrdinario([&] { return ErroreDi(cartella / "log.txt").Numero(); }), 70);
  ASSERT_EQ(::chmod(cartella.Radice().c_str(), 0755), 0);
}

TEST_F(FileSystemDiProva, AFullDiskIsAnErrorAndNotALostLine) {
  const host::Errore errore = ErroreDi("/dev/full");
  EXPECT_EQ(errore.Numero(), 61);
  EXPECT_EQ(errore.Descrizione(), "Disco pieno: /dev/full");
}

TEST_F(FileSystemDiProva, APipeIsRefusedAtOnceInsteadOfWaitingForAReader) {
  ASSERT_EQ(::mkfifo((cartella / "pipe").c_str(), 0600), 0);
  // Nobody ever reads: waiting would never end.
  EXPECT_EQ(ErroreDi(cartella / "pipe").Numero(), 70);
}

TEST_F(FileSystemDiProva, ANameThatIsTooLongOrHoldsANulIsNotValid) {
  EXPECT_EQ(ErroreDi(cartella / std::string(300, 'x')).Numero(), 52);
  EXPECT_EQ(ErroreDi(cartella / "a\0b"s).Numero(), 52);
  EXPECT_EQ(ErroreDi("").Numero(), 52);
}

TEST_F(FileSystemDiProva, OnlyAppendingInSingleByteFormIsOffered) {
  EXPECT_THROW((void)fs.OpenTextFile(cartella / "x", 1, true, 0), host::Errore);
  EXPECT_THROW((void)fs.OpenTextFile(cartella / "x", 8, true, -1), host::Errore);
  EXPECT_FALSE(std::filesystem::exists(cartella / "x"));
}

TEST_F(FileSystemDiProva, WritingAfterCloseIsAnErrorAndClosingTwiceIsNone) {
  const auto flusso = Apri(cartella / "log.txt");
  flusso->Close();
  flusso->Close();
  try {
    flusso->WriteLine("tardi");
    FAIL() << "nessun errore";
  } catch (const host::Errore& errore) {
    EXPECT_EQ(errore.Numero(), 91);
  }
}

TEST_F(FileSystemDiProva, LinesOfSeveralWritersNeverMix) {
  constexpr int kScrittori = 4;
  constexpr int kRighe = 200;
  std::vector<std::thread> scrittori;
  scrittori.reserve(kScrittori);
  for (int i = 0; i < kScrittori; ++i) {
    scrittori.emplace_back([this, i] {
      for (int r = 0; r < kRighe; ++r) {
        Apri(cartella / "log.txt")->WriteLine(std::string(300, static_cast<char>('a' + i)));
      }
    });
  }
  for (auto& scrittore : scrittori) scrittore.join();
  const std::string tutto = Contenuto(cartella / "log.txt");
  ASSERT_EQ(tutto.size(), std::size_t{kScrittori} * kRighe * 302);
  for (std::size_t inizio = 0; inizio < tutto.size(); inizio += 302) {
    ASSERT_EQ(tutto.substr(inizio, 302), std::string(300, tutto[inizio]) + "\r\n");
  }
}

}  // namespace orve::adapters::posix
