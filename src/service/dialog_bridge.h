// Where the service and its windows meet.
#pragma once

#include "host/controlli.h"

namespace orve {

/// Takes the sender controls out of a window with the compose window's controls, on channels that have no
/// choice of sender, and closes the gap. Raises 438 when a control is missing, 6 when the frame lies too low
/// for a 16-bit number.
void NascondiMittente(host::Form& form);

}  // namespace orve
