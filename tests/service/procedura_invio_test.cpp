// The send procedure: disabled service, the two routes, the modes, refusals, and the choice of the channel.
#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "fakes/oggetti_del_canale.h"
#include "fakes/servizio_di_prova.h"

namespace orve {
namespace {

using host::Variant;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kIndirizzoNonValido =
    "ObjMessaggi.MostraMsg L'elenco dei destinatari contiene un indirizzo non "
    "valido.|64|Attenzione|(assente)";

class Invio : public fakes::ServizioDiProva {
 protected:
  Invio() {
    servizio->SrvMailInstallato = kvSMTPSSLMail;
    servizio->vFlagCorpo = 1;
    interno.impostazioni.PathTemp = "C:\\Temp";
    interno.account.SmtpServer = "mail.example";
    servizio->vSenderAddress = "noi@azienda.example";
  }
  [[nodiscard]] bool Consegnato() const { return journal->Conta("smtp.SendMail") == 1; }
  /// The person has no account here, so the window is created but not shown.
  [[nodiscard]] bool DialogoChiesto() const { return journal->Conta("Ambiente.CreaForm FRMRW_OPZMAIL") == 1; }
};

TEST_F(Invio, ADisabledServiceRefusesBeforeAnythingElse) {
  servizio->SrvMailInstallato = kvNoMail;
  ConRegistro();
  Collezione().Add("a@x.example", "Anna");
  bool evento = false;
  servizio->BeforeSendMail = [&](auto&, auto&, auto&, auto&, auto&, auto&) { evento = true; };
  servizio->AvviaProceduraInvio(Variant(100), kvDestinatarioFaxCliente);
  EXPECT_EQ(servizio->Stato(), kvInvioNonImpostato);
  EXPECT_EQ(servizio->Descrizione().ToText(), "Invio mail disabilitato!");
  EXPECT_FALSE(evento);
  EXPECT_EQ(servizio->vCollDestinatari->Count(), 1);
  EXPECT_THAT(journal->Righe({"ObjRegistroInvio.", "ConnectionADO.CreateCommand"}),
              ElementsAre("ObjRegistroInvio.EsitoInvio 1", "ObjRegistroInvio.CanaleInvio 3",
                          "ObjRegistroInvio.RegistraInvio (assente)|(assente)|(assente)|(assente)|Invio mail "
                          "disabilitato||",
                          "ConnectionADO.CreateCommand"));
  EXPECT_EQ(connessione->Statements().back(),
            "exec SPFW_AttivaEventoGestionale , 88, 7, '<DATE_INS=14/11/2026/><TIME_INS=10:22:05/><USR_COD=/>"
            "<GRP_COD=/><DESRES=Invio mail disabilitato/>' , 1");
}

TEST_F(Invio, ADisabledServiceWithoutARegisterOnlySetsTheState) {
  servizio->SrvMailInstallato = kvNoMail;
  servizio->AvviaProceduraInvio();
  EXPECT_EQ(servizio->Stato(), kvInvioNonImpostato);
  EXPECT_THAT(journal->Righe({"ConnectionADO", "ObjMessaggi", "FileSystem"}), IsEmpty());
}

TEST_F(Invio, SimpleMapiPreparesItsMessageBeforeTheRouteIsKnown) {
  servizio->SrvMailInstallato = kvSimpleMAPI;
  interno.oggetti.MapiSessionID = 4711;
  servizio->vIndDestinatario = "a@x.example";
  servizio->AvviaProceduraInvio();
  EXPECT_THAT(
      journal->Righe({"Ambiente.CreaMAPI", "MAPIMessages"}),
      ElementsAre("Ambiente.CreaMAPIMessages", "MAPIMessages.SessionID 4711", "MAPIMessages.Compose"));
  EXPECT_TRUE(DialogoChiesto());
}

TEST_F(Invio, AFilledCollectionLeavesInEveryModeWithoutACheck) {
  for (const auto modo : {kvManuale, kvAutomatico, kvSemiAuto, kvListaDistribuzione}) {
    servizio->vCollDestinatari.reset();
    servizio->DestinatariA("");
    Collezione().Add("senza chiocciola", "Anna");
    servizio->ModalitaInvio(modo);
    journal->Svuota();
    servizio->AvviaProceduraInvio();
    EXPECT_TRUE(Consegnato()) << modo;
    EXPECT_FALSE(DialogoChiesto()) << modo;
    EXPECT_THAT(Messaggi(), IsEmpty()) << modo;
  }
}

TEST_F(Invio, TheCollectionRouteTakesTheCompanyOfTheDocumentAndTheChosenAccount) {
  Collezione().Add("a@x.example", "Anna");
  servizio->INFO_RagSocCliFor("Acme S.p.A.");
  servizio->vDitta = "vecchia";
  EXPECT_FALSE(interno.account.UsaMittenteScelto);
  servizio->AvviaProceduraInvio();
  EXPECT_EQ(servizio->vDitta, "Acme S.p.A.");
  EXPECT_TRUE(interno.account.UsaMittenteScelto);
}

TEST_F(Invio, TheCollectionRouteLoadsTheDefaultAccountOnTheSmtpChannels) {
  interno.account.SmtpServer.clear();
  Collezione().Add("a@x.example", "Anna");
  servizio->AvviaProceduraInvio();
  EXPECT_THAT(connessione->Statements(), Contains(HasSubstr("FW99_ISDEFAULT = 1")));
}

TEST_F(Invio, TheAccountIsLoadedBeforeTheHandlerIsAsked) {
  interno.account.SmtpServer.clear();
  Collezione().Add("a@x.example", "Anna");
  servizio->BeforeSendMail = [&](auto&, auto&, auto&, auto&, auto&, auto&) { journal->Add("evento"); };
  servizio->AvviaProceduraInvio();
  const auto righe = journal->Righe();
  const auto posizione = [&](const char* testo) {
    return std::find_if(righe.begin(), righe.end(),
                        [&](const auto& riga) { return riga.find(testo) != std::string::npos; }) -
           righe.begin();
  };
  EXPECT_LT(posizione("FW99_ISDEFAULT = 1"), posizione("evento"));
  EXPECT_EQ(journal->Conta("evento"), 1U);
}

TEST_F(Invio, AFailingHandlerDoesNotStopTheSend) {
  Collezione().AddFromLista("a@x.example", "Anna", "", 0);
  servizio->ModalitaInvio(kvManuale);
  servizio->BeforeSendMail = [](auto&, auto&, auto&, auto&, auto&, auto&) {
    throw host::Errore(1001, "Chiamante", "no");
  };
  servizio->AvviaProceduraInvio();
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 1001 no ORVE_MAILSERVER: CLSFW_MAILSERVER: "
                                      "GestioneEventoBeforeSendMail|0||(assente)"));
  EXPECT_THAT(journal->Righe({"smtp.AddRecipientEx"}),
              ElementsAre("smtp.AddRecipientEx Anna <a@x.example> 0"));
  EXPECT_TRUE(Consegnato());
}

