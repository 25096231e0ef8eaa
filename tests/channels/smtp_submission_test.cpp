#include <memory>
#include <string>
#include <vector>

#include "channels/smtp_channel.h"
#include "channels/smtp_submission.h"
#include "fakes/fake_smtp.h"
#include "fakes/servizio_di_prova.h"

namespace orve {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ConsegnaSmtp : public fakes::ServizioDiProva {
 protected:
  ConsegnaSmtp() {
    interno.account.SmtpUtente = "utente del servizio";
    interno.account.SmtpPassword = "parola del servizio";
  }
  struct Messaggio {
    std::string server = "smtp.orve.example";
    std::int16_t porta = 25;
    bool autenticazione = true;
    std::int16_t crypt = 0;
    std::string mittente = "\"Orve\"<info@orve.example>";
    std::string elencoA = "Anna <a@x.it>";
    std::string elencoCC;
    std::string elencoCCn;
    std::string oggetto = "Oggetto";
    std::string corpo = "Corpo";
    bool ricevuta = false;
  };
  host::Variant Consegna(const Messaggio& m) {
    journal->Svuota();
    Account& account = interno.account;
    account.SmtpServer = m.server;
    return InviaMailConSSL(account, interno.contesto, interno.oggetti, componente,
                           {m.mittente, m.elencoA, m.elencoCC, m.elencoCCn, m.oggetto, m.corpo, m.porta,
                            m.autenticazione, m.crypt, m.ricevuta});
  }
  void ConHTML() {
    connessione->Risponde("AIT_MAIL_HTML", {{{"", 1}}});
    connessione->Risponde("AIT_FIRME", {{{"FW95_VALORE", "FIRME  "}}});
    connessione->Risponde("INFORMATION_SCHEMA", {{{"", 1}}});
    connessione->Risponde("FIRMA_HTML",
                          {{{"FIRMA_HTML", "<b>Maria</b>"}, {"FONT", "Arial"}, {"DIMENSIONE", 4}}});
    servizio->ActiveInterface = fakes::CreaFakeInterfaccia(*ambiente);
  }
  void ConAllegati(std::vector<host::Variant> percorsi) {
    servizio->vElencoAllegati = host::Variant::Array(std::move(percorsi));
  }

