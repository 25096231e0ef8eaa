// A relay in front of a server that passes everything on until it is told to go silent: from then on its
// connections stay open and nothing passes over them, as on a line that was cut without notice.
#pragma once

#include <atomic>
#include <string>
#include <thread>

#include "support/loopback.h"

namespace orve::support {

class SilentRelay {
 public:
  /// Listens on a free port of loopback in front of `serverPort`, also of loopback. With `lastWords` it goes
  /// silent on its own when a client says them.
  explicit SilentRelay(int serverPort, std::string lastWords = "");
  SilentRelay(const SilentRelay&) = delete;
  SilentRelay& operator=(const SilentRelay&) = delete;
  SilentRelay(SilentRelay&&) = delete;
  SilentRelay& operator=(SilentRelay&&) = delete;
  /// Closes all connections.
  ~SilentRelay();

  [[nodiscard]] int Port() const { return listener_.Port(); }
  /// Whatever has not been passed on by now never will be, even on connections made later.
  void FallSilent();

 private:
  void Run();

  bool PassOn(int from, int to, bool fromClient);

  int serverPort_;
  std::string lastWords_;
  LoopbackSocket listener_;
  adapters::posix::Descriptor wake_;  // an event that the thread waits for in addition to its connections
  std::atomic<bool> silent_{false};
  std::atomic<bool> ended_{false};
  std::thread thread_;
};

}  // namespace orve::support