// Only the stage after the event puts the main document into the list that a channel attaches.
TEST_F(Invio, AFailingHandlerLetsTheMessageLeaveWithoutItsMainDocument) {
  Collezione().AddFromLista("a@x.example", "Anna", "", 0);
  servizio->ModalitaInvio(kvAutomatico);
  servizio->vMailAttachment = "C:\\fattura.pdf";
  servizio->AddAllegato("C:\\condizioni.pdf");
  servizio->BeforeSendMail = [](auto& oggetto, auto&, auto&, auto&, auto&, auto&) {
    oggetto = "perduto";
    throw host::Errore(1001, "Chiamante", "no");
  };
  servizio->AvviaProceduraInvio();
  EXPECT_THAT(journal->Righe({"smtp.AddAttachment", "smtp.Subject"}),
              ElementsAre("smtp.AddAttachment C:\\condizioni.pdf", "smtp.Subject "));
  EXPECT_TRUE(Consegnato());
}

// The nearest thing to a veto, but not with a collection.
TEST_F(Invio, AHandlerThatLeavesNobodyIsRefusedByLookUpAndDeliveredToNobodyByCollection) {
  ConRegistro();
  servizio->ModalitaInvio(kvAutomatico);
  servizio->BeforeSendMail = [](auto&, auto&, auto& a, auto& cc, auto& ccn, auto&) {
    a.clear();
    cc.clear();
    ccn.clear();
  };
  servizio->vIndDestinatario = "a@x.example";
  servizio->AvviaProceduraInvio();
  EXPECT_FALSE(Consegnato());
  EXPECT_THAT(journal->Righe({"ObjRegistroInvio.RegistraInvio"}),
              ElementsAre("ObjRegistroInvio.RegistraInvio ||||Non inviato. Indirizzo mancante.||"));

  journal->Svuota();
  Collezione().Add("a@x.example", "Anna");
  servizio->AvviaProceduraInvio();
  EXPECT_THAT(journal->Righe({"smtp.AddRecipientEx"}), ElementsAre("smtp.AddRecipientEx  0"));
  EXPECT_TRUE(Consegnato());
  EXPECT_THAT(journal->Righe({"ObjRegistroInvio.RegistraInvio"}), IsEmpty());
}

