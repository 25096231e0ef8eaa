// eventi: the management events that the database received.
#include "orve-mail/commands/tabella.h"

namespace orve::app {

void AggiungiEventi(CLI::App& programma, Contesto& contesto) {
  AggiungiElenco(programma, contesto,
                 {Fonte::kIncorporato,
                  "eventi",
                  "Mostra gli eventi gestionali",
                  "EVENTI_GESTIONALI",
                  {{"ID", "ID", 0},
                   {"ISTANTE", "substr(ISTANTE, 1, 19)", 0},
                   {"DITTA", "DITTA", 0},
                   {"CODICE", "CODICE", 0},
                   {"UTENTE", "IDUTENTE", 0},
                   {"DATI", "DATI", 0}}});
}

}  // namespace orve::app
