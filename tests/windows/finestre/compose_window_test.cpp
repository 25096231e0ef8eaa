// The compose window as the person has it: real controls, driven by messages.
#include <richedit.h>

#include <string>
#include <vector>

#include "forms/contenuto.h"
#include "forms/misure.h"
#include "prova.h"
#include "service/dialog_bridge.h"

namespace orve::adapters::win32::finestre {
namespace {

using host::Variant;
using ::testing::ElementsAre;

class FinestraDiInvio : public FinestraVera {};

TEST_F(FinestraDiInvio, WhatIsBelowTheEdgeOfItsFrameIsNotSeen) {
  Apri([](const Vista& finestra) {
    RECT cornice = {};
    GetClientRect(GetParent(finestra.Trova("TXT_DITTA")), &cornice);
    EXPECT_GE(finestra.Posto("TXT_DITTA").top, cornice.bottom);
    EXPECT_GE(finestra.Posto("Label2").top, cornice.bottom);
  });
}

TEST_F(FinestraDiInvio, AMessageKeepsTheWindowBehindItStill) {
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

TEST_F(FinestraDiInvio, ConfirmingTheSenderThatStandsLeavesTheReceiptAsItIs) {
  Accounts({RigaAccount(12, "noi@azienda.example"), RigaAccount(13, "altro@azienda.example")});
  Apri([](const Vista& finestra) {
    finestra.Clicca("CHK_RICEVUTA");
    EXPECT_TRUE(Attendi([&] { return finestra.Spuntata("CHK_RICEVUTA"); }));
    finestra.Fuoco("CMB_ACCOUNT");
    SendMessageW(finestra.Trova("CMB_ACCOUNT"), CB_SHOWDROPDOWN, TRUE, 0);
    finestra.Tasto(VK_RETURN);
    EXPECT_TRUE(finestra.Spuntata("CHK_RICEVUTA"));
    finestra.Tasto(VK_DOWN);
    EXPECT_FALSE(finestra.Spuntata("CHK_RICEVUTA"));
  });
}

TEST_F(FinestraDiInvio, TheWheelOverTheClosedListKeepsTheSender) {
  Accounts({RigaAccount(12, "noi@azienda.example"), RigaAccount(13, "altro@azienda.example")});
  Apri([](const Vista& finestra) {
    finestra.Fuoco("CMB_ACCOUNT");
    SendMessageW(finestra.Trova("CMB_ACCOUNT"), WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
    EXPECT_EQ(finestra.Contenuto("CMB_ACCOUNT"), "noi@azienda.example - Mail");
  });
}

TEST_F(FinestraDiInvio, ASecondActivationOnlyRenewsTheMessageObject) {
  Apri([this](const Vista& finestra) {
    finestra.Riscrive("TXT_OGGETTO", "Mio");
    finestra.Digita("TXT_EMAIL", ";");
    std::ptrdiff_t prima = 0;
    programma.Esegui([&] { prima = static_cast<std::ptrdiff_t>(journal->Conta("Ambiente.CreaMessaggi")); });
    finestra.Clicca("cmd_Invia");
    Risponde(programma, "L'elenco dei destinatari contiene un indirizzo non valido.");
    EXPECT_TRUE(Attendi([&] {
      std::ptrdiff_t ora = 0;
      programma.Esegui([&] { ora = static_cast<std::ptrdiff_t>(journal->Conta("Ambiente.CreaMessaggi")); });
      return ora == prima + 1;
    }));
    EXPECT_EQ(finestra.Contenuto("TXT_OGGETTO"), "Mio");
    EXPECT_THAT(finestra.VociDiMenu("BTN_ELIMINA"),
                ElementsAre("(Elimina allegato)", "(Elimina tutti gli allegati)"));
  });
}

TEST_F(FinestraDiInvio, ASpecialFieldLeavesCaretAndViewBehindItAndCanBeUndone) {
  servizio->vFlagCorpo = 1;
  for (int i = 0; i < 60; ++i) servizio->vCorpoMail += "riga\r\n";
  const std::string prima = servizio->vCorpoMail;
  ambiente->parametriCorpo = Variant::Array{Variant(Variant::Array{"Nome cliente", "#NOME"})};
  Collezione().AddFromLista("anna@x.example", "Anna", "", 0);
  Apri([&](const Vista& finestra) {
    auto* corpo = finestra.Trova("TXT_CORPO");
    finestra.Fuoco("TXT_CORPO");
    finestra.Seleziona("TXT_CORPO", 0, 0);
    SendMessageW(corpo, WM_CHAR, L'x', 1);
    finestra.Seleziona("TXT_CORPO", 1 + 60 * 5, 1 + 60 * 5);  // a line end counts as one
    SendMessageW(corpo, WM_CHAR, L'y', 1);
    finestra.Seleziona("TXT_CORPO", 0, 0);
    finestra.Sceglie("CMD_LEGENDA", "Nome cliente");
    EXPECT_TRUE(Attendi([&] { return finestra.Contenuto("TXT_CORPO").ends_with(" ***(NOME)***"); }));
    CHARRANGE cursore = {};
    SendMessageW(corpo, EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&cursore));
    EXPECT_EQ(cursore.cpMin, cursore.cpMax);
    EXPECT_EQ(cursore.cpMax, 1 + 60 * 5 + 1 + 13);
    POINT dove = {};
    SendMessageW(corpo, EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&dove), cursore.cpMax);
    RECT vista = {};
    GetClientRect(corpo, &vista);
    EXPECT_TRUE(dove.y >= vista.top && dove.y < vista.bottom) << dove.y;
    SendMessageW(corpo, EM_UNDO, 0, 0);
    EXPECT_EQ(finestra.Contenuto("TXT_CORPO"), "x" + prima + "y");
    SendMessageW(corpo, EM_UNDO, 0, 0);
    SendMessageW(corpo, EM_UNDO, 0, 0);
    finestra.Clicca("cmd_Invia");
    EXPECT_TRUE(Attendi([&] { return !finestra.Aperta(); }));
  });
  EXPECT_TRUE(Consegnato());
  EXPECT_EQ(servizio->vCorpoMail, prima);
}

TEST_F(FinestraDiInvio, TheArrowBringsAMenuUp) {
  Apri([](const Vista& finestra) {
    finestra.Fuoco("BTN_DEST_A");
    PostMessageW(finestra.Trova("BTN_DEST_A"), WM_KEYDOWN, VK_DOWN, 1);
    const auto menu = [&] {
      for (auto* una : FinestreDi(finestra.IlProgramma())) {
        if (ClasseDi(una) == L"#32768") return true;
      }
      return false;
    };
    EXPECT_TRUE(Attendi(menu));
    PostMessageW(finestra.Finestra(), WM_KEYDOWN, VK_ESCAPE, 1);
    EXPECT_TRUE(Attendi([&] { return !menu(); }));
    EXPECT_TRUE(finestra.Aperta());
  });
}

TEST_F(FinestraDiInvio, WhileTheMessageIsDeliveredTheButtonIsOff) {
  Collezione().AddFromLista("luca@cliente.example", "Luca", "", 0);
  int consegne = 0;
  Apri([&](const Vista& finestra) {
    ambiente->allaConsegna = [&] {
      ++consegne;
      EXPECT_FALSE(finestra.Attivo("cmd_Invia"));
      EXPECT_TRUE(finestra.Aperta());
      EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, MAKEINTRESOURCEW(32514)));  // IDC_WAIT
    };
    finestra.Clicca("cmd_Invia");
    EXPECT_TRUE(Attendi([&] { return !finestra.Aperta(); }));
  });
  EXPECT_EQ(consegne, 1);
}

TEST_F(FinestraDiInvio, ASenderChosenDuringTheDeliveryIsNotShownAsTheSenderUsed) {
  Collezione().AddFromLista("luca@cliente.example", "Luca", "", 0);
  Accounts({RigaAccount(12, "noi@azienda.example"), RigaAccount(13, "altro@azienda.example")});
  std::string mostrato;
  Apri([&](const Vista& finestra) {
    ambiente->allaConsegna = [&] {
      auto* combo = finestra.Trova("CMB_ACCOUNT");
      SendMessageW(combo, WM_KEYDOWN, VK_DOWN, 1);
      mostrato = finestra.Contenuto("CMB_ACCOUNT");
    };
    finestra.Clicca("cmd_Invia");
    EXPECT_TRUE(Attendi([&] { return !finestra.Aperta(); }));
  });
  EXPECT_EQ(mostrato, "noi@azienda.example - Mail");
}

}  // namespace
}  // namespace orve::adapters::win32::finestre
