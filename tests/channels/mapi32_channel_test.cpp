// The MAPI32 channel over a fake library: its records, the three messages of its numbers, and the silence
// over everything else.
#include "channels/mapi32_channel.h"

#include <string>
#include <vector>

#include "canale_di_prova.h"

namespace orve {
namespace {

using host::Variant;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class CanaleMapi32 : public CanaleDiProva {
 protected:
  CanaleMapi32() : CanaleDiProva(kvMAPI) {
    interno.esito.StatoInvio = kvInvioNonImpostato;  // to see whether a run touches it
  }

  [[nodiscard]] std::vector<std::string> Libreria() const { return journal->Righe({"MAPI32."}); }
  /// The records of the one call.
  [[nodiscard]] fakes::InvioMapi Inviato() const {
    EXPECT_EQ(ambiente->inviiMapi.size(), 1U);
    return ambiente->inviiMapi.empty() ? fakes::InvioMapi() : ambiente->inviiMapi.front();
  }
  void NessunLog() const { EXPECT_THAT(journal->Righe({"FileSystem", "TextStream"}), IsEmpty()); }
};

TEST_F(CanaleMapi32, LogsOnSendsTellsThePersonRecordsAndLogsOffInThisOrder) {
  ConRegistro();
  ConAllegati({"C:\\Doc\\a.pdf", "C:\\Doc\\b.pdf"});
  Collezione().Add("anna@x.example", "Anna");
  Collezione().AddFromLista("carla@x.example", "Carla", "", 1);
  journal->Svuota();
  servizio->InviaMail();
  EXPECT_THAT(journal->Righe({"Ambiente.CreaMapi32", "MAPI32.", "ObjMessaggi.", "ObjRegistroInvio.",
                              "ConnectionADO.CreateCommand", "rilascio "}),
              ElementsAre("Ambiente.CreaMapi32", "MAPI32.MAPILogon 0|||3|0", "MAPI32.BMAPISendMail 0|0|0|0",
                          "ObjMessaggi.MostraMsg Message sent!|0||(assente)",
                          "ObjRegistroInvio.MittenteInvio MAPI: ", "ObjRegistroInvio.EsitoInvio 0",
                          "ObjRegistroInvio.CanaleInvio 2",
                          "ObjRegistroInvio.RegistraInvio Anna|Acme S.p.A.|Anna<anna@x.example>|"
                          "C:\\Doc\\a.pdf|C:\\Doc\\b.pdf|(assente)|Fattura 12|Buongiorno",
                          "ConnectionADO.CreateCommand",
                          "ObjRegistroInvio.RegistraInvio Carla|Acme S.p.A.|Carla<carla@x.example>|"
                          "C:\\Doc\\a.pdf|C:\\Doc\\b.pdf|(assente)|Fattura 12|Buongiorno",
                          "ConnectionADO.CreateCommand", "MAPI32.MAPILogoff 815|0|0|0", "rilascio MAPI32"));
  EXPECT_EQ(servizio->Stato(), kvOK);
  NessunLog();
}

TEST_F(CanaleMapi32, TheEventsCarryTheAddressWithoutABlankAndNoResult) {
  ConRegistro();
  Collezione().Add("anna@x.example", "Anna");
  servizio->InviaMail();
  EXPECT_THAT(
      connessione->Statements(),
      Contains("exec SPFW_AttivaEventoGestionale 1, 89, 7, '<DATE_INS=14/11/2026/><TIME_INS=10:22:05/>"
               "<USR_COD=/><GRP_COD=/><MAIL_DEST=Anna/><AZ_COD=1/><AZ_DES=Acme S.p.A./>"
               "<MAIL_IND=Anna<anna@x.example>/><MAIL_OBJ=Fattura 12/>' , 1"));
}

TEST_F(CanaleMapi32, WithNoRecipientsThereIsNoLogonAndNoMessageAtAll) {
  ConRegistro();
  journal->Svuota();
  servizio->InviaMail();
  Collezione();
  journal->Svuota();
  servizio->InviaMail();
  EXPECT_THAT(journal->Righe(), IsEmpty());
  EXPECT_EQ(servizio->Stato(), kvInvioNonImpostato);
}

TEST_F(CanaleMapi32, TheMessageRecordHoldsSubjectBodyAndCountsAndNothingElse) {
  servizio->ReadReceipt = true;
  servizio->vNotifyRead = true;
  servizio->vNotifyDelivery = true;
  ConAllegati({"C:\\Doc\\a.pdf"});
  Collezione().Add("anna@x.example", "Anna");
  Collezione().Add("bruno@x.example", "Bruno");
  servizio->InviaMail();
  const auto messaggio = Inviato().messaggio;
  EXPECT_EQ(messaggio.Reserved, 0);
  EXPECT_EQ(messaggio.Subject, "Fattura 12");
  EXPECT_EQ(messaggio.NoteText, "Buongiorno");
  EXPECT_EQ(messaggio.MessageType, "");
  EXPECT_EQ(messaggio.DateReceived, "");
  EXPECT_EQ(messaggio.ConversationID, "");
  EXPECT_EQ(messaggio.Flags, 0);
  EXPECT_EQ(messaggio.RecipCount, 2);
  EXPECT_EQ(messaggio.FileCount, 1);
}

TEST_F(CanaleMapi32, TheRecipientRecordsHoldClassAndNameInOneText) {
  struct Caso {
    std::int16_t casella;
    std::int32_t wantClasse;
  };
  const Caso casi[] = {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {-1, 0}};
  for (const auto& caso : casi) Collezione().AddFromLista(" a@x.example ", "Rossi, Anna", "", caso.casella);
  servizio->InviaMail();
  const auto inviato = Inviato();
  ASSERT_EQ(inviato.destinatari.size(), std::size(casi));
  EXPECT_EQ(inviato.messaggio.RecipCount, 5);
  for (std::size_t i = 0; i < std::size(casi); ++i) {
    const auto& destinatario = inviato.destinatari[i];
    EXPECT_EQ(destinatario.RecipClass, casi[i].wantClasse) << casi[i].casella;
    EXPECT_EQ(destinatario.Name, "Rossi, Anna< a@x.example >");
    EXPECT_EQ(destinatario.Address, "");
    EXPECT_EQ(destinatario.EntryID, "");
    EXPECT_EQ(destinatario.Reserved, 0);
    EXPECT_EQ(destinatario.EIDSize, 0);
  }
}

TEST_F(CanaleMapi32, TheFileRecordsHoldPathNameAndAPositionLeftToTheLibrary) {
  ConAllegati({"C:\\Doc\\a.pdf", "report.pdf"});
  Collezione().Add("anna@x.example", "Anna");
  servizio->InviaMail();
  const auto inviato = Inviato();
  ASSERT_EQ(inviato.file.size(), 2U);
  EXPECT_EQ(inviato.messaggio.FileCount, 2);
  EXPECT_EQ(inviato.file[0].PathName, "C:\\Doc\\a.pdf");
  EXPECT_EQ(inviato.file[0].FileName, "a.pdf");
  EXPECT_EQ(inviato.file[1].PathName, "report.pdf");
  EXPECT_EQ(inviato.file[1].FileName, "eport.pdf");
  for (const auto& file : inviato.file) {
    EXPECT_EQ(file.Position, -1);
    EXPECT_EQ(file.Reserved, 0);
    EXPECT_EQ(file.Flags, 0);
    EXPECT_EQ(file.FileType, "");
  }
}

TEST_F(CanaleMapi32, WithNoAttachmentTheFileArrayIsEmpty) {
  ConRegistro();
  Collezione().Add("anna@x.example", "Anna");
  servizio->InviaMail();
  EXPECT_THAT(Inviato().file, IsEmpty());
  EXPECT_EQ(Inviato().messaggio.FileCount, 0);
  EXPECT_THAT(Registro(), Contains(HasSubstr("|Anna<anna@x.example>||(assente)|")));
}

TEST_F(CanaleMapi32, OnlyTheMainRecipientsStandInTheListAndInVNome) {
  servizio->vNome = "Prima, ";
  servizio->vCorpoMail = "***(Nome)***|***(IndEmail)***";
  Collezione().Add("a@x.example", "Anna");
  Collezione().AddFromLista("c@x.example", "Carla", "", 1);
  Collezione().Add("b@x.example", "");
  Collezione().AddFromLista("e@x.example", "Elio", "", 3);
  Collezione().Add("g@x.example", "Gino");
  servizio->InviaMail();
  EXPECT_EQ(servizio->vNome, "Prima, Anna, Gino");
  EXPECT_EQ(servizio->vIndDestinatario, "Anna <a@x.example>; <b@x.example>;Gino <g@x.example>");
  EXPECT_EQ(Inviato().messaggio.NoteText,
            "Prima, Anna, Gino|Anna <a@x.example>; <b@x.example>;Gino <g@x.example>");
}

TEST_F(CanaleMapi32, ARefusedLogonIsShownAndEndsTheSend) {
  ambiente->esitoLogonMapi = 3;
  ConRegistro();
  servizio->vNome = "Prima";
  servizio->vIndDestinatario = "prima@x.example";
  Collezione().Add("anna@x.example", "Anna");
  journal->Svuota();
  servizio->InviaMail();
  EXPECT_THAT(Libreria(), ElementsAre("MAPI32.MAPILogon 0|||3|0"));
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg Logon failed. Result = 3|0||(assente)"));
  EXPECT_THAT(Registro(), IsEmpty());
  EXPECT_EQ(servizio->Stato(), kvInvioNonImpostato);
  EXPECT_EQ(servizio->vNome, "Prima");
  EXPECT_EQ(servizio->vIndDestinatario, "prima@x.example");
  EXPECT_EQ(servizio->vCorpoMail, "Buongiorno");
  NessunLog();
}

TEST_F(CanaleMapi32, ARefusedSendIsShownAndRecordedAsFailedAndTheLogoffStillRuns) {
  ambiente->esitoInvioMapi = 11;  // a missing attachment: nothing is sent at all
  ConRegistro();
  ConAllegati({"C:\\Doc\\manca.pdf"});
  Collezione().Add("anna@x.example", "Anna");
  Collezione().AddFromLista("carla@x.example", "Carla", "", 2);
  journal->Svuota();
  servizio->InviaMail();
  EXPECT_THAT(journal->Righe({"MAPI32.", "ObjMessaggi.", "ObjRegistroInvio.", "ConnectionADO.CreateCommand"}),
              ElementsAre("MAPI32.MAPILogon 0|||3|0", "MAPI32.BMAPISendMail 0|0|0|0",
                          "ObjMessaggi.MostraMsg Message not sent! Result = 11|0||(assente)",
                          "ObjRegistroInvio.EsitoInvio 1", "ObjRegistroInvio.CanaleInvio 2",
                          "ObjRegistroInvio.RegistraInvio Anna|Acme S.p.A.|Anna<anna@x.example>|"
                          "C:\\Doc\\manca.pdf|FALLITO|Fattura 12|Buongiorno",
                          "ConnectionADO.CreateCommand",
                          "ObjRegistroInvio.RegistraInvio Carla|Acme S.p.A.|Carla<carla@x.example>|"
                          "C:\\Doc\\manca.pdf|FALLITO|Fattura 12|Buongiorno",
                          "ConnectionADO.CreateCommand", "MAPI32.MAPILogoff 815|0|0|0"));
  EXPECT_EQ(servizio->Stato(), kvErroreInvioMail);
  EXPECT_THAT(connessione->Statements(), Contains(HasSubstr(" 1, 89, 7, '")).Times(2));
  EXPECT_THAT(connessione->Statements(), Contains(HasSubstr("<DESRES=FALLITO/>")).Times(2));
  NessunLog();
}

TEST_F(CanaleMapi32, AFailingLogoffAfterAGoodSendLeavesTheStateAndIsShownAfterTheSuccess) {
  ambiente->esitoLogoffMapi = 2;
  Collezione().Add("anna@x.example", "Anna");
  servizio->InviaMail();
  EXPECT_EQ(servizio->Stato(), kvOK);
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg Message sent!|0||(assente)",
                                      "ObjMessaggi.MostraMsg Logoff failed. Result = 2|0||(assente)"));
}

