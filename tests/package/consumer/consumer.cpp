// A program over the shared libraries: errors and objects go through their boundaries both ways. It says what
// does not hold, and ends with 1 then.
#include <cstdint>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "orve-mailserver/host/ambiente.h"
#include "orve-mailserver/posix/percorsi.h"
#include "orve-mailserver/qt/finestre.h"
#include "orve-mailserver/service/CLSFW_MAILSERVER.h"
#include "orve-mailserver/version.h"

static_assert(ORVE_MAILSERVER_VERSION_MAJOR >= 1);

namespace {

namespace host = orve::host;

bool allIsWell = true;

void Check(bool holds, std::string_view what) {
  if (holds) return;
  std::cout << "does not hold: " << what << "\n";
  allIsWell = false;
}

template <class Call>
std::int32_t NumberRaisedBy(Call&& call) {
  try {
    call();
  } catch (const host::Errore& error) {
    return error.Numero();
  }
  return 0;
}

class Clock : public host::Orologio {
 public:
  [[nodiscard]] host::DataOra Adesso() override { return host::DataOra::Da(2026, 11, 22); }
  [[nodiscard]] std::string TestoData(host::DataOra istante) override {
    return host::TestoGiornoMeseAnno(istante);
  }
  [[nodiscard]] std::string TestoOra(host::DataOra istante) override {
    return host::TestoOraMinutiSecondi(istante);
  }
};

class Debug : public host::DebugOutput {
 public:
  void Scrivi(const std::string& riga) noexcept override {
    if (riga.find("INI") != std::string::npos) ++born;
    if (riga.find("TER") != std::string::npos) ++dead;
  }
  int born = 0;
  int dead = 0;
};

class Identifiers : public host::GeneratoreGuid {
 public:
  [[nodiscard]] std::optional<host::Guid> CreaGuid() override { return host::Guid{}; }
};

class Variables : public host::Environment {
 public:
  [[nodiscard]] std::string Leggi(const std::string&) override { return {}; }
};

class Network : public host::Rete {
 public:
  std::int32_t WNetGetUserA(std::string&) override { return 1; }
};

class Messages : public host::Messaggi {
 public:
  [[nodiscard]] std::string TitoloFinestra(const std::string& testo) override { return testo; }
  std::int32_t MostraMsg(const std::string&, std::int32_t, const std::string&,
                         const std::shared_ptr<host::Oggetto>&) override {
    return 0;
  }
};

class Dates : public host::FormatoData {
 public:
  void Data(const std::string&) override {}
  [[nodiscard]] std::int32_t Stato() const override { return 1; }
  [[nodiscard]] std::string DataDB() const override { return {}; }
};

class Numbers : public host::FormatoNumero {
 public:
  [[nodiscard]] host::Variant NumeroDB(const host::Variant& valore) override { return valore; }
};

struct Raises {
  template <class Object>
  operator std::shared_ptr<Object>() const {  // NOLINT(google-explicit-constructor)
    throw host::Errore(1000, "consumer", "not on this machine");
  }
};

// A machine on which there is a clock and little else.
class Surroundings : public host::Ambiente {
 public:
  [[nodiscard]] std::shared_ptr<host::Messaggi> CreaMessaggi() override {
    return std::make_shared<Messages>();
  }
  [[nodiscard]] std::shared_ptr<host::FormatoData> CreaFormatoData() override {
    return std::make_shared<Dates>();
  }
  [[nodiscard]] std::shared_ptr<host::FormatoNumero> CreaFormatoNumero() override {
    return std::make_shared<Numbers>();
  }
  [[nodiscard]] std::shared_ptr<host::RegistroInvio> CreaRegistroInvio() override { return Raises(); }
  [[nodiscard]] std::shared_ptr<host::RisolutorePercorsi> CreaRisolutorePercorsi() override {
    return Raises();
  }
  [[nodiscard]] std::shared_ptr<host::CifratorePassword> CreaCifratorePassword() override { return Raises(); }
  [[nodiscard]] std::shared_ptr<host::ComponenteSmtp> CreaComponenteSmtp() override { return Raises(); }
  [[nodiscard]] std::shared_ptr<host::OutlookApplication> CreaOutlook() override { return Raises(); }
  [[nodiscard]] std::shared_ptr<host::MAPISession> CreaMAPISession() override { return Raises(); }
  [[nodiscard]] std::shared_ptr<host::MAPIMessages> CreaMAPIMessages() override { return Raises(); }
  [[nodiscard]] std::shared_ptr<host::Mapi32> CreaMapi32() override { return Raises(); }
  [[nodiscard]] std::shared_ptr<host::FileSystem> CreaFileSystem() override { return Raises(); }
  [[nodiscard]] host::Orologio& OrologioDiSistema() override { return clock; }
  [[nodiscard]] host::DebugOutput& UscitaDiDebug() override { return debug; }
  [[nodiscard]] host::GeneratoreGuid& Identificatori() override { return identifiers; }
  [[nodiscard]] host::Environment& VariabiliDiAmbiente() override { return variables; }
  [[nodiscard]] host::Rete& ReteDiSistema() override { return network; }
  [[nodiscard]] host::Directory& DirectoryAziendale() override {
    throw host::Errore(host::kOggettoNonCreabile);
  }

