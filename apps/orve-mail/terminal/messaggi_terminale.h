// The host's message object on a terminal.
#pragma once

#include <memory>
#include <string>

#include "orve-mail/terminal/terminale.h"
#include "orve-mailserver/host/messaggi.h"

namespace orve::app {

class MessaggiTerminale : public host::Messaggi {
 public:
  /// The streams must outlive the object.
  explicit MessaggiTerminale(Terminale terminale) : terminale_(terminale) {}

  [[nodiscard]] std::string TitoloFinestra(const std::string& testo) override;
  /// Prints the message on the error stream. A message with one answer is answered at once. One with several
  /// lists them with numbers for a person at a terminal; without a person, at the end of the input, or after
  /// three invalid answers, the style's default is taken. The answer is 1 OK, 2 cancel, 3 abort, 4 retry, 5
  /// ignore, 6 yes, 7 no.
  std::int32_t MostraMsg(const std::string& testo, std::int32_t stile, const std::string& titolo,
                         const std::shared_ptr<host::Oggetto>& proprietario) override;

 private:
  Terminale terminale_;
};

}  // namespace orve::app
