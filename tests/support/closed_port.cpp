#include "support/closed_port.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>

#include "support/loopback.h"

namespace orve::support {

// Bound and not listening: the system refuses connections, and gives the port to nobody else.
ClosedPort::ClosedPort() : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in address = Loopback(0);
  socklen_t length = sizeof address;
  auto* const generic = reinterpret_cast<sockaddr*>(&address);
  if (::bind(socket_, generic, length) != 0 || ::getsockname(socket_, generic, &length) != 0) {
    ::close(socket_);
    throw std::runtime_error("no port");
  }
  number_ = ntohs(address.sin_port);
}

ClosedPort::~ClosedPort() {
  ::close(socket_);
}

}  // namespace orve::support
