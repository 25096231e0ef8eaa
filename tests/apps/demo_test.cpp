// The demonstration: that it shows what it promises, notices what goes wrong, and leaves nothing running.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "apps/processi.h"
#include "places.h"
#include "support/process.h"
#include "support/temp_dir.h"

namespace orve::app {

namespace {

using ::testing::HasSubstr;
using ::testing::Not;

support::ProcessResult Dimostrazione(const std::string& build, const std::string& uscita) {
  return support::RunProgram({places::Source("scripts/demo"), build, uscita});
}

}  // namespace

TEST(Demo, ShowsTheFiveCasesCountsThemAndLeavesNothingRunning) {
  const support::TempDir cartella;
  const std::string uscita = (cartella.Path() / "uscita").string();
  const support::ProcessResult risultato = Dimostrazione(places::Build(), uscita);
  EXPECT_EQ(risultato.status, 0) << risultato.output;
  EXPECT_THAT(risultato.output,
              HasSubstr("\nAll as it should be: sent 3, refused 1, failed 1; register lines 7, events 7 ("));
  EXPECT_THAT(risultato.output, Not(HasSubstr("WRONG")));
  EXPECT_FALSE(QualcunoUsa(uscita));
  // A second time over its own output.
  const support::ProcessResult seconda = Dimostrazione(places::Build(), uscita);
  EXPECT_EQ(seconda.status, 0) << seconda.output;
}

TEST(Demo, NoticesAProgramThatOnlyClaimsToHaveSent) {
  const support::TempDir cartella;
  const std::filesystem::path falso = cartella.Path() / "build/apps/orve-mail";
  std::filesystem::create_directories(falso);
  // Passes everything to the real program except the sends, which it reports as done.
  std::ofstream(falso / "orve-mail") << "#!/bin/sh\n[ \"$1\" = invia ] && exit 0\nexec '" << places::Program()
                                     << "' \"$@\"\n";
  std::filesystem::permissions(falso / "orve-mail", std::filesystem::perms::owner_all);
  const support::ProcessResult risultato =
      Dimostrazione((cartella.Path() / "build").string(), (cartella.Path() / "uscita").string());
  EXPECT_EQ(risultato.status, 1) << risultato.output;
  EXPECT_THAT(risultato.output, HasSubstr("NOT as it should be: sent 0, refused 0, failed 0"));
  EXPECT_FALSE(QualcunoUsa((cartella.Path() / "uscita").string()));
}

TEST(Demo, NeverEmptiesAFolderThatIsNotItsOwn) {
  const support::TempDir cartella;
  cartella.Write("prezioso.txt", "x");
  const support::ProcessResult risultato = Dimostrazione(places::Build(), cartella.Path().string());
  EXPECT_EQ(risultato.status, 1) << risultato.output;
  EXPECT_EQ(support::ReadFile(cartella.Path() / "prezioso.txt"), "x");
}

}  // namespace orve::app
