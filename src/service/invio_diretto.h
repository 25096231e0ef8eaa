// The shortest way through the service, for a caller that has everything as plain text.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "service/interno.h"

namespace orve {

class CLSFW_MAILSERVER;

/// Recipients as address lists, attachments as paths separated by ";".
struct InvioDiretto {
  std::int16_t IdMittente = 0;
  std::array<std::string, 3> Destinatari;  // A, CC, CCn
  std::string Oggetto;
  std::string Corpo;
  std::string Allegati;
};

/// `servizio` is the face over `interno`. Never raises.
void InviaMailDiretta(Interno& interno, CLSFW_MAILSERVER& servizio, InvioDiretto invio);

/// Ready for a dialog that records its cancellation; nothing calls it at present. A failure is reported by
/// message.
void RegistraAnnullamentoDaUtente(const Messaggio& messaggio, const Impostazioni& impostazioni,
                                  const Contesto& contesto, const Oggetti& oggetti);

}  // namespace orve
