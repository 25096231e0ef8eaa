// The stand-alone calls: adding recipients, and mailing subject and body through the SMTP component with the
// user's default account.
#include <string>
#include <vector>

#include "fakes/allocazioni.h"
#include "fakes/servizio_di_prova.h"

namespace orve {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class InvioDaSolo : public fakes::ServizioDiProva {
 protected:
  InvioDaSolo() {
    servizio->SrvMailInstallato = kvOutlook;  // the configured channel plays no part
    servizio->DittaCorrente = 1;
    servizio->INFO_RagSocCliFor("Acme S.p.A.");
    Account({{"FW23_SERVERNAME", "smtp.azienda.example"},
             {"FW23_PORT", 587},
             {"FW23_TIMEOUT", 60},
             {"FW23_INDAUTH", 2},
             {"FW23_SSL", 1},
             {"FW98_MAILADDRESS", "posta@azienda.example"},
             {"FW98_USERNAME", "utente"},
             {"FW98_PASSWORD", "{segretissima}"},
             {"ALIAS", "Ufficio Vendite"},
             {"LETTURA", 1},
             {"CONSEGNA", host::Null{}}});
  }
  void Account(fakes::Riga riga) { connessione->Risponde("FW99_ISDEFAULT = 1", {std::move(riga)}); }
  void SenzaAccount() { connessione->Risponde("FW99_ISDEFAULT = 1", {}); }

