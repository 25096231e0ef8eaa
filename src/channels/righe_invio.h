// What a send leaves in the application's register and in its event system.
#pragma once

#include <string>
#include <string_view>

#include "orve-mailserver/host/registro_invio.h"
#include "service/contesto.h"
#include "service/messaggio.h"
#include "service/oggetti.h"

namespace orve {

/// What all lines of one send have in common, as the channel words it.
struct RigheInvio {
  std::string_view apertura;  // between name and address of a recipient: "<" or " <"
  std::string allegati;
  std::string oggetto;
};

/// One register line and one event for each recipient, whatever its box. `inviato` is the outcome that the
/// register has been told; an absent `esito` is empty in the event. Raises what the register raises, and 91
/// without a collection.
void RegistraDestinatari(const Messaggio& messaggio, const Contesto& contesto, const Oggetti& oggetti,
                         host::RegistroInvio& registro, const RigheInvio& righe, host::EsitoInvio inviato,
                         const host::TestoOAssente& esito);

}  // namespace orve
