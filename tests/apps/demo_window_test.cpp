// The demonstration of the windows: that its script reaches the server, leaves its pictures, and leaves
// nothing running.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>

#include "apps/processi.h"
#include "places.h"
#include "support/process.h"
#include "support/temp_dir.h"

namespace orve::app {

namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

support::ProcessResult DimostrazioneFinestra(const std::string& build, const std::string& uscita) {
  const std::string programma = places::Source("scripts/demo-window");
  return support::RunProgram({"/usr/bin/env", "--unset=DISPLAY", "--unset=WAYLAND_DISPLAY",
                              "--unset=QT_QPA_PLATFORM", programma, build, uscita},
                             std::chrono::seconds(110));
}

}  // namespace

TEST(DemoWindow, PlaysItsScriptSendsAndLeavesPicturesAndNoProcess) {
  const support::TempDir cartella;
  const std::filesystem::path uscita = cartella.Path() / "uscita";
  const support::ProcessResult risultato = DimostrazioneFinestra(places::Build(), uscita.string());
  EXPECT_EQ(risultato.status, 0) << risultato.output;
  EXPECT_THAT(risultato.output, HasSubstr("   | Messaggio inviato a 3 destinatari.\n"));
  EXPECT_THAT(risultato.output, EndsWith("\nAll as it should be\n"));
  EXPECT_THAT(risultato.output, Not(HasSubstr("WRONG")));
  for (const char* nome : {"finestra-di-invio.png", "rubrica.png", "finestra-dei-parametri.png"}) {
    const std::string immagine = support::ReadFile(uscita / nome);
    EXPECT_THAT(immagine, StartsWith("\x89PNG\r\n\x1a\n")) << nome;
    EXPECT_GT(immagine.size(), 5000U) << nome << " is empty";
  }
  EXPECT_TRUE(std::filesystem::exists(uscita / "posta" / "0001.eml"));
  EXPECT_FALSE(QualcunoUsa(uscita.string()));
}

TEST(DemoWindow, NoticesAProgramThatOpensNoWindow) {
  const support::TempDir cartella;
  const std::filesystem::path falso = cartella.Path() / "build/apps/orve-mail";
  std::filesystem::create_directories(falso);
  // Passes everything to the real program except what needs a window, which it reports as done.
  std::ofstream(falso / "orve-mail") << "#!/bin/sh\ncase $1 in invia|parametri) exit 0;; esac\nexec '"
                                     << places::Program() << "' \"$@\"\n";
  std::filesystem::permissions(falso / "orve-mail", std::filesystem::perms::owner_all);
  const std::string uscita = (cartella.Path() / "uscita").string();
  const support::ProcessResult risultato =
      DimostrazioneFinestra((cartella.Path() / "build").string(), uscita);
  EXPECT_EQ(risultato.status, 1) << risultato.output;
  EXPECT_THAT(risultato.output, HasSubstr("WRONG: the program ended before the window"));
  EXPECT_FALSE(QualcunoUsa(uscita));
}

}  // namespace orve::app
