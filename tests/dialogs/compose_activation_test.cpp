// The compose window's life: its start, its body, its account list, its end.
#include <memory>
#include <string>
#include <vector>

#include "dialogs/finestra_di_prova.h"
#include "fakes/errori.h"

namespace orve {
namespace {

using fakes::HeadlessForm;
using fakes::RigaAccount;
using host::Variant;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using Attivazione = fakes::FinestraDiProva;
using FormAttivato = fakes::FormDiProva;

Variant Campo(const Variant& didascalia, const Variant& chiave) {
  return Variant::Array{didascalia, chiave};
}

// The notice that a window shows when nobody has given a body, to the character.
const std::string kCorpoStandard =
    "Gli allegati inclusi in questa mail sono destinati  a \r\n ***(Nome)***\r\n\r\ndell'azienda:\r\n "
    "***(Azienda)***\r\n\r\nPosta elettronica:\r\n  ***(IndEmail)*** \r\n\r\n"
    "Informativa ai sensi del codice della Privacy (D. Lgs. 196 \u2013 30/06/2003).\r\n"
    "Le informazioni contenute nella presente e-mail e negli eventuali allegati, devono essere nella "
    "disponibilità del solo destinatario.\r\n"
    "Se avete ricevuto per errore questa e-mail siete pregati di informarci (rispedendola al mittente) "
    "e di provvedere alla sua rimozione. Possono essere presenti informazioni riservate e non corrette "
    "( parzialmente o totalmente). Le e-mail in partenza e in arrivo possono essere oggetto di monitoraggio "
    "da parte di ***(AziendaCorr)***. Del contenuto è responsabile il mittente della presente. Chiunque "
    "venga in possesso non autorizzato di questa e-mail è vincolato dalla Legge a non leggerne il contenuto, "
    "a "
    "non copiarla, a non diffonderla e a non usarla. La informiamo che per l\u2019esercizio dei diritti di "
    "cui "
    "all\u2019art. 7 del d. lgs. 196/2003 può rivolgersi al Titolare del trattamento  "
    "***(AziendaCorr)***,***(AzCorrInd)*** \u2013  ***(AzCorrCAP)***  ***(AzCorrCitta)*** per posta o per "
    "fax, "
    "indicando sulla busta o sul foglio la dicitura \u201CInerente alla Privacy\u201D, o inviando una e-mail "
    "all\u2019 indirizzo ***(AzCorrMail)***.";

TEST_F(FormAttivato, TheStartOfTheWindowGoesStepByStep) {
  servizio->SrvMailInstallato = kvMAPI;
  servizio->ReadReceipt = true;
  servizio->vDisableNotifyRead = true;
  servizio->ActiveInterface = fakes::CreaFakeInterfaccia(*ambiente);
  ambiente->parametriCorpo = Variant::Array{Campo("Nome", "#Nome")};
  File("C:\\f.pdf");
  form->AggiungiAllegato("C:\\f.pdf", "f.pdf");
  journal->Svuota();
  Mostra(nullptr);
  const auto passi = journal->Righe({"Ambiente.", "BTN_", "ConnectionADO", "ConfigurazioneGriglia",
                                     "GRID_ALLEGATI", "CLSFW_Parametri", "CMD_LEGENDA", "CHK_", "TXT_CORPO",
                                     "debug", "KVL_RESIZEFORM1", "Host.Messaggi", "FRMRW_OPZMAIL"});
  EXPECT_THAT(
      std::vector<std::string>(passi.begin(), passi.end() - 4),
      ElementsAre(
          "FRMRW_OPZMAIL.Show 1|(assente)", "FRMRW_OPZMAIL attiva", "Ambiente.CreaMessaggi",
          "BTN_DEST_A.AddMenuItem Arvio|Key_Arvio", "BTN_DEST_CC.AddMenuItem Arvio|Key_Arvio",
          "BTN_DEST_CCN.AddMenuItem Arvio|Key_Arvio", "BTN_DEST_A.AddMenuItem Outlook|Key_Outl",
          "BTN_DEST_CC.AddMenuItem Outlook|Key_Outl", "BTN_DEST_CCN.AddMenuItem Outlook|Key_Outl",
          "ConnectionADO.Execute -1  SELECT FW24_INDFAXATTIVO  FROM FW24_FAXCONFIG  WHERE FW24_CODICE = "
          "'FAX' ",
          "Ambiente.CreaConfigurazioneGriglia", "ConfigurazioneGriglia.ColonnaChiave Index",
          "ConfigurazioneGriglia.SelezioneRiga true", "GRID_ALLEGATI.Configurazione (oggetto)",
          "GRID_ALLEGATI.ColonneFisse 0", "GRID_ALLEGATI.AggiungiColonna FileName|Allegato|1|9150|true",
          "GRID_ALLEGATI.FineColonne", "GRID_ALLEGATI.FineConfigurazione", "Ambiente.CreaParametri",
          "CLSFW_Parametri.GetParametriCorpoMail", "CMD_LEGENDA.AddMenuItem Nome|#Nome",
          "GRID_ALLEGATI.DataSource (oggetto)", "BTN_ELIMINA.AddMenuItem Elimina allegato|Del",
          "BTN_ELIMINA.AddMenuItem Elimina tutti gli allegati|DelAll", "CHK_CORPO.Text 0",
          "TXT_CORPO.Enabled false", "TXT_CORPO.Text " + kCorpoStandard, "CMD_LEGENDA.Enabled false",
          "CHK_CORPO.Text 1", "TXT_CORPO.Enabled true", "CMD_LEGENDA.Enabled true", "CHK_RICEVUTA.Text 1",
          "CHK_RICEVUTA.Enabled false", HasSubstr("|INI|ORVE_MAILSERVER|CollDestinatari"),
          "KVL_RESIZEFORM1.Avvia", "Host.Messaggi.TitoloFinestra Invio email...",
          "FRMRW_OPZMAIL.Caption Invio email..."));
}

TEST_F(FormAttivato, ASecondActivationOnlyRenewsTheMessageObject) {
  Mostra([&](HeadlessForm& finestra) {
    const auto primo = Dentro().ObjMessaggiForm;
    journal->Svuota();
    finestra.Riattiva();
    EXPECT_THAT(journal->Righe(), ElementsAre("FRMRW_OPZMAIL attiva", "Ambiente.CreaMessaggi"));
    EXPECT_NE(Dentro().ObjMessaggiForm, primo);
  });
}

TEST_F(FormAttivato, AMessageOutlivesAnActivationAfterIt) {
  servizio->SrvMailInstallato = kvMAPI;
  Mostra([&](HeadlessForm& finestra) {
    const std::weak_ptr<host::Messaggi> mostrato = Dentro().ObjMessaggiForm;
    journal->Quando("ObjMessaggi.MostraMsg", [&] {
      finestra.Riattiva();
      EXPECT_NE(Dentro().ObjMessaggiForm, mostrato.lock());
      EXPECT_FALSE(mostrato.expired()) << "gone while it shows";
    });
    finestra.Digita("TXT_EMAIL", "nessun indirizzo");
    finestra.Preme("cmd_Invia");
    EXPECT_THAT(Mostrati(), SizeIs(1));
    EXPECT_TRUE(mostrato.expired());
    journal->DimenticaPiani();
  });
}

TEST_F(FormAttivato, AFailingActivationIsReportedAndNotDoneAgain) {
  journal->Fallisce("BTN_ELIMINA.AddMenuItem", {1001, "Controllo", "guasto"});
  Mostra([&](HeadlessForm& finestra) {
    EXPECT_THAT(Mostrati(), ElementsAre("ObjMessaggi.MostraMsg 1001 guasto ORVE_MAILSERVER: FRMFW_OPZMAIL: "
                                        "Activate|0||(assente)"));
    EXPECT_TRUE(Dentro().Attivato);
    EXPECT_EQ(journal->Conta("CHK_CORPO.Text"), 0U);  // the window stays in the state that it had reached
    finestra.Riattiva();
    EXPECT_EQ(journal->Conta("CHK_CORPO.Text"), 0U);
    EXPECT_THAT(Mostrati(), SizeIs(1));
  });
}

TEST_F(FormAttivato, WithTheHostsInterfaceItsTitleReplacesTheCaption) {
  ambiente->titoloHost = " - Azienda S.p.A.";
  servizio->ActiveInterface = fakes::CreaFakeInterfaccia(*ambiente);
  Mostra([](HeadlessForm& finestra) { EXPECT_EQ(finestra.Titolo(), "Invio email... - Azienda S.p.A."); });
}

TEST_F(FormAttivato, WithoutTheHostsInterfaceTheCaptionStays) {
  ambiente->titoloHost = " - Azienda S.p.A.";
  Mostra([](HeadlessForm& finestra) { EXPECT_EQ(finestra.Titolo(), "Invio email..."); });
  EXPECT_EQ(journal->Conta("ObjMessaggi.TitoloFinestra"), 0U);
}

TEST_F(FormAttivato, AnInterfaceWithoutAMessageObjectIsAFailureOfTheActivation) {
  servizio->ActiveInterface = fakes::CreaFakeInterfaccia(*ambiente, 7, true, false);
  Mostra(nullptr);
  EXPECT_THAT(Mostrati(),
              ElementsAre("ObjMessaggi.MostraMsg 91 Variabile oggetto non impostata ORVE_MAILSERVER: "
                          "FRMFW_OPZMAIL: Activate|0||(assente)"));
}

// Messages of the form.

TEST_F(FormAttivato, MessagesGoThroughTheHostsObjectWhenTheChainReachesIt) {
  form->ActiveInterface = fakes::CreaFakeInterfaccia(*ambiente);
  journal->Fallisce("Ambiente.CreaParametri", {429, "Sistema", "manca"});
  Mostra(nullptr);
  EXPECT_THAT(Mostrati(),
              ElementsAre("Host.Messaggi.MostraMsg Errore: manca in LoadMailBodyParams|0||(assente)"));
}

TEST_F(FormAttivato, MessagesFallBackToTheFormsOwnObject) {
  interno.oggetti.ObjMessaggi.reset();  // the service's is not asked
  form->ActiveInterface = fakes::CreaFakeInterfaccia(*ambiente, 7, false);
  journal->Fallisce("Ambiente.CreaParametri", {429, "Sistema", "manca"});
  Mostra(nullptr);
  EXPECT_THAT(Mostrati(),
              ElementsAre("ObjMessaggi.MostraMsg Errore: manca in LoadMailBodyParams|0||(assente)"));
}

TEST(NVLDelForm, NullEmptyAndBlankValuesGiveTheDefaultAndNothingFails) {
  const auto nvl = [](const Variant& valore) { return FRMRW_OPZMAIL::NVL(valore, "x"); };
  EXPECT_EQ(nvl({}), Variant("x"));
  EXPECT_EQ(nvl(host::Null{}), Variant("x"));
  EXPECT_EQ(nvl(""), Variant("x"));
  EXPECT_EQ(nvl("   "), Variant("x"));
  EXPECT_EQ(nvl(" a "), Variant(" a "));
  EXPECT_EQ(nvl(0), Variant(0));
  EXPECT_EQ(nvl(false), Variant(false));
  const Variant elenco = Variant::Array{1};
  EXPECT_EQ(nvl(elenco), elenco);
}

// The body.

TEST_F(Attivazione, WithoutABodyOfTheCallersTheStandardBodyIsShownOpenForEditing) {
  servizio->vFlagCorpo = 0;
  servizio->vCorpoMail = "messo dal chiamante";
  Apri([](HeadlessForm& finestra) {
    EXPECT_EQ(finestra.Testo("TXT_CORPO"), kCorpoStandard);
    EXPECT_TRUE(finestra.Attivo("TXT_CORPO"));
    EXPECT_TRUE(finestra.Attivo("CMD_LEGENDA"));
    EXPECT_EQ(finestra.Testo("CHK_CORPO"), "1");
  });
}

TEST_F(Attivazione, TheCallersBodyStaysAlsoWhenItIsEmpty) {
  servizio->vFlagCorpo = 1;
  for (const char* corpo : {"messo dal chiamante", ""}) {
    servizio->vCorpoMail = corpo;
    servizio->vCollMittenti.reset();
    Apri([&](HeadlessForm& finestra) {
      EXPECT_EQ(finestra.Testo("TXT_CORPO"), corpo);
      EXPECT_TRUE(finestra.Attivo("TXT_CORPO"));
      EXPECT_EQ(finestra.Testo("CHK_CORPO"), "1");
    });
    EXPECT_EQ(journal->Conta("CHK_CORPO.Text 0"), 0U);
  }
}

TEST_F(Attivazione, TheStandingMessageTakesThePlaceOfTheStandardBodyUnfilled) {
  servizio->FlgMsgPers = true;
  servizio->MsgPers = "Gentile ***(Nome)***";
  Apri([](HeadlessForm& finestra) { EXPECT_EQ(finestra.Testo("TXT_CORPO"), "Gentile ***(Nome)***"); });
}

TEST_F(FormAttivato, AnyOtherValueOfTheBodyBoxBringsTheDefaultBackAndLocksIt) {
  servizio->FlgMsgPers = true;
  servizio->MsgPers = "Gentile ***(Nome)***";
  servizio->vFlagCorpo = 1;
  Mostra([&](HeadlessForm& finestra) {
    finestra.Digita("TXT_CORPO", "mio");
    host::ControlloDi<host::KVL_CHECKBOX>(form->Finestra(), "CHK_CORPO")->Text("0");
    EXPECT_EQ(finestra.Testo("TXT_CORPO"), "Gentile ***(Nome)***");
    EXPECT_FALSE(finestra.Attivo("TXT_CORPO"));
    EXPECT_FALSE(finestra.Attivo("CMD_LEGENDA"));
    host::ControlloDi<host::KVL_CHECKBOX>(form->Finestra(), "CHK_CORPO")->Text("1");
    EXPECT_EQ(finestra.Testo("TXT_CORPO"), "Gentile ***(Nome)***");
    EXPECT_TRUE(finestra.Attivo("TXT_CORPO"));
    EXPECT_TRUE(finestra.Attivo("CMD_LEGENDA"));
  });
}

TEST_F(Attivazione, ABodyLongerThanMaxcharIsShownWholeButTakesNoMoreTyping) {
  servizio->vFlagCorpo = 1;
  servizio->vCorpoMail = std::string(2500, 'x');
  Apri([](HeadlessForm& finestra) {
    EXPECT_EQ(finestra.Testo("TXT_CORPO").size(), 2500U);
    finestra.Digita("TXT_CORPO", "y");
    EXPECT_EQ(finestra.Testo("TXT_CORPO").size(), 2500U);
    finestra.Riscrive("TXT_CORPO", std::string(2500, 'z'));
    EXPECT_EQ(finestra.Testo("TXT_CORPO"), std::string(2000, 'z'));
  });
}

// Special fields.

TEST_F(Attivazione, EachSpecialFieldGetsAnEntry) {
  ambiente->parametriCorpo =
      Variant::Array{Campo("Nome", "#Nome"), Campo("Vuoto", ""), Campo("Assente", host::Null{}),
                     Campo("Bianchi", "   "), Campo("Azienda", "#Azienda")};
  Apri([](HeadlessForm& finestra) {
    const auto voci = finestra.ApreMenu("CMD_LEGENDA");
    ASSERT_EQ(voci.size(), 2U);
    EXPECT_EQ(voci[0].didascalia + "|" + voci[0].chiave, "Nome|#Nome");
    EXPECT_EQ(voci[1].didascalia + "|" + voci[1].chiave, "Azienda|#Azienda");
  });
}

TEST_F(Attivazione, ASpecialFieldGoesToTheEndOfTheBodyWithoutItsMark) {
  ambiente->parametriCorpo =
      Variant::Array{Campo("Nome", "#Nome"), Campo("Uno", "#"), Campo("Città", "éàccento")};
  servizio->vFlagCorpo = 1;
  servizio->vCorpoMail = "Gentile";
  Apri([](HeadlessForm& finestra) {
    finestra.Sceglie("CMD_LEGENDA", "#Nome");
    EXPECT_EQ(finestra.Testo("TXT_CORPO"), "Gentile ***(Nome)***");
    finestra.Sceglie("CMD_LEGENDA", "#");
    EXPECT_EQ(finestra.Testo("TXT_CORPO"), "Gentile ***(Nome)*** ***()***");
    finestra.Sceglie("CMD_LEGENDA", "éàccento");
    EXPECT_EQ(finestra.Testo("TXT_CORPO"), "Gentile ***(Nome)*** ***()*** ***(àccento)***");
  });
}

TEST_F(Attivazione, APlaceholderChosenHereIsFilledInTheMail) {
  ambiente->parametriCorpo = Variant::Array{Campo("Azienda", "#Azienda"), Campo("Altro", "#Altro")};
  servizio->vFlagCorpo = 1;
  servizio->vCorpoMail = "Per";
  servizio->vDitta = "Acme S.p.A.";
  Invia([](HeadlessForm& finestra) {
    finestra.Digita("TXT_EMAIL", "a@x.example");
    finestra.Sceglie("CMD_LEGENDA", "#Azienda");
    finestra.Sceglie("CMD_LEGENDA", "#Altro");
  });
  EXPECT_THAT(journal->Righe({"smtp.BodyText"}), ElementsAre("smtp.BodyText Per Acme S.p.A. ***(Altro)***"));
}

TEST_F(Attivazione, WithoutTheParametersClassTheWindowOpensAllTheSame) {
  journal->Fallisce("Ambiente.CreaParametri", host::Errore(host::kOggettoNonCreabile));
  Apri([](HeadlessForm& finestra) { EXPECT_THAT(finestra.ApreMenu("CMD_LEGENDA"), IsEmpty()); });
  EXPECT_THAT(Mostrati(), ElementsAre("ObjMessaggi.MostraMsg Errore: Impossibile creare l'oggetto in "
                                      "LoadMailBodyParams|0||(assente)"));
  EXPECT_EQ(journal->Conta("KVL_RESIZEFORM1.Avvia"), 1U);
}

TEST_F(Attivazione, ABrokenTableOfFieldsKeepsTheEntriesBeforeTheBreak) {
  const Variant rotte[] = {Variant("testo"), Variant::Array{Campo("Nome", "#Nome"), Variant(3)},
                           Variant::Array{Campo("Nome", "#Nome"), Variant(Variant::Array{Variant("sola")})}};
  const std::size_t want[] = {0, 1, 1};
  for (std::size_t i = 0; i < 3; ++i) {
    ambiente->parametriCorpo = rotte[i];
    servizio->vCollMittenti.reset();
    Apri([&](HeadlessForm& finestra) { EXPECT_THAT(finestra.ApreMenu("CMD_LEGENDA"), SizeIs(want[i])); });
    EXPECT_THAT(Mostrati(), ElementsAre(HasSubstr(" in LoadMailBodyParams|0||(assente)")));
  }
}

// The receipt.

TEST_F(FormAttivato, OnOtherChannelsTheReceiptComesFromTheSettings) {
  servizio->SrvMailInstallato = kvOutlook;
  for (const bool voluta : {true, false}) {
    form = std::make_unique<FRMRW_OPZMAIL>(ambiente);
    form->Parent = servizio.get();
    servizio->ReadReceipt = voluta;
    servizio->vDisableNotifyRead = !voluta;
    Mostra([&](HeadlessForm& finestra) {
      EXPECT_EQ(finestra.Testo("CHK_RICEVUTA"), voluta ? "1" : "0");
      EXPECT_EQ(finestra.Attivo("CHK_RICEVUTA"), voluta);
    });
  }
}

TEST_F(FormAttivato, OnTheSmtpChannelsTheSettingsLeaveTheReceiptAlone) {
  servizio->ReadReceipt = true;
  servizio->vDisableNotifyRead = true;
  for (const auto canale : {kvSMTPMail, kvSMTPSSLMail}) {
    servizio->SrvMailInstallato = canale;
    form = std::make_unique<FRMRW_OPZMAIL>(ambiente);
    form->Parent = servizio.get();
    Mostra([](HeadlessForm& finestra) {
      EXPECT_EQ(finestra.Testo("CHK_RICEVUTA"), "0");
      EXPECT_TRUE(finestra.Attivo("CHK_RICEVUTA"));
    });
  }
}

struct CasoAccount {
  std::int16_t lettura;
  std::int16_t consegna;
  const char* wantRicevuta;
  bool wantVisibile;
  const char* wantConsegna;
};

TEST_F(Attivazione, TheChosenAccountDecidesOnTheReceipts) {
  const CasoAccount casi[] = {
      {1, 1, "1", true, "1"},
      {0, 0, "0", true, "0"},
      {2, 2, "0", true, "0"},
      {-1, -1, "1", false, "1"},
      {-2, -2, "0", false, "0"},
      {5, 5, "0", true, "0"},
      {-32768, -32768, "0", false, "0"},
      {32767, 32767, "0", true, "0"},
  };
  for (const auto& caso : casi) {
    Accounts({RigaAccount(12, "noi@azienda.example", caso.lettura, caso.consegna)});
    servizio->vCollMittenti.reset();
    servizio->vMittente.reset();
    Apri([&](HeadlessForm& finestra) {
      EXPECT_EQ(finestra.Testo("CHK_RICEVUTA"), caso.wantRicevuta) << caso.lettura;
      EXPECT_EQ(finestra.Vede("CHK_RICEVUTA"), caso.wantVisibile) << caso.lettura;
      EXPECT_EQ(finestra.Testo("CHK_CONSEGNA"), caso.wantConsegna) << caso.consegna;
      EXPECT_FALSE(finestra.Vede("CHK_CONSEGNA"));
      ASSERT_TRUE(servizio->vMittente);
      EXPECT_EQ(servizio->vMittente->Indirizzo(), "noi@azienda.example");
    });
  }
}

TEST_F(Attivazione, ChangingTheAccountShowsAndHidesTheReceiptBox) {
  Accounts({RigaAccount(12, "noi@azienda.example", -1), RigaAccount(7, "vendite@azienda.example", 1)});
  Apri([&](HeadlessForm& finestra) {
    EXPECT_THAT(finestra.Voci("CMB_ACCOUNT"),
                ElementsAre("noi@azienda.example - Mail", "vendite@azienda.example - Mail"));
    EXPECT_FALSE(finestra.Vede("CHK_RICEVUTA"));
    finestra.SceglieVoce("CMB_ACCOUNT", 1);
    EXPECT_TRUE(finestra.Vede("CHK_RICEVUTA"));
    EXPECT_EQ(finestra.Testo("CHK_RICEVUTA"), "1");
    EXPECT_EQ(servizio->vMittente->Indirizzo(), "vendite@azienda.example");
    finestra.SceglieVoce("CMB_ACCOUNT", 0);
    EXPECT_FALSE(finestra.Vede("CHK_RICEVUTA"));
    EXPECT_EQ(servizio->vMittente->Indirizzo(), "noi@azienda.example");
  });
}

TEST_F(FormAttivato, ANegativePositionDoesNothingAndAnUnknownAccountFails) {
  Mostra([&](HeadlessForm& finestra) {
    const auto combo = host::ControlloDi<host::KVL_COMBO>(form->Finestra(), "CMB_ACCOUNT");
    combo->AddItemData("noi - Mail", 12);
    combo->AddItemData("vendite - Mail", 7);
    EXPECT_EQ(fakes::NumeroDi([&] { combo->Text(99); }), 0);  // no such entry: position -1
    EXPECT_FALSE(servizio->vMittente);
    // The handler has no trap: what it raises comes out of the call, or of the person's action.
    EXPECT_EQ(fakes::NumeroDi([&] { combo->Text(std::int16_t{12}); }), 91);
    servizio->vCollMittenti = std::make_shared<CollMittenti>(ambiente);
    EXPECT_EQ(fakes::NumeroDi([&] { finestra.SceglieVoce("CMB_ACCOUNT", 1); }), 5);
    EXPECT_TRUE(finestra.Aperta());
    EXPECT_THAT(Mostrati(), IsEmpty());
  });
}

TEST_F(FormAttivato, FailuresOfTheBodyBoxesReachTheHost) {
  ambiente->parametriCorpo = Variant::Array{Campo("Nome", "#Nome")};
  Mostra([&](HeadlessForm& finestra) {
    journal->Fallisce("TXT_CORPO.", {1001, "Controllo", "guasto"});
    EXPECT_EQ(fakes::NumeroDi([&] { finestra.Sceglie("CMD_LEGENDA", "#Nome"); }), 1001);
    const auto casella = host::ControlloDi<host::KVL_CHECKBOX>(form->Finestra(), "CHK_CORPO");
    EXPECT_EQ(fakes::NumeroDi([&] { casella->Text("1"); }), 1001);
    EXPECT_THAT(Mostrati(), IsEmpty());
  });
}

// The end.

TEST_F(FormAttivato, ClosingLetsEverythingGoInItsOrder) {
  File("C:\\f.pdf");
  auto interfaccia = fakes::CreaFakeInterfaccia(*ambiente);
  auto rubrica = std::make_shared<fakes::FakeRubrica>(journal);
  form->ActiveInterface = interfaccia;
  form->ManagerRubrica = rubrica;
  form->objOutlook = ambiente->CreaMAPIMessages();
  form->objOutlook_00 = ambiente->CreaOutlook();
  form->AggiungiAllegato("C:\\f.pdf", "f.pdf");
  Mostra([&](HeadlessForm& /*finestra*/) { journal->Svuota(); });
  EXPECT_THAT(journal->Righe(),
              ElementsAre("FRMRW_OPZMAIL chiude", "GRID_ALLEGATI.DataSource (assente)", "FileAllegati.Clear",
                          "RstAllegati.Close", HasSubstr("|TER|ORVE_MAILSERVER|CollDestinatari"),
                          "FRMRW_OPZMAIL chiusa"));
  EXPECT_EQ(interfaccia.use_count(), 1);
  EXPECT_EQ(rubrica.use_count(), 1);
  EXPECT_EQ(form->Parent, nullptr);
  EXPECT_FALSE(Dentro().ObjMessaggiForm);
  EXPECT_TRUE(form->objOutlook);  // these two stay
  EXPECT_TRUE(form->objOutlook_00);
}

// An object that writes a line into the journal when its last reference is released.
template <class Tipo>
std::shared_ptr<Tipo> Annunciato(const fakes::JournalPtr& journal, const std::shared_ptr<Tipo>& oggetto,
                                 const std::string& nome) {
  return {oggetto.get(), [journal, oggetto, nome](Tipo*) { journal->Add(nome + " lasciato"); }};
}

TEST_F(FormAttivato, ClosingLetsGoOfOneObjectAfterTheOther) {
  std::vector<bool> conServizio;
  journal->Quando("ActiveInterface lasciato", [&] { conServizio.push_back(form->Parent != nullptr); });
  Mostra([&](HeadlessForm& /*finestra*/) {
    form->ActiveInterface =
        Annunciato(journal, std::shared_ptr<host::InterfacciaHost>(fakes::CreaFakeInterfaccia(*ambiente)),
                   "ActiveInterface");
    form->ManagerRubrica = Annunciato(
        journal, std::shared_ptr<host::ManagerRubrica>(std::make_shared<fakes::FakeRubrica>(journal)),
        "ManagerRubrica");
    Dentro().ObjMessaggiForm = Annunciato(journal, ambiente->CreaMessaggi(), "ObjMessaggiForm");
    journal->Svuota();
    journal->Quando("debug ", [&] { conServizio.push_back(form->Parent != nullptr); });
  });
  journal->DimenticaPiani();
  EXPECT_THAT(journal->Righe(),
              ElementsAre("FRMRW_OPZMAIL chiude", "GRID_ALLEGATI.DataSource (assente)",
                          "ActiveInterface lasciato", HasSubstr("|TER|ORVE_MAILSERVER|CollDestinatari"),
                          "ManagerRubrica lasciato", "ObjMessaggiForm lasciato", "FRMRW_OPZMAIL chiusa"));
  EXPECT_THAT(conServizio, ElementsAre(true, false));  // the service goes between the first two
}

TEST_F(FormAttivato, EachStepOfTheClosingIsTriedWhateverTheOneBeforeDid) {
  File("C:\\f.pdf");
  form->AggiungiAllegato("C:\\f.pdf", "f.pdf");
  form->ManagerRubrica = std::make_shared<fakes::FakeRubrica>(journal);
  Mostra([&](HeadlessForm& /*finestra*/) {
    journal->Fallisce("GRID_ALLEGATI.DataSource");
    journal->Fallisce("FileAllegati.Clear");
    journal->Fallisce("RstAllegati.Close");
  });
  EXPECT_FALSE(form->ManagerRubrica);
  EXPECT_EQ(form->Parent, nullptr);
  EXPECT_FALSE(Dentro().FileAllegati);
  EXPECT_FALSE(Dentro().RstAllegati);
}

TEST_F(FormAttivato, ARecordSetThatIsClosedAlreadyIsNotClosedAgain) {
  File("C:\\f.pdf");
  form->AggiungiAllegato("C:\\f.pdf", "f.pdf");
  Mostra([&](HeadlessForm& /*finestra*/) {
    Dentro().RstAllegati->Close();
    journal->Svuota();
  });
  EXPECT_EQ(journal->Conta("RstAllegati.Close"), 0U);
  EXPECT_FALSE(Dentro().RstAllegati);
}

TEST_F(FormAttivato, AWindowWithoutAttachmentsClosesTooAndAClosedOneClosesOnce) {
  Mostra([&](HeadlessForm& finestra) {
    finestra.ChiudeFinestra();
    finestra.ChiudeFinestra();
    form->Finestra().Chiudi();
  });
  EXPECT_EQ(journal->Conta("GRID_ALLEGATI.DataSource (assente)"), 1U);
}

TEST_F(FormAttivato, AWindowThatOutlivesItsFormRunsIntoNothing) {
  // The toolkit keeps the controls of a window that the form has built.
  const auto pulsante = host::ControlloDi<host::KVL_TBARMENU>(form->Finestra(), "cmd_Invia");
  const auto casella = host::ControlloDi<host::KVL_CHECKBOX>(form->Finestra(), "CHK_CORPO");
  const auto annulla = host::ControlloDi<host::KVL_TBARMENU>(form->Finestra(), "cmd_Annulla");
  form.reset();
  host::Solleva(pulsante->ButtonClick);
  host::Solleva(annulla->ButtonClick);
  casella->Text("0");
  EXPECT_FALSE(Consegnato());
}

TEST_F(FormAttivato, TheInstanceIsTracedAtCreationAndDestruction) {
  form.reset();
  journal->Svuota();
  { const FRMRW_OPZMAIL breve(ambiente); }
  const auto tracce = journal->Righe({"debug "});
  ASSERT_THAT(tracce, SizeIs(2));
  EXPECT_THAT(tracce[0], HasSubstr("|INI|ORVE_MAILSERVER|FRMRW_OPZMAIL"));
  EXPECT_THAT(tracce[1], HasSubstr("|TER|ORVE_MAILSERVER|FRMRW_OPZMAIL"));
}

}  // namespace
}  // namespace orve
