#include "posix/system.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <syslog.h>
#include <unistd.h>

#include <cstdlib>
#include <ctime>
#include <set>
#include <string>

#include "adapters/posix/prova.h"
#include "orve-mailserver/host/data_ora.h"
#include "orve-mailserver/host/errore.h"
#include "posix/clock.h"
#include "posix/directory_assente.h"

namespace orve::adapters::posix {

namespace {

using namespace std::string_literals;

class FusoOrario {
 public:
  explicit FusoOrario(const char* fuso) {
    if (const char* prima = std::getenv("TZ")) prima_ = prima;
    ::setenv("TZ", fuso, 1);
  }
  FusoOrario(const FusoOrario&) = delete;
  FusoOrario& operator=(const FusoOrario&) = delete;
  FusoOrario(FusoOrario&&) = delete;
  FusoOrario& operator=(FusoOrario&&) = delete;
  ~FusoOrario() {
    if (prima_.empty()) {
      ::unsetenv("TZ");
    } else {
      ::setenv("TZ", prima_.c_str(), 1);
    }
    ::tzset();
  }

 private:
  std::string prima_;
};

// Seconds since the Unix epoch, taking the civil time as UTC.
double Secondi(host::DataOra istante) {
  constexpr double kEpocaUnix = 25569;
  return (istante.giorni - kEpocaUnix) * 86400;
}

}  // namespace

TEST(Clock, TellsLocalTimeAndFollowsTheTimeZone) {
  Clock orologio;
  for (const auto& [fuso, scarto] : {std::pair{"UTC0", 0}, {"PROVA-2", 7200}, {"PROVA+5:30", -19800}}) {
    const FusoOrario impostato(fuso);
    EXPECT_NEAR(Secondi(orologio.Adesso()) - scarto, static_cast<double>(std::time(nullptr)), 2) << fuso;
  }
}

TEST(Clock, WritesDateAndTimeInTheItalianForm) {
  Clock orologio;
  const auto istante = host::DataOra::Da(2026, 3, 4, 5, 6, 7);
  EXPECT_EQ(orologio.TestoData(istante), "04/03/2026");
  EXPECT_EQ(orologio.TestoOra(istante), "05:06:07");
}

TEST(DebugOutput, OneLineGoesToTheSystemLogInTheSingleByteCodePage) {
  ::openlog("prova", LOG_PERROR, LOG_USER);  // a copy of each line on the standard error
  ::testing::internal::CaptureStderr();
  DebugOutput().Scrivi("QLNA:|città %s %n|INI\nriga|");
  const std::string uscita = ::testing::internal::GetCapturedStderr();
  ::closelog();
  EXPECT_EQ(uscita, "prova: QLNA:|citt\xE0 %s %n|INI riga|\n");
}

TEST(GuidGenerator, IdentifiersAreRandomOnesOfVersionFour) {
  GuidGenerator generatore;
  std::set<std::uint32_t> visti;
  for (int i = 0; i < 200; ++i) {
    const auto guid = generatore.CreaGuid();
    ASSERT_TRUE(guid);
    EXPECT_EQ(guid->terzo >> 12U, 4U);
    EXPECT_EQ(guid->byte[0] >> 6U, 2U);
    visti.insert(guid->primo);
  }
  EXPECT_GT(visti.size(), 195U);
}

TEST(Environment, AVariableThatIsNotSetIsEmpty) {
  ::setenv("ORVE_PROVA_AMBIENTE", "perché", 1);
  ::unsetenv("ORVE_PROVA_ASSENTE");
  Environment ambiente;
  EXPECT_EQ(ambiente.Leggi("ORVE_PROVA_AMBIENTE"), "perché");
  EXPECT_EQ(ambiente.Leggi("ORVE_PROVA_ASSENTE"), "");
  EXPECT_EQ(ambiente.Leggi("ORVE_PROVA_AMBIENTE\0x"s), "");
  ::unsetenv("ORVE_PROVA_AMBIENTE");
}

TEST(Network, TheUserNameStandsInTheBufferBeforeANul) {
  const passwd* const io = ::getpwuid(::geteuid());
  ASSERT_NE(io, nullptr);
  const std::string nome = io->pw_name;
  std::string buffer(100, ' ');
  EXPECT_EQ(Network().WNetGetUserA(buffer), 0);
  EXPECT_EQ(buffer, nome + '\0' + std::string(99 - nome.size(), ' '));
}

TEST(Network, TheDomainIsNoPartOfTheName) {
  EXPECT_EQ(NomeSenzaDominio("arossi"), "arossi");
  EXPECT_EQ(NomeSenzaDominio("AZIENDA\\arossi"), "arossi");
  EXPECT_EQ(NomeSenzaDominio("arossi@azienda.example"), "arossi");
  EXPECT_EQ(NomeSenzaDominio("@"), "@");
  EXPECT_EQ(NomeSenzaDominio(""), "");
}

TEST(Network, ABufferThatIsTooShortStaysAsItWas) {
  std::string buffer = "x";
  EXPECT_EQ(Network().WNetGetUserA(buffer), Network::kBufferTroppoCorto);
  EXPECT_EQ(buffer, "x");
  std::string vuoto;
  EXPECT_EQ(Network().WNetGetUserA(vuoto), Network::kBufferTroppoCorto);
}

TEST(Network, ANameKeepsItsLettersWhateverBytesTheyNeed) {
  std::string buffer(8, ' ');
  EXPECT_EQ(NomeNelBuffer("AZIENDA\\niccolò", buffer), 0);
  EXPECT_EQ(buffer, "niccolò\0"s);
  std::string uno(7, ' ');
  EXPECT_EQ(NomeNelBuffer("niccolò", uno), Network::kBufferTroppoCorto) << "no place for the end";
  EXPECT_EQ(uno, std::string(7, ' '));
  std::string altra(100, ' ');
  EXPECT_EQ(NomeNelBuffer("Αθηνά@azienda.example", altra), 0);
  EXPECT_EQ(altra.substr(0, altra.find('\0')), "Αθηνά");
}

TEST(Network, AUserWithoutANameIsAnError) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can become a user that nobody knows";
  constexpr uid_t kSconosciuto = 3999999999U;
  ASSERT_EQ(::getpwuid(kSconosciuto), nullptr);
  EXPECT_EQ(ComeUtenteOrdinario(
                [] {
                  std::string buffer(100, ' ');
                  const bool giusto = Network().WNetGetUserA(buffer) == Network::kNessunUtente;
                  return giusto && buffer == std::string(100, ' ') ? 0 : 1;
                },
                kSconosciuto),
            0);
}

TEST(DirectoryAssente, EveryQuestionEndsInAnError) {
  DirectoryAssente directory;
  EXPECT_THROW((void)directory.CreaConnessione(), host::Errore);
  EXPECT_THROW((void)directory.CreaRecordSet(), host::Errore);
  try {
    (void)directory.ApriOggetto("LDAP://rootDSE");
    FAIL() << "nessun errore";
  } catch (const host::Errore& errore) {
    EXPECT_EQ(errore.Numero(), 429);
    EXPECT_EQ(errore.Descrizione(), "Su questa macchina non c'è una directory aziendale");
  }
}

}  // namespace orve::adapters::posix
