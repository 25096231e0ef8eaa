#include "window_contract/servizio_con_finestre.h"

#include <fstream>
#include <system_error>

#include "service/dialog_bridge.h"

namespace orve::window_contract {

std::filesystem::path Percorso(const std::string& testo) {
  return std::u8string(testo.begin(), testo.end());
}

std::string Testo(const std::filesystem::path& percorso) {
  const auto utf8 = percorso.u8string();
  return {utf8.begin(), utf8.end()};
}

CartellaDiProva::CartellaDiProva() {
  static int numero = 0;
  do {
    radice_ = std::filesystem::temp_directory_path() / ("orve-prova-" + std::to_string(++numero));
  } while (!std::filesystem::create_directory(radice_));
}

CartellaDiProva::~CartellaDiProva() {
  std::error_code ignorato;
  std::filesystem::remove_all(radice_, ignorato);
}

std::string CartellaDiProva::File(const std::string& nome, const std::string& contenuto) const {
  const auto percorso = radice_ / Percorso(nome);
  std::ofstream(percorso, std::ios::binary) << contenuto;
  return Testo(percorso);
}

std::string CartellaDiProva::Radice() const {
  return Testo(radice_);
}

ServizioConFinestre::ServizioConFinestre(const std::shared_ptr<fakes::FakeAmbiente>& conFinestre)
    : ambiente_(conFinestre),
      journal(conFinestre->journal),
      connessione(std::make_shared<fakes::FakeConnection>(journal)),
      aperto(conFinestre) {
  servizio->ConnectionADO = connessione;
  fakes::PreparaInvioManuale(*servizio, aperto.interno, *connessione);
  Collezione();
  journal->Svuota();
}

CollDestinatari& ServizioConFinestre::Collezione() {
  if (!servizio->vCollDestinatari) {
    servizio->vCollDestinatari = std::make_shared<CollDestinatari>(ambiente_);
  }
  return *servizio->vCollDestinatari;
}

void ServizioConFinestre::ApreInvio() {
  ApriForm_OpzInvio(aperto.interno, *servizio);
}

std::vector<std::string> ServizioConFinestre::Consegnati() const {
  std::vector<std::string> percorsi;
  if (servizio->vElencoAllegati.IsEmpty()) return percorsi;
  for (const auto& uno : std::as_const(servizio->vElencoAllegati).ToArray()) percorsi.push_back(uno.Joined());
  return percorsi;
}

}  // namespace orve::window_contract
