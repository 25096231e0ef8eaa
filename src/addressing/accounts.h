// The sender accounts of the channels that have one: the default account of user or company, the account with
// a given identifier, and the list that a dialog offers.
#pragma once

#include <string>

#include "orve-mailserver/host/controlli.h"
#include "service/account.h"
#include "service/contesto.h"
#include "service/esito.h"
#include "service/messaggio.h"
#include "service/oggetti.h"

namespace orve {

/// Loads the default account of the user, or else of the company, unless one is loaded. Never raises.
void CaricaAccountPredefinito(const Messaggio& messaggio, Account& account, Contesto& contesto,
                              const Oggetti& oggetti);

/// Loads the account IdMittenteDiretto; if there is none, the result says so. Never raises.
void CaricaAccountDaId(Account& account, const Contesto& contesto, Esito& esito, const Oggetti& oggetti);

/// Lists the accounts of the user, or else of the company, in the CMB_ACCOUNT of a window and in
/// vCollMittenti. False when there are none or the listing failed; the person has then been told.
bool LoadAccountsPerUser(const Messaggio& messaggio, Account& account, Contesto& contesto,
                         const Oggetti& oggetti, host::Form& form);

/// Through the host's class; text that it cannot process comes back unchanged, as does every text where that
/// class is missing.
[[nodiscard]] std::string DecriptaPassword(const Oggetti& oggetti, const std::string& testo);
[[nodiscard]] std::string CriptaPassword(const Oggetti& oggetti, const std::string& testo);

}  // namespace orve
