// The host's message object on a terminal.
#pragma once

#include <istream>
#include <memory>
#include <ostream>
#include <string>
#include <utility>

#include "orve-mailserver/host/messaggi.h"

namespace orve::adapters::ambiente {

class MessaggiTerminale : public host::Messaggi {
 public:
  /// `programma` begins the titles. Messages are printed on `uscita`, answers read from `risposte`; absent:
  /// nobody reads them, or nobody answers. The streams must outlive the object.
  MessaggiTerminale(std::string programma, std::ostream* uscita, std::istream* risposte = nullptr)
      : programma_(std::move(programma)), uscita_(uscita), risposte_(risposte) {}

  [[nodiscard]] std::string TitoloFinestra(const std::string& testo) override;
  /// Prints the message. One with a single answer is answered at once; one with several lists them with
  /// numbers for whoever can answer; without anybody, at the end of the input, or after three invalid
  /// answers, the style's default is taken. The answer is 1 OK, 2 cancel, 3 abort, 4 retry, 5 ignore, 6 yes,
  /// 7 no.
  std::int32_t MostraMsg(const std::string& testo, std::int32_t stile, const std::string& titolo,
                         const std::shared_ptr<host::Oggetto>& proprietario) override;

 private:
  std::string programma_;
  std::ostream* uscita_;
  std::istream* risposte_;
};

}  // namespace orve::adapters::ambiente
