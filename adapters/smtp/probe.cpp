#include "smtp/probe.h"

#include <algorithm>
#include <charconv>
#include <memory>
#include <string_view>

#include "mime/address_list.h"
#include "smtp/failure.h"
#include "smtp/session.h"
#include "text/text.h"

namespace orve::adapters::smtp {

namespace {

constexpr std::string_view kExpiry = "expire date:";
constexpr std::string_view kTls = "SSL connection using ";

bool StartsWith(std::string_view text, std::string_view beginning) {
  return text.substr(0, beginning.size()) == beginning;
}

// What the dialogue tells apart from the outcome: its lines are the only place where libcurl says how far it
// got.
class Listener {
 public:
  void Hear(std::string_view line) {
    if (StartsWith(line, "* ")) return HearNote(text::Trim(line.substr(2)));
    if (StartsWith(line, "C: ")) {
      const std::string_view command = line.substr(3);
      hello_ = StartsWith(command, "EHLO") || StartsWith(command, "HELO");
      if (hello_) report.offersAuthentication = false;
      if (StartsWith(command, "STARTTLS")) startedTls = true;
    }
    if (hello_ && StartsWith(line, "S: 250"))
      HearExtension(line.substr(std::min<std::size_t>(line.size(), 7)));
  }

  ProbeReport report;
  bool connected = false;
  bool startedTls = false;

 private:
  void HearNote(std::string_view note) {
    if (StartsWith(note, "Connected to ") || StartsWith(note, "Established connection to ")) connected = true;
    if (StartsWith(note, kTls)) {
      const std::string_view version = note.substr(kTls.size());
      report.tlsVersion = std::string(version.substr(0, version.find(' ')));
    }
    if (StartsWith(note, kExpiry))
      report.certificateEnd = std::string(text::Trim(note.substr(kExpiry.size())));
  }

  void HearExtension(std::string_view extension) {
    if (StartsWith(extension, "AUTH ") || StartsWith(extension, "AUTH=")) report.offersAuthentication = true;
    if (!StartsWith(extension, "SIZE")) return;
    report.sizeLimit.reset();
    const std::string_view limit = text::Trim(extension.substr(4));
    std::uint64_t bytes = 0;
    const auto read = std::from_chars(limit.data(), limit.data() + limit.size(), bytes);
    if (read.ec == std::errc() && bytes > 0) report.sizeLimit = bytes;  // 0: no limit
  }

  bool hello_ = false;
};

ProbeStep StepOf(ErrorNumber number, const Listener& heard, bool implicitTls) {
  switch (number) {
    case ErrorNumber::kDns:
      return ProbeStep::kName;
    case ErrorNumber::kConnection:
      return heard.startedTls || (implicitTls && heard.connected) ? ProbeStep::kEncryption
                                                                  : ProbeStep::kConnection;
    case ErrorNumber::kHello:
      return ProbeStep::kHello;
    case ErrorNumber::kAuthentication:
      return ProbeStep::kAuthentication;
    default:
      return ProbeStep::kSender;
  }
}

}  // namespace

ProbeReport Probe(const SmtpOptions& options, const Target& target, const std::string& sender) {
  Listener heard;
  auto traced = std::make_shared<SmtpOptions>(options);
  traced->trace = [&heard, &options](std::string_view line) {
    heard.Hear(line);
    if (options.trace) options.trace(line);
  };
  const auto& implicit = options.implicitTlsPorts;
  const bool implicitTls =
      target.encrypted && std::find(implicit.begin(), implicit.end(), target.port) != implicit.end();
  Session session(traced, target);
  try {
    if (text::Trim(target.host).empty()) throw DeliveryFailure(ErrorNumber::kDns, "nessun server indicato");
    session.Open();
    const auto wire = mime::ToWire(mime::BareAddress(sender));
    if (!wire) throw DeliveryFailure(ErrorNumber::kSender, "indirizzo del mittente non valido");
    Envelope envelope;
    envelope.sender = wire->text;
    envelope.senderNeedsUtf8 = wire->needsUtf8;
    session.TrySender(envelope);
    heard.report.reached = ProbeStep::kDone;
  } catch (const DeliveryFailure& failure) {
    heard.report.failure = failure.what();
    heard.report.reached = StepOf(failure.Number(), heard, implicitTls);
    // A connection that asked for encryption and was refused never began it.
    if (target.encrypted && heard.connected && heard.report.reached == ProbeStep::kConnection &&
        heard.report.failure.find("STARTTLS") != std::string::npos) {
      heard.report.reached = ProbeStep::kEncryption;
    }
    heard.report.certificateRefused = heard.report.reached == ProbeStep::kEncryption &&
                                      heard.report.failure.find("certificate") != std::string::npos;
  }
  session.Close();
  return heard.report;
}

}  // namespace orve::adapters::smtp
