// The Outlook channel over fakes: how the sender's address is read by version, the order in which the item is
// filled, what is recorded, and how little a failed send leaves.
#include <string>
#include <vector>

#include "canale_di_prova.h"
#include "channels/outlook_channel.h"

namespace orve {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

class CanaleOutlook : public CanaleDiProva {
 protected:
  CanaleOutlook() : CanaleDiProva(kvOutlook) {
    interno.oggetti.objOutlookApp = ambiente->CreaOutlook();
    journal->Svuota();
  }

  void ConHTML(const std::string& firma) {
    servizio->ActiveInterface = fakes::CreaFakeInterfaccia(*ambiente, 7, true, false);
    connessione->Risponde("'AIT_MAIL_HTML'", {{{"", 1}}});
    connessione->Risponde("'AIT_FIRME'", {{{"FW95_VALORE", "FIRME  "}}});
    connessione->Risponde("INFORMATION_SCHEMA.TABLES where TABLE_NAME = 'FIRME'", {{{"", 1}}});
    connessione->Risponde(" FROM FIRME", {{{"FIRMA_HTML", firma}, {"FONT", "Arial"}, {"DIMENSIONE", 2}}});
  }
  [[nodiscard]] std::vector<std::string> Elemento() const { return journal->Righe({"MailItem."}); }
  [[nodiscard]] bool Inviato() const { return journal->Conta("MailItem.Send") == 1; }
};

TEST_F(CanaleOutlook, FillsTheItemSendsItAndRecordsEachRecipientInThisOrder) {
  ConRegistro();
  ConAllegati({"C:\\Doc\\a.pdf", "C:\\Doc\\b.pdf"});
  Collezione().Add("anna@x.example", "Anna");
  Collezione().AddFromLista("carla@x.example", "Carla", "", 1);
  Collezione().AddFromLista("dario@x.example", "", "", 2);
  servizio->ReadReceipt = true;
  journal->Svuota();
  servizio->InviaMail();
  EXPECT_THAT(journal->Righe({"ObjRegistroInvio.", "Outlook.", "MailItem.", "Attachments.", "rilascio ",
                              "ConnectionADO.CreateCommand"}),
              ElementsAre("ObjRegistroInvio.TipoCanale 3", "Outlook.Version", "Outlook.createItem 0",
                          "MailItem.ReadReceiptRequested true", "MailItem.attachments",
                          "Attachments.Add C:\\Doc\\a.pdf", "Attachments.Add C:\\Doc\\b.pdf",
                          "MailItem.To Anna <anna@x.example>", "MailItem.cc Carla <carla@x.example>",
                          "MailItem.Bcc  <dario@x.example>", "MailItem.Subject Fattura 12",
                          "MailItem.body Buongiorno", "MailItem.body Buongiorno", "MailItem.Send",
                          "ObjRegistroInvio.EsitoInvio 0", "ObjRegistroInvio.CanaleInvio 1",
                          "ObjRegistroInvio.MittenteInvio ",
                          "ObjRegistroInvio.RegistraInvio Anna|Acme S.p.A.|Anna <anna@x.example>|"
                          "C:\\Doc\\a.pdf|C:\\Doc\\b.pdf|(assente)|Fattura 12|Buongiorno",
                          "ConnectionADO.CreateCommand",
                          "ObjRegistroInvio.RegistraInvio Carla|Acme S.p.A.|Carla <carla@x.example>|"
                          "C:\\Doc\\a.pdf|C:\\Doc\\b.pdf|(assente)|Fattura 12|Buongiorno",
                          "ConnectionADO.CreateCommand",
                          "ObjRegistroInvio.RegistraInvio |Acme S.p.A.| <dario@x.example>|"
                          "C:\\Doc\\a.pdf|C:\\Doc\\b.pdf|(assente)|Fattura 12|Buongiorno",
                          "ConnectionADO.CreateCommand", "rilascio Attachments", "rilascio MailItem"));
  EXPECT_EQ(servizio->Stato(), kvOK);
  EXPECT_EQ(interno.oggetti.objOutlookItem, nullptr);
  EXPECT_EQ(interno.oggetti.objOutlookAllegati, nullptr);
  EXPECT_NE(interno.oggetti.objOutlookApp, nullptr);
  EXPECT_THAT(Messaggi(), IsEmpty());
}

TEST_F(CanaleOutlook, TheEventsCarryTheAddressWithABlankAndNoResult) {
  ConRegistro();
  Collezione().Add("anna@x.example", "Anna");
  servizio->InviaMail();
  EXPECT_THAT(
      connessione->Statements(),
      Contains("exec SPFW_AttivaEventoGestionale 1, 89, 7, '<DATE_INS=14/11/2026/><TIME_INS=10:22:05/>"
               "<USR_COD=/><GRP_COD=/><MAIL_DEST=Anna/><AZ_COD=1/><AZ_DES=Acme S.p.A./>"
               "<MAIL_IND=Anna <anna@x.example>/><MAIL_OBJ=Fattura 12/>' , 1"));
}

struct CasoVersione {
  const char* etichetta;
  const char* versione;
  std::vector<std::string> wantVia;
  const char* wantMittente;
};

class VersioneDiOutlook : public CanaleOutlook, public ::testing::WithParamInterface<CasoVersione> {};

TEST_P(VersioneDiOutlook, DecidesHowTheSendersAddressIsRead) {
  ambiente->versioneOutlook = GetParam().versione;
  ConRegistro();
  Collezione().Add("anna@x.example", "Anna");
  journal->Svuota();
  servizio->InviaMail();
  std::vector<std::string> wantVia = {"Outlook.Version"};
  wantVia.insert(wantVia.end(), GetParam().wantVia.begin(), GetParam().wantVia.end());
  wantVia.emplace_back("Outlook.createItem 0");
  EXPECT_EQ(journal->Righe({"Outlook."}), wantVia);
  EXPECT_THAT(Registro(), Contains(std::string("ObjRegistroInvio.MittenteInvio ") + GetParam().wantMittente));
  EXPECT_TRUE(Inviato());
  EXPECT_EQ(servizio->Stato(), kvOK);
}

const std::vector<std::string> kViaDelPrimoAccount = {"Outlook.Explorers", "Outlook.Explorers.Session",
                                                      "Outlook.Session.Accounts", "Outlook.Accounts.Item 1",
                                                      "Outlook.Accounts.Item.SmtpAddress"};

INSTANTIATE_TEST_SUITE_P(
    Tabella, VersioneDiOutlook,
    ::testing::Values(
        CasoVersione{"Outlook11",
                     "11.0.0.8173",
                     {"Outlook.Explorers", "Outlook.Explorers.Session", "Outlook.Session.CurrentUser",
                      "Outlook.CurrentUser.Address"},
                     "Outlook: utente@outlook.example"},
        CasoVersione{"Outlook12", "12.0.0.6680", kViaDelPrimoAccount, "Outlook: account@outlook.example"},
        CasoVersione{"Outlook13", "13.0.0.1", {}, ""},
        CasoVersione{"Outlook14", "14.0.0.7268", kViaDelPrimoAccount, "Outlook: account@outlook.example"},
        CasoVersione{"Outlook15", "15.0.0.5603", {}, ""}, CasoVersione{"Outlook16", "16.0.0.4266", {}, ""},
        CasoVersione{"OnlyTheFirstPointCounts", "12.", kViaDelPrimoAccount,
                     "Outlook: account@outlook.example"},
        CasoVersione{"BlanksAroundTheNumber", " 16 .0", {}, ""}),
    [](const auto& caso) { return std::string(caso.param.etichetta); });

struct CasoVersioneRotta {
  const char* etichetta;
  const char* versione;
  const char* wantErrore;
};

class VersioneIlleggibile : public CanaleOutlook, public ::testing::WithParamInterface<CasoVersioneRotta> {};

TEST_P(VersioneIlleggibile, EndsTheSendBeforeAnItemIsMade) {
  ambiente->versioneOutlook = GetParam().versione;
  servizio->ModalitaInvio(kvManuale);
  interno.esito.StatoInvio = kvInvioNonImpostato;
  ConRegistro();
  Collezione().Add("anna@x.example", "Anna");
  journal->Svuota();
  servizio->InviaMail();
  EXPECT_EQ(journal->Conta("Outlook.createItem"), 0U);
  EXPECT_THAT(Registro(), ElementsAre("ObjRegistroInvio.TipoCanale 3"));
  EXPECT_EQ(servizio->Stato(), kvInvioNonImpostato);
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg " + std::string(GetParam().wantErrore) +
                                      " in ORVE_MAILSERVER:CLSFW_MAILSERVER - SendWithOutlook|0||(assente)"));
}

