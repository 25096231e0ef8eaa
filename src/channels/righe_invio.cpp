#include "channels/righe_invio.h"

#include "addressing/address_list.h"
#include "content/eventi_gestionali.h"
#include "service/report.h"

namespace orve {

void RegistraDestinatari(const Messaggio& messaggio, const Contesto& contesto, const Oggetti& oggetti,
                         host::RegistroInvio& registro, const RigheInvio& righe, host::EsitoInvio inviato,
                         const host::TestoOAssente& esito) {
  // Made once: the body may be long and the recipients many.
  const auto destinatari = messaggio.vCollDestinatari;
  const host::TestoOAssente ditta = messaggio.vDitta;
  const host::TestoOAssente allegati = righe.allegati;
  const host::TestoOAssente oggetto = righe.oggetto;
  const host::TestoOAssente corpo = messaggio.vCorpoMail;
  const std::string esitoEvento = esito.value_or("");
  for (const auto& destinatario : host::Richiesto(destinatari)) {
    const std::string& nome = destinatario->Nome();
    const std::string indirizzo = VoceElenco(nome, destinatario->Indirizzo(), righe.apertura);
    RiferisciErrori(*oggetti.ambiente, &Osservatore::RigaNonRegistrata,
                    [&] { registro.RegistraInvio(nome, ditta, indirizzo, allegati, esito, oggetto, corpo); });
    Riferisci(*oggetti.ambiente, &Osservatore::RigaRegistrata, inviato, nome, indirizzo, esitoEvento);
    AttivaEventoGestionale(contesto, oggetti,
                           {.codice = kEventoInvio,
                            .destinatario = nome,
                            .azienda = *ditta,
                            .indirizzo = indirizzo,
                            .allegato = *allegati,
                            .esito = esitoEvento,
                            .oggetto = *oggetto});
  }
}

}  // namespace orve