// The collection is created after the event, so it is missing here.
TEST_F(Invio, AFailingHandlerOnTheLookUpRouteEndsTheSendInTheProceduresHandler) {
  interno.impostazioni.PathTemp = "C:\\Temp";
  servizio->ModalitaInvio(kvAutomatico);
  servizio->vIndDestinatario = "a@x.example";
  servizio->BeforeSendMail = [](auto&, auto&, auto&, auto&, auto&, auto&) {
    throw host::Errore(1001, "Chiamante", "no");
  };
  servizio->AvviaProceduraInvio();
  EXPECT_EQ(servizio->vCollDestinatari, nullptr);
  EXPECT_FALSE(Consegnato());
  const auto righe = journal->Righe({"TextStream.WriteLine"});
  ASSERT_EQ(righe.size(), 3U);  // with the header
  EXPECT_THAT(righe[1], HasSubstr("ErroreInvio   GestioneEventoBeforeSendMail   "));
  EXPECT_THAT(righe[2], HasSubstr("ErroreInvio   AvviaProceduraInvio   "));
}

TEST_F(Invio, TheModeCountsAsTheHandlerLeftIt) {
  servizio->ModalitaInvio(kvManuale);
  servizio->vIndDestinatario = "a@x.example";
  servizio->BeforeSendMail = [&](auto&, auto&, auto&, auto&, auto&, auto&) {
    servizio->ModalitaInvio(kvAutomatico);
  };
  servizio->AvviaProceduraInvio();
  EXPECT_TRUE(Consegnato());
  EXPECT_FALSE(DialogoChiesto());
}

TEST_F(Invio, ABodyThatTheHandlerLeftAloneIsFilledAgainByTheChannel) {
  servizio->vFlagCorpo = 0;
  servizio->FlgMsgPers = true;
  servizio->MsgPers = "per ***(IndEmail)***";
  Collezione().AddFromLista("a@x.example", "Anna", "", 0);
  std::string visto;
  servizio->BeforeSendMail = [&](auto&, auto& corpo, auto&, auto&, auto&, auto&) { visto = corpo; };
  servizio->AvviaProceduraInvio();
  EXPECT_EQ(visto, "per a@x.example");
  EXPECT_EQ(servizio->vFlagCorpo, 0);
  EXPECT_THAT(journal->Righe({"smtp.BodyText"}), ElementsAre("smtp.BodyText per Anna <a@x.example>"));
}

TEST_F(Invio, ADirectSendLoadsTheAccountOfItsId) {
  interno.messaggio.FlagInvioDiretto = true;
  interno.account.IdMittenteDiretto = 12;
  Collezione();
  servizio->AvviaProceduraInvio();
  EXPECT_THAT(connessione->Statements(), Contains(HasSubstr("WHERE FW98_IDACCOUNT = 12")));
  EXPECT_THAT(connessione->Statements(), Not(Contains(HasSubstr("FW99_ISDEFAULT"))));
}

