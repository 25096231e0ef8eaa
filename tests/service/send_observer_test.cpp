// What the host's observer is told of a send, incident by incident, and that being observed changes nothing:
// neither what the outside objects are asked nor how the send ends.
//
// What holds for every channel is tried with each; beside that stands word for word what some of them tell.
#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "addressing/accounts.h"
#include "channels/channel_traits.h"
#include "fakes/errori.h"
#include "fakes/oggetti_del_canale.h"
#include "fakes/osservatore_annotato.h"
#include "fakes/servizio_di_prova.h"
#include "service/guards.h"
#include "service/invio_diretto.h"

namespace orve {
namespace {

using ::testing::AllOf;
using ::testing::AnyOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

struct InvioOsservato {
  InvioOsservato(kvEnum_ServizioMail canale, host::OsservatoreInvio* osservatore) {
    ambiente->osservatore = osservatore;
    ambiente->testoData = "14/11/2026";
    servizio->ConnectionADO = connessione;
    servizio->SrvMailInstallato = canale;
    servizio->ModalitaInvio(kvAutomatico);
    servizio->vFlagCorpo = 1;
    servizio->vCorpoMail = "Buongiorno";
    servizio->vDitta = "Acme S.p.A.";
    servizio->DittaCorrente = 1;
    servizio->vSenderAddress = "noi@azienda.example";
    servizio->AddAllegato("C:\\a.pdf");
    servizio->AddAllegato("C:\\b.pdf");
    servizio->vCollDestinatari = std::make_shared<CollDestinatari>(ambiente);
    servizio->vCollDestinatari->Add("anna@x.example", "Anna");
    interno.account.SmtpServer = "smtp.azienda.example";
    interno.impostazioni.PathTemp = "C:\\Temp";
    ambiente->versioneOutlook = "14.0.0.7268";
    interno.oggetti.objOutlookApp = ambiente->CreaOutlook();
    interno.oggetti.ObjRegistroInvio = ambiente->CreaRegistroInvio();
    journal->Svuota();
  }

