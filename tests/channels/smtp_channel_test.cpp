#include "channels/smtp_channel.h"

#include <string>
#include <vector>

#include "fakes/servizio_di_prova.h"

namespace orve {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

TEST(QuotaNome, ACommaInFirstPositionDoesNotQuote) {
  EXPECT_EQ(QuotaNome(",Rossi"), ",Rossi");
}

TEST(QuotaNome, QuotesByWhereACommaStands) {
  struct Caso {
    const char* etichetta;
    const char* nome;
    const char* want;
  };
  const std::vector<Caso> casi = {
      {"empty", "", ""},
      {"no comma", "Mario Rossi", "Mario Rossi"},
      {"comma inside", "Rossi, Mario", "\"Rossi, Mario\""},
      {"comma at the second character", "R,", "\"R,\""},
      {"comma behind an accented first character", "È,x", "\"È,x\""},
      {"comma last", "Rossi,", "\"Rossi,\""},
      {"only a comma", ",", ","},
      {"commas first and later", ",Rossi,", "\",Rossi,\""},
      {"two commas in front", ",,", "\",,\""},
      {"semicolon", "Rossi; Mario", "Rossi; Mario"},
      {"quotes inside are not doubled", "Bar \"Sport\", Roma", "\"Bar \"Sport\", Roma\""},
  };
  for (const auto& caso : casi) EXPECT_EQ(QuotaNome(caso.nome), caso.want) << caso.etichetta;
}

TEST(ComponiMittente, KeepsTheTwoQuotesEvenWithoutAName) {
  struct Caso {
    const char* etichetta;
    const char* nome;
    const char* indirizzo;
    const char* want;
  };
  const std::vector<Caso> casi = {
      {"name and address", "Orve S.p.A.", "info@orve.example", "\"Orve S.p.A.\"<info@orve.example>"},
      {"no name", "", "info@orve.example", "\"\"<info@orve.example>"},
      {"blank name", "   ", "info@orve.example", "\"\"<info@orve.example>"},
      {"blanks around a name stay", " Orve ", "info@orve.example", "\" Orve \"<info@orve.example>"},
      {"no address", "Orve", "", "\"Orve\"<>"},
      {"neither", "", "", "\"\"<>"},
      {"a quote in the name stays", "A\"B", "x@y.it", "\"A\"B\"<x@y.it>"},
  };
  for (const auto& caso : casi) {
    EXPECT_EQ(ComponiMittente(caso.nome, caso.indirizzo), caso.want) << caso.etichetta;
  }
}

class CanaleSmtp : public fakes::ServizioDiProva {
 protected:
  CanaleSmtp() {
    connessione->Risponde("SELECT FW07_CODICE ", {{{"FW07_CODICE", "U01"}}});
    connessione->Risponde("SELECT FW07_CODICE_FW06 ", {{{"FW07_CODICE_FW06", "AMM"}}});
    interno.IdUtenteCorrente() = 7;
    interno.SmtpServer() = "smtp.orve.example";
    interno.SmtpPorta() = 587;
    interno.SmtpUtente() = "utente";
    interno.SmtpPassword() = "parolasegreta";
    interno.SmtpAuth() = 1;
    interno.SmtpCrypt() = 1;
    servizio->SrvMailInstallato = kvSMTPSSLMail;
    servizio->vSenderAddress = "info@orve.example";
    servizio->vSenderName = "Orve S.p.A.";
    servizio->vOggetto = "Fattura 12";
    servizio->vDitta = "Bianchi S.r.l.";
    servizio->DittaCorrente = "1";
    servizio->vFlagCorpo = 1;
    servizio->vCorpoMail = "Gentile ***(Nome)***";
  }
  void ConDestinatario(const std::string& indirizzo, const std::string& nome = "", std::int16_t casella = 0) {
    Collezione().AddFromLista(indirizzo, nome, "", casella);
  }
  void ConAllegati(std::vector<host::Variant> percorsi) {
    servizio->vElencoAllegati = host::Variant::Array(std::move(percorsi));
  }
  void ConMittenteScelto() {
    auto mittente = std::make_shared<Mittente>(ambiente);
    mittente->Server("smtp.altro.example");
    mittente->Port(465);
    mittente->Auth(0);
    mittente->user("altro");
    mittente->Password("altrasegreta");
    mittente->Indirizzo("vendite@orve.example");
    mittente->Descrizione("Vendite");
    mittente->CryptType(2);
    mittente->ReadRcpt(1);
    mittente->IsSsl(true);
    mittente->DeliveryStatus(1);
    servizio->vMittente = mittente;
    interno.UsaMittenteScelto() = true;
  }
  /// What was handed to the component as recipients, as "list kind".
  std::vector<std::string> Elenchi() const {
    std::vector<std::string> elenchi;
    for (const auto& riga : journal->Righe({"smtp.AddRecipientEx "})) {
      elenchi.push_back(riga.substr(std::string("smtp.AddRecipientEx ").size()));
    }
    return elenchi;
  }
  std::vector<std::string> Registro() const { return journal->Righe({"ObjRegistroInvio."}); }
};

TEST_F(CanaleSmtp, AWholeSendInItsOrder) {
  ConRegistro();
  ConDestinatario("uno@bianchi.example", "Uno");
  ConDestinatario("due@bianchi.example", "Due, il secondo", kvCasellaCC);
  ConDestinatario("tre@bianchi.example", "", kvCasellaCCn);
  ConAllegati({"C:\\Doc\\fattura.pdf", "C:\\Doc\\listino.pdf"});
  servizio->ReadReceipt = true;
  servizio->vNotifyDelivery = true;
  journal->Svuota();
  interno.SendWithSmtp();

  const std::string gruppo =
      "ConnectionADO.Execute -1           SELECT  FW06_CODICE,FW06_DESCR \r\n"
      " FROM    FW07_APPUSER \r\n"
      "         INNER JOIN FW00_GRPUSRASSOC ON FW00_ID_FW07= FW07_APPUSER.FW07_ID AND FW00_FLGPREF = 1  \r\n"
      "         INNER JOIN FW06_GROUPUSR ON FW06_ID = FW00_GRPUSRASSOC.FW00_ID_FW06  \r\n"
      " WHERE   FW07_ID = 7";
  const std::string evento =
      "ConnectionADO.Execute 1 exec SPFW_AttivaEventoGestionale 1, 89, 7, "
      "'<DATE_INS=14/11/2026/><TIME_INS=10:22:05/><USR_COD=U01/><GRP_COD=AMM/>";
  const std::string coda =
      "<MAIL_PATH=C:\\Doc\\fattura.pdf|C:\\Doc\\listino.pdf/><MAIL_OBJ=Fattura 12/>' , 1";
  std::vector<std::string> want = {
      "Ambiente.CreaComponenteSmtp",
      "smtp.AddAttachment C:\\Doc\\fattura.pdf",
      "smtp.AddAttachment C:\\Doc\\listino.pdf",
      gruppo,
      "ConnectionADO.Execute -1           SELECT  FW07_USERNAME,FW07_DESCR  FROM    FW07_APPUSER  WHERE   "
      "FW07_ID = 7",
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
      "ConnectionADO.Execute 1  SELECT 1 FROM FW95_SETTINGS WITH (NOLOCK)  WHERE FW95_CODICE = "
      "'AIT_MAIL_HTML' AND FW95_VALORE = 1 ",
      "smtp.BodyText Gentile Uno",
      "smtp.AddHeader Disposition-Notification-To: <info@orve.example>",
      "smtp.SendMail",
      "smtp.GetLastError",
      "ObjRegistroInvio.TipoCanale 3",
      "ObjRegistroInvio.EsitoInvio 0",
      "ObjRegistroInvio.MittenteInvio SMTP: info@orve.example",
      "ObjRegistroInvio.CanaleInvio 77",
      "ObjRegistroInvio.RegistraInvio Uno|Bianchi S.r.l.|Uno<uno@bianchi.example>|"
      "C:\\Doc\\fattura.pdf|C:\\Doc\\listino.pdf||Fattura 12|Gentile Uno",
      evento + "<MAIL_DEST=Uno/><AZ_COD=1/><AZ_DES=Bianchi S.r.l./><MAIL_IND=Uno<uno@bianchi.example>/>" +
          coda,
      "ObjRegistroInvio.RegistraInvio Due, il secondo|Bianchi S.r.l.|Due, il "
      "secondo<due@bianchi.example>|C:\\Doc\\fattura.pdf|C:\\Doc\\listino.pdf||Fattura 12|Gentile Uno",
      evento +
          "<MAIL_DEST=Due, il secondo/><AZ_COD=1/><AZ_DES=Bianchi S.r.l./><MAIL_IND=Due, il "
          "secondo<due@bianchi.example>/>" +
          coda,
      "ObjRegistroInvio.RegistraInvio |Bianchi S.r.l.|<tre@bianchi.example>|"
      "C:\\Doc\\fattura.pdf|C:\\Doc\\listino.pdf||Fattura 12|Gentile Uno",
      evento + "<AZ_COD=1/><AZ_DES=Bianchi S.r.l./><MAIL_IND=<tre@bianchi.example>/>" + coda,
  };
  // How an event finds its user is told by the events' own tests.
  std::vector<std::string> got;
  for (const auto& riga : journal->Righe()) {
    const bool ricercaUtente = riga.starts_with("Command.") || riga.starts_with("Parameter.") ||
                               riga.starts_with("ConnectionADO.CreateCommand") ||
                               riga.starts_with("ConnectionADO.Execute 1  SELECT FW07_CODICE") ||
                               riga.starts_with("RecordSet.");
    if (!ricercaUtente) got.push_back(riga);
  }
  EXPECT_EQ(got, want);
  EXPECT_EQ(servizio->Stato(), kvOK);
}

TEST_F(CanaleSmtp, AfterTheRunNamesListAndBodyStayInTheService) {
  ConDestinatario("uno@x.it", "Uno");
  ConDestinatario("due@x.it", "Due");
  interno.SendWithSmtp();
  EXPECT_EQ(servizio->vNome, "Uno, Due");
  EXPECT_EQ(servizio->vIndDestinatario, "Uno <uno@x.it>;Due <due@x.it>");
  EXPECT_EQ(servizio->vCorpoMail, "Gentile Uno, Due");
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
    interno.SendWithSmtp();
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
  interno.SendWithSmtp();
  EXPECT_THAT(Elenchi(), ElementsAre("Anna <a@x.it>Bruno <b@x.it>; 0"));
}

TEST_F(CanaleSmtp, AnEmptyAListIsHandedOnAllTheSame) {
  ConDestinatario("cc@x.it", "Carla", kvCasellaCC);
  interno.SendWithSmtp();
  EXPECT_THAT(Elenchi(), ElementsAre(" 0", "Carla <cc@x.it> 1"));
}

TEST_F(CanaleSmtp, ABlankRecipientIsNotSkipped) {
  ConDestinatario("", "");
  ConDestinatario("a@x.it", "Anna");
  interno.SendWithSmtp();
  EXPECT_THAT(Elenchi(), ElementsAre(" <>;Anna <a@x.it> 0"));
}

TEST_F(CanaleSmtp, ANameWithACommaIsQuotedInTheListAndBareInTheRegister) {
  ConRegistro();
  ConDestinatario("m@x.it", "Rossi, Mario");
  interno.SendWithSmtp();
  EXPECT_THAT(Elenchi(), ElementsAre("\"Rossi, Mario\" <m@x.it> 0"));
  EXPECT_THAT(journal->Righe({"ObjRegistroInvio.RegistraInvio"}),
              ElementsAre("ObjRegistroInvio.RegistraInvio Rossi, Mario|Bianchi S.r.l.|Rossi, "
                          "Mario<m@x.it>|||Fattura 12|Gentile Rossi, Mario"));
}

TEST_F(CanaleSmtp, NamesAreAppendedToWhatTheFieldHolds) {
  servizio->vNome = "prima ";
  ConDestinatario("a@x.it", "Anna");
  interno.SendWithSmtp();
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
    interno.SendWithSmtp();
    EXPECT_EQ(servizio->vNome, caso.want) << caso.nome;
  }
}