INSTANTIATE_TEST_SUITE_P(
    Tabella, VersioneIlleggibile,
    ::testing::Values(CasoVersioneRotta{"AVersionTextWithoutAPoint", "16",
                                        "5-Chiamata di routine o argomento non validi"},
                      CasoVersioneRotta{"AnEmptyText", "", "5-Chiamata di routine o argomento non validi"},
                      CasoVersioneRotta{"NoNumberInFrontOfThePoint", ".16", "13-Tipo non corrispondente"},
                      CasoVersioneRotta{"WordsInFrontOfThePoint", "Office.16", "13-Tipo non corrispondente"},
                      CasoVersioneRotta{"ANumberBeyondSixteenBits", "32768.0", "6-Overflow"}),
    [](const auto& caso) { return std::string(caso.param.etichetta); });

TEST_F(CanaleOutlook, AMissingApplicationIsAnErrorAfterTheKindOfChannel) {
  interno.oggetti.objOutlookApp.reset();
  ConRegistro();
  Collezione().Add("anna@x.example", "Anna");
  journal->Svuota();
  servizio->InviaMail();
  EXPECT_THAT(Registro(), ElementsAre("ObjRegistroInvio.TipoCanale 3"));
  EXPECT_THAT(UltimaRigaLog(), HasSubstr("ErroreInvio   SendWithOutlook   "));
}

