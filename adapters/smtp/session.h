// One conversation with a server: opened once, good for any number of messages, closed with QUIT.
//
// The owner of a session may give it the next message as long as it is Clean: nothing of the previous one is
// left, on the connection or at the server. Any doubt about that makes it unclean for good.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "orve-mailserver/smtp/smtp_options.h"
#include "smtp/channel.h"
#include "smtp/failure.h"
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
  /// Work to do while the server is busy. Throws nothing.
  using Meanwhile = std::function<void()>;

  /// Makes no connection yet.
  Session(std::shared_ptr<const SmtpOptions> options, Target target);

  /// Connects and authenticates. Raises DeliveryFailure.
  void Open();

  /// True when a connection made with these options would be equivalent to this one: same server, port,
  /// encryption, trust, name and credentials. Time-outs, trace and what goes into a message do not matter.
  [[nodiscard]] bool Serves(const SmtpOptions& options, const Target& target) const;
  /// The options, time-outs and trace of the next message; `options` must be those that Serves was asked
  /// about.
  void Use(std::shared_ptr<const SmtpOptions> options);
  /// Where the dialogue is traced from now on, until the next Use; empty: nowhere.
  void TraceInto(Tracer::Sink sink) { tracer_.Into(std::move(sink)); }

  /// Delivers one message to all recipients of the envelope or, when any of them is refused, to none. Raises
  /// DeliveryFailure; what `write` throws ends the delivery as a failure of the data, with the connection
  /// dropped in the middle of the message so that nobody mistakes a truncated message for a whole one.
  /// `meanwhile` runs once, when the first commands have been sent and their replies are awaited.
  void Deliver(const Envelope& envelope, const Writer& write, const Meanwhile& meanwhile = {});

  /// True once the server has accepted the sender of the latest message. Until then it has nothing of the
  /// message, which may still go over another connection.
  [[nodiscard]] bool SenderTaken() const { return senderTaken_; }
  /// True when this connection is ready for another message: the last one was accepted, or undone by RSET,
  /// and the server has said nothing since.
  [[nodiscard]] bool Clean() const { return open_ && clean_ && received_.empty(); }
  /// The same, checked on the connection itself: it notices a server that has closed it or said goodbye.
  /// Sends nothing and does not wait.
  [[nodiscard]] bool StillThere() noexcept;
  /// How many messages were begun.
  [[nodiscard]] std::size_t Messages() const { return messages_; }

  /// Asks whether the server accepts this sender: MAIL, then RSET. No recipient is named and no message
  /// begun. Raises DeliveryFailure. Leaves the session unclean.
  void TrySender(const Envelope& envelope);

  /// Sends QUIT, if the connection is still open, and closes it. Never fails and never waits: the outcome is
  /// known by then, and a server that is slow to say goodbye must not hold up the person at the application.
  void Close() noexcept;

 private:
  struct Reply {
    int code = 0;
    std::string text;  // all lines as they may be shown, code included, joined by " / "
    [[nodiscard]] bool Positive() const { return code / 100 == 2; }
  };

  template <class Action>
  void WithoutSecrets(Action action) const;
  void Connect();
  void AskForSender(const Envelope& envelope);
  void Transact(const Envelope& envelope, const Writer& write, const Meanwhile& meanwhile);
  void SendEnvelope(const Envelope& envelope, const Meanwhile& meanwhile);
  void SendMessage(const Writer& write);
  void Transmit(const Writer& write);
  void RequireUtf8Support(const Envelope& envelope) const;
  [[nodiscard]] std::vector<std::string> EnvelopeCommands(const Envelope& envelope) const;
  [[nodiscard]] std::size_t ExchangeGroup(const std::vector<std::string>& commands, std::size_t first,
                                          const Meanwhile& meanwhile);
  [[noreturn]] void ResetAfterRefusal(const std::string& refusal);

  void Say(std::string_view commands, std::chrono::milliseconds stall);
  [[nodiscard]] Reply Command(const std::string& command);
  [[nodiscard]] Reply ReadReply(std::chrono::milliseconds timeout);
  [[nodiscard]] std::string ReadLine(Channel::Clock::time_point deadline, std::size_t budget);
  [[noreturn]] void Abandon(ErrorNumber number, const std::string& text, bool undecided = false);

  std::shared_ptr<const SmtpOptions> options_;
  Tracer tracer_;
  bool authenticate_;
  Channel channel_;
  std::string received_;  // bytes after the last reply read
  std::size_t messages_ = 0;
  bool open_ = false;
  bool clean_ = false;
  bool senderTaken_ = false;
  bool undecided_ = false;  // the message's end may have reached the server, which has not answered
};

}  // namespace orve::adapters::smtp