TEST_F(CanaleSmtp, FlagBccGivesAVisibleCopyThatStandsBareInFrontOfTheCCEntries) {
  interno.FlagBcc() = true;
  ConDestinatario("a@x.it", "Anna");
  ConDestinatario("c@x.it", "Carla", kvCasellaCC);
  interno.SendWithSmtp();
  EXPECT_THAT(Elenchi(), ElementsAre("Anna <a@x.it> 0", "info@orve.example;Carla <c@x.it> 1"));
}

TEST_F(CanaleSmtp, FlagBccAloneGivesTheBareSenderAsCopy) {
  interno.FlagBcc() = true;
  ConDestinatario("a@x.it", "Anna");
  interno.SendWithSmtp();
  EXPECT_THAT(Elenchi(), ElementsAre("Anna <a@x.it> 0", "info@orve.example 1"));
}

TEST_F(CanaleSmtp, TheChosenSenderWinsOverTheLoadedAccount) {
  ConMittenteScelto();
  ConDestinatario("a@x.it", "Anna");
  interno.FlagBcc() = true;
  interno.SendWithSmtp();
  EXPECT_THAT(journal->Righe({"smtp.ServerAddr", "smtp.UserName", "smtp.Password", "smtp.ServerPort",
                              "smtp.ConnectType", "smtp.From", "smtp.DeliveryNotification", "smtp.AddHeader",
                              "smtp.AddRecipientEx"}),
              ElementsAre("smtp.ServerAddr smtp.altro.example", "smtp.ServerPort 465", "smtp.ConnectType 1",
                          "smtp.From Vendite", "smtp.FromAddr <vendite@orve.example>",
                          "smtp.AddRecipientEx Anna <a@x.it> 0", "smtp.AddRecipientEx vendite@orve.example 1",
                          "smtp.AddHeader Disposition-Notification-To: <vendite@orve.example>"));
  EXPECT_EQ(interno.SmtpServer(), "smtp.altro.example");
  EXPECT_EQ(interno.SmtpPorta(), 465);
  EXPECT_EQ(interno.SmtpAuth(), 0);
  EXPECT_EQ(interno.SmtpUtente(), "altro");
  EXPECT_EQ(interno.SmtpPassword(), "altrasegreta");
  EXPECT_EQ(interno.SmtpCrypt(), 2);
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
    interno.SendWithSmtp();
    EXPECT_EQ(servizio->ReadReceipt, ricevuta == 1) << ricevuta;
  }
}

