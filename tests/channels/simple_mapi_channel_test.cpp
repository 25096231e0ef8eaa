// The Simple MAPI channel over fakes: the slots of the message, the control's life, and a failure that is
// recorded like a success but for its outcome.
#include <string>
#include <vector>

#include "canale_di_prova.h"
#include "channels/simple_mapi_channel.h"

namespace orve {
namespace {

using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

class CanaleSimpleMapi : public CanaleDiProva {
 protected:
  CanaleSimpleMapi() : CanaleDiProva(kvSimpleMAPI) { interno.oggetti.MapiSessionID = 4711; }

  [[nodiscard]] std::vector<std::string> Messaggio() const { return journal->Righe({"MAPIMessages."}); }
  [[nodiscard]] bool Inviato() const { return journal->Conta("MAPIMessages.Send") == 1; }
  void Ricomincia() {
    servizio->vNome.clear();
    servizio->vCollDestinatari.reset();
    Collezione().Add("anna@x.example", "Anna");
    journal->DimenticaPiani();
    journal->Svuota();
  }
};

TEST_F(CanaleSimpleMapi, FillsTheSlotsSendsAndRecordsEachRecipientInThisOrder) {
  ConRegistro();
  ConAllegati({"C:\\Doc\\a.pdf", "C:\\Doc\\b.pdf"});
  Collezione().Add("anna@x.example", "Anna");
  Collezione().AddFromLista("carla@x.example", "Carla", "", 1);
  Collezione().AddFromLista("dario@x.example", "", "", 2);
  servizio->ReadReceipt = true;
  journal->Svuota();
  servizio->InviaMail();
  EXPECT_THAT(
      journal->Righe({"ObjRegistroInvio.", "Ambiente.CreaMAPIMessages", "MAPIMessages.", "rilascio ",
                      "ConnectionADO.CreateCommand"}),
      ElementsAre("Ambiente.CreaMAPIMessages", "MAPIMessages.SessioneID 4711", "MAPIMessages.Compose",
                  "MAPIMessages.RecipIndex 0", "MAPIMessages.RecipAddress SMTP:anna@x.example",
                  "MAPIMessages.RecipDisplayName Anna", "MAPIMessages.RecipType 1",
                  "MAPIMessages.RecipIndex 1", "MAPIMessages.RecipAddress SMTP:carla@x.example",
                  "MAPIMessages.RecipDisplayName Carla", "MAPIMessages.RecipType 2",
                  "MAPIMessages.RecipIndex 2", "MAPIMessages.RecipAddress SMTP:dario@x.example",
                  "MAPIMessages.RecipDisplayName ", "MAPIMessages.RecipType 3",
                  "MAPIMessages.MsgReceiptRequested true", "MAPIMessages.MsgNoteText Buongiorno",
                  "MAPIMessages.AttachmentIndex 0", "MAPIMessages.AttachmentPosition 0",
                  "MAPIMessages.AttachmentPathName C:\\Doc\\a.pdf", "MAPIMessages.AttachmentName a.pdf",
                  "MAPIMessages.AttachmentIndex 1", "MAPIMessages.AttachmentPosition 1",
                  "MAPIMessages.AttachmentPathName C:\\Doc\\b.pdf", "MAPIMessages.AttachmentName b.pdf",
                  "MAPIMessages.MsgSubject Fattura 12", "MAPIMessages.Send", "ObjRegistroInvio.EsitoInvio 0",
                  "ObjRegistroInvio.TipoCanale 3",
                  "ObjRegistroInvio.MittenteInvio Simple Mapi:", "ObjRegistroInvio.CanaleInvio 0",
                  "ObjRegistroInvio.RegistraInvio Anna|Acme S.p.A.|Anna<anna@x.example>|"
                  "C:\\Doc\\a.pdf|C:\\Doc\\b.pdf|(assente)|Fattura 12|Buongiorno",
                  "ConnectionADO.CreateCommand",
                  "ObjRegistroInvio.RegistraInvio Carla|Acme S.p.A.|Carla<carla@x.example>|"
                  "C:\\Doc\\a.pdf|C:\\Doc\\b.pdf|(assente)|Fattura 12|Buongiorno",
                  "ConnectionADO.CreateCommand",
                  "ObjRegistroInvio.RegistraInvio |Acme S.p.A.|<dario@x.example>|"
                  "C:\\Doc\\a.pdf|C:\\Doc\\b.pdf|(assente)|Fattura 12|Buongiorno",
                  "ConnectionADO.CreateCommand", "rilascio MAPIMessages"));
  EXPECT_EQ(servizio->Stato(), kvOK);
  EXPECT_EQ(interno.oggetti.objMapiMessages, nullptr);
  EXPECT_EQ(servizio->vIndDestinatario, "Anna <anna@x.example>");
  EXPECT_THAT(Messaggi(), IsEmpty());
}

TEST_F(CanaleSimpleMapi, TheEventsCarryTheAddressWithoutABlankAndNoResult) {
  ConRegistro();
  Collezione().Add("anna@x.example", "Anna");
  servizio->InviaMail();
  EXPECT_THAT(
      connessione->Statements(),
      Contains("exec SPFW_AttivaEventoGestionale 1, 89, 7, '<DATE_INS=14/11/2026/><TIME_INS=10:22:05/>"
               "<USR_COD=/><GRP_COD=/><MAIL_DEST=Anna/><AZ_COD=1/><AZ_DES=Acme S.p.A./>"
               "<MAIL_IND=Anna<anna@x.example>/><MAIL_OBJ=Fattura 12/>' , 1"));
}

TEST_F(CanaleSimpleMapi, AMessageThatTheSendProcedurePreparedIsUsed) {
  Collezione().Add("anna@x.example", "Anna");
  servizio->AvviaProceduraInvio();
  EXPECT_THAT(
      journal->Righe({"Ambiente.CreaMAPIMessages", "MAPIMessages.Sess", "MAPIMessages.Compose", "rilascio"}),
      ElementsAre("Ambiente.CreaMAPIMessages", "MAPIMessages.SessionID 4711", "MAPIMessages.Compose",
                  "rilascio MAPIMessages"));
  EXPECT_TRUE(Inviato());
}

TEST_F(CanaleSimpleMapi, ASecondDeliveryMakesAMessageOfItsOwn) {
  Collezione().Add("anna@x.example", "Anna");
  servizio->AvviaProceduraInvio();
  journal->Svuota();
  servizio->InviaMail();
  EXPECT_THAT(
      journal->Righe({"Ambiente.CreaMAPIMessages", "MAPIMessages.Sess", "MAPIMessages.Compose"}),
      ElementsAre("Ambiente.CreaMAPIMessages", "MAPIMessages.SessioneID 4711", "MAPIMessages.Compose"));
  EXPECT_TRUE(Inviato());
}

TEST_F(CanaleSimpleMapi, AfterAFailureTheMessageStaysAndTheNextDeliveryWorksOnIt) {
  Collezione().Add("anna@x.example", "Anna");
  servizio->SrvMailInstallato = kvSimpleMAPI;
  journal->Fallisce("MAPIMessages.Send");
  servizio->AvviaProceduraInvio();
  EXPECT_NE(interno.oggetti.objMapiMessages, nullptr);
  EXPECT_EQ(journal->Conta("rilascio"), 0U);
  Ricomincia();
  servizio->InviaMail();
  EXPECT_THAT(journal->Righe({"Ambiente.CreaMAPIMessages", "MAPIMessages.Sess", "MAPIMessages.Compose"}),
              IsEmpty());
  EXPECT_TRUE(Inviato());
  EXPECT_EQ(interno.oggetti.objMapiMessages, nullptr);
}

TEST_F(CanaleSimpleMapi, AnEmptyCollectionIsAQuietEnd) {
  Collezione();
  ConRegistro();
  interno.esito.StatoInvio = kvInvioNonImpostato;
  journal->Svuota();
  servizio->InviaMail();
  EXPECT_THAT(journal->Righe(), IsEmpty());
  EXPECT_EQ(servizio->Stato(), kvInvioNonImpostato);
}

TEST_F(CanaleSimpleMapi, AMissingCollectionIsAnErrorAndNotAQuietEnd) {
  for (const bool conRegistro : {false, true}) {
    if (conRegistro) ConRegistro();
    interno.esito.StatoInvio = kvOK;
    journal->Svuota();
    servizio->InviaMail();
    EXPECT_EQ(servizio->Stato(), kvErroreInvioMail);
    EXPECT_EQ(journal->Conta("Ambiente.CreaMAPIMessages"), 0U);
    EXPECT_THAT(UltimaRigaLog(), HasSubstr("ErroreInvio   SendWithSimpleMAPI   "));
  }
  EXPECT_THAT(Registro(),
              ElementsAre("ObjRegistroInvio.EsitoInvio 1", "ObjRegistroInvio.TipoCanale 3",
                          "ObjRegistroInvio.MittenteInvio Simple Mapi:", "ObjRegistroInvio.CanaleInvio 0"));
}

TEST_F(CanaleSimpleMapi, OnlyTheMainRecipientsStandInTheListAndInVNome) {
  servizio->vNome = "Prima, ";
  servizio->vCorpoMail = "***(Nome)***|***(IndEmail)***";
  Collezione().Add("a@x.example", "Anna");
  Collezione().AddFromLista("c@x.example", "Carla", "", 1);
  Collezione().Add("b@x.example", "");
  Collezione().AddFromLista("d@x.example", "Dario", "", 2);
  Collezione().Add(" g@x.example ", "Rossi, Gino");
  servizio->InviaMail();
  EXPECT_EQ(servizio->vNome, "Prima, Anna, Rossi, Gino");
  EXPECT_EQ(servizio->vIndDestinatario, "Anna <a@x.example>; <b@x.example>;Rossi, Gino < g@x.example >");
  EXPECT_THAT(Messaggio(), Contains("MAPIMessages.MsgNoteText Prima, Anna, Rossi, Gino|Anna <a@x.example>; "
                                    "<b@x.example>;Rossi, Gino < g@x.example >"));
}

TEST_F(CanaleSimpleMapi, ABoxThatNobodyKnowsLeavesTheTypeToTheControlAndTheListWithoutIt) {
  ConRegistro();
  Collezione().AddFromLista("b@x.example", "Bruno", "", 3);
  servizio->InviaMail();
  EXPECT_EQ(journal->Conta("MAPIMessages.RecipDisplayName Bruno"), 1U);
  EXPECT_EQ(journal->Conta("MAPIMessages.RecipType"), 0U);
  EXPECT_EQ(servizio->vIndDestinatario, "");
  EXPECT_EQ(servizio->vNome, "");
  EXPECT_THAT(Registro(), Contains(HasSubstr("RegistraInvio Bruno|Acme S.p.A.|Bruno<b@x.example>|")));
}

TEST_F(CanaleSimpleMapi, AnEmptyBodyIsAnError) {
  ConRegistro();
  servizio->vCorpoMail.clear();
  servizio->ModalitaInvio(kvManuale);
  Collezione().Add("anna@x.example", "Anna");
  servizio->InviaMail();
  EXPECT_EQ(servizio->Stato(), kvErroreInvioMail);
  EXPECT_FALSE(Inviato());
  EXPECT_THAT(Registro(), Contains("ObjRegistroInvio.EsitoInvio 1"));
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 5-Chiamata di routine o argomento non validi in "
                                      "ORVE_MAILSERVER:CLSFW_MAILSERVER - SendWithSimpleMAPI|0||(assente)"));
}

