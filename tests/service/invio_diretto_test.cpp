// The direct send: what it makes of its texts, what its flag changes in the send procedure, and what a
// failure in it leaves on the object. And the record of a cancellation by the person.
#include <string>
#include <vector>

#include "channels/channel_traits.h"
#include "fakes/oggetti_del_canale.h"
#include "fakes/servizio_di_prova.h"
#include "service/invio_diretto.h"

namespace orve {
namespace {

using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class InvioDiretto : public fakes::ServizioDiProva {
 protected:
  InvioDiretto() {
    interno.impostazioni.PathTemp = "C:\\Temp";
    servizio->SrvMailInstallato = kvSMTPSSLMail;
    servizio->DittaCorrente = 1;
    connessione->Risponde("WHERE FW98_IDACCOUNT = 12", {{{"FW23_SERVERNAME", "smtp.azienda.example"},
                                                         {"FW23_PORT", 587},
                                                         {"FW23_TIMEOUT", 60},
                                                         {"FW23_INDAUTH", 0},
                                                         {"FW23_SSL", 1},
                                                         {"FW98_MAILADDRESS", "posta@azienda.example"},
                                                         {"FW98_USERNAME", ""},
                                                         {"FW98_PASSWORD", "{}"},
                                                         {"ALIAS", "Azienda"},
                                                         {"LETTURA", host::Null{}},
                                                         {"CONSEGNA", host::Null{}}}});
  }
  [[nodiscard]] bool Consegnato() const { return journal->Conta("smtp.SendMail") == 1; }
  [[nodiscard]] std::vector<std::string> Liste() const { return journal->Righe({"smtp.AddRecipientEx"}); }
  [[nodiscard]] std::vector<std::string> Allegati() const { return journal->Righe({"smtp.AddAttachment"}); }
  /// The recipients of the service as name, "/", address, "/", company, "/", box.
  [[nodiscard]] std::vector<std::string> Recipienti() const {
    std::vector<std::string> righe;
    for (const auto& d : *servizio->vCollDestinatari) {
      righe.push_back(d->Nome() + "/" + d->Indirizzo() + "/" + d->Azienda() + "/" +
                      std::to_string(d->Casella()));
    }
    return righe;
  }
};

TEST_F(InvioDiretto, SendsWhatStandsInTheTexts) {
  servizio->InviaMailDiretta(12, "Anna<a@x.example>;Bruno<b@x.example>", "Carla<c@x.example>",
                             "Dario<d@x.example>", "Fattura 12", "Buongiorno",
                             R"(C:\Doc\a.pdf;C:\Doc\b.pdf)");
  EXPECT_THAT(Liste(), ElementsAre("smtp.AddRecipientEx Anna <a@x.example>;Bruno <b@x.example> 0",
                                   "smtp.AddRecipientEx Carla <c@x.example> 1",
                                   "smtp.AddRecipientEx Dario <d@x.example> 2"));
  EXPECT_THAT(Allegati(),
              ElementsAre("smtp.AddAttachment C:\\Doc\\a.pdf", "smtp.AddAttachment C:\\Doc\\b.pdf"));
  EXPECT_THAT(journal->Righe({"smtp.ServerAddr", "smtp.FromAddr", "smtp.Subject", "smtp.BodyText"}),
              ElementsAre("smtp.ServerAddr smtp.azienda.example", "smtp.FromAddr <posta@azienda.example>",
                          "smtp.Subject Fattura 12", "smtp.BodyText Buongiorno"));
  EXPECT_TRUE(Consegnato());
  EXPECT_EQ(servizio->Stato(), kvOK);
  EXPECT_FALSE(interno.messaggio.FlagInvioDiretto);
  EXPECT_THAT(Recipienti(), ElementsAre("Anna/a@x.example//0", "Bruno/b@x.example//0", "Carla/c@x.example//1",
                                        "Dario/d@x.example//2"));
}

TEST_F(InvioDiretto, TheRecipientsOfAnEarlierSendAreNotCarriedAlong) {
  servizio->DestinatariA("Vecchia<v@x.example>");
  servizio->DestinatariCC("Vecchia<v@x.example>");
  servizio->DestinatariCCn("Vecchia<v@x.example>");
  Collezione().Add("w@x.example", "Vecchia");
  servizio->InviaMailDiretta(12, "a@x.example");
  servizio->InviaMailDiretta(12, "b@x.example");
  EXPECT_THAT(Liste(),
              ElementsAre("smtp.AddRecipientEx  <a@x.example> 0", "smtp.AddRecipientEx  <b@x.example> 0"));
}

TEST_F(InvioDiretto, ItsArgumentsMayBeTheServicesOwnFields) {
  servizio->DestinatariA("Anna<a@x.example>");
  servizio->DestinatariCC("Carla<c@x.example>");
  servizio->vOggetto = "Fattura 12";
  servizio->vCorpoMail = "Buongiorno";
  servizio->InviaMailDiretta(12, servizio->DestinatariA(), servizio->DestinatariCC(), "", servizio->vOggetto,
                             servizio->vCorpoMail);
  EXPECT_THAT(Liste(), ElementsAre("smtp.AddRecipientEx Anna <a@x.example> 0",
                                   "smtp.AddRecipientEx Carla <c@x.example> 1"));
  EXPECT_THAT(journal->Righe({"smtp.Subject", "smtp.BodyText"}),
              ElementsAre("smtp.Subject Fattura 12", "smtp.BodyText Buongiorno"));
}

TEST_F(InvioDiretto, ABareAddressInTheCopiesAfterANamedItemTakesItsName) {
  servizio->InviaMailDiretta(12, "Anna<a@x.example>", "b@x.example", "c@x.example");
  EXPECT_THAT(Recipienti(), ElementsAre("Anna/a@x.example//0", "Anna/b@x.example//1", "Anna/c@x.example//2"));
}

TEST_F(InvioDiretto, TwoSeparatorsInARowAreSkipped) {
  servizio->InviaMailDiretta(12, "a@x.example;;b@x.example;");
  EXPECT_THAT(Recipienti(), ElementsAre("/a@x.example//0", "/b@x.example//0"));
}

TEST_F(InvioDiretto, AnItemWithoutAnAddressIsSkipped) {
  servizio->InviaMailDiretta(12, "Anna<>;Bruno<b@x.example>");
  EXPECT_THAT(Recipienti(), ElementsAre("Bruno/b@x.example//0"));
}

TEST_F(InvioDiretto, AddressesAreNotChecked) {
  for (const auto modo : {kvManuale, kvAutomatico, kvSemiAuto, kvListaDistribuzione}) {
    servizio->ModalitaInvio(modo);
    journal->Svuota();
    servizio->InviaMailDiretta(12, "senza chiocciola");
    EXPECT_TRUE(Consegnato()) << modo;
    EXPECT_THAT(Messaggi(), IsEmpty()) << modo;
  }
}

TEST_F(InvioDiretto, NoDialogOpensInTheManualMode) {
  servizio->ModalitaInvio(kvManuale);
  servizio->InviaMailDiretta(12, "a@x.example");
  EXPECT_EQ(journal->Conta("Ambiente.CreaForm"), 0U);
  EXPECT_TRUE(Consegnato());
}

TEST_F(InvioDiretto, WithAllArgumentsLeftOutTheAccountIsNotFoundAndTheChannelDecides) {
  servizio->InviaMailDiretta();
  EXPECT_THAT(connessione->Statements(), Contains(HasSubstr("WHERE FW98_IDACCOUNT = 0")));
  EXPECT_EQ(servizio->Stato(), kvParametriNonValidi);  // no server: nothing was submitted
  EXPECT_FALSE(Consegnato());
  EXPECT_EQ(servizio->vCollDestinatari->Count(), 0);

  interno.account.SmtpServer = "smtp.azienda.example";  // of an account loaded earlier
  servizio->InviaMailDiretta();
  EXPECT_TRUE(Consegnato());
  EXPECT_THAT(Liste(), ElementsAre("smtp.AddRecipientEx  0"));
  EXPECT_EQ(servizio->Stato(), kvOK);
  EXPECT_FALSE(interno.messaggio.FlagInvioDiretto);
}

TEST_F(InvioDiretto, TheAccountOfTheCallIsTakenWhereThereAreAccountsAndIgnoredElsewhere) {
  for (const ChannelTraits& canale : Canali()) {
    servizio->SrvMailInstallato = canale.numero;
    interno.account.IdMittenteDiretto = 5;
    const auto prima = connessione->Statements().size();
    servizio->InviaMailDiretta(12, "a@x.example");
    EXPECT_EQ(interno.account.IdMittenteDiretto, canale.haAccount ? 12 : 5) << canale.numero;
    const auto tutti = connessione->Statements();
    const std::vector<std::string> istruzioni(tutti.begin() + static_cast<std::ptrdiff_t>(prima),
                                              tutti.end());
    EXPECT_THAT(istruzioni, Each(Not(HasSubstr(canale.haAccount ? "FW99_ISDEFAULT" : "FW98_MAILACCOUNT"))))
        << canale.numero;
  }
}

TEST_F(InvioDiretto, ItIsDeliveredThroughEveryChannel) {
  interno.oggetti.objOutlookApp = ambiente->CreaOutlook();
  for (const auto& canale : fakes::OggettiDeiCanali()) {
    servizio->SrvMailInstallato = canale.canale;
    journal->Svuota();
    servizio->InviaMailDiretta(12, "Anna<a@x.example>", "", "", "Oggetto", "Corpo");
    EXPECT_EQ(journal->Conta(canale.invio), 1U) << canale.titolo;
  }
}

TEST_F(InvioDiretto, WithoutABodyAnEmptyOneGoesOutAndNotTheStandardText) {
  servizio->vFlagCorpo = 0;
  servizio->vCorpoMail = "vecchio";
  servizio->InviaMailDiretta(12, "a@x.example");
  EXPECT_EQ(journal->Conta("smtp.BodyText "), 1U);
  EXPECT_THAT(journal->Righe({"smtp.BodyText"}), ElementsAre("smtp.BodyText "));
  EXPECT_EQ(servizio->vFlagCorpo, 1);
}

TEST_F(InvioDiretto, PlaceholdersAreFilledByTheChannelAndTheNamesAreNotJoinedBeforehand) {
  servizio->vNome = "Prima, ";
  servizio->vIndDestinatario = "prima@x.example";
  std::string corpoVisto;
  std::string nomeVisto;
  servizio->BeforeSendMail = [&](auto&, auto& corpo, auto&, auto&, auto&, auto&) {
    corpoVisto = corpo;
    nomeVisto = servizio->vNome + "|" + servizio->vIndDestinatario;
  };
  servizio->InviaMailDiretta(12, "Anna<a@x.example>", "", "", "", "Per ***(Nome)***");
  EXPECT_EQ(corpoVisto, "Per ***(Nome)***");
  EXPECT_EQ(nomeVisto, "Prima, |prima@x.example");
  EXPECT_THAT(journal->Righe({"smtp.BodyText"}), ElementsAre("smtp.BodyText Per Prima, Anna"));
}

TEST_F(InvioDiretto, TheHandlerMayChangeEverything) {
  servizio->BeforeSendMail = [](auto& oggetto, auto& corpo, auto& a, auto& cc, auto& ccn, auto& allegati) {
    oggetto += "!";
    corpo += "!";
    a += ";Bruno<b@x.example>";
    cc = "c@x.example";
    ccn = "";
    allegati = "C:\\Doc\\altro.pdf";
  };
  servizio->InviaMailDiretta(12, "Anna<a@x.example>", "", "d@x.example", "Oggetto", "Corpo",
                             "C:\\Doc\\a.pdf");
  EXPECT_THAT(Recipienti(),
              ElementsAre("Anna/a@x.example//0", "Bruno/b@x.example//0", "Bruno/c@x.example//1"));
  EXPECT_THAT(Allegati(), ElementsAre("smtp.AddAttachment C:\\Doc\\altro.pdf"));
  EXPECT_THAT(journal->Righe({"smtp.Subject", "smtp.BodyText"}),
              ElementsAre("smtp.Subject Oggetto!", "smtp.BodyText Corpo!"));
}

struct CasoAllegati {
  const char* etichetta;
  const char* principale;
  const char* allegati;
  const char* wantPrincipale;
  std::vector<std::string> want;
};

class AllegatiDiretti : public InvioDiretto, public ::testing::WithParamInterface<CasoAllegati> {};

TEST_P(AllegatiDiretti, GoOut) {
  servizio->AddAllegato("C:\\Doc\\vecchio.pdf");
  servizio->vMailAttachment = GetParam().principale;
  servizio->InviaMailDiretta(12, "a@x.example", "", "", "", "", GetParam().allegati);
  std::vector<std::string> want;
  for (const auto& percorso : GetParam().want) want.push_back("smtp.AddAttachment " + percorso);
  EXPECT_EQ(Allegati(), want);
  EXPECT_EQ(servizio->vMailAttachment, GetParam().wantPrincipale);
}

INSTANTIATE_TEST_SUITE_P(
    Tabella, AllegatiDiretti,
    ::testing::Values(
        CasoAllegati{"TheMainOneThatIsNamedStaysAndIsAttachedTwice",
                     "C:\\Doc\\a.pdf",
                     "C:\\Doc\\b.pdf;C:\\Doc\\a.pdf",
                     "C:\\Doc\\a.pdf",
                     {"C:\\Doc\\a.pdf", "C:\\Doc\\b.pdf", "C:\\Doc\\a.pdf"}},
        CasoAllegati{
            "TheMainOneThatIsNotNamedIsCleared", "C:\\Doc\\a.pdf", "C:\\Doc\\b.pdf", "", {"C:\\Doc\\b.pdf"}},
        CasoAllegati{"NoneAtAllClearTheMainOneToo", "C:\\Doc\\a.pdf", "", "", {}},
        CasoAllegati{"NoMainOne", "", "C:\\Doc\\b.pdf", "", {"C:\\Doc\\b.pdf"}}),
    [](const auto& caso) { return std::string(caso.param.etichetta); });

TEST_F(InvioDiretto, ADisabledServiceIsRefusedAndTheFlagIsTakenBack) {
  servizio->SrvMailInstallato = kvNoMail;
  servizio->InviaMailDiretta(12, "a@x.example");
  EXPECT_EQ(servizio->Stato(), kvInvioNonImpostato);
  EXPECT_EQ(servizio->Descrizione().ToText(), "Invio mail disabilitato!");
  EXPECT_FALSE(interno.messaggio.FlagInvioDiretto);
  EXPECT_FALSE(Consegnato());
}

TEST_F(InvioDiretto, AListThatCannotBeReadEndsInSilenceAndLeavesTheFlagSet) {
  servizio->vCorpoMail = "vecchio corpo";
  servizio->vOggetto = "vecchio oggetto";
  servizio->vMailAttachment = "C:\\Doc\\vecchio.pdf";
  servizio->AddAllegato("C:\\Doc\\vecchio.pdf");
  servizio->InviaMailDiretta(12, "Anna<a@x.example>;b>c<d;e@x.example", "", "", "Oggetto", "Corpo",
                             "C:\\Doc\\nuovo.pdf");
  EXPECT_THAT(journal->Righe({"ObjMessaggi", "FileSystem", "TextStream", "smtp.", "ConnectionADO"}),
              IsEmpty());
  EXPECT_TRUE(interno.messaggio.FlagInvioDiretto);
  EXPECT_EQ(servizio->Stato(), kvOK);
  EXPECT_THAT(Recipienti(), ElementsAre("Anna/a@x.example//0"));
  EXPECT_EQ(servizio->vCorpoMail, "vecchio corpo");
  EXPECT_EQ(servizio->vOggetto, "vecchio oggetto");
  EXPECT_EQ(servizio->vMailAttachment, "C:\\Doc\\vecchio.pdf");
  EXPECT_EQ(servizio->vElencoAllegati, host::Variant(host::Variant::Array{"C:\\Doc\\vecchio.pdf"}));
  EXPECT_EQ(servizio->vFlagCorpo, 1);
  EXPECT_EQ(interno.account.IdMittenteDiretto, 12);
}

TEST_F(InvioDiretto, TheNextSendOnAnObjectThatFailedSoRunsAsADirectOne) {
  servizio->InviaMailDiretta(12, "> <");
  ASSERT_TRUE(interno.messaggio.FlagInvioDiretto);
  servizio->vCollDestinatari = std::make_shared<CollDestinatari>(ambiente);  // empty, in the manual mode
  servizio->AvviaProceduraInvio();
  EXPECT_EQ(journal->Conta("Ambiente.CreaForm"), 0U);
  EXPECT_THAT(connessione->Statements(), Contains(HasSubstr("WHERE FW98_IDACCOUNT = 12")));
  EXPECT_TRUE(Consegnato());
  EXPECT_TRUE(interno.messaggio.FlagInvioDiretto);
}

TEST_F(InvioDiretto, AFailureOfTheDeliveryIsReportedByTheSendAndTheFlagIsTakenBack) {
  servizio->ModalitaInvio(kvAutomatico);
  journal->Fallisce("Ambiente.CreaComponenteSmtp", host::Errore(host::kOggettoNonCreabile));
  servizio->InviaMailDiretta(12, "a@x.example");
  EXPECT_THAT(journal->Righe({"TextStream.WriteLine"}).back(), HasSubstr("ErroreInvio   SendWithSmtp   "));
  EXPECT_FALSE(interno.messaggio.FlagInvioDiretto);
}

TEST_F(InvioDiretto, AReportThatFailsTooDoesNotReachTheCaller) {
  servizio->ModalitaInvio(kvManuale);
  journal->Fallisce("Ambiente.CreaComponenteSmtp", host::Errore(host::kOggettoNonCreabile));
  journal->Fallisce("ObjMessaggi.MostraMsg", {1002, "Messaggi", "senza finestra"});
  EXPECT_NO_THROW(servizio->InviaMailDiretta(12, "a@x.example"));
}

class AnnullamentoDaUtente : public fakes::ServizioDiProva {};

TEST_F(AnnullamentoDaUtente, IsRecordedInTheRegisterAndAsAnEvent) {
  servizio->SrvMailInstallato = kvSMTPSSLMail;
  servizio->DittaCorrente = 1;
  servizio->vNome = "Anna";
  servizio->vDitta = "Acme";
  ConRegistro();
  journal->Svuota();
  RegistraAnnullamentoDaUtente(interno.messaggio, interno.impostazioni, interno.contesto, interno.oggetti);
  EXPECT_THAT(journal->Righe({"ObjRegistroInvio.", "ConnectionADO.CreateCommand"}),
              ElementsAre("ObjRegistroInvio.EsitoInvio 2", "ObjRegistroInvio.TipoCanale 3",
                          "ObjRegistroInvio.CanaleInvio 77",
                          "ObjRegistroInvio.RegistraInvio (assente)|(assente)|(assente)|(assente)|Richiesta "
                          "annullamento da utente||",
                          "ConnectionADO.CreateCommand"));
  EXPECT_THAT(
      connessione->Statements(),
      Contains("exec SPFW_AttivaEventoGestionale 1, 88, 7, '<DATE_INS=14/11/2026/><TIME_INS=10:22:05/>"
               "<USR_COD=/><GRP_COD=/><AZ_COD=1/><DESRES=Richiesta annullamento da utente/>' , 1"));
}

TEST_F(AnnullamentoDaUtente, CertifiedMailIsToldApart) {
  servizio->IsPec(true);
  ConRegistro();
  RegistraAnnullamentoDaUtente(interno.messaggio, interno.impostazioni, interno.contesto, interno.oggetti);
  EXPECT_EQ(journal->Conta("ObjRegistroInvio.TipoCanale 5"), 1U);
}

TEST_F(AnnullamentoDaUtente, WithoutARegisterNothingHappens) {
  RegistraAnnullamentoDaUtente(interno.messaggio, interno.impostazioni, interno.contesto, interno.oggetti);
  EXPECT_THAT(journal->Righe(), IsEmpty());
}

TEST_F(AnnullamentoDaUtente, ItsFailureIsShownInEveryMode) {
  ConRegistro();
  journal->Fallisce("ObjRegistroInvio.RegistraInvio", {1001, "Registro", "pieno"});
  for (const auto modo : {kvManuale, kvAutomatico}) {
    servizio->ModalitaInvio(modo);
    journal->Svuota();
    RegistraAnnullamentoDaUtente(interno.messaggio, interno.impostazioni, interno.contesto, interno.oggetti);
    EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 1001-pieno in CLSFW_MAILSERVER: "
                                        "RegistraAnnullamentoDaUtente|0||(assente)"));
    EXPECT_EQ(journal->Conta("ConnectionADO.CreateCommand"), 0U);
  }
}

}  // namespace
}  // namespace orve
