// Procedures whose subject is not built yet. Each fails clearly, and the failure takes the way of its
// caller's errors, so that nothing is recorded as sent that was not.
#include <string>

#include "service/CLSFW_MAILSERVER.h"

namespace orve {

namespace {

[[noreturn]] void NonDisponibile(const std::string& procedura) {
  throw host::Errore(host::kMembroNonSupportato, "ORVE_MAILSERVER",
                     "Funzione non disponibile in questa versione: " + procedura);
}

}  // namespace

bool CLSFW_MAILSERVER::InviaMailSMTP(const std::string& /*vOggetto*/, const std::string& /*vCorpo*/,
                                     const bool* /*prioritaAlta*/, const bool* /*mailNotifica*/) {
  NonDisponibile("InviaMailSMTP");
}

bool CLSFW_MAILSERVER::AddDestinatario(const std::string& /*indMail*/, const std::string& /*descrDest*/) {
  NonDisponibile("AddDestinatario");
}

void CLSFW_MAILSERVER::InviaMailDiretta(std::int16_t /*pIdMittente*/, const std::string& /*pDestA*/,
                                        const std::string& /*pDestCC*/, const std::string& /*pDestCCn*/,
                                        const std::string& /*pOggetto*/, const std::string& /*pCorpo*/,
                                        const std::string& /*pAllegati*/) {
  NonDisponibile("InviaMailDiretta");
}

void CLSFW_MAILSERVER::SendWithSimpleMAPI() {
  NonDisponibile("SendWithSimpleMAPI");
}

void CLSFW_MAILSERVER::SendWithOutlook() {
  NonDisponibile("SendWithOutlook");
}

void CLSFW_MAILSERVER::SendMailMAPI() {
  NonDisponibile("SendMailMAPI");
}

}  // namespace orve
