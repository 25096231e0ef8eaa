// What the client calls itself.
#include "smtp/hello.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netdb.h>
#include <netinet/in.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "adapters/smtp/outgoing.h"
#include "smtp/smtp_component.h"
#include "support/scripted_server.h"

namespace orve::adapters::smtp {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::StartsWith;

// The text of an address, as the system writes it.
std::string Written(const sockaddr& address, socklen_t size) {
  std::array<char, NI_MAXHOST> text{};
  EXPECT_EQ(::getnameinfo(&address, size, text.data(), text.size(), nullptr, 0, NI_NUMERICHOST), 0);
  return text.data();
}

// Greets the first to connect over IPv6, takes a line and hangs up.
class GreeterOverIpv6 {
 public:
  GreeterOverIpv6() : listener_(::socket(AF_INET6, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in6 address{};
    address.sin6_family = AF_INET6;
    address.sin6_addr = in6addr_loopback;
    void* const place = &address;
    auto* const generic = static_cast<sockaddr*>(place);
    socklen_t size = sizeof address;
    ready_ = ::bind(listener_, generic, size) == 0 && ::listen(listener_, 1) == 0 &&
             ::getsockname(listener_, generic, &size) == 0;
    port_ = static_cast<std::int16_t>(ntohs(address.sin6_port));
    if (ready_) thread_ = std::thread([this] { Serve(); });
  }
  GreeterOverIpv6(const GreeterOverIpv6&) = delete;
  GreeterOverIpv6& operator=(const GreeterOverIpv6&) = delete;
  GreeterOverIpv6(GreeterOverIpv6&&) = delete;
  GreeterOverIpv6& operator=(GreeterOverIpv6&&) = delete;
  ~GreeterOverIpv6() {
    ::shutdown(listener_, SHUT_RDWR);
    if (thread_.joinable()) thread_.join();
    ::close(listener_);
  }

  [[nodiscard]] bool Ready() const { return ready_; }
  [[nodiscard]] std::int16_t Port() const { return port_; }
  [[nodiscard]] std::string Line() {
    thread_.join();
    return line_;
  }

 private:
  void Serve() {
    const int peer = ::accept(listener_, nullptr, nullptr);
    if (peer < 0) return;
    constexpr std::string_view kGreeting = "220 pronto\r\n";
    if (::write(peer, kGreeting.data(), kGreeting.size()) > 0) {
      char letter = 0;
      while (::read(peer, &letter, 1) == 1 && letter != '\r') line_ += letter;
    }
    ::close(peer);
  }

  int listener_;
  bool ready_ = false;
  std::int16_t port_ = 0;
  std::string line_;
  std::thread thread_;
};

std::unique_ptr<SmtpComponent> OutgoingWithoutAName(std::int16_t port,
                                                    std::function<void(std::string_view)> trace = nullptr) {
  SmtpOptions options = Quick();
  options.ehloName.clear();
  options.trace = std::move(trace);
  return Outgoing(port, std::move(options));
}

}  // namespace

// "localhost" has an address of either family. These two servers listen on one each, so for one of them the
// address that is tried first is the wrong one.
TEST(Hello, WithoutAFullNameTheClientGoesByTheAddressThatTheServerSees) {
  for (const char* host : {"::1", "localhost"}) {
    GreeterOverIpv6 server;
    if (!server.Ready()) GTEST_SKIP() << "no IPv6 on this machine";
    const auto component = OutgoingWithoutAName(server.Port());
    component->ServerAddr(host);
    EXPECT_NE(Sent(*component), -1);
    EXPECT_EQ(server.Line(), "EHLO " + HelloName("").value_or("[IPv6:::1]")) << host;
  }
}

TEST(Hello, WithoutAFullNameTheClientGoesByTheAddressOverWhichItIsConnected) {
  const std::string name = HelloName("").value_or("[127.0.0.1]");
  support::ScriptedServer server({support::Say("220 pronto"), support::On("EHLO " + name, "250 salve"),
                                  support::On("MAIL FROM:<ditta@rossi.it>", "250 Ok"),
                                  support::On("RCPT TO:<mario@bianchi.it>", "250 Ok"),
                                  support::On("DATA", "354 avanti"), support::Body("250 preso")});
  const auto component = OutgoingWithoutAName(server.Port16());
  component->ServerAddr("localhost");
  EXPECT_EQ(Sent(*component), -1) << component->Fine().motivo;
  EXPECT_EQ(server.Complaint(), "");
}

TEST(Hello, WithoutAFullNameAFailedLookUpIsTraced) {
  std::vector<std::string> trace;
  const auto component = OutgoingWithoutAName(25, [&](std::string_view line) { trace.emplace_back(line); });
  component->ServerAddr("nessuno.invalid");
  EXPECT_NE(Sent(*component), -1);
  EXPECT_THAT(trace, Contains(AllOf(StartsWith("* "), HasSubstr("nessuno.invalid"))));
}

TEST(Hello, ANameThatWasGivenIsTaken) {
  EXPECT_EQ(HelloName("posta.azienda.example"), "posta.azienda.example");
  EXPECT_EQ(HelloName("[192.0.2.7]"), "[192.0.2.7]");
  EXPECT_EQ(HelloName("città.example"), "xn--citt-3na.example");
}

TEST(Hello, ASocketsAddressIsWrittenAsALiteral) {
  ifaddrs* all = nullptr;
  ASSERT_EQ(::getifaddrs(&all), 0);
  const std::unique_ptr<ifaddrs, void (*)(ifaddrs*)> owned(all, ::freeifaddrs);
  int looked = 0;
  for (const ifaddrs* one = all; one != nullptr; one = one->ifa_next) {
    if (one->ifa_addr == nullptr || (one->ifa_flags & IFF_UP) == 0) continue;
    const bool six = one->ifa_addr->sa_family == AF_INET6;
    if (!six && one->ifa_addr->sa_family != AF_INET) continue;
    const socklen_t size = six ? sizeof(sockaddr_in6) : sizeof(sockaddr_in);
    const std::string written = Written(*one->ifa_addr, size);
    if (written.find('%') != std::string::npos) continue;  // of one link only
    const int socket = ::socket(one->ifa_addr->sa_family, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(::bind(socket, one->ifa_addr, size), 0) << written;
    EXPECT_EQ(OwnAddress(socket), (six ? "[IPv6:" : "[") + written + "]");
    ::close(socket);
    ++looked;
  }
  EXPECT_GT(looked, 0);
}

}  // namespace orve::adapters::smtp
