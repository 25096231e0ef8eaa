// Creation, teardown, properties and the message procedure of the service.
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "fakes/errori.h"
#include "fakes/fake_rubrica.h"
#include "fakes/servizio_di_prova.h"
#include "service/failures.h"

namespace orve {
namespace {

using fakes::CreaFakeInterfaccia;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class Servizio : public fakes::ServizioDiProva {};

TEST_F(Servizio, CreationMakesMessagesThenTracesThenMakesTheFormatters) {
  const CLSFW_MAILSERVER altro(ambiente);
  EXPECT_THAT(journal->Righe(), ElementsAre("Ambiente.CreaMessaggi", StartsWith("debug QLNA:|"),
                                            "Ambiente.CreaFormatoData", "Ambiente.CreaFormatoNumero"));
  EXPECT_TRUE(journal->Righe()[1].ends_with("|INI|ORVE_MAILSERVER|CLSFW_MAILSERVER"));
}

TEST_F(Servizio, ACreationThatFailsIsAnnouncedDead) {
  for (const char* guasto : {"Ambiente.CreaFormatoData", "Ambiente.CreaFormatoNumero"}) {
    journal->Svuota();
    journal->Fallisce(guasto, host::Errore(host::kOggettoNonCreabile));
    EXPECT_THROW(CLSFW_MAILSERVER{ambiente}, host::Errore) << guasto;
    journal->DimenticaPiani();
    const auto righe = journal->Righe({"debug "});
    ASSERT_EQ(righe.size(), 2U) << guasto;
    EXPECT_TRUE(righe[1].ends_with("|TER|ORVE_MAILSERVER|CLSFW_MAILSERVER")) << guasto;
  }
}

TEST_F(Servizio, TheEnumerationsHaveTheirPublishedValues) {
  EXPECT_THAT(
      (std::vector<int>{kvOK, kvParametriNonValidi, kvErroreInvioMail, kvInvioNonImpostato, kvProgramError}),
      ElementsAre(0, 1, 2, 3, 99));
  EXPECT_THAT((std::vector<int>{kvSimpleMAPI, kvOutlook, kvMAPI, kvNoMail, kvSMTPMail, kvSMTPSSLMail}),
              ElementsAre(0, 1, 2, 3, 76, 77));
  EXPECT_THAT((std::vector<int>{kvManuale, kvAutomatico, kvSemiAuto, kvListaDistribuzione}),
              ElementsAre(0, 1, 2, 3));
  EXPECT_THAT((std::vector<int>{kvSingoloAllegato, kvAllegatiMultipli}), ElementsAre(0, 1));
  EXPECT_THAT(
      (std::vector<int>{kvDestinatarioFaxAnagrafica, kvDestinatarioFaxCliente, kvDestinatarioFaxFornitore,
                        kvDestinatarioFaxDitta, kvDestinatarioFaxAgente, kvDestinatarioFaxVettore,
                        kvDestinatarioFaxSpedizioniere, kvDestinatarioFaxMittente,
                        kvDestinatarioFaxIntermediarioTel, kvDestinatarioFaxNumero, kvDestinatarioFaxContatto,
                        kvDestinatarioFaxDestinatario}),
      ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11));
  EXPECT_EQ(sizeof(kvEnum_ErroreMail), 4U);
  EXPECT_EQ(sizeof(kvEnum_ServizioMail), 4U);
  EXPECT_EQ(sizeof(kvEnumModalitaInvio), 4U);
  EXPECT_EQ(sizeof(kvTipologiaAllegati), 4U);
  EXPECT_EQ(sizeof(kvTipologiaDestinatarioFAX), 4U);
}

TEST_F(Servizio, ANewObjectHoldsTheDefaultsOfItsInterface) {
  const CLSFW_MAILSERVER nuovo(ambiente);
  EXPECT_EQ(nuovo.Stato(), 0);
  EXPECT_TRUE(nuovo.Descrizione().IsEmpty());
  EXPECT_EQ(nuovo.ModalitaInvio(), 0);
  EXPECT_EQ(nuovo.SrvMailInstallato, 0);
  EXPECT_EQ(nuovo.vFlagCorpo, 0);
  EXPECT_TRUE(nuovo.vElencoAllegati.IsEmpty());
  EXPECT_TRUE(nuovo.DittaCorrente.IsEmpty());
  EXPECT_EQ(nuovo.vCollDestinatari, nullptr);
  EXPECT_EQ(nuovo.vCollMittenti, nullptr);
  EXPECT_EQ(nuovo.vMittente, nullptr);
  EXPECT_EQ(nuovo.ConnectionADO, nullptr);
  EXPECT_EQ(nuovo.tempPath(), "");
  EXPECT_EQ(nuovo.IsLista(), 0);
  EXPECT_EQ(nuovo.DataValiditaCodiceDestinatario().giorni, 0);
  EXPECT_EQ(nuovo.MailParamTipo(), 0);
  EXPECT_FALSE(nuovo.IsPec());
  EXPECT_FALSE(nuovo.InvioSMTP());
  EXPECT_EQ(nuovo.ManagerRubrica, nullptr);
  EXPECT_EQ(nuovo.ActiveInterface, nullptr);
  EXPECT_EQ(nuovo.BeforeSendMail, nullptr);
  EXPECT_EQ(nuovo.vIndTipologiaAllegati, 0);
  for (const bool segno :
       {nuovo.ReadReceipt, nuovo.FlgMsgPers, nuovo.vNotifyDelivery, nuovo.vNotifyRead,
        nuovo.vDisableNotifyDelivery, nuovo.vDisableNotifyRead, nuovo.silentMode, nuovo.MailParamReadRcpt(),
        nuovo.MailParamDeliveryStatus(), nuovo.IsInvioMailConParams(), nuovo.IsStampaDifferita(),
        nuovo.MailParamIsValoriValidi()}) {
    EXPECT_FALSE(segno);
  }
  for (const std::string& testo : {nuovo.vIndDestinatario,
                                   nuovo.vNome,
                                   nuovo.vDitta,
                                   nuovo.vOggetto,
                                   nuovo.vTestoMail,
                                   nuovo.vMailAttachment,
                                   nuovo.vCorpoMail,
                                   nuovo.MsgPers,
                                   nuovo.INFO_TipoDoc,
                                   nuovo.INFO_NumReg,
                                   nuovo.INFO_NumDoc,
                                   nuovo.INFO_SezDoc,
                                   nuovo.INFO_RagSocCliFor(),
                                   nuovo.vSenderName,
                                   nuovo.vSenderAddress,
                                   nuovo.errDescription,
                                   nuovo.errNumber,
                                   nuovo.MailParamAllegatoUnico(),
                                   nuovo.MailParamCorpoUnico(),
                                   nuovo.ListaGuid(),
                                   nuovo.DestinatariA(),
                                   nuovo.DestinatariCC(),
                                   nuovo.DestinatariCCn(),
                                   nuovo.Allegati(),
                                   nuovo.MailCorpo(),
                                   nuovo.MailOggetto()}) {
    EXPECT_EQ(testo, "");
  }
}

TEST_F(Servizio, WritingTheModeForcesItAndMinusOneGivesTheChoiceBack) {
  interno.impostazioni.ModalitaStandard = kvAutomatico;
  interno.impostazioni.ModalitaStampaDifferita = kvListaDistribuzione;
  servizio->ModalitaInvio(kvSemiAuto);
  EXPECT_EQ(servizio->ModalitaInvio(), kvSemiAuto);
  servizio->ModalitaInvio(42);
  EXPECT_EQ(static_cast<int>(servizio->ModalitaInvio()), 42);
  servizio->ModalitaInvio(-1);
  EXPECT_EQ(servizio->ModalitaInvio(), kvAutomatico);
  servizio->IsStampaDifferita(true);
  EXPECT_EQ(servizio->ModalitaInvio(), kvListaDistribuzione);
}

TEST_F(Servizio, ReadingMailParamAccountCreatesAndKeepsAnEmptyAccount) {
  const auto primo = servizio->MailParamAccount();
  ASSERT_NE(primo, nullptr);
  EXPECT_EQ(primo->Indirizzo(), "");
  EXPECT_EQ(servizio->MailParamAccount(), primo);
  const auto altro = std::make_shared<Mittente>(ambiente);
  servizio->MailParamAccount(altro);
  EXPECT_EQ(servizio->MailParamAccount(), altro);
}

TEST_F(Servizio, EachPropertyGivesBackWhatWasWritten) {
  servizio->MailParamTipo(2.5F);
  servizio->MailParamReadRcpt(true);
  servizio->MailParamDeliveryStatus(true);
  servizio->MailParamAllegatoUnico("a.pdf");
  servizio->MailParamCorpoUnico("corpo");
  servizio->MailParamIsValoriValidi(true);
  servizio->IsPec(true);
  servizio->IsInvioMailConParams(true);
  servizio->ListaGuid("{1}");
  servizio->IsLista(3);
  servizio->DataValiditaCodiceDestinatario(host::DataOra{45000});
  servizio->MailCorpo("c");
  servizio->MailOggetto("o");
  servizio->INFO_RagSocCliFor("Rossi");
  servizio->InvioSMTP(true);
  EXPECT_EQ(servizio->MailParamTipo(), 2.5F);
  EXPECT_TRUE(servizio->MailParamReadRcpt());
  EXPECT_TRUE(servizio->MailParamDeliveryStatus());
  EXPECT_EQ(servizio->MailParamAllegatoUnico(), "a.pdf");
  EXPECT_EQ(servizio->MailParamCorpoUnico(), "corpo");
  EXPECT_TRUE(servizio->MailParamIsValoriValidi());
  EXPECT_TRUE(servizio->IsPec());
  EXPECT_TRUE(servizio->IsInvioMailConParams());
  EXPECT_EQ(servizio->ListaGuid(), "{1}");
  EXPECT_EQ(servizio->IsLista(), 3);
  EXPECT_EQ(servizio->DataValiditaCodiceDestinatario().giorni, 45000);
  EXPECT_EQ(servizio->MailCorpo(), "c");
  EXPECT_EQ(servizio->MailOggetto(), "o");
  EXPECT_EQ(servizio->INFO_RagSocCliFor(), "Rossi");
  EXPECT_TRUE(servizio->InvioSMTP());
}

TEST_F(Servizio, AMessageGoesToTheHostsMessageObject) {
  servizio->ActiveInterface = CreaFakeInterfaccia(*ambiente);
  EXPECT_EQ(MostraMessaggio(interno.oggetti, "testo", 48, "titolo"), ambiente->rispostaMessaggio);
  EXPECT_THAT(journal->Righe({"Host.Messaggi", "ObjMessaggi"}),
              ElementsAre("Host.Messaggi.MostraMsg testo|48|titolo|(assente)"));
}

TEST_F(Servizio, EachTestOfTheHostsChainFetchesItAnew) {
  servizio->ActiveInterface = CreaFakeInterfaccia(*ambiente);
  MostraMessaggio(interno.oggetti, "testo", 0, "");
  EXPECT_EQ(journal->Conta("ActiveInterface.Applicazione"), 3U);
}

TEST_F(Servizio, AMessageGoesToItsOwnObjectWithoutAHost) {
  MostraMessaggio(interno.oggetti, "testo", 16, "titolo");
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg testo|16|titolo|(assente)"));
}

TEST_F(Servizio, AHostWithoutApplicationIsNoError) {
  servizio->ActiveInterface = CreaFakeInterfaccia(*ambiente, 7, false);
  MostraMessaggio(interno.oggetti, "testo", 0, "");
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg testo|0||(assente)"));
}

TEST_F(Servizio, AHostWithoutMessageObjectIsNoError) {
  servizio->ActiveInterface = CreaFakeInterfaccia(*ambiente, 7, true, false);
  MostraMessaggio(interno.oggetti, "testo", 0, "");
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg testo|0||(assente)"));
}

TEST_F(Servizio, AHostThatTakesItsInterfaceAwayWhileItIsAskedIsAnError91) {
  for (const int volta : {1, 2, 3}) {
    servizio->ActiveInterface = CreaFakeInterfaccia(*ambiente);
    const std::weak_ptr<host::InterfacciaHost> tolta = servizio->ActiveInterface;
    int chiesta = 0;
    journal->DimenticaPiani();
    journal->Svuota();
    journal->Quando("ActiveInterface.Applicazione", [&] {
      if (++chiesta != volta) return;
      servizio->ActiveInterface.reset();
      EXPECT_FALSE(tolta.expired()) << "gone in the middle of its own call";
    });
    const bool inTempo = volta == 3;  // the last thing that is asked of it
    const auto numero = fakes::NumeroDi([&] { MostraMessaggio(interno.oggetti, "testo", 0, ""); });
    EXPECT_EQ(numero, inTempo ? 0 : host::kOggettoNonImpostato) << volta;
    EXPECT_EQ(journal->Conta("Host.Messaggi.MostraMsg"), inTempo ? 1U : 0U) << volta;
    EXPECT_THAT(Messaggi(), IsEmpty()) << volta;
    EXPECT_TRUE(tolta.expired()) << volta;
  }
}

TEST_F(Servizio, NothingIsBornWithoutAnAmbiente) {
  const std::shared_ptr<host::Ambiente> assente;
  const std::pair<const char*, std::function<void()>> casi[] = {
      {"CLSFW_MAILSERVER", [&] { const CLSFW_MAILSERVER nato(assente); }},
      {"CollDestinatari", [&] { const CollDestinatari nato(assente); }},
      {"CollMittenti", [&] { const CollMittenti nato(assente); }},
      {"Mittente", [&] { const Mittente nato(assente); }},
  };
  for (const auto& [classe, crea] : casi) {
    try {
      crea();
      ADD_FAILURE() << classe;
    } catch (const host::Errore& errore) {
      EXPECT_EQ(errore.Numero(), host::kOggettoNonImpostato) << classe;
      EXPECT_EQ(errore.Descrizione(), "Impossibile creare " + std::string(classe) + " senza un Ambiente");
    }
  }
}

TEST_F(Servizio, AFailingMessageObjectFailsItsCaller) {
  journal->Fallisce("ObjMessaggi.MostraMsg");
  EXPECT_THROW(MostraMessaggio(interno.oggetti, "testo", 0, ""), host::Errore);
}

// What teardown does, one line each. What it leaves undone, the fields do themselves, last field first: only
// the order shows that a step was made.
class FineDelServizio : public Servizio {
 protected:
  FineDelServizio() {
    ConRegistro();
    servizio->vCollDestinatari = std::make_shared<CollDestinatari>(ambiente);
    servizio->vCollMittenti = std::make_shared<CollMittenti>(ambiente);
    servizio->ManagerRubrica = std::make_shared<fakes::FakeRubrica>(journal);
    servizio->ActiveInterface = CreaFakeInterfaccia(*ambiente);
    Osserva(interno.oggetti.ObjMessaggi, "ObjMessaggi");
    Osserva(interno.oggetti.ObjRegistroInvio, "ObjRegistroInvio");
    Osserva(servizio->vCollDestinatari, "vCollDestinatari");
    Osserva(servizio->vCollMittenti, "vCollMittenti");
    Osserva(servizio->ManagerRubrica, "ManagerRubrica");
    Osserva(servizio->ConnectionADO, "ConnectionADO");
    Osserva(servizio->ActiveInterface, "ActiveInterface");
    Osserva(interno.oggetti.ObjFormatoData, "ObjFormatoData");
    Osserva(interno.oggetti.ObjFormatoNumero, "ObjFormatoNumero");
  }

