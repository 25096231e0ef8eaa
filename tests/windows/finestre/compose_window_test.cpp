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

TEST_F(FinestraDiInvio, EveryControlStandsAtItsPlace) {
  Apri([](const Vista& finestra) {
    EXPECT_EQ(finestra.Titolo(), "Invio email...");
    EXPECT_EQ(finestra.Interno().cx, 715);
    EXPECT_EQ(finestra.Interno().cy, 486);
    for (const auto& controllo : LayoutOpzMail().controlli) {
      if (controllo.tipo == host::TipoControllo::kResizeForm) continue;
      const auto voluto = forms::InPixel(controllo.posizione);
      const RECT posto = finestra.Posto(std::string(controllo.nome));
      EXPECT_EQ(posto.left, voluto.left) << controllo.nome;
      EXPECT_EQ(posto.top, voluto.top) << controllo.nome;
      EXPECT_EQ(posto.right - posto.left, voluto.width) << controllo.nome;
      if (controllo.tipo == host::TipoControllo::kEtichetta) continue;  // as high as a line
      EXPECT_EQ(posto.bottom - posto.top, voluto.height) << controllo.nome;
    }
  });
}

TEST_F(FinestraDiInvio, WhatIsHiddenByDesignIsNotSeenAndTheKeyboardPassesIt) {
  Apri([](const Vista& finestra) {
    EXPECT_FALSE(finestra.Vede("CHK_CORPO"));
    EXPECT_FALSE(finestra.Vede("CHK_CONSEGNA"));
    RECT cornice = {};
    GetClientRect(GetParent(finestra.Trova("TXT_DITTA")), &cornice);
    EXPECT_GE(finestra.Posto("TXT_DITTA").top, cornice.bottom);
    EXPECT_GE(finestra.Posto("Label2").top, cornice.bottom);
    std::vector<std::string> giro;
    for (int i = 0; i < 16; ++i) {
      giro.push_back(finestra.Fuoco());
      finestra.Tasto(VK_TAB);
    }
    EXPECT_THAT(giro, ElementsAre("CMB_ACCOUNT", "BTN_DEST_A", "TXT_EMAIL", "BTN_DEST_CC", "TXT_EMAIL_CC",
                                  "BTN_DEST_CCN", "TXT_EMAIL_CCN", "TXT_OGGETTO", "GRID_ALLEGATI",
                                  "KVL_ALLEGA", "BTN_ELIMINA", "TXT_CORPO", "CMD_LEGENDA", "CHK_RICEVUTA",
                                  "cmd_Invia", "cmd_Annulla"));
    EXPECT_EQ(finestra.Fuoco(), "CMB_ACCOUNT");
  });
}

TEST_F(FinestraDiInvio, WhatThePersonWroteIsSent) {
  servizio->vOggetto = "Vecchio";
  servizio->vCorpoMail = "Corpo";
  servizio->vFlagCorpo = 1;
  Collezione().AddFromLista("anna@x.example", "Anna", "ACME", 0);
  Apri([](const Vista& finestra) {
    EXPECT_EQ(finestra.Contenuto("TXT_EMAIL"), "Anna<anna@x.example>");
    EXPECT_EQ(finestra.Contenuto("TXT_OGGETTO"), "Vecchio");
    EXPECT_EQ(finestra.Contenuto("TXT_CORPO"), "Corpo");
    finestra.Digita("TXT_EMAIL", ";bruno@x.example");
    finestra.Digita("TXT_EMAIL_CC", "capo@x.example");
    finestra.Riscrive("TXT_OGGETTO", "Nuovo: perché no? Αθήνα");
    finestra.Digita("TXT_CORPO", " cambiato");
    finestra.Clicca("cmd_Invia");
    EXPECT_TRUE(Attendi([&] { return !finestra.Aperta(); }));
  });
  EXPECT_TRUE(Consegnato());
  EXPECT_EQ(servizio->vOggetto, "Nuovo: perché no? Αθήνα");
  EXPECT_EQ(servizio->vCorpoMail, "Corpo cambiato");
  EXPECT_EQ(servizio->vCollDestinatari->Count(), 3);
}

