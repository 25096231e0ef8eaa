#include "orve-mail/percorsi_host.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "host/errore.h"
#include "support/temp_dir.h"

namespace orve::app {

namespace {

// $TMPDIR for the length of a test.
class CartellaTemporanea : public ::testing::Test {
 protected:
  CartellaTemporanea() {
    if (const char* prima = std::getenv("TMPDIR")) prima_ = prima;
    ::setenv("TMPDIR", cartella.Path().c_str(), 1);
  }
  ~CartellaTemporanea() override {
    if (prima_.empty()) {
      ::unsetenv("TMPDIR");
    } else {
      ::setenv("TMPDIR", prima_.c_str(), 1);
    }
  }
  [[nodiscard]] std::string Nostra() const {
    return (cartella.Path() / ("orve-mail-" + std::to_string(::geteuid()))).string();
  }
  static std::string Rovesciate(std::string percorso) {
    for (char& c : percorso) c = c == '/' ? '\\' : c;
    return percorso;
  }
  static std::string Configurato(const std::string& percorso) {
    RisolutorePercorsiUnix risolutore("/srv/azienda");
    risolutore.ImpostaPercorso(percorso, true);
    return risolutore.Percorso();
  }

  support::TempDir cartella;

 private:
  std::string prima_;
};

}  // namespace

TEST_F(CartellaTemporanea, TheTemporaryDirectoryBelongsToTheUserAlone) {
  RisolutorePercorsiUnix risolutore("/");
  risolutore.ImpostaTipoPercorso(8, "");
  EXPECT_EQ(risolutore.Percorso(), Rovesciate(Nostra()));
  struct stat stato {};
  ASSERT_EQ(::stat(Nostra().c_str(), &stato), 0);
  EXPECT_EQ(stato.st_mode & 0777U, 0700U);
  risolutore.ChiudiPercorsi();
  EXPECT_EQ(risolutore.Percorso(), "");
  EXPECT_EQ(CartellaTemporaneaDiSistema(), Nostra());  // a second time it is there already
}

TEST_F(CartellaTemporanea, AFolderThatOthersMayWriteInIsRefused) {
  ASSERT_EQ(::mkdir(Nostra().c_str(), 0700), 0);
  ASSERT_EQ(::chmod(Nostra().c_str(), 0777), 0);
  EXPECT_THROW((void)CartellaTemporaneaDiSistema(), host::Errore);
}

TEST_F(CartellaTemporanea, ALinkInTheFoldersPlaceIsRefused) {
  std::filesystem::create_directory(cartella.Path() / "altrove");
  std::filesystem::create_symlink(cartella.Path() / "altrove", Nostra());
  EXPECT_THROW((void)CartellaTemporaneaDiSistema(), host::Errore);
}

TEST_F(CartellaTemporanea, AMissingRootIsAnError) {
  ::setenv("TMPDIR", (cartella.Path() / "manca").c_str(), 1);
  try {
    (void)CartellaTemporaneaDiSistema();
    FAIL() << "nessun errore";
  } catch (const host::Errore& errore) {
    EXPECT_EQ(errore.Numero(), 76);
  }
}

TEST_F(CartellaTemporanea, TheInstallationDirectoryIsTheProgramsOwn) {
  RisolutorePercorsiUnix risolutore("/");
  risolutore.ImpostaTipoPercorso(6, "");
  EXPECT_EQ(risolutore.Percorso(),
            Rovesciate(std::filesystem::read_symlink("/proc/self/exe").parent_path().string()));
}

TEST_F(CartellaTemporanea, AnyOtherKindIsAnError) {
  RisolutorePercorsiUnix risolutore("/");
  for (const std::int32_t tipo : {-1, 0, 5, 7, 9})
    EXPECT_THROW(risolutore.ImpostaTipoPercorso(tipo, ""), host::Errore);
}

TEST_F(CartellaTemporanea, AConfiguredPathBecomesAUsableOne) {
  ::setenv("HOME", "/home/mario", 1);
  EXPECT_EQ(Configurato("/var/tmp/posta"), "\\var\\tmp\\posta");
  EXPECT_EQ(Configurato("\\var\\tmp\\posta\\"), "\\var\\tmp\\posta");
  EXPECT_EQ(Configurato("  /var/tmp/posta  "), "\\var\\tmp\\posta");
  EXPECT_EQ(Configurato("tmp"), "\\srv\\azienda\\tmp");
  EXPECT_EQ(Configurato("..\\tmp"), "\\srv\\tmp");
  EXPECT_EQ(Configurato("~/posta"), "\\home\\mario\\posta");
  EXPECT_EQ(Configurato("/"), "\\");
  EXPECT_EQ(Configurato(""), Rovesciate(Nostra()));
  EXPECT_EQ(Configurato("   "), Rovesciate(Nostra()));
}

}  // namespace orve::app