  std::shared_ptr<fakes::FakeAmbiente> ambiente = std::make_shared<fakes::FakeAmbiente>();
  fakes::JournalPtr journal = ambiente->journal;
  std::shared_ptr<fakes::FakeConnection> connessione = std::make_shared<fakes::FakeConnection>(journal);
  fakes::ServizioAperto aperto{ambiente};
  std::unique_ptr<CLSFW_MAILSERVER>& servizio = aperto.servizio;
  Interno& interno = aperto.interno;
};

struct CasoOsservato {
  const char* nome;
  kvEnum_ServizioMail canale;
  std::function<void(InvioOsservato&)> prepara;
  std::vector<std::string> atteso;
};

void PrintTo(const CasoOsservato& caso, std::ostream* uscita) {
  *uscita << caso.nome;
}

// A step that fails with 1001 "guasto di prova".
std::function<void(InvioOsservato&)> Guasto(std::string inizio) {
  return [inizio = std::move(inizio)](InvioOsservato& invio) { invio.journal->Fallisce(inizio); };
}

std::function<void(InvioOsservato&)> Finisce(const char* inizio, host::FineConsegna fine) {
  return [inizio, fine = std::move(fine)](InvioOsservato& invio) {
    invio.ambiente->fineConsegna = fine;
    if (*inizio != '\0') invio.journal->Fallisce(inizio, {32002, "MAPI", "non accettato"});
  };
}

void Niente(InvioOsservato& /*invio*/) {}

std::string RigaDiLog(const std::string& procedura) {
  return "log Acme S.p.A.                                ErroreInvio   " + procedura +
         "      14/11/2026   10:22:05";
}

const std::string kAnnaInviata = "registrata 0|Anna|Anna<anna@x.example>|";
const std::string kAnnaNonInviata = "registrata 1|Anna|Anna<anna@x.example>|";
const std::string kGuasto = "1001 guasto di prova";

const std::vector<CasoOsservato> kCasiOsservati = {
    {"SmtpSucceeds", kvSMTPSSLMail, Niente, {"iniziata 77", "riuscita|", kAnnaInviata}},
    {"SmtpIsRefused",
     kvSMTPSSLMail,
     [](InvioOsservato& invio) {
       invio.ambiente->risultatoSmtp = 4;
       invio.ambiente->fineConsegna = {"550 no", false};
     },
     {"iniziata 77", "fallita 4|550 no",
      kAnnaNonInviata + "Server si rifiuta di inoltrare mail ad uno o più indirizzi"}},
    {"SmtpLosesTheAnswer",
     kvSMTPSSLMail,
     [](InvioOsservato& invio) {
       invio.ambiente->risultatoSmtp = 5;
       invio.ambiente->fineConsegna = {"rete interrotta", true};
     },
     {"iniziata 77", "fallita 5|rete interrotta|incerta",
      kAnnaNonInviata + "Errore nell'invio dati del destinatario"}},
    {"SmtpRaises",
     kvSMTPSSLMail,
     Guasto("smtp.SendMail"),
     {"iniziata 77", "fallita 1001|guasto di prova|incerta", "messaggio guasto di prova|48",
      kAnnaNonInviata + "Errore di connessione con il server"}},
    {"SmtpAnswersNonsense",
     kvSMTPSSLMail,
     [](InvioOsservato& invio) { invio.ambiente->risultatoSmtp = "boh"; },
     {"iniziata 77", "fallita 0||incerta", RigaDiLog("SendWithSmtp")}},
    {"SmtpIsRaisedAtBeforeItIsAskedToSend",
     kvSMTPSSLMail,
     Guasto("smtp.Subject"),
     {"iniziata 77", "messaggio guasto di prova|48",
      kAnnaNonInviata + "Errore di connessione con il server"}},
    {"SmtpRefusesAFile",
     kvSMTPSSLMail,
     Guasto("smtp.AddAttachment C:\\b.pdf"),
     {"iniziata 77", "allegato C:\\b.pdf|" + kGuasto, "messaggio guasto di prova|48", "riuscita|",
      kAnnaInviata}},
    {"SmtpCannotBeCreated",
     kvSMTPSSLMail,
     Guasto("Ambiente.CreaComponenteSmtp"),
     {"oggetto non creato ComponenteSmtp|" + kGuasto, RigaDiLog("SendWithSmtp")}},
    {"TheRegisterRefuses",
     kvSMTPSSLMail,
     Guasto("ObjRegistroInvio.RegistraInvio"),
     {"iniziata 77", "riuscita|", "non registrata " + kGuasto, RigaDiLog("SendWithSmtp")}},

    {"OutlookSucceeds",
     kvOutlook,
     Niente,
     {"iniziata 1", "riuscita|", "registrata 0|Anna|Anna <anna@x.example>|"}},
    {"OutlookRaises",
     kvOutlook,
     Guasto("MailItem.Send"),
     {"iniziata 1", "fallita 1001|guasto di prova", RigaDiLog("SendWithOutlook")}},
    {"OutlookRefusesAFile",
     kvOutlook,
     Guasto("Attachments.Add C:\\a.pdf"),
     {"iniziata 1", "allegato C:\\a.pdf|" + kGuasto, "riuscita|",
      "registrata 0|Anna|Anna <anna@x.example>|"}},

    {"SimpleMapiSucceeds", kvSimpleMAPI, Niente, {"iniziata 0", "riuscita|", kAnnaInviata}},
    {"SimpleMapiRefuses",
     kvSimpleMAPI,
     Finisce("MAPIMessages.Send", {"di suo", false}),
     {"iniziata 0", "fallita 32002|non accettato", kAnnaNonInviata, RigaDiLog("SendWithSimpleMAPI")}},
    {"SimpleMapiLosesTheAnswer",
     kvSimpleMAPI,
     Finisce("MAPIMessages.Send", {"di suo", true}),
     {"iniziata 0", "fallita 32002|non accettato|incerta", kAnnaNonInviata, RigaDiLog("SendWithSimpleMAPI")}},
    {"SimpleMapiRefusesAFile",
     kvSimpleMAPI,
     Guasto("MAPIMessages.AttachmentPathName C:\\b.pdf"),
     {"iniziata 0", "allegato C:\\b.pdf|" + kGuasto, "riuscita|", kAnnaInviata}},
    {"SimpleMapiCannotBeCreated",
     kvSimpleMAPI,
     Guasto("Ambiente.CreaMAPIMessages"),
     {"oggetto non creato MSMAPI.MAPIMessages|" + kGuasto, kAnnaNonInviata, RigaDiLog("SendWithSimpleMAPI")}},

    {"Mapi32Succeeds",
     kvMAPI,
     Niente,
     {"iniziata 2", "riuscita|", "messaggio Message sent!|0", kAnnaInviata}},
    {"Mapi32Refuses",
     kvMAPI,
     [](InvioOsservato& invio) {
       invio.ambiente->esitoInvioMapi = 25;
       invio.ambiente->fineConsegna = {"nessun destinatario", false};
     },
     {"iniziata 2", "fallita 25|nessun destinatario", "messaggio Message not sent! Result = 25|0",
      kAnnaNonInviata + "FALLITO"}},
    {"Mapi32Raises",
     kvMAPI,
     Guasto("MAPI32.BMAPISendMail"),
     {"iniziata 2", "fallita 1001|guasto di prova|incerta"}},
    {"Mapi32OpensNoSession",
     kvMAPI,
     [](InvioOsservato& invio) {
       invio.ambiente->esitoLogonMapi = 3;
       invio.ambiente->fineConsegna = {"sendmail non c'è", false};
     },
     {"iniziata 2", "sessione negata 3|sendmail non c'è", "messaggio Logon failed. Result = 3|0"}},
    {"Mapi32CannotBeCreated",
     kvMAPI,
     Guasto("Ambiente.CreaMapi32"),
     {"oggetto non creato MAPI32.DLL|" + kGuasto}},

    {"TheLogCannotBeOpened",
     kvOutlook,
     [](InvioOsservato& invio) {
       invio.journal->Fallisce("MailItem.Send");
       invio.journal->Fallisce("FileSystem.OpenTextFile", {70, "Scripting", "permesso negato"});
     },
     {"iniziata 1", "fallita 1001|guasto di prova", "log non scritto 70 permesso negato"}},
    {"TheLogCannotBeWritten",
     kvOutlook,
     [](InvioOsservato& invio) {
       invio.journal->Fallisce("MailItem.Send");
       invio.journal->Fallisce("TextStream.WriteLine Acme", {61, "Scripting", "disco pieno"});
     },
     {"iniziata 1", "fallita 1001|guasto di prova", "log non scritto 61 disco pieno"}},
    {"TheLogCannotBeClosed",
     kvOutlook,
     [](InvioOsservato& invio) {
       invio.journal->Fallisce("MailItem.Send");
       invio.journal->Fallisce("TextStream.Close", {61, "Scripting", "disco pieno"});
     },
     {"iniziata 1", "fallita 1001|guasto di prova", RigaDiLog("SendWithOutlook"),
      "log non scritto 61 disco pieno"}},
    {"ThereIsNoFileSystem",
     kvOutlook,
     [](InvioOsservato& invio) {
       invio.journal->Fallisce("MailItem.Send");
       invio.journal->Fallisce("Ambiente.CreaFileSystem");
     },
     {"iniziata 1", "fallita 1001|guasto di prova", "log non scritto " + kGuasto}},
    {"TheFolderOfTheLogIsMissing",
     kvOutlook,
     [](InvioOsservato& invio) {
       invio.journal->Fallisce("MailItem.Send");
       invio.ambiente->cartelle.clear();
     },
     {"iniziata 1", "fallita 1001|guasto di prova", "senza cartella C:\\Temp"}},
};

using Preparazione = std::function<void(InvioOsservato&)>;

/// All that can be seen of the send from outside.
std::vector<std::string> VistoDaFuori(kvEnum_ServizioMail canale, const Preparazione& prepara,
                                      host::OsservatoreInvio* osservatore) {
  InvioOsservato invio(canale, osservatore);
  prepara(invio);
  invio.servizio->InviaMail();
  std::vector<std::string> visto = invio.journal->Righe();
  visto.push_back("Stato " + std::to_string(invio.servizio->Stato()));
  return visto;
}

/// What the observer is told of it.
std::vector<std::string> DettoA(kvEnum_ServizioMail canale, const Preparazione& prepara) {
  fakes::OsservatoreAnnotato osservatore;
  VistoDaFuori(canale, prepara, &osservatore);
  return osservatore.righe;
}

void NonCambiaNulla(kvEnum_ServizioMail canale, const Preparazione& prepara) {
  fakes::OsservatoreAnnotato osservatore;
  const auto inosservato = VistoDaFuori(canale, prepara, nullptr);
  EXPECT_EQ(VistoDaFuori(canale, prepara, &osservatore), inosservato);
  const auto detto = osservatore.righe;
  osservatore.righe.clear();
  osservatore.solleva = true;
  EXPECT_EQ(VistoDaFuori(canale, prepara, &osservatore), inosservato);
  EXPECT_EQ(osservatore.righe, detto);
}

class OsservatoreDellInvio : public ::testing::TestWithParam<CasoOsservato> {};

TEST_P(OsservatoreDellInvio, IsToldWhatBecameOfIt) {
  EXPECT_EQ(DettoA(GetParam().canale, GetParam().prepara), GetParam().atteso);
}

TEST_P(OsservatoreDellInvio, ChangesNothingEvenIfItRaises) {
  NonCambiaNulla(GetParam().canale, GetParam().prepara);
}

INSTANTIATE_TEST_SUITE_P(OgniCaso, OsservatoreDellInvio, ::testing::ValuesIn(kCasiOsservati),
                         [](const auto& caso) { return std::string(caso.param.nome); });

class OsservatoreDiOgniCanale : public ::testing::TestWithParam<fakes::OggettiDelCanale> {
 protected:
  /// What every channel owes its observer, whose presence changes nothing: not messages, nor log, nor records
  /// of what was not sent, which differ from one to another.
  static std::vector<std::string> Dovuto(const Preparazione& prepara) {
    NonCambiaNulla(GetParam().canale, prepara);
    std::vector<std::string> righe = DettoA(GetParam().canale, prepara);
    std::erase_if(righe, [](const std::string& riga) {
      return std::ranges::any_of(kDiversi, [&](const auto inizio) { return riga.starts_with(inizio); });
    });
    return righe;
  }

