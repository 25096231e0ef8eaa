// The answer of a directory server that may say anything at all: libldap takes the bytes apart, and the
// reader of entries takes the result. No more is read than the connection is allowed to.
#include <ldap.h>
#include <openldap.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "ldap/allowance.h"
#include "ldap/entry_reader.h"
#include "support.h"

// libldap leaks a request whose answer makes no sense. A look-up makes one such request, and the server is
// then left alone.
extern "C" const char* __lsan_default_suppressions();  // NOLINT: the name is the sanitizer's

extern "C" const char* __lsan_default_suppressions() {  // NOLINT
  return "leak:libldap-\n"
         "leak:liblber-\n";
}

namespace orve::fuzz {
namespace {

using adapters::ldap::Allowance;
using adapters::ldap::Entry;
using adapters::ldap::EntryReader;

struct Ended {
  void operator()(LDAP* handle) const { ::ldap_unbind_ext(handle, nullptr, nullptr); }
};
struct Released {
  void operator()(LDAPMessage* message) const { ::ldap_msgfree(message); }
};

/// A connection over which the server has said all that it will.
class Connection {
 public:
  Connection(std::string_view words, std::size_t allowed) {
    std::array<int, 2> ends{};
    Require(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) == 0, "a connection");
    server_ = ends[1];
    const ssize_t said = ::send(server_, words.data(), words.size(), MSG_DONTWAIT);
    Require(said == static_cast<ssize_t>(words.size()), "room for the words");
    // The request may still be sent, and nobody reads it.
    ::shutdown(server_, SHUT_WR);
    LDAP* handle = nullptr;
    const int opened = ::ldap_init_fd(ends[0], LDAP_PROTO_TCP, "ldap://fuzz.example", &handle);
    Require(opened == LDAP_SUCCESS, "a handle");
    handle_.reset(handle);
    Sockbuf* socket = nullptr;
    ber_len_t largest = EntryReader::kLargestMessage;
    ::ldap_get_option(handle, LDAP_OPT_SOCKBUF, static_cast<void*>(&socket));
    ::ber_sockbuf_ctrl(socket, LBER_SB_OPT_SET_MAX_INCOMING, &largest);
    client_ = ::dup(ends[0]);
    allowance_.Begin(std::chrono::hours(1), allowed);
    Allowance::Join(socket, &allowance_);
    constexpr int kVersion = LDAP_VERSION3;
    ::ldap_set_option(handle, LDAP_OPT_PROTOCOL_VERSION, &kVersion);
    ::ldap_set_option(handle, LDAP_OPT_REFERRALS, LDAP_OPT_OFF);
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  Connection(Connection&&) = delete;
  Connection& operator=(Connection&&) = delete;
  ~Connection() {
    handle_.reset();
    ::close(server_);
    ::close(client_);
  }
  /// How much of the words has not been read.
  [[nodiscard]] std::size_t Unread() const {
    int bytes = 0;
    Require(::ioctl(client_, FIONREAD, &bytes) == 0, "the connection can be asked");
    return static_cast<std::size_t>(bytes);
  }
  [[nodiscard]] LDAP* Handle() const { return handle_.get(); }

 private:
  Allowance allowance_;
  std::unique_ptr<LDAP, Ended> handle_;
  int server_ = -1;
  int client_ = -1;  // stays when the handle has closed its own
};

void Check(const std::vector<Entry>& entries, std::string_view words) {
  Require(entries.size() <= EntryReader::kMostMessages, "entries have a bound");
  std::size_t bytes = 0;
  for (const Entry& entry : entries) {
    bytes += entry.name.size();
    for (const auto& [name, values] : entry.attributes) {
      Require(words.find(name) != std::string_view::npos, "a name is one that the server sent");
      bytes += name.size();
      for (const std::string& value : values) {
        Require(words.find(value) != std::string_view::npos, "a value is one that the server sent");
        bytes += value.size();
      }
    }
  }
  Require(bytes <= EntryReader::kMostBytes + EntryReader::kLargestMessage, "what is kept has a bound");
  Require(bytes <= words.size(), "nothing is kept that was not sent");
}

}  // namespace
}  // namespace orve::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orve::fuzz;
  if (size > 60000) return 0;  // what a connection takes at once
  const std::string_view words(reinterpret_cast<const char*>(data), size);
  const std::size_t allowed = size % 4 == 0 ? size / 2 : size;
  const Connection connection(words, allowed);
  int id = 0;
  if (::ldap_search_ext(connection.Handle(), "", LDAP_SCOPE_BASE, "(objectClass=*)", nullptr, 0, nullptr,
                        nullptr, nullptr, 0, &id) != LDAP_SUCCESS) {
    return 0;
  }
  EntryReader reader(connection.Handle());
  for (;;) {
    LDAPMessage* message = nullptr;
    const int kind = ::ldap_result(connection.Handle(), id, LDAP_MSG_ONE, nullptr, &message);
    const std::unique_ptr<LDAPMessage, Released> owned(message);
    if (kind <= 0 || reader.Take(message) != EntryReader::Taken::kMore) break;
  }
  Check(reader.Entries(), words);
  Require(size - connection.Unread() <= allowed, "no more is read than is allowed");
  return 0;
}