  [[nodiscard]] std::vector<std::string> Liste() const { return journal->Righe({"smtp.AddRecipientEx"}); }
  [[nodiscard]] std::vector<std::string> Registro() const { return journal->Righe({"ObjRegistroInvio."}); }
  [[nodiscard]] bool Consegnato() const { return journal->Conta("smtp.SendMail") == 1; }
};

TEST_F(InvioDaSolo, AddDestinatarioAnswersFalseInEveryCase) {
  EXPECT_FALSE(servizio->AddDestinatario("a@x.example", "Anna"));
  EXPECT_FALSE(servizio->AddDestinatario("a@x.example", "Anna"));
  EXPECT_FALSE(servizio->AddDestinatario("", ""));
  ASSERT_EQ(servizio->vCollDestinatari->Count(), 3);
  const auto primo = servizio->vCollDestinatari->Item(1);
  EXPECT_EQ(primo->Indirizzo(), "a@x.example");
  EXPECT_EQ(primo->Nome(), "Anna");
  EXPECT_EQ(primo->Azienda(), "");
  EXPECT_EQ(primo->Casella(), 0);
  EXPECT_THAT(Messaggi(), IsEmpty());
}

TEST_F(InvioDaSolo, AnAnswerThatIsNoNumberMattersOnlyToARegister) {
  ambiente->risultatoSmtp = "boh";
  servizio->AddDestinatario("a@x.example", "Anna");
  EXPECT_TRUE(servizio->InviaMailSMTP("Oggetto", "Corpo"));
  EXPECT_THAT(Messaggi(), IsEmpty());
  ConRegistro();
  journal->Svuota();
  EXPECT_FALSE(servizio->InviaMailSMTP("Oggetto", "Corpo"));
  EXPECT_THAT(Registro(), ::testing::ElementsAre("ObjRegistroInvio.TipoCanale 3"));
}

TEST_F(InvioDaSolo, AddDestinatarioGoesOnWithTheCallersCollection) {
  Collezione().AddFromLista("c@x.example", "Carla", "", 1);
  const auto* const prima = servizio->vCollDestinatari.get();
  servizio->AddDestinatario("a@x.example", "Anna");
  EXPECT_EQ(servizio->vCollDestinatari.get(), prima);
  EXPECT_EQ(servizio->vCollDestinatari->Count(), 2);
}

TEST_F(InvioDaSolo, ARecipientThatDoesNotFitIntoMemoryIsShownUnderTheTitleOfTheSendInSilentModeToo) {
  for (const bool silenzioso : {false, true}) {
    servizio->silentMode = silenzioso;
    const std::string indirizzo = "anna@x.example";
    bool risposta = true;
    journal->Svuota();
    fakes::ConAllocazioneCheFallisce(1, [&] { risposta = servizio->AddDestinatario(indirizzo, ""); });
    EXPECT_FALSE(risposta);
    EXPECT_THAT(Messaggi(),
                ElementsAre("ObjMessaggi.MostraMsg Memoria esaurita|48|ORVE_MAIL: InviaMailSMTP|(assente)"));
    EXPECT_EQ(servizio->errDescription, "");
  }
}

TEST_F(InvioDaSolo, AMessageThatCannotBeShownIsNoErrorOfTheCallers) {
  const std::string indirizzo = "anna@x.example";
  journal->Fallisce("ObjMessaggi.MostraMsg");
  bool risposta = true;
  fakes::ConAllocazioneCheFallisce(
      1, [&] { EXPECT_NO_THROW(risposta = servizio->AddDestinatario(indirizzo, "")); });
  EXPECT_FALSE(risposta);
  journal->Fallisce("Ambiente.CreaComponenteSmtp");
  EXPECT_NO_THROW(risposta = servizio->InviaMailSMTP("Avviso", "Corpo"));
  EXPECT_FALSE(risposta);
  EXPECT_EQ(Messaggi().size(), 2U);
}

TEST_F(InvioDaSolo, LoadsTheAccountSubmitsAndRecordsInThisOrder) {
  ConRegistro();
  servizio->AddDestinatario("a@x.example", "Anna");
  servizio->AddDestinatario("b@x.example", "Rossi, Bruno");
  servizio->AddAllegato("C:\\Doc\\a.pdf");
  servizio->vCorpoMail = "Corpo dei campi";
  servizio->vFlagCorpo = 1;
  interno.esito.StatoInvio = kvInvioNonImpostato;  // to see that no outcome touches it
  journal->Svuota();
  EXPECT_TRUE(servizio->InviaMailSMTP("Avviso", "Buongiorno ***(Nome)***"));
  EXPECT_THAT(
      journal->Righe({"smtp.", "rilascio", "ObjRegistroInvio.", "ConnectionADO.CreateCommand",
                      "Ambiente.CreaComponente"}),
      ElementsAre(
          "Ambiente.CreaComponenteSmtp", "smtp.AddAttachment C:\\Doc\\a.pdf", "smtp.ClearRecipient",
          "smtp.ServerAddr smtp.azienda.example", "smtp.UserName utente", "smtp.Password ***",
          "smtp.ServerPort 587", "smtp.ConnectType 1", "smtp.From Ufficio Vendite",
          "smtp.FromAddr <posta@azienda.example>",
          "smtp.AddRecipientEx Anna <a@x.example>;Rossi, Bruno <b@x.example>; 0", "smtp.Subject Avviso",
          "smtp.BodyText Buongiorno Anna, Rossi, Bruno", "smtp.FromAddr",
          "smtp.AddHeader Disposition-Notification-To: <posta@azienda.example>", "smtp.SendMail",
          "smtp.GetLastError", "ObjRegistroInvio.TipoCanale 3", "ObjRegistroInvio.EsitoInvio 0",
          "ObjRegistroInvio.MittenteInvio posta@azienda.example", "ObjRegistroInvio.CanaleInvio 1",
          "ObjRegistroInvio.RegistraInvio Anna|Acme S.p.A.|Anna <a@x.example>|||Avviso|Corpo dei campi",
          "ConnectionADO.CreateCommand",
          "ObjRegistroInvio.RegistraInvio Rossi, Bruno|Acme S.p.A.|Rossi, Bruno "
          "<b@x.example>|||Avviso|Corpo dei campi",
          "ConnectionADO.CreateCommand", "rilascio smtp"));
  EXPECT_EQ(servizio->vNome, "Anna, Rossi, Bruno");
  EXPECT_EQ(servizio->vIndDestinatario, "a@x.example, b@x.example");
  EXPECT_EQ(servizio->vDitta, "Acme S.p.A.");
  EXPECT_EQ(servizio->vCorpoMail, "Corpo dei campi");
  EXPECT_EQ(servizio->Stato(), kvInvioNonImpostato);
}

TEST_F(InvioDaSolo, TheEventCarriesTheSubjectOfTheCallAndTheMainAttachment) {
  ConRegistro();
  servizio->AddDestinatario("a@x.example", "Anna");
  servizio->vMailAttachment = "C:\\Doc\\a.pdf";
  servizio->vOggetto = "dei campi";
  servizio->InviaMailSMTP("Avviso", "Corpo");
  EXPECT_THAT(
      connessione->Statements(),
      Contains("exec SPFW_AttivaEventoGestionale 1, 89, 7, '<DATE_INS=14/11/2026/><TIME_INS=10:22:05/>"
               "<USR_COD=/><GRP_COD=/><MAIL_DEST=Anna/><AZ_COD=1/><AZ_DES=Acme S.p.A./>"
               "<MAIL_IND=Anna <a@x.example>/><MAIL_PATH=C:\\Doc\\a.pdf/><MAIL_OBJ=Avviso/>' , 1"));
  EXPECT_THAT(Registro(), Contains(HasSubstr("|Anna <a@x.example>|C:\\Doc\\a.pdf||Avviso|")));
}

TEST_F(InvioDaSolo, EveryBoxHasItsListAndABoxThatNobodyKnowsIsSkippedButRecorded) {
  servizio->BeforeSendMail = [&](auto&, auto&, auto&, auto&, auto&, auto&) {
    // The stages would drop such a recipient: a failed one leaves the collection as it was.
    throw host::Errore(1001, "Chiamante", "no");
  };
  servizio->ModalitaInvio(kvAutomatico);
  ConRegistro();
  Collezione().Add("a@x.example", "Anna");
  Collezione().AddFromLista("q@x.example", "Quinto", "", 3);
  Collezione().AddFromLista("c@x.example", "Carla", "", 1);
  Collezione().AddFromLista("d@x.example", "", "", 2);
  Collezione().AddFromLista("", "Elio", "", 1);
  EXPECT_TRUE(servizio->InviaMailSMTP("Avviso", "Corpo"));
  EXPECT_THAT(Liste(), ElementsAre("smtp.AddRecipientEx Anna <a@x.example>; 0",
                                   "smtp.AddRecipientEx Carla <c@x.example>;Elio <>; 1",
                                   "smtp.AddRecipientEx  <d@x.example>; 2"));
  EXPECT_EQ(servizio->vNome, "Anna, Carla, Elio");
  EXPECT_EQ(servizio->vIndDestinatario, "a@x.example, c@x.example, d@x.example");
  EXPECT_EQ(journal->Conta("ObjRegistroInvio.RegistraInvio"), 5U);
  EXPECT_EQ(journal->Conta("ObjRegistroInvio.RegistraInvio Quinto|"), 1U);
}

TEST_F(InvioDaSolo, TheCopyForTheSenderStandsBareAfterTheLastEntry) {
  interno.impostazioni.FlagBcc = true;
  servizio->InviaMailSMTP("Avviso", "Corpo");
  Collezione().AddFromLista("c@x.example", "Carla", "", 1);
  servizio->InviaMailSMTP("Avviso", "Corpo");
  EXPECT_THAT(journal->Righe({"smtp.AddRecipientEx"}),
              ElementsAre("smtp.AddRecipientEx  0", "smtp.AddRecipientEx posta@azienda.example 1",
                          "smtp.AddRecipientEx  0",
                          "smtp.AddRecipientEx Carla <c@x.example>;posta@azienda.example 1"));
}

TEST_F(InvioDaSolo, WithNoRecipientTheEmptyListIsHandedOnAndTheAnswerIsTrue) {
  EXPECT_TRUE(servizio->InviaMailSMTP("Avviso", "Corpo"));
  EXPECT_THAT(Liste(), ElementsAre("smtp.AddRecipientEx  0"));
  EXPECT_TRUE(Consegnato());
}

TEST_F(InvioDaSolo, ASecondCallSendsToTheSameRecipientsWithTheSameAttachments) {
  servizio->AddDestinatario("a@x.example", "Anna");
  servizio->AddAllegato("C:\\Doc\\a.pdf");
  servizio->InviaMailSMTP("Avviso", "Corpo");
  servizio->InviaMailSMTP("Avviso", "Corpo");
  EXPECT_THAT(journal->Righe({"smtp.AddRecipientEx", "smtp.AddAttachment"}),
              ElementsAre("smtp.AddAttachment C:\\Doc\\a.pdf", "smtp.AddRecipientEx Anna <a@x.example>; 0",
                          "smtp.AddAttachment C:\\Doc\\a.pdf", "smtp.AddRecipientEx Anna <a@x.example>; 0"));
}

TEST_F(InvioDaSolo, WhatListsAndFieldsHeldBeforeIsNotCarriedAlong) {
  servizio->DestinatariA("Vecchia<v@x.example>");
  servizio->DestinatariCC("Vecchia<v@x.example>");
  servizio->DestinatariCCn("Vecchia<v@x.example>");
  servizio->vNome = "Vecchia";
  servizio->vIndDestinatario = "v@x.example";
  servizio->AddDestinatario("a@x.example", "Anna");
  servizio->InviaMailSMTP("Avviso", "***(Nome)***|***(IndEmail)***");
  EXPECT_THAT(Liste(), ElementsAre("smtp.AddRecipientEx Anna <a@x.example>; 0"));
  EXPECT_THAT(journal->Righe({"smtp.BodyText"}), ElementsAre("smtp.BodyText Anna|a@x.example"));
  EXPECT_EQ(servizio->vNome, "Anna");
  EXPECT_EQ(servizio->vIndDestinatario, "a@x.example");
}

TEST_F(InvioDaSolo, AnEmptyBodyIsReplacedByTheStandingMessage) {
  servizio->AddDestinatario("a@x.example", "Anna");
  servizio->FlgMsgPers = true;
  servizio->MsgPers = "Messaggio per ***(Nome)***";
  servizio->InviaMailSMTP("Avviso", "");
  EXPECT_THAT(journal->Righe({"smtp.BodyText"}), ElementsAre("smtp.BodyText Messaggio per Anna"));
}

TEST_F(InvioDaSolo, AnEmptyBodyIsReplacedByTheStandardBody) {
  servizio->AddDestinatario("a@x.example", "Anna");
  servizio->InviaMailSMTP("Avviso", "");
  EXPECT_THAT(journal->Righe({"smtp.BodyText"}),
              ElementsAre(HasSubstr("Gli allegati inclusi in questa mail sono destinati  a \r\n Anna\r\n")));
}

TEST_F(InvioDaSolo, TheHandlersRecipientsAndAttachmentsCountItsSubjectAndBodyDoNot) {
  servizio->DestinatariA("Vecchia<v@x.example>");
  servizio->AddDestinatario("a@x.example", "Anna");
  std::string visti;
  servizio->BeforeSendMail = [&](auto& oggetto, auto& corpo, auto& a, auto& cc, auto&, auto& allegati) {
    visti = a;
    oggetto = "altro oggetto";
    corpo = "altro corpo";
    cc = "Carla<c@x.example>";
    allegati = "C:\\Doc\\b.pdf";
  };
  servizio->InviaMailSMTP("Avviso", "Corpo");
  EXPECT_EQ(visti, "Anna<a@x.example>");
  EXPECT_THAT(journal->Righe({"smtp.AddAttachment", "smtp.AddRecipientEx", "smtp.Subject", "smtp.BodyText"}),
              ElementsAre("smtp.AddAttachment C:\\Doc\\b.pdf", "smtp.AddRecipientEx Anna <a@x.example>; 0",
                          "smtp.AddRecipientEx Carla <c@x.example>; 1", "smtp.Subject Avviso",
                          "smtp.BodyText Corpo"));
  EXPECT_EQ(servizio->vOggetto, "altro oggetto");
  EXPECT_EQ(servizio->vCorpoMail, "altro corpo");
}

TEST_F(InvioDaSolo, ItsArgumentsMayBeTheServicesOwnFields) {
  servizio->AddDestinatario("a@x.example", "Anna");
  servizio->vOggetto = "Avviso";
  servizio->vCorpoMail = "Corpo";
  servizio->BeforeSendMail = [](auto& oggetto, auto& corpo, auto&, auto&, auto&, auto&) {
    oggetto = "altro oggetto";
    corpo = "altro corpo";
  };
  servizio->InviaMailSMTP(servizio->vOggetto, servizio->vCorpoMail);
  EXPECT_THAT(journal->Righe({"smtp.Subject", "smtp.BodyText"}),
              ElementsAre("smtp.Subject Avviso", "smtp.BodyText Corpo"));
}

TEST_F(InvioDaSolo, TheDefaultAccountIsLoadedAnewAndTheChosenSenderIsNotAsked) {
  interno.account.SmtpServer = "altro.example";
  interno.account.UsaMittenteScelto = true;
  servizio->vMittente = std::make_shared<Mittente>(ambiente);
  servizio->vMittente->Server("scelto.example");
  servizio->AddDestinatario("a@x.example", "Anna");
  servizio->InviaMailSMTP("Avviso", "Corpo");
  EXPECT_THAT(journal->Righe({"smtp.ServerAddr"}), ElementsAre("smtp.ServerAddr smtp.azienda.example"));
}

TEST_F(InvioDaSolo, AnAccountWithoutAuthenticationHandsOverNoCredentials) {
  Account({{"FW23_SERVERNAME", "smtp.azienda.example"},
           {"FW23_PORT", 25},
           {"FW23_TIMEOUT", 0},
           {"FW23_INDAUTH", 0},
           {"FW23_SSL", 0},
           {"FW98_MAILADDRESS", "posta@azienda.example"},
           {"FW98_USERNAME", "utente"},
           {"FW98_PASSWORD", "{segretissima}"},
           {"ALIAS", ""},
           {"LETTURA", host::Null{}},
           {"CONSEGNA", host::Null{}}});
  servizio->InviaMailSMTP("Avviso", "Corpo");
  EXPECT_EQ(journal->Conta("smtp.UserName"), 0U);
  EXPECT_EQ(journal->Conta("smtp.Password"), 0U);
  EXPECT_EQ(journal->Conta("smtp.ConnectType 0"), 1U);
}

TEST_F(InvioDaSolo, AnyAuthenticationOtherThanZeroHandsOverTheCredentialsAndTheWishForAReceiptIsTheServices) {
  Account({{"FW23_SERVERNAME", "smtp.azienda.example"},
           {"FW23_PORT", 25},
           {"FW23_TIMEOUT", 0},
           {"FW23_INDAUTH", -1},
           {"FW23_SSL", 0},
           {"FW98_MAILADDRESS", "posta@azienda.example"},
           {"FW98_USERNAME", "utente"},
           {"FW98_PASSWORD", "{segretissima}"},
           {"ALIAS", ""},
           {"LETTURA", host::Null{}},  // no receipt request of its own
           {"CONSEGNA", host::Null{}}});
  servizio->ReadReceipt = true;
  servizio->InviaMailSMTP("Avviso", "Corpo");
  EXPECT_EQ(journal->Conta("smtp.UserName utente"), 1U);
  EXPECT_EQ(journal->Conta("smtp.Password"), 1U);
  EXPECT_EQ(journal->Conta("smtp.AddHeader Disposition-Notification-To: <posta@azienda.example>"), 1U);
}

TEST_F(InvioDaSolo, WithoutAServerNothingIsSubmittedOrRecordedAndTheAnswerIsTrue) {
  SenzaAccount();
  ConRegistro();
  servizio->AddDestinatario("a@x.example", "Anna");
  servizio->AddAllegato("C:\\Doc\\a.pdf");
  journal->Svuota();
  EXPECT_TRUE(servizio->InviaMailSMTP("Avviso", "Corpo"));
  EXPECT_THAT(journal->Righe({"smtp.", "rilascio"}),
              ElementsAre("smtp.AddAttachment C:\\Doc\\a.pdf", "rilascio smtp"));
  EXPECT_THAT(Registro(), IsEmpty());
  EXPECT_THAT(Messaggi(), IsEmpty());
}

TEST_F(InvioDaSolo, WithoutAServerTheBodyIsWorkedOutAllTheSame) {
  SenzaAccount();
  servizio->silentMode = true;
  journal->Fallisce("ConnectionADO.Execute -1           SELECT  FW07_USERNAME",
                    {1001, "Database", "connessione interrotta"});
  EXPECT_FALSE(servizio->InviaMailSMTP("Avviso", "Corpo"));
  EXPECT_EQ(servizio->errDescription, "connessione interrotta in ORVE_MAIL: InviaMailSMTP");
}

TEST_F(InvioDaSolo, AHandlerThatRaisesBeforeThereIsACollectionEndsTheCall) {
  servizio->silentMode = true;
  servizio->ModalitaInvio(kvAutomatico);
  servizio->BeforeSendMail = [](auto&, auto&, auto&, auto&, auto&, auto&) {
    throw host::Errore(1001, "Chiamante", "no");
  };
  EXPECT_FALSE(servizio->InviaMailSMTP("Avviso", "Corpo"));
  EXPECT_EQ(servizio->errNumber, "91");
  EXPECT_FALSE(Consegnato());
}

TEST_F(InvioDaSolo, TheHandlerSeesTheCompanyOfBeforeTheCall) {
  servizio->vDitta = "prima";
  std::string vista;
  servizio->BeforeSendMail = [&](auto&, auto&, auto&, auto&, auto&, auto&) { vista = servizio->vDitta; };
  servizio->InviaMailSMTP("Avviso", "Corpo");
  EXPECT_EQ(vista, "prima");
  EXPECT_EQ(servizio->vDitta, "Acme S.p.A.");
}

TEST_F(InvioDaSolo, ARefusedMessageAnswersTrueLeavesTheStateAndStandsInTheRegister) {
  ambiente->risultatoSmtp = 4;
  servizio->IsPec(true);
  servizio->vFlagCorpo = 1;
  servizio->vCorpoMail = "dei campi";
  ConRegistro();
  servizio->AddDestinatario("a@x.example", "Anna");
  journal->Svuota();
  EXPECT_TRUE(servizio->InviaMailSMTP("Avviso", "Corpo"));
  EXPECT_EQ(servizio->Stato(), kvOK);
  EXPECT_THAT(
      Registro(),
      ElementsAre("ObjRegistroInvio.TipoCanale 5", "ObjRegistroInvio.EsitoInvio 1",
                  "ObjRegistroInvio.MittenteInvio posta@azienda.example", "ObjRegistroInvio.CanaleInvio 1",
                  "ObjRegistroInvio.RegistraInvio Anna|Acme S.p.A.|Anna <a@x.example>||Server si rifiuta "
                  "di inoltrare mail ad uno o più indirizzi|Avviso|dei campi"));
  EXPECT_THAT(connessione->Statements(),
              Contains(HasSubstr("<DESRES=Server si rifiuta di inoltrare mail ad uno o più indirizzi/>")));
}

TEST_F(InvioDaSolo, AComponentThatFailsIsShownAndRecordedAsAConnectionErrorAndTheAnswerIsTrue) {
  ConRegistro();
  servizio->silentMode = true;
  servizio->AddDestinatario("a@x.example", "Anna");
  journal->Fallisce("smtp.SendMail", {-2147467259, "SMTP", "guasto del componente"});
  EXPECT_TRUE(servizio->InviaMailSMTP("Avviso", "Corpo"));
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg guasto del componente|48|ORVE_MAIL: "
                                      "InviaMailConSSL|(assente)"));
  EXPECT_THAT(Registro(), Contains(HasSubstr("|Errore di connessione con il server|Avviso|")));
  EXPECT_EQ(servizio->errDescription, "");
}

