#include <string>
#include <vector>

#include "channels/canale_smtp.h"
#include "channels/smtp_channel.h"
#include "fakes/allocazioni.h"

namespace orve {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

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
    SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
                 interno.oggetti);
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
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  EXPECT_THAT(connessione->Statements().back(),
              testing::AllOf(StartsWith("exec SPFW_AttivaEventoGestionale 1, 89, 7, '"),
                             HasSubstr("<DESRES=Errore nell''invio dati del destinatario/>")));
}

TEST_F(CanaleSmtp, CertifiedMailAndThePlainChannelAreToldToTheRegister) {
  ConRegistro();
  ConDestinatario("a@x.it", "Anna");
  servizio->IsPec(true);
  servizio->SrvMailInstallato = kvSMTPMail;
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  EXPECT_THAT(Registro(), Contains("ObjRegistroInvio.TipoCanale 5"));
  EXPECT_THAT(Registro(), Contains("ObjRegistroInvio.CanaleInvio 76"));
}

TEST_F(CanaleSmtp, WithoutARegisterNoEventIsRaised) {
  ConDestinatario("a@x.it", "Anna");
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  EXPECT_EQ(servizio->Stato(), kvOK);
  EXPECT_EQ(journal->Conta("smtp.SendMail"), 1U);
  EXPECT_EQ(journal->Conta("ConnectionADO.CreateCommand"), 0U);
}

TEST_F(CanaleSmtp, AnErrorCaughtInsideTheSubmissionIsRecordedAsAConnectionError) {
  ConRegistro();
  ConDestinatario("a@x.it", "Anna");
  journal->Fallisce("smtp.SendMail", {1001, "Prova", "guasto di prova"});
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  EXPECT_EQ(servizio->Stato(), kvErroreInvioMail);
  EXPECT_THAT(Messaggi(),
              ElementsAre("ObjMessaggi.MostraMsg guasto di prova|48|ORVE_MAIL: InviaMailConSSL|(assente)"));
  EXPECT_THAT(journal->Righe({"ObjRegistroInvio.RegistraInvio"}),
              ElementsAre(HasSubstr("|Errore di connessione con il server|")));
}

TEST_F(CanaleSmtp, AResultThatDoesNotFitIsAnErrorAfterTheStateAndBeforeAnyRecord) {
  ConRegistro();
  ConDestinatario("a@x.it", "Anna");
  ambiente->risultatoSmtp = 40000;
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  EXPECT_EQ(servizio->Stato(), kvErroreInvioMail);
  EXPECT_THAT(Registro(), ElementsAre("ObjRegistroInvio.TipoCanale 3", "ObjRegistroInvio.EsitoInvio 1"));
  EXPECT_EQ(journal->Conta("ConnectionADO.CreateCommand"), 0U);
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 6-Overflow in "
                                      "ORVE_MAILSERVER:CLSFW_MAILSERVER - SendWithSmtp|0||(assente)"));
}

TEST_F(CanaleSmtp, WithoutARegisterAResultThatDoesNotFitIsNoError) {
  ConDestinatario("a@x.it", "Anna");
  ambiente->risultatoSmtp = 40000;
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  EXPECT_EQ(servizio->Stato(), kvErroreInvioMail);
  EXPECT_THAT(Messaggi(), IsEmpty());
}

TEST_F(CanaleSmtp, ANullResultIsAFailureThatCannotBeRecorded) {
  ConRegistro();
  ConDestinatario("a@x.it", "Anna");
  ambiente->risultatoSmtp = host::Null{};
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  EXPECT_EQ(servizio->Stato(), kvErroreInvioMail);
  EXPECT_EQ(journal->Conta("ObjRegistroInvio.RegistraInvio"), 0U);
  EXPECT_THAT(Messaggi(), ElementsAre(StartsWith("ObjMessaggi.MostraMsg 94-")));
}

TEST_F(CanaleSmtp, AttendedAFailureIsShown) {
  journal->Fallisce("Ambiente.CreaComponenteSmtp", {429, "Prova", "componente assente"});
  servizio->ModalitaInvio(kvManuale);
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 429-componente assente in "
                                      "ORVE_MAILSERVER:CLSFW_MAILSERVER - SendWithSmtp|0||(assente)"));
  EXPECT_THAT(ambiente->file, IsEmpty());
}