  Clock clock;
  Debug debug;
  Identifiers identifiers;
  Variables variables;
  Network network;
};

void TheLibrary() {
  Check(NumberRaisedBy([] { orve::CLSFW_MAILSERVER service(std::shared_ptr<host::Ambiente>{}); }) ==
            host::kOggettoNonImpostato,
        "an error of the library is caught by its type");
  const auto surroundings = std::make_shared<Surroundings>();
  {
    orve::CLSFW_MAILSERVER service(surroundings);
    Check(service.CheckRegularMailAddress("anna@azienda.example"), "the service answers");
    Check(NumberRaisedBy([&] { (void)service.PercorsoInstallazione(); }) == 1000,
          "an error of the program comes back through the library");
    service.vCollDestinatari = std::make_shared<orve::CollDestinatari>(surroundings);
    service.vCollDestinatari->Add("anna@azienda.example", "Anna", {}, "anna");
    Check(service.vCollDestinatari->Item("ANNA")->Nome() == "Anna", "what was added is found by its key");
    Check(NumberRaisedBy([&] { (void)service.vCollDestinatari->Item(2); }) == host::kIndiceFuoriIntervallo,
          "a position without an item is refused");
  }
  Check(surroundings->debug.born > 2 && surroundings->debug.born == surroundings->debug.dead,
        "every object of the library is born and dies in the trace");
  const host::Variant object(std::make_shared<Messages>());
  Check(std::dynamic_pointer_cast<Messages>(object.ToObject()) != nullptr, "an object keeps its type");
  Check(NumberRaisedBy([&] { (void)surroundings->CreaForm({"FINESTRA"}); }) == host::kOggettoNonCreabile,
        "a machine without windows says so");
  Check(orve::adapters::posix::PercorsoLibreria("/tmp/a") == "\\tmp\\a", "paths are converted");
}

void TheWindows() {
  const host::LayoutControllo controls[] = {
      {"TESTO", host::TipoControllo::kTxtEdit, {}, {}, {0, 0, 3000, 300}, 0, {}},
  };
  orve::adapters::qt::Finestre windows;
  const auto form = windows.CreaForm({"FINESTRA", "Prova", "Tahoma", 6000, 3000, controls});
  host::ControlloDi<host::TxtEdit>(*form, "testo")->Text("scritto");
  Check(host::ControlloDi<host::TxtEdit>(*form, "TESTO")->Text() == "scritto", "a control keeps its text");
  Check(NumberRaisedBy([&] { (void)host::ControlloDi<host::KVL_COMBO>(*form, "TESTO"); }) ==
            host::kMembroNonSupportato,
        "a control of another kind is refused");
  Check(NumberRaisedBy([&] { (void)form->Controlli("ALTRO"); }) == host::kMembroNonSupportato,
        "an error of the windows is caught by its type");
}

}  // namespace

int main() {
  TheLibrary();
  TheWindows();
  if (allIsWell) std::cout << "all holds with " ORVE_MAILSERVER_VERSION "\n";
  return allIsWell ? 0 : 1;
}
