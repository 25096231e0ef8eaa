#include "smtp/hello.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "mime/address_list.h"

namespace orve::adapters::smtp {

namespace {

std::optional<std::string> Literal(const sockaddr_storage& address) {
  std::array<char, INET6_ADDRSTRLEN> text{};
  if (address.ss_family == AF_INET) {
    sockaddr_in four{};
    std::memcpy(&four, &address, sizeof four);
    if (::inet_ntop(AF_INET, &four.sin_addr, text.data(), text.size()) == nullptr) return {};
    return "[" + std::string(text.data()) + "]";
  }
  if (address.ss_family != AF_INET6) return {};
  sockaddr_in6 six{};
  std::memcpy(&six, &address, sizeof six);
  if (::inet_ntop(AF_INET6, &six.sin6_addr, text.data(), text.size()) == nullptr) return {};
  return "[IPv6:" + std::string(text.data()) + "]";
}

}  // namespace

bool IsAddressLiteralOrName(std::string_view name) {
  return !name.empty() && std::all_of(name.begin(), name.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view("-._:[]%").find(c) != std::string_view::npos;
  });
}

std::optional<std::string> HelloName(const std::string& wanted) {
  std::string name = mime::AsciiDomain(wanted).value_or("");
  if (IsAddressLiteralOrName(name)) return name;
  std::array<char, 256> machine{};
  if (::gethostname(machine.data(), machine.size() - 1) != 0) return {};
  const std::string_view found(machine.data());
  if (found.find('.') == std::string_view::npos || !IsAddressLiteralOrName(found)) return {};
  return std::string(found);
}

std::optional<std::string> OwnAddress(int socket) {
  sockaddr_storage own{};
  socklen_t length = sizeof own;
  void* const place = &own;
  if (::getsockname(socket, static_cast<sockaddr*>(place), &length) != 0) return {};
  return Literal(own);
}

}  // namespace orve::adapters::smtp
