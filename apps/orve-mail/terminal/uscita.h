// How the program ends: its exit statuses, and the one exception that ends a command early.
#pragma once

#include <stdexcept>
#include <string>

#include "orve-mailserver/host/errore.h"

namespace orve::app {

/// The exit statuses, as the manual page lists them.
enum class Uscita : int {
  kInviato = 0,          // done; for a send: the message was sent and fully recorded
  kInvioFallito = 1,     // the server refused the message, or could not be reached
  kComandoErrato = 2,    // the command line makes no sense
  kRifiutato = 3,        // the library refused to send, and recorded that
  kNonPartito = 4,       // an error ended the send before the message was sent
  kNonUtilizzabile = 5,  // database, key, settings or display cannot be used; nothing was tried
  kFileMancante = 6,     // a file cannot be sent, read or written; nothing was tried
  kConRiserva = 7,       // the message was sent, but something else went wrong
  kAnnullato = 8,  // the person closed the window instead of confirming it; nothing was sent or recorded
  kListaIncompleta = 9,  // not every row of a list was sent
  kInterrotto = 130,     // a list ended early on request; started again, it continues
};

/// Ends a command with a status and a text for the person.
class ErroreProgramma : public std::runtime_error {
 public:
  ErroreProgramma(Uscita uscita, const std::string& testo) : std::runtime_error(testo), uscita_(uscita) {}
  [[nodiscard]] Uscita Stato() const noexcept { return uscita_; }

 private:
  Uscita uscita_;
};

/// What the action returns; an Errore of it ends the command with the status and the error's description.
template <class Azione>
auto Oppure(Uscita uscita, Azione azione) {
  try {
    return azione();
  } catch (const host::Errore& errore) {
    throw ErroreProgramma(uscita, errore.Descrizione());
  }
}

}  // namespace orve::app
