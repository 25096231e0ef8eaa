// Birth and death of the service object, and the properties that are more than a field.
#include "service/CLSFW_MAILSERVER.h"
#include "service/ignora_errori.h"

namespace orve {

CLSFW_MAILSERVER::CLSFW_MAILSERVER(std::shared_ptr<host::Ambiente> ambiente)
    : ambiente_(std::move(ambiente)), traccia_(ambiente_, "CLSFW_MAILSERVER") {
  ObjMessaggi = ambiente_->CreaMessaggi();
  traccia_.Inizio();
  IndModalitaInvio = -1;
  try {
    ObjFormatoData = ambiente_->CreaFormatoData();
    ObjFormatoNumero = ambiente_->CreaFormatoNumero();
  } catch (...) {
    traccia_.Termine();  // the destructor of an object that never came to be does not run
    throw;
  }
}

CLSFW_MAILSERVER::~CLSFW_MAILSERVER() {
  traccia_.Termine();
  IgnoraErrori([&] { ObjMessaggi.reset(); });
  IgnoraErrori([&] { host::Richiesto(ObjRegistroInvio).Connessione(nullptr); });
  IgnoraErrori([&] { ObjRegistroInvio.reset(); });
  if (SrvMailInstallato == kvSimpleMAPI) {
    IgnoraErrori([&] { host::Richiesto(objMapiSession).SignOff(); });
    IgnoraErrori([&] { objMapiSession.reset(); });
  } else if (SrvMailInstallato == kvOutlook) {
    IgnoraErrori([&] { objOutlookApp.reset(); });
    IgnoraErrori([&] { ConnectionADO.reset(); });
    return;  // with Outlook the other fields go with the object
  }
  IgnoraErrori([&] { vCollDestinatari.reset(); });
  IgnoraErrori([&] { vCollMittenti.reset(); });
  IgnoraErrori([&] { ManagerRubrica.reset(); });
  IgnoraErrori([&] { ConnectionADO.reset(); });
  IgnoraErrori([&] { ActiveInterface.reset(); });
  IgnoraErrori([&] { ObjFormatoData.reset(); });
  IgnoraErrori([&] { ObjFormatoNumero.reset(); });
}

kvEnumModalitaInvio CLSFW_MAILSERVER::ModalitaInvio() const {
  if (IndModalitaInvio != -1) return static_cast<kvEnumModalitaInvio>(IndModalitaInvio);
  return static_cast<kvEnumModalitaInvio>(IsStampaDifferita() ? ModalitaStampaDifferita : ModalitaStandard);
}

std::shared_ptr<Mittente> CLSFW_MAILSERVER::MailParamAccount() {
  if (!mailParamAccount_) mailParamAccount_ = std::make_shared<Mittente>(ambiente_);
  return mailParamAccount_;
}

}  // namespace orve
