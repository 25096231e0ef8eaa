// The part of a check that asks the mail servers of the accounts, without sending.
#pragma once

#include <optional>
#include <string>

#include "orve-mail/checks/controllo_database.h"
#include "orve-mail/checks/referto.h"
#include "orve-mail/host/password_in_chiaro.h"
#include "orve-mail/host/rimedi.h"
#include "orve-mailserver/secrets/secret.h"
#include "orve-mailserver/smtp/smtp_options.h"

namespace orve::app {

/// Server name, connection, encryption, login, the largest message, and whether the login may send as the
/// account's address: a line for each. `password` in clear; none: it cannot be opened with the key at hand,
/// and there is no login. Nor is there one without encryption where `permessi` does not allow it.
void ControllaServer(const AccountLetto& account, const std::optional<adapters::secrets::Secret>& password,
                     const PermessiInChiaro& permessi, const adapters::smtp::SmtpOptions& smtp,
                     const Rimedi& rimedi, Referto& referto);

}  // namespace orve::app