TEST_F(CanaleMapi32, TheMessagesAreShownInEveryMode) {
  for (const auto modo : {kvManuale, kvAutomatico, kvSemiAuto, kvListaDistribuzione}) {
    servizio->vCollDestinatari.reset();
    Collezione().Add("anna@x.example", "Anna");
    servizio->ModalitaInvio(modo);
    journal->Svuota();
    servizio->InviaMail();
    EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg Message sent!|0||(assente)")) << modo;
  }
}

TEST_F(CanaleMapi32, TheRegisterIsToldAFixedChannelAndNoKindOfIt) {
  servizio->IsPec(true);
  servizio->SrvMailInstallato = kvSMTPSSLMail;
  ConRegistro();
  Collezione().Add("anna@x.example", "Anna");
  SendMailMAPI(interno.messaggio, interno.impostazioni, interno.contesto, interno.esito, interno.oggetti);
  EXPECT_THAT(Registro(), Contains("ObjRegistroInvio.CanaleInvio 2"));
  EXPECT_EQ(journal->Conta("ObjRegistroInvio.TipoCanale"), 0U);
}

struct CasoSilenzio {
  const char* etichetta;
  const char* guasto;  // the operation that fails
  std::vector<std::string> wantLibreria;
};

class SilenzioMapi32 : public CanaleMapi32, public ::testing::WithParamInterface<CasoSilenzio> {};