  std::shared_ptr<fakes::FakeSmtp> componente = std::make_shared<fakes::FakeSmtp>(journal, -1);
};

constexpr const char* kImpostazioneHTML =
    "ConnectionADO.Execute 1  SELECT 1 FROM FW95_SETTINGS WITH (NOLOCK)  WHERE FW95_CODICE = 'AIT_MAIL_HTML' "
    "AND FW95_VALORE = 1 ";

TEST_F(ConsegnaSmtp, ThePlainMessageInItsOrder) {
  EXPECT_EQ(Consegna({}), host::Variant(-1));
  EXPECT_THAT(journal->Righe(),
              ElementsAre("smtp.ClearRecipient", "smtp.ServerAddr smtp.orve.example",
                          "smtp.UserName utente del servizio", "smtp.Password ***", "smtp.ServerPort 25",
                          "smtp.ConnectType 0", "smtp.From Orve", "smtp.FromAddr <info@orve.example>",
                          "smtp.AddRecipientEx Anna <a@x.it> 0", "smtp.Subject Oggetto", kImpostazioneHTML,
                          "smtp.BodyText Corpo", "smtp.SendMail", "smtp.GetLastError"));
}

TEST_F(ConsegnaSmtp, TheCredentialsAreThoseOfTheServiceAndNotTheArguments) {
  (void)Consegna({});
  EXPECT_THAT(journal->Righe(), Contains("smtp.UserName utente del servizio"));
  EXPECT_EQ(componente->password, "parola del servizio");
}

TEST_F(ConsegnaSmtp, WithoutAuthenticationNoCredentialsAreSet) {
  Messaggio messaggio;
  messaggio.autenticazione = false;
  (void)Consegna(messaggio);
  EXPECT_THAT(journal->Righe({"smtp.UserName", "smtp.Password"}), IsEmpty());
  EXPECT_EQ(componente->password, "");
}

TEST_F(ConsegnaSmtp, WithoutAServerNoneOfTheFiveMembersIsTouched) {
  Messaggio messaggio;
  messaggio.server.clear();
  EXPECT_EQ(Consegna(messaggio), host::Variant(-1));
  EXPECT_THAT(journal->Righe({"smtp.ServerAddr", "smtp.UserName", "smtp.Password", "smtp.ServerPort",
                              "smtp.ConnectType"}),
              IsEmpty());
  EXPECT_EQ(journal->Conta("smtp.SendMail"), 1U);
}

TEST_F(ConsegnaSmtp, TheConnectionByCryptType) {
  struct Caso {
    std::int16_t crypt;
    const char* want;
  };
  const std::vector<Caso> casi = {{-32768, "smtp.ConnectType 0"}, {-1, "smtp.ConnectType 0"},
                                  {0, "smtp.ConnectType 0"},      {1, "smtp.ConnectType 1"},
                                  {2, "smtp.ConnectType 1"},      {32767, "smtp.ConnectType 1"}};
  for (const auto& caso : casi) {
    Messaggio messaggio;
    messaggio.crypt = caso.crypt;
    (void)Consegna(messaggio);
    EXPECT_THAT(journal->Righe({"smtp.ConnectType"}), ElementsAre(caso.want)) << caso.crypt;
  }
}

TEST_F(ConsegnaSmtp, TheSenderTextIsSplitAtItsDoubleQuotes) {
  struct Caso {
    const char* etichetta;
    const char* mittente;
    const char* wantFrom;
    const char* wantFromAddr;
  };
  const std::vector<Caso> casi = {
      {"name", "\"Orve S.p.A.\"<i@x.it>", "Orve S.p.A.", "<i@x.it>"},
      {"no name", "\"\"<i@x.it>", "", "<i@x.it>"},
      {"a quote in the name shifts the parts", R"("A"B"<i@x.it>)", "A", "B"},
      {"no address", "\"A\"<>", "A", "<>"},
  };
  for (const auto& caso : casi) {
    Messaggio messaggio;
    messaggio.mittente = caso.mittente;
    (void)Consegna(messaggio);
    EXPECT_THAT(journal->Righe({"smtp.From"}), ElementsAre(std::string("smtp.From ") + caso.wantFrom,
                                                           std::string("smtp.FromAddr ") + caso.wantFromAddr))
        << caso.etichetta;
  }
}

TEST_F(ConsegnaSmtp, ASenderTextWithoutQuotesIsAnError) {
  for (const char* mittente : {"", "i@x.it", "\"Orve"}) {
    Messaggio messaggio;
    messaggio.mittente = mittente;
    EXPECT_EQ(Consegna(messaggio), host::Variant()) << mittente;
    EXPECT_THAT(Messaggi(),
                ElementsAre("ObjMessaggi.MostraMsg Indice non compreso nell'intervallo|48|ORVE_MAIL: "
                            "InviaMailConSSL|(assente)"))
        << mittente;
    EXPECT_EQ(journal->Conta("smtp.SendMail"), 0U) << mittente;
  }
}

TEST_F(ConsegnaSmtp, EmptyCopyListsAreNotHandedOnAndAnEmptyAListIs) {
  Messaggio messaggio;
  messaggio.elencoA.clear();
  (void)Consegna(messaggio);
  EXPECT_THAT(journal->Righe({"smtp.AddRecipientEx"}), ElementsAre("smtp.AddRecipientEx  0"));
  messaggio.elencoCC = "c";
  messaggio.elencoCCn = "n";
  (void)Consegna(messaggio);
  EXPECT_THAT(journal->Righe({"smtp.AddRecipientEx"}),
              ElementsAre("smtp.AddRecipientEx  0", "smtp.AddRecipientEx c 1", "smtp.AddRecipientEx n 2"));
}

TEST_F(ConsegnaSmtp, ADeliveryNotificationIsAskedForBetweenSenderAndRecipients) {
  servizio->vNotifyDelivery = true;
  (void)Consegna({});
  EXPECT_THAT(journal->Righe({"smtp.FromAddr", "smtp.DeliveryNotification", "smtp.AddRecipientEx"}),
              ElementsAre("smtp.FromAddr <info@orve.example>", "smtp.DeliveryNotification 14",
                          "smtp.AddRecipientEx Anna <a@x.it> 0"));
}

TEST_F(ConsegnaSmtp, TheReceiptHeaderCarriesTheAngleBrackets) {
  Messaggio messaggio;
  messaggio.ricevuta = true;
  (void)Consegna(messaggio);
  EXPECT_THAT(
      journal->Righe({"smtp.FromAddr", "smtp.BodyText", "smtp.AddHeader", "smtp.SendMail"}),
      ElementsAre("smtp.FromAddr <info@orve.example>", "smtp.BodyText Corpo", "smtp.FromAddr",
                  "smtp.AddHeader Disposition-Notification-To: <info@orve.example>", "smtp.SendMail"));
}

TEST_F(ConsegnaSmtp, TheReceiptGoesToTheAddressAsTheComponentHoldsIt) {
  class ConAltroMittente : public fakes::FakeSmtp {
   public:
    using FakeSmtp::FakeSmtp;
    using FakeSmtp::FromAddr;
    std::string FromAddr() const override {
      (void)FakeSmtp::FromAddr();
      return "<come@componente.example>";
    }
  };
  componente = std::make_shared<ConAltroMittente>(journal, -1);
  Messaggio messaggio;
  messaggio.ricevuta = true;
  (void)Consegna(messaggio);
  EXPECT_THAT(journal->Righe({"smtp.AddHeader"}),
              ElementsAre("smtp.AddHeader Disposition-Notification-To: <come@componente.example>"));
}

TEST_F(ConsegnaSmtp, WithoutAReceiptTheAddressIsNotReadBack) {
  (void)Consegna({});
  EXPECT_EQ(journal->Conta("smtp.FromAddr"), 1U);
}

TEST_F(ConsegnaSmtp, TheHTMLMessageInItsOrderWithTheSignatureAfterTheDocument) {
  ConHTML();
  EXPECT_EQ(Consegna({}), host::Variant(-1));
  EXPECT_THAT(
      journal->Righe({"smtp.Subject", "ConnectionADO", "smtp.Body", "smtp.SendMail"}),
      ElementsAre("smtp.Subject Oggetto", kImpostazioneHTML,
                  "ConnectionADO.Execute 1  SELECT FW95_VALORE FROM FW95_SETTINGS WITH (NOLOCK)  WHERE "
                  "FW95_CODICE = 'AIT_FIRME' ",
                  "ConnectionADO.Execute -1 SELECT TOP 1 1 FROM INFORMATION_SCHEMA.TABLES where TABLE_NAME "
                  "= 'FIRME'",
                  "ConnectionADO.Execute 1  SELECT FIRMA_HTML, ISNULL(FONT,'') FONT, ISNULL(DIMENSIONE,0) "
                  "DIMENSIONE \r\n FROM FIRME\r\n WHERE IDUTENTE_FW07 = 7\r\n",
                  "smtp.BodyFormat 1",
                  "smtp.BodyText <!DOCTYPE html>\r\n<html>\r\n<body>\r\n"
                  "<font face = \"Arial\" size = \"4\">Corpo</font><br/>\r\n"
                  "</body>\r\n</html>\r\n<b>Maria</b>",
                  "smtp.SendMail"));
}

TEST_F(ConsegnaSmtp, HTMLNeedsTheSettingAndTheInterface) {
  struct Caso {
    const char* etichetta;
    bool impostazione;
    bool interfaccia;
    bool want;
  };
  for (const auto& caso : std::vector<Caso>{{"both", true, true, true},
                                            {"setting only", true, false, false},
                                            {"interface only", false, true, false},
                                            {"neither", false, false, false}}) {
    ConHTML();
    if (!caso.impostazione) connessione->Risponde("AIT_MAIL_HTML", {});
    if (!caso.interfaccia) servizio->ActiveInterface.reset();
    (void)Consegna({});
    EXPECT_EQ(journal->Conta("smtp.BodyFormat"), caso.want ? 1U : 0U) << caso.etichetta;
    EXPECT_EQ(journal->Conta("smtp.BodyText Corpo"), caso.want ? 0U : 1U) << caso.etichetta;
    // The setting is read in any case.
    EXPECT_EQ(journal->Conta(kImpostazioneHTML), 1U) << caso.etichetta;
  }
}

TEST_F(ConsegnaSmtp, AnHTMLBodyOfBlanksIsTheSignatureAlone) {
  ConHTML();
  Messaggio messaggio;
  messaggio.corpo = "  ";
  (void)Consegna(messaggio);
  EXPECT_THAT(journal->Righe({"smtp.Body"}), ElementsAre("smtp.BodyFormat 1", "smtp.BodyText <b>Maria</b>"));
}

TEST_F(ConsegnaSmtp, TheResultIsTheComponentsWhateverItIs) {
  for (const auto& risultato :
       {host::Variant(0), host::Variant(std::int16_t{7}), host::Variant(host::Null{})}) {
    componente = std::make_shared<fakes::FakeSmtp>(journal, risultato);
    EXPECT_EQ(Consegna({}), risultato);
  }
}

TEST_F(ConsegnaSmtp, AnErrorOfAnyMemberIsShownInEveryModeAndGivesNoValue) {
  servizio->vNotifyDelivery = true;
  ConHTML();
  servizio->ActiveInterface = fakes::CreaFakeInterfaccia(*ambiente, 7, true, false);
  Messaggio messaggio;
  messaggio.ricevuta = true;
  messaggio.elencoCC = "c";
  const std::vector<const char*> membri = {"smtp.ClearRecipient",
                                           "smtp.ServerAddr",
                                           "smtp.UserName",
                                           "smtp.Password",
                                           "smtp.ServerPort",
                                           "smtp.ConnectType",
                                           "smtp.From ",
                                           "smtp.FromAddr",
                                           "smtp.DeliveryNotification",
                                           "smtp.AddRecipientEx Anna",
                                           "smtp.AddRecipientEx c",
                                           "smtp.Subject",
                                           "smtp.BodyFormat",
                                           "smtp.BodyText",
                                           "smtp.AddHeader",
                                           "smtp.SendMail",
                                           "smtp.GetLastError"};
  for (const auto modo : {kvManuale, kvAutomatico, kvSemiAuto, kvListaDistribuzione}) {
    servizio->ModalitaInvio(modo);
    servizio->silentMode = !servizio->silentMode;
    for (const char* membro : membri) {
      journal->Fallisce(membro, {1001, "Prova", "guasto di prova"});
      EXPECT_EQ(Consegna(messaggio), host::Variant()) << membro;
      journal->DimenticaPiani();
      EXPECT_THAT(journal->Righe().back(),
                  "ObjMessaggi.MostraMsg guasto di prova|48|ORVE_MAIL: "
                  "InviaMailConSSL|(assente)")
          << membro;
      EXPECT_EQ(Messaggi().size(), 1U) << membro;
    }
  }
}

TEST_F(ConsegnaSmtp, AComponentThatIsNoObjectIsShown) {
  componente.reset();
  EXPECT_EQ(Consegna({}), host::Variant());
  EXPECT_THAT(journal->Righe(),
              ElementsAre("ObjMessaggi.MostraMsg Variabile oggetto non impostata|48|ORVE_MAIL: "
                          "InviaMailConSSL|(assente)"));
}

TEST_F(ConsegnaSmtp, AFailingSettingIsShownAndTheMessageGoesOutPlain) {
  ConHTML();
  servizio->ActiveInterface = fakes::CreaFakeInterfaccia(*ambiente, 7, true, false);
  journal->Fallisce("ConnectionADO.Execute", {1001, "Prova", "guasto di prova"});
  EXPECT_EQ(Consegna({}), host::Variant(-1));
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 1001-guasto di prova in CLSFW_MAILSERVER: "
                                      "EsisteParamHTMLFW95|0||(assente)"));
  EXPECT_THAT(journal->Righe({"smtp.Body"}), ElementsAre("smtp.BodyText Corpo"));
}

