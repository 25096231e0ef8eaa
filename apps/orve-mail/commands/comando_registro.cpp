// registro: the lines of the register of sends.
#include "orve-mail/commands/tabella.h"

namespace orve::app {

void AggiungiRegistro(CLI::App& programma, Contesto& contesto) {
  AggiungiElenco(programma, contesto,
                 {Fonte::kRegistro,
                  "registro",
                  "Mostra il registro degli invii",
                  "REGISTRO_INVII",
                  {{"ID", "ID", 0},
                   {"ISTANTE", "substr(ISTANTE, 1, 19)", 0},
                   {"ESITO",
                    "CASE ESITOINVIO WHEN 0 THEN 'inviato' WHEN 1 THEN 'non inviato' WHEN 2 THEN 'annullato' "
                    "ELSE ESITOINVIO END",
                    0},
                   {"CANALE", "CASE TIPOCANALE WHEN 3 THEN 'mail' WHEN 5 THEN 'pec' ELSE TIPOCANALE END", 0},
                   {"DITTA", "DITTA", 0},
                   {"UTENTE", "UTENTEAPPLICAZIONE", 0},
                   {"MITTENTE", "MITTENTEINVIO", 40},
                   {"NOME", "NOME", 32},
                   {"AZIENDA", "AZIENDA", 32},
                   {"INDIRIZZO", "INDIRIZZO", 56},
                   {"OGGETTO", "OGGETTO", 32},
                   {"RISULTATO", "RISULTATO", 64},
                   {"ALLEGATO", "ALLEGATO", 64}}});
}

}  // namespace orve::app
