// The parameters window as the person has it.
#include <string>

#include "forms/misure.h"
#include "prova.h"
#include "win32/finestre/testo.h"

namespace orve::adapters::win32::finestre {
namespace {

class FinestraDeiParametri : public FinestraVera {
 protected:
  static void Preme(const Vista& finestra, const char* pulsante) {
    finestra.Clicca(pulsante);
    EXPECT_TRUE(Attendi([&] { return !finestra.Aperta(); }));
  }
};

TEST_F(FinestraDeiParametri, OnASmtpChannelEveryControlStandsAtItsPlace) {
  Parametri([](const Vista& finestra) {
    EXPECT_EQ(finestra.Titolo(), "Personalizzazione unica invio mail");
    EXPECT_EQ(finestra.Interno().cx, 516);
    EXPECT_EQ(finestra.Interno().cy, 335);
    for (const auto& controllo : LayoutMailParams().controlli) {
      if (controllo.tipo == host::TipoControllo::kResizeForm) continue;
      const auto voluto = forms::InPixel(controllo.posizione);
      const RECT posto = finestra.Posto(std::string(controllo.nome));
      EXPECT_EQ(posto.left, voluto.left) << controllo.nome;
      EXPECT_EQ(posto.top, voluto.top) << controllo.nome;
      EXPECT_EQ(posto.right - posto.left, voluto.width) << controllo.nome;
      EXPECT_TRUE(finestra.Vede(std::string(controllo.nome))) << controllo.nome;
    }
  });
}

TEST_F(FinestraDeiParametri, OnTheOthersWhatStandsBelowMovesUp) {
  servizio->SrvMailInstallato = kvMAPI;
  Parametri([](const Vista& finestra) {
    for (const char* nome :
         {"CMB_TIPO", "CMB_ACCOUNT", "CHK_READ", "CHK_DELIVERY", "KVL_LABEL1", "KVL_LABEL2"}) {
      EXPECT_FALSE(finestra.Vede(nome)) << nome;
    }
    EXPECT_EQ(finestra.Interno().cy, 314);
    EXPECT_EQ(finestra.Posto("KVL_ALLEGA").top, 16);
    EXPECT_EQ(finestra.Posto("TXT_CORPO").top, 64);
    EXPECT_EQ(finestra.Posto("CMD_OK").top, 283);
  });
}

TEST_F(FinestraDeiParametri, TheAnswersReachTheService) {
  const std::string file = cartella.File("listino.pdf");
  servizio->MailParamCorpoUnico("Prima");
  Parametri([&](const Vista& finestra) {
    finestra.Clicca("KVL_ALLEGA");
    ScegliFile(programma, file);
    EXPECT_TRUE(Attendi([&] { return finestra.Contenuto("TXT_ALLEGATO") == file; }));
    finestra.Clicca("CHK_READ");
    finestra.Riscrive("TXT_CORPO", "Dopo");
    Preme(finestra, "CMD_OK");
  });
  EXPECT_TRUE(servizio->MailParamIsValoriValidi());
  EXPECT_EQ(servizio->MailParamAllegatoUnico(), file);
  EXPECT_EQ(servizio->MailParamCorpoUnico(), "Dopo");
  EXPECT_TRUE(servizio->MailParamReadRcpt());
  EXPECT_FALSE(servizio->MailParamDeliveryStatus());
}

TEST_F(FinestraDeiParametri, APathThatDoesNotExistIsToldAndTheWindowStays) {
  Parametri([&](const Vista& finestra) {
    finestra.Digita("TXT_ALLEGATO", "C:\\manca\\file.pdf");
    finestra.Clicca("CMD_OK");
    EXPECT_EQ(Risponde(programma, "Percorso allegato non valido."), "Avviso|" + std::to_string(IDOK) + ";");
    EXPECT_TRUE(finestra.Aperta());
  });
  EXPECT_FALSE(servizio->MailParamIsValoriValidi());
}

TEST_F(FinestraDeiParametri, APathWithoutItsSeparatorIsToldAndTheWindowStays) {
  Parametri([&](const Vista& finestra) {
    finestra.Digita("TXT_ALLEGATO", "file.pdf");
    finestra.Clicca("CMD_OK");
    Risponde(programma, "5 Chiamata di routine o argomento non validi");
    EXPECT_TRUE(finestra.Aperta());
  });
}

TEST_F(FinestraDeiParametri, ChoosingPecLoadsTheAccountsOfThatKind) {
  Parametri([&](const Vista& finestra) {
    EXPECT_EQ(finestra.Contenuto("CMB_TIPO"), "Mail");
    EXPECT_EQ(finestra.Contenuto("CMB_ACCOUNT"), "noi@azienda.example - Mail");
    finestra.Fuoco("CMB_TIPO");
    finestra.Tasto(VK_DOWN);
    EXPECT_EQ(finestra.Contenuto("CMB_ACCOUNT"), "noi@azienda.example - Pec");
    Preme(finestra, "CMD_OK");
  });
  EXPECT_EQ(servizio->MailParamTipo(), 1.0F);
  EXPECT_TRUE(servizio->IsPec());
}

TEST_F(FinestraDeiParametri, EscapeLeavesTheAnswersUnconfirmed) {
  servizio->MailParamCorpoUnico("Prima");
  Parametri([&](const Vista& finestra) {
    finestra.Fuoco("TXT_CORPO");
    finestra.Tasto(VK_ESCAPE);
    EXPECT_TRUE(Attendi([&] { return !finestra.Aperta(); }));
  });
  EXPECT_FALSE(servizio->MailParamIsValoriValidi());
  EXPECT_EQ(servizio->MailParamCorpoUnico(), "Prima");
}

TEST_F(FinestraDeiParametri, TheKeyboardGoesByThePlacesAndAMnemonicConfirms) {
  Parametri([](const Vista& finestra) {
    std::vector<std::string> giro;
    for (int i = 0; i < 9; ++i) {
      giro.push_back(finestra.Fuoco());
      finestra.Tasto(VK_TAB);
    }
    EXPECT_THAT(giro,
                ::testing::ElementsAre("CMB_TIPO", "CHK_READ", "CHK_DELIVERY", "CMB_ACCOUNT", "KVL_ALLEGA",
                                       "TXT_ALLEGATO", "TXT_CORPO", "CMD_OK", "CMD_ANNULLA"));
    finestra.Mnemonico('o');
    EXPECT_TRUE(Attendi([&] { return !finestra.Aperta(); }));
  });
  EXPECT_TRUE(servizio->MailParamIsValoriValidi());
}

TEST_F(FinestraDeiParametri, TheFrameGrowsWithItsContentsAndTheButtonsOnlyMove) {
  Parametri([&](const Vista& finestra) {
    finestra.Ridimensiona(774, 670);
    const RECT cornice = finestra.Posto("FRM_PARAM");
    EXPECT_EQ(cornice.left, 2);
    EXPECT_EQ(cornice.right, 765);
    EXPECT_EQ(cornice.bottom, 604);
    const RECT ok = finestra.Posto("CMD_OK");
    EXPECT_EQ(ok.left, 540);
    EXPECT_EQ(ok.top, 608);
    EXPECT_EQ(ok.right - ok.left, 73);
    finestra.Ridimensiona(10, 10);
    EXPECT_EQ(finestra.Interno().cx, 516);
    EXPECT_EQ(finestra.Interno().cy, 335);
  });
}

TEST_F(FinestraDeiParametri, APathIsLimitedForThePersonAndNotForTheChoice) {
  const std::string lungo = cartella.File(std::string(120, 'n') + ".pdf");
  Parametri([&](const Vista& finestra) {
    finestra.Incolla("TXT_ALLEGATO", std::string(200, 'x'));
    EXPECT_EQ(finestra.Contenuto("TXT_ALLEGATO"), std::string(100, 'x'));
    finestra.Clicca("KVL_ALLEGA");
    ScegliFile(programma, lungo);
    EXPECT_TRUE(Attendi([&] { return finestra.Contenuto("TXT_ALLEGATO") == lungo; }));
    Preme(finestra, "CMD_OK");
  });
  EXPECT_EQ(servizio->MailParamAllegatoUnico(), lungo);
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