TEST_F(FinestraDiInvio, TheMnemonicSends) {
  Collezione().AddFromLista("anna@x.example", "Anna", "", 0);
  Apri([](const Vista& finestra) {
    finestra.Fuoco("TXT_OGGETTO");
    finestra.Mnemonico('i');
    EXPECT_TRUE(Attendi([&] { return !finestra.Aperta(); }));
  });
  EXPECT_TRUE(Consegnato());
}

TEST_F(FinestraDiInvio, ReturnInABoxSendsNothing) {
  Collezione().AddFromLista("anna@x.example", "Anna", "", 0);
  Apri([](const Vista& finestra) {
    finestra.Fuoco("TXT_OGGETTO");
    finestra.Tasto(VK_RETURN);
    EXPECT_TRUE(finestra.Aperta());
  });
  EXPECT_FALSE(Consegnato());
}

TEST_F(FinestraDiInvio, ReturnOnTheButtonSends) {
  Collezione().AddFromLista("anna@x.example", "Anna", "", 0);
  Apri([](const Vista& finestra) {
    finestra.Fuoco("cmd_Invia");
    finestra.Tasto(VK_RETURN);
    EXPECT_TRUE(Attendi([&] { return !finestra.Aperta(); }));
  });
  EXPECT_TRUE(Consegnato());
}

TEST_F(FinestraDiInvio, WithoutRecipientsTheButtonDoesNothing) {
  Apri([](const Vista& finestra) {
    finestra.Clicca("cmd_Invia");
    finestra.IlProgramma().Respira();
    EXPECT_TRUE(finestra.Aperta());
  });
  EXPECT_FALSE(Consegnato());
}

