// The address books behind the three address buttons of the compose window.
#include <functional>
#include <string>
#include <vector>

#include "dialogs/finestra_di_prova.h"

namespace orve {
namespace {

using fakes::FakeRubrica;
using fakes::HeadlessForm;
using host::Variant;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

struct Pulsante {
  const char* nome;
  const char* casella;
};
constexpr Pulsante kPulsanti[] = {
    {"BTN_DEST_A", "TXT_EMAIL"}, {"BTN_DEST_CC", "TXT_EMAIL_CC"}, {"BTN_DEST_CCN", "TXT_EMAIL_CCN"}};

class Rubrica : public fakes::FormDiProva {
 protected:
  Rubrica() {
    servizio->SrvMailInstallato = kvMAPI;
    servizio->vDitta = "Acme";
    servizio->DittaCorrente = 3;
    form->ManagerRubrica = rubrica;
    journal->Svuota();
  }
  /// The person picks this name and these addresses in whatever book opens.
  void Sceglie(const std::string& nome, const std::string& indirizzi) {
    rubrica->persona = [nome, indirizzi](FakeRubrica& libro) {
      libro.nome = nome;
      libro.indirizzo = indirizzi;
    };
  }
  /// caption|key of each entry.
  static std::vector<std::string> Voci(HeadlessForm& finestra, const char* pulsante) {
    std::vector<std::string> voci;
    for (const auto& voce : finestra.ApreMenu(pulsante)) voci.push_back(voce.didascalia + "|" + voce.chiave);
    return voci;
  }
  void FaxAttivo(const Variant& valore) {
    connessione->Risponde("FW24_CODICE = 'FAX'", {{{"FW24_INDFAXATTIVO", valore}}});
  }

