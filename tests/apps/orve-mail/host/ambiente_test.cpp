// The real parts that the program hands to the library.
#include "orve-mail/host/ambiente.h"

#include <gtest/gtest.h>
#include <syslog.h>

#include <iostream>
#include <memory>

namespace orve::app {

namespace {

class DebugAnnotato : public host::DebugOutput {
 public:
  void Scrivi(const std::string& riga) noexcept override { righe += riga + "\n"; }
  std::string righe;
};

std::string RigaSulRegistroDiSistema(host::DebugOutput* traccia) {
  AmbienteProgramma ambiente({std::cin, std::cout, std::cerr, false, 0, traccia}, nullptr, {}, "",
                             std::make_shared<Osservazioni>());
  ::openlog("prova", LOG_PERROR, LOG_USER);  // a copy of each line on the standard error
  ::testing::internal::CaptureStderr();
  ambiente.UscitaDiDebug().Scrivi("QLNA:|riga");
  std::string uscita = ::testing::internal::GetCapturedStderr();
  ::closelog();
  return uscita;
}

}  // namespace

TEST(AmbienteDelProgramma, WithoutATraceNothingGoesToTheSystemLog) {
  EXPECT_EQ(RigaSulRegistroDiSistema(nullptr), "");
}

TEST(AmbienteDelProgramma, ATraceTakesTheLinesAndTheSystemLogNone) {
  DebugAnnotato traccia;
  EXPECT_EQ(RigaSulRegistroDiSistema(&traccia), "");
  EXPECT_EQ(traccia.righe, "QLNA:|riga\n");
}

}  // namespace orve::app