TEST_F(Invio, ADirectSendTakesTheCollectionRouteEvenWithoutRecipients) {
  interno.messaggio.FlagInvioDiretto = true;
  Collezione();
  servizio->ModalitaInvio(kvManuale);
  servizio->AvviaProceduraInvio();
  EXPECT_TRUE(Consegnato());
}

TEST_F(Invio, NoAccountIsLoadedOnOtherChannels) {
  servizio->SrvMailInstallato = kvMAPI;
  Collezione().Add("a@x.example", "Anna");
  servizio->ModalitaInvio(kvManuale);
  servizio->AvviaProceduraInvio();
  EXPECT_THAT(connessione->Statements(), Not(Contains(HasSubstr("FW23_SERVERNAME"))));
}

// What the body's placeholders see is looked at through a handler, since the joined texts are emptied after
// it.
struct VistoDalCorpo {
  std::string nomi;
  std::string indirizzi;
};

class Unione : public Invio {
 protected:
  VistoDalCorpo Visto() {
    servizio->vCorpoMail = "***(Nome)***|***(IndEmail)***";
    VistoDalCorpo visto;
    servizio->BeforeSendMail = [&](auto&, auto& corpo, auto&, auto&, auto&, auto&) {
      visto = {corpo.substr(0, corpo.find('|')), corpo.substr(corpo.find('|') + 1)};
    };
    servizio->SrvMailInstallato = fakes::kNessunCanale;  // to see what this procedure leaves
    servizio->AvviaProceduraInvio();
    return visto;
  }
};

TEST_F(Unione, NamesAndAddressesOfTheARecipientsAreJoined) {
  Collezione().AddFromLista("a@x.example", "Anna", "", 0);
  Collezione().AddFromLista("c@x.example", "Carlo", "", 1);
  Collezione().AddFromLista("b@x.example", "Bea", "", 0);
  Collezione().AddFromLista("n@x.example", "Nino", "", 2);
  const auto visto = Visto();
  EXPECT_EQ(visto.nomi, "Anna, Bea");
  EXPECT_EQ(visto.indirizzi, "a@x.example, b@x.example");
  EXPECT_EQ(servizio->vNome, "");
  EXPECT_EQ(servizio->vIndDestinatario, "");
}

TEST_F(Unione, ARecipientWithoutANameStillAddsItsAddress) {
  Collezione().AddFromLista("a@x.example", "", "", 0);
  Collezione().AddFromLista("b@x.example", "Bea", "", 0);
  const auto visto = Visto();
  EXPECT_EQ(visto.nomi, "Bea");
  EXPECT_EQ(visto.indirizzi, "a@x.example, b@x.example");
}

TEST_F(Unione, AnUnknownBoxCountsAsAnARecipientHereThoughItEntersNoList) {
  Collezione().AddFromLista("q@x.example", "Quinto", "", 3);
  const auto visto = Visto();
  EXPECT_EQ(visto.nomi, "Quinto");
  EXPECT_EQ(servizio->DestinatariA(), "");
  EXPECT_EQ(servizio->vCollDestinatari->Count(), 0);
}

TEST_F(Unione, WhatTheCallerLeftInTheFieldsStandsInFront) {
  servizio->vNome = "Spett. ";
  Collezione().AddFromLista("a@x.example", "Anna", "", 0);
  EXPECT_EQ(Visto().nomi, "Spett. Anna");
}

TEST_F(Unione, WhereAnythingIsJoinedTheOtherFieldLosesTwoCharactersToo) {
  servizio->vNome = "Nicolò";
  Collezione().AddFromLista("a@x.example", "", "", 0);
  const auto visto = Visto();
  EXPECT_EQ(visto.nomi, "Nico");
  EXPECT_EQ(visto.indirizzi, "a@x.example");
  EXPECT_EQ(servizio->vNome, "");
  EXPECT_EQ(servizio->vIndDestinatario, "");
}

