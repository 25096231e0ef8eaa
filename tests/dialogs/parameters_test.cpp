// The parameters window, and how the service reads its answers.
#include <functional>
#include <string>
#include <vector>

#include "channels/channel_traits.h"
#include "dialogs/FRMFW_MAILPARAMS.h"
#include "dialogs/finestra_di_prova.h"
#include "fakes/errori.h"

namespace orve {
namespace {

using fakes::HeadlessForm;
using fakes::RigaAccount;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class Parametri : public fakes::FinestraDiProva {
 protected:
  Parametri() { File("C:\\doc\\a.pdf"); }
  void ApriParametri(const fakes::Persona& persona) {
    ConPersona(persona, [this] { servizio->ReturnMailParameters(); });
  }
  /// The same, and the person confirms.
  void Conferma(const fakes::Persona& persona) {
    ApriParametri([&](HeadlessForm& finestra) {
      if (persona) persona(finestra);
      finestra.Preme("CMD_OK");
      EXPECT_FALSE(finestra.Aperta());
    });
  }
  /// The person presses a button in a form of the test's own.
  void Preme(FRMFW_MAILPARAMS& form, const char* pulsante) {
    dynamic_cast<HeadlessForm&>(form.Finestra()).Preme(pulsante);
  }
  void Risposte(float tipo, bool lettura, bool consegna, const std::string& allegato,
                const std::string& corpo, bool validi) const {
    EXPECT_EQ(servizio->MailParamTipo(), tipo);
    EXPECT_EQ(servizio->MailParamReadRcpt(), lettura);
    EXPECT_EQ(servizio->MailParamDeliveryStatus(), consegna);
    EXPECT_EQ(servizio->MailParamAllegatoUnico(), allegato);
    EXPECT_EQ(servizio->MailParamCorpoUnico(), corpo);
    EXPECT_EQ(servizio->MailParamIsValoriValidi(), validi);
  }
};

// Opening.

TEST_F(Parametri, OnASmtpChannelEverythingIsOfferedInOrder) {
  servizio->MailParamCorpoUnico("Corpo");
  ApriParametri([](HeadlessForm& finestra) {
    EXPECT_EQ(finestra.Titolo(), "Personalizzazione unica invio mail");
    EXPECT_THAT(finestra.Voci("CMB_TIPO"), ElementsAre("Mail", "Pec"));
    EXPECT_EQ(finestra.Testo("CMB_TIPO"), "0");
    EXPECT_THAT(finestra.Voci("CMB_ACCOUNT"), ElementsAre("noi@azienda.example - Mail"));
    EXPECT_EQ(finestra.Testo("TXT_CORPO"), "Corpo");
    EXPECT_EQ(finestra.Altezza(), 5025);
  });
  auto passi =
      journal->Righe({"Ambiente.", "FRMFW_MAILPARAMS", "CMB_TIPO", "CMB_ACCOUNT", "CHK_", "KVL_", "TXT_"});
  EXPECT_THAT(
      passi,
      ElementsAre(
          "Ambiente.CreaForm FRMFW_MAILPARAMS", "FRMFW_MAILPARAMS.Show 1|(assente)", "Ambiente.CreaMessaggi",
          "KVL_LABEL1.Visible true", "KVL_LABEL2.Visible true", "CMB_TIPO.Visible true",
          "CMB_ACCOUNT.Visible true", "CHK_READ.Visible true", "CHK_DELIVERY.Visible true",
          "CMB_TIPO.AddItemData Mail|0", "CMB_TIPO.AddItemData Pec|1", "CMB_TIPO.SelezionaPosizione 0",
          "CMB_ACCOUNT.EraseCombo", "CMB_ACCOUNT.EraseCombo", "CMB_ACCOUNT.AutoOpen false",
          "Ambiente.CreaCifratorePassword", "CMB_ACCOUNT.AddItemData noi@azienda.example - Mail|12",
          "CMB_ACCOUNT.Text 12", "TXT_CORPO.Text Corpo", "FRMFW_MAILPARAMS attiva", "KVL_RESIZEFORM1.Avvia",
          "KVL_RESIZEFORM1.RegistraControllo FRM_PARAM|15", "KVL_RESIZEFORM1.RegistraControllo CMD_OK|12",
          "KVL_RESIZEFORM1.RegistraControllo CMD_ANNULLA|12", "FRMFW_MAILPARAMS chiude",
          "FRMFW_MAILPARAMS chiusa"));
}

TEST_F(Parametri, TheReceiptsAreOfferedWhereTheChannelCanAskForThem) {
  for (const ChannelTraits& canale : Canali()) {
    servizio->SrvMailInstallato = canale.numero;
    ApriParametri([&canale](HeadlessForm& finestra) {
      EXPECT_EQ(finestra.Vede("CHK_READ"), canale.haAccount) << canale.nome;
      EXPECT_EQ(finestra.Vede("CHK_DELIVERY"), canale.ricevutaDiConsegna) << canale.nome;
    });
  }
}

TEST_F(Parametri, OnOtherChannelsOnlyAttachmentAndBodyAreOfferedAndTheGapIsClosed) {
  for (const std::int32_t canale : {0, 1, 2}) {
    SuCanale(canale);
    ApriParametri([](HeadlessForm& finestra) {
      for (const char* nascosto :
           {"KVL_LABEL1", "KVL_LABEL2", "CMB_TIPO", "CMB_ACCOUNT", "CHK_READ", "CHK_DELIVERY"}) {
        EXPECT_FALSE(finestra.Vede(nascosto)) << nascosto;
      }
      EXPECT_EQ(finestra.Posizione("TXT_CORPO").top, 960);
      EXPECT_EQ(finestra.Posizione("KVL_ALLEGA").top, 240);
      EXPECT_EQ(finestra.Posizione("TXT_ALLEGATO").top, 240);
      EXPECT_EQ(finestra.Posizione("KVL_LABEL3").top, 600);
      EXPECT_EQ(finestra.Posizione("FRM_PARAM").height, 4215);
      EXPECT_EQ(finestra.Posizione("CMD_OK").top, 4245);
      EXPECT_EQ(finestra.Posizione("CMD_ANNULLA").top, 4245);
      EXPECT_EQ(finestra.Altezza(), 4710);
    });
    EXPECT_THAT(connessione->Statements(), IsEmpty());
  }
}

TEST_F(Parametri, TheCaptionGoesThroughTheHost) {
  ambiente->titoloHost = " - Azienda";
  servizio->ActiveInterface = fakes::CreaFakeInterfaccia(*ambiente);
  ApriParametri([](HeadlessForm& finestra) {
    EXPECT_EQ(finestra.Titolo(), "Personalizzazione unica invio mail - Azienda");
  });
  EXPECT_EQ(journal->Conta("Host.Messaggi.TitoloFinestra Personalizzazione unica invio mail"), 1U);
}

TEST_F(Parametri, AFailureOfTheActivationIsReported) {
  journal->Fallisce("KVL_RESIZEFORM1.Avvia", {1001, "Controllo", "guasto"});
  ApriParametri([](HeadlessForm& finestra) { EXPECT_TRUE(finestra.Aperta()); });
  EXPECT_THAT(Mostrati(),
              ElementsAre("ObjMessaggi.MostraMsg guasto Form_Activate|0|Personalizzazione unica invio "
                          "mail|(assente)"));
}

// Unlike the compose window's, this start is repeated each time, and what became the caption goes in again.
TEST_F(Parametri, EachActivationStartsTheProportionsAndAsksForTheCaptionAgain) {
  ambiente->titoloHost = " *";
  servizio->ActiveInterface = fakes::CreaFakeInterfaccia(*ambiente);
  ApriParametri([&](HeadlessForm& finestra) {
    journal->Svuota();
    finestra.Riattiva();
    EXPECT_THAT(journal->Righe({"Ambiente.", "KVL_", "CMB_", "Host.Messaggi", "FRMFW_MAILPARAMS.Caption"}),
                ElementsAre("KVL_RESIZEFORM1.Avvia", "KVL_RESIZEFORM1.RegistraControllo FRM_PARAM|15",
                            "KVL_RESIZEFORM1.RegistraControllo CMD_OK|12",
                            "KVL_RESIZEFORM1.RegistraControllo CMD_ANNULLA|12",
                            "Host.Messaggi.TitoloFinestra Personalizzazione unica invio mail *",
                            "FRMFW_MAILPARAMS.Caption Personalizzazione unica invio mail * *"));
  });
}

TEST_F(Parametri, TheInstanceIsTracedAtCreationAndDestruction) {
  ApriParametri(nullptr);
  std::vector<std::string> forme;
  for (const auto& riga : journal->Righe({"debug "})) {
    if (riga.find("FRMFW_MAILPARAMS") != std::string::npos) forme.push_back(riga);
  }
  ASSERT_EQ(forme.size(), 2U);
  EXPECT_THAT(forme[0], HasSubstr("|INI|ORVE_MAILSERVER|FRMFW_MAILPARAMS"));
  EXPECT_THAT(forme[1], HasSubstr("|TER|ORVE_MAILSERVER|FRMFW_MAILPARAMS"));
}

// Kind and account.

TEST_F(Parametri, SelectingAKindReloadsTheAccountsAndChangesTheServiceAtOnce) {
  connessione->Risponde("FW23_INDTIPO = 2",
                        {RigaAccount(30, "pec@azienda.example"), RigaAccount(31, "b@azienda.example")});
  ApriParametri([&](HeadlessForm& finestra) {
    EXPECT_FALSE(servizio->IsPec());
    const auto prima = servizio->vCollMittenti;
    finestra.SceglieVoce("CMB_TIPO", 1);
    EXPECT_TRUE(servizio->IsPec());
    EXPECT_NE(servizio->vCollMittenti, prima);
    EXPECT_THAT(finestra.Voci("CMB_ACCOUNT"),
                ElementsAre("pec@azienda.example - Pec", "b@azienda.example - Pec"));
    EXPECT_EQ(servizio->vMittente->Indirizzo(), "pec@azienda.example");
    finestra.Preme("CMD_ANNULLA");
  });
  EXPECT_TRUE(servizio->IsPec());  // even though the person cancelled
  EXPECT_EQ(servizio->vCollMittenti->Count(), 2);
  Risposte(0, false, false, "", "", false);
}

TEST_F(Parametri, TheOpeningSetsTheServiceBackToOrdinaryMail) {
  servizio->IsPec(true);
  ApriParametri(nullptr);
  EXPECT_FALSE(servizio->IsPec());
}

TEST_F(Parametri, SelectingAnAccountMakesItTheServicesOne) {
  Accounts({RigaAccount(12, "noi@azienda.example"), RigaAccount(7, "vendite@azienda.example")});
  Conferma([&](HeadlessForm& finestra) {
    EXPECT_EQ(servizio->vMittente->Indirizzo(), "noi@azienda.example");
    finestra.SceglieVoce("CMB_ACCOUNT", 1);
    EXPECT_EQ(servizio->vMittente->Indirizzo(), "vendite@azienda.example");
  });
  EXPECT_EQ(servizio->MailParamAccount()->Indirizzo(), "vendite@azienda.example");
}

TEST_F(Parametri, WithoutAnAccountThePersonIsToldAndTheWindowOpensAllTheSame) {
  Accounts({});
  Conferma([&](HeadlessForm& finestra) {
    EXPECT_THAT(Mostrati(),
                ElementsAre("ObjMessaggi.MostraMsg Non è disponibile alcun account mail|0||(assente)"));
    EXPECT_THAT(finestra.Voci("CMB_ACCOUNT"), IsEmpty());
    finestra.Spunta("CHK_READ", true);
    finestra.Spunta("CHK_DELIVERY", true);
  });
  // Without an account neither receipt request is stored, and the account read is a new empty one.
  Risposte(0, false, false, "", "", true);
  EXPECT_EQ(servizio->MailParamAccount()->Indirizzo(), "");
}

TEST_F(Parametri, ANegativePositionDoesNothing) {
  ApriParametri([&](HeadlessForm& finestra) {
    const auto mittente = servizio->vMittente;
    const auto mittenti = servizio->vCollMittenti;
    static_cast<void>(finestra);
    journal->Svuota();
    host::ControlloDi<host::KVL_COMBO>(finestra, "CMB_ACCOUNT")->Text(99);
    host::ControlloDi<host::KVL_COMBO>(finestra, "CMB_TIPO")->Text(99);
    EXPECT_EQ(servizio->vMittente, mittente);
    EXPECT_EQ(servizio->vCollMittenti, mittenti);
    EXPECT_THAT(journal->Righe({"ConnectionADO"}), IsEmpty());
  });
}

TEST_F(Parametri, AKindThatIsNoneLeavesTheServicesKind) {
  ApriParametri([&](HeadlessForm& finestra) {
    const auto tipo = host::ControlloDi<host::KVL_COMBO>(finestra, "CMB_TIPO");
    tipo->AddItemData("Altro", 5);
    servizio->IsPec(true);
    finestra.SceglieVoce("CMB_TIPO", 2);
    EXPECT_TRUE(servizio->IsPec());
    EXPECT_THAT(finestra.Voci("CMB_ACCOUNT"), Not(IsEmpty()));  // loaded all the same
  });
}

// Confirming.

TEST_F(Parametri, TheAnswersAreCopiedAndTheChoiceGoesIntoTheAccountItself) {
  connessione->Risponde("FW23_INDTIPO = 2", {RigaAccount(30, "pec@azienda.example")});
  servizio->MailParamCorpoUnico("Offerto");
  Conferma([](HeadlessForm& finestra) {
    finestra.SceglieVoce("CMB_TIPO", 1);
    finestra.Spunta("CHK_READ", true);
    finestra.Digita("TXT_ALLEGATO", "C:\\doc\\a.pdf");
    finestra.Riscrive("TXT_CORPO", "Cambiato");
  });
  Risposte(1, true, false, "C:\\doc\\a.pdf", "Cambiato", true);
  EXPECT_EQ(servizio->MailParamAccount(), servizio->vMittente);
  EXPECT_EQ(servizio->vMittente->ReadRcpt(), 1);
  EXPECT_EQ(servizio->vMittente->DeliveryStatus(), 0);
}

TEST_F(Parametri, TheOkGoesStepByStep) {
  Accounts({RigaAccount(12, "noi@azienda.example", 1)});
  Conferma([&](HeadlessForm& finestra) {
    finestra.Spunta("CHK_DELIVERY", true);
    finestra.Digita("TXT_ALLEGATO", "  C:\\doc\\a.pdf ");
    journal->Svuota();
  });
  EXPECT_THAT(journal->Righe({"legge CMB_TIPO", "legge CHK_", "legge TXT_", "Ambiente.CreaOggettoFile",
                              "File.", "FRMFW_MAILPARAMS.Chiudi"}),
              ElementsAre("legge CMB_TIPO.Text", "legge CHK_READ.Text", "legge CHK_DELIVERY.Text",
                          "legge CHK_DELIVERY.Text", "legge CHK_READ.Text", "legge TXT_ALLEGATO.Text",
                          "Ambiente.CreaOggettoFile", "File.ApriPercorso C:\\doc|a.pdf||0",
                          "File.Posizione C:\\doc\\a.pdf", "File.Esiste C:\\doc\\a.pdf",
                          "File.Percorso C:\\doc\\a.pdf", "File.Chiudi C:\\doc\\a.pdf",
                          "legge TXT_CORPO.Text", "FRMFW_MAILPARAMS.Chiudi"));
  Risposte(0, false, true, "C:\\doc\\a.pdf", "", true);
  EXPECT_EQ(servizio->vMittente->ReadRcpt(), 0);
  EXPECT_EQ(servizio->vMittente->DeliveryStatus(), 1);
}

TEST_F(Parametri, AnUnchangedBodyComesBackEmpty) {
  for (const char* corpo : {"", "Offerto", "due\r\nrighe"}) {
    servizio->MailParamCorpoUnico(corpo);
    Conferma(nullptr);
    EXPECT_EQ(servizio->MailParamCorpoUnico(), "") << corpo;
  }
}

TEST_F(Parametri, ABodyThatWasEmptiedComesBackEmptyToo) {
  servizio->MailParamCorpoUnico("Offerto");
  Conferma([](HeadlessForm& finestra) { finestra.Riscrive("TXT_CORPO", ""); });
  Risposte(0, false, false, "", "", true);
}

TEST_F(Parametri, OnOtherChannelsTheKindStaysMailAndThereIsNoAccount) {
  SuCanale(1);
  servizio->MailParamAccount(std::make_shared<Mittente>(ambiente));
  servizio->MailParamAccount()->Indirizzo("vecchio@azienda.example");
  Conferma([](HeadlessForm& finestra) { finestra.Riscrive("TXT_CORPO", "Nuovo"); });
  Risposte(0, false, false, "", "Nuovo", true);
  EXPECT_EQ(servizio->MailParamAccount()->Indirizzo(), "");  // no object held: a new empty one
}

TEST_F(Parametri, OnOtherChannelsTheHiddenBoxesAreStillReadWhenThereIsAnAccount) {
  SuCanale(2);
  servizio->vMittente = std::make_shared<Mittente>(ambiente);
  servizio->vMittente->Indirizzo("noi@azienda.example");
  servizio->vMittente->ReadRcpt(-1);
  ApriParametri([&](HeadlessForm& finestra) {
    host::ControlloDi<host::KVL_CHECKBOX>(finestra, "CHK_READ")->Text("1");
    finestra.Preme("CMD_OK");
  });
  EXPECT_TRUE(servizio->MailParamReadRcpt());
  EXPECT_EQ(servizio->vMittente->ReadRcpt(), 1);
  EXPECT_EQ(servizio->MailParamAccount()->Indirizzo(), "");  // the account itself is not an answer here
}

// The attachment.

TEST_F(Parametri, AChosenFileGoesIntoTheBox) {
  ambiente->fileScelto = "C:\\doc\\a.pdf";
  Conferma([&](HeadlessForm& finestra) {
    journal->Svuota();
    finestra.Preme("KVL_ALLEGA");
    EXPECT_EQ(finestra.Testo("TXT_ALLEGATO"), "C:\\doc\\a.pdf");
    EXPECT_THAT(
        journal->Righe({"SelettoreFile", "File."}),
        ElementsAre("SelettoreFile.Titolo Allega file", "SelettoreFile.Mostra 0", "SelettoreFile.FileScelto",
                    "File.Esiste C:\\doc\\a.pdf", "File.Percorso C:\\doc\\a.pdf",
                    "File.Chiudi C:\\doc\\a.pdf", "SelettoreFile.Chiudi"));
  });
  EXPECT_EQ(servizio->MailParamAllegatoUnico(), "C:\\doc\\a.pdf");
}

TEST_F(Parametri, ACancelledChoiceOnlyClosesTheSelector) {
  ApriParametri([&](HeadlessForm& finestra) {
    journal->Svuota();
    finestra.Preme("KVL_ALLEGA");
    EXPECT_THAT(journal->Righe(),
                ElementsAre("Ambiente.CreaSelettoreFile", "SelettoreFile.Titolo Allega file",
                            "SelettoreFile.Mostra 0", "SelettoreFile.Chiudi"));
  });
}

TEST_F(Parametri, AChosenFileThatCannotBeReachedIsRefusedWithAWarning) {
  ambiente->fileScelto = "C:\\manca.pdf";
  ApriParametri([&](HeadlessForm& finestra) {
    finestra.Preme("KVL_ALLEGA");
    EXPECT_EQ(finestra.Testo("TXT_ALLEGATO"), "");
  });
  EXPECT_THAT(Mostrati(), ElementsAre("ObjMessaggi.MostraMsg Il file selezionato è inesistente o non "
                                      "raggiungibile.|48|Personalizzazione unica invio mail|(assente)"));
  EXPECT_THAT(journal->Righe({"File.Chiudi", "SelettoreFile.Chiudi"}),
              ElementsAre("File.Chiudi C:\\manca.pdf", "SelettoreFile.Chiudi"));
}

TEST_F(Parametri, AFailureWhileChoosingIsReported) {
  journal->Fallisce("SelettoreFile.Mostra", {1001, "Selettore", "guasto"});
  ApriParametri([](HeadlessForm& finestra) { finestra.Preme("KVL_ALLEGA"); });
  EXPECT_THAT(Mostrati(),
              ElementsAre("ObjMessaggi.MostraMsg guasto KVL_ALLEGA_ButtonClick|0|Personalizzazione unica "
                          "invio mail|(assente)"));
}

TEST_F(Parametri, AFileThatMustBeCopiedFirstComesBackAsItsCopy) {
  ambiente->posizioni["C:\\doc\\a.pdf"] = 1;
  Conferma([&](HeadlessForm& finestra) {
    finestra.Digita("TXT_ALLEGATO", "C:\\doc\\a.pdf");
    journal->Svuota();
  });
  EXPECT_THAT(journal->Righe({"File."}),
              ElementsAre("File.ApriPercorso C:\\doc|a.pdf||0", "File.Posizione C:\\doc\\a.pdf",
                          "File.Esiste C:\\doc\\a.pdf", "File.Nome C:\\doc\\a.pdf", "File.Crea 8|a.pdf||0",
                          "File.CopiaIn C:\\doc\\a.pdf|C:\\Temp\\Copie\\a.pdf|0",
                          "File.Percorso C:\\Temp\\Copie\\a.pdf", "File.Chiudi C:\\Temp\\Copie\\a.pdf",
                          "File.Chiudi C:\\doc\\a.pdf"));
  EXPECT_EQ(servizio->MailParamAllegatoUnico(), "C:\\Temp\\Copie\\a.pdf");
}

TEST_F(Parametri, AHandTypedPathIsLookedAtOnlyAtOkAndABadOneKeepsTheWindowOpen) {
  ApriParametri([&](HeadlessForm& finestra) {
    journal->Svuota();
    finestra.Digita("TXT_ALLEGATO", "C:\\doc\\manca.pdf");
    finestra.Spunta("CHK_READ", true);
    EXPECT_THAT(journal->Righe(), IsEmpty());
    finestra.Preme("CMD_OK");
    EXPECT_TRUE(finestra.Aperta());
    EXPECT_THAT(journal->Righe({"File.", "ObjMessaggi"}),
                ElementsAre("File.ApriPercorso C:\\doc|manca.pdf||0", "File.Posizione C:\\doc\\manca.pdf",
                            "File.Esiste C:\\doc\\manca.pdf", "File.Chiudi C:\\doc\\manca.pdf",
                            "ObjMessaggi.MostraMsg Percorso allegato non valido.|48|Avviso|(assente)"));
    // The receipt requests are already stored, and a second confirmation stores them again.
    EXPECT_EQ(servizio->vMittente->ReadRcpt(), 1);
    finestra.Spunta("CHK_READ", false);
    finestra.Riscrive("TXT_ALLEGATO", "");
    finestra.Preme("CMD_OK");
    EXPECT_FALSE(finestra.Aperta());
  });
  EXPECT_EQ(servizio->vMittente->ReadRcpt(), 0);
  Risposte(0, false, false, "", "", true);
}

TEST_F(Parametri, ClosingAfterABadPathKeepsWhatWasStoredAndIsNoConfirmation) {
  connessione->Risponde("FW23_INDTIPO = 2", {RigaAccount(30, "pec@azienda.example")});
  ApriParametri([&](HeadlessForm& finestra) {
    finestra.SceglieVoce("CMB_TIPO", 1);
    finestra.Spunta("CHK_READ", true);
    finestra.Digita("TXT_ALLEGATO", "C:\\doc\\manca.pdf");
    finestra.Preme("CMD_OK");
    finestra.ChiudeFinestra();
  });
  Risposte(1, true, false, "", "", false);
}

TEST_F(Parametri, APathWithoutABackslashFailsAtTheSplitAndTheErrorLeavesTheHandler) {
  ApriParametri([&](HeadlessForm& finestra) {
    finestra.Digita("TXT_ALLEGATO", "a.pdf");
    EXPECT_EQ(fakes::NumeroDi([&] { finestra.Preme("CMD_OK"); }), 5);
    EXPECT_TRUE(finestra.Aperta());
  });
  EXPECT_THAT(Mostrati(), IsEmpty());
  EXPECT_FALSE(servizio->MailParamIsValoriValidi());
}

TEST_F(Parametri, BlanksAreNoPathAndEmptyTheAttachment) {
  Conferma([](HeadlessForm& finestra) { finestra.Digita("TXT_ALLEGATO", "   "); });
  EXPECT_EQ(servizio->MailParamAllegatoUnico(), "");
}

TEST_F(Parametri, WithoutAPathAnEarlierAttachmentIsTakenBack) {
  SuCanale(2);
  FRMFW_MAILPARAMS form(ambiente);
  form.Parent = servizio.get();
  form.AllegatoUnico("C:\\doc\\vecchio.pdf");
  Preme(form, "CMD_OK");
  EXPECT_EQ(form.AllegatoUnico(), "");
  EXPECT_TRUE(form.IsValoriValidi);
}

// Cancelling.

TEST_F(Parametri, CancellingKeepsTheAccountPickedSoFarAndTouchesNothingElse) {
  Accounts({RigaAccount(12, "noi@azienda.example"), RigaAccount(7, "vendite@azienda.example")});
  servizio->MailParamCorpoUnico("Offerto");
  servizio->MailParamIsValoriValidi(true);
  ApriParametri([](HeadlessForm& finestra) {
    finestra.SceglieVoce("CMB_ACCOUNT", 1);
    finestra.Spunta("CHK_READ", true);
    finestra.Digita("TXT_ALLEGATO", "C:\\doc\\a.pdf");
    finestra.Riscrive("TXT_CORPO", "Cambiato");
    finestra.Preme("CMD_ANNULLA");
    EXPECT_FALSE(finestra.Aperta());
  });
  EXPECT_EQ(servizio->MailParamAccount()->Indirizzo(), "vendite@azienda.example");
  EXPECT_EQ(servizio->vMittente->ReadRcpt(), 0);
  Risposte(0, false, false, "", "Offerto", false);  // the body as it was offered
}

TEST_F(Parametri, CancellingTakesAnEarlierConfirmationBack) {
  FRMFW_MAILPARAMS form(ambiente);
  form.Parent = servizio.get();
  form.IsValoriValidi = true;
  Preme(form, "CMD_ANNULLA");
  EXPECT_FALSE(form.IsValoriValidi);
}

TEST_F(Parametri, ClosingTheWindowPicksNoAccount) {
  ApriParametri([](HeadlessForm& finestra) { finestra.ChiudeFinestra(); });
  EXPECT_EQ(servizio->MailParamAccount()->Indirizzo(), "");
  EXPECT_FALSE(servizio->MailParamIsValoriValidi());
}

TEST_F(Parametri, TheAnswersAreCopiedOnceTheWindowHasClosed) {
  servizio->MailParamCorpoUnico("Offerto");
  std::vector<std::string> visti;
  const auto guarda = [&] { visti.push_back(servizio->MailParamCorpoUnico()); };
  journal->Quando("FRMFW_MAILPARAMS chiusa", guarda);
  journal->Quando("debug ", [&] {
    if (journal->Righe().back().find("|TER|ORVE_MAILSERVER|FRMFW_MAILPARAMS") != std::string::npos) guarda();
  });
  Conferma([](HeadlessForm& finestra) { finestra.Riscrive("TXT_CORPO", "Nuovo"); });
  EXPECT_THAT(visti, ElementsAre("Offerto", "Nuovo"));
}

// Failures.

TEST_F(Parametri, AnErrorOfTheOpeningEndsInSilenceAndKeepsTheOldAnswers) {
  const char* guasti[] = {"Ambiente.CreaForm", "FRMFW_MAILPARAMS.Show", "KVL_LABEL1.Visible",
                          "CMB_TIPO.AddItemData", "TXT_CORPO.Text"};
  for (const char* guasto : guasti) {
    servizio->MailParamCorpoUnico("Offerto");
    servizio->MailParamAllegatoUnico("C:\\vecchio.pdf");
    servizio->MailParamIsValoriValidi(true);
    journal->DimenticaPiani();
    journal->Fallisce(guasto);
    journal->Svuota();
    servizio->ReturnMailParameters();
    EXPECT_THAT(journal->Righe({"ObjMessaggi", "TextStream"}), IsEmpty()) << guasto;
    EXPECT_THAT(journal->Righe({"debug "}).back(), HasSubstr("|TER|ORVE_MAILSERVER|FRMFW_MAILPARAMS"))
        << guasto;
    Risposte(0, false, false, "C:\\vecchio.pdf", "Offerto", true);
  }
}

// The handlers of both closing buttons and of the two lists have no trap: their errors reach the toolkit.
TEST_F(Parametri, WhatTheUntrappedHandlersRaiseLeavesThem) {
  Accounts({RigaAccount(12, "noi@azienda.example"), RigaAccount(7, "vendite@azienda.example")});
  ApriParametri([&](HeadlessForm& finestra) {
    const auto prova = [&](const char* riga, const std::function<void()>& azione) {
      journal->DimenticaPiani();
      journal->Fallisce(riga);
      EXPECT_EQ(fakes::NumeroDi(azione), 1001) << riga;
      EXPECT_TRUE(finestra.Aperta()) << riga;
    };
    prova("legge CMB_ACCOUNT.ItemKey", [&] { finestra.SceglieVoce("CMB_ACCOUNT", 1); });
    prova("CMB_ACCOUNT.EraseCombo", [&] { finestra.SceglieVoce("CMB_TIPO", 1); });
    prova("legge CHK_READ.Text", [&] { finestra.Preme("CMD_OK"); });
    prova("FRMFW_MAILPARAMS.Chiudi", [&] { finestra.Preme("CMD_ANNULLA"); });
    journal->DimenticaPiani();
  });
  EXPECT_THAT(Mostrati(), IsEmpty());
}

TEST_F(Parametri, ClosingLetsGoOfTheInterface) {
  const auto interfaccia = fakes::CreaFakeInterfaccia(*ambiente);
  servizio->ActiveInterface = interfaccia;
  long aperta = 0;
  long chiusa = 0;
  journal->Quando("FRMFW_MAILPARAMS chiusa", [&] { chiusa = interfaccia.use_count(); });
  ApriParametri([&](HeadlessForm& /*finestra*/) { aperta = interfaccia.use_count(); });
  EXPECT_EQ(aperta, 3);  // this test's, the service's and the form's
  EXPECT_EQ(chiusa, 2);
}

TEST_F(Parametri, ClosingLetsGoOfTheMessages) {
  FRMFW_MAILPARAMS form(ambiente);
  form.Parent = servizio.get();
  form.Finestra().Show(host::Form::kModale, nullptr);
  journal->Fallisce("KVL_RESIZEFORM1.Avvia");
  EXPECT_EQ(fakes::NumeroDi([&] { host::Solleva(form.Finestra().Activate); }), 91);
}

TEST_F(Parametri, TheFormGivesAnAccountOfItsOwnWhenNoneIsHeld) {
  FRMFW_MAILPARAMS form(ambiente);
  const auto primo = form.IdAccount();
  ASSERT_TRUE(primo);
  EXPECT_EQ(form.IdAccount(), primo);
}

TEST_F(Parametri, TheSettersOfTheFormAreItsInputToo) {
  FRMFW_MAILPARAMS form(ambiente);
  form.AllegatoUnico("C:\\a.pdf");
  form.Tipo(1);
  form.ReadRcpt(true);
  form.DeliveryStatus(true);
  form.IdAccount(nullptr);
  EXPECT_EQ(form.AllegatoUnico(), "C:\\a.pdf");
  EXPECT_EQ(form.Tipo(), 1);
  EXPECT_TRUE(form.ReadRcpt());
  EXPECT_TRUE(form.DeliveryStatus());
}

}  // namespace
}  // namespace orve