  /// Releases the service, and returns what it did from first to last.
  std::vector<std::string> Passi() {
    journal->Svuota();
    servizio.reset();
    return journal->Righe({"rilascio", "ObjRegistroInvio", "MAPISession"});
  }
  std::vector<std::string> PassiCon(const std::vector<std::string>& delCanale) const {
    std::vector<std::string> passi = {"rilascio ObjMessaggi", "ObjRegistroInvio.Connessione (assente)",
                                      "rilascio ObjRegistroInvio"};
    passi.insert(passi.end(), delCanale.begin(), delCanale.end());
    passi.insert(passi.end(),
                 {"rilascio vCollDestinatari", "rilascio vCollMittenti", "rilascio ManagerRubrica",
                  "rilascio ConnectionADO", "rilascio ActiveInterface", "rilascio ObjFormatoData",
                  "rilascio ObjFormatoNumero"});
    return passi;
  }

 private:
  /// From now on the journal shows when the field releases its object.
  template <class T>
  void Osserva(std::shared_ptr<T>& campo, const std::string& nome) const {
    auto* const oggetto = campo.get();
    campo = std::shared_ptr<T>(
        oggetto, [vero = campo, giornale = journal, nome](T*) { giornale->Add("rilascio " + nome); });
  }
};

TEST_F(FineDelServizio, IsTracedFirst) {
  servizio->SrvMailInstallato = kvSMTPMail;
  journal->Svuota();
  servizio.reset();
  EXPECT_THAT(journal->Righe()[0], StartsWith("debug QLNA:|"));
  EXPECT_TRUE(journal->Righe()[0].ends_with("|TER|ORVE_MAILSERVER|CLSFW_MAILSERVER"));
}

TEST_F(FineDelServizio, TakesEveryStepInItsOrderOnChannelsWithoutAnObject) {
  servizio->SrvMailInstallato = kvSMTPMail;
  interno.oggetti.objMapiSession = ambiente->CreaMAPISession();  // of another channel: goes with the object
  auto passi = Passi();
  ASSERT_FALSE(passi.empty());
  EXPECT_EQ(passi.back(), "rilascio MAPISession");
  passi.pop_back();
  EXPECT_EQ(passi, PassiCon({}));
}

TEST_F(FineDelServizio, SignsOffOnSimpleMapiAndGoesOn) {
  interno.oggetti.objMapiSession = ambiente->CreaMAPISession();
  ASSERT_EQ(servizio->SrvMailInstallato, kvSimpleMAPI);
  EXPECT_EQ(Passi(), PassiCon({"MAPISession.SignOff", "rilascio MAPISession"}));
}

TEST_F(FineDelServizio, GoesOnWithoutASession) {
  ASSERT_EQ(servizio->SrvMailInstallato, kvSimpleMAPI);
  EXPECT_EQ(Passi(), PassiCon({}));
}

TEST_F(FineDelServizio, TriesEachStepWhateverTheOneBeforeDid) {
  interno.oggetti.objMapiSession = ambiente->CreaMAPISession();
  journal->Fallisce("ObjRegistroInvio.Connessione");
  journal->Fallisce("MAPISession.SignOff");
  EXPECT_EQ(Passi(), PassiCon({"MAPISession.SignOff", "rilascio MAPISession"}));
}

TEST_F(FineDelServizio, GoesOnWithoutARegister) {
  interno.oggetti.ObjRegistroInvio.reset();
  servizio->SrvMailInstallato = kvMAPI;
  std::vector<std::string> attesi = PassiCon({});
  attesi.erase(attesi.begin() + 1, attesi.begin() + 3);
  EXPECT_EQ(Passi(), attesi);
}

TEST_F(FineDelServizio, EndsOnOutlookWithTheApplicationAndTheConnectionAndTheRestGoesWithTheObject) {
  interno.oggetti.objOutlookApp = ambiente->CreaOutlook();
  servizio->SrvMailInstallato = kvOutlook;
  EXPECT_THAT(Passi(),
              ElementsAre("rilascio ObjMessaggi", "ObjRegistroInvio.Connessione (assente)",
                          "rilascio ObjRegistroInvio", "rilascio Outlook", "rilascio ConnectionADO",
                          "rilascio ObjFormatoNumero", "rilascio ObjFormatoData", "rilascio ActiveInterface",
                          "rilascio vCollMittenti", "rilascio ManagerRubrica", "rilascio vCollDestinatari"));
}

}  // namespace
}  // namespace orve