TEST_F(CanaleOutlook, AStepMissingOnTheWayToTheAddressIsAnError) {
  ambiente->versioneOutlook = "12.0";
  servizio->ModalitaInvio(kvManuale);
  journal->Fallisce("Outlook.Accounts.Item 1", {-2147352567, "Outlook", "indice fuori dai limiti"});
  Collezione().Add("anna@x.example", "Anna");
  servizio->InviaMail();
  EXPECT_FALSE(Inviato());
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg -2147352567-indice fuori dai limiti in "
                                      "ORVE_MAILSERVER:CLSFW_MAILSERVER - SendWithOutlook|0||(assente)"));
}

TEST_F(CanaleOutlook, CertifiedMailIsToldFirst) {
  servizio->IsPec(true);
  ConRegistro();
  Collezione().Add("anna@x.example", "Anna");
  journal->Svuota();
  servizio->InviaMail();
  EXPECT_EQ(journal->Righe().front(), "ObjRegistroInvio.TipoCanale 5");
}

TEST_F(CanaleOutlook, TheRegisterIsToldTheChannelOfTheSettings) {
  servizio->SrvMailInstallato = kvSMTPSSLMail;
  ConRegistro();
  Collezione().Add("anna@x.example", "Anna");
  SendWithOutlook(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
                  interno.oggetti);
  EXPECT_THAT(Registro(), Contains("ObjRegistroInvio.CanaleInvio 77"));
}

TEST_F(CanaleOutlook, AnAddressWithBlanksAroundItIsTrimmedInTheListsButNotInTheRegister) {
  ConRegistro();
  Collezione().Add("  anna@x.example ", " Anna ");
  servizio->InviaMail();
  EXPECT_THAT(Elemento(), Contains("MailItem.To  Anna  <anna@x.example>"));
  EXPECT_EQ(servizio->vIndDestinatario, " Anna  <anna@x.example>");
  EXPECT_THAT(Registro(), Contains(HasSubstr("| Anna  <  anna@x.example >|")));
}

TEST_F(CanaleOutlook, NamesAreNotQuoted) {
  Collezione().Add("rossi@x.example", "Rossi, Mario");
  servizio->InviaMail();
  EXPECT_THAT(Elemento(), Contains("MailItem.To Rossi, Mario <rossi@x.example>"));
}

