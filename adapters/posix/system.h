// The debug output, identifiers, environment variables and the network user, as Unix has them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "orve-mailserver/host/system.h"

namespace orve::adapters::posix {

/// A line for the debug output as its bytes: in the single-byte code page, since the debug output is a
/// single-byte boundary, and with blanks for control characters, so that one line stays one line.
[[nodiscard]] std::string RigaDiDebug(const std::string& riga);

/// The system log: facility "user", level "debug", under the program's own name. A program that wants another
/// name or destination calls openlog itself: the connection belongs to the whole process.
class DebugOutput : public host::DebugOutput {
 public:
  void Scrivi(const std::string& riga) noexcept override;
};

/// Discards everything. The library writes two lines for each of its objects, which no system log should
/// receive unasked.
class SilentDebugOutput : public host::DebugOutput {
 public:
  void Scrivi(const std::string& /*riga*/) noexcept override {}
};

class GuidGenerator : public host::GeneratoreGuid {
 public:
  /// A random identifier (version 4 of RFC 4122) from the kernel's generator.
  [[nodiscard]] std::optional<host::Guid> CreaGuid() override;
};

class Environment : public host::Environment {
 public:
  [[nodiscard]] std::string Leggi(const std::string& nome) override;
};

/// The account name within the name that a machine in a domain gives a network user: "AZIENDA\\arossi" and
/// "arossi@azienda.example" are "arossi".
[[nodiscard]] std::string NomeSenzaDominio(const std::string& nome);

/// Puts a user's name, without its domain, into the buffer as a NUL-ended text; returns what
/// Network::WNetGetUserA returns. The buffer's length is a count of characters, and the buffer grows when
/// they need more bytes.
[[nodiscard]] std::int32_t NomeNelBuffer(const std::string& nome, std::string& buffer);

/// The name of the user on whose behalf the process runs, from the system's user database, which on a machine
/// in a domain includes the network users. Without the domain.
class Network : public host::Rete {
 public:
  static constexpr std::int32_t kBufferTroppoCorto = 234;
  static constexpr std::int32_t kNessunUtente = 2250;

  std::int32_t WNetGetUserA(std::string& buffer) override;
};

}  // namespace orve::adapters::posix