  std::shared_ptr<FakeRubrica> rubrica = std::make_shared<FakeRubrica>(journal);
};

// The menus.

TEST_F(Rubrica, TheThreeButtonsOfferTheSameBooksInTheSameOrder) {
  FaxAttivo(3);
  Mostra([](HeadlessForm& finestra) {
    for (const auto& pulsante : kPulsanti) {
      EXPECT_THAT(Voci(finestra, pulsante.nome),
                  ElementsAre("Arvio|Key_Arvio", "Outlook|Key_Outl", "Tobit|Key_Tobit"))
          << pulsante.nome;
    }
  });
}

TEST_F(Rubrica, InTheWebTheMenusHoldNoOutlookEntry) {
  ambiente->variabili["WEBRender"] = "1";
  Mostra([](HeadlessForm& finestra) {
    for (const auto& pulsante : kPulsanti) {
      EXPECT_THAT(Voci(finestra, pulsante.nome), ElementsAre("Arvio|Key_Arvio")) << pulsante.nome;
    }
  });
}

TEST_F(Rubrica, AnyOtherValueOfTheVariableKeepsTheOutlookEntry) {
  for (const char* valore : {"0", "", "2", " 1", "true"}) {
    ambiente->variabili["WEBRender"] = valore;
    form = std::make_unique<FRMRW_OPZMAIL>(ambiente);
    form->Parent = servizio.get();
    Mostra([](HeadlessForm& finestra) {
      EXPECT_THAT(Voci(finestra, "BTN_DEST_A"), ElementsAre("Arvio|Key_Arvio", "Outlook|Key_Outl"));
    });
  }
}

struct CasoTobit {
  const char* label;
  std::optional<Variant> valore;
  bool wantVoce;
};

TEST_F(Rubrica, TheFaxConfigurationDecidesOnTheTobitEntry) {
  const CasoTobit casi[] = {
      {"no row", std::nullopt, false},
      {"null", host::Null{}, false},
      {"blank", "  ", false},
      {"0", 0, false},
      {"1", 1, false},
      {"3", 3, true},
      {"4", 4, false},
      {"5", 5, true},
      {"as text", "5", true},
      {"as 16 bits", std::int16_t{3}, true},
      {"between", 3.5, false},
  };
  for (const auto& caso : casi) {
    connessione->Risponde("FW24_CODICE = 'FAX'", {});
    if (caso.valore) FaxAttivo(*caso.valore);
    form = std::make_unique<FRMRW_OPZMAIL>(ambiente);
    form->Parent = servizio.get();
    journal->Svuota();
    Mostra([&](HeadlessForm& finestra) {
      EXPECT_EQ(Voci(finestra, "BTN_DEST_CC").size(), caso.wantVoce ? 3U : 2U) << caso.label;
    });
    EXPECT_THAT(Mostrati(), IsEmpty()) << caso.label;
  }
}

TEST_F(Rubrica, TheFaxConfigurationIsReadWithOneStatement) {
  Mostra(nullptr);
  EXPECT_THAT(connessione->Statements(),
              ElementsAre(" SELECT FW24_INDFAXATTIVO  FROM FW24_FAXCONFIG  WHERE FW24_CODICE = 'FAX' "));
}

TEST_F(Rubrica, AFailingConfigurationIsReportedAndOffersNoTobit) {
  journal->Fallisce("ConnectionADO.Execute", {-2147217865, "Motore", "Nome di oggetto non valido."});
  Mostra([](HeadlessForm& finestra) {
    EXPECT_THAT(Voci(finestra, "BTN_DEST_A"), ElementsAre("Arvio|Key_Arvio", "Outlook|Key_Outl"));
  });
  EXPECT_THAT(Mostrati(),
              ElementsAre("ObjMessaggi.MostraMsg Nome di oggetto non valido. CheckTobitConfig|0|Invio "
                          "email...|(assente)"));
}

TEST_F(Rubrica, WithoutAConnectionTheConfigurationCannotBeReadAndTheWindowGoesOn) {
  servizio->ConnectionADO.reset();
  Mostra(nullptr);
  EXPECT_THAT(Mostrati(),
              ElementsAre("ObjMessaggi.MostraMsg Variabile oggetto non impostata CheckTobitConfig|0|Invio "
                          "email...|(assente)"));
  EXPECT_EQ(journal->Conta("KVL_RESIZEFORM1.Avvia"), 1U);
}

TEST_F(Rubrica, AButtonThatTakesNoEntryDoesNotKeepTheOthersFromTheirs) {
  journal->Fallisce("BTN_DEST_A.AddMenuItem");
  Mostra([](HeadlessForm& finestra) {
    EXPECT_THAT(Voci(finestra, "BTN_DEST_CC"), ElementsAre("Arvio|Key_Arvio", "Outlook|Key_Outl"));
    EXPECT_THAT(Voci(finestra, "BTN_DEST_CCN"), ElementsAre("Arvio|Key_Arvio", "Outlook|Key_Outl"));
  });
  EXPECT_THAT(Mostrati(), IsEmpty());
}

// The books.

TEST_F(Rubrica, TheApplicationsBookIsOpenedStepByStep) {
  servizio->ActiveInterface = fakes::CreaFakeInterfaccia(*ambiente);
  for (const bool pec : {false, true}) {
    servizio->IsPec(pec);
    form = std::make_unique<FRMRW_OPZMAIL>(ambiente);
    form->Parent = servizio.get();
    form->ManagerRubrica = rubrica;
    Sceglie("Anna", "a@x.example");
    Mostra([&](HeadlessForm& finestra) {
      journal->Svuota();
      finestra.Sceglie("BTN_DEST_A", "Key_Arvio");
      EXPECT_THAT(
          journal->Righe({"Rubrica", "legge Rubrica", "TXT_"}),
          ElementsAre("Rubrica.NomeScelto Acme", "Rubrica.Interfaccia (oggetto)", "Rubrica.DittaRubrica 3",
                      pec ? "Rubrica.TipoRubrica 3" : "Rubrica.TipoRubrica 1", "Rubrica.ApriRubrica",
                      "legge Rubrica.Annullata", "legge Rubrica.NomeScelto", "legge Rubrica.IndirizzoScelto",
                      "TXT_EMAIL.Text Anna<a@x.example>", "legge Rubrica.NomeScelto", "TXT_DITTA.Text Anna"));
    });
  }
}

TEST_F(Rubrica, OutlooksBookIsOpenedStepByStep) {
  Sceglie("Anna", "a@x.example");
  servizio->IsPec(true);  // plays no part here
  Mostra([&](HeadlessForm& finestra) {
    journal->Svuota();
    finestra.Sceglie("BTN_DEST_CC", "Key_Outl");
    EXPECT_THAT(
        journal->Righe({"Rubrica", "legge Rubrica", "TXT_"}),
        ElementsAre("Rubrica.CodiceScelto ", "Rubrica.NomeScelto ", "Rubrica.IndirizzoScelto ",
                    "Rubrica.Interfaccia (assente)", "Rubrica.TipoRubrica 1", "Rubrica.ApriRubricaOutlook",
                    "legge Rubrica.IndirizzoScelto", "legge Rubrica.NomeScelto",
                    "legge Rubrica.IndirizzoScelto", "TXT_EMAIL_CC.Text Anna<a@x.example>",
                    "legge Rubrica.NomeScelto", "TXT_DITTA.Text Anna"));
  });
}

TEST_F(Rubrica, TobitsBookIsOpenedStepByStep) {
  FaxAttivo(5);
  Sceglie("Anna", "a@x.example");
  Mostra([&](HeadlessForm& finestra) {
    journal->Svuota();
    finestra.Sceglie("BTN_DEST_CCN", "Key_Tobit");
    EXPECT_THAT(
        journal->Righe({"Rubrica", "legge Rubrica", "TXT_"}),
        ElementsAre("Rubrica.CodiceScelto ", "Rubrica.NomeScelto ", "Rubrica.IndirizzoScelto ",
                    "Rubrica.ApriRubricaTobit", "legge Rubrica.IndirizzoScelto", "legge Rubrica.NomeScelto",
                    "legge Rubrica.IndirizzoScelto", "TXT_EMAIL_CCN.Text Anna<a@x.example>",
                    "legge Rubrica.NomeScelto", "TXT_DITTA.Text Anna"));
  });
}

TEST_F(Rubrica, APickGoesIntoTheBoxOfItsButton) {
  Sceglie("Anna", "a@x.example");
  Mostra([](HeadlessForm& finestra) {
    for (const auto& pulsante : kPulsanti) {
      EXPECT_EQ(finestra.Testo(pulsante.casella), "");
      finestra.Sceglie(pulsante.nome, "Key_Outl");
      EXPECT_EQ(finestra.Testo(pulsante.casella), "Anna<a@x.example>") << pulsante.nome;
    }
    EXPECT_EQ(finestra.Testo("TXT_DITTA"), "Anna");
  });
}

TEST_F(Rubrica, APickWithSeveralAddressesGivesOneEntryPerAddressWithTheSameName) {
  Sceglie("Acme", "a@x.example;b@x.example");
  Mostra([](HeadlessForm& finestra) {
    finestra.Sceglie("BTN_DEST_A", "Key_Arvio");
    EXPECT_EQ(finestra.Testo("TXT_EMAIL"), "Acme<a@x.example>;Acme<b@x.example>");
  });
}

TEST_F(Rubrica, ASecondPickIntoTheSameBoxIsJoinedByASemicolon) {
  Sceglie("Anna", "a@x.example");
  Mostra([](HeadlessForm& finestra) {
    finestra.Sceglie("BTN_DEST_A", "Key_Arvio");
    finestra.Sceglie("BTN_DEST_A", "Key_Arvio");
    EXPECT_EQ(finestra.Testo("TXT_EMAIL"), "Anna<a@x.example>;Anna<a@x.example>");
  });
}

TEST_F(Rubrica, LeavingTheApplicationsBookWithoutAChoiceChangesNothing) {
  Sceglie("Anna", "a@x.example");
  rubrica->annullata = true;
  Mostra([&](HeadlessForm& finestra) {
    journal->Svuota();
    finestra.Sceglie("BTN_DEST_A", "Key_Arvio");
    EXPECT_THAT(journal->Righe({"TXT_"}), IsEmpty());
  });
}

TEST_F(Rubrica, ConfirmingTheApplicationsBookWithNoAddressGivesEmptyBracketsThatTheSendRefuses) {
  Sceglie("Anna", "");
  Mostra([&](HeadlessForm& finestra) {
    finestra.Sceglie("BTN_DEST_A", "Key_Arvio");
    EXPECT_EQ(finestra.Testo("TXT_EMAIL"), "Anna<>");
    finestra.Preme("cmd_Invia");
    EXPECT_TRUE(finestra.Aperta());
  });
  EXPECT_THAT(Mostrati(), ElementsAre(HasSubstr("contiene un indirizzo non valido.")));
}

TEST_F(Rubrica, TheOtherBooksWithoutAnAddressChangeNothing) {
  FaxAttivo(3);
  Sceglie("Anna", "");
  Mostra([&](HeadlessForm& finestra) {
    journal->Svuota();
    finestra.Sceglie("BTN_DEST_A", "Key_Outl");
    finestra.Sceglie("BTN_DEST_A", "Key_Tobit");
    EXPECT_THAT(journal->Righe({"TXT_"}), IsEmpty());
  });
}

TEST_F(Rubrica, TheAddressOfAnEarlierPickIsClearedBeforeTheOtherBooks) {
  rubrica->nome = "Vecchio";
  rubrica->indirizzo = "v@x.example";
  Mostra([](HeadlessForm& finestra) {
    finestra.Sceglie("BTN_DEST_A", "Key_Outl");  // left without a choice
    EXPECT_EQ(finestra.Testo("TXT_EMAIL"), "");
  });
}

TEST_F(Rubrica, AnyOtherKeyDoesNothing) {
  Mostra([&](HeadlessForm& /*finestra*/) {
    journal->Svuota();
    for (const char* chiave : {"", "key_arvio", "Key_Altro"}) Dentro().GestisciRubrica(chiave, 0);
    EXPECT_THAT(journal->Righe(), IsEmpty());
  });
}

// Failures.

TEST_F(Rubrica, AFailingBookIsReportedAndLeavesTheBoxesAsTheyAre) {
  journal->Fallisce("Rubrica.ApriRubrica", {1001, "Rubrica", "guasto"});
  Mostra([](HeadlessForm& finestra) {
    finestra.Digita("TXT_EMAIL", "b@x.example");
    finestra.Sceglie("BTN_DEST_A", "Key_Arvio");
    EXPECT_EQ(finestra.Testo("TXT_EMAIL"), "b@x.example");
  });
  EXPECT_THAT(Mostrati(), ElementsAre("ObjMessaggi.MostraMsg 1001 guasto ORVE_MAILSERVER: FRMFW_OPZMAIL: "
                                      "GestisciRubrica|0||(assente)"));
}

TEST_F(Rubrica, WithoutAManagerTheOtherBooksFailClearly) {
  form->ManagerRubrica.reset();
  Mostra([](HeadlessForm& finestra) { finestra.Sceglie("BTN_DEST_A", "Key_Outl"); });
  EXPECT_THAT(Mostrati(),
              ElementsAre("ObjMessaggi.MostraMsg 91 Variabile oggetto non impostata ORVE_MAILSERVER: "
                          "FRMFW_OPZMAIL: GestisciRubrica|0||(assente)"));
}

TEST_F(Rubrica, APickThatIsNoTextIsReported) {
  rubrica->persona = [](FakeRubrica& libro) {
    libro.nome = host::Null{};
    libro.indirizzo = "a@x.example";
  };
  Mostra([](HeadlessForm& finestra) {
    finestra.Sceglie("BTN_DEST_A", "Key_Arvio");
    EXPECT_EQ(finestra.Testo("TXT_EMAIL"), "");
  });
  EXPECT_THAT(Mostrati(), ElementsAre("ObjMessaggi.MostraMsg 94 Utilizzo non valido di Null ORVE_MAILSERVER: "
                                      "FRMFW_OPZMAIL: GestisciRubrica|0||(assente)"));
}

// When even the message fails, the handler of the button reports. The one of CCn speaks in the name of CC.
TEST_F(Rubrica, EachButtonsHandlerReportsWithItsRequiredName) {
  const std::pair<const char*, const char*> casi[] = {{"BTN_DEST_A", "BTN_DEST_A_MenuItemClick"},
                                                      {"BTN_DEST_CC", "BTN_DEST_CC_MenuItemClick"},
                                                      {"BTN_DEST_CCN", "BTN_DEST_CC_MenuItemClick"}};
  Mostra([&](HeadlessForm& finestra) {
    for (const auto& [pulsante, nome] : casi) {
      journal->DimenticaPiani();
      journal->Fallisce("Rubrica.", {1001, "Rubrica", "guasto"});
      bool prima = true;
      journal->Quando("ObjMessaggi.MostraMsg", [&] {
        if (prima) {
          prima = false;
          throw host::Errore(1002, "Messaggi", "messaggio impossibile");
        }
      });
      journal->Svuota();
      finestra.Sceglie(pulsante, "Key_Arvio");
      EXPECT_EQ(Mostrati().back(),
                std::string("ObjMessaggi.MostraMsg 1002 messaggio impossibile ORVE_MAILSERVER: "
                            "FRMFW_OPZMAIL: ") +
                    nome + "|0||(assente)");
    }
  });
}

}  // namespace
}  // namespace orve
