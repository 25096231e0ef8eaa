// One conversation with a server: opened once, good for any number of messages, closed with QUIT.
//
// The component opens one for each message. Nothing here depends on that: whoever owns a session may hand it
// the next message after a Deliver that ended well.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "smtp/channel.h"
#include "smtp/failure.h"
#include "smtp/smtp_options.h"
#include "smtp/tracer.h"

namespace orve::adapters::smtp {

/// Who sends and who receives, as the commands name them: wire form, without brackets.
struct Envelope {
  std::string sender;
  std::vector<std::string> recipients;
  bool senderNeedsUtf8 = false;
  bool recipientsNeedUtf8 = false;
  bool notifyDelivery = false;
};

class Session {
 public:
  using Sink = std::function<void(std::string_view)>;
  /// Writes a message, dots doubled and closed by the lone dot, into the sink it is given.
  using Writer = std::function<void(const Sink&)>;

  /// `options` must outlive the session. Makes no connection yet.
  Session(const SmtpOptions& options, Target target);

  /// Connects and authenticates. Raises DeliveryFailure.
  void Open();

  /// Delivers one message to all recipients of the envelope or, when any of them is refused, to none. Raises
  /// DeliveryFailure; what `write` throws ends the delivery as a failure of the data, with the connection
  /// dropped in the middle of the message so that nobody takes the torso for a message.
  void Deliver(const Envelope& envelope, const Writer& write);

  /// Says QUIT, if the connection still stands, and closes it. Never fails and never waits: the outcome is
  /// known by then, and a server that is slow to take its leave must not hold up the person at the
  /// application.
  void Close() noexcept;

  /// `text` without secrets.
  [[nodiscard]] std::string Masked(std::string_view text) const { return tracer_.Masked(text); }

 private:
  struct Reply {
    int code = 0;
    std::string text;  // all lines, code included, joined by " / "
    [[nodiscard]] bool Positive() const { return code / 100 == 2; }
  };

  void SendEnvelope(const Envelope& envelope);
  void SendMessage(const Writer& write);
  void Transmit(const Writer& write);
  void RequireUtf8Support(const Envelope& envelope) const;
  [[nodiscard]] std::vector<std::string> EnvelopeCommands(const Envelope& envelope) const;
  [[nodiscard]] std::size_t ExchangeGroup(const std::vector<std::string>& commands, std::size_t first);
  [[noreturn]] void ResetAfterRefusal(const std::string& refusal);

  void Say(std::string_view commands);
  [[nodiscard]] Reply Command(const std::string& command);
  [[nodiscard]] Reply ReadReply(std::chrono::milliseconds timeout);
  [[nodiscard]] std::string ReadLine(Channel::Clock::time_point deadline, std::size_t budget);
  [[noreturn]] void Abandon(ErrorNumber number, const std::string& text, bool undecided = false);

  const SmtpOptions& options_;
  Tracer tracer_;
  bool authenticate_;
  Channel channel_;
  std::string received_;  // bytes behind the last reply read
  bool open_ = false;
  bool undecided_ = false;  // the message's end may have reached the server, which has not answered
};

}  // namespace orve::adapters::smtp
