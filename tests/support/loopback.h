// Addresses and sockets of this machine, for servers and clients of the tests.
#pragma once

#include <netinet/in.h>

#include <cstdint>

#include "posix/descriptor.h"

namespace orve::support {

/// 127.0.0.1 and that port; 0 stands for any free one.
inline sockaddr_in Loopback(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  return address;
}

/// A socket on a free port of 127.0.0.1, which nobody else gets as long as the object lives. Until it
/// listens, the system refuses connections; then it takes them, and nobody answers but whoever accepts them
/// here.
class LoopbackSocket {
 public:
  /// Raises std::runtime_error without a free port.
  LoopbackSocket();

  /// Takes connections, of which `waiting` may be left unaccepted. Raises std::runtime_error on failure.
  void Listen(int waiting) const;
  [[nodiscard]] int Port() const { return port_; }
  [[nodiscard]] int Number() const { return socket_.Number(); }

 private:
  adapters::posix::Descriptor socket_;
  int port_ = 0;
};

/// A connection to that port of 127.0.0.1; none when it is refused.
[[nodiscard]] adapters::posix::Descriptor ConnectTo(int port);

}  // namespace orve::support
