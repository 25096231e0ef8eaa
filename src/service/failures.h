// Messages and error texts as the service and its dialogs show them.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "host/errore.h"
#include "host/interfaccia_host.h"
#include "host/messaggi.h"

namespace orve {

/// Shows a message through the host's message object, if the chain from its interface reaches one, and else
/// through `riserva`, which must then be there. Both references may change while the message shows. Returns
/// the person's answer; raises what the objects raise.
std::int32_t MostraMessaggioDi(const std::shared_ptr<host::InterfacciaHost>& interfaccia,
                               const std::shared_ptr<host::Messaggi>& riserva, const std::string& testo,
                               std::int32_t stile, const std::string& titolo,
                               const std::shared_ptr<host::Oggetto>& proprietario);

/// Number, separator, description and closing text.
[[nodiscard]] std::string TestoErrore(const host::Errore& errore, std::string_view separatore,
                                      std::string_view chiusura);

}  // namespace orve
