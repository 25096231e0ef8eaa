// Message boxes, and what happens where no window can be shown.
#include <QMessageBox>
#include <QTest>
#include <string>
#include <vector>

#include "dialogs/layouts.h"
#include "prova.h"
#include "support/process.h"

namespace orve::adapters::qt {
namespace {

using ::testing::HasSubstr;

struct Stile {
  const char* nome;
  std::int32_t stile;
  QMessageBox::Icon figura;
  std::int32_t risposta;
};

class Messaggio : public ::testing::TestWithParam<Stile> {};

TEST_P(Messaggio, ShowsItsPictureAndTakesEscapeForTheAnswerThatDoesNothing) {
  const auto& caso = GetParam();
  Regia regia;
  regia.Poi("MostraMsg", [&](QWidget& finestra) {
    auto& casella = dynamic_cast<QMessageBox&>(finestra);
    EXPECT_EQ(casella.icon(), caso.figura);
    QTest::keyClick(&casella, Qt::Key_Escape);
  });
  Finestre finestre;
  EXPECT_EQ(finestre.CreaMessaggi()->MostraMsg("testo", caso.stile, "Titolo", nullptr), caso.risposta);
}

INSTANTIATE_TEST_SUITE_P(Stili, Messaggio,
                         ::testing::Values(Stile{"Semplice", 0, QMessageBox::NoIcon, 1},
                                           Stile{"Critico", 16, QMessageBox::Critical, 1},
                                           Stile{"Avviso", 48, QMessageBox::Warning, 1},
                                           Stile{"Domanda", 52, QMessageBox::Warning, 7},
                                           Stile{"Informazione", 64, QMessageBox::Information, 1}),
                         [](const auto& caso) { return std::string(caso.param.nome); });

TEST(Messaggi, AVeryLongTextKeepsItsButtonsOnTheScreen) {
  Regia regia;
  const std::string lungo(20000, 'x');
  regia.Poi("MostraMsg", [&](QWidget& finestra) {
    auto& casella = dynamic_cast<QMessageBox&>(finestra);
    EXPECT_LT(casella.text().size(), 3000);
    EXPECT_EQ(casella.detailedText().toStdString(), lungo);
    casella.close();
  });
  Finestre finestre;
  finestre.CreaMessaggi()->MostraMsg(lungo, host::kSemplice, "", nullptr);
}

TEST(Messaggi, TheTitleOfAWindowIsMadeOnce) {
  Finestre finestre({.programma = "Gestionale"});
  const auto messaggi = finestre.CreaMessaggi();
  EXPECT_EQ(messaggi->TitoloFinestra("Invio email..."), "Invio email... - Gestionale");
  EXPECT_EQ(messaggi->TitoloFinestra("Invio email... - Gestionale"), "Invio email... - Gestionale");
  EXPECT_EQ(Finestre().CreaMessaggi()->TitoloFinestra("Invio email..."), "Invio email...");
}

// --- without a display. Each runs in a process of its own, since a process opens its display only once.

std::int32_t NumeroErrore(std::string& descrizione) {
  Finestre finestre;
  try {
    static_cast<void>(finestre.CreaForm(LayoutOpzMail()));
  } catch (const host::Errore& errore) {
    descrizione = errore.Descrizione();
    return errore.Numero();
  }
  return 0;
}

TEST(SenzaSchermo, DISABLED_NoWindow) {
  for (int volta = 0; volta < 2; ++volta) {
    std::string descrizione;
    EXPECT_EQ(NumeroErrore(descrizione), 429);
    EXPECT_THAT(descrizione, HasSubstr("non c'è uno schermo"));
  }
  EXPECT_THROW(Finestre().CreaMessaggi()->MostraMsg("testo", 0, "", nullptr), host::Errore);
}

int InUnProcesso(const std::vector<std::string>& variabili) {
  std::vector<std::string> comando = {"env",     "-u", "QT_QPA_PLATFORM", "-u",
                                      "DISPLAY", "-u", "WAYLAND_DISPLAY"};
  comando.insert(comando.end(), variabili.begin(), variabili.end());
  comando.push_back(std::filesystem::read_symlink("/proc/self/exe").string());
  comando.emplace_back("--gtest_also_run_disabled_tests");
  comando.emplace_back("--gtest_filter=SenzaSchermo.DISABLED_NoWindow");
  return support::RunProgram(comando).status;
}

TEST(SenzaSchermo, AMachineWithoutADisplayGivesAClearError) {
  EXPECT_EQ(InUnProcesso({}), 0);
}

TEST(SenzaSchermo, ADisplayThatDoesNotAnswerGivesTheSameError) {
  EXPECT_EQ(InUnProcesso({"DISPLAY=:9876"}), 0);
}

}  // namespace
}  // namespace orve::adapters::qt