TEST_F(InvioDaSolo, WithoutARegisterNothingIsRecorded) {
  servizio->AddDestinatario("a@x.example", "Anna");
  EXPECT_TRUE(servizio->InviaMailSMTP("Avviso", "Corpo"));
  EXPECT_EQ(journal->Conta("ConnectionADO.CreateCommand"), 0U);
}

TEST_F(InvioDaSolo, AnErrorIsShownAndTheAnswerIsFalse) {
  servizio->errDescription = "prima";
  servizio->errNumber = "0";
  journal->Fallisce("Ambiente.CreaComponenteSmtp", {429, "Prova", "componente assente"});
  EXPECT_FALSE(servizio->InviaMailSMTP("Avviso", "Corpo"));
  EXPECT_THAT(Messaggi(),
              ElementsAre("ObjMessaggi.MostraMsg componente assente|48|ORVE_MAIL: InviaMailSMTP|(assente)"));
  EXPECT_EQ(servizio->errDescription, "prima");
  EXPECT_EQ(servizio->errNumber, "0");
}

TEST_F(InvioDaSolo, InSilentModeAnErrorStandsInTheTwoFields) {
  servizio->silentMode = true;
  servizio->errDescription = "prima";
  servizio->errNumber = "0";
  journal->Fallisce("Ambiente.CreaComponenteSmtp", {-2147221164, "Prova", "componente assente"});
  EXPECT_FALSE(servizio->InviaMailSMTP("Avviso", "Corpo"));
  EXPECT_THAT(Messaggi(), IsEmpty());
  EXPECT_EQ(servizio->errDescription, "componente assente in ORVE_MAIL: InviaMailSMTP");
  EXPECT_EQ(servizio->errNumber, "-2147221164");
}

