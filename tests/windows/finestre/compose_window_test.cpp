// The compose window as the person has it: real controls, driven by messages.
#include <string>
#include <vector>

#include "forms/contenuto.h"
#include "forms/misure.h"
#include "prova.h"

namespace orve::adapters::win32::finestre {
namespace {

class FinestraDiInvio : public FinestraVera {};

TEST_F(FinestraDiInvio, WhatIsBelowTheEdgeOfItsFrameIsNotSeen) {
  Apri([](const Vista& finestra) {
    RECT cornice = {};
    GetClientRect(GetParent(finestra.Trova("TXT_DITTA")), &cornice);
    EXPECT_GE(finestra.Posto("TXT_DITTA").top, cornice.bottom);
    EXPECT_GE(finestra.Posto("Label2").top, cornice.bottom);
  });
}

TEST_F(FinestraDiInvio, AMessageKeepsTheWindowAfterItStill) {
  Apri([this](const Vista& finestra) {
    finestra.Digita("TXT_EMAIL", ";");
    finestra.Clicca("cmd_Invia");
    EXPECT_TRUE(Attendi([&] { return IsWindowEnabled(finestra.Finestra()) == FALSE; }));
    // From another program, bypassing the box: as little effect as a click would have.
    SendMessageW(finestra.Finestra(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(finestra.Aperta());
    Risponde(programma, "L'elenco dei destinatari contiene un indirizzo non valido.");
    EXPECT_TRUE(IsWindowEnabled(finestra.Finestra()));
  });
}

TEST_F(FinestraDiInvio, LookingThroughTheOpenListChangesNothingUntilAChoice) {
  Accounts({RigaAccount(12, "noi@azienda.example", 1), RigaAccount(13, "muto@azienda.example", -1)});
  Apri([](const Vista& finestra) {
    finestra.Fuoco("CMB_ACCOUNT");
    auto* combo = finestra.Trova("CMB_ACCOUNT");
    SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0);
    finestra.Tasto(VK_DOWN);
    EXPECT_TRUE(finestra.Vede("CHK_RICEVUTA"));
    finestra.Tasto(VK_RETURN);
    EXPECT_FALSE(finestra.Vede("CHK_RICEVUTA"));
    SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0);
    finestra.Tasto(VK_UP);
    finestra.Tasto(VK_ESCAPE);
    EXPECT_EQ(finestra.Contenuto("CMB_ACCOUNT"), "muto@azienda.example - Mail");
    EXPECT_TRUE(finestra.Aperta());
  });
}

TEST_F(FinestraDiInvio, ASenderChosenDuringTheDeliveryIsNotShownAsTheSenderUsed) {
  Collezione().AddFromLista("luca@cliente.example", "Luca", "", 0);
  Accounts({RigaAccount(12, "noi@azienda.example"), RigaAccount(13, "altro@azienda.example")});
  std::string mostrato;
  Apri([&](const Vista& finestra) {
    AllaConsegna([&] {
      auto* combo = finestra.Trova("CMB_ACCOUNT");
      SendMessageW(combo, WM_KEYDOWN, VK_DOWN, 1);
      mostrato = finestra.Contenuto("CMB_ACCOUNT");
    });
    finestra.Clicca("cmd_Invia");
    EXPECT_TRUE(Attendi([&] { return !finestra.Aperta(); }));
  });
  EXPECT_EQ(mostrato, "noi@azienda.example - Mail");
}

}  // namespace
}  // namespace orve::adapters::win32::finestre
