// How long a connection may go on, and how much may come over it.
//
// libldap waits with a limit for an answer to begin, but without one for the rest of it and for the TLS
// handshake. And what comes unasked for, under the number of no request, it keeps and shows to nobody. So
// every read and write of its connection passes here, below TLS, and ends where the allowance does.
#pragma once

#include <chrono>
#include <cstddef>

#include "ldap/entry_reader.h"

struct sockbuf;

namespace orve::adapters::ldap {

class Allowance {
 public:
  /// Bytes, for one request or handshake: all that a reader of entries takes, and what stands round it.
  static constexpr std::size_t kMostBytes = EntryReader::kMostBytes + 4 * EntryReader::kLargestMessage;

  /// Begins anew: from now on so much time, and so many bytes to be read.
  void Begin(std::chrono::milliseconds time, std::size_t bytes = kMostBytes);
  /// Whether something was ended because the time had passed, or because more was to be read; for good.
  [[nodiscard]] bool TimePassed() const { return timePassed_; }
  [[nodiscard]] bool BytesSpent() const { return bytesSpent_; }

  /// Whether so much has come, all in all, that the connection should not serve any longer: what came unasked
  /// for goes with it alone.
  [[nodiscard]] bool WornOut() const { return read_ > kMostBytes; }

  /// Makes the connection keep to `self`, which must outlive it.
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