TEST_F(Unione, CcRecipientsOnlyLeaveTheFieldsAsTheCallerLeftThem) {
  servizio->vNome = "Rossi";
  servizio->vIndDestinatario = "r@x.example";
  Collezione().AddFromLista("c@x.example", "Carlo", "", 1);
  Visto();
  EXPECT_EQ(servizio->vNome, "Rossi");
  EXPECT_EQ(servizio->vIndDestinatario, "r@x.example");
}

TEST_F(Unione, ADirectSendLeavesTheFieldsAlone) {
  interno.messaggio.FlagInvioDiretto = true;
  servizio->vNome = "Rossi";
  Collezione().AddFromLista("a@x.example", "Anna", "", 0);
  Visto();
  EXPECT_EQ(servizio->vNome, "Rossi");
}

// The look-up route, by mode.

struct CasoModo {
  const char* label;
  kvEnumModalitaInvio modo;
  const char* indirizzo;
  bool wantConsegnato;
  bool wantDialogo;
  bool wantMessaggio;
  const char* wantRifiuto;
};

TEST_F(Invio, TheModeDecidesOnTheLookUpRoute) {
  constexpr const char* kMancante = "Non inviato. Indirizzo mancante.";
  constexpr const char* kNonValido = "L'elenco dei destinatari contiene un indirizzo non valido.";
  const CasoModo casi[] = {
      {"manual, none", kvManuale, "", false, true, false, nullptr},
      {"manual, good", kvManuale, "a@x.example", false, true, false, nullptr},
      {"manual, bad", kvManuale, "rotto", false, true, false, nullptr},
      {"automatic, none", kvAutomatico, "", false, false, false, kMancante},
      {"automatic, good", kvAutomatico, "a@x.example", true, false, false, nullptr},
      {"automatic, bad", kvAutomatico, "rotto", false, false, false, kNonValido},
      {"semi-automatic, none", kvSemiAuto, "", false, true, false, nullptr},
      {"semi-automatic, good", kvSemiAuto, "a@x.example", true, false, false, nullptr},
      {"semi-automatic, bad", kvSemiAuto, "rotto", false, true, true, nullptr},
      {"list, none", kvListaDistribuzione, "", false, true, false, nullptr},
      {"list, good", kvListaDistribuzione, "a@x.example", true, false, false, nullptr},
      {"list, bad", kvListaDistribuzione, "rotto", false, true, true, nullptr},
  };
  for (const auto& caso : casi) {
    servizio->vCollDestinatari.reset();
    servizio->DestinatariA("");
    servizio->vIndDestinatario = caso.indirizzo;
    servizio->vNome = "Anna";
    servizio->ModalitaInvio(caso.modo);
    ConRegistro();
    interno.account.UsaMittenteScelto = false;
    journal->Svuota();
    servizio->AvviaProceduraInvio();
    EXPECT_EQ(Consegnato(), caso.wantConsegnato) << caso.label;
    EXPECT_EQ(DialogoChiesto(), caso.wantDialogo) << caso.label;
    EXPECT_EQ(interno.account.UsaMittenteScelto, caso.wantDialogo) << caso.label;
    EXPECT_EQ(journal->Conta(kIndirizzoNonValido), caso.wantMessaggio ? 1U : 0U) << caso.label;
    const auto rifiuti = journal->Righe({"ObjRegistroInvio.RegistraInvio"});
    if (caso.wantRifiuto != nullptr) {
      EXPECT_THAT(rifiuti, ElementsAre(std::string("ObjRegistroInvio.RegistraInvio Anna||||") +
                                       caso.wantRifiuto + "||"))
          << caso.label;
    } else {
      EXPECT_EQ(rifiuti.size(), caso.wantConsegnato ? 1U : 0U) << caso.label;
    }
  }
}