struct CasoCorpo {
  const char* etichetta;
  const char* corpo;
  const char* want;
};

class CorpoSimpleMapi : public CanaleSimpleMapi, public ::testing::WithParamInterface<CasoCorpo> {};

TEST_P(CorpoSimpleMapi, DoesNotBeginWithACarriageReturnAndIsWorkedOutTwice) {
  servizio->vCorpoMail = GetParam().corpo;
  Collezione().Add("anna@x.example", "Anna");
  servizio->InviaMail();
  EXPECT_THAT(Messaggio(), Contains(std::string("MAPIMessages.MsgNoteText ") + GetParam().want));
  EXPECT_EQ(servizio->vCorpoMail, GetParam().want);
  EXPECT_THAT(connessione->Statements(), Contains(HasSubstr("SELECT  FW07_USERNAME")).Times(2));
}

INSTANTIATE_TEST_SUITE_P(
    Tabella, CorpoSimpleMapi,
    ::testing::Values(CasoCorpo{"ALineEndInFrontGetsABlank", "\r\nBuongiorno", " \r\nBuongiorno"},
                      CasoCorpo{"OnlyACarriageReturn", "\r", " \r"},
                      CasoCorpo{"ALineFeedInFrontStays", "\nBuongiorno", "\nBuongiorno"},
                      CasoCorpo{"ABlankInFrontStays", " \r\nBuongiorno", " \r\nBuongiorno"},
                      CasoCorpo{"AnAccentedLetterInFront", "È pronto", "È pronto"}),
    [](const auto& caso) { return std::string(caso.param.etichetta); });

