// What the library asks of the operating system apart from files and the clock: the debug output,
// identifiers, environment variables and the name of the network user.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/oggetto.h"

namespace orve::host {

/// Where the lines of the instance trace go.
class ORVE_API DebugOutput : public Oggetto {
 public:
  /// Sends one line, without a line end, to the system's debug output. Never fails.
  virtual void Scrivi(const std::string& riga) noexcept = 0;
};

/// An identifier that is unique in the world, in its four fields.
struct ORVE_API Guid {
  ///@{
  /// The fields, in their order.
  std::uint32_t primo = 0;
  std::uint16_t secondo = 0;
  std::uint16_t terzo = 0;
  std::array<std::uint8_t, 8> byte{};
  ///@}
};

/// Makes such identifiers.
class ORVE_API GeneratoreGuid : public Oggetto {
 public:
  /// A new identifier, or nothing when the platform reports a failure.
  [[nodiscard]] virtual std::optional<Guid> CreaGuid() = 0;
};

/// The variables of the process.
class ORVE_API Environment : public Oggetto {
 public:
  /// The variable's text; empty when it is not set.
  [[nodiscard]] virtual std::string Leggi(const std::string& nome) = 0;
};

/// Who is logged in to the network.
class ORVE_API Rete : public Oggetto {
 public:
  /// Writes the user name of the current network connection into the buffer as a NUL-ended text and returns
  /// 0. The buffer's length is a count of characters; the buffer grows when they need more bytes. Returns an
  /// error number, with the buffer unchanged, when there is no such user or the buffer is too short.
  virtual std::int32_t WNetGetUserA(std::string& buffer) = 0;
};

}  // namespace orve::host