TEST_F(Invio, ARefusalInTheAutomaticModeIsRegisteredAndChangesNoState) {
  ConRegistro();
  interno.esito.StatoInvio = kvErroreInvioMail;
  servizio->ModalitaInvio(kvAutomatico);
  servizio->vNome = "Anna";
  servizio->vDitta = "Acme";
  servizio->vMailAttachment = "C:\\f.pdf";
  servizio->AvviaProceduraInvio();
  EXPECT_EQ(servizio->Stato(), kvErroreInvioMail);
  EXPECT_TRUE(servizio->Descrizione().IsEmpty());
  EXPECT_THAT(
      journal->Righe({"ObjRegistroInvio."}),
      ElementsAre("ObjRegistroInvio.EsitoInvio 1", "ObjRegistroInvio.CanaleInvio 77",
                  "ObjRegistroInvio.RegistraInvio Anna|Acme||C:\\f.pdf|Non inviato. Indirizzo mancante.||"));
  EXPECT_EQ(connessione->Statements().back(),
            "exec SPFW_AttivaEventoGestionale , 88, 7, '<DATE_INS=14/11/2026/><TIME_INS=10:22:05/><USR_COD=/>"
            "<GRP_COD=/><MAIL_DEST=Anna/><AZ_DES=Acme/><MAIL_PATH=C:\\f.pdf/><DESRES=Non inviato. Indirizzo "
            "mancante./>' , 1");
}

TEST_F(Invio, ABadAddressInTheAutomaticModeWithoutARegisterLeavesNoTrace) {
  servizio->ModalitaInvio(kvAutomatico);
  servizio->vIndDestinatario = "rotto";
  servizio->AvviaProceduraInvio();
  EXPECT_THAT(journal->Righe(
                  {"ObjRegistroInvio", "ObjMessaggi", "FileSystem", "ConnectionADO.CreateCommand", "smtp"}),
              IsEmpty());
}

TEST_F(Invio, EveryBoxIsCheckedAndTheWalkStopsAtTheFirstBadAddress) {
  servizio->ModalitaInvio(kvAutomatico);
  ConRegistro();
  servizio->vIndDestinatario = "a@x.example";
  servizio->DestinatariCCn("rotto");
  servizio->AvviaProceduraInvio();
  EXPECT_FALSE(Consegnato());
  EXPECT_EQ(journal->Conta("ObjRegistroInvio.RegistraInvio"), 1U);
}

TEST_F(Invio, AnEmptyCollectionLosesTheLookedUpAddress) {
  connessione->Risponde("CG16_CODICE= ", {{{"CG16_INDEMAIL", "a@x.example"}, {"CG16_RAGSOANAG", "Acme"}}});
  Collezione();
  ConRegistro();
  servizio->ModalitaInvio(kvAutomatico);
  servizio->AvviaProceduraInvio(Variant(100), kvDestinatarioFaxAnagrafica);
  EXPECT_EQ(servizio->vIndDestinatario, "a@x.example");
  EXPECT_EQ(servizio->vNome, "Acme");
  EXPECT_THAT(journal->Righe({"ObjRegistroInvio.RegistraInvio"}),
              ElementsAre("ObjRegistroInvio.RegistraInvio Acme||||Non inviato. Indirizzo mancante.||"));
}

TEST_F(Invio, WithoutACodeTheCallersOwnAddressIsUsed) {
  servizio->ModalitaInvio(kvAutomatico);
  servizio->vIndDestinatario = "a@x.example";
  servizio->vNome = "Anna";
  servizio->AvviaProceduraInvio();
  EXPECT_THAT(journal->Righe({"smtp.AddRecipientEx"}),
              ElementsAre("smtp.AddRecipientEx Anna <a@x.example> 0"));
  EXPECT_THAT(connessione->Statements(), Not(Contains(HasSubstr("CG16_ANAGGEN"))));
}

TEST_F(Invio, TypeZeroLooksUpAsIfNoTypeHadBeenGiven) {
  servizio->ModalitaInvio(kvAutomatico);
  servizio->AvviaProceduraInvio(Variant(100), kvDestinatarioFaxAnagrafica);
  const auto conTipo = connessione->Statements();
  journal->Svuota();
  servizio->AvviaProceduraInvio(Variant(100));
  EXPECT_EQ(connessione->Statements().front(), conTipo.front());
  EXPECT_THAT(conTipo.front(), HasSubstr("WHERE CG16_CODICE= 100"));
}

