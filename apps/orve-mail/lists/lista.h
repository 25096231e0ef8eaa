// A list: one message for each row of a file, with a result file that lets an ended run go on.
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
  /// Below one of these a row's attachment has to lie.
  std::vector<std::string> cartelleAllegati;
  /// What all messages share; its recipients are not used. The rows' own subjects and bodies count before
  /// its own, their attachments come in front of its own.
  RichiestaInvio comune;
};

/// Sends what was not sent yet, tells on the terminal what becomes of each row and of all, and gives the exit
/// status: kInviato when every row has been sent, now or before. SIGINT and SIGTERM end the run behind the
/// running message. Raises ErroreProgramma when nothing could be tried.
[[nodiscard]] Uscita InviaLista(const RichiestaLista& richiesta, Terminale terminale);

}  // namespace orve::app
