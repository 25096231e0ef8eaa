#include "orve-mail/lists/interruzione.h"

#include <cstddef>

namespace orve::app {

namespace {

volatile std::sig_atomic_t interruzioneRichiesta =
    0;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables):
        // a signal handler can reach nothing else

}  // namespace

// System calls are resumed after the handler, so that no send notices it.
Interruzione::Interruzione() {
  interruzioneRichiesta = 0;
  struct sigaction azione {};
  azione.sa_handler = [](int) { interruzioneRichiesta = 1; };
  azione.sa_flags = SA_RESTART;
  for (std::size_t i = 0; i < kSegnali.size(); ++i) {
    ::sigaction(kSegnali[i], nullptr, &prima_[i]);
    if (prima_[i].sa_handler != SIG_IGN) ::sigaction(kSegnali[i], &azione, nullptr);
  }
}

Interruzione::~Interruzione() {
  for (std::size_t i = 0; i < kSegnali.size(); ++i) ::sigaction(kSegnali[i], &prima_[i], nullptr);
}

bool Interruzione::Richiesta() {
  return interruzioneRichiesta != 0;
}

}  // namespace orve::app
