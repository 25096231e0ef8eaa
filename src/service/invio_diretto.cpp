// No record is looked up, no body is chosen and no dialog opens, whatever the mode.
//
// FlagInvioDiretto is what makes a send a direct one. It is only reset at the end: an error before that
// leaves it set, and the object treats its next send as a direct one too.
#include "service/invio_diretto.h"

#include <memory>
#include <utility>

#include "addressing/address_list.h"
#include "channels/channel_traits.h"
#include "service/before_send.h"
#include "service/failures.h"
#include "service/guards.h"
#include "service/procedura_invio.h"

namespace orve {

namespace {

void LeggiDestinatariDiretti(Messaggio& messaggio, const Oggetti& oggetti,
                             const std::array<std::string, 3>& elenchi) {
  messaggio.vCollDestinatari.reset();
  messaggio.vCollDestinatari = std::make_shared<CollDestinatari>(oggetti.ambiente);
  AddressListReader lettore;
  std::int16_t casella = kvCasellaA;
  for (const auto& elenco : elenchi) {
    lettore.Leggi(elenco, [&](const std::string& indirizzo, const std::string& nome) {
      messaggio.vCollDestinatari->AddFromLista(indirizzo, nome, "", casella, "");
    });
    ++casella;
  }
}

}  // namespace

// Nobody is told of an error, and the flag stays, on purpose.
void InviaMailDiretta(Interno& interno, CLSFW_MAILSERVER& servizio, InvioDiretto invio) {
  IgnoraErrori([&] {
    Messaggio& messaggio = interno.messaggio;
    messaggio.DestinatariA.clear();
    messaggio.DestinatariCC.clear();
    messaggio.DestinatariCCn.clear();
    messaggio.FlagInvioDiretto = true;
    messaggio.vFlagCorpo = 1;  // an empty body goes out empty
    if (HaAccount(interno.impostazioni.SrvMailInstallato))
      interno.account.IdMittenteDiretto = invio.IdMittente;
    LeggiDestinatariDiretti(messaggio, interno.oggetti, invio.Destinatari);
    messaggio.vCorpoMail = std::move(invio.Corpo);
    messaggio.vOggetto = std::move(invio.Oggetto);
    RiprendiAllegati(messaggio, interno.oggetti, invio.Allegati);
    AvviaProceduraInvio(interno, servizio, std::nullopt, kvDestinatarioFaxAnagrafica);
    messaggio.FlagInvioDiretto = false;
  });
}

void RegistraAnnullamentoDaUtente(const Messaggio& messaggio, const Impostazioni& impostazioni,
                                  const Contesto& contesto, const Oggetti& oggetti) {
  SegnalaErrori(PerMessaggio(oggetti, "-", " in CLSFW_MAILSERVER: RegistraAnnullamentoDaUtente"), [&] {
    const auto registro = oggetti.ObjRegistroInvio;
    if (!registro) return;
    registro->EsitoInvio(host::kAnnullatoDaUtente);
    registro->TipoCanale(TipoCanaleDi(messaggio));
    RegistraNonInviato(impostazioni, contesto, oggetti, *registro,
                       {.testo = "Richiesta annullamento da utente", .esito = host::kAnnullatoDaUtente});
  });
}

}  // namespace orve
