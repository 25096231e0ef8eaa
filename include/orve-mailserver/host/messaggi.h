// The message object: how the library shows a message to the person at the machine. The host application has
// one; the service creates another of its own when it is created.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/oggetto.h"

namespace orve::host {

/// The styles used: the buttons and the icon of a message.
enum StileMessaggio : std::int32_t {
  kSemplice = 0,
  kCritico = 16,
  kAvviso = 48,
  kDomanda = 52,  ///< yes and no, with a warning sign
  kInformazione = 64,
  kSecondoPredefinito = 256  ///< added to a question: Return presses the second button
};
/// The answers that the library looks for.
enum RispostaMessaggio : std::int32_t { kRispostaSi = 6, kRispostaNo = 7 };

/// Shows messages, in a window or wherever the host's person reads.
class ORVE_API Messaggi : public Oggetto {
 public:
  /// The text to use as a window's title, made from the text given.
  [[nodiscard]] virtual std::string TitoloFinestra(const std::string& testo) = 0;
  /// Shows the text and returns the person's answer. `proprietario` is the window that owns the message, or
  /// absent.
  virtual std::int32_t MostraMsg(const std::string& testo, std::int32_t stile, const std::string& titolo,
                                 const std::shared_ptr<Oggetto>& proprietario) = 0;
};

}  // namespace orve::host
