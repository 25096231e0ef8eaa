// The sender accounts of the application's database, by their numbers. A direct send names its account; the
// library's other sends find theirs on their own.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "orve-mailserver/host/connection.h"

namespace orve::app {

/// Whose default account is wanted.
struct TitolareAccount {
  std::int32_t utente = 0;
  std::string ditta;  // 0 or empty: every company
  bool pec = false;
};

/// The default accounts of the user and of the company. Among several, the one with `indirizzo` is taken,
/// else the one with the smallest number; none when there is none. Raise ErroreProgramma (kNonUtilizzabile)
/// when the database fails.
[[nodiscard]] std::optional<std::int32_t> AccountDellUtente(host::Connection& archivio,
                                                            const TitolareAccount& titolare,
                                                            const std::string& indirizzo);
[[nodiscard]] std::optional<std::int32_t> AccountDellaDitta(host::Connection& archivio,
                                                            const TitolareAccount& titolare,
                                                            const std::string& indirizzo);

/// The number of the account from which the library sends on its own: the user's default one, else one of the
/// company; among several the one with `indirizzo`, the sender's address that the library has loaded. None
/// when there is none. Raises ErroreProgramma (kNonUtilizzabile) when the database fails, or when the number
/// is larger than a direct send can name.
[[nodiscard]] std::optional<std::int16_t> AccountPredefinito(host::Connection& archivio,
                                                             const TitolareAccount& titolare,
                                                             const std::string& indirizzo);

/// Raises ErroreProgramma: kNonUtilizzabile when there is no account with this number, kComandoErrato when it
/// is a certified one and certified mail is not asked for, or vice versa. The library would carry on with the
/// account that it had before, and send.
void RichiediAccount(host::Connection& archivio, std::int16_t id, bool pec);

}  // namespace orve::app