TEST_P(SilenzioMapi32, EveryOtherErrorEndsTheRunWithoutAWordAndWithoutALogoff) {
  for (const auto modo : {kvManuale, kvAutomatico}) {
    servizio->vCollDestinatari.reset();
    Collezione().Add("anna@x.example", "Anna");
    servizio->ModalitaInvio(modo);
    ConRegistro();
    journal->DimenticaPiani();
    journal->Svuota();
    journal->Fallisce(GetParam().guasto);
    servizio->InviaMail();
    EXPECT_EQ(Libreria(), GetParam().wantLibreria) << modo;
    EXPECT_THAT(Messaggi(), IsEmpty());
    EXPECT_THAT(Registro(), IsEmpty());
    EXPECT_EQ(servizio->Stato(), kvInvioNonImpostato);
    NessunLog();
  }
}

INSTANTIATE_TEST_SUITE_P(
    Tabella, SilenzioMapi32,
    ::testing::Values(CasoSilenzio{"ALibraryThatIsNotThere", "Ambiente.CreaMapi32", {}},
                      CasoSilenzio{"ALogonThatRaises", "MAPI32.MAPILogon", {"MAPI32.MAPILogon 0|||3|0"}},
                      CasoSilenzio{
                          "ABodyThatCannotBeFilled", "ConnectionADO.Execute", {"MAPI32.MAPILogon 0|||3|0"}},
                      CasoSilenzio{"ASendThatRaises",
                                   "MAPI32.BMAPISendMail",
                                   {"MAPI32.MAPILogon 0|||3|0", "MAPI32.BMAPISendMail 0|0|0|0"}}),
    [](const auto& caso) { return std::string(caso.param.etichetta); });

