// Addresses of this machine, for servers and clients of the tests.
#pragma once

#include <netinet/in.h>

#include <cstdint>

namespace orve::support {

/// 127.0.0.1 and that port; 0 stands for any free one.
inline sockaddr_in Loopback(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  return address;
}

}  // namespace orve::support