  const std::string iniziata = "iniziata " + std::to_string(GetParam().canale);

 private:
  static constexpr std::array<std::string_view, 3> kDiversi = {"messaggio ", "log ", "registrata 1|"};
};

TEST_P(OsservatoreDiOgniCanale, IsToldThatItSucceeded) {
  EXPECT_THAT(Dovuto(Niente), ElementsAre(iniziata, "riuscita|", StartsWith("registrata 0|Anna|Anna")));
}

TEST_P(OsservatoreDiOgniCanale, IsToldThatItWasRefused) {
  EXPECT_THAT(Dovuto([](InvioOsservato& invio) { GetParam().rifiuta(*invio.ambiente); }),
              ElementsAre(iniziata, AllOf(StartsWith("fallita "), Not(StartsWith("fallita 0")))));
}

TEST_P(OsservatoreDiOgniCanale, IsToldThatHandingOverRaised) {
  EXPECT_THAT(Dovuto(Guasto(std::string(GetParam().invio))),
              ElementsAre(iniziata, StartsWith("fallita 1001|guasto di prova")));
}

TEST_P(OsservatoreDiOgniCanale, IsToldThatItsObjectCannotBeCreated) {
  const auto senza = [](InvioOsservato& invio) {
    invio.journal->Fallisce(fakes::RigaDiCreazione(GetParam()));
    invio.interno.oggetti.objOutlookApp.reset();
    const auto crea = TrattiDi(GetParam().canale)->crea;  // what the settings make of it
    if (crea != nullptr) IgnoraErrori([&] { crea(invio.interno.oggetti); });
  };
  EXPECT_THAT(Dovuto(senza), ElementsAre(AllOf(StartsWith("oggetto non creato "), EndsWith("|" + kGuasto))));
}

// An object that refuses the whole message for a file has told so.
TEST_P(OsservatoreDiOgniCanale, IsToldOfAFileThatIsRefused) {
  const auto senzaFile = [](InvioOsservato& invio) {
    GetParam().rifiutaFile(*invio.ambiente, "C:\\b.pdf", {1001, "Prova", "guasto di prova"});
  };
  EXPECT_THAT(Dovuto(senzaFile), AnyOf(ElementsAre(iniziata, "allegato C:\\b.pdf|" + kGuasto, "riuscita|",
                                                   StartsWith("registrata 0|Anna|Anna")),
                                       ElementsAre(iniziata, StartsWith("fallita "))));
}

INSTANTIATE_TEST_SUITE_P(OgniCanale, OsservatoreDiOgniCanale, ::testing::ValuesIn(fakes::OggettiDeiCanali()),
                         [](const auto& canale) { return std::string(canale.param.nome); });

class Osservati : public fakes::ServizioDiProva {
 protected:
  Osservati() { ambiente->osservatore = &osservatore; }
  void Annulla() {
    RegistraAnnullamentoDaUtente(interno.messaggio, interno.impostazioni, interno.contesto, interno.oggetti);
  }
  fakes::OsservatoreAnnotato osservatore;
};

TEST_F(Osservati, ARefusedSendIsALineOfTheRegister) {
  ConRegistro();
  servizio->SrvMailInstallato = kvNoMail;
  servizio->AvviaProceduraInvio();
  EXPECT_THAT(osservatore.righe, ElementsAre("registrata 1|||Invio mail disabilitato"));
  journal->Fallisce("ObjRegistroInvio.RegistraInvio");
  osservatore.righe.clear();
  interno.impostazioni.PathTemp = "C:\\Temp";
  servizio->ModalitaInvio(kvManuale);
  servizio->AvviaProceduraInvio();
  EXPECT_THAT(osservatore.righe,
              ElementsAre("non registrata 1001 guasto di prova",
                          "messaggio 1001 guasto di prova ORVE_MAILSERVER: CLSFW_MAILSERVER: "
                          "AvviaProceduraInvio|0"));
}

TEST_F(Osservati, ACancelledSendIsALineOfTheRegister) {
  ConRegistro();
  Annulla();
  EXPECT_THAT(osservatore.righe, ElementsAre("registrata 2|||Richiesta annullamento da utente"));
}

TEST_F(Osservati, TheObjectsOfTheSettingsAreNamedWhenTheyCannotBeCreated) {
  const auto conCanale = [&](kvEnum_ServizioMail canale) {
    connessione->Risponde("FW24_FAXCONFIG", {{{"FW24_INDFAXATTIVO", static_cast<std::int32_t>(canale)},
                                              {"FW24_INDMODALITA", 1},
                                              {"FW24_PATHTMP", "C:\\Temp"},
                                              {"FW24_MAILMODSTDIFF", 0},
                                              {"FW24_BCC", 0},
                                              {"FW24_READRECEIPT", 0},
                                              {"FW24_FLGMSGPERS", 0},
                                              {"FW24_MSGPERS", ""}}});
    osservatore.righe.clear();
    static_cast<void>(fakes::NumeroDi([&] { servizio->GetImpostazioni(); }));
    return osservatore.righe;
  };
  journal->Fallisce("Ambiente.CreaOutlook");
  journal->Fallisce("Ambiente.CreaMAPISession");
  EXPECT_THAT(conCanale(kvOutlook), ElementsAre("oggetto non creato Outlook.Application|1001 guasto di prova",
                                                "messaggio Errore in creazione istanza di Outlook|16"));
  EXPECT_THAT(conCanale(kvSimpleMAPI),
              ElementsAre("oggetto non creato MSMAPI.MAPISession|1001 guasto di prova"));
}

TEST_F(Osservati, AWindowThatCannotBeMadeIsTold) {
  journal->Fallisce("Ambiente.CreaForm", host::Errore(host::kOggettoNonCreabile));
  servizio->ReturnMailParameters();
  EXPECT_THAT(osservatore.righe, ElementsAre("finestra non aperta 429 Impossibile creare l'oggetto"));
}

TEST_F(Osservati, ADirectoryThatFailsIsToldAndOneThatIsNotThereIsNot) {
  const auto carica = [&] {
    osservatore.righe.clear();
    interno.account.SmtpServer.clear();
    CaricaAccountPredefinito(interno.messaggio, interno.account, interno.contesto, interno.oggetti);
    return osservatore.righe;
  };
  EXPECT_THAT(carica(), IsEmpty());
  ambiente->directoryPresente = true;
  EXPECT_THAT(carica(), IsEmpty());
  journal->Fallisce("DirectoryConnection.Execute", {440, "Directory", "la directory non risponde"});
  EXPECT_THAT(carica(), ElementsAre("directory 440 la directory non risponde"));
}

// Whose kind only its own type tells.
class ErroreDiUnaDirectory : public host::Errore {
 public:
  ErroreDiUnaDirectory() : Errore(440, "Directory", "come prima") {}
};

TEST_F(Osservati, AnErrorArrivesAsItWasRaised) {
  class Riconosce : public host::OsservatoreInvio {
   public:
    void RicercaInDirectoryFallita(const host::Errore& errore) override {
      riconosciuti += dynamic_cast<const ErroreDiUnaDirectory*>(&errore) != nullptr ? 1 : 0;
    }
    void RigaNonRegistrata(const host::Errore& errore) override {
      riconosciuti += dynamic_cast<const ErroreDiUnaDirectory*>(&errore) != nullptr ? 1 : 0;
    }
    int riconosciuti = 0;
  } riconosce;
  ambiente->osservatore = &riconosce;
  ambiente->directoryPresente = true;
  ConRegistro();
  const auto solleva = [] { throw ErroreDiUnaDirectory(); };
  journal->Quando("DirectoryConnection.Execute", solleva);
  journal->Quando("ObjRegistroInvio.RegistraInvio", solleva);
  CaricaAccountPredefinito(interno.messaggio, interno.account, interno.contesto, interno.oggetti);
  Annulla();
  EXPECT_EQ(riconosce.riconosciuti, 2);
}

TEST_F(Osservati, AForeignErrorHasItsTextAndNumber440) {
  ConRegistro();
  journal->Quando("ObjRegistroInvio.RegistraInvio", [] { throw std::runtime_error("estraneo"); });
  Annulla();
  ASSERT_FALSE(osservatore.righe.empty());
  EXPECT_EQ(osservatore.righe.front(), "non registrata 440 estraneo");
}

}  // namespace
}  // namespace orve
