// How the service opens the compose window: its objects, its form for each channel, what is in its controls,
// and how the opening ends.
#include <string>
#include <vector>

#include "dialogs/finestra_di_prova.h"
#include "fakes/errori.h"
#include "service/dialog_bridge.h"

namespace orve {
namespace {

using fakes::HeadlessForm;
using host::Variant;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

using Apertura = fakes::FinestraDiProva;

TEST_F(Apertura, OnASmtpChannelTheStepsComeInTheirOrder) {
  servizio->SrvMailInstallato = kvSMTPSSLMail;
  servizio->vCorpoMail = "Corpo";
  servizio->vOggetto = "Oggetto";
  servizio->vElencoAllegati = Variant::Array{"C:\\doc\\f.pdf"};
  File("C:\\doc\\f.pdf");
  Collezione().AddFromLista("a@x.example", "Anna", "", 0);
  Apri();
  const auto passi =
      journal->Righe({"Ambiente.CreaForm", "BTN_DEST", "FMR_MITTENTE", "CMB_ACCOUNT", "CHK_RICEVUTA", "TXT_",
                      "File.Apri", "FRMRW_OPZMAIL.Show", "FRMRW_OPZMAIL attiva"});
  const std::vector<std::string> want = {"Ambiente.CreaForm FRMRW_OPZMAIL",
                                         "BTN_DEST_A.EnableMenuItem 1|false",
                                         "BTN_DEST_CC.EnableMenuItem 1|false",
                                         "BTN_DEST_CCN.EnableMenuItem 1|false",
                                         "FMR_MITTENTE.Visible true",
                                         "CMB_ACCOUNT.EraseCombo",
                                         "CMB_ACCOUNT.AutoOpen false",
                                         "CMB_ACCOUNT.AddItemData noi@azienda.example - Mail|12",
                                         "CMB_ACCOUNT.Text 12",
                                         "CHK_RICEVUTA.Text 0",
                                         "CHK_RICEVUTA.Visible true",
                                         "CMB_ACCOUNT.Visible true",
                                         "TXT_EMAIL.Text Anna<a@x.example>",
                                         "TXT_EMAIL_CC.Text",
                                         "TXT_EMAIL_CCN.Text",
                                         "TXT_CORPO.Text Corpo",
                                         "TXT_OGGETTO.Text Oggetto",
                                         "File.Apri f.pdf|C:\\doc|0",
                                         "FRMRW_OPZMAIL.Show 1|(assente)",
                                         "FRMRW_OPZMAIL attiva"};
  ASSERT_GE(passi.size(), want.size());
  EXPECT_EQ(std::vector<std::string>(passi.begin(), passi.begin() + static_cast<std::ptrdiff_t>(want.size())),
            want);
}

TEST_F(Apertura, TheFormObjectIsBornAndDiesWithTheProcedure) {
  Apri();
  const auto tracce = journal->Righe({"debug "});
  std::vector<std::string> forme;
  for (const auto& riga : tracce) {
    if (riga.find("FRMRW_OPZMAIL") != std::string::npos) forme.push_back(riga);
  }
  ASSERT_EQ(forme.size(), 2U);
  EXPECT_THAT(forme[0], HasSubstr("|INI|ORVE_MAILSERVER|FRMRW_OPZMAIL"));
  EXPECT_THAT(forme[1], HasSubstr("|TER|ORVE_MAILSERVER|FRMRW_OPZMAIL"));
  EXPECT_EQ(forme[0].substr(0, 44), forme[1].substr(0, 44));  // one identifier
  const auto righe = journal->Righe({"debug QLNA", "Ambiente.CreaForm", "FRMRW_OPZMAIL chiusa"});
  EXPECT_EQ(righe.front(), forme[0]);  // before the window is created
  EXPECT_EQ(righe.back(), forme[1]);   // after it has closed
}

TEST_F(Apertura, AnAddressBookManagerIsHandedOverAndItsEntryStaysUsable) {
  servizio->ManagerRubrica = std::make_shared<fakes::FakeRubrica>(journal);
  Apri([](HeadlessForm& finestra) {
    for (const char* pulsante : {"BTN_DEST_A", "BTN_DEST_CC", "BTN_DEST_CCN"}) {
      EXPECT_TRUE(finestra.ApreMenu(pulsante).at(0).attiva) << pulsante;
    }
  });
  EXPECT_EQ(journal->Conta("BTN_DEST_A.EnableMenuItem"), 0U);
}

TEST_F(Apertura, WithoutAManagerTheApplicationsBookCannotBeUsed) {
  Apri([](HeadlessForm& finestra) {
    for (const char* pulsante : {"BTN_DEST_A", "BTN_DEST_CC", "BTN_DEST_CCN"}) {
      const auto voci = finestra.ApreMenu(pulsante);
      EXPECT_EQ(voci.at(0).chiave, "Key_Arvio") << pulsante;
      EXPECT_FALSE(voci.at(0).attiva) << pulsante;
      EXPECT_TRUE(voci.at(1).attiva) << pulsante;
    }
  });
}

// Messages of the window go through the host's object, and its books through the manager.
TEST_F(Apertura, TheWindowWorksWithTheHostsInterfaceAndItsManager) {
  servizio->ActiveInterface = fakes::CreaFakeInterfaccia(*ambiente);
  const auto rubrica = std::make_shared<fakes::FakeRubrica>(journal);
  rubrica->persona = [](fakes::FakeRubrica& libro) {
    libro.nome = "Anna";
    libro.indirizzo = "rotto";
  };
  servizio->ManagerRubrica = rubrica;
  Apri([](HeadlessForm& finestra) {
    finestra.Sceglie("BTN_DEST_A", "Key_Arvio");
    EXPECT_EQ(finestra.Testo("TXT_EMAIL"), "Anna<rotto>");
    finestra.Preme("cmd_Invia");
  });
  EXPECT_THAT(Mostrati(), ElementsAre("Host.Messaggi.MostraMsg L'elenco dei destinatari contiene un "
                                      "indirizzo non valido.|0|Invio email...|(assente)"));
}

// The shape of the window.

struct CasoForma {
  std::int32_t canale;
  bool wantMittente;
};

TEST_F(Apertura, ChannelsWithoutAChoiceOfSenderLoseTheSenderAnd735Twips) {
  const CasoForma casi[] = {{0, false}, {1, false}, {2, false}, {76, true}, {77, true}, {5, true}};
  for (const auto& caso : casi) {
    SuCanale(caso.canale);
    servizio->vCollMittenti.reset();
    Apri([&](HeadlessForm& finestra) {
      const float scarto = caso.wantMittente ? 0 : 735;
      EXPECT_EQ(finestra.Vede("FMR_MITTENTE"), caso.wantMittente) << caso.canale;
      EXPECT_EQ(finestra.Vede("CMB_ACCOUNT"), caso.wantMittente) << caso.canale;
      EXPECT_EQ(finestra.Vede("CHK_RICEVUTA"), caso.wantMittente) << caso.canale;
      EXPECT_EQ(finestra.Posizione("FMR_DESTINATARIO").top, 720 - scarto) << caso.canale;
      EXPECT_EQ(finestra.Posizione("FMR_PERS").top, 2280 - scarto) << caso.canale;
      EXPECT_EQ(finestra.Posizione("cmd_Invia").top, 6885 - scarto) << caso.canale;
      EXPECT_EQ(finestra.Posizione("cmd_Annulla").top, 6885 - scarto) << caso.canale;
      EXPECT_EQ(finestra.Altezza(), 7290 - scarto) << caso.canale;
    });
  }
}

TEST_F(Apertura, HidingTheSenderGoesControlByControl) {
  SuCanale(2);
  Apri();
  auto passi =
      journal->Righe({"FMR_", "LBL_MITTENTE", "CMB_ACCOUNT", "CHK_CONSEGNA", "CHK_RICEVUTA", "cmd_",
                      "FRMRW_OPZMAIL.Height", "legge FMR_", "legge cmd_", "legge FRMRW_OPZMAIL.Height"});
  passi.resize(17);
  EXPECT_THAT(
      passi,
      ElementsAre("FMR_MITTENTE.Visible false", "LBL_MITTENTE.Visible false", "CMB_ACCOUNT.Visible false",
                  "CHK_CONSEGNA.Visible false", "CHK_RICEVUTA.Visible false", "legge FMR_MITTENTE.Top",
                  "legge FMR_MITTENTE.Height", "legge FMR_DESTINATARIO.Top", "FMR_DESTINATARIO.Top -15",
                  "legge FMR_PERS.Top", "FMR_PERS.Top 1545", "legge cmd_Invia.Top", "cmd_Invia.Top 6150",
                  "legge cmd_Annulla.Top", "cmd_Annulla.Top 6150", "legge FRMRW_OPZMAIL.Height",
                  "FRMRW_OPZMAIL.Height 6555"));
}

// Any form with these controls will do.
std::shared_ptr<host::Form> AltraForm(const fakes::JournalPtr& journal, float basso) {
  using host::TipoControllo;
  static host::LayoutControllo controlli[] = {
      {.nome = "fmr_mittente", .tipo = TipoControllo::kFrame},
      {.nome = "LBL_MITTENTE", .tipo = TipoControllo::kEtichetta},
      {.nome = "CMB_ACCOUNT", .tipo = TipoControllo::kCombo},
      {.nome = "CHK_CONSEGNA", .tipo = TipoControllo::kCheckBox},
      {.nome = "CHK_RICEVUTA", .tipo = TipoControllo::kCheckBox},
      {.nome = "FMR_DESTINATARIO", .tipo = TipoControllo::kFrame},
      {.nome = "FMR_PERS", .tipo = TipoControllo::kFrame},
      {.nome = "CMD_INVIA", .tipo = TipoControllo::kTbarMenu},
      {.nome = "cmd_annulla", .tipo = TipoControllo::kTbarMenu},
  };
  controlli[0].posizione = {0, 100, 0, basso - 100};
  return std::make_shared<HeadlessForm>(
      journal, host::LayoutForm{.nome = "Altra", .height = 5000, .controlli = controlli}, nullptr);
}

TEST_F(Apertura, HidingTheSenderReachesTheControlsOfAnyFormByName) {
  const auto form = AltraForm(journal, 400);
  NascondiMittente(*form);
  EXPECT_EQ(form->Height(), 4600);
  EXPECT_EQ(host::Richiesto(form->Controlli("CMD_ANNULLA")).Top(), -400);
}

TEST_F(Apertura, AShiftBeyondSixteenBitsIsAnOverflow) {
  const auto form = AltraForm(journal, 32768);
  EXPECT_EQ(fakes::NumeroDi([&] { NascondiMittente(*form); }), 6);
  EXPECT_EQ(form->Height(), 5000);
}

TEST_F(Apertura, TheObjectsOfTheChannelGoToTheForm) {
  auto& messaggi = interno.oggetti.objMapiMessages;
  auto& outlook = interno.oggetti.objOutlookApp;
  messaggi = ambiente->CreaMAPIMessages();
  outlook = ambiente->CreaOutlook();
  for (const std::int32_t canale : {0, 1, 2}) {
    SuCanale(canale);
    long usiMessaggi = 0;
    long usiOutlook = 0;
    Apri([&](HeadlessForm& /*finestra*/) {
      usiMessaggi = messaggi.use_count();
      usiOutlook = outlook.use_count();
    });
    EXPECT_EQ(usiMessaggi, canale == 0 ? 2 : 1) << canale;
    EXPECT_EQ(usiOutlook, canale == 1 ? 2 : 1) << canale;
  }
}

TEST_F(Apertura, WithoutAnAccountThereIsNoDialogAndNothingIsSent) {
  Accounts({});
  interno.esito.StatoInvio = kvErroreInvioMail;
  ConRegistro();
  bool mostrata = false;
  ambiente->persona = [&](HeadlessForm& /*finestra*/) { mostrata = true; };
  journal->Svuota();
  ApriForm_OpzInvio(interno, *servizio);
  EXPECT_FALSE(mostrata);
  EXPECT_THAT(Mostrati(),
              ElementsAre("ObjMessaggi.MostraMsg Non è disponibile alcun account mail|0||(assente)"));
  EXPECT_EQ(servizio->Stato(), kvErroreInvioMail);
  EXPECT_THAT(journal->Righe({"FRMRW_OPZMAIL.Show", "TXT_", "smtp", "ObjRegistroInvio.RegistraInvio"}),
              IsEmpty());
  EXPECT_THAT(journal->Righe({"debug "}).back(), HasSubstr("|TER|ORVE_MAILSERVER|FRMRW_OPZMAIL"));
}

TEST_F(Apertura, ADialogThatIsNotShownLetsGoOfTheInterfaceBeforeItsEnd) {
  Accounts({});
  const auto interfaccia = fakes::CreaFakeInterfaccia(*ambiente);
  servizio->ActiveInterface = interfaccia;
  long usi = 0;
  journal->Quando("debug ", [&] {
    if (journal->Righe().back().find("|TER|ORVE_MAILSERVER|FRMRW_OPZMAIL") == std::string::npos) return;
    usi = interfaccia.use_count();
  });
  ApriForm_OpzInvio(interno, *servizio);
  EXPECT_EQ(usi, 2);  // this test's and the service's
}

TEST_F(Apertura, FixedParametersShowTheAccountDisabled) {
  servizio->IsInvioMailConParams(true);
  Apri([](HeadlessForm& finestra) {
    EXPECT_TRUE(finestra.Vede("CMB_ACCOUNT"));
    EXPECT_FALSE(finestra.Attivo("CMB_ACCOUNT"));
    EXPECT_EQ(finestra.Testo("CMB_ACCOUNT"), "12");
  });
}

TEST_F(Apertura, FixedParametersDoNothingOnOtherChannels) {
  servizio->IsInvioMailConParams(true);
  SuCanale(2);
  Apri();
  EXPECT_EQ(journal->Conta("CMB_ACCOUNT.Enabled"), 0U);
}

TEST_F(Apertura, NotificationsThatTheAccountFixesAreDisabled) {
  servizio->vDisableNotifyRead = true;
  Apri([](HeadlessForm& finestra) {
    EXPECT_FALSE(finestra.Attivo("CHK_RICEVUTA"));
    EXPECT_TRUE(finestra.Attivo("CHK_CONSEGNA"));
  });
  servizio->vDisableNotifyRead = false;
  servizio->vDisableNotifyDelivery = true;
  servizio->vCollMittenti.reset();
  Apri([](HeadlessForm& finestra) {
    EXPECT_TRUE(finestra.Attivo("CHK_RICEVUTA"));
    EXPECT_FALSE(finestra.Attivo("CHK_CONSEGNA"));
  });
}

TEST_F(Apertura, OnOtherChannelsTheFixedNotificationsAreNotLookedAtHere) {
  servizio->vDisableNotifyRead = true;
  servizio->vDisableNotifyDelivery = true;
  SuCanale(2);
  std::size_t primaDiMostrare = 0;
  journal->Quando("FRMRW_OPZMAIL.Show", [&] {
    primaDiMostrare = journal->Conta("CHK_RICEVUTA.Enabled") + journal->Conta("CHK_CONSEGNA.Enabled");
  });
  Apri();
  EXPECT_EQ(primaDiMostrare, 0U);
  EXPECT_EQ(journal->Conta("CHK_CONSEGNA.Enabled"), 0U);
}

// What is in the boxes.

struct CasoCaselle {
  const char* label;
  std::vector<std::tuple<std::string, std::string, int>> destinatari;  // name, address, box
  const char* wantA;
  const char* wantCC;
  const char* wantCCn;
};

TEST_F(Apertura, RecipientsStandInTheirBoxes) {
  const CasoCaselle casi[] = {
      {"one in each",
       {{"Anna", "a@x.example", 0}, {"Carlo", "c@x.example", 1}, {"Nino", "n@x.example", 2}},
       "Anna<a@x.example>",
       "Carlo<c@x.example>",
       "Nino<n@x.example>"},
      {"several of one box, in their order",
       {{"Anna", "a@x.example", 0}, {"Carlo", "c@x.example", 1}, {"Bea", "b@x.example", 0}},
       "Anna<a@x.example>;Bea<b@x.example>",
       "Carlo<c@x.example>",
       ""},
      {"no name", {{"", "a@x.example", 0}}, "<a@x.example>", "", ""},
      {"the second of three without an address",
       {{"Anna", "a@x.example", 0}, {"Bea", "", 0}, {"Caio", "c@x.example", 0}},
       "Anna<a@x.example>;;Caio<c@x.example>",
       "",
       ""},
      {"the first without an address",
       {{"Anna", "", 0}, {"Bea", "b@x.example", 0}},
       "Bea<b@x.example>",
       "",
       ""},
      {"the last without an address",
       {{"Anna", "a@x.example", 0}, {"Bea", "", 0}},
       "Anna<a@x.example>;",
       "",
       ""},
      {"an unknown box is skipped",
       {{"Anna", "a@x.example", 3}, {"Bea", "b@x.example", -1}, {"Caio", "c@x.example", 1}},
       "",
       "Caio<c@x.example>",
       ""},
  };
  for (const auto& caso : casi) {
    servizio->vCollDestinatari.reset();
    servizio->vCollMittenti.reset();
    for (const auto& [nome, indirizzo, casella] : caso.destinatari) {
      Collezione().AddFromLista(indirizzo, nome, "", static_cast<std::int16_t>(casella));
    }
    Apri([&](HeadlessForm& finestra) {
      EXPECT_EQ(finestra.Testo("TXT_EMAIL"), caso.wantA) << caso.label;
      EXPECT_EQ(finestra.Testo("TXT_EMAIL_CC"), caso.wantCC) << caso.label;
      EXPECT_EQ(finestra.Testo("TXT_EMAIL_CCN"), caso.wantCCn) << caso.label;
    });
  }
}

TEST_F(Apertura, WithoutRecipientsTheBoxesStayAsTheyAre) {
  Apri();
  EXPECT_THAT(journal->Righe({"TXT_EMAIL"}), IsEmpty());
}

TEST_F(Apertura, TheMainAttachmentIsMarkedAsTheStandardDocument) {
  servizio->vMailAttachment = "C:\\doc\\fattura.pdf";
  servizio->vElencoAllegati = Variant::Array{"C:\\doc\\fattura.pdf", "C:\\doc\\altro.pdf", "D:\\fattura.pdf"};
  for (const char* file : {"C:\\doc\\fattura.pdf", "C:\\doc\\altro.pdf", "D:\\fattura.pdf"}) File(file);
  Apri([](HeadlessForm& finestra) {
    EXPECT_THAT(finestra.Righe("GRID_ALLEGATI"),
                ElementsAre("fattura.pdf - Standard", "altro.pdf", "fattura.pdf"));
  });
}

TEST_F(Apertura, WithoutAMainAttachmentNothingIsMarkedNotEvenAnEmptyPath) {
  servizio->vElencoAllegati = Variant::Array{"", "C:\\doc\\altro.pdf"};
  File("");
  File("C:\\doc\\altro.pdf");
  Apri([](HeadlessForm& finestra) {
    EXPECT_THAT(finestra.Righe("GRID_ALLEGATI"), ElementsAre("", "altro.pdf"));
  });
}

TEST_F(Apertura, APathWithoutABackslashIsShownWhole) {
  servizio->vElencoAllegati = Variant::Array{"fattura.pdf"};
  File("fattura.pdf");
  Apri([](HeadlessForm& finestra) {
    EXPECT_THAT(finestra.Righe("GRID_ALLEGATI"), ElementsAre("fattura.pdf"));
  });
  EXPECT_THAT(journal->Righe({"File.Apri"}), ElementsAre("File.Apri fattura.pdf||0"));
}

// How it ends.

TEST_F(Apertura, ACancelledDialogLeavesNoTrace) {
  ConRegistro();
  servizio->vOggetto = "Oggetto";
  servizio->vCorpoMail = "Corpo";
  servizio->vFlagCorpo = 1;
  for (const bool conPulsante : {true, false}) {
    servizio->vCollMittenti.reset();
    Apri([&](HeadlessForm& finestra) {
      finestra.Riscrive("TXT_OGGETTO", "Cambiato");
      finestra.Riscrive("TXT_CORPO", "Cambiato");
      if (conPulsante) {
        finestra.Preme("cmd_Annulla");
      } else {
        finestra.ChiudeFinestra();
      }
      EXPECT_FALSE(finestra.Aperta());
    });
    EXPECT_EQ(servizio->vOggetto, "Oggetto");
    EXPECT_EQ(servizio->vCorpoMail, "Corpo");
    EXPECT_EQ(servizio->Stato(), kvOK);
    EXPECT_THAT(journal->Righe({"smtp", "ObjRegistroInvio.RegistraInvio", "ConnectionADO.CreateCommand",
                                "TextStream", "ObjMessaggi.MostraMsg"}),
                IsEmpty());
  }
}

TEST_F(Apertura, AFailureIsShownToAPersonAndLoggedUnattended) {
  journal->Fallisce("TXT_OGGETTO.Text", {1001, "Controllo", "guasto"});
  ApriForm_OpzInvio(interno, *servizio);
  EXPECT_THAT(Mostrati(), ElementsAre("ObjMessaggi.MostraMsg 1001 guasto ORVE_MAILSERVER: CLSFW_MAILSERVER: "
                                      "ApriForm_OpzInvio|0||(assente)"));
  EXPECT_EQ(journal->Conta("FRMRW_OPZMAIL.Show"), 0U);
  EXPECT_EQ(journal->Conta("TextStream"), 0U);

  servizio->ModalitaInvio(kvSemiAuto);
  servizio->vCollMittenti.reset();
  interno.impostazioni.PathTemp = "C:\\Temp";
  journal->Svuota();
  ApriForm_OpzInvio(interno, *servizio);
  EXPECT_THAT(Mostrati(), IsEmpty());
  EXPECT_THAT(journal->Righe({"TextStream.WriteLine"}).back(),
              HasSubstr("ErroreInvio   ApriForm_OpzInvio   "));
}

TEST_F(Apertura, AHostWithoutWindowsFailsClearly) {
  journal->Fallisce("Ambiente.CreaForm", host::Errore(host::kOggettoNonCreabile));
  ApriForm_OpzInvio(interno, *servizio);
  EXPECT_THAT(Mostrati(),
              ElementsAre("ObjMessaggi.MostraMsg 429 Impossibile creare l'oggetto ORVE_MAILSERVER: "
                          "CLSFW_MAILSERVER: ApriForm_OpzInvio|0||(assente)"));
  EXPECT_THAT(journal->Righe({"debug "}).back(), HasSubstr("|TER|ORVE_MAILSERVER|FRMRW_OPZMAIL"));
}

TEST_F(Apertura, WithoutAListOfRecipientsTheFailureIsReported) {
  servizio->vCollDestinatari.reset();
  ApriForm_OpzInvio(interno, *servizio);
  EXPECT_THAT(Mostrati(), ElementsAre(HasSubstr("91 Variabile oggetto non impostata ORVE_MAILSERVER: "
                                                "CLSFW_MAILSERVER: ApriForm_OpzInvio|0||(assente)")));
}

TEST_F(Apertura, AMissingControlFailsInHidingTheSenderAndIsReportedHere) {
  SuCanale(2);
  journal->Fallisce("FMR_PERS.Top", host::Errore(host::kMembroNonSupportato));
  ApriForm_OpzInvio(interno, *servizio);
  EXPECT_THAT(Mostrati(), ElementsAre(HasSubstr("438 Proprietà o metodo non supportati dall'oggetto "
                                                "ORVE_MAILSERVER: CLSFW_MAILSERVER: ApriForm_OpzInvio")));
}

TEST_F(Apertura, TheServiceCanOpenTheWindowAgainAndAgain) {
  for (int i = 0; i < 3; ++i) {
    servizio->vCollMittenti.reset();
    Apri();
    EXPECT_THAT(Mostrati(), IsEmpty());
  }
}

// A second load into the same list of accounts ends in a repeated key, which that procedure reports.
TEST_F(Apertura, AnAccountListThatIsStillFilledEndsInTheMessageOfItsLoading) {
  Apri();
  ambiente->persona = nullptr;
  ApriForm_OpzInvio(interno, *servizio);
  EXPECT_THAT(Mostrati(), ElementsAre(HasSubstr("457-La chiave è già associata a un elemento dell'insieme in "
                                                "CLSFW_MAILSERVER: LoadAccountsPerUser|0||(assente)")));
  EXPECT_EQ(journal->Conta("FRMRW_OPZMAIL.Show"), 1U);
}

// From the send procedure.

TEST_F(Apertura, TheManualModeOpensTheWindowFilledFromTheLookUp) {
  servizio->vCollDestinatari.reset();
  servizio->vIndDestinatario = "a@x.example";
  servizio->vNome = "Anna";
  servizio->vOggetto = "Fattura 7";
  bool vista = false;
  ambiente->persona = [&](HeadlessForm& finestra) {
    vista = true;
    EXPECT_EQ(finestra.Testo("TXT_EMAIL"), "Anna<a@x.example>");
    EXPECT_EQ(finestra.Testo("TXT_OGGETTO"), "Fattura 7");
    finestra.Preme("cmd_Invia");
  };
  servizio->AvviaProceduraInvio();
  EXPECT_TRUE(vista);
  EXPECT_TRUE(Consegnato());
  EXPECT_EQ(servizio->Stato(), kvOK);
  EXPECT_THAT(journal->Righe({"smtp.AddRecipientEx", "smtp.Subject", "smtp.FromAddr"}),
              ElementsAre("smtp.FromAddr <noi@azienda.example>", "smtp.AddRecipientEx Anna <a@x.example> 0",
                          "smtp.Subject Fattura 7"));
}

TEST_F(Apertura, TheWindowNeverOpensOnTheCollectionRoute) {
  Collezione().AddFromLista("a@x.example", "Anna", "", 0);
  servizio->AvviaProceduraInvio();
  EXPECT_EQ(journal->Conta("Ambiente.CreaForm"), 0U);
}

}  // namespace
}  // namespace orve