TEST_F(CanaleSmtp, AChosenSenderWithoutTheMarkIsNotUsed) {
  ConMittenteScelto();
  interno.UsaMittenteScelto() = false;
  ConDestinatario("a@x.it", "Anna");
  interno.SendWithSmtp();
  EXPECT_THAT(journal->Righe({"smtp.ServerAddr"}), ElementsAre("smtp.ServerAddr smtp.orve.example"));
}

TEST_F(CanaleSmtp, TheMarkWithoutAChosenSenderKeepsTheLoadedAccount) {
  interno.UsaMittenteScelto() = true;
  ConDestinatario("a@x.it", "Anna");
  interno.SendWithSmtp();
  EXPECT_THAT(journal->Righe({"smtp.ServerAddr"}), ElementsAre("smtp.ServerAddr smtp.orve.example"));
}

TEST_F(CanaleSmtp, AnyAuthenticationOtherThanZeroHandsOverTheCredentials) {
  ConDestinatario("a@x.it", "Anna");
  for (const std::int16_t auth : std::vector<std::int16_t>{-1, 0, 1, 2}) {
    journal->Svuota();
    interno.SmtpAuth() = auth;
    interno.SendWithSmtp();
    EXPECT_EQ(journal->Conta("smtp.UserName"), auth == 0 ? 0U : 1U) << auth;
    EXPECT_EQ(journal->Conta("smtp.Password"), auth == 0 ? 0U : 1U) << auth;
  }
}

