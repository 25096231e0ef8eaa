#include "orve-mail/host/rimedi.h"

namespace orve::app {

Rimedi::Rimedi(bool suOdbc)
    : password(suOdbc
                   ? "far scrivere di nuovo in FW98_PASSWORD il testo che imposta-password dà su un database "
                     "incorporato con la stessa chiave, lo stesso utente e lo stesso server"
                   : "memorizzarla di nuovo con imposta-password"),
      cifratura(suOdbc ? "far attivare TLS per il server nel database (FW23_SSL = 1)"
                       : "attivare TLS con imposta-server") {}

}  // namespace orve::app
