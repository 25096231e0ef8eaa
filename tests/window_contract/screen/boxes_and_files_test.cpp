// Boxes, attachments and layouts on every toolkit with a screen.
#include <array>
#include <string>
#include <vector>

#include "window_contract/contratto.h"

namespace orve::window_contract {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CaselleSulloSchermo : public ContrattoSuSchermo {
 protected:
  void Mostra(const PersonaAlloSchermo& persona) {
    toolkit->Mostra(LayoutOpzMail(), ConSchermo(persona),
                    [this] { form->Show(host::Form::kModale, nullptr); });
  }
  void Scritto(const std::string& testo) {
    toolkit->NelProgramma([&] { corpo->Text(testo); });
  }
  std::string Corpo() {
    std::string testo;
    toolkit->NelProgramma([&] { testo = corpo->Text(); });
    return testo;
  }

  std::shared_ptr<host::Form> form = ambiente->CreaForm(LayoutOpzMail());
  std::shared_ptr<host::TxtEdit> oggetto = host::ControlloDi<host::TxtEdit>(*form, "TXT_OGGETTO");
  std::shared_ptr<host::KvlRichTextBox> corpo = host::ControlloDi<host::KvlRichTextBox>(*form, "TXT_CORPO");
};

TEST_F(CaselleSulloSchermo, ABoxThatTheProgramHasOverfilledCanBeShortened) {
  Mostra([&](const VistaSuSchermo& finestra) {
    toolkit->NelProgramma([&] { oggetto->Text(std::string(40000, 'p')); });
    finestra.Digita("TXT_OGGETTO", "x");
    finestra.Preme(Tasto::kIndietro);
    toolkit->NelProgramma([&] { EXPECT_EQ(oggetto->Text().size(), 39999U); });
  });
}

TEST_F(CaselleSulloSchermo, TextThatIsTouchedReadsBackWithCarriageReturnsAndLineFeeds) {
  Mostra([&](const VistaSuSchermo& finestra) {
    Scritto("uno\ndue\r\ntre\r");
    finestra.Digita("TXT_CORPO", "!");
    EXPECT_EQ(Corpo(), "uno\r\ndue\r\ntre\r\n!");
  });
}

TEST_F(CaselleSulloSchermo, ALineBreakOfTheBodyIsTwoCharactersAndIsNotCutInTwo) {
  Mostra([&](const VistaSuSchermo& finestra) {
    finestra.Incolla("TXT_CORPO", std::string(1999, 'b'));
    finestra.DaiFuoco("TXT_CORPO");
    finestra.Preme(Tasto::kInvio);
    EXPECT_EQ(Corpo(), std::string(1999, 'b'));
    finestra.Riscrive("TXT_CORPO", "uno");
    finestra.Preme(Tasto::kInvio);
    finestra.Digita("TXT_CORPO", "due");
    EXPECT_EQ(Corpo(), "uno\r\ndue");
  });
}

TEST_F(CaselleSulloSchermo, WhatTheProgramAddsToAnEmptyBodyCanBeUndone) {
  Mostra([&](const VistaSuSchermo& finestra) {
    finestra.Digita("TXT_CORPO", "a");
    finestra.Riscrive("TXT_CORPO", "");
    Scritto("uno\r\ndue\ntre");
    EXPECT_EQ(Corpo(), "uno\r\ndue\ntre");
    finestra.Annulla("TXT_CORPO");
    EXPECT_EQ(Corpo(), "");
  });
}

TEST_F(CaselleSulloSchermo, WhatIsRefusedInTheMiddleLeavesTheRestAlone) {
  Mostra([&](const VistaSuSchermo& finestra) {
    const std::string pieno = std::string(50, 'a') + std::string(50, 'b');
    finestra.Digita("TXT_OGGETTO", pieno);
    finestra.Seleziona("TXT_OGGETTO", 50, 50);
    finestra.Scrive("TXT_OGGETTO", "x");
    EXPECT_EQ(finestra.Contenuto("TXT_OGGETTO"), pieno);
    EXPECT_EQ(finestra.Cursore("TXT_OGGETTO"), 50);
    finestra.Seleziona("TXT_OGGETTO", 0, 10);
    finestra.Scrive("TXT_OGGETTO", "x");
    EXPECT_EQ(finestra.Contenuto("TXT_OGGETTO"), "x" + std::string(40, 'a') + std::string(50, 'b'));
    toolkit->NelProgramma(
        [&] { EXPECT_EQ(oggetto->Text(), "x" + std::string(40, 'a') + std::string(50, 'b')); });
  });
}

class ElencoSulloSchermo : public CaselleSulloSchermo {
 protected:
  ElencoSulloSchermo() {
    combo->AddItemData("uno", 7);
    combo->AddItemData("due", 9);
    combo->SelezionaPosizione(0);
    combo->Change = [this](std::int16_t /*posizione*/) { ++cambi; };
  }
  void Fermo(const VistaSuSchermo& finestra) {
    toolkit->NelProgramma([&] {
      EXPECT_EQ(cambi, 0);
      EXPECT_EQ(combo->Text(), "7");
    });
    EXPECT_EQ(finestra.Contenuto("CMB_ACCOUNT"), "uno");
  }

