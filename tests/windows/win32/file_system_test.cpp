// The system's real file-system object, and its real regular expressions against the library's own address
// check.
#include <windows.h>

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "fakes/errori.h"
#include "orve-mailserver/host/errore.h"
#include "service/address_check.h"
#include "win32/ambiente_win32.h"
#include "win32/conversions.h"
#include "win32/dispatch.h"
#include "win32/file_system.h"
#include "windows/win32/doppio.h"

namespace orve::adapters::win32 {
namespace {

class FileSystemTest : public testing::Test {
 protected:
  void SetUp() override {
    auto risolutore = ambiente->CreaRisolutorePercorsi();
    risolutore->ImpostaTipoPercorso(8, "");
    cartella = risolutore->Percorso();
    file = cartella + "\\orve-prova-" + std::to_string(GetCurrentProcessId()) + ".log";
  }
  void TearDown() override { DeleteFileA(file.c_str()); }
  [[nodiscard]] std::int32_t NumeroAprendo(const std::string& quale, bool crea) {
    return fakes::NumeroDi([&] {
      fileSystem->OpenTextFile(quale, host::FileSystem::kAccoda, crea, host::FileSystem::kSingoloByte)
          ->Close();
    });
  }

  prova::AppartamentoCom appartamento;
  std::shared_ptr<host::Ambiente> ambiente = CreaAmbienteWin32();
  std::shared_ptr<host::FileSystem> fileSystem = ambiente->CreaFileSystem();
  std::string cartella;
  std::string file;
};

TEST_F(FileSystemTest, LinesAreAppendedInTheSystemsCodePage) {
  EXPECT_TRUE(fileSystem->FolderExists(cartella));
  EXPECT_FALSE(fileSystem->FolderExists(cartella + "\\manca"));
  EXPECT_FALSE(fileSystem->FileExists(file));
  for (const char* riga : {"Società", "seconda"}) {
    const auto flusso =
        fileSystem->OpenTextFile(file, host::FileSystem::kAccoda, true, host::FileSystem::kSingoloByte);
    flusso->WriteLine(riga);
    flusso->Close();
  }
  EXPECT_TRUE(fileSystem->FileExists(file));
  std::ifstream letto(file, std::ios::binary);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(letto), {}), "Societ\xE0\r\nseconda\r\n");
}

TEST_F(FileSystemTest, ALineKeepsAQuestionMarkForWhatTheCodePageLacks) {
  const auto flusso =
      fileSystem->OpenTextFile(file, host::FileSystem::kAccoda, true, host::FileSystem::kSingoloByte);
  flusso->WriteLine("Łukasz 😀 漢, Società");
  flusso->Close();
  std::ifstream letto(file, std::ios::binary);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(letto), {}), "?ukasz ? ?, Societ\xE0\r\n");
}

// Not every system's stream makes do with a "?", as the one of these tests does.
TEST_F(FileSystemTest, AStreamThatRefusesWhatItsCodePageLacksIsNotAskedForIt) {
  const auto giornale = std::make_shared<std::vector<std::string>>();
  const auto flusso = prova::CreaDoppio("TextStream", giornale);
  flusso->Membro("WriteLine", DISPATCH_METHOD, [](const prova::ArrivoCom& arrivo) -> VariantCom {
    const std::string testo = arrivo.Valore(0).ToText();
    if (FromSingleByte(ToSingleByte(testo)) != testo) throw host::Errore(host::kArgomentoNonValido);
    return {};
  });
  const auto apre = prova::CreaDoppio("FileSystem", giornale);
  apre->Membro("OpenTextFile", DISPATCH_METHOD, prova::Oggetto(flusso));
  AvvolgiFileSystem(Dispatch(apre.Get()))
      ->OpenTextFile("C:\\a.log", host::FileSystem::kAccoda, true, host::FileSystem::kSingoloByte)
      ->WriteLine("Łukasz");
  EXPECT_EQ(giornale->back(), "TextStream.WriteLine chiamata (?ukasz)");
}

TEST_F(FileSystemTest, AFileThatIsMissingIsError53) {
  EXPECT_EQ(NumeroAprendo(file, false), 53);
}

TEST_F(FileSystemTest, AFolderThatIsMissingIsError76) {
  EXPECT_EQ(NumeroAprendo(cartella + "\\manca\\file.log", true), 76);
}

TEST_F(FileSystemTest, TheAddressCheckAgreesWithTheSystemsRegularExpressions) {
  const Dispatch espressione = CreaOggetto(L"VBScript.RegExp");
  espressione.Put("Pattern", "\\b[A-Z0-9._%+-]+@[A-Z0-9.-]+\\.[A-Z]{2,15}\\b");
  espressione.Put("IgnoreCase", true);
  espressione.Put("Global", true);
  for (const std::string testo : {"a@b.it",
                                  "A@B.IT",
                                  "",
                                  "a@b",
                                  "a@b.i",
                                  "a@b.abcdefghijklmno",
                                  "a@b.abcdefghijklmnop",
                                  "Mario <a@b.it>, ciao",
                                  "a@b.it9",
                                  "a@b.it-x",
                                  "@b.it",
                                  "a@.it",
                                  "a@b..it",
                                  "a b@c.it",
                                  "a@b.it_",
                                  "perché@b.it",
                                  "a@b.itè",
                                  "a%b+c-d@e-f.g.com",
                                  "-a@b.it",
                                  ".@b.it",
                                  "a@@b.it",
                                  "a@b@c.it",
                                  "a@b.1it",
                                  "a@b.it.",
                                  "a@b.c2"}) {
    EXPECT_EQ(ContieneIndirizzo(testo), espressione.Call("Test", testo).ToBoolean()) << testo;
  }
}

}  // namespace
}  // namespace orve::adapters::win32
