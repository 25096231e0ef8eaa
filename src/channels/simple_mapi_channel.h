// Delivering the current message through the Simple MAPI controls.
#pragma once

#include "service/account.h"
#include "service/contesto.h"
#include "service/esito.h"
#include "service/impostazioni.h"
#include "service/messaggio.h"
#include "service/oggetti.h"

namespace orve {

/// Signs on to a new session. Raises what the control raises.
void ApriSessioneMapi(Oggetti& oggetti);
/// Signs off and releases the session, if there is one. Never raises.
void ChiudiSessioneMapi(Oggetti& oggetti);

/// A new message in the controls, under the session signed on to. Raises what the controls raise.
void PreparaMessaggioSimpleMAPI(Oggetti& oggetti);

/// A failure is recorded like a success and reported by mode.
void SendWithSimpleMAPI(Messaggio& messaggio, const Impostazioni& impostazioni, const Account& account,
                        Contesto& contesto, Esito& esito, Oggetti& oggetti);

}  // namespace orve