TEST_F(CanaleSmtp, WithoutAServerNothingIsSubmittedAndNothingRecorded) {
  interno.SmtpServer().clear();
  interno.StatoInvio() = kvInvioNonImpostato;
  ConRegistro();
  ConDestinatario("a@x.it", "Anna");
  ConAllegati({"C:\\a.pdf"});
  journal->Svuota();
  interno.SendWithSmtp();
  EXPECT_EQ(servizio->Stato(), kvInvioNonImpostato);
  EXPECT_THAT(journal->Righe({"smtp."}), ElementsAre("smtp.AddAttachment C:\\a.pdf"));
  EXPECT_THAT(Registro(), IsEmpty());
  EXPECT_THAT(Messaggi(), IsEmpty());
  EXPECT_EQ(servizio->vNome, "Anna");
  EXPECT_EQ(servizio->vIndDestinatario, "Anna <a@x.it>");
  EXPECT_EQ(servizio->vCorpoMail, "Gentile Anna");
}

TEST_F(CanaleSmtp, TheResultOfTheComponentBecomesStateAndRecord) {
  struct Caso {
    host::Variant risultato;
    kvEnum_ErroreMail wantStato;
    const char* wantEsito;
    const char* wantTesto;
  };
  const std::vector<Caso> casi = {
      {-1, kvOK, "0", ""},
      {std::int16_t{-1}, kvOK, "0", ""},
      {"-1", kvOK, "0", ""},
      {0, kvErroreInvioMail, "1", "Errore di connessione con il server"},
      {1, kvErroreInvioMail, "1", "Errore di comunicazione HELO/EHLO"},
      {2, kvErroreInvioMail, "1", "Errore di autenticazione utente"},
      {3, kvErroreInvioMail, "1", "Errore indirizzo mittente non valido"},
      {4, kvErroreInvioMail, "1", "Server si rifiuta di inoltrare mail ad uno o più indirizzi"},
      {5, kvErroreInvioMail, "1", "Errore nell'invio dati del destinatario"},
      {6, kvErroreInvioMail, "1", "Errore di ripristino SMTP"},
      {7, kvErroreInvioMail, "1", "Errore di ricerca DNS"},
      {8, kvErroreInvioMail, "1", ""},
      {-2, kvErroreInvioMail, "1", ""},
      {host::Variant(), kvErroreInvioMail, "1", "Errore di connessione con il server"},
  };
  ConRegistro();
  ConDestinatario("a@x.it", "Anna");
  for (const auto& caso : casi) {
    journal->Svuota();
    servizio->vNome.clear();
    servizio->vCorpoMail = "Corpo";
    ambiente->risultatoSmtp = caso.risultato;
    interno.SendWithSmtp();
    const std::string etichetta = fakes::Mostra(caso.risultato);
    EXPECT_EQ(servizio->Stato(), caso.wantStato) << etichetta;
    EXPECT_THAT(Registro(), ElementsAre("ObjRegistroInvio.TipoCanale 3",
                                        std::string("ObjRegistroInvio.EsitoInvio ") + caso.wantEsito,
                                        "ObjRegistroInvio.MittenteInvio SMTP: info@orve.example",
                                        "ObjRegistroInvio.CanaleInvio 77",
                                        "ObjRegistroInvio.RegistraInvio Anna|Bianchi S.r.l.|Anna<a@x.it>||" +
                                            std::string(caso.wantTesto) + "|Fattura 12|Corpo"))
        << etichetta;
  }
}

