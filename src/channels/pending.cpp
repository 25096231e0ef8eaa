// Procedures of this folder that are not built yet; each fails clearly.
#include <string>

#include "service/CLSFW_MAILSERVER.h"

namespace orve {

namespace {

[[noreturn]] void NonDisponibile(const std::string& procedura) {
  throw host::Errore(host::kMembroNonSupportato, "ORVE_MAILSERVER",
                     "Funzione non disponibile in questa versione: " + procedura);
}

}  // namespace

void CLSFW_MAILSERVER::SendWithSmtp() {
  NonDisponibile("SendWithSmtp");
}

host::Variant CLSFW_MAILSERVER::InviaMailConSSL(
    const std::shared_ptr<host::ComponenteSmtp>& /*componente*/, const std::string& /*server*/,
    std::int16_t /*porta*/, bool /*autenticazione*/, std::int16_t /*crypt*/, const std::string& /*utente*/,
    const std::string& /*password*/, const std::string& /*mittente*/, const std::string& /*elencoA*/,
    const std::string& /*elencoCC*/, const std::string& /*oggetto*/, const std::string& /*corpo*/,
    bool /*ricevuta*/, const std::string& /*elencoCCn*/) {
  NonDisponibile("InviaMailConSSL");
}

std::string CLSFW_MAILSERVER::AddAdditionalAttachmentSMTP(
    const std::shared_ptr<host::ComponenteSmtp>& /*componente*/) {
  NonDisponibile("AddAdditionalAttachmentSMTP");
}

std::string CLSFW_MAILSERVER::GetSMTPErrorDescription(std::int16_t /*codice*/) {
  NonDisponibile("GetSMTPErrorDescription");
}

}  // namespace orve
