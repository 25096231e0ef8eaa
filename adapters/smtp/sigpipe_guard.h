// Keeps SIGPIPE from the host process: TLS writes to a connection that the server has dropped raise it, and
// its default action would end the application. It is held back on this thread alone and for the moment
// alone, so that the application's own handling stays as it is.
#pragma once

#include <csignal>
#include <ctime>

namespace orve::adapters::smtp {

class SigpipeGuard {
 public:
  SigpipeGuard() { pthread_sigmask(SIG_BLOCK, &Sigpipe(), &before_); }
  SigpipeGuard(const SigpipeGuard&) = delete;
  SigpipeGuard& operator=(const SigpipeGuard&) = delete;
  ~SigpipeGuard() {
    // Where the application holds it back itself, a signal more or less that waits makes no difference.
    if (sigismember(&before_, SIGPIPE) == 1) return;
    const timespec now{};
    sigtimedwait(&Sigpipe(), nullptr, &now);
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
  }

 private:
  static const sigset_t& Sigpipe() {
    static const sigset_t only = [] {
      sigset_t set;
      sigemptyset(&set);
      sigaddset(&set, SIGPIPE);
      return set;
    }();
    return only;
  }

  sigset_t before_{};
};

}  // namespace orve::adapters::smtp
