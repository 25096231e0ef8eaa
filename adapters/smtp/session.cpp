#include "smtp/session.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "orve-mailserver/host/errore.h"

namespace orve::adapters::smtp {

namespace {

constexpr std::size_t kLongestReply = std::size_t{64} * 1024;
constexpr std::size_t kMostLines =
    256;  // of a reply: each is searched for secrets together with those before
// Replies to one group of pipelined commands must fit the buffers of the connection, or both ends would wait.
constexpr std::size_t kGroupCommands = 100;
// The server closes the connection after this reply, whatever the command was.
constexpr int kServerLeaves = 421;

bool IsReplyLine(std::string_view line) {
  return line.size() >= 3 && line[0] >= '2' && line[0] <= '5' &&
         std::all_of(line.begin(), line.begin() + 3, [](char c) { return c >= '0' && c <= '9'; }) &&
         (line.size() == 3 || line[3] == ' ' || line[3] == '-');
}

/// Whether a piece of a message may be its last: only the lone dot ends one, which may be spread over two
/// pieces. Other lines may end like it.
bool MayEndMessage(std::string_view piece) {
  constexpr std::string_view kEnd = ".\r\n";
  const std::size_t size = std::min(kEnd.size(), piece.size());
  return piece.substr(piece.size() - size) == kEnd.substr(kEnd.size() - size);
}

/// The server answered before the message had ended.
struct Interrupted {};

}  // namespace

Session::Session(std::shared_ptr<const SmtpOptions> options, Target target)
    : options_(std::move(options)),
      tracer_(options_->trace, target.password.View()),
      authenticate_(!target.user.empty()),
      channel_(std::move(target), tracer_) {}

bool Session::Serves(const SmtpOptions& options, const Target& target) const {
  const auto connection = [](const SmtpOptions& o) {
    return std::tie(o.caFile, o.verifyCertificates, o.implicitTlsPorts, o.ehloName, o.authMechanisms);
  };
  return target == channel_.Server() && connection(options) == connection(*options_);
}

void Session::Use(std::shared_ptr<const SmtpOptions> options) {
  options_ = std::move(options);
  tracer_.Into(options_->trace);
}

/// What a server says may repeat what it was told.
template <class Action>
void Session::WithoutSecrets(Action action) const {
  try {
    action();
  } catch (const DeliveryFailure& failure) {
    throw DeliveryFailure(failure.Number(), tracer_.Masked(failure.what()), failure.Undecided());
  }
}

void Session::Open() {
  WithoutSecrets([this] { Connect(); });
}

void Session::Connect() {
  channel_.Connect(*options_);
  open_ = true;
  // Without AUTH in the server's reply libcurl leaves the credentials out in silence.
  if (authenticate_ && !channel_.Offers("AUTH")) {
    throw DeliveryFailure(ErrorNumber::kAuthentication, "il server non offre l'autenticazione");
  }
  clean_ = true;
}

void Session::Deliver(const Envelope& envelope, const Writer& write, const Meanwhile& meanwhile) {
  WithoutSecrets([&] { Transact(envelope, write, meanwhile); });
}

void Session::Transact(const Envelope& envelope, const Writer& write, const Meanwhile& meanwhile) {
  senderTaken_ = false;
  undecided_ = false;
  RequireUtf8Support(envelope);
  ++messages_;
  clean_ = false;
  SendEnvelope(envelope, meanwhile);
  SendMessage(write);
  clean_ = true;
}

bool Session::StillThere() noexcept {
  try {
    return Clean() && !channel_.PeerSpoke();
  } catch (...) {
    return false;
  }
}

void Session::TrySender(const Envelope& envelope) {
  clean_ = false;
  WithoutSecrets([&] { AskForSender(envelope); });
}

void Session::AskForSender(const Envelope& envelope) {
  RequireUtf8Support(envelope);
  try {
    const Reply taken = Command(EnvelopeCommands(envelope).front());
    if (!taken.Positive()) {
      throw DeliveryFailure(taken.code == 530 ? ErrorNumber::kAuthentication : ErrorNumber::kSender,
                            taken.text);
    }
    const Reply undone = Command("RSET");
    if (!undone.Positive()) throw DeliveryFailure(ErrorNumber::kReset, "RSET: " + undone.text);
  } catch (const BrokenConnection& broken) {
    Abandon(ErrorNumber::kSender, broken.what());
  }
}

void Session::Close() noexcept {
  try {
    if (open_) Say("QUIT\r\n", std::chrono::milliseconds(0));
  } catch (...) {  // NOLINT(bugprone-empty-catch): the message's fate is decided; a QUIT changes nothing
  }
  open_ = false;
  channel_.Drop();
}

void Session::RequireUtf8Support(const Envelope& envelope) const {
  if (channel_.Offers("SMTPUTF8")) return;
  if (envelope.senderNeedsUtf8) {
    throw DeliveryFailure(ErrorNumber::kSender, "il server non accetta indirizzi con caratteri accentati");
  }
  if (envelope.recipientsNeedUtf8) {
    throw DeliveryFailure(ErrorNumber::kRecipients,
                          "il server non accetta indirizzi con caratteri accentati");
  }
}

std::vector<std::string> Session::EnvelopeCommands(const Envelope& envelope) const {
  const bool notify = envelope.notifyDelivery && channel_.Offers("DSN");
  std::vector<std::string> commands;
  commands.reserve(envelope.recipients.size() + 1);
  commands.push_back("MAIL FROM:<" + envelope.sender + '>');
  if (notify) commands.front() += " RET=HDRS";
  if (envelope.senderNeedsUtf8 || envelope.recipientsNeedUtf8) commands.front() += " SMTPUTF8";
  for (const std::string& recipient : envelope.recipients) {
    commands.push_back("RCPT TO:<" + recipient + '>');
    if (notify) commands.back() += " NOTIFY=SUCCESS,FAILURE,DELAY";
  }
  return commands;
}

void Session::SendEnvelope(const Envelope& envelope, const Meanwhile& meanwhile) {
  const std::vector<std::string> commands = EnvelopeCommands(envelope);
  std::size_t next = 0;
  while (next < commands.size()) next = ExchangeGroup(commands, next, next == 0 ? meanwhile : Meanwhile());
}

/// Sends the commands from `first` on that may go together, runs `meanwhile` during the wait and reads the
/// replies. Returns the first command that was not sent.
std::size_t Session::ExchangeGroup(const std::vector<std::string>& commands, std::size_t first,
                                   const Meanwhile& meanwhile) {
  const std::size_t end =
      std::min(commands.size(), first + (channel_.Offers("PIPELINING") ? kGroupCommands : 1));
  ErrorNumber stage = first == 0 ? ErrorNumber::kSender : ErrorNumber::kRecipients;
  std::string senderRefusal;
  ErrorNumber senderNumber = ErrorNumber::kSender;
  std::string recipientRefusal;
  bool leaving = false;
  try {
    std::string group;
    for (std::size_t i = first; i < end; ++i) group.append(commands[i]).append("\r\n");
    Say(group, options_->stallTimeout);
    if (meanwhile) meanwhile();
    for (std::size_t i = first; i < end; ++i) {
      const Reply reply = ReadReply(options_->replyTimeout);
      stage = ErrorNumber::kRecipients;
      if (i == 0) senderTaken_ = reply.Positive();
      if (reply.Positive()) continue;
      if (i == 0) {
        senderRefusal = commands[i] + ": " + reply.text;
        if (reply.code == 530) senderNumber = ErrorNumber::kAuthentication;
      } else {
        leaving = leaving || reply.code == kServerLeaves;
        recipientRefusal += (recipientRefusal.empty() ? "" : "; ") + commands[i] + ": " + reply.text;
      }
    }
  } catch (const BrokenConnection& broken) {
    if (senderRefusal.empty()) Abandon(stage, broken.what());
    open_ = false;
  }
  if (!senderRefusal.empty()) throw DeliveryFailure(senderNumber, senderRefusal);
  if (leaving) Abandon(ErrorNumber::kRecipients, recipientRefusal);
  if (!recipientRefusal.empty()) ResetAfterRefusal(recipientRefusal);
  return end;
}

void Session::ResetAfterRefusal(const std::string& refusal) {
  Reply reply;
  try {
    reply = Command("RSET");
  } catch (const BrokenConnection& broken) {
    Abandon(ErrorNumber::kReset, "RSET: " + std::string(broken.what()) + " (" + refusal + ')');
  }
  if (!reply.Positive()) {
    throw DeliveryFailure(ErrorNumber::kReset, "RSET: " + reply.text + " (" + refusal + ')');
  }
  clean_ = true;
  throw DeliveryFailure(ErrorNumber::kRecipients, refusal);
}

void Session::SendMessage(const Writer& write) {
  try {
    const Reply reply = Command("DATA");
    if (reply.Positive()) Abandon(ErrorNumber::kData, "DATA: " + reply.text);  // what would it take next?
    if (reply.code != 354) throw DeliveryFailure(ErrorNumber::kData, "DATA: " + reply.text);
    Transmit(write);
    const Reply last = ReadReply(options_->finalReplyTimeout);
    undecided_ = false;
    if (!last.Positive()) throw DeliveryFailure(ErrorNumber::kData, last.text);
  } catch (const BrokenConnection& broken) {
    Abandon(ErrorNumber::kData, broken.what(), undecided_);
  }
}

void Session::Transmit(const Writer& write) {
  std::size_t total = 0;
  try {
    write([&](std::string_view piece) {
      total += piece.size();
      undecided_ = MayEndMessage(piece);
      if (!received_.empty() || !channel_.Send(piece, options_->stallTimeout)) throw Interrupted();
    });
    tracer_.Note(std::to_string(total) + " byte di messaggio");
  } catch (const Interrupted&) {
    undecided_ = false;  // the server spoke before the end of the message was sent
    const Reply reply = ReadReply(options_->replyTimeout);
    Abandon(ErrorNumber::kData, reply.text);
  } catch (const host::Errore& failure) {
    Abandon(ErrorNumber::kData, failure.Descrizione());
  } catch (const BrokenConnection&) {
    throw;
  } catch (...) {
    open_ = false;
    channel_.Drop();
    throw;
  }
}

void Session::Abandon(ErrorNumber number, const std::string& text, bool undecided) {
  open_ = false;
  channel_.Drop();
  throw DeliveryFailure(number, text, undecided);
}

void Session::Say(std::string_view commands, std::chrono::milliseconds stall) {
  tracer_.Sent(commands);
  if (!channel_.Send(commands, stall)) throw BrokenConnection("il server ha parlato fuori turno");
}

Session::Reply Session::Command(const std::string& command) {
  Say(command + "\r\n", options_->stallTimeout);
  return ReadReply(options_->replyTimeout);
}

Session::Reply Session::ReadReply(std::chrono::milliseconds timeout) {
  const auto deadline = Channel::Clock::now() + timeout;
  Reply reply;
  std::size_t size = 0;
  std::size_t lines = 0;
  for (bool more = true; more;) {
    if (++lines > kMostLines) throw BrokenConnection("risposta troppo lunga del server");
    // What has already come in is not waited for, but takes time all the same.
    if (lines > 1 && Channel::Clock::now() > deadline) throw BrokenConnection(Channel::kNoReply);
    const std::string line = ReadLine(deadline, kLongestReply - std::min(kLongestReply, size));
    const std::string shown = tracer_.Received(line);
    size += line.size() + Tracer::kBetweenLines.size();
    if (!IsReplyLine(line)) throw BrokenConnection("risposta non valida del server");
    more = line.size() > 3 && line[3] == '-';
    reply.code = (line[0] - '0') * 100 + (line[1] - '0') * 10 + (line[2] - '0');
    reply.text.append(reply.text.empty() ? "" : Tracer::kBetweenLines).append(shown);
  }
  return reply;
}

/// A line without its end; at most `budget` bytes.
std::string Session::ReadLine(Channel::Clock::time_point deadline, std::size_t budget) {
  std::size_t searched = 0;
  for (;;) {
    const std::size_t end = received_.find('\n', searched);
    if (end != std::string::npos) {
      std::string line = received_.substr(0, end);
      received_.erase(0, end + 1);
      if (!line.empty() && line.back() == '\r') line.pop_back();
      return line;
    }
    if (received_.size() >= budget) throw BrokenConnection("risposta troppo lunga del server");
    searched = received_.size();
    received_ += channel_.Receive(deadline);
  }
}

}  // namespace orve::adapters::smtp
