#include "prova.h"

#include <algorithm>

namespace orve::adapters::qt {

std::string PerLibreria(std::string percorso) {
  std::replace(percorso.begin(), percorso.end(), '/', '\\');
  return percorso;
}

std::string PerSistema(std::string percorso) {
  std::replace(percorso.begin(), percorso.end(), '\\', '/');
  return percorso;
}

SottoLaFinestra::SottoLaFinestra(const CreaAmbiente& crea)
    : ambiente(crea({.cartellaCopie = cartella.Radice(),
                     .vaCopiato = [this](const std::string&) { return vaCopiato; }})) {}

FinestraVera::FinestraVera()
    : FinestraVera(
          [](WindowOptions opzioni) { return std::make_shared<AmbienteConFinestre>(std::move(opzioni)); }) {}

FinestraVera::FinestraVera(const CreaAmbiente& crea) : SottoLaFinestra(crea), ServizioConFinestre(ambiente) {}

void FinestraVera::Apri(Regia::Passo persona) {
  regia.Poi("FRMRW_OPZMAIL", [persona = std::move(persona)](QWidget& finestra) {
    persona(finestra);
    Respira();
    if (finestra.isVisible()) finestra.close();
  });
  ApreInvio();
}

}  // namespace orve::adapters::qt
