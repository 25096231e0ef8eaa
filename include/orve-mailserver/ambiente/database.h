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
struct ORVE_API OpzioniDatabase {
  /// The application user to whom a connection to the embedded database belongs; none: nobody. A server
  /// identifies the user by the application's own procedure.
  std::optional<std::int32_t> utente = {};
  /// How long logins and statements may take; the embedded database keeps to the latter, and waits as long
  /// for a lock.
  odbc::OpzioniOdbc attese = {};
};

/// An open connection, which closes with its last owner. `dove`: FILE or "sqlite:FILE" is the embedded
/// database, which must exist; "odbc:" and a connection string is the company's own server. Raises
/// host::Errore with the number and the text of the engine or driver, never with a password.
[[nodiscard]] ORVE_API std::shared_ptr<host::Connection> ApriDatabase(const std::string& dove,
                                                                      const OpzioniDatabase& opzioni = {});

/// An embedded database that holds the register of sends alone, for a host whose master data is on a server;
/// created when it is missing, readable by its owner only. Raises as above.
[[nodiscard]] ORVE_API std::shared_ptr<host::Connection> ApriRegistro(const std::string& file);

}  // namespace orve::adapters::ambiente
