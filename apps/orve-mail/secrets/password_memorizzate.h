// The passwords of the accounts in the application's database, each with what it is to be bound to there.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orve-mailserver/host/connection.h"
#include "password/sigillo_password.h"
#include "sqlite/sqlite_connection.h"

namespace orve::app {

using adapters::password::LegamePassword;
using adapters::password::NomeServer;
using adapters::password::SigilloPassword;

struct PasswordMemorizzata {
  std::int32_t account = 0;
  std::string testo;       // as stored; empty: none
  LegamePassword legame;   // with the values that the library uses where a column is empty
  bool conServer = false;  // whether the account has a server in the database at all

  [[nodiscard]] bool operator==(const PasswordMemorizzata&) const = default;
};

/// The server that the library uses for a name in the database.
[[nodiscard]] std::string ServerEffettivo(std::string_view nome);

/// Which accounts are meant: one, those of a server, or all.
struct QualiAccount {
  std::optional<std::int32_t> account;
  std::optional<std::int32_t> server;
};

/// In ascending order of the accounts. Raises host::Errore.
[[nodiscard]] std::vector<PasswordMemorizzata> LeggiPassword(host::Connection& connessione,
                                                             const QualiAccount& quali);

/// Raises host::Errore.
void SostituisciPassword(adapters::sqlite::SqliteConnection& connessione, std::int32_t account,
                         const std::string& sigillata);
/// The same, only if the password is still as it was read; false when it is not. Raises host::Errore.
[[nodiscard]] bool SostituisciSeAncora(adapters::sqlite::SqliteConnection& connessione,
                                       const PasswordMemorizzata& prima, const std::string& sigillata);

}  // namespace orve::app
