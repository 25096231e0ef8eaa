// The statements that find the sender accounts, as the library runs them. A host that wants to know
// beforehand which account a send will take asks with the same joins and conditions.
#pragma once

#include <cstdint>
#include <string>

#include "orve-mailserver/host/variant.h"

namespace orve {

/// From where and on which conditions the default account of a user is read: what follows the columns of a
/// SELECT. `pec`: certified accounts only, else ordinary ones only.
[[nodiscard]] std::string OrigineAccountDellUtente(std::int32_t idUtente, bool pec);
/// The same for the accounts of a company; null, blank or 0 means every company.
[[nodiscard]] std::string OrigineAccountDellAzienda(const host::Variant& ditta, bool pec);

/// The default account of a user: FW23_SERVERNAME, _PORT, _TIMEOUT, _INDTIPO, _INDAUTH, _SSL,
/// FW98_MAILADDRESS, _USERNAME, _PASSWORD, ALIAS, LETTURA, CONSEGNA.
[[nodiscard]] std::string StatementDellUtente(std::int32_t idUtente, bool pec);
/// The same columns for a company's account; ALIAS is the company's name.
[[nodiscard]] std::string StatementDellAzienda(const host::Variant& ditta, bool pec);
/// The same columns for the account with this identifier.
[[nodiscard]] std::string StatementDaId(std::int32_t idAccount);

/// The accounts that a window offers, the user's default first: the same columns without FW23_INDTIPO, and
/// FW98_IDACCOUNT.
[[nodiscard]] std::string StatementElencoUtente(std::int32_t idUtente, bool pec);
/// The same for a company. Unlike the company's default account, this is an outer join on the master data,
/// and always filters by company.
[[nodiscard]] std::string StatementElencoAzienda(const std::string& ditta, bool pec);

}  // namespace orve
