// How long a connection may last, and how much data it may bring in.
//
// libldap waits with a limit for an answer to begin, but without one for the rest of it and for the TLS
// handshake. And data that comes unasked for, under the number of no request, it keeps without showing it to
// anybody. So every read and write on its connection passes through here, below TLS, and ends where the
// allowance does.
#pragma once

#include <chrono>
#include <cstddef>

#include "ldap/entry_reader.h"

struct sockbuf;

namespace orve::adapters::ldap {

class Allowance {
 public:
  /// Bytes, for one request or handshake: everything that a reader of entries accepts, plus the framing.
  static constexpr std::size_t kMostBytes = EntryReader::kMostBytes + 4 * EntryReader::kLargestMessage;

  /// Starts over: from now on this much time, and this many bytes to be read.
  void Begin(std::chrono::milliseconds time, std::size_t bytes = kMostBytes);
  /// Whether something was ended because time ran out, or because there was more to read; stays true for
  /// good.
  [[nodiscard]] bool TimePassed() const { return timePassed_; }
  [[nodiscard]] bool BytesSpent() const { return bytesSpent_; }

  /// Whether so much has come in altogether that the connection should no longer be used: what came unasked
  /// for is only freed with it.
  [[nodiscard]] bool WornOut() const { return read_ > kMostBytes; }

  /// Makes the connection observe `self`, which must outlive it.
  static void Join(::sockbuf* connection, Allowance* self);

 private:
  struct Layer;

  std::chrono::steady_clock::time_point until_ = std::chrono::steady_clock::now();
  std::size_t bytes_ = 0;  // that may still be read
  std::size_t read_ = 0;
  bool timePassed_ = false;
  bool bytesSpent_ = false;
};

}  // namespace orve::adapters::ldap