TEST_F(CanaleOutlook, TheListsAreJoinedAndTheNamesOfTheMainRecipientsGoAfterWhatVNomeHolds) {
  servizio->vNome = "Prima, ";
  servizio->vCorpoMail = "***(Nome)***|***(IndEmail)***";
  Collezione().Add("a@x.example", "Anna");
  Collezione().AddFromLista("c@x.example", "Carla", "", 1);
  Collezione().Add("b@x.example", "");
  Collezione().AddFromLista("d@x.example", "Dario", "", 1);
  Collezione().AddFromLista("e@x.example", "Elio", "", 2);
  Collezione().AddFromLista("f@x.example", "Fabio", "", 2);
  Collezione().Add("g@x.example", "Gino");
  servizio->InviaMail();
  EXPECT_THAT(journal->Righe({"MailItem.To", "MailItem.cc", "MailItem.Bcc"}),
              ElementsAre("MailItem.To Anna <a@x.example>; <b@x.example>;Gino <g@x.example>",
                          "MailItem.cc Carla <c@x.example>;Dario <d@x.example>",
                          "MailItem.Bcc Elio <e@x.example>;Fabio <f@x.example>"));
  EXPECT_EQ(servizio->vNome, "Prima, Anna, Gino");
  EXPECT_EQ(servizio->vCorpoMail, "Prima, Anna, Gino|Anna <a@x.example>; <b@x.example>;Gino <g@x.example>");
}

TEST_F(CanaleOutlook, ABoxThatNobodyKnowsHasItsSeparatorAfterIt) {
  Collezione().Add("a@x.example", "Anna");
  Collezione().AddFromLista("b@x.example", "Bruno", "", 3);
  Collezione().Add("c@x.example", "Carla");
  servizio->InviaMail();
  EXPECT_THAT(Elemento(), Contains("MailItem.To Anna <a@x.example>Bruno <b@x.example>;;Carla <c@x.example>"));
  EXPECT_EQ(servizio->vNome, "Anna, Bruno, Carla");
}

TEST_F(CanaleOutlook, WithoutARecipientTheItemIsMadeAndFilledButNotSent) {
  const bool conCollezione[] = {true, false};
  for (const bool presente : conCollezione) {
    servizio->vCollDestinatari.reset();
    if (presente) Collezione();
    servizio->vElencoAllegati = {};
    ConAllegati({"C:\\Doc\\a.pdf"});
    interno.esito.StatoInvio = kvErroreInvioMail;
    ConRegistro();
    journal->Svuota();
    servizio->InviaMail();
    EXPECT_THAT(journal->Righe({"Outlook.createItem", "MailItem.", "Attachments.", "ObjRegistroInvio."}),
                ElementsAre("ObjRegistroInvio.TipoCanale 3", "Outlook.createItem 0",
                            "MailItem.ReadReceiptRequested false", "MailItem.attachments",
                            "Attachments.Add C:\\Doc\\a.pdf"))
        << presente;
    EXPECT_EQ(servizio->Stato(), kvErroreInvioMail) << presente;
    EXPECT_NE(interno.oggetti.objOutlookItem, nullptr) << presente;
    EXPECT_NE(interno.oggetti.objOutlookAllegati, nullptr) << presente;
    EXPECT_THAT(Messaggi(), IsEmpty());
    EXPECT_EQ(UltimaRigaLog(), "");
  }
}

struct CasoCopia {
  const char* etichetta;
  const char* versione;
  bool conCC;
  const char* wantCC;
};

class CopiaDelMittente : public CanaleOutlook, public ::testing::WithParamInterface<CasoCopia> {};

TEST_P(CopiaDelMittente, StandsAfterTheCopyListWithItsPrefix) {
  ambiente->versioneOutlook = GetParam().versione;
  interno.impostazioni.FlagBcc = true;
  Collezione().Add("a@x.example", "Anna");
  if (GetParam().conCC) Collezione().AddFromLista("c@x.example", "Carla", "", 1);
  servizio->InviaMail();
  EXPECT_THAT(journal->Righe({"MailItem.cc", "MailItem.Bcc"}),
              ElementsAre(std::string("MailItem.cc ") + GetParam().wantCC, "MailItem.Bcc "));
}

