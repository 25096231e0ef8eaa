#include "support/loopback.h"

#include <sys/socket.h>

#include <stdexcept>

namespace orve::support {

namespace {

adapters::posix::Descriptor NewSocket() {
  return adapters::posix::Descriptor(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
}

}  // namespace

LoopbackSocket::LoopbackSocket() : socket_(NewSocket()) {
  sockaddr_in address = Loopback(0);
  socklen_t length = sizeof address;
  auto* const generic = reinterpret_cast<sockaddr*>(&address);
  if (::bind(Number(), generic, length) != 0 || ::getsockname(Number(), generic, &length) != 0) {
    throw std::runtime_error("no free port");
  }
  port_ = ntohs(address.sin_port);
}

void LoopbackSocket::Listen(int waiting) const {
  if (::listen(Number(), waiting) != 0) throw std::runtime_error("no listening socket");
}

adapters::posix::Descriptor ConnectTo(int port) {
  adapters::posix::Descriptor connection = NewSocket();
  const sockaddr_in address = Loopback(port);
  if (::connect(connection.Number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    connection.Close();
  }
  return connection;
}

}  // namespace orve::support