  std::shared_ptr<host::KVL_COMBO> combo = host::ControlloDi<host::KVL_COMBO>(*form, "CMB_ACCOUNT");
  int cambi = 0;
};

TEST_F(ElencoSulloSchermo, ConfirmingTheEntryThatStandsIsNoChange) {
  Mostra([&](const VistaSuSchermo& finestra) {
    finestra.ConfermaVoce("CMB_ACCOUNT");
    Fermo(finestra);
  });
}

TEST_F(ElencoSulloSchermo, TheWheelOverTheClosedListChoosesNothing) {
  Mostra([&](const VistaSuSchermo& finestra) {
    finestra.Rotella("CMB_ACCOUNT");
    Fermo(finestra);
  });
}

class MessaggiSulloSchermo : public ContrattoSuSchermo {
 protected:
  /// Answered as soon as it is seen with the text `voluto`.
  MessaggioVisto Mostra(const std::string& testo, const std::string& titolo, const std::string& voluto,
                        const std::shared_ptr<host::Form>& padrone = nullptr) {
    const auto messaggi = ambiente->CreaMessaggi();
    return schermo.Vede([&] { messaggi->MostraMsg(testo, host::kSemplice, titolo, padrone); }, voluto,
                        Risposta::kOk, nullptr);
  }
};

struct Stile {
  const char* nome;
  std::int32_t stile;
  std::vector<Risposta> pulsanti;
  Risposta preme;
  std::int32_t risposta;
};

class MessaggioSulloSchermo : public ContrattoSuSchermo, public ::testing::WithParamInterface<Stile> {};

TEST_P(MessaggioSulloSchermo, ShowsItsButtonsAndGivesTheAnswer) {
  const auto& caso = GetParam();
  const std::string testo = "<b>Perché</b> & no? Αθήνα";
  const auto messaggi = ambiente->CreaMessaggi();
  std::int32_t risposta = 0;
  const auto visto =
      schermo.Vede([&] { risposta = messaggi->MostraMsg(testo, caso.stile, "Titolo", nullptr); }, testo,
                   caso.preme, nullptr);
  EXPECT_EQ(visto.titolo, "Titolo");
  EXPECT_THAT(visto.pulsanti, ::testing::UnorderedElementsAreArray(caso.pulsanti));
  EXPECT_EQ(risposta, caso.risposta);
}

INSTANTIATE_TEST_SUITE_P(
    Stili, MessaggioSulloSchermo,
    ::testing::Values(Stile{"Semplice", 0, {Risposta::kOk}, Risposta::kOk, 1},
                      Stile{"Critico", 16, {Risposta::kOk}, Risposta::kOk, 1},
                      Stile{"Avviso", 48, {Risposta::kOk}, Risposta::kOk, 1},
                      Stile{"DomandaSi", 52, {Risposta::kSi, Risposta::kNo}, Risposta::kSi, 6},
                      Stile{"DomandaNo", 52, {Risposta::kSi, Risposta::kNo}, Risposta::kNo, 7},
                      Stile{"Informazione", 64, {Risposta::kOk}, Risposta::kOk, 1}),
    [](const auto& caso) { return std::string(caso.param.nome); });

TEST_F(MessaggiSulloSchermo, WhatTurnsATextRoundIsShownAsAnEscapeAndLinesStay) {
  EXPECT_EQ(Mostra("Uno:\n\u200Ffdp.exe", "\u200Folotit", "Uno:\n\\u200Ffdp.exe").titolo, "\\u200Folotit");
}

TEST_F(MessaggiSulloSchermo, BelongsToTheWindowGivenAsItsOwner) {
  EXPECT_EQ(Mostra("testo", "", "testo").padrone, "");
  EXPECT_EQ(Mostra("testo", "", "testo", ambiente->CreaForm(LayoutOpzMail())).padrone, "Invio email...");
}

class AllegatiSulloSchermo : public ContrattoSuSchermo {
 protected:
  AllegatiSulloSchermo() { Collezione().AddFromLista("anna@x.example", "Anna", "", 0); }
};

TEST_F(AllegatiSulloSchermo, DroppedFilesAreListedAndSentWithoutAsking) {
  const std::string uno = toolkit->File("uno.pdf");
  const std::string due = toolkit->File("due è.pdf");
  Apri([&](const VistaSuSchermo& finestra) {
    finestra.LasciaFile({uno, due});
    EXPECT_THAT(finestra.Righe(), ElementsAre("uno.pdf", "due è.pdf"));
    EXPECT_EQ(finestra.RigaSelezionata(), 2);
    finestra.LasciaFile({due, uno});
    EXPECT_THAT(finestra.Righe(), ElementsAre("uno.pdf", "due è.pdf"));
    Invia(finestra);
  });
  EXPECT_THAT(Consegnati(), ElementsAre(uno, due));
}

// A choice that comes afterwards is the person's again.
TEST_F(AllegatiSulloSchermo, WhatWasDroppedIsUsedUp) {
  const std::string uno = toolkit->File("uno.pdf");
  const std::string due = toolkit->File("due.pdf");
  Apri([&](const VistaSuSchermo& finestra) {
    finestra.LasciaFile({uno});
    Allega(finestra, due);
    EXPECT_THAT(finestra.Righe(), ElementsAre("uno.pdf", "due.pdf"));
  });
}

TEST_F(AllegatiSulloSchermo, ANameThatTurnsTheTextRoundIsShownAsItStandsAndAttachedAsItIs) {
  const std::string file = toolkit->File("fattura\u200Ffdp.exe");
  Apri([&](const VistaSuSchermo& finestra) {
    finestra.LasciaFile({file});
    EXPECT_THAT(finestra.Righe(), ElementsAre("fattura\\u200Ffdp.exe"));
    Invia(finestra);
  });
  EXPECT_THAT(Consegnati(), ElementsAre(file));
}

TEST_F(AllegatiSulloSchermo, ADroppedFileFromOutsideTravelsAsACopy) {
  toolkit->VaCopiato(true);
  const std::string chiavetta = toolkit->File("chiavetta.txt", "dati");
  Apri([&](const VistaSuSchermo& finestra) {
    finestra.LasciaFile({chiavetta});
    EXPECT_THAT(finestra.Righe(), ElementsAre("chiavetta.txt"));
    Invia(finestra);
  });
  ASSERT_EQ(Consegnati().size(), 1U);
  EXPECT_NE(Consegnati().front(), chiavetta);
}

TEST_F(AllegatiSulloSchermo, TheRowThatIsChosenIsTheOneThatGoes) {
  const std::vector<std::string> file = {toolkit->File("a.txt"), toolkit->File("b.txt"),
                                         toolkit->File("c.txt")};
  servizio->vElencoAllegati = host::Variant::Array{file[0], file[1], file[2]};
  Apri([&](const VistaSuSchermo& finestra) {
    EXPECT_THAT(finestra.Righe(), ElementsAre("a.txt", "b.txt", "c.txt"));
    EXPECT_EQ(finestra.RigaSelezionata(), 3);
    finestra.DaiFuoco("GRID_ALLEGATI");
    finestra.Preme(Tasto::kSu);
    EXPECT_EQ(finestra.RigaSelezionata(), 2);
    finestra.Sceglie("BTN_ELIMINA", "Elimina allegato");
    EXPECT_TRUE(toolkit->Attende([&] { return finestra.Righe().size() == 2; }));
    EXPECT_THAT(finestra.Righe(), ElementsAre("a.txt", "c.txt"));
    Invia(finestra);
  });
  EXPECT_THAT(Consegnati(), ElementsAre(file[0], file[2]));
}

TEST_F(AllegatiSulloSchermo, AfterARemovalTheRowInItsPlaceIsSelected) {
  servizio->vElencoAllegati =
      host::Variant::Array{toolkit->File("a.txt"), toolkit->File("b.txt"), toolkit->File("c.txt")};
  Apri([&](const VistaSuSchermo& finestra) {
    finestra.DaiFuoco("GRID_ALLEGATI");
    finestra.Preme(Tasto::kInizio);
    for (const std::size_t rimasti : {2U, 1U}) {
      finestra.Sceglie("BTN_ELIMINA", "Elimina allegato");
      EXPECT_TRUE(toolkit->Attende([&] { return finestra.Righe().size() == rimasti; }));
      toolkit->NelProgramma([] {});
      EXPECT_EQ(finestra.RigaSelezionata(), 1);
    }
    EXPECT_THAT(finestra.Righe(), ElementsAre("c.txt"));
  });
}

TEST_F(AllegatiSulloSchermo, ADroppedFileThatIsGoneIsToldAsByTheButton) {
  Apri([&](const VistaSuSchermo& finestra) {
    toolkit->Risponde([&] { finestra.LasciaFile({toolkit->Mancante()}); },
                      "Il file selezionato è inesistente o non raggiungibile.", Risposta::kOk);
    EXPECT_THAT(finestra.Righe(), IsEmpty());
    EXPECT_TRUE(finestra.Aperta());
  });
}

TEST_F(AllegatiSulloSchermo, NothingCanBeDroppedAfterAMessage) {
  servizio->vElencoAllegati = host::Variant::Array{toolkit->File("a.txt")};
  const std::string altro = toolkit->File("b.txt");
  Apri([&](const VistaSuSchermo& finestra) {
    schermo.Vede([&] { finestra.Sceglie("BTN_ELIMINA", "Elimina tutti gli allegati"); },
                 "Rimuovere tutti gli allegati dalla mail?", Risposta::kNo,
                 [&] { finestra.LasciaFile({altro}); });
    EXPECT_THAT(finestra.Righe(), ElementsAre("a.txt"));
  });
}

// A window that no toolkit has ever seen: its table alone says which button takes files.
class TavolaSulloSchermo : public ContrattoSuSchermo {
 protected:
  void Lascia(const host::LayoutForm& layout, const std::string& file) {
    const auto form = ambiente->CreaForm(layout);
    host::ControlloDi<host::KVL_TBARMENU>(*form, "PRIMO")->ButtonClick = [&] { premuti += "primo "; };
    host::ControlloDi<host::KVL_TBARMENU>(*form, "SECONDO")->ButtonClick = [&] {
      const auto scelta = ambiente->CreaSelettoreFile();
      premuti += "secondo ";
      if (scelta->Mostra(0) == host::SelettoreFile::kConfermato) scelto = scelta->FileScelto()->Percorso();
    };
    toolkit->Mostra(layout, ConSchermo([&](const VistaSuSchermo& finestra) { finestra.LasciaFile({file}); }),
                    [&] { form->Show(host::Form::kModale, nullptr); });
  }

