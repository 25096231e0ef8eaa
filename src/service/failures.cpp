// The one way to show a message, and the ways in which procedures of the service end on an error.
#include "service/failures.h"

#include <string>

#include "content/send_log.h"
#include "service/report.h"

namespace orve {

std::int32_t MostraMessaggioDi(host::Ambiente& ambiente,
                               const std::shared_ptr<host::InterfacciaHost>& interfaccia,
                               const std::shared_ptr<host::Messaggi>& riserva, const std::string& testo,
                               std::int32_t stile, const std::string& titolo,
                               const std::shared_ptr<host::Oggetto>& proprietario) {
  // Each test follows the chain afresh, since the host may answer differently from one moment to the next,
  // and may by then have withdrawn its interface.
  const bool messaggiDelHost =
      interfaccia && ApplicazioneDi(interfaccia) && host::Richiesto(ApplicazioneDi(interfaccia)).Messaggi();
  // The message object is held while it is showing: a window that is activated behind its message creates a
  // new one.
  const auto messaggi = messaggiDelHost ? host::Richiesto(ApplicazioneDi(interfaccia)).Messaggi() : riserva;
  auto& mostra = host::Richiesto(messaggi);
  Riferisci(ambiente, &Osservatore::MessaggioMostrato, testo, stile);
  return mostra.MostraMsg(testo, stile, titolo, proprietario);
}

std::string TestoErrore(const host::Errore& errore, std::string_view separatore, std::string_view chiusura) {
  std::string testo = std::to_string(errore.Numero());
  return testo.append(separatore).append(errore.Descrizione()).append(chiusura);
}

std::int32_t MostraMessaggio(const Oggetti& oggetti, const std::string& testo, std::int32_t stile,
                             const std::string& titolo) {
  return MostraMessaggioDi(*oggetti.ambiente, oggetti.ActiveInterface, oggetti.ObjMessaggi, testo, stile,
                           titolo, nullptr);
}

void MostraErrore(const Oggetti& oggetti, const host::Errore& errore, std::string_view separatore,
                  std::string_view chiusura) {
  MostraMessaggio(oggetti, TestoErrore(errore, separatore, chiusura), host::kSemplice, "");
}

void SegnalaPerModalita(const Messaggio& messaggio, const Impostazioni& impostazioni, Oggetti& oggetti,
                        const host::Errore& errore, const std::string& procedura, std::string_view separatore,
                        std::string_view chiusura) {
  if (impostazioni.ModalitaInvio() != kvManuale) {
    ScriviLogInvio(messaggio, impostazioni, oggetti, 2, procedura);
  } else {
    MostraErrore(oggetti, errore, separatore, chiusura);
  }
}

}  // namespace orve