TEST_F(CanaleMapi32, AttachmentsThatAreNoTextsEndTheRunBeforeTheSend) {
  const Variant casi[] = {Variant("C:\\Doc\\a.pdf"), Variant::Array{"C:\\Doc\\a.pdf", host::Null{}}};
  for (const auto& allegati : casi) {
    servizio->vCollDestinatari.reset();
    Collezione().Add("anna@x.example", "Anna");
    servizio->vElencoAllegati = allegati;
    journal->Svuota();
    servizio->InviaMail();
    EXPECT_THAT(Libreria(), ElementsAre("MAPI32.MAPILogon 0|||3|0"));
    EXPECT_THAT(Messaggi(), IsEmpty());
    EXPECT_EQ(servizio->Stato(), kvInvioNonImpostato);
  }
}

TEST_F(CanaleMapi32, AFailingRegisterAfterTheSendKeepsTheStateOfTheSendAndTheSessionOpen) {
  ConRegistro();
  Collezione().Add("anna@x.example", "Anna");
  journal->Fallisce("ObjRegistroInvio.RegistraInvio", {1001, "Registro", "pieno"});
  servizio->InviaMail();
  EXPECT_EQ(servizio->Stato(), kvOK);
  EXPECT_EQ(journal->Conta("MAPI32.MAPILogoff"), 0U);
  NessunLog();
}

TEST_F(CanaleMapi32, AMessageThatCannotBeShownEndsTheRunWhereItStands) {
  struct Caso {
    std::int32_t esitoLogon;
    std::int32_t esitoInvio;
  };
  ConRegistro();
  for (const auto& caso : {Caso{3, 0}, Caso{0, 0}, Caso{0, 2}}) {
    servizio->vCollDestinatari.reset();
    Collezione().Add("anna@x.example", "Anna");
    ambiente->esitoLogonMapi = caso.esitoLogon;
    ambiente->esitoInvioMapi = caso.esitoInvio;
    journal->DimenticaPiani();
    journal->Svuota();
    journal->Fallisce("ObjMessaggi.MostraMsg", {1002, "Messaggi", "senza finestra"});
    EXPECT_NO_THROW(servizio->InviaMail());
    EXPECT_EQ(Messaggi().size(), 1U);
    EXPECT_EQ(servizio->Stato(), kvInvioNonImpostato);
    EXPECT_THAT(Registro(), IsEmpty());
    EXPECT_EQ(journal->Conta("MAPI32.MAPILogoff"), 0U);
    NessunLog();
  }
}

TEST_F(CanaleMapi32, NeitherHTMLNorASignatureIsAskedFor) {
  servizio->ActiveInterface = fakes::CreaFakeInterfaccia(*ambiente);
  Collezione().Add("anna@x.example", "Anna");
  servizio->InviaMail();
  EXPECT_THAT(connessione->Statements(), Each(Not(HasSubstr("FW95_SETTINGS"))));
}

TEST(RecordMapi32, AFreshRecordIsEmpty) {
  const MDLFW_MAPI::MapiMessage messaggio;
  const MDLFW_MAPI::MapiRecip destinatario;
  const MDLFW_MAPI::MapiFile file;
  EXPECT_EQ(messaggio.RecipCount + messaggio.FileCount + messaggio.Flags + messaggio.Reserved, 0);
  EXPECT_EQ(destinatario.RecipClass + destinatario.EIDSize + destinatario.Reserved, 0);
  EXPECT_EQ(file.Position + file.Flags + file.Reserved, 0);
}

}  // namespace
}  // namespace orve