INSTANTIATE_TEST_SUITE_P(
    Tabella, CopiaDelMittente,
    ::testing::Values(
        CasoCopia{"Outlook11", "11.0", true, "Carla <c@x.example>;Outlook: utente@outlook.example"},
        CasoCopia{"Outlook11WithoutCopies", "11.0", false, ";Outlook: utente@outlook.example"},
        CasoCopia{"Outlook12", "12.0", true, "Carla <c@x.example>;Outlook: account@outlook.example"},
        CasoCopia{"Outlook14", "14.0", true, "Carla <c@x.example>;Outlook: account@outlook.example"},
        CasoCopia{"Outlook15LeavesATrailingSeparator", "15.0", true, "Carla <c@x.example>;"},
        CasoCopia{"Outlook16LeavesATrailingSeparator", "16.0", true, "Carla <c@x.example>;"},
        CasoCopia{"Outlook16WithoutCopies", "16.0", false, ";"}),
    [](const auto& caso) { return std::string(caso.param.etichetta); });

TEST_F(CanaleOutlook, TheAttachmentsEndInSilenceAtTheFirstRefusedFile) {
  ConRegistro();
  ConAllegati({"C:\\Doc\\a.pdf", "C:\\Doc\\manca.pdf", "C:\\Doc\\c.pdf"});
  journal->Fallisce("Attachments.Add C:\\Doc\\manca.pdf", {-2147024894, "Outlook", "file non trovato"});
  Collezione().Add("a@x.example", "Anna");
  servizio->InviaMail();
  EXPECT_THAT(journal->Righe({"Attachments."}),
              ElementsAre("Attachments.Add C:\\Doc\\a.pdf", "Attachments.Add C:\\Doc\\manca.pdf"));
  EXPECT_TRUE(Inviato());
  EXPECT_THAT(Registro(), Contains(HasSubstr("|C:\\Doc\\a.pdf|(assente)|")));
  EXPECT_THAT(Messaggi(), IsEmpty());
  EXPECT_EQ(UltimaRigaLog(), "");
}

TEST_F(CanaleOutlook, AnAttachmentValueThatIsNoListIsLeftOut) {
  servizio->vElencoAllegati = "C:\\Doc\\a.pdf";
  Collezione().Add("a@x.example", "Anna");
  servizio->InviaMail();
  EXPECT_EQ(journal->Conta("Attachments.Add"), 0U);
  EXPECT_TRUE(Inviato());
}

TEST_F(CanaleOutlook, WhereTheCompanyAsksForItTheBodyIsHTMLWithTheSignatureAfterIt) {
  ConHTML("<b>Orve</b>  ");
  ConRegistro();
  Collezione().Add("a@x.example", "Anna");
  servizio->InviaMail();
  const std::string html =
      "<!DOCTYPE html>\r\n<html>\r\n<body>\r\n<font face = \"Arial\" size = \"2\">Buongiorno</font><br/>\r\n"
      "</body>\r\n</html>\r\n<b>Orve</b>";
  EXPECT_THAT(Elemento(), ElementsAre("MailItem.ReadReceiptRequested false", "MailItem.attachments",
                                      "MailItem.To Anna <a@x.example>", "MailItem.cc ", "MailItem.Bcc ",
                                      "MailItem.Subject Fattura 12", "MailItem.body Buongiorno",
                                      "MailItem.BodyFormat 1", "MailItem.HTMLBody " + html, "MailItem.Send"));
  EXPECT_EQ(servizio->vCorpoMail, html);
  EXPECT_THAT(Registro(), Contains(HasSubstr("|Fattura 12|" + html)));
}

TEST_F(CanaleOutlook, WithoutTheHostsInterfaceTheBodyStaysPlainButTheSettingIsAsked) {
  ConHTML("<b>Orve</b>");
  servizio->ActiveInterface.reset();
  Collezione().Add("a@x.example", "Anna");
  servizio->InviaMail();
  EXPECT_THAT(connessione->Statements(), Contains(HasSubstr("'AIT_MAIL_HTML'")));
  EXPECT_THAT(connessione->Statements(), Not(Contains(HasSubstr("'AIT_FIRME'"))));
  EXPECT_EQ(journal->Conta("MailItem.body Buongiorno"), 2U);
  EXPECT_EQ(journal->Conta("MailItem.HTMLBody"), 0U);
}

