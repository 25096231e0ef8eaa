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

host::Variant CLSFW_MAILSERVER::GetDatiDestinatario(const host::Variant& /*codice*/,
                                                    std::optional<std::int32_t> /*Tipo*/) {
  NonDisponibile("GetDatiDestinatario");
}

void CLSFW_MAILSERVER::CaricaAccountPredefinito() {
  NonDisponibile("CaricaAccountPredefinito");
}

void CLSFW_MAILSERVER::CaricaAccountDaId() {
  NonDisponibile("CaricaAccountDaId");
}

bool CLSFW_MAILSERVER::LoadAccountsPerUser(host::Form& /*form*/) {
  NonDisponibile("LoadAccountsPerUser");
}

std::string CLSFW_MAILSERVER::DecriptaPassword(const std::string& /*testo*/) {
  NonDisponibile("DecriptaPassword");
}

std::string CLSFW_MAILSERVER::CriptaPassword(const std::string& /*testo*/) {
  NonDisponibile("CriptaPassword");
}

std::int32_t CLSFW_MAILSERVER::GetIdUtente() {
  NonDisponibile("GetIdUtente");
}

void CLSFW_MAILSERVER::ImpostaIdUtente(std::int32_t /*id*/) {
  NonDisponibile("ImpostaIdUtente");
}

std::string CLSFW_MAILSERVER::GetUtenteApplicazione() {
  NonDisponibile("GetUtenteApplicazione");
}

std::string CLSFW_MAILSERVER::GetGruppoPreferito() {
  NonDisponibile("GetGruppoPreferito");
}

std::string CLSFW_MAILSERVER::GetCodiceUtente(std::int32_t /*id*/) {
  NonDisponibile("GetCodiceUtente");
}

std::string CLSFW_MAILSERVER::GetCodiceGruppo(std::int32_t /*id*/) {
  NonDisponibile("GetCodiceGruppo");
}

void CLSFW_MAILSERVER::CaricaDatiAziendaCorrente() {
  NonDisponibile("CaricaDatiAziendaCorrente");
}

void CLSFW_MAILSERVER::InizializzaRegistroInvioMail(const std::string& /*IDvoce*/,
                                                    const std::string& /*UObject*/,
                                                    const std::string& /*Utente*/,
                                                    const std::string& /*Gruppo*/,
                                                    const std::string& /*TitoloStampa*/) {
  NonDisponibile("InizializzaRegistroInvioMail");
}

void CLSFW_MAILSERVER::InizializzaRegistroInvioMailMultiprofilo(const std::string& /*IDvoce*/,
                                                                const std::string& /*UObject*/,
                                                                std::int32_t /*IdUtente*/,
                                                                const std::string& /*TitoloStampa*/) {
  NonDisponibile("InizializzaRegistroInvioMailMultiprofilo");
}

}  // namespace orve
