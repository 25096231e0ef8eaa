// Asks a mail server how far a delivery would get, without delivering: name, connection, encryption, login,
// the size it takes, and whether this login may send as this address. The dialogue ends after MAIL and RSET;
// no recipient is named and no message begun.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "orve-mailserver/smtp/smtp_options.h"
#include "smtp/channel.h"

namespace orve::adapters::smtp {

/// The steps of a delivery up to its sender, in their order.
enum class ProbeStep { kName, kConnection, kEncryption, kHello, kAuthentication, kSender, kDone };

struct ProbeReport {
  ProbeStep reached = ProbeStep::kName;  // the step that failed; kDone: none did
  std::string failure;  // what ended it, for a person, without secrets; empty when nothing did
  bool certificateRefused =
      false;                   // with reached kEncryption: encryption works, the certificate is not accepted
  std::string tlsVersion;      // "TLSv1.3"; empty without encryption
  std::string certificateEnd;  // as the certificate has it: "Nov 21 23:00:00 2027 GMT"; empty: not told
  bool offersAuthentication = false;
  std::optional<std::uint64_t> sizeLimit;  // bytes; none: the server names no limit
};

/// Goes as far as it can. If `sender` is empty or one that no command can carry, the step kSender fails.
/// Never raises for what a server does; the dialogue is traced as in a delivery.
[[nodiscard]] ProbeReport Probe(const SmtpOptions& options, const Target& target, const std::string& sender);

}  // namespace orve::adapters::smtp