TEST_F(CanaleOutlook, AFailedSendLeavesTheKindOfChannelAndNothingElse) {
  for (const auto modo : {kvAutomatico, kvManuale}) {
    servizio->vCollDestinatari.reset();
    Collezione().Add("a@x.example", "Anna");
    servizio->ModalitaInvio(modo);
    interno.esito.StatoInvio = kvInvioNonImpostato;
    ConRegistro();
    journal->Svuota();
    journal->DimenticaPiani();
    journal->Fallisce("MailItem.Send", {-2147467259, "Outlook", "operazione annullata"});
    servizio->InviaMail();
    EXPECT_THAT(Registro(), ElementsAre("ObjRegistroInvio.TipoCanale 3")) << modo;
    EXPECT_EQ(journal->Conta("ConnectionADO.CreateCommand"), 0U) << modo;
    EXPECT_EQ(servizio->Stato(), kvInvioNonImpostato) << modo;
    EXPECT_NE(interno.oggetti.objOutlookItem, nullptr) << modo;
    EXPECT_NE(interno.oggetti.objOutlookAllegati, nullptr) << modo;
    if (modo == kvManuale) {
      EXPECT_EQ(UltimaRigaLog(), "");
      EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg -2147467259-operazione annullata in "
                                          "ORVE_MAILSERVER:CLSFW_MAILSERVER - SendWithOutlook|0||(assente)"));
    } else {
      EXPECT_THAT(UltimaRigaLog(), HasSubstr("ErroreInvio   SendWithOutlook   "));
      EXPECT_THAT(Messaggi(), IsEmpty());
    }
  }
}

TEST_F(CanaleOutlook, TheItemOfAFailedRunIsReplacedByTheNext) {
  Collezione().Add("a@x.example", "Anna");
  journal->Fallisce("MailItem.Send");
  servizio->InviaMail();
  EXPECT_EQ(journal->Conta("rilascio"), 0U);
  journal->DimenticaPiani();
  servizio->InviaMail();
  EXPECT_EQ(journal->Conta("rilascio MailItem"), 2U);
  EXPECT_EQ(journal->Conta("rilascio Attachments"), 2U);
  EXPECT_EQ(servizio->Stato(), kvOK);
}

TEST_F(CanaleOutlook, TheItemOfAFailedRunStaysWhereTheNextRunCannotMakeOne) {
  Collezione().Add("a@x.example", "Anna");
  journal->Fallisce("MailItem.Send");
  servizio->InviaMail();
  const auto elemento = interno.oggetti.objOutlookItem;
  const auto allegati = interno.oggetti.objOutlookAllegati;
  journal->Fallisce("Outlook.createItem");
  servizio->InviaMail();
  ASSERT_NE(elemento, nullptr);
  EXPECT_EQ(interno.oggetti.objOutlookItem, elemento);
  EXPECT_EQ(interno.oggetti.objOutlookAllegati, allegati);
}

TEST_F(CanaleOutlook, AFailingRegisterAfterTheSendLeavesTheStateAndTheItem) {
  ConRegistro();
  Collezione().Add("a@x.example", "Anna");
  interno.esito.StatoInvio = kvErroreInvioMail;
  journal->Fallisce("ObjRegistroInvio.RegistraInvio", {1001, "Registro", "pieno"});
  servizio->InviaMail();
  EXPECT_TRUE(Inviato());
  EXPECT_EQ(servizio->Stato(), kvErroreInvioMail);
  EXPECT_NE(interno.oggetti.objOutlookItem, nullptr);
  EXPECT_THAT(UltimaRigaLog(), HasSubstr("ErroreInvio   SendWithOutlook   "));
}

TEST_F(CanaleOutlook, WithoutARegisterNothingIsRecordedAndNoEventIsRaised) {
  Collezione().Add("a@x.example", "Anna");
  servizio->InviaMail();
  EXPECT_THAT(Registro(), IsEmpty());
  EXPECT_THAT(connessione->Statements(), Not(Contains(StartsWith("exec "))));
  EXPECT_EQ(servizio->Stato(), kvOK);
}

TEST_F(CanaleOutlook, TheDeliveryNotificationHasNoEffectHere) {
  Collezione().Add("a@x.example", "Anna");
  servizio->InviaMail();
  const auto senza = Elemento();
  servizio->vNotifyDelivery = true;
  servizio->vNome.clear();
  servizio->vCollDestinatari.reset();
  Collezione().Add("a@x.example", "Anna");
  journal->Svuota();
  servizio->InviaMail();
  EXPECT_EQ(Elemento(), senza);
}

}  // namespace
}  // namespace orve
