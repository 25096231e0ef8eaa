// A library must not end its application with a signal.
#pragma once

#include <pthread.h>

#include <cerrno>
#include <csignal>
#include <ctime>

namespace orve::adapters::posix {

// Keeps a write to a pipe or socket that nobody reads from raising SIGPIPE, which would end the whole
// application. The disposition belongs to the application and stays; a signal that was pending already stays
// too.
class PipeSignalHeld {
 public:
  PipeSignalHeld() {
    ::sigemptyset(&pipe_);
    ::sigaddset(&pipe_, SIGPIPE);
    pendingBefore_ = Pending();
    ::pthread_sigmask(SIG_BLOCK, &pipe_, &before_);
  }
  PipeSignalHeld(const PipeSignalHeld&) = delete;
  PipeSignalHeld& operator=(const PipeSignalHeld&) = delete;
  PipeSignalHeld(PipeSignalHeld&&) = delete;
  PipeSignalHeld& operator=(PipeSignalHeld&&) = delete;
  ~PipeSignalHeld() {
    constexpr timespec kAtOnce{};
    while (!pendingBefore_ && Pending() && ::sigtimedwait(&pipe_, nullptr, &kAtOnce) < 0 && errno == EINTR) {
    }
    ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
  }

 private:
  static bool Pending() {
    sigset_t pending;
    ::sigemptyset(&pending);
    ::sigpending(&pending);
    return ::sigismember(&pending, SIGPIPE) == 1;
  }

  sigset_t pipe_{};
  sigset_t before_{};
  bool pendingBefore_ = false;
};

}  // namespace orve::adapters::posix
