// Delivering the current message through the SMTP component: one submission for all recipients, one record
// per recipient, no retries.
//
// The texts built here are read by others: the component splits the recipient lists, and the submission
// splits the sender text at its double quotes. Change their shape only together with both.
#pragma once

#include <cstdint>
#include <string>

#include "channels/righe_invio.h"
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

/// Register lines and events for what the component answered; `mittente` is what the register is told of the
/// way of sending. Nothing without a register.
void RegistraEsitoSmtp(const Messaggio& messaggio, const Impostazioni& impostazioni, const Contesto& contesto,
                       const Oggetti& oggetti, const host::Variant& risultato, const std::string& mittente,
                       const RigheInvio& righe);

/// The component's number in words; empty for a number that is not one of its own.
[[nodiscard]] std::string GetSMTPErrorDescription(const Oggetti& oggetti, std::int16_t codice);

}  // namespace orve
