#include "orve-mailserver/posix/percorsi.h"
#include "fakes/errori.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "orve-mailserver/host/errore.h"
#include "posix/errori.h"

namespace orve::adapters::posix {

using namespace std::string_literals;

namespace {

using fakes::NumeroDi;

}  // namespace

TEST(Percorsi, EitherSeparatorReachesTheSystemAsASlash) {
  EXPECT_EQ(PercorsoUnix("\\tmp\\a/b.pdf"), "/tmp/a/b.pdf");
  EXPECT_EQ(PercorsoUnix("relativo\\perché.pdf"), "relativo/perché.pdf");
}

TEST(Percorsi, AUnixPathTravelsWithBackslashes) {
  EXPECT_EQ(PercorsoLibreria("/srv/fatture/n 12.pdf"), "\\srv\\fatture\\n 12.pdf");
}

TEST(Percorsi, ThereAndBackIsTheSamePath) {
  for (const std::string percorso : {"/", "/a", "a/b", "/a/b/", "/à/è ì.pdf", "/a//b"}) {
    EXPECT_EQ(PercorsoUnix(PercorsoLibreria(percorso)), percorso);
  }
}

TEST(Percorsi, AFileWithABackslashInItsNameIsRefusedRatherThanMistaken) {
  EXPECT_EQ(NumeroDi([] { (void)PercorsoLibreria("/tmp/strano\\nome.pdf"); }), kNomeFileNonValido);
  EXPECT_EQ(NumeroDi([] { (void)PercorsoLibreriaAssoluto("strano\\nome.pdf"); }), kNomeFileNonValido);
}

TEST(Percorsi, AnEmptyPathOrOneWithANulIsRefused) {
  for (const std::string& percorso : {""s, "/tmp/a\0.pdf"s}) {
    EXPECT_EQ(NumeroDi([&] { (void)PercorsoUnix(percorso); }), kNomeFileNonValido);
    EXPECT_EQ(NumeroDi([&] { (void)PercorsoLibreria(percorso); }), kNomeFileNonValido);
    EXPECT_EQ(NumeroDi([&] { (void)PercorsoLibreriaAssoluto(percorso); }), kNomeFileNonValido);
  }
}

TEST(Percorsi, ARelativePathIsTakenFromTheCurrentFolderAndTidied) {
  const std::string qui = std::filesystem::current_path().string();
  EXPECT_EQ(PercorsoLibreriaAssoluto("./x/../fattura.pdf"), PercorsoLibreria(qui + "/fattura.pdf"));
  EXPECT_EQ(PercorsoLibreriaAssoluto("/a/./b/../c"), "\\a\\c");
}

// Split at its last separator and put together again it must stay the same file.
TEST(Percorsi, AFileOfTheRootKeepsAFolderInFrontOfItsName) {
  EXPECT_EQ(PercorsoLibreriaAssoluto("/fattura.pdf"), "\\.\\fattura.pdf");
  EXPECT_EQ(PercorsoUnix(PercorsoLibreriaAssoluto("/fattura.pdf")), "/./fattura.pdf");
  EXPECT_EQ(PercorsoLibreriaAssoluto("/"), "\\");
}

}  // namespace orve::adapters::posix
