#include "win32/oggetti_chiamante.h"

#include "win32/connection.h"
#include "win32/libreria_host.h"

namespace orve::adapters::win32 {

namespace {

class UtenteCom final : public Involucro<host::UtenteApplicazione> {
 public:
  using Involucro::Involucro;
  [[nodiscard]] std::int32_t IdUtente() override { return Oggetto().Get("IdUtente").ToInt32(); }
};

class ApplicazioneCom final : public Involucro<host::Applicazione> {
 public:
  using Involucro::Involucro;
  [[nodiscard]] std::shared_ptr<host::UtenteApplicazione> UtenteCorrente() override {
    return Avvolgi<UtenteCom>(Oggetto().LeggiOggetto("UtenteCorrente"));
  }
  [[nodiscard]] std::shared_ptr<host::Messaggi> Messaggi() override {
    return AvvolgiMessaggi(Oggetto().LeggiOggetto("Messaggi"));
  }
};

class InterfacciaHostCom final : public Involucro<host::InterfacciaHost> {
 public:
  using Involucro::Involucro;
  [[nodiscard]] std::shared_ptr<host::Applicazione> Applicazione() override {
    return Avvolgi<ApplicazioneCom>(Oggetto().LeggiOggetto("Applicazione"));
  }
};

class ManagerRubricaCom final : public Involucro<host::ManagerRubrica> {
 public:
  using Involucro::Involucro;
  void DittaRubrica(const host::Variant& ditta) override {
    // An object is already a reference.
    if (ditta.IsObject()) {
      Oggetto().PutValore("DittaRubrica", ditta);
    } else {
      Oggetto().Put("DittaRubrica", Argomento::PerRiferimento(ditta));
    }
  }
  void TipoRubrica(std::int32_t tipo) override { Oggetto().Put("TipoRubrica", tipo); }
  void CodiceScelto(const host::Variant& codice) override { Oggetto().PutValore("CodiceScelto", codice); }
  [[nodiscard]] host::Variant CodiceScelto() override { return Oggetto().Get("CodiceScelto"); }
  void NomeScelto(const host::Variant& nome) override { Oggetto().PutValore("NomeScelto", nome); }
  [[nodiscard]] host::Variant NomeScelto() override { return Oggetto().Get("NomeScelto"); }
  void IndirizzoScelto(const host::Variant& indirizzo) override {
    Oggetto().PutValore("IndirizzoScelto", indirizzo);
  }
  [[nodiscard]] host::Variant IndirizzoScelto() override { return Oggetto().Get("IndirizzoScelto"); }
  void ApriRubrica() override { Oggetto().Run("ApriRubrica"); }
  void ApriRubricaOutlook() override { Oggetto().Run("ApriRubricaOutlook"); }
  void ApriRubricaTobit() override { Oggetto().Run("ApriRubricaTobit"); }
  [[nodiscard]] bool Annullata() override { return Oggetto().Get("Annullata").ToBoolean(); }
  void Interfaccia(const std::shared_ptr<host::InterfacciaHost>& interfaccia) override {
    Oggetto().PutRef("Interfaccia", ComDaConsegnare(interfaccia));
  }
};

}  // namespace

std::shared_ptr<host::Connection> ConnessioneDa(IDispatch* oggetto) {
  return AvvolgiConnessione(Dispatch(oggetto));
}

std::shared_ptr<host::InterfacciaHost> InterfacciaHostDa(IDispatch* oggetto) {
  return Avvolgi<InterfacciaHostCom>(Dispatch(oggetto));
}

std::shared_ptr<host::ManagerRubrica> ManagerRubricaDa(IDispatch* oggetto) {
  return Avvolgi<ManagerRubricaCom>(Dispatch(oggetto));
}

}  // namespace orve::adapters::win32
