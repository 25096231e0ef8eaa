#include "orve-mail/checks/referto.h"

#include "orve-mail/terminal/terminale.h"

namespace orve::app {

void Referto::Scrivi(const char* segno, const std::string& controllo, const std::string& testo) {
  uscita_ << segno << " " << TerminalSafeLine(controllo) << ": " << TerminalSafeLine(testo) << std::endl;
  ++controlli_;
}

void Referto::Ok(const std::string& controllo, const std::string& dettaglio) {
  Scrivi("[ok]     ", controllo, dettaglio);
}

void Referto::Avviso(const std::string& controllo, const std::string& dettaglio, const std::string& rimedio) {
  Scrivi("[avviso] ", controllo, dettaglio + " | Che fare: " + rimedio);
  ++avvisi_;
}

void Referto::Errore(const std::string& controllo, const std::string& dettaglio, const std::string& rimedio) {
  Scrivi("[ERRORE] ", controllo, dettaglio + " | Che fare: " + rimedio);
  ++errori_;
}

void Referto::Saltato(const std::string& controllo, const std::string& motivo) {
  Scrivi("[saltato]", controllo, motivo);
}

Uscita Referto::Stato() const {
  if (errori_ > 0) return Uscita::kInvioFallito;
  return avvisi_ > 0 ? Uscita::kConRiserva : Uscita::kInviato;
}

void Referto::Riassumi() {
  uscita_ << controlli_ << " controlli, " << errori_ << " errori, " << avvisi_
          << " avvisi. Nessun messaggio inviato.\n";
}

}  // namespace orve::app
