#include <string>
#include <vector>

#include "channels/canale_smtp.h"
#include "channels/smtp_channel.h"

namespace orve {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kStatementGruppo =
    "ConnectionADO.Execute -1           SELECT  FW06_CODICE,FW06_DESCR \r\n"
    " FROM    FW07_APPUSER \r\n"
    "         INNER JOIN FW00_GRPUSRASSOC ON FW00_ID_FW07= FW07_APPUSER.FW07_ID AND FW00_FLGPREF = 1  \r\n"
    "         INNER JOIN FW06_GROUPUSR ON FW06_ID = FW00_GRPUSRASSOC.FW00_ID_FW06  \r\n"
    " WHERE   FW07_ID = 7";
constexpr const char* kStatementUtente =
    "ConnectionADO.Execute -1           SELECT  FW07_USERNAME,FW07_DESCR  FROM    FW07_APPUSER  WHERE   "
    "FW07_ID = 7";
constexpr const char* kStatementHTML =
    "ConnectionADO.Execute 1  SELECT 1 FROM FW95_SETTINGS WITH (NOLOCK)  WHERE FW95_CODICE = 'AIT_MAIL_HTML' "
    "AND FW95_VALORE = 1 ";

TEST_F(CanaleSmtp, AWholeSendInItsOrder) {
  ConRegistro();
  ConDestinatario("uno@bianchi.example", "Uno");
  ConDestinatario("due@bianchi.example", "Due, il secondo", kvCasellaCC);
  ConDestinatario("tre@bianchi.example", "", kvCasellaCCn);
  ConAllegati({"C:\\Doc\\a.pdf", "C:\\Doc\\b.pdf"});
  servizio->ReadReceipt = true;
  servizio->vNotifyDelivery = true;
  journal->Svuota();
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);

  const std::string riga = "ObjRegistroInvio.RegistraInvio ";
  const std::string codaRiga = R"(|C:\Doc\a.pdf|C:\Doc\b.pdf||Fattura 12|Gentile Uno)";
  const std::string evento =
      "ConnectionADO.Execute 1 exec SPFW_AttivaEventoGestionale 1, 89, 7, "
      "'<DATE_INS=14/11/2026/><TIME_INS=10:22:05/><USR_COD=U01/><GRP_COD=AMM/>";
  const std::string codaEvento = R"(<MAIL_PATH=C:\Doc\a.pdf|C:\Doc\b.pdf/><MAIL_OBJ=Fattura 12/>' , 1)";
  const std::string ditta = "<AZ_COD=1/><AZ_DES=Bianchi S.r.l./>";
  const std::vector<std::string> want = {
      "Ambiente.CreaComponenteSmtp",
      "smtp.AddAttachment C:\\Doc\\a.pdf",
      "smtp.AddAttachment C:\\Doc\\b.pdf",
      kStatementGruppo,
      kStatementUtente,
      "smtp.ClearRecipient",
      "smtp.ServerAddr smtp.orve.example",
      "smtp.UserName utente",
      "smtp.Password ***",
      "smtp.ServerPort 587",
      "smtp.ConnectType 1",
      "smtp.From Orve S.p.A.",
      "smtp.FromAddr <info@orve.example>",
      "smtp.DeliveryNotification 14",
      "smtp.AddRecipientEx Uno <uno@bianchi.example> 0",
      "smtp.AddRecipientEx \"Due, il secondo\" <due@bianchi.example> 1",
      "smtp.AddRecipientEx  <tre@bianchi.example> 2",
      "smtp.Subject Fattura 12",
      kStatementHTML,
      "smtp.BodyText Gentile Uno",
      "smtp.FromAddr",
      "smtp.AddHeader Disposition-Notification-To: <info@orve.example>",
      "smtp.SendMail",
      "smtp.GetLastError",
      "ObjRegistroInvio.TipoCanale 3",
      "ObjRegistroInvio.EsitoInvio 0",
      "ObjRegistroInvio.MittenteInvio SMTP: info@orve.example",
      "ObjRegistroInvio.CanaleInvio 77",
      riga + "Uno|Bianchi S.r.l.|Uno<uno@bianchi.example>" + codaRiga,
      evento + "<MAIL_DEST=Uno/>" + ditta + "<MAIL_IND=Uno<uno@bianchi.example>/>" + codaEvento,
      riga + "Due, il secondo|Bianchi S.r.l.|Due, il secondo<due@bianchi.example>" + codaRiga,
      evento + "<MAIL_DEST=Due, il secondo/>" + ditta + "<MAIL_IND=Due, il secondo<due@bianchi.example>/>" +
          codaEvento,
      riga + "|Bianchi S.r.l.|<tre@bianchi.example>" + codaRiga,
      evento + ditta + "<MAIL_IND=<tre@bianchi.example>/>" + codaEvento,
      "rilascio smtp",
  };
  EXPECT_EQ(SenzaRicercaUtente(), want);
  EXPECT_EQ(servizio->Stato(), kvOK);
}