TEST_F(CanaleSmtp, AFailedSubmissionRaisesEvent89WithTheErrorText) {
  ConRegistro();
  ConDestinatario("a@x.it", "Anna");
  ambiente->risultatoSmtp = 5;
  interno.SendWithSmtp();
  EXPECT_THAT(connessione->Statements().back(),
              testing::AllOf(StartsWith("exec SPFW_AttivaEventoGestionale 1, 89, 7, '"),
                             HasSubstr("<DESRES=Errore nell''invio dati del destinatario/>")));
}

TEST_F(CanaleSmtp, CertifiedMailAndThePlainChannelAreToldToTheRegister) {
  ConRegistro();
  ConDestinatario("a@x.it", "Anna");
  servizio->IsPec(true);
  servizio->SrvMailInstallato = kvSMTPMail;
  interno.SendWithSmtp();
  EXPECT_THAT(Registro(), Contains("ObjRegistroInvio.TipoCanale 5"));
  EXPECT_THAT(Registro(), Contains("ObjRegistroInvio.CanaleInvio 76"));
}

TEST_F(CanaleSmtp, WithoutARegisterNoEventIsRaised) {
  ConDestinatario("a@x.it", "Anna");
  interno.SendWithSmtp();
  EXPECT_EQ(servizio->Stato(), kvOK);
  EXPECT_EQ(journal->Conta("smtp.SendMail"), 1U);
  EXPECT_EQ(journal->Conta("ConnectionADO.CreateCommand"), 0U);
}

