// The face of the service: each operation passes the records it works on to the procedure of its subject.
#include "orve-mailserver/service/CLSFW_MAILSERVER.h"

#include <utility>

#include "addressing/contesto_utente.h"
#include "channels/standalone_smtp.h"
#include "service/address_check.h"
#include "service/before_send.h"
#include "service/dialog_bridge.h"
#include "service/guards.h"
#include "service/interno.h"
#include "service/invio_diretto.h"
#include "service/procedura_invio.h"
#include "service/settings.h"

namespace orve {

void CLSFW_MAILSERVER::AvviaProceduraInvio(const std::optional<host::Variant>& codice,
                                           std::optional<kvTipologiaDestinatarioFAX> Tipo) {
  orve::AvviaProceduraInvio(*interno_, *this, codice, Tipo);
}

void CLSFW_MAILSERVER::InviaMail() {
  IgnoraErrori([this] { ConsegnaAlCanale(*interno_); });
}

host::Variant CLSFW_MAILSERVER::GetImpostazioni() {
  auto& i = *interno_;
  orve::GetImpostazioni(i.impostazioni, i.account, i.contesto, i.oggetti);
  return {};
}

void CLSFW_MAILSERVER::InizializzaRegistroInvioMail(const std::string& IDvoce, const std::string& UObject,
                                                    const std::string& Utente, const std::string& Gruppo,
                                                    const std::string& TitoloStampa) {
  auto& i = *interno_;
  orve::InizializzaRegistroInvioMail(i.messaggio, i.impostazioni, i.account, i.contesto, i.oggetti,
                                     {IDvoce, UObject, TitoloStampa}, Utente, Gruppo);
}

void CLSFW_MAILSERVER::InizializzaRegistroInvioMailMultiprofilo(const std::string& IDvoce,
                                                                const std::string& UObject,
                                                                std::int32_t IdUtente,
                                                                const std::string& TitoloStampa) {
  auto& i = *interno_;
  orve::InizializzaRegistroInvioMailMultiprofilo(i.messaggio, i.impostazioni, i.account, i.contesto,
                                                 i.oggetti, {IDvoce, UObject, TitoloStampa}, IdUtente);
}

// The texts are taken by value: a caller may pass the service's own fields, which the event changes in
// between. Their names differ from those in the interface, where fields have them already.
// NOLINTNEXTLINE(performance-unnecessary-value-param,readability-inconsistent-declaration-parameter-name)
bool CLSFW_MAILSERVER::InviaMailSMTP(std::string oggetto, std::string corpo, const bool* /*prioritaAlta*/,
                                     const bool* /*mailNotifica*/) {
  auto& i = *interno_;
  return orve::InviaMailSMTP(i.messaggio, i.impostazioni, i.account, i.contesto, i.esito, i.oggetti, oggetto,
                             corpo);
}

bool CLSFW_MAILSERVER::AddDestinatario(const std::string& indMail, const std::string& descrDest) {
  orve::AddDestinatario(interno_->messaggio, interno_->oggetti, indMail, descrDest);
  return false;  // also on success: callers have never been told anything else
}

void CLSFW_MAILSERVER::AddAllegato(const std::string& FileName) {
  orve::AddAllegato(interno_->messaggio, interno_->oggetti, FileName);
}

void CLSFW_MAILSERVER::ReturnMailParameters() {
  orve::ReturnMailParameters(*interno_, *this);
}

std::string CLSFW_MAILSERVER::PercorsoInstallazione() {
  return GetPercorsoInstallazione(interno_->oggetti);
}

bool CLSFW_MAILSERVER::CheckRegularMailAddress(const std::string& MailAdd) {
  return ContieneIndirizzo(MailAdd);
}

void CLSFW_MAILSERVER::InviaMailDiretta(std::int16_t pIdMittente, std::string pDestA, std::string pDestCC,
                                        std::string pDestCCn, std::string pOggetto, std::string pCorpo,
                                        std::string pAllegati) {
  orve::InviaMailDiretta(*interno_, *this,
                         {pIdMittente,
                          {std::move(pDestA), std::move(pDestCC), std::move(pDestCCn)},
                          std::move(pOggetto),
                          std::move(pCorpo),
                          std::move(pAllegati)});
}

}  // namespace orve
