// Delivering the current message through the SMTP component: one submission for all recipients, one record
// per recipient, no retries.
//
// The texts built here are read by others: the component splits the recipient lists, and the submission
// splits the sender text at its double quotes. Change their shape only together with both.
#pragma once

#include <cstdint>
#include <string>

#include "orve-mailserver/host/variant.h"
#include "service/account.h"
#include "service/contesto.h"
#include "service/esito.h"
#include "service/impostazioni.h"
#include "service/messaggio.h"
#include "service/oggetti.h"

namespace orve {

/// A failure is reported by mode.
void SendWithSmtp(Messaggio& messaggio, const Impostazioni& impostazioni, Account& account,
                  Contesto& contesto, Esito& esito, Oggetti& oggetti);

/// Why the component did not accept the message, for the records. Raises when its answer is no number.
[[nodiscard]] std::string MotivoSmtp(const Oggetti& oggetti, const host::Variant& risultato);

/// The component's number in words; empty for a number that is not one of its own.
[[nodiscard]] std::string GetSMTPErrorDescription(const Oggetti& oggetti, std::int16_t codice);

}  // namespace orve