TEST_F(CanaleSmtp, AnErrorCaughtInsideTheSubmissionIsRecordedAsAConnectionError) {
  ConRegistro();
  ConDestinatario("a@x.it", "Anna");
  journal->Fallisce("smtp.SendMail", {1001, "Prova", "guasto di prova"});
  interno.SendWithSmtp();
  EXPECT_EQ(servizio->Stato(), kvErroreInvioMail);
  EXPECT_THAT(Messaggi(),
              ElementsAre("ObjMessaggi.MostraMsg guasto di prova|48|ORVE_MAIL: InviaMailConSSL|(assente)"));
  EXPECT_THAT(journal->Righe({"ObjRegistroInvio.RegistraInvio"}),
              ElementsAre(HasSubstr("|Errore di connessione con il server|")));
}

TEST_F(CanaleSmtp, AResultThatDoesNotFitIsAnErrorBehindTheStateAndBeforeAnyRecord) {
  ConRegistro();
  ConDestinatario("a@x.it", "Anna");
  ambiente->risultatoSmtp = 40000;
  interno.SendWithSmtp();
  EXPECT_EQ(servizio->Stato(), kvErroreInvioMail);
  EXPECT_THAT(Registro(), ElementsAre("ObjRegistroInvio.TipoCanale 3", "ObjRegistroInvio.EsitoInvio 1"));
  EXPECT_EQ(journal->Conta("ConnectionADO.CreateCommand"), 0U);
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 6-Overflow in "
                                      "ORVE_MAILSERVER:CLSFW_MAILSERVER - SendWithSmtp|0||(assente)"));
}

TEST_F(CanaleSmtp, WithoutARegisterAResultThatDoesNotFitIsNoError) {
  ConDestinatario("a@x.it", "Anna");
  ambiente->risultatoSmtp = 40000;
  interno.SendWithSmtp();
  EXPECT_EQ(servizio->Stato(), kvErroreInvioMail);
  EXPECT_THAT(Messaggi(), IsEmpty());
}

TEST_F(CanaleSmtp, ANullResultIsAFailureThatCannotBeRecorded) {
  ConRegistro();
  ConDestinatario("a@x.it", "Anna");
  ambiente->risultatoSmtp = host::Null{};
  interno.SendWithSmtp();
  EXPECT_EQ(servizio->Stato(), kvErroreInvioMail);
  EXPECT_EQ(journal->Conta("ObjRegistroInvio.RegistraInvio"), 0U);
  EXPECT_THAT(Messaggi(), ElementsAre(StartsWith("ObjMessaggi.MostraMsg 94-")));
}

TEST_F(CanaleSmtp, AttendedAFailureIsShown) {
  journal->Fallisce("Ambiente.CreaComponenteSmtp", {429, "Prova", "componente assente"});
  servizio->ModalitaInvio(kvManuale);
  interno.SendWithSmtp();
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 429-componente assente in "
                                      "ORVE_MAILSERVER:CLSFW_MAILSERVER - SendWithSmtp|0||(assente)"));
  EXPECT_THAT(ambiente->file, IsEmpty());
}

