// The commands of the program. Each adds itself to the command line with its options and leaves its exit
// status in the context once it has run.
#pragma once

#include "orve-mail/terminal/terminale.h"
#include "orve-mail/terminal/uscita.h"

namespace CLI {
class App;
}

namespace orve::app {

struct Contesto {
  Terminale terminale;
  Uscita uscita = Uscita::kInviato;
};

// The context must outlive the command line.

void AggiungiCreaDb(CLI::App& programma, Contesto& contesto);
void AggiungiInvia(CLI::App& programma, Contesto& contesto);
void AggiungiLista(CLI::App& programma, Contesto& contesto);
void AggiungiParametri(CLI::App& programma, Contesto& contesto);
void AggiungiInviaSmtp(CLI::App& programma, Contesto& contesto);
void AggiungiRegistro(CLI::App& programma, Contesto& contesto);
void AggiungiEventi(CLI::App& programma, Contesto& contesto);
void AggiungiImpostaServer(CLI::App& programma, Contesto& contesto);
void AggiungiImpostaPassword(CLI::App& programma, Contesto& contesto);
void AggiungiControlla(CLI::App& programma, Contesto& contesto);
void AggiungiControllaTraccia(CLI::App& programma, Contesto& contesto);

}  // namespace orve::app