TEST_F(InvioDaSolo, AResultThatDoesNotFitSixteenBitsIsAnErrorAfterTheOutcome) {
  ambiente->risultatoSmtp = 70000;
  servizio->silentMode = true;
  ConRegistro();
  servizio->AddDestinatario("a@x.example", "Anna");
  journal->Svuota();
  EXPECT_FALSE(servizio->InviaMailSMTP("Avviso", "Corpo"));
  EXPECT_THAT(Registro(), ElementsAre("ObjRegistroInvio.TipoCanale 3", "ObjRegistroInvio.EsitoInvio 1"));
  EXPECT_EQ(servizio->errDescription, "Overflow in ORVE_MAIL: InviaMailSMTP");
  EXPECT_EQ(servizio->errNumber, "6");
}

TEST_F(InvioDaSolo, TheTwoFlagsOfTheCallHaveNoEffect) {
  servizio->AddDestinatario("a@x.example", "Anna");
  journal->Svuota();
  servizio->InviaMailSMTP("Avviso", "Corpo");
  const auto senza = journal->Righe({"smtp."});
  const bool vero = true;
  journal->Svuota();
  servizio->InviaMailSMTP("Avviso", "Corpo", &vero, &vero);
  EXPECT_EQ(journal->Righe({"smtp."}), senza);
}

TEST_F(InvioDaSolo, ThePasswordStandsInNoMessageAndNoField) {
  servizio->silentMode = true;
  journal->Fallisce("smtp.ServerPort", {1001, "Prova", "guasto"});
  servizio->InviaMailSMTP("Avviso", "Corpo");
  EXPECT_THAT(journal->Righe(), Not(Contains(HasSubstr("segretissima"))));
  EXPECT_THAT(servizio->errDescription, Not(HasSubstr("segretissima")));
}

}  // namespace
}  // namespace orve
