// Every object of a send is released: each that announces its birth on the debug output announces its death
// under the same identifier, once, whatever way the send took and however it ended.
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "fakes/headless.h"
#include "fakes/servizio_di_prova.h"

namespace orve {
namespace {

using ::testing::IsEmpty;

/// What the trace lines say: the classes that were born, and every object whose lines are not one birth and,
/// behind it, one death.
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

struct CasoInvio {
  const char* etichetta;
  std::function<void(const std::shared_ptr<fakes::FakeAmbiente>&, CLSFW_MAILSERVER&)> invio;
  std::set<std::string> wantAltreClassi;  // beside service, collection and recipient
};

fakes::Riga Account() {
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

void AncheFallito(const std::shared_ptr<fakes::FakeAmbiente>& ambiente, const char* guasto,
                  const std::function<void()>& invio) {
  invio();
  ambiente->journal->Fallisce(guasto);
  invio();
}

void ACollezione(CLSFW_MAILSERVER& servizio) {
  servizio.vCollDestinatari->Add("anna@x.example", "Anna");
  servizio.vCollDestinatari->AddFromLista("carla@x.example", "Carla", "", 1);
  servizio.AvviaProceduraInvio();
}

const CasoInvio kCasi[] = {
    {"SmtpWithAChosenSender",
     [](auto& ambiente, auto& servizio) {
       servizio.SrvMailInstallato = kvSMTPSSLMail;
       servizio.vMittente = std::make_shared<Mittente>(ambiente);
       servizio.vMittente->Server("smtp.azienda.example");
       AncheFallito(ambiente, "smtp.SendMail", [&] { ACollezione(servizio); });
     },
     {"Mittente"}},
    {"Outlook",
     [](auto& ambiente, auto& servizio) {
       servizio.SrvMailInstallato = kvOutlook;
       AccessoInterno{servizio}.objOutlookApp() = ambiente->CreaOutlook();
       AncheFallito(ambiente, "MailItem.Send", [&] { ACollezione(servizio); });
     },
     {}},
    {"SimpleMapi",
     [](auto& ambiente, auto& servizio) {
       servizio.SrvMailInstallato = kvSimpleMAPI;
       AncheFallito(ambiente, "MAPIMessages.Send", [&] { ACollezione(servizio); });
     },
     {}},
    {"Mapi32",
     [](auto& ambiente, auto& servizio) {
       servizio.SrvMailInstallato = kvMAPI;
       AncheFallito(ambiente, "MAPI32.BMAPISendMail", [&] { ACollezione(servizio); });
     },
     {}},
    {"ALookUpThatIsRefused",
     [](auto& /*ambiente*/, auto& servizio) {
       servizio.SrvMailInstallato = kvSMTPSSLMail;
       servizio.vCollDestinatari.reset();
       servizio.vIndDestinatario = "senza chiocciola";
       servizio.AvviaProceduraInvio();
     },
     {}},
    {"ADirectSendAndOneThatCannotBeRead",
     [](auto& /*ambiente*/, auto& servizio) {
       servizio.SrvMailInstallato = kvSMTPSSLMail;
       servizio.InviaMailDiretta(12, "Anna<anna@x.example>", "carla@x.example");
       servizio.InviaMailDiretta(12, "Anna<anna@x.example>;b>c<d");
     },
     {}},
    {"StandAloneSmtp",
     [](auto& ambiente, auto& servizio) {
       servizio.AddDestinatario("anna@x.example", "Anna");
       AncheFallito(ambiente, "smtp.SendMail", [&] { servizio.InviaMailSMTP("Avviso", "Corpo"); });
     },
     {}},
    {"TheComposeDialog",
     [](auto& ambiente, auto& servizio) {
       servizio.SrvMailInstallato = kvSMTPSSLMail;
       servizio.ModalitaInvio(kvManuale);
       servizio.vCollDestinatari.reset();
       servizio.vIndDestinatario = "anna@x.example";
       servizio.vOggetto = "Fattura 12";
       ambiente->persona = [](fakes::HeadlessForm& form) { form.Preme("cmd_Invia"); };
       servizio.AvviaProceduraInvio();
       EXPECT_EQ(ambiente->journal->Conta("smtp.SendMail"), 1U);
     },
     {"FRMRW_OPZMAIL", "CollMittenti", "Mittente"}},
    {"TheParametersDialog",
     [](auto& /*ambiente*/, auto& servizio) {
       servizio.SrvMailInstallato = kvSMTPSSLMail;
       servizio.ReturnMailParameters();
       servizio.vCollDestinatari->Add("anna@x.example", "Anna");
       servizio.AvviaProceduraInvio();
     },
     {"FRMFW_MAILPARAMS", "CollMittenti", "Mittente"}},
};

class TracciaDiUnInvio : public fakes::ServizioDiProva, public ::testing::WithParamInterface<CasoInvio> {};

TEST_P(TracciaDiUnInvio, EveryObjectIsReleased) {
  connessione->Risponde("FW98_MAILACCOUNT", {Account()});
  servizio.reset();
  journal->Svuota();
  {
    CLSFW_MAILSERVER nuovo(ambiente);
    nuovo.ConnectionADO = connessione;
    nuovo.ModalitaInvio(kvAutomatico);
    nuovo.vFlagCorpo = 1;
    nuovo.vCorpoMail = "Buongiorno";
    nuovo.vCollDestinatari = std::make_shared<CollDestinatari>(ambiente);
    AccessoInterno{nuovo}.ObjRegistroInvio() = ambiente->CreaRegistroInvio();
    GetParam().invio(ambiente, nuovo);
  }
  const Vite vite = LeggiTraccia(*journal);
  EXPECT_THAT(vite.irregolari, IsEmpty());
  auto wantClassi = GetParam().wantAltreClassi;
  wantClassi.insert({"CLSFW_MAILSERVER", "CollDestinatari", "Destinatario"});
  EXPECT_EQ(vite.classi, wantClassi);
}

INSTANTIATE_TEST_SUITE_P(Tabella, TracciaDiUnInvio, ::testing::ValuesIn(kCasi),
                         [](const auto& caso) { return std::string(caso.param.etichetta); });

TEST(TracciaDiUnInvioLetta, AnObjectThatIsNeverReleasedIsFound) {
  const auto ambiente = std::make_shared<fakes::FakeAmbiente>();
  const auto tenuta = std::make_shared<CollDestinatari>(ambiente);
  const auto irregolari = LeggiTraccia(*ambiente->journal).irregolari;
  ASSERT_EQ(irregolari.size(), 1U);
  EXPECT_THAT(irregolari.front(), ::testing::EndsWith("CollDestinatari INI"));
}

}  // namespace
}  // namespace orve
