// Mailing something without the send procedure, the dialogs or the choice of a channel: always through the
// SMTP component, always with the default account of the user.
#pragma once

#include <string>

#include "service/account.h"
#include "service/contesto.h"
#include "service/esito.h"
#include "service/impostazioni.h"
#include "service/messaggio.h"
#include "service/oggetti.h"

namespace orve {

/// Adds an A recipient. A failure is reported by message, if one can be shown.
void AddDestinatario(Messaggio& messaggio, const Oggetti& oggetti, const std::string& indMail,
                     const std::string& descrDest);

/// Mails subject and body; an empty body is built from the settings. True when it ran to completion. A
/// failure is reported by message, or in the two result fields if the caller wants silence.
[[nodiscard]] bool InviaMailSMTP(Messaggio& messaggio, const Impostazioni& impostazioni, Account& account,
                                 Contesto& contesto, Esito& esito, Oggetti& oggetti,
                                 const std::string& oggetto, const std::string& corpo);

}  // namespace orve
