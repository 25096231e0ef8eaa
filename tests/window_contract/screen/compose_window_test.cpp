// The compose window on every toolkit with a screen: places, keyboard, and what Escape asks.
#include <string>
#include <vector>

#include "channels/channel_traits.h"
#include "forms/contenuto.h"
#include "forms/misure.h"
#include "window_contract/contratto.h"

namespace orve::window_contract {
namespace {

using adapters::forms::kDomandaAbbandono;
using fakes::RigaAccount;
using host::Variant;
using ::testing::ElementsAre;

class InvioSulloSchermo : public ContrattoSuSchermo {
 protected:
  void StannoAlLoroPosto(const VistaSuSchermo& finestra, const host::LayoutForm& layout) const {
    using enum host::TipoControllo;
    for (const auto& controllo : layout.controlli) {
      if (controllo.tipo == kResizeForm) continue;
      const auto voluto = adapters::forms::InPixel(controllo.posizione);
      const bool didascalia = controllo.tipo == kEtichetta || controllo.tipo == kKvlLabel;
      const int height = didascalia ? toolkit->AltezzaDidascalia(voluto.height) : voluto.height;
      EXPECT_EQ(finestra.Dove(std::string(controllo.nome)),
                (Posto{voluto.left, voluto.top, voluto.width, height}))
          << controllo.nome;
    }
  }
};

TEST_F(InvioSulloSchermo, EveryControlStandsAtItsPlace) {
  Apri([&](const VistaSuSchermo& finestra) {
    EXPECT_EQ(finestra.Area(), (Posto{0, 0, 715, 486}));
    StannoAlLoroPosto(finestra, LayoutOpzMail());
    EXPECT_EQ(finestra.Dove("TXT_EMAIL"), (Posto{61, 19, 637, 20}));
    EXPECT_EQ(finestra.Dove("cmd_Annulla"), (Posto{639, 459, 72, 23}));
  });
}

TEST_F(InvioSulloSchermo, OnASmtpChannelEveryParameterStandsAtItsPlace) {
  Parametri([&](const VistaSuSchermo& finestra) {
    EXPECT_EQ(finestra.Titolo(), "Personalizzazione unica invio mail");
    EXPECT_EQ(finestra.Area(), (Posto{0, 0, 516, 335}));
    StannoAlLoroPosto(finestra, LayoutMailParams());
    for (const auto& controllo : LayoutMailParams().controlli) {
      if (controllo.tipo == host::TipoControllo::kResizeForm) continue;
      EXPECT_TRUE(finestra.Vede(std::string(controllo.nome))) << controllo.nome;
    }
  });
}

TEST_F(InvioSulloSchermo, TheKeyboardGoesByThePlacesAndPassesWhatIsNotSeen) {
  Apri([](const VistaSuSchermo& finestra) {
    std::vector<std::string> giro;
    for (int i = 0; i < 16; ++i) {
      giro.push_back(finestra.ColFuoco());
      finestra.Preme(Tasto::kTab);
    }
    EXPECT_THAT(giro, ElementsAre("CMB_ACCOUNT", "BTN_DEST_A", "TXT_EMAIL", "BTN_DEST_CC", "TXT_EMAIL_CC",
                                  "BTN_DEST_CCN", "TXT_EMAIL_CCN", "TXT_OGGETTO", "GRID_ALLEGATI",
                                  "KVL_ALLEGA", "BTN_ELIMINA", "TXT_CORPO", "CMD_LEGENDA", "CHK_RICEVUTA",
                                  "cmd_Invia", "cmd_Annulla"));
    EXPECT_EQ(finestra.ColFuoco(), "CMB_ACCOUNT");
  });
}

TEST_F(InvioSulloSchermo, InTheParametersToo) {
  Parametri([](const VistaSuSchermo& finestra) {
    std::vector<std::string> giro;
    for (int i = 0; i < 9; ++i) {
      giro.push_back(finestra.ColFuoco());
      finestra.Preme(Tasto::kTab);
    }
    EXPECT_THAT(giro, ElementsAre("CMB_TIPO", "CHK_READ", "CHK_DELIVERY", "CMB_ACCOUNT", "KVL_ALLEGA",
                                  "TXT_ALLEGATO", "TXT_CORPO", "CMD_OK", "CMD_ANNULLA"));
  });
}

TEST_F(InvioSulloSchermo, TheMnemonicSends) {
  Collezione().AddFromLista("anna@x.example", "Anna", "", 0);
  Apri([&](const VistaSuSchermo& finestra) {
    finestra.DaiFuoco("TXT_OGGETTO");
    finestra.PremeMnemonico('i');
    EXPECT_TRUE(Chiusa(finestra));
  });
  EXPECT_TRUE(Consegnato());
}

TEST_F(InvioSulloSchermo, TheOtherMnemonicLeavesNoTrace) {
  servizio->vOggetto = "Prima";
  Collezione().AddFromLista("anna@x.example", "Anna", "", 0);
  Apri([&](const VistaSuSchermo& finestra) {
    finestra.Riscrive("TXT_OGGETTO", "Dopo");
    finestra.PremeMnemonico('a');
    EXPECT_TRUE(Chiusa(finestra));
  });
  EXPECT_EQ(servizio->vOggetto, "Prima");
  EXPECT_FALSE(Consegnato());
}

TEST_F(InvioSulloSchermo, ReturnInABoxSendsNothing) {
  Collezione().AddFromLista("anna@x.example", "Anna", "", 0);
  Apri([](const VistaSuSchermo& finestra) {
    finestra.DaiFuoco("TXT_OGGETTO");
    finestra.Preme(Tasto::kInvio);
    EXPECT_TRUE(finestra.Aperta());
  });
  EXPECT_FALSE(Consegnato());
}

TEST_F(InvioSulloSchermo, ReturnOnTheButtonSends) {
  Collezione().AddFromLista("anna@x.example", "Anna", "", 0);
  Apri([&](const VistaSuSchermo& finestra) {
    finestra.DaiFuoco("cmd_Invia");
    finestra.Preme(Tasto::kInvio);
    EXPECT_TRUE(Chiusa(finestra));
  });
  EXPECT_TRUE(Consegnato());
}

TEST_F(InvioSulloSchermo, AnErrorThatLeavesAHandlerIsToldAndTheWindowStays) {
  Accounts({RigaAccount(12, "noi@azienda.example"), RigaAccount(13, "altro@azienda.example")});
  Apri([&](const VistaSuSchermo& finestra) {
    toolkit->NelProgramma([this] { servizio->vCollMittenti.reset(); });
    toolkit->Risponde([&] { finestra.VoceDopo("CMB_ACCOUNT"); }, "91 Variabile oggetto non impostata",
                      Risposta::kOk);
    EXPECT_TRUE(finestra.Aperta());
  });
}

TEST_F(InvioSulloSchermo, ConfirmingTheSenderThatStandsLeavesTheReceiptAsItIs) {
  Accounts({RigaAccount(12, "noi@azienda.example"), RigaAccount(13, "altro@azienda.example")});
  Apri([&](const VistaSuSchermo& finestra) {
    finestra.Clicca("CHK_RICEVUTA");
    EXPECT_TRUE(toolkit->Attende([&] { return finestra.Spuntata("CHK_RICEVUTA"); }));
    finestra.ConfermaVoce("CMB_ACCOUNT");
    EXPECT_TRUE(finestra.Spuntata("CHK_RICEVUTA"));
    finestra.VoceDopo("CMB_ACCOUNT");
    EXPECT_FALSE(finestra.Spuntata("CHK_RICEVUTA"));
  });
}

TEST_F(InvioSulloSchermo, TheArrowBringsAMenuUp) {
  Apri([](const VistaSuSchermo& finestra) {
    finestra.DaiFuoco("BTN_DEST_A");
    finestra.Preme(Tasto::kGiu);
    EXPECT_THAT(finestra.VociDelMenuAperto(), ElementsAre("(Arvio)", "Outlook"));
    EXPECT_TRUE(finestra.Aperta());
  });
}

TEST_F(InvioSulloSchermo, ASecondActivationOnlyRenewsTheMessageObject) {
  Apri([&](const VistaSuSchermo& finestra) {
    finestra.Riscrive("TXT_OGGETTO", "Mio");
    finestra.Digita("TXT_EMAIL", ";");
    const auto creati = [&] {
      std::size_t quanti = 0;
      toolkit->NelProgramma([&] { quanti = journal->Conta("Ambiente.CreaMessaggi"); });
      return quanti;
    };
    const auto prima = creati();
    toolkit->Risponde([&] { finestra.Clicca("cmd_Invia"); },
                      "L'elenco dei destinatari contiene un indirizzo non valido.", Risposta::kOk);
    EXPECT_TRUE(toolkit->Attende([&] { return creati() > prima; }));
    EXPECT_EQ(creati(), prima + 1);
    EXPECT_EQ(finestra.Contenuto("TXT_OGGETTO"), "Mio");
    EXPECT_THAT(finestra.VociDiMenu("BTN_ELIMINA"),
                ElementsAre("(Elimina allegato)", "(Elimina tutti gli allegati)"));
  });
}

TEST_F(InvioSulloSchermo, ASpecialFieldLeavesCaretAndViewAfterItAndCanBeUndone) {
  constexpr int kRighe = 60;
  std::string righe;
  servizio->vFlagCorpo = 1;
  for (int i = 0; i < kRighe; ++i) {
    servizio->vCorpoMail += "riga\r\n";
    righe += "riga\n";
  }
  const int lungo = static_cast<int>(righe.size());
  const std::string prima = servizio->vCorpoMail;
  ambiente->parametriCorpo = Variant::Array{Variant(Variant::Array{"Nome cliente", "#NOME"})};
  Collezione().AddFromLista("anna@x.example", "Anna", "", 0);
  Apri([&](const VistaSuSchermo& finestra) {
    const auto corpo = [&] {
      std::string testo = finestra.Contenuto("TXT_CORPO");
      std::erase(testo, '\r');
      return testo;
    };
    finestra.DaiFuoco("TXT_CORPO");
    finestra.Seleziona("TXT_CORPO", 0, 0);
    finestra.Scrive("TXT_CORPO", "x");
    finestra.Seleziona("TXT_CORPO", 1 + lungo, 1 + lungo);
    finestra.Scrive("TXT_CORPO", "y");
    finestra.Seleziona("TXT_CORPO", 0, 0);
    finestra.Sceglie("CMD_LEGENDA", "Nome cliente");
    EXPECT_TRUE(toolkit->Attende([&] { return corpo().ends_with(" ***(NOME)***"); }));
    EXPECT_EQ(finestra.Cursore("TXT_CORPO"), 1 + lungo + 1 + 13);
    EXPECT_TRUE(finestra.CursoreInVista("TXT_CORPO"));
    finestra.Annulla("TXT_CORPO");
    EXPECT_EQ(corpo(), "x" + righe + "y");
    finestra.Annulla("TXT_CORPO");
    finestra.Annulla("TXT_CORPO");
    Invia(finestra);
  });
  EXPECT_TRUE(Consegnato());
  EXPECT_EQ(servizio->vCorpoMail, prima);
}

TEST_F(InvioSulloSchermo, WhileTheMessageIsDeliveredThePointerWaitsAndTheButtonIsOff) {
  int consegne = 0;
  Apri([&](const VistaSuSchermo& finestra) {
    AllaConsegna([&] {
      ++consegne;
      EXPECT_TRUE(schermo.PuntatoreAttende());
      EXPECT_FALSE(finestra.Attivo("cmd_Invia"));
      EXPECT_TRUE(finestra.Aperta());
    });
    // Not while the person is asked something.
    finestra.Digita("TXT_EMAIL", ";");
    schermo.Vede([&] { finestra.Clicca("cmd_Invia"); },
                 "L'elenco dei destinatari contiene un indirizzo non valido.", Risposta::kOk,
                 [&] { toolkit->NelProgramma([&] { EXPECT_FALSE(schermo.PuntatoreAttende()); }); });
    finestra.Riscrive("TXT_EMAIL", "luca@cliente.example");
    Invia(finestra);
  });
  EXPECT_EQ(consegne, 1);
  EXPECT_FALSE(schermo.PuntatoreAttende());
}

TEST_F(InvioSulloSchermo, AMnemonicConfirmsTheParameters) {
  Parametri([&](const VistaSuSchermo& finestra) {
    finestra.PremeMnemonico('o');
    EXPECT_TRUE(Chiusa(finestra));
  });
  EXPECT_TRUE(servizio->MailParamIsValoriValidi());
}

class AbbandonoSulloSchermo : public ContrattoSuSchermo {
 protected:
  AbbandonoSulloSchermo() {
    servizio->vOggetto = "Prima";
    Collezione().AddFromLista("anna@x.example", "Anna", "", 0);
    Accounts({RigaAccount(12, "noi@azienda.example"), RigaAccount(13, "altro@azienda.example")});
  }
  std::string EscDomandato(const VistaSuSchermo& finestra, const char* controllo, Risposta risposta) {
    const auto esce = [&] {
      finestra.DaiFuoco(controllo);
      finestra.Preme(Tasto::kEsc);
    };
    return toolkit->Risponde(esce, kDomandaAbbandono, risposta);
  }
};

TEST_F(AbbandonoSulloSchermo, EscapeLeavesAnUnchangedMessageWithoutAsking) {
  for (const char* controllo : {"TXT_CORPO", "TXT_EMAIL"}) {
    servizio->vCollMittenti.reset();
    Apri([&](const VistaSuSchermo& finestra) {
      finestra.Riscrive("TXT_OGGETTO", "Prima");
      finestra.DaiFuoco(controllo);
      finestra.Preme(Tasto::kEsc);
      EXPECT_TRUE(Chiusa(finestra));
    });
  }
}

TEST_F(AbbandonoSulloSchermo, EscapeAsksBeforeAChangedMessageIsLost) {
  Apri([&](const VistaSuSchermo& finestra) {
    finestra.Riscrive("TXT_OGGETTO", "Dopo");
    EXPECT_EQ(EscDomandato(finestra, "TXT_CORPO", Risposta::kNo), "Invio email...");
    EXPECT_TRUE(finestra.Aperta());
    EXPECT_EQ(finestra.Contenuto("TXT_OGGETTO"), "Dopo");
    EscDomandato(finestra, "TXT_EMAIL", Risposta::kSi);
    EXPECT_TRUE(Chiusa(finestra));
  });
  EXPECT_EQ(servizio->vOggetto, "Prima");
  EXPECT_FALSE(Consegnato());
}

struct Cambio {
  const char* nome;
  void (*azione)(Toolkit&, const VistaSuSchermo&);
};

class CambioSulloSchermo : public AbbandonoSulloSchermo, public ::testing::WithParamInterface<Cambio> {};

TEST_P(CambioSulloSchermo, IsAskedFor) {
  servizio->vElencoAllegati = Variant::Array{toolkit->File("a.txt")};
  ambiente->parametriCorpo = Variant::Array{Variant(Variant::Array{"Nome cliente", "#NOME"})};
  Apri([&](const VistaSuSchermo& finestra) {
    GetParam().azione(*toolkit, finestra);
    EscDomandato(finestra, "TXT_EMAIL", Risposta::kNo);
    EXPECT_TRUE(finestra.Aperta());
  });
}

INSTANTIATE_TEST_SUITE_P(
    Cambi, CambioSulloSchermo,
    ::testing::Values(
        Cambio{"Indirizzi",
               [](Toolkit&, const VistaSuSchermo& f) { f.Digita("TXT_EMAIL_CCN", "b@x.example"); }},
        Cambio{"Corpo", [](Toolkit&, const VistaSuSchermo& f) { f.Digita("TXT_CORPO", "!"); }},
        Cambio{"CampoSpeciale",
               [](Toolkit& kit, const VistaSuSchermo& f) {
                 f.Sceglie("CMD_LEGENDA", "Nome cliente");
                 EXPECT_TRUE(kit.Attende([&] { return f.Contenuto("TXT_CORPO").ends_with("***(NOME)***"); }));
               }},
        Cambio{"Allegati",
               [](Toolkit& kit, const VistaSuSchermo& f) {
                 f.Sceglie("BTN_ELIMINA", "Elimina allegato");
                 EXPECT_TRUE(kit.Attende([&] { return f.Righe().empty(); }));
               }},
        Cambio{"Ricevuta",
               [](Toolkit& kit, const VistaSuSchermo& f) {
                 f.Clicca("CHK_RICEVUTA");
                 EXPECT_TRUE(kit.Attende([&] { return f.Spuntata("CHK_RICEVUTA"); }));
               }},
        Cambio{"Mittente", [](Toolkit&, const VistaSuSchermo& f) { f.VoceDopo("CMB_ACCOUNT"); }}),
    [](const auto& caso) { return std::string(caso.param.nome); });

TEST_F(AbbandonoSulloSchermo, EscapeLeavesTheAnswersUnconfirmed) {
  servizio->MailParamCorpoUnico("Prima");
  Parametri([&](const VistaSuSchermo& finestra) {
    finestra.DaiFuoco("TXT_CORPO");
    finestra.Preme(Tasto::kEsc);
    EXPECT_TRUE(Chiusa(finestra));
  });
  EXPECT_FALSE(servizio->MailParamIsValoriValidi());
  EXPECT_EQ(servizio->MailParamCorpoUnico(), "Prima");
}

TEST_F(AbbandonoSulloSchermo, EscapeAsksBeforeWhatWasWrittenIsLost) {
  Parametri([&](const VistaSuSchermo& finestra) {
    finestra.Digita("TXT_CORPO", "Scritto a lungo");
    EscDomandato(finestra, "TXT_CORPO", Risposta::kNo);
    EXPECT_TRUE(finestra.Aperta());
    finestra.Clicca("CMD_OK");
    EXPECT_TRUE(Chiusa(finestra));
  });
  EXPECT_EQ(servizio->MailParamCorpoUnico(), "Scritto a lungo");
}

TEST_F(InvioSulloSchermo, APathWithoutItsSeparatorIsToldAndTheWindowStays) {
  Parametri([&](const VistaSuSchermo& finestra) {
    finestra.Digita("TXT_ALLEGATO", "file.pdf");
    toolkit->Risponde([&] { finestra.Clicca("CMD_OK"); }, "5 Chiamata di routine o argomento non validi",
                      Risposta::kOk);
    EXPECT_TRUE(finestra.Aperta());
  });
}

class MittenteSulloSchermo : public ContrattoSuSchermo,
                             public ::testing::WithParamInterface<ChannelTraits> {};

TEST_P(MittenteSulloSchermo, TakesTheHeightOfItsFrameAwayWithIt) {
  const bool conMittente = GetParam().haAccount;
  servizio->SrvMailInstallato = GetParam().numero;
  Apri([&](const VistaSuSchermo& finestra) {
    EXPECT_EQ(finestra.Area().height, conMittente ? 486 : 437);
    EXPECT_EQ(finestra.Dove("FMR_DESTINATARIO").top, conMittente ? 48 : -1);
    EXPECT_EQ(finestra.Dove("FMR_PERS").top, conMittente ? 152 : 103);
    EXPECT_EQ(finestra.Dove("cmd_Invia").top, conMittente ? 459 : 410);
    EXPECT_EQ(finestra.Dove("cmd_Annulla").top, conMittente ? 459 : 410);
    EXPECT_EQ(finestra.ColFuoco(), conMittente ? "CMB_ACCOUNT" : "BTN_DEST_A");
    finestra.Porta(100, 100);
    EXPECT_EQ(finestra.Area(), (Posto{0, 0, 715, conMittente ? 486 : 437}));
  });
}

INSTANTIATE_TEST_SUITE_P(Canali, MittenteSulloSchermo, ::testing::ValuesIn(CanaliConFinestra()),
                         NomeDelCanale);

TEST_F(InvioSulloSchermo, WhatStandsBelowTheSenderOfTheParametersMovesUp) {
  servizio->SrvMailInstallato = kvMAPI;
  Parametri([](const VistaSuSchermo& finestra) {
    EXPECT_EQ(finestra.Area().height, 314);
    EXPECT_EQ(finestra.Dove("KVL_ALLEGA").top, 16);
    EXPECT_EQ(finestra.Dove("TXT_CORPO").top, 64);
    EXPECT_EQ(finestra.Dove("CMD_OK").top, 283);
  });
}

TEST_F(InvioSulloSchermo, ControlsKeepTheirProportionsInALargerWindow) {
  Apri([&](const VistaSuSchermo& finestra) {
    finestra.Porta(1001, 729);
    EXPECT_EQ(finestra.Dove("FMR_PERS"), (Posto{6, 228, 989, 455}));
    EXPECT_EQ(finestra.Dove("TXT_CORPO"), (Posto{8, 168, 971, 240}));
    // A single-line box stays one line high, centred in its place.
    EXPECT_EQ(finestra.Dove("TXT_OGGETTO"), (Posto{85, 29, 892, 20}));
    EXPECT_EQ(finestra.Dove("cmd_Annulla"), (Posto{895, 694, 100, 23}));
    finestra.Porta(715, 486);
    StannoAlLoroPosto(finestra, LayoutOpzMail());
  });
}

TEST_F(InvioSulloSchermo, TheFrameOfTheParametersGrowsWithItsContentsAndTheButtonsOnlyMove) {
  Parametri([](const VistaSuSchermo& finestra) {
    finestra.Porta(774, 670);
    EXPECT_EQ(finestra.Dove("FRM_PARAM"), (Posto{2, 0, 763, 604}));
    EXPECT_EQ(finestra.Dove("TXT_CORPO"), (Posto{12, 224, 740, 360}));
    EXPECT_EQ(finestra.Dove("CMD_OK"), (Posto{540, 608, 73, 23}));
    EXPECT_EQ(finestra.Dove("CMD_ANNULLA"), (Posto{656, 608, 73, 23}));
    finestra.Porta(10, 10);
    EXPECT_EQ(finestra.Area(), (Posto{0, 0, 516, 335}));
  });
}

}  // namespace
}  // namespace orve::window_contract