TEST_F(Invio, TheLookUpRouteLoadsNoAccountAndDoesNotTakeTheChosenOne) {
  servizio->ModalitaInvio(kvAutomatico);
  servizio->vIndDestinatario = "a@x.example";
  interno.account.SmtpServer.clear();
  servizio->AvviaProceduraInvio();
  EXPECT_FALSE(Consegnato());
  EXPECT_FALSE(interno.account.UsaMittenteScelto);
  EXPECT_THAT(connessione->Statements(), Not(Contains(HasSubstr("FW23_SERVERNAME"))));
  EXPECT_EQ(servizio->Stato(), kvOK);
}

TEST_F(Invio, TheChosenAccountStaysInForceForLaterSends) {
  Collezione().Add("a@x.example", "Anna");
  servizio->AvviaProceduraInvio();
  servizio->vCollDestinatari.reset();
  servizio->ModalitaInvio(kvAutomatico);
  servizio->AvviaProceduraInvio();
  EXPECT_TRUE(interno.account.UsaMittenteScelto);
}

TEST_F(Invio, TheChannelPicksItsProcedure) {
  Collezione().Add("a@x.example", "Anna");
  servizio->vCorpoMail = "corpo";
  interno.oggetti.objOutlookApp = ambiente->CreaOutlook();
  std::vector<std::pair<kvEnum_ServizioMail, std::string_view>> casi = {{kvSMTPMail, "smtp.SendMail"}};
  for (const auto& canale : fakes::OggettiDeiCanali()) casi.emplace_back(canale.canale, canale.invio);
  std::vector<std::string_view> invii;
  for (const auto& canale : fakes::OggettiDeiCanali()) invii.push_back(canale.invio);
  for (const auto& [canale, invio] : casi) {
    servizio->SrvMailInstallato = canale;
    journal->Svuota();
    servizio->InviaMail();
    EXPECT_EQ(journal->Righe(invii).size(), 1U) << canale;
    EXPECT_EQ(journal->Conta(invio), 1U) << canale;
  }
}

TEST_F(Invio, InviaMailOnADisabledOrUnknownChannelDoesNothing) {
  for (const std::int32_t canale : {3, 4, -1, 75, 78, static_cast<std::int32_t>(fakes::kNessunCanale)}) {
    servizio->SrvMailInstallato = static_cast<kvEnum_ServizioMail>(canale);
    journal->Svuota();
    servizio->InviaMail();
    EXPECT_THAT(journal->Righe(), IsEmpty()) << canale;
    EXPECT_EQ(servizio->Stato(), kvOK) << canale;
  }
}

TEST_F(Invio, AChannelThatIsNotThereLeavesNothingRecordedAsSent) {
  servizio->ModalitaInvio(kvAutomatico);
  journal->Fallisce("Ambiente.CreaComponenteSmtp", host::Errore(host::kOggettoNonCreabile));
  ConRegistro();
  Collezione().Add("a@x.example", "Anna");
  servizio->AvviaProceduraInvio();
  EXPECT_EQ(servizio->Stato(), kvOK);  // unchanged: no channel has run
  EXPECT_EQ(journal->Conta("ObjRegistroInvio.RegistraInvio"), 0U);
  const auto righe = journal->Righe({"TextStream.WriteLine"});
  ASSERT_FALSE(righe.empty());
  EXPECT_THAT(righe.back(), HasSubstr("ErroreInvio   SendWithSmtp   "));
}