TEST_F(CanaleSimpleMapi, NeitherHTMLNorASignatureIsAskedFor) {
  servizio->ActiveInterface = fakes::CreaFakeInterfaccia(*ambiente);
  connessione->Risponde("'AIT_MAIL_HTML'", {{{"", 1}}});
  Collezione().Add("anna@x.example", "Anna");
  servizio->InviaMail();
  EXPECT_THAT(connessione->Statements(), Each(Not(HasSubstr("FW95_SETTINGS"))));
  EXPECT_TRUE(Inviato());
}

TEST_F(CanaleSimpleMapi, TheAttachmentsEndInSilenceAtTheFirstThatTheControlRefuses) {
  for (const std::string membro : {"AttachmentIndex 1", "AttachmentPosition 1",
                                   "AttachmentPathName C:\\Doc\\manca.pdf", "AttachmentName manca.pdf"}) {
    Ricomincia();
    ConRegistro();
    servizio->vElencoAllegati = {};
    ConAllegati({"C:\\Doc\\a.pdf", "C:\\Doc\\manca.pdf", "C:\\Doc\\c.pdf"});
    journal->Fallisce("MAPIMessages." + membro, {32004, "MAPI", "allegato non trovato"});
    servizio->InviaMail();
    EXPECT_TRUE(Inviato()) << membro;
    EXPECT_EQ(journal->Conta("MAPIMessages.AttachmentIndex 2"), 0U) << membro;
    EXPECT_THAT(Registro(), Contains(HasSubstr("|C:\\Doc\\a.pdf|(assente)|"))) << membro;
    EXPECT_EQ(servizio->Stato(), kvOK) << membro;
    EXPECT_THAT(Messaggi(), IsEmpty()) << membro;
    EXPECT_EQ(UltimaRigaLog(), "") << membro;
  }
}

