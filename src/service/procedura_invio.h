// The entry point of every normal send, and its last step.
#pragma once

#include <optional>

#include "orve-mailserver/host/registro_invio.h"
#include "orve-mailserver/host/variant.h"
#include "service/interno.h"

namespace orve {

class CLSFW_MAILSERVER;

/// Sends to the recipients of the collection, or to the partner with this code and type. `servizio` is the
/// face over `interno`, for the compose dialog. Never raises.
void AvviaProceduraInvio(Interno& interno, CLSFW_MAILSERVER& servizio,
                         const std::optional<host::Variant>& codice,
                         std::optional<kvTipologiaDestinatarioFAX> Tipo);

/// Hands the message to its channel. Failures are reported by mode; raises only what the report raises.
void ConsegnaAlCanale(Interno& interno);

/// What the register and the event system are told about a message that is not sent. An absent text counts as
/// an empty one in the event.
struct RigaNonInviata {
  host::TestoOAssente nome = std::nullopt;
  host::TestoOAssente ditta = std::nullopt;
  host::TestoOAssente indirizzo = std::nullopt;
  host::TestoOAssente allegato = std::nullopt;
  const char* testo = "";
  host::EsitoInvio esito = host::kNonInviato;  // as the caller has told the register
};

/// One register line, whose outcome the caller has set, and one event.
void RegistraNonInviato(const Impostazioni& impostazioni, const Contesto& contesto, const Oggetti& oggetti,
                        host::RegistroInvio& registro, const RigaNonInviata& riga);

}  // namespace orve
