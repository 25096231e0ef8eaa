// Which directory is asked, as whom, and for how long; the defaults are right for a person waiting at an
// application.
#pragma once

#include <chrono>
#include <string>

#include "orve-mailserver/api.h"
#include "orve-mailserver/secrets/secret.h"

namespace orve::adapters::ldap {

/// How the client identifies itself.
enum class Access {
  kKerberos,  ///< with the ticket that the machine or its user holds (SASL GSSAPI)
  kSimple,    ///< with a name and a password
  kAnonymous,
};

/// The options; a copy is kept for as long as the directory object lives.
struct ORVE_API LdapOptions {
  /// "ldaps://host[:port]", encrypted from the first byte, or "ldap://host[:port]".
  std::string server;
  /// Asks for encryption (StartTLS) on an "ldap" connection and goes no further without it. Only Kerberos,
  /// which then does its own encryption, and anonymous access can do without.
  bool startTls = true;
  /// PEM file with the authorities to trust instead of the system's; empty: the system's.
  std::string caFile;

  /// How it identifies itself.
  Access access = Access::kKerberos;
  std::string user;  ///< for kSimple: a distinguished name, or whatever else the server accepts as one
  secrets::Secret password;  ///< given as text, wiped with the options

  /// Where searches begin; empty: where the directory says.
  std::string searchBase;

  /// The TCP connection to one address, and the TLS handshake.
  std::chrono::milliseconds connectTimeout{10'000};
  /// The whole answer to one request.
  std::chrono::milliseconds operationTimeout{15'000};

  /// Keeps the connection from one look-up to the next, for as long as the directory object lives.
  bool keepConnection = false;
  /// How long a server is left alone after it could not be reached, refused the client or did not answer:
  /// meanwhile look-ups fail at once with the same error.
  std::chrono::milliseconds pauseAfterFailure{60'000};
};

}  // namespace orve::adapters::ldap
