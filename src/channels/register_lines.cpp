#include "channels/register_lines.h"

#include "content/management_events.h"
#include "service/CLSFW_MAILSERVER.h"

namespace orve {

void CLSFW_MAILSERVER::RegistraDestinatari(host::RegistroInvio& registro, const RigheInvio& righe,
                                           const host::TestoOAssente& esito) {
  // Made once: the body may be long and the recipients many.
  const auto destinatari = vCollDestinatari;
  const host::TestoOAssente ditta = vDitta;
  const host::TestoOAssente allegati = righe.allegati;
  const host::TestoOAssente oggetto = righe.oggetto;
  const host::TestoOAssente corpo = vCorpoMail;
  const std::string esitoEvento = esito.value_or("");
  for (const auto& destinatario : host::Richiesto(destinatari)) {
    const std::string& nome = destinatario->Nome();
    std::string indirizzo = nome;
    indirizzo.append(righe.apertura).append(destinatario->Indirizzo()).append(">");
    registro.RegistraInvio(nome, ditta, indirizzo, allegati, esito, oggetto, corpo);
    AttivaEventoGestionale(kEventoInvio, nome, *ditta, indirizzo, *allegati, esitoEvento, *oggetto);
  }
}

}  // namespace orve
