// Where a delivery goes, as whoever opens its password learns it.
#pragma once

#include <cstdint>
#include <string>

#include "orve-mailserver/api.h"
#include "orve-mailserver/secrets/secret.h"

namespace orve::adapters::smtp {

/// Where to connect and as whom.
struct ORVE_API Target {
  std::string host;          ///< name or address, as the account has it
  std::uint16_t port = 25;   ///< of TCP
  bool encrypted = false;    ///< whether TLS is required on it
  std::string user;          ///< empty: no authentication
  secrets::Secret password;  ///< what the application set, which may be a sealed text

  /// Equal in everything, the password included.
  bool operator==(const Target&) const = default;
};

}  // namespace orve::adapters::smtp
