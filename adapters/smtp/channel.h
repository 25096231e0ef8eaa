// A connection to a server that is ready for MAIL: name look-up, TCP, TLS, greeting, EHLO and authentication
// are libcurl's work; after that the connection carries bytes.
//
// libcurl is used with CURLOPT_CONNECT_ONLY. Its own transaction would give no replies per recipient, no RSET
// and no time-out while the message is being sent.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "orve-mailserver/smtp/smtp_options.h"
#include "orve-mailserver/smtp/target.h"
#include "smtp/tracer.h"

namespace orve::adapters::smtp {

class Channel {
 public:
  using Clock = std::chrono::steady_clock;

  /// What a BrokenConnection says when a reply does not come in time.
  static constexpr const char* kNoReply = "tempo di attesa della risposta scaduto";

  /// Makes no connection yet. `tracer` must outlive the channel.
  Channel(Target target, Tracer& tracer);
  Channel(const Channel&) = delete;
  Channel& operator=(const Channel&) = delete;
  Channel(Channel&&) = delete;
  Channel& operator=(Channel&&) = delete;
  /// Drops the connection without a QUIT.
  ~Channel();

  [[nodiscard]] const Target& Server() const;

  /// Connects. Raises DeliveryFailure with the number of the stage that failed.
  void Connect(const SmtpOptions& options);

  /// True when the server's last EHLO reply names the extension. `keyword` is in capitals.
  [[nodiscard]] bool Offers(std::string_view keyword) const;

  /// Sends all of `bytes`; raises BrokenConnection when the connection breaks or nothing goes out for the
  /// time `stall`. False when the server spoke before everything was sent: Receive returns its words next.
  [[nodiscard]] bool Send(std::string_view bytes, std::chrono::milliseconds stall);

  /// Receives some bytes, at least one. Raises BrokenConnection when none come before the deadline or the
  /// connection has ended.
  [[nodiscard]] std::string Receive(Clock::time_point deadline);

  /// True when the server has said something that has not been received yet. Raises BrokenConnection as
  /// Receive does.
  [[nodiscard]] bool PeerSpoke();

  /// Drops the connection without a QUIT.
  void Drop() noexcept;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace orve::adapters::smtp
