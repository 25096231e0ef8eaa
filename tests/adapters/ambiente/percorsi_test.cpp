#include "ambiente/percorsi.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "orve-mailserver/host/errore.h"
#include "orve-mailserver/posix/percorsi.h"
#include "support/temp_dir.h"

namespace orve::adapters::ambiente {

namespace {

// An environment of its own for the length of a test: $TMPDIR and none of the person's other folders.
class CartellaTemporanea : public ::testing::Test {
 protected:
  CartellaTemporanea() {
    for (const char* nome : kVariabili) {
      const char* const valore = std::getenv(nome);
      prima_.emplace_back(nome, valore != nullptr ? std::optional<std::string>(valore) : std::nullopt);
      ::unsetenv(nome);
    }
    ::setenv("TMPDIR", cartella.Path().c_str(), 1);
  }
  ~CartellaTemporanea() override {
    for (const auto& [nome, valore] : prima_) {
      if (valore) {
        ::setenv(nome, valore->c_str(), 1);
      } else {
        ::unsetenv(nome);
      }
    }
  }
  [[nodiscard]] std::string Propria(const std::string& nome, mode_t modo) const {
    std::string percorso = (cartella.Path() / nome).string();
    ::mkdir(percorso.c_str(), modo);
    ::chmod(percorso.c_str(), modo);
    return percorso;
  }
  [[nodiscard]] std::string Nostra() const {
    return (cartella.Path() / ("orve-mail-" + std::to_string(::geteuid()))).string();
  }
  static std::string Rovesciate(std::string percorso) {
    for (char& c : percorso) c = c == '/' ? '\\' : c;
    return percorso;
  }
  static std::string Configurato(const std::string& percorso) {
    RisolutorePercorsiUnix risolutore("orve-mail", "/srv/azienda");
    risolutore.ImpostaPercorso(percorso, true);
    return risolutore.Percorso();
  }

  support::TempDir cartella;

 private:
  static constexpr std::array kVariabili = {"TMPDIR", "XDG_RUNTIME_DIR", "XDG_STATE_HOME", "HOME"};
  std::vector<std::pair<const char*, std::optional<std::string>>> prima_;
};

}  // namespace

TEST_F(CartellaTemporanea, TheTemporaryDirectoryBelongsToTheUserAlone) {
  RisolutorePercorsiUnix risolutore("orve-mail", "/");
  risolutore.ImpostaTipoPercorso(8, "");
  EXPECT_EQ(risolutore.Percorso(), Rovesciate(Nostra()));
  struct stat stato {};
  ASSERT_EQ(::stat(Nostra().c_str(), &stato), 0);
  EXPECT_EQ(stato.st_mode & 0777U, 0700U);
  risolutore.ChiudiPercorsi();
  EXPECT_EQ(risolutore.Percorso(), "");
  EXPECT_EQ(CartellaTemporaneaDiSistema("orve-mail"), Nostra());  // the second time it already exists
}

TEST_F(CartellaTemporanea, AFolderThatOthersMayWriteInIsNotUsed) {
  ASSERT_EQ(Propria(std::filesystem::path(Nostra()).filename().string(), 0777), Nostra());
  EXPECT_EQ(CartellaTemporaneaDiSistema("orve-mail"), std::nullopt);
}

TEST_F(CartellaTemporanea, ALinkInTheFoldersPlaceIsNotFollowed) {
  std::filesystem::create_directory(cartella.Path() / "altrove");
  std::filesystem::create_symlink(cartella.Path() / "altrove", Nostra());
  EXPECT_EQ(CartellaTemporaneaDiSistema("orve-mail"), std::nullopt);
}

TEST_F(CartellaTemporanea, WhereTheNameIsTakenTheFolderIsOneOfThePersonsOwn) {
  std::filesystem::create_symlink("/nessuno", Nostra());
  const std::string casa = Propria("casa", 0755);
  ::setenv("HOME", casa.c_str(), 1);
  EXPECT_EQ(CartellaTemporaneaDiSistema("orve-mail"), casa + "/.local/state/orve-mail");
  const std::string stato = Propria("stato", 0755);
  ::setenv("XDG_STATE_HOME", stato.c_str(), 1);
  EXPECT_EQ(CartellaTemporaneaDiSistema("orve-mail"), stato + "/orve-mail");
  const std::string sessione = Propria("sessione", 0700);
  ::setenv("XDG_RUNTIME_DIR", sessione.c_str(), 1);
  EXPECT_EQ(CartellaTemporaneaDiSistema("orve-mail"), sessione + "/orve-mail");
  std::filesystem::remove(Nostra());
  EXPECT_EQ(CartellaTemporaneaDiSistema("orve-mail"), Nostra()) << "the one that was asked for";
}

TEST_F(CartellaTemporanea, ARuntimeFolderIsUsedBeforeTheSystemsOwn) {
  ::unsetenv("TMPDIR");
  const std::string sessione = Propria("sessione", 0700);
  ::setenv("XDG_RUNTIME_DIR", sessione.c_str(), 1);
  EXPECT_EQ(CartellaTemporaneaDiSistema("orve-mail"), sessione + "/orve-mail");
}

TEST_F(CartellaTemporanea, AFolderOfThePersonsThatOthersGetIntoIsNone) {
  std::filesystem::create_symlink("/nessuno", Nostra());
  ::setenv("XDG_RUNTIME_DIR", Propria("sessione", 0750).c_str(), 1);
  ::setenv("XDG_STATE_HOME", Propria("stato", 0777).c_str(), 1);
  EXPECT_EQ(CartellaTemporaneaDiSistema("orve-mail"), std::nullopt);
  ::setenv("XDG_STATE_HOME", "relativa", 1);
  EXPECT_EQ(CartellaTemporaneaDiSistema("orve-mail"), std::nullopt);
}

TEST_F(CartellaTemporanea, WithoutAnyTheLogHasNoPlaceAndTheHostIsTold) {
  ::setenv("TMPDIR", (cartella.Path() / "manca").c_str(), 1);
  int detto = 0;
  RisolutorePercorsiUnix risolutore("orve-mail", "/", [&] { ++detto; });
  risolutore.ImpostaPercorso("", true);
  EXPECT_EQ(detto, 1);
  EXPECT_FALSE(std::filesystem::exists(posix::PercorsoUnix(risolutore.Percorso())));
  EXPECT_LT(::mkdir(posix::PercorsoUnix(risolutore.Percorso()).c_str(), 0700), 0);
  risolutore.ImpostaPercorso("/srv/log", true);
  EXPECT_EQ(detto, 1);
}

TEST_F(CartellaTemporanea, TheInstallationDirectoryIsTheProgramsOwn) {
  RisolutorePercorsiUnix risolutore("orve-mail", "/");
  risolutore.ImpostaTipoPercorso(6, "");
  EXPECT_EQ(risolutore.Percorso(),
            Rovesciate(std::filesystem::read_symlink("/proc/self/exe").parent_path().string()));
}

TEST_F(CartellaTemporanea, AnyOtherKindIsAnError) {
  RisolutorePercorsiUnix risolutore("orve-mail", "/");
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

}  // namespace orve::adapters::ambiente