TEST_F(CanaleSimpleMapi, AnAttachmentWithoutAPathLosesTheFirstLetterOfItsName) {
  ConAllegati({"report.pdf"});
  Collezione().Add("anna@x.example", "Anna");
  servizio->InviaMail();
  EXPECT_THAT(
      journal->Righe({"MAPIMessages.AttachmentPathName", "MAPIMessages.AttachmentName"}),
      ElementsAre("MAPIMessages.AttachmentPathName report.pdf", "MAPIMessages.AttachmentName eport.pdf"));
}

TEST_F(CanaleSimpleMapi, ARefusedSendIsRecordedWithItsOutcomeButWithoutAText) {
  servizio->IsPec(true);
  ConRegistro();
  ConAllegati({"C:\\Doc\\a.pdf"});
  Collezione().Add("anna@x.example", "Anna");
  Collezione().AddFromLista("carla@x.example", "Carla", "", 1);
  journal->Svuota();
  journal->Fallisce("MAPIMessages.Send", {32026, "MAPI", "operazione non riuscita"});
  servizio->InviaMail();
  EXPECT_EQ(servizio->Stato(), kvErroreInvioMail);
  EXPECT_THAT(Registro(),
              ElementsAre("ObjRegistroInvio.EsitoInvio 1", "ObjRegistroInvio.TipoCanale 5",
                          "ObjRegistroInvio.MittenteInvio Simple Mapi:", "ObjRegistroInvio.CanaleInvio 0",
                          "ObjRegistroInvio.RegistraInvio Anna|Acme S.p.A.|Anna<anna@x.example>|"
                          "C:\\Doc\\a.pdf|(assente)|Fattura 12|Buongiorno",
                          "ObjRegistroInvio.RegistraInvio Carla|Acme S.p.A.|Carla<carla@x.example>|"
                          "C:\\Doc\\a.pdf|(assente)|Fattura 12|Buongiorno"));
  EXPECT_THAT(connessione->Statements(), Contains(HasSubstr(" 1, 89, 7, '")).Times(2));
  EXPECT_THAT(connessione->Statements(), Each(Not(HasSubstr("<DESRES="))));
  EXPECT_THAT(UltimaRigaLog(), HasSubstr("ErroreInvio   SendWithSimpleMAPI   "));
  EXPECT_THAT(Messaggi(), IsEmpty());
}

