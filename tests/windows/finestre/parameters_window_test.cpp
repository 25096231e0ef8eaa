// The parameters window as the person has it.
#include <string>

#include "prova.h"

namespace orve::adapters::win32::finestre {
namespace {

class FinestraDeiParametri : public FinestraVera {};

TEST_F(FinestraDeiParametri, AMnemonicConfirms) {
  Parametri([](const Vista& finestra) {
    finestra.Mnemonico('o');
    EXPECT_TRUE(Attendi([&] { return !finestra.Aperta(); }));
  });
  EXPECT_TRUE(servizio->MailParamIsValoriValidi());
}

struct Stile {
  const char* nome;
  std::int32_t stile;
  const char* pulsanti;
  int preme;
};

class Messaggio : public ::testing::TestWithParam<Stile> {};

TEST_P(Messaggio, ShowsItsButtonsAndGivesTheAnswer) {
  const auto& caso = GetParam();
  const Programma programma;
  std::int32_t risposta = 0;
  {
    const Compagno persona([&] {
      EXPECT_EQ(Risponde(programma, "<b>Perché</b> & no? Αθήνα", caso.preme),
                std::string("Titolo|") + caso.pulsanti);
    });
    risposta =
        Finestre().CreaMessaggi()->MostraMsg("<b>Perché</b> & no? Αθήνα", caso.stile, "Titolo", nullptr);
  }
  EXPECT_EQ(risposta, caso.preme);
}

INSTANTIATE_TEST_SUITE_P(Stili, Messaggio,
                         ::testing::Values(Stile{"Semplice", 0, "1;", 1}, Stile{"Critico", 16, "1;", 1},
                                           Stile{"Avviso", 48, "1;", 1}, Stile{"DomandaSi", 52, "6;7;", 6},
                                           Stile{"DomandaNo", 52, "6;7;", 7},
                                           Stile{"Informazione", 64, "1;", 1}),
                         [](const auto& caso) { return std::string(caso.param.nome); });

TEST(Messaggi, AVeryLongTextKeepsItsButtonsOnTheScreen) {
  const Programma programma;
  const Compagno persona([&] { Risponde(programma, std::string(2000, 'x') + "…"); });
  EXPECT_EQ(Finestre().CreaMessaggi()->MostraMsg(std::string(20000, 'x'), host::kSemplice, "", nullptr), 1);
}

TEST(Messaggi, WhatTurnsATextRoundIsShownAsAnEscape) {
  const Programma programma;
  const Compagno persona([&] { EXPECT_EQ(Risponde(programma, "Uno \\u200Ffdp.exe"), "\\u200Folotit|1;"); });
  Finestre().CreaMessaggi()->MostraMsg("Uno \u200Ffdp.exe", host::kSemplice, "\u200Folotit", nullptr);
}

TEST(Messaggi, AMessageBelongsToTheWindowGivenAsItsOwner) {
  const Programma programma;
  Finestre finestre;
  const auto proprietario = finestre.CreaForm(LayoutOpzMail());
  HWND padrone = nullptr;
  std::wstring titolo;
  {
    const Compagno persona([&] {
      EXPECT_TRUE(Attendi([&] {
        for (auto* una : FinestreDi(programma)) padrone = GetWindow(una, GW_OWNER);
        return padrone != nullptr;
      }));
      titolo = TestoDi(padrone);
      Risponde(programma, "testo");
    });
    finestre.CreaMessaggi()->MostraMsg("testo", host::kSemplice, "", proprietario);
  }
  EXPECT_EQ(titolo, L"Invio email...");
}

TEST(Messaggi, TheTitleOfAWindowIsMadeOnce) {
  Finestre finestre({.programma = "Gestionale"});
  const auto messaggi = finestre.CreaMessaggi();
  EXPECT_EQ(messaggi->TitoloFinestra("Invio email..."), "Invio email... - Gestionale");
  EXPECT_EQ(messaggi->TitoloFinestra("Invio email... - Gestionale"), "Invio email... - Gestionale");
}

}  // namespace
}  // namespace orve::adapters::win32::finestre
