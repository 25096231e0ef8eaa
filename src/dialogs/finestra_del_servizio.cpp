#include "dialogs/finestra_del_servizio.h"

#include <utility>

#include "service/failures.h"

namespace orve {

FinestraDelServizio::FinestraDelServizio(std::shared_ptr<host::Ambiente> ambiente, std::string_view classe,
                                         std::shared_ptr<host::Form>& form,
                                         std::shared_ptr<host::Messaggi>& messaggi)
    : ambiente_(std::move(ambiente)), traccia_(ambiente_, classe), form_(form), messaggi_(messaggi) {}

CLSFW_MAILSERVER& FinestraDelServizio::Servizio() const {
  if (Parent == nullptr) throw host::Errore(host::kOggettoNonImpostato);
  return *Parent;
}

std::int32_t FinestraDelServizio::MostraMessaggio(const std::string& testo, std::int32_t stile,
                                                  const std::string& titolo,
                                                  const std::shared_ptr<host::Oggetto>& proprietario) {
  return MostraMessaggioDi(*ambiente_, ActiveInterface, messaggi_, testo, stile, titolo, proprietario);
}

void FinestraDelServizio::SegnalaErroreConTitolo(std::string_view chiusura) {
  std::string testo = host::ErroreCorrente().Descrizione();
  MostraMessaggio(testo.append(chiusura), host::kSemplice, form_->Caption(), nullptr);
}

void FinestraDelServizio::CompletaTitolo(const std::shared_ptr<host::InterfacciaHost>& interfaccia) {
  if (!interfaccia) return;
  const auto messaggi = host::Richiesto(ApplicazioneDi(interfaccia)).Messaggi();
  form_->Caption(host::Richiesto(messaggi).TitoloFinestra(form_->Caption()));
}

}  // namespace orve
