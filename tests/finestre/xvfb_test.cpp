// The same windows on a real X server: another run of this program's tests, on a display without a screen.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>

#include "support/process.h"

namespace orve::app {

namespace {

using ::testing::HasSubstr;

// Finds a free number itself, and ends with the object.
class Schermo {
 public:
  [[nodiscard]] std::string Nome() const { return nome_; }

 private:
  // What it says about the numbers that others have is dropped.
  support::Process server_{
      {"/bin/sh", "-c", "exec Xvfb -displayfd 1 -screen 0 1280x900x24 -nolisten tcp -noreset 2>/dev/null"}};
  std::string nome_ = ":" + server_.WaitForLine("");
};

}  // namespace

TEST(SuSchermoX, TheSendsGoThroughRealWindowsOfAnXServer) {
  const Schermo schermo;
  const std::string prove =
      "InvioManuale.WhatThePersonWroteArrivesAndIsRecorded:"
      "InvioManuale.ClosingTheWindowInAnyWaySendsAndRecordsNothing:"
      "InvioManuale.AFileThatVanishes*:Parametri.TheAnswersArePrintedOnePerLine";
  const support::ProcessResult risultato = support::RunProgram(
      {"/usr/bin/env", "--unset=QT_QPA_PLATFORM", "--unset=WAYLAND_DISPLAY", "--unset=XAUTHORITY",
       "DISPLAY=" + schermo.Nome(), std::filesystem::read_symlink("/proc/self/exe").string(),
       "--gtest_filter=" + prove},
      std::chrono::seconds(100));
  EXPECT_EQ(risultato.status, 0) << risultato.output;
  EXPECT_THAT(risultato.output, HasSubstr("[  PASSED  ] 4 tests."));
}

}  // namespace orve::app
