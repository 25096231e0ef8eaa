// The dialogue with a server that says anything at any time. The connection is the fuzzer's own, so that the
// session under it is the real one; a simple reading of the server's words tells how the delivery must end.
#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "smtp/channel.h"
#include "smtp/failure.h"
#include "smtp/session.h"
#include "support.h"

namespace orve::fuzz {
namespace {

using adapters::smtp::DeliveryFailure;
using adapters::smtp::Envelope;
using adapters::smtp::ErrorNumber;
using adapters::smtp::Session;
using adapters::smtp::SmtpOptions;

constexpr std::string_view kPassword = "parola-segreta";
constexpr std::string_view kPasswordInBase64 = "cGFyb2xhLXNlZ3JldGE";
constexpr std::string_view kMessage = "Subject: prova\r\n\r\n..\r\ntesto\r\n.\r\n";

struct Server {
  std::string_view words;
  std::size_t atATime = 1;   // bytes in one piece
  bool lineByLine = false;   // a piece ends with its line: the server waits for its turn
  std::size_t breaksIn = 0;  // at this send the server speaks before everything has been sent; 0: never
  bool pipelining = false;
  bool notifications = false;
  bool utf8 = false;
  bool authentication = false;

  std::size_t sends = 0;
  std::string heard;
};

// The session itself creates its channel; this is how the channel finds its server.
Server*& Current() {
  static Server* server = nullptr;
  return server;
}

}  // namespace
}  // namespace orve::fuzz

namespace orve::adapters::smtp {

struct Channel::Impl {
  fuzz::Server& server;
};

// NOLINTNEXTLINE(performance-unnecessary-value-param): the declaration is the real channel's
Channel::Channel(Target /*target*/, Tracer& /*tracer*/) : impl_(new Impl{*fuzz::Current()}) {}
Channel::~Channel() = default;
void Channel::Connect(const SmtpOptions& /*options*/) {}
const Target& Channel::Server() const {
  static const Target kNone;
  return kNone;
}

bool Channel::Offers(std::string_view keyword) const {
  const fuzz::Server& server = impl_->server;
  return (keyword == "PIPELINING" && server.pipelining) || (keyword == "DSN" && server.notifications) ||
         (keyword == "SMTPUTF8" && server.utf8) || (keyword == "AUTH" && server.authentication);
}

bool Channel::Send(std::string_view bytes, std::chrono::milliseconds /*stall*/) {
  fuzz::Server& server = impl_->server;
  if (++server.sends == server.breaksIn && !server.words.empty()) return false;
  server.heard.append(bytes);
  return true;
}

std::string Channel::Receive(Clock::time_point /*deadline*/) {
  fuzz::Server& server = impl_->server;
  if (server.words.empty()) throw BrokenConnection("chiusa");
  std::size_t size = std::min(server.atATime, server.words.size());
  if (server.lineByLine)
    size = std::min(size, server.words.find('\n') + 1 == 0 ? size : server.words.find('\n') + 1);
  std::string piece(server.words.substr(0, size));
  server.words.remove_prefix(size);
  return piece;
}

bool Channel::PeerSpoke() {
  return false;
}
void Channel::Drop() noexcept {}

}  // namespace orve::adapters::smtp