TEST_F(ConsegnaSmtp, TheAttachmentsJoinedByTheirCount) {
  struct Caso {
    const char* etichetta;
    host::Variant allegati;
    const char* want;
    std::vector<std::string> wantMembri;
  };
  const std::vector<Caso> casi = {
      {"none", {}, "", {}},
      {"an empty array", host::Variant::Array{}, "", {}},
      {"one has no separator",
       host::Variant::Array{"C:\\a.pdf"},
       "C:\\a.pdf",
       {"smtp.AddAttachment C:\\a.pdf"}},
      {"several",
       host::Variant::Array{"C:\\a.pdf", "C:\\b.pdf", "C:\\c.pdf"},
       R"(C:\a.pdf|C:\b.pdf|C:\c.pdf)",
       {"smtp.AddAttachment C:\\a.pdf", "smtp.AddAttachment C:\\b.pdf", "smtp.AddAttachment C:\\c.pdf"}},
      {"an empty path in front leaves no separator",
       host::Variant::Array{"", "b"},
       "b",
       {"smtp.AddAttachment ", "smtp.AddAttachment b"}},
      {"an empty path after it leaves one",
       host::Variant::Array{"a", ""},
       "a|",
       {"smtp.AddAttachment a", "smtp.AddAttachment "}},
      {"the same file twice",
       host::Variant::Array{"a", "a"},
       "a|a",
       {"smtp.AddAttachment a", "smtp.AddAttachment a"}},
  };
  for (const auto& caso : casi) {
    journal->Svuota();
    servizio->vElencoAllegati = caso.allegati;
    EXPECT_EQ(AddAdditionalAttachmentSMTP(interno.messaggio, interno.oggetti, componente), caso.want)
        << caso.etichetta;
    EXPECT_EQ(journal->Righe(), caso.wantMembri) << caso.etichetta;
  }
}

