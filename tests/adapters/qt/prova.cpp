#include "prova.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include "service/dialog_bridge.h"

namespace orve::adapters::qt {

CartellaDiProva::CartellaDiProva() {
  std::string modello = (std::filesystem::temp_directory_path() / "orve-prova-XXXXXX").string();
  if (::mkdtemp(modello.data()) == nullptr) throw std::runtime_error("mkdtemp");
  radice_ = modello;
}

CartellaDiProva::~CartellaDiProva() {
  std::error_code ignorato;
  std::filesystem::remove_all(radice_, ignorato);
}

std::string CartellaDiProva::File(const std::string& nome, const std::string& contenuto) const {
  std::string percorso = radice_ + "/" + nome;
  std::ofstream(percorso, std::ios::binary) << contenuto;
  return percorso;
}

std::string PerLibreria(std::string percorso) {
  std::replace(percorso.begin(), percorso.end(), '/', '\\');
  return percorso;
}

fakes::Riga RigaAccount(std::int16_t id, const std::string& indirizzo, std::int16_t lettura) {
  return {{"FW23_SERVERNAME", "smtp.azienda.example"},
          {"FW23_PORT", 25},
          {"FW23_TIMEOUT", 60},
          {"FW23_INDAUTH", 0},
          {"FW23_SSL", 0},
          {"FW98_IDACCOUNT", id},
          {"FW98_MAILADDRESS", indirizzo},
          {"FW98_USERNAME", "utente"},
          {"FW98_PASSWORD", "{parola}"},
          {"ALIAS", "Azienda"},
          {"LETTURA", lettura},
          {"CONSEGNA", std::int16_t{0}}};
}

FinestraVera::FinestraVera()
    : FinestraVera([](OpzioniFinestre opzioni) {
        return std::make_shared<AmbienteConFinestre>(std::move(opzioni));
      }) {}

FinestraVera::FinestraVera(const CreaAmbiente& crea)
    : ambiente(crea({.cartellaCopie = cartella.Radice(),
                     .vaCopiato = [this](const std::string&) { return vaCopiato; }})),
      journal(ambiente->journal),
      connessione(std::make_shared<fakes::FakeConnection>(journal)),
      aperto(ambiente) {
  servizio->ConnectionADO = connessione;
  servizio->SrvMailInstallato = kvSMTPMail;
  servizio->ModalitaInvio(kvManuale);
  Interno& interno = aperto.interno;
  interno.account.UsaMittenteScelto = true;
  interno.contesto.IdUtenteCorrente = 42;
  Accounts({RigaAccount(12, "noi@azienda.example")});
  Collezione();
  journal->Svuota();
}

CollDestinatari& FinestraVera::Collezione() {
  if (!servizio->vCollDestinatari) servizio->vCollDestinatari = std::make_shared<CollDestinatari>(ambiente);
  return *servizio->vCollDestinatari;
}

void FinestraVera::Apri(Regia::Passo persona) {
  regia.Poi("FRMRW_OPZMAIL", [persona = std::move(persona)](QWidget& finestra) {
    persona(finestra);
    Respira();
    if (finestra.isVisible()) finestra.close();
  });
  ApriForm_OpzInvio(aperto.interno, *servizio);
}

}  // namespace orve::adapters::qt