TEST_F(CanaleSmtp, AfterTheRunNamesListAndBodyStayInTheService) {
  ConDestinatario("uno@x.it", "Uno");
  ConDestinatario("due@x.it", "Due");
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  EXPECT_EQ(servizio->vNome, "Uno, Due");
  EXPECT_EQ(servizio->vIndDestinatario, "Uno <uno@x.it>;Due <due@x.it>");
  EXPECT_EQ(servizio->vCorpoMail, "Gentile Uno, Due");
}

TEST_F(CanaleSmtp, TheBodyIsTheOneFromBeforeTheAttachments) {
  ConDestinatario("uno@x.it", "Uno");
  ConAllegati({"C:\\a.pdf"});
  journal->Quando("smtp.AddAttachment", [this] { servizio->vCorpoMail = "altro"; });
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  EXPECT_EQ(servizio->vCorpoMail, "Gentile Uno");
}

TEST_F(CanaleSmtp, TheListsByBox) {
  struct Voce {
    std::int16_t casella;
    const char* nome;
  };
  struct Caso {
    const char* etichetta;
    std::vector<Voce> voci;
    const char* wantA;
    const char* wantCC;
    const char* wantCCn;
    const char* wantNome;
  };
  const std::vector<Caso> casi = {
      {"nobody", {}, "", "", "", ""},
      {"one each", {{0, "A"}, {1, "B"}, {2, "C"}}, "A <x>", "B <x>", "C <x>", "A"},
      {"two each",
       {{0, "A"}, {0, "B"}, {1, "C"}, {1, "D"}, {2, "E"}, {2, "F"}},
       "A <x>;B <x>",
       "C <x>;D <x>",
       "E <x>;F <x>",
       "A, B"},
      {"an unknown box", {{3, "A"}}, "A <x>;", "", "", "A"},
      {"an unknown box after an A", {{0, "A"}, {3, "B"}}, "A <x>B <x>;", "", "", "A, B"},
      {"an A after an unknown box", {{3, "A"}, {0, "B"}}, "A <x>;;B <x>", "", "", "A, B"},
      {"two unknown boxes", {{-1, "A"}, {99, "B"}}, "A <x>;B <x>;", "", "", "A, B"},
      {"no names", {{0, ""}, {3, ""}, {1, ""}, {2, ""}}, " <x> <x>;", " <x>", " <x>", ""},
      {"names with commas",
       {{0, "A, B"}, {1, "C, D"}, {2, "E, F"}},
       "\"A, B\" <x>",
       "\"C, D\" <x>",
       "\"E, F\" <x>",
       "A, B"},
  };
  for (const auto& caso : casi) {
    journal->Svuota();
    servizio->vNome.clear();
    servizio->vCollDestinatari.reset();
    Collezione();
    for (const auto& voce : caso.voci) ConDestinatario("x", voce.nome, voce.casella);
    SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
                 interno.oggetti);
    std::vector<std::string> want = {std::string(caso.wantA) + " 0"};
    if (*caso.wantCC != '\0') want.push_back(std::string(caso.wantCC) + " 1");
    if (*caso.wantCCn != '\0') want.push_back(std::string(caso.wantCCn) + " 2");
    EXPECT_EQ(Elenchi(), want) << caso.etichetta;
    EXPECT_EQ(servizio->vNome, caso.wantNome) << caso.etichetta;
    EXPECT_EQ(servizio->vIndDestinatario, caso.wantA) << caso.etichetta;
  }
}

TEST_F(CanaleSmtp, CasellaThreeAfterAnAGivesTwoEntriesWithoutASeparatorAndOneAtTheEnd) {
  ConDestinatario("a@x.it", "Anna", 0);
  ConDestinatario("b@x.it", "Bruno", 3);
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  EXPECT_THAT(Elenchi(), ElementsAre("Anna <a@x.it>Bruno <b@x.it>; 0"));
}

TEST_F(CanaleSmtp, AnEmptyAListIsHandedOnAllTheSame) {
  ConDestinatario("cc@x.it", "Carla", kvCasellaCC);
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  EXPECT_THAT(Elenchi(), ElementsAre(" 0", "Carla <cc@x.it> 1"));
}

TEST_F(CanaleSmtp, ABlankRecipientIsNotSkipped) {
  ConDestinatario("", "");
  ConDestinatario("a@x.it", "Anna");
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  EXPECT_THAT(Elenchi(), ElementsAre(" <>;Anna <a@x.it> 0"));
}

