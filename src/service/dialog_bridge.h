// Where the service and its two windows meet.
#pragma once

#include "orve-mailserver/host/controlli.h"
#include "service/interno.h"

namespace orve {

class CLSFW_MAILSERVER;

/// Shows the compose dialog and returns when the person has left it, or at once without an account. A failure
/// is reported by mode. `servizio` is the face over `interno`.
void ApriForm_OpzInvio(Interno& interno, CLSFW_MAILSERVER& servizio);

/// Shows the parameters dialog and copies its answers, whether the person confirmed or not. An error ends it
/// silently at that point.
void ReturnMailParameters(Interno& interno, CLSFW_MAILSERVER& servizio);

/// Removes the sender controls from a window with the compose window's controls, on channels that have no
/// choice of sender, and closes the gap. Raises 438 when a control is missing, 6 when the frame is too low
/// for a 16-bit number.
void NascondiMittente(host::Form& form);

/// Offers the accounts of the user in such a window, on channels that have them. False when there is none,
/// and the person has been told so. Raises 438 when a control is missing.
[[nodiscard]] bool OffriMittente(const Messaggio& messaggio, const Impostazioni& impostazioni,
                                 Account& account, Contesto& contesto, const Oggetti& oggetti,
                                 host::Form& form);

}  // namespace orve