TEST_F(CanaleSimpleMapi, APersonSeesTheRefusalAndNoLogLineIsWritten) {
  servizio->ModalitaInvio(kvManuale);
  Collezione().Add("anna@x.example", "Anna");
  journal->Fallisce("MAPIMessages.Send", {32026, "MAPI", "operazione non riuscita"});
  servizio->InviaMail();
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 32026-operazione non riuscita in "
                                      "ORVE_MAILSERVER:CLSFW_MAILSERVER - SendWithSimpleMAPI|0||(assente)"));
  EXPECT_EQ(UltimaRigaLog(), "");
}

TEST_F(CanaleSimpleMapi, AFailureInFrontOfTheAttachmentsIsRecordedWithoutThem) {
  ConRegistro();
  ConAllegati({"C:\\Doc\\a.pdf"});
  servizio->vCorpoMail = "Buongiorno ***(Nome)***";
  Collezione().Add("anna@x.example", "Anna");
  Collezione().Add("bruno@x.example", "Bruno");
  journal->Fallisce("MAPIMessages.RecipIndex 1", {32011, "MAPI", "troppi destinatari"});
  servizio->InviaMail();
  EXPECT_THAT(Registro(), Contains(HasSubstr("|Bruno<bruno@x.example>||(assente)|Fattura 12|"
                                             "Buongiorno ***(Nome)***")));
  EXPECT_EQ(servizio->vNome, "Anna, ");
  EXPECT_EQ(servizio->vIndDestinatario, "");
}

TEST_F(CanaleSimpleMapi, AControlThatCannotBeMadeIsARecordedFailureToo) {
  ConRegistro();
  Collezione().Add("anna@x.example", "Anna");
  journal->Fallisce("Ambiente.CreaMAPIMessages", host::Errore(host::kOggettoNonCreabile));
  servizio->InviaMail();
  EXPECT_EQ(servizio->Stato(), kvErroreInvioMail);
  EXPECT_THAT(Registro(), Contains(StartsWith("ObjRegistroInvio.RegistraInvio Anna|")));
  EXPECT_THAT(UltimaRigaLog(), HasSubstr("ErroreInvio   SendWithSimpleMAPI   "));
}

TEST_F(CanaleSimpleMapi, ARegisterThatFailsAfterTheSendTurnsTheDeliveryIntoAFailure) {
  ConRegistro();
  Collezione().Add("anna@x.example", "Anna");
  journal->Fallisce("ObjRegistroInvio.EsitoInvio 0", {1001, "Registro", "pieno"});
  servizio->InviaMail();
  EXPECT_TRUE(Inviato());
  EXPECT_EQ(servizio->Stato(), kvErroreInvioMail);
  EXPECT_THAT(Registro(), Contains("ObjRegistroInvio.EsitoInvio 1"));
  EXPECT_THAT(UltimaRigaLog(), HasSubstr("ErroreInvio   SendWithSimpleMAPI   "));
}