TEST_F(CanaleSmtp, ANameWithACommaIsQuotedInTheListAndBareInTheRegister) {
  ConRegistro();
  ConDestinatario("m@x.it", "Rossi, Mario");
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  EXPECT_THAT(Elenchi(), ElementsAre("\"Rossi, Mario\" <m@x.it> 0"));
  EXPECT_THAT(journal->Righe({"ObjRegistroInvio.RegistraInvio"}),
              ElementsAre("ObjRegistroInvio.RegistraInvio Rossi, Mario|Bianchi S.r.l.|Rossi, "
                          "Mario<m@x.it>|||Fattura 12|Gentile Rossi, Mario"));
}

TEST_F(CanaleSmtp, NamesAreAppendedToWhatTheFieldHolds) {
  servizio->vNome = "prima ";
  ConDestinatario("a@x.it", "Anna");
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  EXPECT_EQ(servizio->vNome, "prima Anna");
}

TEST_F(CanaleSmtp, TheLastTwoCharactersOfTheNamesGoInAnyCase) {
  ConDestinatario("a@x.it", "", kvCasellaCC);
  struct Caso {
    const char* nome;
    const char* want;
  };
  for (const auto& caso :
       std::vector<Caso>{{"Anna", "An"}, {"è così", "è co"}, {"ab", ""}, {"a", ""}, {"", ""}}) {
    servizio->vNome = caso.nome;
    SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
                 interno.oggetti);
    EXPECT_EQ(servizio->vNome, caso.want) << caso.nome;
  }
}

TEST_F(CanaleSmtp, FlagBccGivesAVisibleCopyThatStandsBareInFrontOfTheCCEntries) {
  interno.impostazioni.FlagBcc = true;
  ConDestinatario("a@x.it", "Anna");
  ConDestinatario("c@x.it", "Carla", kvCasellaCC);
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  EXPECT_THAT(Elenchi(), ElementsAre("Anna <a@x.it> 0", "info@orve.example;Carla <c@x.it> 1"));
}

TEST_F(CanaleSmtp, FlagBccAloneGivesTheBareSenderAsCopy) {
  interno.impostazioni.FlagBcc = true;
  ConDestinatario("a@x.it", "Anna");
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  EXPECT_THAT(Elenchi(), ElementsAre("Anna <a@x.it> 0", "info@orve.example 1"));
}

TEST_F(CanaleSmtp, TheChosenSenderWinsOverTheLoadedAccount) {
  ConMittenteScelto();
  ConDestinatario("a@x.it", "Anna");
  interno.impostazioni.FlagBcc = true;
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  EXPECT_THAT(
      journal->Righe({"smtp.ServerAddr", "smtp.UserName", "smtp.Password", "smtp.ServerPort",
                      "smtp.ConnectType", "smtp.From", "smtp.DeliveryNotification", "smtp.AddHeader",
                      "smtp.AddRecipientEx"}),
      ElementsAre("smtp.ServerAddr smtp.altro.example", "smtp.ServerPort 465", "smtp.ConnectType 1",
                  "smtp.From Vendite", "smtp.FromAddr <vendite@orve.example>",
                  "smtp.AddRecipientEx Anna <a@x.it> 0", "smtp.AddRecipientEx vendite@orve.example 1",
                  "smtp.FromAddr", "smtp.AddHeader Disposition-Notification-To: <vendite@orve.example>"));
  EXPECT_EQ(interno.account.SmtpServer, "smtp.altro.example");
  EXPECT_EQ(interno.account.SmtpPorta, 465);
  EXPECT_EQ(interno.account.SmtpAuth, 0);
  EXPECT_EQ(interno.account.SmtpUtente, "altro");
  EXPECT_EQ(interno.account.SmtpPassword, "altrasegreta");
  EXPECT_EQ(interno.account.SmtpCrypt, 2);
  EXPECT_EQ(servizio->vSenderAddress, "vendite@orve.example");
  EXPECT_EQ(servizio->vSenderName, "Vendite");
  EXPECT_TRUE(servizio->ReadReceipt);
}

TEST_F(CanaleSmtp, OnlyTheValueOneOfTheChosenSenderAsksForAReceipt) {
  ConDestinatario("a@x.it", "Anna");
  for (const std::int16_t ricevuta : std::vector<std::int16_t>{-2, -1, 0, 1, 2}) {
    ConMittenteScelto();
    servizio->vMittente->ReadRcpt(ricevuta);
    servizio->ReadReceipt = true;
    SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
                 interno.oggetti);
    EXPECT_EQ(servizio->ReadReceipt, ricevuta == 1) << ricevuta;
  }
}

