#include "support/silent_relay.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>

#include <array>
#include <cstdint>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

#include "support/loopback.h"

namespace orve::support {

namespace {

struct Pair {
  adapters::posix::Descriptor client;
  adapters::posix::Descriptor server;
};

}  // namespace

SilentRelay::SilentRelay(int serverPort, std::string lastWords)
    : serverPort_(serverPort), lastWords_(std::move(lastWords)), wake_(::eventfd(0, EFD_CLOEXEC)) {
  if (!wake_) throw std::runtime_error("the relay has no event");
  constexpr int kWaiting = 8;
  listener_.Listen(kWaiting);
  thread_ = std::thread([this] { Run(); });
}

SilentRelay::~SilentRelay() {
  ended_ = true;
  static_cast<void>(::eventfd_write(wake_.Number(), 1));
  thread_.join();
}

void SilentRelay::FallSilent() {
  silent_ = true;
  static_cast<void>(::eventfd_write(wake_.Number(), 1));
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
  while (!ended_) {
    std::vector<pollfd> awaited = {{wake_.Number(), POLLIN, 0}};
    if (!silent_) {
      awaited.push_back({listener_.Number(), POLLIN, 0});
      for (const Pair& pair : pairs) {
        awaited.push_back({pair.client.Number(), POLLIN, 0});
        awaited.push_back({pair.server.Number(), POLLIN, 0});
      }
    }
    if (::poll(awaited.data(), awaited.size(), -1) < 0) continue;
    if (awaited[0].revents != 0) {
      eventfd_t ignored = 0;
      static_cast<void>(::eventfd_read(wake_.Number(), &ignored));
      continue;
    }
    for (std::size_t i = pairs.size(); i-- > 0;) {
      const bool fromClient = awaited[2 + 2 * i].revents != 0;
      const bool fromServer = awaited[3 + 2 * i].revents != 0;
      const bool alive = (!fromClient || PassOn(pairs[i].client.Number(), pairs[i].server.Number(), true)) &&
                         (!fromServer || PassOn(pairs[i].server.Number(), pairs[i].client.Number(), false));
      if (alive) continue;
      pairs.erase(pairs.begin() + static_cast<std::ptrdiff_t>(i));
    }
    if (awaited[1].revents == 0) continue;
    Pair pair{adapters::posix::Descriptor(::accept4(listener_.Number(), nullptr, nullptr, SOCK_CLOEXEC)),
              ConnectTo(serverPort_)};
    if (!pair.client || !pair.server) continue;
    constexpr int kAtOnce =
        1;  // small messages to and fro, each of which would wait for the last one's acknowledgement
    for (const int side : {pair.client.Number(), pair.server.Number()})
      ::setsockopt(side, IPPROTO_TCP, TCP_NODELAY, &kAtOnce, sizeof kAtOnce);
    pairs.push_back(std::move(pair));
  }
}

}  // namespace orve::support
