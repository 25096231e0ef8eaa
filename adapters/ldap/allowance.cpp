#include "ldap/allowance.h"

#include <lber.h>
#include <poll.h>

#include <algorithm>
#include <cerrno>

namespace orve::adapters::ldap {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr int kBetweenSocketAndTls = (LBER_SBIOD_LEVEL_PROVIDER + LBER_SBIOD_LEVEL_TRANSPORT) / 2;
constexpr long long kLongest = 1'000'000'000;

}  // namespace

// The functions that libldap calls instead of the socket's.
struct Allowance::Layer {
  static int Setup(Sockbuf_IO_Desc* at, void* self) {
    at->sbiod_pvt = self;
    return 0;
  }
  static int Remove(Sockbuf_IO_Desc* /*at*/) { return 0; }
  static int Control(Sockbuf_IO_Desc* at, int option, void* argument) {
    return LBER_SBIOD_CTRL_NEXT(at, option, argument);
  }
  static ber_slen_t Read(Sockbuf_IO_Desc* at, void* bytes, ber_len_t size) {
    if (!Wait(at, POLLIN)) return -1;
    Allowance& self = Of(at);
    if (self.bytes_ == 0) {
      self.bytesSpent_ = true;
      errno = EMSGSIZE;
      return -1;
    }
    const ber_slen_t count = LBER_SBIOD_READ_NEXT(at, bytes, std::min<ber_len_t>(size, self.bytes_));
    const auto read = static_cast<std::size_t>(std::max<ber_slen_t>(count, 0));
    self.bytes_ -= read;
    self.read_ += read;
    return count;
  }
  static ber_slen_t Write(Sockbuf_IO_Desc* at, void* bytes, ber_len_t size) {
    return Wait(at, POLLOUT) ? LBER_SBIOD_WRITE_NEXT(at, bytes, size) : -1;
  }
  static int Close(Sockbuf_IO_Desc* /*at*/) { return 0; }

  static Allowance& Of(Sockbuf_IO_Desc* at) { return *static_cast<Allowance*>(at->sbiod_pvt); }

  static bool Wait(Sockbuf_IO_Desc* at, short event) {
    Allowance& self = Of(at);
    ber_socket_t socket = -1;
    ::ber_sockbuf_ctrl(at->sbiod_sb, LBER_SB_OPT_GET_FD, &socket);
    pollfd entry{socket, event, 0};
    for (;;) {
      const auto left = std::chrono::ceil<milliseconds>(self.until_ - Clock::now()).count();
      const int ready = ::poll(&entry, 1, static_cast<int>(std::clamp<long long>(left, 0, kLongest)));
      if (ready > 0) return true;
      if (ready < 0 && errno == EINTR) continue;
      self.timePassed_ = self.timePassed_ || ready == 0;
      errno = ETIMEDOUT;
      return false;
    }
  }
};

void Allowance::Begin(milliseconds time, std::size_t bytes) {
  until_ = Clock::now() + time;
  bytes_ = bytes;
}

void Allowance::Join(::sockbuf* connection, Allowance* self) {
  static Sockbuf_IO layer = {Layer::Setup, Layer::Remove, Layer::Control,
                             Layer::Read,  Layer::Write,  Layer::Close};
  ::ber_sockbuf_add_io(connection, &layer, kBetweenSocketAndTls, self);
}

}  // namespace orve::adapters::ldap