TEST_F(CanaleSimpleMapi, TheRegisterIsToldTheChannelOfTheSettings) {
  servizio->SrvMailInstallato = kvSMTPSSLMail;
  ConRegistro();
  Collezione().Add("anna@x.example", "Anna");
  SendWithSimpleMAPI(interno.messaggio, interno.impostazioni, interno.account, interno.contesto,
                     interno.esito, interno.oggetti);
  journal->Fallisce("MAPIMessages.Send");
  SendWithSimpleMAPI(interno.messaggio, interno.impostazioni, interno.account, interno.contesto,
                     interno.esito, interno.oggetti);
  EXPECT_THAT(Registro(), Contains("ObjRegistroInvio.CanaleInvio 77").Times(2));
}

TEST_F(CanaleSimpleMapi, AnAttachmentSlotThatDoesNotFitSixteenBitsEndsTheAttachmentsInSilence) {
  servizio->vElencoAllegati = host::Variant::Array(32769, host::Variant("C:\\a"));
  Collezione().Add("anna@x.example", "Anna");
  servizio->InviaMail();
  EXPECT_EQ(journal->Conta("MAPIMessages.AttachmentIndex "), 32768U);
  EXPECT_EQ(journal->Conta("MAPIMessages.AttachmentIndex 32767"), 1U);
  EXPECT_TRUE(Inviato());
  EXPECT_EQ(servizio->Stato(), kvOK);
}

TEST_F(CanaleSimpleMapi, ASlotNumberThatDoesNotFitSixteenBitsIsAnOverflow) {
  servizio->ModalitaInvio(kvManuale);
  for (int i = 0; i < 32768; ++i) Collezione().Add("a@x.example");
  servizio->InviaMail();
  EXPECT_EQ(servizio->Stato(), kvErroreInvioMail);
  EXPECT_EQ(journal->Conta("MAPIMessages.RecipIndex 32767"), 1U);
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 6-Overflow in ORVE_MAILSERVER:CLSFW_MAILSERVER "
                                      "- SendWithSimpleMAPI|0||(assente)"));
}

TEST_F(CanaleSimpleMapi, TheStateIsSetBeforeTheRecordsAreWritten) {
  ConRegistro();
  Collezione().Add("anna@x.example", "Anna");
  interno.esito.StatoInvio = kvInvioNonImpostato;
  std::vector<kvEnum_ErroreMail> visti;
  journal->Quando("ObjRegistroInvio.EsitoInvio", [&] { visti.push_back(servizio->Stato()); });
  servizio->InviaMail();
  journal->Fallisce("MAPIMessages.Send");
  servizio->InviaMail();
  EXPECT_THAT(visti, ElementsAre(kvOK, kvErroreInvioMail));
}

TEST_F(CanaleSimpleMapi, TheDeliveryNotificationHasNoEffectHere) {
  Ricomincia();
  servizio->InviaMail();
  const auto senza = Messaggio();
  Ricomincia();
  servizio->vNotifyDelivery = true;
  servizio->InviaMail();
  EXPECT_EQ(Messaggio(), senza);
}

TEST_F(CanaleSimpleMapi, TheSessionIsSignedOffWhenTheServiceEnds) {
  interno.oggetti.objMapiSession = ambiente->CreaMAPISession();
  Collezione().Add("anna@x.example", "Anna");
  servizio->AvviaProceduraInvio();
  EXPECT_EQ(journal->Conta("MAPISession.SignOff"), 0U);
  servizio.reset();
  EXPECT_THAT(journal->Righe({"MAPISession.SignOff", "rilascio MAPISession"}),
              ElementsAre("MAPISession.SignOff", "rilascio MAPISession"));
}

}  // namespace
}  // namespace orve