TEST_F(CanaleSmtp, AChosenSenderWithoutTheMarkIsNotUsed) {
  ConMittenteScelto();
  interno.account.UsaMittenteScelto = false;
  ConDestinatario("a@x.it", "Anna");
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  EXPECT_THAT(journal->Righe({"smtp.ServerAddr"}), ElementsAre("smtp.ServerAddr smtp.orve.example"));
}

TEST_F(CanaleSmtp, TheMarkWithoutAChosenSenderKeepsTheLoadedAccount) {
  interno.account.UsaMittenteScelto = true;
  ConDestinatario("a@x.it", "Anna");
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  EXPECT_THAT(journal->Righe({"smtp.ServerAddr"}), ElementsAre("smtp.ServerAddr smtp.orve.example"));
}

TEST_F(CanaleSmtp, AnyAuthenticationOtherThanZeroHandsOverTheCredentials) {
  ConDestinatario("a@x.it", "Anna");
  for (const std::int16_t auth : std::vector<std::int16_t>{-1, 0, 1, 2}) {
    journal->Svuota();
    interno.account.SmtpAuth = auth;
    SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
                 interno.oggetti);
    EXPECT_EQ(journal->Conta("smtp.UserName"), auth == 0 ? 0U : 1U) << auth;
    EXPECT_EQ(journal->Conta("smtp.Password"), auth == 0 ? 0U : 1U) << auth;
  }
}

TEST_F(CanaleSmtp, WithoutAServerNothingIsSubmittedAndNothingRecorded) {
  interno.account.SmtpServer.clear();
  interno.esito.StatoInvio = kvInvioNonImpostato;
  ConRegistro();
  ConDestinatario("a@x.it", "Anna");
  ConAllegati({"C:\\a.pdf"});
  journal->Svuota();
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  EXPECT_EQ(servizio->Stato(), kvInvioNonImpostato);
  EXPECT_THAT(journal->Righe({"smtp.", "rilascio"}),
              ElementsAre("smtp.AddAttachment C:\\a.pdf", "rilascio smtp"));
  EXPECT_THAT(Registro(), IsEmpty());
  EXPECT_THAT(Messaggi(), IsEmpty());
  EXPECT_EQ(servizio->vNome, "Anna");
  EXPECT_EQ(servizio->vIndDestinatario, "Anna <a@x.it>");
  EXPECT_EQ(servizio->vCorpoMail, "Gentile Anna");
}

TEST_F(CanaleSmtp, EachSendHasAComponentOfItsOwn) {
  ConDestinatario("a@x.it", "Anna");
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  EXPECT_THAT(journal->Righe({"Ambiente.CreaComponenteSmtp", "smtp.SendMail", "rilascio"}),
              ElementsAre("Ambiente.CreaComponenteSmtp", "smtp.SendMail", "rilascio smtp",
                          "Ambiente.CreaComponenteSmtp", "smtp.SendMail", "rilascio smtp"));
}

TEST_F(CanaleSmtp, HostileTextIsHandedOnAsItStands) {
  ConRegistro();
  for (const std::string& testo : {std::string("a\0b", 3), std::string("\xFF\xC3"), std::string("a\r\nb"),
                                   std::string("\"';|<>"), std::string(1U << 20U, 'x')}) {
    ConsegnaConTesto(testo);
    std::string elenco = testo;
    elenco.append(" <").append(testo).append("> 0");
    std::string riga = "ObjRegistroInvio.RegistraInvio ";
    riga.append(testo).append("|").append(testo).append("|").append(testo).append("<").append(testo);
    riga.append(">|").append(testo).append("||").append(testo).append("|").append(testo);
    EXPECT_THAT(Elenchi(), ElementsAre(elenco));
    EXPECT_THAT(journal->Righe({"smtp.Subject", "smtp.BodyText"}),
                ElementsAre("smtp.Subject " + testo, "smtp.BodyText " + testo));
    EXPECT_THAT(journal->Righe({"ObjRegistroInvio.RegistraInvio"}), ElementsAre(riga));
    EXPECT_EQ(servizio->Stato(), kvOK);
  }
}

TEST_F(CanaleSmtp, ManyRecipientsGoIntoOneSubmission) {
  constexpr int kQuanti = 20000;
  std::string want;
  for (int i = 0; i < kQuanti; ++i) {
    const std::string numero = std::to_string(i);
    ConDestinatario(numero + "@x.it", "N" + numero);
    if (i > 0) want.append(";");
    want.append("N").append(numero).append(" <").append(numero).append("@x.it>");
  }
  journal->Svuota();
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  EXPECT_THAT(Elenchi(), ElementsAre(want.append(" 0")));
  EXPECT_EQ(journal->Conta("smtp.SendMail"), 1U);
}

}  // namespace
}  // namespace orve