TEST_F(CanaleSmtp, UnattendedAFailureIsLogged) {
  interno.impostazioni.PathTemp = "C:\\Temp";
  servizio->vMailAttachment = "C:\\Doc\\fattura.pdf";
  for (const auto modo : {kvAutomatico, kvSemiAuto, kvListaDistribuzione}) {
    ambiente->file.clear();
    journal->Fallisce("Ambiente.CreaComponenteSmtp", {429, "Prova", "componente assente"});
    servizio->ModalitaInvio(modo);
    SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
                 interno.oggetti);
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
    std::size_t wantRilasciati;
  };
  const std::vector<Caso> casi = {
      {"Ambiente.CreaComponenteSmtp", kvInvioNonImpostato, 0, 0, 0},
      // The body of the caller is filled from the database before anything is submitted.
      {"ConnectionADO.Execute -1", kvInvioNonImpostato, 0, 0, 1},
      {"ObjRegistroInvio.TipoCanale", kvOK, 1, 0, 1},
      {"ObjRegistroInvio.EsitoInvio", kvOK, 1, 0, 1},
      {"ObjRegistroInvio.MittenteInvio", kvOK, 1, 0, 1},
      {"ObjRegistroInvio.CanaleInvio", kvOK, 1, 0, 1},
      {"ObjRegistroInvio.RegistraInvio", kvOK, 1, 1, 1},
  };
  ConRegistro();
  ConDestinatario("a@x.it", "Anna");
  ConDestinatario("b@x.it", "Bruno");
  for (const auto& caso : casi) {
    journal->Svuota();
    interno.esito.StatoInvio = kvInvioNonImpostato;
    journal->Fallisce(caso.guasto, {1001, "Prova", "guasto di prova"});
    SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
                 interno.oggetti);
    journal->DimenticaPiani();
    EXPECT_EQ(servizio->Stato(), caso.wantStato) << caso.guasto;
    EXPECT_EQ(journal->Conta("smtp.SendMail"), caso.wantInviati) << caso.guasto;
    EXPECT_EQ(journal->Conta("ObjRegistroInvio.RegistraInvio"), caso.wantRegistrati) << caso.guasto;
    EXPECT_EQ(journal->Conta("ConnectionADO.CreateCommand"), 0U) << caso.guasto;
    EXPECT_EQ(journal->Conta("rilascio smtp"), caso.wantRilasciati) << caso.guasto;
    EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 1001-guasto di prova in "
                                        "ORVE_MAILSERVER:CLSFW_MAILSERVER - SendWithSmtp|0||(assente)"))
        << caso.guasto;
  }
}

TEST_F(CanaleSmtp, ACollectionThatIsNoObjectIsReported) {
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
  EXPECT_EQ(journal->Conta("smtp.SendMail"), 0U);
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 91-Variabile oggetto non impostata in "
                                      "ORVE_MAILSERVER:CLSFW_MAILSERVER - SendWithSmtp|0||(assente)"));
}

TEST_F(CanaleSmtp, AFailingEventCostsTheSendNothing) {
  ConRegistro();
  ConDestinatario("a@x.it", "Anna");
  ConDestinatario("b@x.it", "Bruno");
  journal->Fallisce("ConnectionADO.Execute 1 exec");
  SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
               interno.oggetti);
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
    EXPECT_EQ(GetSMTPErrorDescription(interno.oggetti, caso.codice), caso.want) << caso.codice;
  }
}

TEST_F(CanaleSmtp, AnErrorTextThatDoesNotFitIntoMemoryIsShownInEveryModeAndEmpty) {
  for (const auto modo : {kvManuale, kvAutomatico}) {
    servizio->ModalitaInvio(modo);
    journal->Svuota();
    std::string testo = "prima";
    fakes::ConAllocazioneCheFallisce(
        1, [&] { testo = GetSMTPErrorDescription(interno.oggetti, std::int16_t{0}); });
    EXPECT_EQ(testo, "");
    EXPECT_THAT(journal->Righe(),
                ElementsAre("ObjMessaggi.MostraMsg 7-Memoria esaurita in "
                            "ORVE_MAILSERVER:CLSFW_MAILSERVER - GetSMTPErrorDescription|0||(assente)"));
  }
}

TEST_F(CanaleSmtp, ThePasswordStandsInNoMessageLogOrCall) {
  interno.impostazioni.PathTemp = "C:\\Temp";
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
      SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
                   interno.oggetti);
      journal->DimenticaPiani();
    }
  }
  EXPECT_EQ(interno.account.SmtpPassword, "altrasegreta");
  for (const auto& riga : journal->Righe()) EXPECT_THAT(riga, Not(HasSubstr("segreta")));
  for (const auto& [percorso, contenuto] : ambiente->file) EXPECT_THAT(contenuto, Not(HasSubstr("segreta")));
}

}  // namespace
}  // namespace orve