TEST_F(ConsegnaSmtp, AFileThatCannotBeAttachedEndsTheListAndTheOnesBeforeItCount) {
  ConAllegati({"C:\\a.pdf", "C:\\manca.pdf", "C:\\c.pdf"});
  journal->Fallisce("smtp.AddAttachment C:\\manca.pdf", {53, "Prova", "File non trovato"});
  journal->Svuota();
  EXPECT_EQ(AddAdditionalAttachmentSMTP(interno.messaggio, interno.oggetti, componente), "C:\\a.pdf");
  EXPECT_THAT(journal->Righe(),
              ElementsAre("smtp.AddAttachment C:\\a.pdf", "smtp.AddAttachment C:\\manca.pdf",
                          "ObjMessaggi.MostraMsg File non trovato|48|ORVE_MAIL:CLSFW_MAILSERVER: "
                          "AddAdditionalAttachmentSMTP|(assente)"));
}

TEST_F(ConsegnaSmtp, AMessageGoesOutWithoutTheFileThatCouldNotBeAttached) {
  ConAllegati({"C:\\a.pdf", "C:\\manca.pdf", "C:\\c.pdf"});
  ConRegistro();
  Collezione().Add("a@x.it", "Anna");
  interno.account.SmtpServer = "smtp.orve.example";
  servizio->vFlagCorpo = 1;
  journal->Fallisce("smtp.AddAttachment C:\\manca.pdf", {53, "Prova", "File non trovato"});
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  EXPECT_EQ(servizio->Stato(), kvOK);
  EXPECT_EQ(journal->Conta("smtp.AddAttachment C:\\c.pdf"), 0U);
  EXPECT_EQ(journal->Conta("smtp.SendMail"), 1U);
  EXPECT_THAT(journal->Righe({"ObjRegistroInvio.RegistraInvio"}),
              ElementsAre("ObjRegistroInvio.RegistraInvio Anna||Anna<a@x.it>|C:\\a.pdf|||"));
}

