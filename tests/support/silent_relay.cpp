#include "support/silent_relay.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

#include "support/loopback.h"

namespace orve::support {

namespace {

int NewSocket() {
  return ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
}

int ConnectTo(int port) {
  const int connection = NewSocket();
  const sockaddr_in address = Loopback(port);
  if (connection >= 0 &&
      ::connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
    return connection;
  if (connection >= 0) ::close(connection);
  return -1;
}

struct Pair {
  int client = -1;
  int server = -1;
};

}  // namespace

SilentRelay::SilentRelay(int serverPort, std::string lastWords)
    : serverPort_(serverPort),
      lastWords_(std::move(lastWords)),
      listener_(NewSocket()),
      wake_(::eventfd(0, EFD_CLOEXEC)) {
  sockaddr_in address = Loopback(0);
  socklen_t length = sizeof address;
  auto* const generic = reinterpret_cast<sockaddr*>(&address);
  constexpr int kWaiting = 8;
  if (listener_ < 0 || wake_ < 0 || ::bind(listener_, generic, length) != 0 ||
      ::listen(listener_, kWaiting) != 0 || ::getsockname(listener_, generic, &length) != 0) {
    throw std::runtime_error("the relay cannot listen");
  }
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { Run(); });
}

SilentRelay::~SilentRelay() {
  ended_ = true;
  static_cast<void>(::eventfd_write(wake_, 1));
  thread_.join();
  ::close(listener_);
  ::close(wake_);
}

void SilentRelay::FallSilent() {
  silent_ = true;
  static_cast<void>(::eventfd_write(wake_, 1));
}

// False at the end of either side.
bool SilentRelay::PassOn(int from, int to, bool fromClient) {
  std::array<char, 65536> bytes{};
  const ssize_t read = ::recv(from, bytes.data(), bytes.size(), 0);
  if (read <= 0) return false;
  std::string_view rest(bytes.data(), static_cast<std::size_t>(read));
  if (fromClient && !lastWords_.empty() && rest.find(lastWords_) != std::string_view::npos) silent_ = true;
  while (!silent_ && !rest.empty()) {
    const ssize_t sent = ::send(to, rest.data(), rest.size(), MSG_NOSIGNAL);
    if (sent <= 0) return false;
    rest.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

void SilentRelay::Run() {
  std::vector<Pair> pairs;
  const auto end = [](const Pair& pair) {
    ::close(pair.client);
    ::close(pair.server);
  };
  while (!ended_) {
    std::vector<pollfd> awaited = {{wake_, POLLIN, 0}};
    if (!silent_) {
      awaited.push_back({listener_, POLLIN, 0});
      for (const Pair& pair : pairs) {
        awaited.push_back({pair.client, POLLIN, 0});
        awaited.push_back({pair.server, POLLIN, 0});
      }
    }
    if (::poll(awaited.data(), awaited.size(), -1) < 0) continue;
    if (awaited[0].revents != 0) {
      eventfd_t ignored = 0;
      static_cast<void>(::eventfd_read(wake_, &ignored));
      continue;
    }
    for (std::size_t i = pairs.size(); i-- > 0;) {
      const bool fromClient = awaited[2 + 2 * i].revents != 0;
      const bool fromServer = awaited[3 + 2 * i].revents != 0;
      const bool alive = (!fromClient || PassOn(pairs[i].client, pairs[i].server, true)) &&
                         (!fromServer || PassOn(pairs[i].server, pairs[i].client, false));
      if (alive) continue;
      end(pairs[i]);
      pairs.erase(pairs.begin() + static_cast<std::ptrdiff_t>(i));
    }
    if (awaited[1].revents == 0) continue;
    const int client = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (client < 0) continue;
    const int server = ConnectTo(serverPort_);
    if (server < 0) {
      ::close(client);
      continue;
    }
    constexpr int kAtOnce =
        1;  // small messages to and fro, each of which would wait for the last one's acknowledgement
    for (const int side : {client, server})
      ::setsockopt(side, IPPROTO_TCP, TCP_NODELAY, &kAtOnce, sizeof kAtOnce);
    pairs.push_back({client, server});
  }
  for (const Pair& pair : pairs) end(pair);
}

}  // namespace orve::support
