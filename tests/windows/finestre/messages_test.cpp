// Message boxes.
#include <string>

#include "prova.h"

namespace orve::adapters::win32::finestre {
namespace {

TEST(Messaggi, AVeryLongTextKeepsItsButtonsOnTheScreen) {
  const Programma programma;
  const Compagno persona([&] { Risponde(programma, std::string(2000, 'x') + "…"); });
  EXPECT_EQ(Finestre().CreaMessaggi()->MostraMsg(std::string(20000, 'x'), host::kSemplice, "", nullptr), 1);
}

TEST(Messaggi, TheTitleOfAWindowIsMadeOnce) {
  Finestre finestre({.programma = "Gestionale"});
  const auto messaggi = finestre.CreaMessaggi();
  EXPECT_EQ(messaggi->TitoloFinestra("Invio email..."), "Invio email... - Gestionale");
  EXPECT_EQ(messaggi->TitoloFinestra("Invio email... - Gestionale"), "Invio email... - Gestionale");
}

}  // namespace
}  // namespace orve::adapters::win32::finestre