TEST_F(FinestraDiInvio, ABadAddressIsToldAndTheBoxesStay) {
  Apri([this](const Vista& finestra) {
    finestra.Digita("TXT_EMAIL", "anna@x.example;;");
    finestra.Clicca("cmd_Invia");
    const auto detto = Risponde(programma, "L'elenco dei destinatari contiene un indirizzo non valido.");
    EXPECT_EQ(detto, "Invio email...|" + std::to_string(IDOK) + ";");
    EXPECT_TRUE(finestra.Aperta());
    EXPECT_EQ(finestra.Contenuto("TXT_EMAIL"), "anna@x.example;;");
  });
  EXPECT_FALSE(Consegnato());
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

TEST_F(FinestraDiInvio, WithoutAnAccountThePersonIsToldAndNoWindowComes) {
  Accounts({});
  {
    const Compagno persona([this] { Risponde(programma, "Non è disponibile alcun account mail"); });
    ApriForm_OpzInvio(aperto.interno, *servizio);
  }
  EXPECT_FALSE(Consegnato());
}

TEST_F(FinestraDiInvio, AnotherAccountShowsOrHidesTheReceipt) {
  Accounts({RigaAccount(12, "noi@azienda.example", 1), RigaAccount(13, "muto@azienda.example", -1)});
  Apri([](const Vista& finestra) {
    EXPECT_EQ(finestra.Contenuto("CMB_ACCOUNT"), "noi@azienda.example - Mail");
    EXPECT_TRUE(finestra.Vede("CHK_RICEVUTA"));
    EXPECT_TRUE(finestra.Spuntata("CHK_RICEVUTA"));
    finestra.Fuoco("CMB_ACCOUNT");
    finestra.Tasto(VK_DOWN);
    EXPECT_EQ(finestra.Contenuto("CMB_ACCOUNT"), "muto@azienda.example - Mail");
    EXPECT_FALSE(finestra.Vede("CHK_RICEVUTA"));
    finestra.Tasto(VK_UP);
    EXPECT_TRUE(finestra.Vede("CHK_RICEVUTA"));
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

TEST_F(FinestraDiInvio, AnAccountFixedByTheParametersCannotBeChanged) {
  servizio->IsInvioMailConParams(true);
  Apri([](const Vista& finestra) {
    EXPECT_TRUE(finestra.Vede("CMB_ACCOUNT"));
    EXPECT_FALSE(finestra.Attivo("CMB_ACCOUNT"));
  });
}

TEST_F(FinestraDiInvio, TheReceiptBoxGoesWithTheMessage) {
  Collezione().AddFromLista("anna@x.example", "Anna", "", 0);
  Apri([](const Vista& finestra) {
    EXPECT_FALSE(finestra.Spuntata("CHK_RICEVUTA"));
    finestra.Clicca("CHK_RICEVUTA");
    EXPECT_TRUE(Attendi([&] { return finestra.Spuntata("CHK_RICEVUTA"); }));
    finestra.Clicca("cmd_Invia");
    EXPECT_TRUE(Attendi([&] { return !finestra.Aperta(); }));
  });
  EXPECT_TRUE(servizio->ReadReceipt);
}

struct Fine {
  const char* nome;
  void (*azione)(const Vista&);
};

class FinestraLasciata : public FinestraVera, public ::testing::WithParamInterface<Fine> {};

TEST_P(FinestraLasciata, LeavesNoTrace) {
  servizio->vOggetto = "Prima";
  Collezione().AddFromLista("anna@x.example", "Anna", "", 0);
  Apri([](const Vista& finestra) {
    finestra.Riscrive("TXT_OGGETTO", "Dopo");
    GetParam().azione(finestra);
    EXPECT_TRUE(Attendi([&] { return !finestra.Aperta(); }));
  });
  EXPECT_EQ(servizio->vOggetto, "Prima");
  EXPECT_FALSE(Consegnato());
}

INSTANTIATE_TEST_SUITE_P(Modi, FinestraLasciata,
                         ::testing::Values(Fine{"Annulla", [](const Vista& f) { f.Clicca("cmd_Annulla"); }},
                                           Fine{"Mnemonico", [](const Vista& f) { f.Mnemonico('a'); }},
                                           Fine{"Chiudi", [](const Vista& f) { f.Chiude(); }}),
                         [](const auto& caso) { return std::string(caso.param.nome); });

class Abbandono : public FinestraVera {
 protected:
  Abbandono() {
    servizio->vOggetto = "Prima";
    Collezione().AddFromLista("anna@x.example", "Anna", "", 0);
    Accounts({RigaAccount(12, "noi@azienda.example"), RigaAccount(13, "altro@azienda.example")});
  }
  static void Esc(const Vista& finestra, const char* controllo) {
    finestra.Fuoco(controllo);
    finestra.Tasto(VK_ESCAPE);
  }
};

TEST_F(Abbandono, EscapeLeavesAnUnchangedMessageWithoutAsking) {
  for (const char* controllo : {"TXT_CORPO", "TXT_EMAIL"}) {
    servizio->vCollMittenti.reset();
    Apri([&](const Vista& finestra) {
      finestra.Riscrive("TXT_OGGETTO", "Prima");
      Esc(finestra, controllo);
      EXPECT_TRUE(Attendi([&] { return !finestra.Aperta(); }));
    });
  }
}

TEST_F(Abbandono, EscapeAsksBeforeAChangedMessageIsLost) {
  Apri([this](const Vista& finestra) {
    finestra.Riscrive("TXT_OGGETTO", "Dopo");
    Esc(finestra, "TXT_CORPO");
    EXPECT_EQ(Risponde(programma, forms::kDomandaAbbandono, IDNO),
              "Invio email...|" + std::to_string(IDYES) + ";" + std::to_string(IDNO) + ";");
    EXPECT_TRUE(finestra.Aperta());
    EXPECT_EQ(finestra.Contenuto("TXT_OGGETTO"), "Dopo");
    Esc(finestra, "TXT_EMAIL");
    Risponde(programma, forms::kDomandaAbbandono, IDYES);
    EXPECT_TRUE(Attendi([&] { return !finestra.Aperta(); }));
  });
  EXPECT_EQ(servizio->vOggetto, "Prima");
  EXPECT_FALSE(Consegnato());
}

class AbbandonoDiUnCambio : public Abbandono, public ::testing::WithParamInterface<Fine> {};

TEST_P(AbbandonoDiUnCambio, IsAskedFor) {
  servizio->vElencoAllegati = Variant::Array{cartella.File("a.txt")};
  Apri([this](const Vista& finestra) {
    GetParam().azione(finestra);
    Esc(finestra, "TXT_EMAIL");
    Risponde(programma, forms::kDomandaAbbandono, IDNO);
    EXPECT_TRUE(finestra.Aperta());
  });
}

INSTANTIATE_TEST_SUITE_P(Cambi, AbbandonoDiUnCambio,
                         ::testing::Values(Fine{"Corpo", [](const Vista& f) { f.Digita("TXT_CORPO", "!"); }},
                                           Fine{"Allegati",
                                                [](const Vista& f) {
                                                  f.Sceglie("BTN_ELIMINA", "Elimina allegato");
                                                  EXPECT_TRUE(Attendi([&] { return f.Righe().empty(); }));
                                                }},
                                           Fine{"Ricevuta",
                                                [](const Vista& f) {
                                                  f.Clicca("CHK_RICEVUTA");
                                                  EXPECT_TRUE(
                                                      Attendi([&] { return f.Spuntata("CHK_RICEVUTA"); }));
                                                }},
                                           Fine{"Mittente",
                                                [](const Vista& f) {
                                                  f.Fuoco("CMB_ACCOUNT");
                                                  f.Tasto(VK_DOWN);
                                                }}),
                         [](const auto& caso) { return std::string(caso.param.nome); });

struct Canale {
  const char* nome;
  std::int32_t numero;
  bool mittente;
};

class FormaPerCanale : public FinestraVera, public ::testing::WithParamInterface<Canale> {};

TEST_P(FormaPerCanale, TheSenderFrameTakesItsHeightAwayWithIt) {
  servizio->SrvMailInstallato = static_cast<kvEnum_ServizioMail>(GetParam().numero);
  Apri([conMittente = GetParam().mittente](const Vista& finestra) {
    EXPECT_EQ(finestra.Interno().cy, conMittente ? 486 : 437);
    EXPECT_EQ(finestra.Vede("FMR_MITTENTE"), conMittente);
    EXPECT_EQ(finestra.Vede("CMB_ACCOUNT"), conMittente);
    EXPECT_EQ(finestra.Vede("CHK_RICEVUTA"), conMittente);
    EXPECT_EQ(finestra.Posto("FMR_DESTINATARIO").top, conMittente ? 48 : -1);
    EXPECT_EQ(finestra.Posto("FMR_PERS").top, conMittente ? 152 : 103);
    EXPECT_EQ(finestra.Posto("cmd_Invia").top, conMittente ? 459 : 410);
    EXPECT_EQ(finestra.Posto("cmd_Annulla").top, conMittente ? 459 : 410);
    EXPECT_EQ(finestra.Fuoco(), conMittente ? "CMB_ACCOUNT" : "BTN_DEST_A");
  });
}

INSTANTIATE_TEST_SUITE_P(Canali, FormaPerCanale,
                         ::testing::Values(Canale{"SimpleMAPI", 0, false}, Canale{"Outlook", 1, false},
                                           Canale{"MAPI", 2, false}, Canale{"Smtp", 76, true},
                                           Canale{"SmtpSsl", 77, true}),
                         [](const auto& caso) { return std::string(caso.param.nome); });

void EqualePosto(const RECT& posto, int left, int top, int width, int height) {
  EXPECT_EQ(posto.left, left);
  EXPECT_EQ(posto.top, top);
  EXPECT_EQ(posto.right - posto.left, width);
  EXPECT_EQ(posto.bottom - posto.top, height);
}

TEST_F(FinestraDiInvio, ControlsKeepTheirProportionsInALargerWindow) {
  Apri([](const Vista& finestra) {
    finestra.Ridimensiona(1001, 729);
    EqualePosto(finestra.Posto("FMR_PERS"), 6, 228, 989, 455);
    EqualePosto(finestra.Posto("TXT_CORPO"), 8, 168, 971, 240);
    // A single-line box stays one line high, centred in its place.
    EqualePosto(finestra.Posto("TXT_OGGETTO"), 85, 29, 892, 20);
    EqualePosto(finestra.Posto("cmd_Annulla"), 895, 694, 100, 23);
    finestra.Ridimensiona(715, 486);
    EqualePosto(finestra.Posto("FMR_PERS"), 4, 152, 707, 303);
    EqualePosto(finestra.Posto("TXT_OGGETTO"), 61, 16, 637, 20);
    EqualePosto(finestra.Posto("cmd_Annulla"), 639, 459, 72, 23);
  });
}

TEST_F(FinestraDiInvio, TheWindowGetsNoSmallerThanItsTable) {
  Apri([](const Vista& finestra) {
    finestra.Ridimensiona(100, 100);
    EXPECT_EQ(finestra.Interno().cx, 715);
    EXPECT_EQ(finestra.Interno().cy, 486);
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

TEST_F(FinestraDiInvio, TheBookOfTheApplicationIsSwitchedOffWithoutItsManager) {
  Apri([](const Vista& finestra) {
    EXPECT_THAT(finestra.VociDiMenu("BTN_DEST_A"), ElementsAre("(Arvio)", "Outlook"));
    EXPECT_THAT(finestra.VociDiMenu("BTN_DEST_CCN"), ElementsAre("(Arvio)", "Outlook"));
  });
}

// The check box for the body starts switched off, and is then set to off: that alone loads the text.
TEST_F(FinestraDiInvio, WithoutABodyOfTheCallersTheStandingMessageIsOpenForEditing) {
  servizio->vFlagCorpo = 0;
  servizio->vCorpoMail = "messo dal chiamante";
  servizio->FlgMsgPers = true;
  servizio->MsgPers = "Gentile ***(Nome)***";
  Apri([](const Vista& finestra) {
    EXPECT_EQ(finestra.Contenuto("TXT_CORPO"), "Gentile ***(Nome)***");
    EXPECT_TRUE(finestra.Attivo("TXT_CORPO"));
    finestra.Digita("TXT_CORPO", "!");
    EXPECT_EQ(finestra.Contenuto("TXT_CORPO"), "Gentile ***(Nome)***!");
  });
}

TEST_F(FinestraDiInvio, ASpecialFieldGoesToTheEndOfTheBody) {
  servizio->vFlagCorpo = 1;
  servizio->vCorpoMail = "Gentile";
  ambiente->parametriCorpo =
      Variant::Array{Variant::Array{"Nome cliente", "#NOME"}, Variant::Array{"Niente", ""}};
  Apri([](const Vista& finestra) {
    EXPECT_THAT(finestra.VociDiMenu("CMD_LEGENDA"), ElementsAre("Nome cliente"));
    finestra.Sceglie("CMD_LEGENDA", "Nome cliente");
    EXPECT_TRUE(Attendi([&] { return finestra.Contenuto("TXT_CORPO") == "Gentile ***(NOME)***"; }));
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

TEST_F(FinestraDiInvio, AnErrorThatLeavesAHandlerIsToldAndTheWindowStays) {
  Accounts({RigaAccount(12, "noi@azienda.example"), RigaAccount(13, "altro@azienda.example")});
  Apri([this](const Vista& finestra) {
    programma.Esegui([this] { servizio->vCollMittenti.reset(); });
    finestra.Fuoco("CMB_ACCOUNT");
    PostMessageW(finestra.Trova("CMB_ACCOUNT"), WM_KEYDOWN, VK_DOWN, 1);
    Risponde(programma, "91 Variabile oggetto non impostata");
    EXPECT_TRUE(finestra.Aperta());
  });
}

}  // namespace
}  // namespace orve::adapters::win32::finestre