TEST_F(ConsegnaSmtp, AnAttachmentListThatIsNoListIsShown) {
  for (const auto& elenco : {host::Variant("C:\\a.pdf"), host::Variant(host::Null{}), host::Variant(1)}) {
    journal->Svuota();
    servizio->vElencoAllegati = elenco;
    EXPECT_EQ(AddAdditionalAttachmentSMTP(interno.messaggio, interno.oggetti, componente), "");
    EXPECT_THAT(journal->Righe(),
                ElementsAre("ObjMessaggi.MostraMsg Tipo non corrispondente|48|ORVE_MAIL:CLSFW_MAILSERVER: "
                            "AddAdditionalAttachmentSMTP|(assente)"));
  }
}

TEST_F(ConsegnaSmtp, APathWithoutATextFormEndsTheList) {
  ConAllegati({"C:\\a.pdf", host::Null{}, "C:\\c.pdf"});
  EXPECT_EQ(AddAdditionalAttachmentSMTP(interno.messaggio, interno.oggetti, componente), "C:\\a.pdf");
  EXPECT_THAT(Messaggi(),
              ElementsAre("ObjMessaggi.MostraMsg Utilizzo non valido di Null|48|ORVE_MAIL:CLSFW_MAILSERVER: "
                          "AddAdditionalAttachmentSMTP|(assente)"));
}

}  // namespace
}  // namespace orve
