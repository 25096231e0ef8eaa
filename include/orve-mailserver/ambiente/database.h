// The databases that a host on Linux works on.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/connection.h"
#include "orve-mailserver/odbc/odbc_options.h"

namespace orve::adapters::ambiente {

/// Who works on a database, and for how long it is waited for.
struct ORVE_API DatabaseOptions {
  /// The application user to whom a connection to the embedded database belongs; none: nobody. A server
  /// identifies the user by the application's own procedure.
  std::optional<std::int32_t> utente = {};
  /// How long logins and statements may take; the embedded database keeps to the latter, and waits as long
  /// for a lock.
  odbc::OdbcOptions attese = {};
};

/// An open connection for one thread at a time, which closes with its last owner. `dove`: FILE or
/// "sqlite:FILE" is the embedded database, which must exist; "odbc:" and a connection string is the company's
/// own server. Raises 5 for a connection string without that word before it, else the number and the text of
/// the engine or driver, never with a password.
[[nodiscard]] ORVE_API std::shared_ptr<host::Connection> ApriDatabase(const std::string& dove,
                                                                      const DatabaseOptions& opzioni = {});

/// The source of the error for a register that somebody else may have planted.
inline constexpr const char* kRegistroAltrui = "ApriRegistro";

/// An embedded database that holds the register of sends alone, for a host whose master data is on a server;
/// created when it is missing, readable by its owner only. Raises 70, with the source above, for one that
/// belongs to another user where anybody, or that user, could have put it; otherwise as above. For one thread
/// at a time.
[[nodiscard]] ORVE_API std::shared_ptr<host::Connection> ApriRegistro(const std::string& file);

}  // namespace orve::adapters::ambiente