// Simple MAPI records its failures; if the recording fails too, the error reaches the caller.
TEST_F(Invio, AnErrorThatAChannelPassesOnIsReportedByInviaMail) {
  servizio->SrvMailInstallato = kvSimpleMAPI;
  ConRegistro();
  Collezione().Add("a@x.example", "Anna");
  servizio->vCorpoMail = "corpo";
  journal->Fallisce("ObjRegistroInvio.EsitoInvio 1", {1001, "Registro", "pieno"});
  journal->Fallisce("MAPIMessages.Send", {32002, "MAPI", "nessuna sessione"});
  servizio->ModalitaInvio(kvAutomatico);
  servizio->InviaMail();
  EXPECT_THAT(journal->Righe({"TextStream.WriteLine"}).back(), HasSubstr("ErroreInvio   InviaMail   "));
  EXPECT_THAT(Messaggi(), IsEmpty());
  servizio->ModalitaInvio(kvManuale);
  servizio->InviaMail();
  EXPECT_THAT(Messaggi(),
              ElementsAre("ObjMessaggi.MostraMsg 1001-pieno in ORVE_MAILSERVER:CLSFW_MAILSERVER - "
                          "InviaMail|0||(assente)"));
}

TEST_F(Invio, AnErrorInTheProcedureIsLoggedUnattendedAndShownToAPerson) {
  servizio->SrvMailInstallato = kvSimpleMAPI;
  journal->Fallisce("MAPIMessages.Compose", {32002, "MAPI", "nessuna sessione"});
  servizio->ModalitaInvio(kvAutomatico);
  servizio->AvviaProceduraInvio();
  EXPECT_THAT(journal->Righe({"TextStream.WriteLine"}).back(),
              HasSubstr("ErroreInvio   AvviaProceduraInvio   "));
  EXPECT_THAT(Messaggi(), IsEmpty());
  servizio->ModalitaInvio(kvManuale);
  servizio->AvviaProceduraInvio();
  EXPECT_THAT(Messaggi(),
              ElementsAre("ObjMessaggi.MostraMsg 32002 nessuna sessione ORVE_MAILSERVER: CLSFW_MAILSERVER: "
                          "AvviaProceduraInvio|0||(assente)"));
}

TEST_F(Invio, AnErrorOfAnAttendedSendWritesNoLog) {
  servizio->SrvMailInstallato = kvSimpleMAPI;
  servizio->ModalitaInvio(kvManuale);
  journal->Fallisce("Ambiente.CreaMAPIMessages", host::Errore(host::kOggettoNonCreabile));
  servizio->AvviaProceduraInvio();
  EXPECT_THAT(journal->Righe({"FileSystem", "TextStream"}), IsEmpty());
}

// The journal shows that each procedure on the way out has tried to report it.
TEST_F(Invio, AMessageThatCannotBeShownEndsAtThePublicEntry) {
  ConRegistro();
  servizio->ModalitaInvio(kvManuale);
  servizio->SrvMailInstallato = kvSMTPSSLMail;
  journal->Fallisce("Ambiente.CreaComponenteSmtp", host::Errore(host::kOggettoNonCreabile));
  journal->Fallisce("ObjMessaggi.MostraMsg", {1002, "Messaggi", "senza finestra"});
  Collezione().Add("a@x.example", "Anna");
  EXPECT_NO_THROW(servizio->AvviaProceduraInvio());
  EXPECT_THAT(Messaggi(), ElementsAre(HasSubstr("- SendWithSmtp|"), HasSubstr("1002-senza finestra in"),
                                      HasSubstr(" AvviaProceduraInvio|")));
  journal->Svuota();
  EXPECT_NO_THROW(servizio->InviaMail());
  EXPECT_THAT(Messaggi(), ElementsAre(HasSubstr("- SendWithSmtp|"), HasSubstr("- InviaMail|")));
}

TEST_F(Invio, AFailingRegisterEndsTheRefusalInTheProceduresHandler) {
  servizio->SrvMailInstallato = kvNoMail;
  servizio->ModalitaInvio(kvManuale);
  ConRegistro();
  journal->Fallisce("ObjRegistroInvio.RegistraInvio", {1001, "Registro", "pieno"});
  servizio->AvviaProceduraInvio();
  EXPECT_EQ(servizio->Stato(), kvInvioNonImpostato);
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 1001 pieno ORVE_MAILSERVER: CLSFW_MAILSERVER: "
                                      "AvviaProceduraInvio|0||(assente)"));
  EXPECT_EQ(journal->Conta("ConnectionADO.CreateCommand"), 0U);
}

}  // namespace
}  // namespace orve