TEST_F(CanaleSmtp, UnattendedAFailureIsLogged) {
  interno.PathTemp() = "C:\\Temp";
  servizio->vMailAttachment = "C:\\Doc\\fattura.pdf";
  for (const auto modo : {kvAutomatico, kvSemiAuto, kvListaDistribuzione}) {
    ambiente->file.clear();
    journal->Fallisce("Ambiente.CreaComponenteSmtp", {429, "Prova", "componente assente"});
    servizio->ModalitaInvio(modo);
    interno.SendWithSmtp();
    EXPECT_THAT(Messaggi(), IsEmpty()) << modo;
    EXPECT_EQ(ambiente->file["C:\\Temp\\ML141126.log"],
              "Destinatario --- StatoInvio --- MetodoFallito --- NomeFile --- Data --- Ora\r\n\r\n"
              "Bianchi S.r.l.                             ErroreInvio   SendWithSmtp   fattura.pdf   "
              "14/11/2026   10:22:05\r\n")
        << modo;
    journal->DimenticaPiani();
  }
}

TEST_F(CanaleSmtp, EachFailureEndsTheRunWhereItStands) {
  struct Caso {
    const char* guasto;
    kvEnum_ErroreMail wantStato;
    std::size_t wantInviati;
    std::size_t wantRegistrati;
  };
  const std::vector<Caso> casi = {
      {"Ambiente.CreaComponenteSmtp", kvInvioNonImpostato, 0, 0},
      // The body of the caller is filled from the database before anything is submitted.
      {"ConnectionADO.Execute -1", kvInvioNonImpostato, 0, 0},
      {"ObjRegistroInvio.TipoCanale", kvOK, 1, 0},
      {"ObjRegistroInvio.EsitoInvio", kvOK, 1, 0},
      {"ObjRegistroInvio.MittenteInvio", kvOK, 1, 0},
      {"ObjRegistroInvio.CanaleInvio", kvOK, 1, 0},
      {"ObjRegistroInvio.RegistraInvio", kvOK, 1, 1},
  };
  ConRegistro();
  ConDestinatario("a@x.it", "Anna");
  ConDestinatario("b@x.it", "Bruno");
  for (const auto& caso : casi) {
    journal->Svuota();
    interno.StatoInvio() = kvInvioNonImpostato;
    journal->Fallisce(caso.guasto, {1001, "Prova", "guasto di prova"});
    interno.SendWithSmtp();
    journal->DimenticaPiani();
    EXPECT_EQ(servizio->Stato(), caso.wantStato) << caso.guasto;
    EXPECT_EQ(journal->Conta("smtp.SendMail"), caso.wantInviati) << caso.guasto;
    EXPECT_EQ(journal->Conta("ObjRegistroInvio.RegistraInvio"), caso.wantRegistrati) << caso.guasto;
    EXPECT_EQ(journal->Conta("ConnectionADO.CreateCommand"), 0U) << caso.guasto;
    EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 1001-guasto di prova in "
                                        "ORVE_MAILSERVER:CLSFW_MAILSERVER - SendWithSmtp|0||(assente)"))
        << caso.guasto;
  }
}

TEST_F(CanaleSmtp, ACollectionThatIsNoObjectIsReported) {
  interno.SendWithSmtp();
  EXPECT_EQ(journal->Conta("smtp.SendMail"), 0U);
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 91-Variabile oggetto non impostata in "
                                      "ORVE_MAILSERVER:CLSFW_MAILSERVER - SendWithSmtp|0||(assente)"));
}

TEST_F(CanaleSmtp, AFailingEventCostsTheSendNothing) {
  ConRegistro();
  ConDestinatario("a@x.it", "Anna");
  ConDestinatario("b@x.it", "Bruno");
  journal->Fallisce("ConnectionADO.Execute 1 exec");
  interno.SendWithSmtp();
  EXPECT_EQ(journal->Conta("ObjRegistroInvio.RegistraInvio"), 2U);
  EXPECT_THAT(Messaggi(), IsEmpty());
}