  static constexpr std::array<host::LayoutControllo, 2> kPulsanti = {
      host::LayoutControllo{.nome = "PRIMO",
                            .tipo = host::TipoControllo::kTbarMenu,
                            .posizione = {0, 0, 1500, 300},
                            .tabIndex = 0,
                            .disegno = {.ismenupopup = false}},
      host::LayoutControllo{.nome = "SECONDO",
                            .tipo = host::TipoControllo::kTbarMenu,
                            .posizione = {0, 600, 1500, 300},
                            .tabIndex = 1,
                            .disegno = {.ismenupopup = false}}};
  std::string premuti;
  std::string scelto;
};

TEST_F(TavolaSulloSchermo, TheTableSaysWhichButtonTakesFiles) {
  static constexpr host::LayoutForm kConFile = {
      .nome = "CON_FILE", .width = 3000, .height = 1500, .controlli = kPulsanti, .pulsanteFile = "Secondo"};
  const std::string file = toolkit->File("uno.pdf");
  Lascia(kConFile, file);
  EXPECT_EQ(premuti, "secondo ");
  EXPECT_EQ(scelto, file);
}

TEST_F(TavolaSulloSchermo, WithoutSuchAButtonDroppedFilesDoNothing) {
  static constexpr host::LayoutForm kSenzaFile = {
      .nome = "SENZA_FILE", .width = 3000, .height = 1500, .controlli = kPulsanti};
  Lascia(kSenzaFile, toolkit->File("uno.pdf"));
  EXPECT_EQ(premuti, "");
}

}  // namespace
}  // namespace orve::window_contract
