// Every object of a send is released: each that announces its creation on the debug output announces its
// destruction under the same identifier, once, whatever path the send took and however it ended.
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "channels/channel_traits.h"
#include "fakes/headless.h"
#include "fakes/oggetti_del_canale.h"
#include "fakes/servizio_di_prova.h"
#include "service/guards.h"

namespace orve {
namespace {

using ::testing::Contains;
using ::testing::IsEmpty;
using ::testing::StartsWith;

/// What the trace lines say: the classes that were created, and every object whose lines are not one creation
/// followed by one destruction.
struct Vite {
  std::set<std::string> classi;
  std::vector<std::string> irregolari;
};

Vite LeggiTraccia(const fakes::Journal& journal) {
  std::map<std::string, std::string> eventi;  // by identifier and class
  Vite vite;
  for (const auto& riga : journal.Righe({"debug QLNA:|"})) {
    std::istringstream campi(riga);
    std::string etichetta;
    std::string id;
    std::string evento;
    std::string progetto;
    std::string classe;
    for (auto* campo : {&etichetta, &id, &evento, &progetto, &classe}) std::getline(campi, *campo, '|');
    eventi[id.append(" ").append(classe)] += evento;
    vite.classi.insert(classe);
  }
  for (const auto& [oggetto, visti] : eventi) {
    if (visti == "INITER") continue;
    vite.irregolari.push_back(oggetto);
    vite.irregolari.back().append(" ").append(visti);
  }
  return vite;
}

using AmbientePtr = std::shared_ptr<fakes::FakeAmbiente>;

struct CasoInvio {
  std::string etichetta;
  kvEnum_ServizioMail canale;
  std::function<void(const AmbientePtr&, CLSFW_MAILSERVER&, Interno&)> invio;
  std::string wantOperazione;             // how that begins which shows that the send got as far as it should
  std::set<std::string> wantAltreClassi;  // in addition to service, collection and recipient
};

fakes::Riga AccountTracciato() {
  return {{"FW23_SERVERNAME", "smtp.azienda.example"},
          {"FW23_PORT", 587},
          {"FW23_TIMEOUT", 60},
          {"FW23_INDAUTH", 0},
          {"FW23_SSL", 1},
          {"FW98_IDACCOUNT", 12},
          {"FW98_MAILADDRESS", "posta@azienda.example"},
          {"FW98_USERNAME", ""},
          {"FW98_PASSWORD", "{}"},
          {"ALIAS", "Azienda"},
          {"LETTURA", 0},
          {"CONSEGNA", 0}};
}

void ACollezione(const AmbientePtr& ambiente, CLSFW_MAILSERVER& servizio, Interno& /*interno*/) {
  servizio.vCollDestinatari = std::make_shared<CollDestinatari>(ambiente);
  servizio.vCollDestinatari->Add("anna@x.example", "Anna");
  servizio.vCollDestinatari->AddFromLista("carla@x.example", "Carla", "", 1);
  servizio.AddAllegato("C:\\Doc\\a.pdf");
  servizio.AvviaProceduraInvio();
}

void AIndirizzo(CLSFW_MAILSERVER& servizio, const std::string& indirizzo) {
  servizio.vCollDestinatari.reset();
  servizio.vIndDestinatario = indirizzo;
  servizio.AvviaProceduraInvio();
}

/// The person presses this button, if the window has got far enough for it to be pressed.
void AspettaPersona(const AmbientePtr& ambiente, const char* pulsante) {
  ambiente->persona = [pulsante](fakes::HeadlessForm& form) {
    if (form.Vede(pulsante) && form.Attivo(pulsante)) form.Preme(pulsante);
  };
}

const CasoInvio kCasi[] = {
    {"SmtpWithAChosenSender",
     kvSMTPSSLMail,
     [](auto& ambiente, auto& servizio, auto& interno) {
       servizio.vMittente = std::make_shared<Mittente>(ambiente);
       servizio.vMittente->Server("smtp.azienda.example");
       ACollezione(ambiente, servizio, interno);
     },
     "smtp.SendMail",
     {"Mittente"}},
    {"SimpleMapiFromTheSettingsOn",
     kvSimpleMAPI,
     [](auto& ambiente, auto& servizio, auto& interno) {
       servizio.GetImpostazioni();
       ACollezione(ambiente, servizio, interno);
     },
     "MAPIMessages.Send",
     {}},
    {"AnAddressOfTheCallers",
     kvSMTPSSLMail,
     [](auto& /*ambiente*/, auto& servizio, auto& interno) {
       interno.account.SmtpServer = "smtp.azienda.example";
       AIndirizzo(servizio, "anna@x.example");
     },
     "smtp.SendMail",
     {}},
    {"AnAddressThatIsRefused",
     kvSMTPSSLMail,
     [](auto& /*ambiente*/, auto& servizio, auto& /*interno*/) { AIndirizzo(servizio, "senza chiocciola"); },
     "ObjRegistroInvio.EsitoInvio 1",
     {}},
    {"AHandlerThatRaises",
     kvSMTPSSLMail,
     [](auto& ambiente, auto& servizio, auto& interno) {
       servizio.BeforeSendMail = [](auto&, auto&, auto&, auto&, auto&, auto&) {
         throw host::Errore(1001, "Chiamante", "no");
       };
       ACollezione(ambiente, servizio, interno);
     },
     "smtp.SendMail",
     {}},
    {"ADirectSendAndOneThatCannotBeRead",
     kvSMTPSSLMail,
     [](auto& /*ambiente*/, auto& servizio, auto& /*interno*/) {
       servizio.InviaMailDiretta(12, "Anna<anna@x.example>", "carla@x.example");
       servizio.InviaMailDiretta(12, "Anna<anna@x.example>;b>c<d");
     },
     "smtp.SendMail",
     {}},
    {"StandAloneSmtp",
     kvSMTPSSLMail,
     [](auto& /*ambiente*/, auto& servizio, auto& /*interno*/) {
       servizio.AddDestinatario("anna@x.example", "Anna");
       servizio.InviaMailSMTP("Avviso", "Corpo");
     },
     "smtp.SendMail",
     {}},
    {"TheComposeDialog",
     kvSMTPSSLMail,
     [](auto& ambiente, auto& servizio, auto& /*interno*/) {
       servizio.ModalitaInvio(kvManuale);
       AspettaPersona(ambiente, "cmd_Invia");
       AIndirizzo(servizio, "anna@x.example");
     },
     "smtp.SendMail",
     {"FRMRW_OPZMAIL", "CollMittenti", "Mittente"}},
    {"TheComposeDialogCancelled",
     kvOutlook,
     [](auto& ambiente, auto& servizio, auto& /*interno*/) {
       servizio.ModalitaInvio(kvManuale);
       AspettaPersona(ambiente, "cmd_Annulla");
       AIndirizzo(servizio, "anna@x.example");
     },
     "FRMRW_OPZMAIL chiusa",
     {"FRMRW_OPZMAIL"}},
    {"TheParametersDialog",
     kvSMTPSSLMail,
     [](auto& ambiente, auto& servizio, auto& interno) {
       servizio.ReturnMailParameters();
       ACollezione(ambiente, servizio, interno);
     },
     "FRMFW_MAILPARAMS chiusa",
     {"FRMFW_MAILPARAMS", "CollMittenti", "Mittente"}},
};

/// Through every channel, with what its settings make.
std::vector<CasoInvio> CasiDeiCanali() {
  std::vector<CasoInvio> casi;
  for (const fakes::OggettiDelCanale& oggetti : fakes::OggettiDeiCanali()) {
    const auto invio = [crea = TrattiDi(oggetti.canale)->crea](auto& ambiente, auto& servizio,
                                                               auto& interno) {
      if (crea != nullptr) crea(interno.oggetti);
      ACollezione(ambiente, servizio, interno);
    };
    casi.push_back({std::string(oggetti.nome), oggetti.canale, invio, std::string(oggetti.invio), {}});
  }
  return casi;
}

/// What is left of two sends on one service, over fakes of their own, when the service is gone.
struct Corsa {
  Vite vite;
  bool esterniRilasciati = false;
  std::set<std::string> operazioni;  // what was asked of the outside
};

/// The first send fails at each operation that begins so; with an empty text, at none.
Corsa Corri(const CasoInvio& caso, const std::string& guasto) {
  const auto ambiente = std::make_shared<fakes::FakeAmbiente>();
  const auto journal = ambiente->journal;
  const auto connessione = std::make_shared<fakes::FakeConnection>(journal);
  connessione->Risponde("FW98_MAILACCOUNT", {AccountTracciato()});
  if (!guasto.empty()) journal->Fallisce(guasto);
  const auto prima = journal.use_count();  // each of the outside's objects shares it
  IgnoraErrori([&] {
    fakes::ServizioAperto aperto(ambiente);
    CLSFW_MAILSERVER& servizio = *aperto.servizio;
    servizio.ConnectionADO = connessione;
    servizio.SrvMailInstallato = caso.canale;
    servizio.ModalitaInvio(kvAutomatico);
    servizio.vFlagCorpo = 1;
    servizio.vCorpoMail = "Buongiorno";
    aperto.interno.impostazioni.PathTemp = "C:\\Temp";
    aperto.interno.oggetti.ObjRegistroInvio = ambiente->CreaRegistroInvio();
    for (int volta = 0; volta < 2; ++volta) {
      IgnoraErrori([&] { caso.invio(ambiente, servizio, aperto.interno); });
      journal->DimenticaPiani();
    }
  });
  Corsa corsa{LeggiTraccia(*journal), journal.use_count() == prima, {}};
  for (const auto& riga : journal->Righe()) {
    if (!riga.starts_with("debug ") && !riga.starts_with("rilascio ")) corsa.operazioni.insert(riga);
  }
  return corsa;
}

class TracciaDiUnInvio : public ::testing::TestWithParam<CasoInvio> {};

TEST_P(TracciaDiUnInvio, EveryObjectIsReleased) {
  const Corsa corsa = Corri(GetParam(), "");
  EXPECT_THAT(corsa.operazioni, Contains(StartsWith(GetParam().wantOperazione)));
  EXPECT_THAT(corsa.vite.irregolari, IsEmpty());
  EXPECT_TRUE(corsa.esterniRilasciati);
  auto wantClassi = GetParam().wantAltreClassi;
  wantClassi.insert({"CLSFW_MAILSERVER", "CollDestinatari", "Destinatario"});
  EXPECT_EQ(corsa.vite.classi, wantClassi);
}

TEST_P(TracciaDiUnInvio, EveryObjectIsReleasedWhateverOperationFails) {
  for (const auto& operazione : Corri(GetParam(), "").operazioni) {
    const Corsa corsa = Corri(GetParam(), operazione);
    EXPECT_THAT(corsa.vite.irregolari, IsEmpty()) << operazione;
    EXPECT_TRUE(corsa.esterniRilasciati) << operazione;
  }
}

INSTANTIATE_TEST_SUITE_P(Tabella, TracciaDiUnInvio, ::testing::ValuesIn(kCasi),
                         [](const auto& caso) { return caso.param.etichetta; });
INSTANTIATE_TEST_SUITE_P(OgniCanale, TracciaDiUnInvio, ::testing::ValuesIn(CasiDeiCanali()),
                         [](const auto& caso) { return caso.param.etichetta; });

TEST(TracciaDiUnInvioLetta, AnObjectThatIsNeverReleasedIsFound) {
  const auto ambiente = std::make_shared<fakes::FakeAmbiente>();
  const auto tenuta = std::make_shared<CollDestinatari>(ambiente);
  const auto irregolari = LeggiTraccia(*ambiente->journal).irregolari;
  ASSERT_EQ(irregolari.size(), 1U);
  EXPECT_THAT(irregolari.front(), ::testing::EndsWith("CollDestinatari INI"));
}

}  // namespace
}  // namespace orve
