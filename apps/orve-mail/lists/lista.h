// A list: one message for each row of a file, with a result file that lets an interrupted run continue.
#pragma once

#include <string>
#include <vector>

#include "orve-mail/host/spedizione.h"

namespace orve::app {

struct RichiestaLista {
  std::string file;   // the rows
  std::string esiti;  // the result file
  bool ritentaIncerti = false;
  bool controllaAllegati = true;
  /// A row's attachment must be below one of these.
  std::vector<std::string> cartelleAllegati;
  /// What all messages share; its recipients are not used. The rows' own subjects and bodies take precedence
  /// over its own; their attachments come before its own.
  RichiestaInvio comune;
};

/// Sends what has not been sent yet, reports on the terminal what becomes of each row and of the whole, and
/// returns the exit status: kInviato when every row has been sent, now or before. SIGINT and SIGTERM end the
/// run after the current message. Raises ErroreProgramma when nothing could be tried.
[[nodiscard]] Uscita InviaLista(const RichiestaLista& richiesta, Terminale terminale);

}  // namespace orve::app