TEST_F(CanaleSmtp, TheTextOfAnErrorNumber) {
  struct Caso {
    std::int16_t codice;
    const char* want;
  };
  const std::vector<Caso> casi = {
      {0, "Errore di connessione con il server"},
      {1, "Errore di comunicazione HELO/EHLO"},
      {2, "Errore di autenticazione utente"},
      {3, "Errore indirizzo mittente non valido"},
      {4, "Server si rifiuta di inoltrare mail ad uno o più indirizzi"},
      {5, "Errore nell'invio dati del destinatario"},
      {6, "Errore di ripristino SMTP"},
      {7, "Errore di ricerca DNS"},
      {8, ""},
      {-1, ""},
      {32767, ""},
      {-32768, ""},
  };
  for (const auto& caso : casi) {
    EXPECT_EQ(interno.GetSMTPErrorDescription(caso.codice), caso.want) << caso.codice;
  }
}

TEST_F(CanaleSmtp, ThePasswordStandsInNoMessageLogOrCall) {
  interno.PathTemp() = "C:\\Temp";
  ConRegistro();
  ConMittenteScelto();
  ConDestinatario("a@x.it", "Anna");
  ConAllegati({"C:\\a.pdf"});
  const std::vector<const char*> guasti = {"niente",
                                           "smtp.Password",
                                           "smtp.SendMail",
                                           "smtp.AddAttachment",
                                           "Ambiente.CreaComponenteSmtp",
                                           "ObjRegistroInvio.RegistraInvio"};
  for (const auto modo : {kvManuale, kvAutomatico}) {
    servizio->ModalitaInvio(modo);
    for (const char* guasto : guasti) {
      servizio->vMittente->Auth(1);
      journal->Fallisce(guasto);
      interno.SendWithSmtp();
      journal->DimenticaPiani();
    }
  }
  EXPECT_EQ(interno.SmtpPassword(), "altrasegreta");
  for (const auto& riga : journal->Righe()) EXPECT_THAT(riga, Not(HasSubstr("segreta")));
  for (const auto& [percorso, contenuto] : ambiente->file) EXPECT_THAT(contenuto, Not(HasSubstr("segreta")));
}

TEST_F(CanaleSmtp, HostileTextIsHandedOnAsItStands) {
  ConRegistro();
  for (const std::string& testo : {std::string("a\0b", 3), std::string("\xFF\xC3"), std::string("a\r\nb"),
                                   std::string("\"';|<>"), std::string(1U << 20U, 'x')}) {
    journal->Svuota();
    servizio->vCollDestinatari.reset();
    ConDestinatario(testo, testo);
    servizio->vNome.clear();
    servizio->vOggetto = testo;
    servizio->vDitta = testo;
    servizio->vCorpoMail = testo;
    ConAllegati({testo});
    interno.SendWithSmtp();
    EXPECT_THAT(Elenchi(), ElementsAre(testo + " <" + testo + "> 0"));
    EXPECT_THAT(journal->Righe({"smtp.Subject", "smtp.BodyText"}),
                ElementsAre("smtp.Subject " + testo, "smtp.BodyText " + testo));
    EXPECT_THAT(journal->Righe({"ObjRegistroInvio.RegistraInvio"}),
                ElementsAre("ObjRegistroInvio.RegistraInvio " + testo + "|" + testo + "|" + testo + "<" +
                            testo + ">|" + testo + "||" + testo + "|" + testo));
    EXPECT_EQ(servizio->Stato(), kvOK);
  }
}

TEST_F(CanaleSmtp, ManyRecipientsGoIntoOneSubmission) {
  constexpr int kQuanti = 20000;
  std::string want;
  for (int i = 0; i < kQuanti; ++i) {
    const std::string numero = std::to_string(i);
    ConDestinatario(numero + "@x.it", "N" + numero);
    want += (i > 0 ? ";N" : "N") + numero + " <" + numero + "@x.it>";
  }
  journal->Svuota();
  interno.SendWithSmtp();
  EXPECT_THAT(Elenchi(), ElementsAre(want + " 0"));
  EXPECT_EQ(journal->Conta("smtp.SendMail"), 1U);
}

}  // namespace
}  // namespace orve
