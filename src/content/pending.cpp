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

std::string CLSFW_MAILSERVER::GetCorpoMail() {
  NonDisponibile("GetCorpoMail");
}

std::string CLSFW_MAILSERVER::GetCorpoStandard() {
  NonDisponibile("GetCorpoStandard");
}

std::string CLSFW_MAILSERVER::CompilaTestoMail(const std::string& /*testo*/) {
  NonDisponibile("CompilaTestoMail");
}

bool CLSFW_MAILSERVER::EsisteParamHTMLFW95() {
  NonDisponibile("EsisteParamHTMLFW95");
}

std::string CLSFW_MAILSERVER::TabellaFirmeFW95() {
  NonDisponibile("TabellaFirmeFW95");
}

std::string CLSFW_MAILSERVER::GetFirmaUtente(const std::string& /*tabella*/, std::string& /*font*/,
                                             std::int16_t& /*dimensione*/) {
  NonDisponibile("GetFirmaUtente");
}

std::string CLSFW_MAILSERVER::TestoInHTML(const std::string& /*testo*/, const std::string& /*font*/,
                                          std::int32_t /*dimensione*/) {
  NonDisponibile("TestoInHTML");
}

void CLSFW_MAILSERVER::AttivaEventoGestionale(std::int32_t /*codice*/, const std::string& /*destinatario*/,
                                              const std::string& /*azienda*/,
                                              const std::string& /*indirizzo*/,
                                              const std::string& /*allegato*/, const std::string& /*esito*/,
                                              const std::string& /*oggetto*/) {
  NonDisponibile("AttivaEventoGestionale");
}

host::Variant CLSFW_MAILSERVER::GetUserIDFromConnection() {
  NonDisponibile("GetUserIDFromConnection");
}

std::string CLSFW_MAILSERVER::ComponiParametriEvento(
    std::int32_t /*idUtente*/, std::int32_t /*codice*/, const std::string& /*destinatario*/,
    const std::string& /*azienda*/, const std::string& /*indirizzo*/, const std::string& /*allegato*/,
    const std::string& /*esito*/, const std::string& /*oggetto*/) {
  NonDisponibile("ComponiParametriEvento");
}

}  // namespace orve
