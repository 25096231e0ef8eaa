// What became of a send, as an exit status and a few lines for the person.
#pragma once

#include <string>
#include <vector>

#include "orve-mail/host/osservazioni.h"
#include "orve-mail/terminal/terminale.h"
#include "orve-mail/terminal/uscita.h"
#include "orve-mailserver/service/enumerazioni.h"

namespace orve::app {

struct Resoconto {
  Osservazioni note;
  kvEnum_ErroreMail stato = kvOK;  // of a service object that sent this one message
  std::string descrizione;
  std::string mittente;  // empty: no account was found
  bool daSola =
      false;  // a call that bypasses the send procedure: it refuses nothing and leaves Stato as it was
  std::string errore;  // kept by the library for its caller instead of shown
  /// The channel that accepts no message without a body, where this one had none; else empty.
  std::string canaleCheVuoleCorpo;
};

/// The status that the observations allow. A status "sent" requires both the library's own status and a
/// delivery that was seen to succeed: after a refusal the library's status is still the initial one.
[[nodiscard]] Uscita Valuta(const Resoconto& resoconto);

/// What to tell the person about that status: one line, without a line end.
[[nodiscard]] std::string Spiega(const Resoconto& resoconto, Uscita uscita);

/// Everything else that is worth a line.
[[nodiscard]] std::vector<std::string> Dettagli(const Resoconto& resoconto);

/// Said once for a command that found no folder for the send log.
inline constexpr const char* kSenzaTemporanea =
    "registro degli errori non tenuto: nessuna cartella temporanea è soltanto di chi invia";

/// Writes a success on the output stream and everything else on the error stream, and returns the status.
Uscita Racconta(const Resoconto& resoconto, Terminale terminale);

}  // namespace orve::app
