// controlla-traccia: pairs the lines of an instance trace and reports which objects were never released.
#include <CLI/CLI.hpp>
#include <fstream>
#include <memory>

#include "orve-mail/checks/controllo_traccia.h"
#include "orve-mail/commands/comandi.h"
#include "orve-mail/host/messaggio.h"

namespace orve::app {

namespace {

void Leggi(ControlloTraccia& controllo, std::istream& flusso, const std::string& nome) {
  controllo.Leggi(flusso);
  if (flusso.bad()) throw ErroreProgramma(Uscita::kFileMancante, nome + ": errore di lettura");
}

std::uint64_t ElencaMaiRilasciati(const ControlloTraccia& controllo, std::ostream& uscita) {
  const auto mai = controllo.MaiRilasciati();
  std::uint64_t quanti = 0;
  for (const auto& oggetti : mai) quanti += oggetti.size();
  if (quanti == 0) return 0;
  uscita << "Mai rilasciati: " << quanti << "\n";
  for (std::size_t classe = 0; classe < mai.size(); ++classe) {
    if (mai.at(classe).empty()) continue;
    uscita << "  " << kClassiTracciate.at(classe) << ": " << mai.at(classe).size() << "\n";
    for (const MaiRilasciato& oggetto : mai.at(classe)) {
      uscita << "    riga " << oggetto.riga << ": "
             << (oggetto.identificatore.empty() ? "senza identificatore" : oggetto.identificatore) << "\n";
    }
  }
  return quanti;
}

void ElencaAnomalie(const ControlloTraccia& controllo, std::ostream& errori) {
  for (const Anomalia& anomalia : controllo.Anomalie()) {
    errori << "riga " << anomalia.riga << ": " << anomalia.testo << "\n";
  }
  const std::uint64_t altre = controllo.NumeroAnomalie() - controllo.Anomalie().size();
  if (altre > 0) errori << "e altre " << altre << " righe senza riscontro\n";
}

Uscita Controlla(const std::string& file, Terminale terminale) {
  ControlloTraccia controllo;
  if (file == "-") {
    Leggi(controllo, terminale.ingresso, "standard input");
  } else {
    RichiediFileLeggibile(file);
    std::ifstream flusso(file, std::ios::binary);
    Leggi(controllo, flusso, file);
  }
  terminale.uscita << "Oggetti creati: " << controllo.Creati() << ", rilasciati: " << controllo.Rilasciati()
                   << "\n";
  const std::uint64_t mai = ElencaMaiRilasciati(controllo, terminale.uscita);
  if (controllo.Estranee() > 0) {
    terminale.uscita << "Righe di altra provenienza, non guardate: " << controllo.Estranee() << "\n";
  }
  ElencaAnomalie(controllo, terminale.errori);
  if (mai > 0) return Uscita::kInvioFallito;
  return controllo.NumeroAnomalie() > 0 ? Uscita::kConRiserva : Uscita::kInviato;
}

}  // namespace

void AggiungiControllaTraccia(CLI::App& programma, Contesto& contesto) {
  auto* const comando = programma.add_subcommand(
      "controlla-traccia", "Cerca in una traccia delle istanze gli oggetti mai rilasciati");
  auto file = std::make_shared<std::string>();
  comando->add_option("FILE", *file, "File scritto con --traccia; - per lo standard input")
      ->required()
      ->type_name("");
  comando->callback([file, &contesto] { contesto.uscita = Controlla(*file, contesto.terminale); });
}

}  // namespace orve::app
