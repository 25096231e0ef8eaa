// Delivering the current message by driving Outlook.
#pragma once

#include "service/account.h"
#include "service/contesto.h"
#include "service/esito.h"
#include "service/impostazioni.h"
#include "service/messaggio.h"
#include "service/oggetti.h"

namespace orve {

/// Outlook that does not start is shown as a message, and there is none.
void AvviaOutlook(Oggetti& oggetti);

/// A failure is reported by mode and leaves the result as it was.
void SendWithOutlook(Messaggio& messaggio, const Impostazioni& impostazioni, const Account& account,
                     Contesto& contesto, Esito& esito, Oggetti& oggetti);

}  // namespace orve
