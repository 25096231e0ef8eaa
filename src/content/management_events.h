// The codes under which the application's management-event system learns of mail.
#pragma once

#include <cstdint>

namespace orve {

enum CodiceEvento : std::int32_t {
  kEventoNonInviato = 88,  // disabled, no address, or cancelled by the person
  kEventoInvio = 89,       // a message went to a channel for one recipient, whatever came of it there
};

}  // namespace orve
