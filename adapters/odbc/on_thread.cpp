#include "odbc/on_thread.h"

#include <pthread.h>

#include <clocale>
#include <csignal>
#include <system_error>
#include <thread>

#include "orve-mailserver/host/errore.h"

namespace orve::adapters::odbc {

namespace {

// A thread inherits the signals that its creator blocks: the application's handlers run on the application's
// threads only, and a write to a dead connection is an error, not the end of the program.
class SignalsHeld {
 public:
  SignalsHeld() {
    sigset_t tutti;
    ::sigfillset(&tutti);
    for (const int colpa : {SIGSEGV, SIGBUS, SIGFPE, SIGILL}) ::sigdelset(&tutti, colpa);
    ::pthread_sigmask(SIG_SETMASK, &tutti, &prima_);
  }
  SignalsHeld(const SignalsHeld&) = delete;
  SignalsHeld& operator=(const SignalsHeld&) = delete;
  SignalsHeld(SignalsHeld&&) = delete;
  SignalsHeld& operator=(SignalsHeld&&) = delete;
  ~SignalsHeld() { ::pthread_sigmask(SIG_SETMASK, &prima_, nullptr); }

 private:
  sigset_t prima_{};
};

// Driver managers and drivers compare keywords and read numbers by the locale, which the application, its
// windows or a driver may have set for the whole process: a Turkish one finds no "Driver" in a connection
// string, since i is not its lower-case I. The thread has a locale of its own.
void UsaIlLocaleComune() {
  static const locale_t comune = [] {
    const locale_t utf8 = ::newlocale(LC_ALL_MASK, "C.UTF-8", nullptr);
    return utf8 != nullptr ? utf8 : ::newlocale(LC_ALL_MASK, "C", nullptr);
  }();
  if (comune != nullptr) ::uselocale(comune);
}

}  // namespace

void SuUnThread(std::function<void()> lavoro) {
  const SignalsHeld trattenuti;
  try {
    std::thread([lavoro = std::move(lavoro)] {
      UsaIlLocaleComune();
      lavoro();
    }).detach();
  } catch (const std::system_error&) {
    throw host::Errore(host::kMemoriaInsufficiente);
  }
}

}  // namespace orve::adapters::odbc
