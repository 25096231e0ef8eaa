// Messages to the person, as far as they are not drawn.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "orve-mailserver/host/errore.h"
#include "orve-mailserver/host/messaggi.h"

namespace orve::adapters::forms {

class Messaggi : public host::Messaggi {
 public:
  /// Shows a box over the window of this form, which may be null, and returns the answer.
  using Mostra = std::function<std::int32_t(const std::string& testo, std::int32_t stile,
                                            const std::string& titolo, host::Oggetto* proprietario)>;
  /// `programma` follows the caption in the title of a window, and is by itself the title of a message
  /// without one.
  Messaggi(std::string programma, Mostra mostra);

  std::string TitoloFinestra(const std::string& testo) override;
  std::int32_t MostraMsg(const std::string& testo, std::int32_t stile, const std::string& titolo,
                         const std::shared_ptr<host::Oggetto>& proprietario) override;

 private:
  std::string programma_;
  Mostra mostra_;
};

/// Runs what must not let an exception out: `mostra` shows the person the text of an error, and `annota` is
/// told what happened when even that fails.
template <class Azione, class Mostra, class Annota>
void Protetta(const Azione& azione, const Mostra& mostra, const Annota& annota) {
  try {
    try {
      azione();
    } catch (...) {
      const host::Errore errore = host::ErroreCorrente();
      mostra(std::to_string(errore.Numero()) + " " + errore.Descrizione());
    }
  } catch (...) {
    annota("ORVE_MAILSERVER: un errore non ha potuto essere mostrato");
  }
}

}  // namespace orve::adapters::forms
