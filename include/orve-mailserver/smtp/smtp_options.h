// What the owner of the SMTP component may choose; the defaults are right for a person waiting at an
// application.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "orve-mailserver/api.h"

namespace orve::adapters::secrets {
class Secret;
}

namespace orve::adapters::smtp {

struct Target;

enum class AuthMechanism { kPlain, kLogin, kCramMd5, kXoauth2 };

/// The options, for every message of a component.
struct ORVE_API SmtpOptions {
  /// PEM file with the authorities to trust instead of the system's; empty: the system's.
  std::string caFile;
  /// False accepts any certificate. For tests and for servers that nobody can fix.
  bool verifyCertificates = true;

  /// The whole way to a usable connection: name, TCP, TLS, greeting, authentication.
  std::chrono::milliseconds connectTimeout{60'000};
  /// One reply.
  std::chrono::milliseconds replyTimeout{120'000};
  /// The reply to the end of the message, during which servers scan it for viruses.
  std::chrono::milliseconds finalReplyTimeout{300'000};
  /// The longest time during which not one byte of the message goes out.
  std::chrono::milliseconds stallTimeout{120'000};

  /// Ports on which TLS begins with the first byte, when the connection is to be encrypted. On any other port
  /// STARTTLS is required then.
  std::vector<std::uint16_t> implicitTlsPorts{465};

  /// Name for EHLO; empty: the machine's when it is a full one, else the literal of the address
  /// from which it reaches the server.
  std::string ehloName;

  /// Mechanisms that may be used; of those that the server offers, the strongest is. With kXoauth2 in the
  /// list the password is the access token and no other mechanism is tried.
  std::vector<AuthMechanism> authMechanisms{AuthMechanism::kPlain, AuthMechanism::kLogin,
                                            AuthMechanism::kCramMd5};

  /// Returns the password for a delivery (target.h) from what the application set as the target's `password`,
  /// once host, port, encryption and user are final; empty: it is used as it stands. If it raises a
  /// host::Errore, the delivery fails as a login (2), with its description, before any connection is made.
  std::function<secrets::Secret(const Target&)> openPassword;

  /// Receives the dialogue line by line, without line ends: "C: " what was sent, "S: " what was answered, "*
  /// " what happened. Credentials appear in it as "***". Called on the sending thread; what it throws is
  /// ignored.
  std::function<void(std::string_view)> trace;

  /// The time written into a message; empty: the system's clock.
  std::function<std::chrono::system_clock::time_point()> clock;
  /// Makes the identifier of a message, without angle brackets; empty: a random one.
  std::function<std::string()> newMessageId;
};

}  // namespace orve::adapters::smtp