namespace orve::fuzz {
namespace {

/// The codes of the replies up to the first that is not one.
std::vector<int> Codes(std::string_view words) {
  std::vector<int> codes;
  while (!words.empty()) {
    const std::size_t end = words.find('\n');
    if (end == std::string_view::npos) break;
    std::string_view line = words.substr(0, end);
    words.remove_prefix(end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    const auto digit = [&](std::size_t i) { return line[i] >= '0' && line[i] <= '9'; };
    if (line.size() < 3 || !digit(0) || !digit(1) || !digit(2) || line[0] < '2' || line[0] > '5') break;
    if (line.size() > 3 && line[3] != ' ' && line[3] != '-') break;
    if (line.size() > 3 && line[3] == '-') continue;
    codes.push_back((line[0] - '0') * 100 + (line[1] - '0') * 10 + (line[2] - '0'));
  }
  return codes;
}

struct Outcome {
  ErrorNumber number = ErrorNumber::kNone;
  bool undecided = false;
  bool either = false;  // the server says goodbye: with or without RSET, no matter
};

bool Good(int code) {
  return code / 100 == 2;
}

/// How a delivery ends when the server only speaks in its turn.
Outcome Expected(const std::vector<int>& codes, std::size_t recipients, bool pipelining) {
  std::size_t next = 0;
  const auto take = [&]() -> std::optional<int> {
    if (next == codes.size()) return std::nullopt;
    return codes[next++];
  };
  const auto sender = take();
  if (!sender) return {ErrorNumber::kSender};
  if (!Good(*sender)) return {*sender == 530 ? ErrorNumber::kAuthentication : ErrorNumber::kSender};
  bool refused = false;
  bool leaves = false;
  for (std::size_t i = 0; i < recipients && (pipelining || !refused); ++i) {
    const auto reply = take();
    if (!reply) return {ErrorNumber::kRecipients};
    refused = refused || !Good(*reply);
    leaves = leaves || *reply == 421;
  }
  if (refused) {
    const auto reset = take();
    return {reset && Good(*reset) ? ErrorNumber::kRecipients : ErrorNumber::kReset, false, leaves};
  }
  const auto data = take();
  if (!data || *data != 354) return {ErrorNumber::kData};
  const auto last = take();
  if (!last) return {ErrorNumber::kData, true};
  return {Good(*last) ? ErrorNumber::kNone : ErrorNumber::kData};
}

Outcome Deliver(Server& server, const Envelope& envelope, std::size_t pieces) {
  Current() = &server;
  std::vector<std::string> trace;
  const auto options = std::make_shared<SmtpOptions>();
  options->trace = [&trace](std::string_view line) { trace.emplace_back(line); };
  Outcome outcome;
  std::string text;
  Session session(options,
                  {"mail.x.example", 25, false, server.authentication ? "noi" : "", std::string(kPassword)});
  try {
    session.Open();
    session.Deliver(envelope, [&](const Session::Sink& sink) {
      const std::size_t size = std::max<std::size_t>(1, kMessage.size() / pieces);
      for (std::size_t at = 0; at < kMessage.size(); at += size) sink(kMessage.substr(at, size));
    });
  } catch (const DeliveryFailure& failure) {
    outcome = {failure.Number(), failure.Undecided()};
    text = failure.what();
  }
  session.Close();
  trace.push_back(text);
  for (const std::string& line : trace) {
    Require(line.find(kPassword) == std::string::npos, "no trace shows the password");
    Require(line.find(kPasswordInBase64) == std::string::npos, "no trace shows the password in base64");
  }
  return outcome;
}

std::size_t Count(std::string_view text, std::string_view what) {
  std::size_t count = 0;
  for (std::size_t at = 0; (at = text.find(what, at)) != std::string_view::npos; at += what.size()) ++count;
  return count;
}

void CheckHeard(const Server& server, const Outcome& outcome, std::size_t recipients) {
  Require(Count(server.heard, kMessage) <= 1, "a message leaves once");
  const bool whole = server.heard.find(kMessage) != std::string::npos;
  Require(outcome.number != ErrorNumber::kNone || whole, "what was delivered has left as a whole");
  Require(!outcome.undecided || whole, "only a message that left as a whole is undecided");
  Require(Count(server.heard, "MAIL FROM:<noi@x.example>") <= 1, "one sender");
  Require(Count(server.heard, "RCPT TO:<") <= recipients, "no recipient is named twice");
  Require(!whole || Count(server.heard, "RCPT TO:<") == recipients,
          "a message leaves for all its recipients");
}

}  // namespace
}  // namespace orve::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orve::fuzz;
  if (size > 60000) return 0;  // beyond the longest reply, reading in pieces and reading in lines differ
  Input input(data, size);
  const unsigned flags = input.Byte();
  Server server;
  server.pipelining = (flags & 1U) != 0;
  server.notifications = (flags & 2U) != 0;
  server.utf8 = (flags & 4U) != 0;
  server.authentication = (flags & 8U) != 0;
  server.lineByLine = (flags & 16U) != 0;
  server.atATime = std::size_t{1} + input.Byte();
  server.breaksIn = server.lineByLine ? 0 : input.Byte() % 16U;
  const std::size_t recipients = 1 + input.Byte() % 5U;
  const std::size_t pieces = 1 + input.Byte() % 8U;
  server.words = input.Rest();
  const std::vector<int> codes = Codes(server.words);

  Envelope envelope;
  envelope.sender = "noi@x.example";
  for (std::size_t i = 0; i < recipients; ++i)
    envelope.recipients.push_back("r" + std::to_string(i) + "@x.example");
  envelope.notifyDelivery = (flags & 32U) != 0;
  envelope.recipientsNeedUtf8 = (flags & 64U) != 0 && server.utf8;

  const Outcome outcome = Deliver(server, envelope, pieces);
  CheckHeard(server, outcome, recipients);
  const Outcome expected = Expected(codes, recipients, server.pipelining);
  if (outcome.number == ErrorNumber::kNone)
    Require(expected.number == ErrorNumber::kNone, "delivered when the server took it");
  if (!server.lineByLine) return 0;
  Require(
      outcome.number == expected.number || (expected.either && outcome.number == ErrorNumber::kRecipients),
      "the failure's number");
  Require(outcome.undecided == expected.undecided, "undecided when the last answer never came");
  return 0;
}
