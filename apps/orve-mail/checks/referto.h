// What a check of an installation found: one line for each thing checked, and what to do where it is not in
// order.
#pragma once

#include <ostream>
#include <string>

#include "orve-mail/terminal/uscita.h"

namespace orve::app {

class Referto {
 public:
  /// Writes each line at once, since a check may take its time.
  explicit Referto(std::ostream& uscita) : uscita_(uscita) {}

  void Ok(const std::string& controllo, const std::string& dettaglio);
  /// Does not stop a send, but somebody should look at it.
  void Avviso(const std::string& controllo, const std::string& dettaglio, const std::string& rimedio);
  void Errore(const std::string& controllo, const std::string& dettaglio, const std::string& rimedio);
  /// Could not be checked, or need not be.
  void Saltato(const std::string& controllo, const std::string& motivo);

  /// kInviato when all is in order, kConRiserva with warnings alone, kInvioFallito with an error.
  [[nodiscard]] Uscita Stato() const;
  /// The last line: how many errors and warnings there were.
  void Riassumi();

 private:
  void Scrivi(const char* segno, const std::string& controllo, const std::string& testo);

  std::ostream& uscita_;
  int controlli_ = 0;
  int avvisi_ = 0;
  int errori_ = 0;
};

}  // namespace orve::app
