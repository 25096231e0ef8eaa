// The properties of the service, each naming a value inside.
#include <utility>

#include "orve-mailserver/service/CLSFW_MAILSERVER.h"
#include "service/interno.h"

namespace orve {

kvEnum_ErroreMail CLSFW_MAILSERVER::Stato() const {
  return interno_->esito.StatoInvio;
}
host::Variant CLSFW_MAILSERVER::Descrizione() const {
  return interno_->esito.DescrizioneInvio;
}

kvEnumModalitaInvio CLSFW_MAILSERVER::ModalitaInvio() const {
  return interno_->impostazioni.ModalitaInvio();
}
void CLSFW_MAILSERVER::ModalitaInvio(std::int32_t valore) {
  interno_->impostazioni.IndModalitaInvio = valore;
}

const std::string& CLSFW_MAILSERVER::tempPath() const {
  return interno_->impostazioni.PathTemp;
}

std::shared_ptr<Mittente> CLSFW_MAILSERVER::MailParamAccount() {
  auto& account = interno_->parametri.Account;
  if (!account) account = std::make_shared<Mittente>(interno_->oggetti.ambiente);
  return account;
}
void CLSFW_MAILSERVER::MailParamAccount(std::shared_ptr<Mittente> valore) {
  interno_->parametri.Account = std::move(valore);
}

float CLSFW_MAILSERVER::MailParamTipo() const {
  return interno_->parametri.Tipo;
}
void CLSFW_MAILSERVER::MailParamTipo(float valore) {
  interno_->parametri.Tipo = valore;
}

bool CLSFW_MAILSERVER::MailParamReadRcpt() const {
  return interno_->parametri.ReadRcpt;
}
void CLSFW_MAILSERVER::MailParamReadRcpt(bool valore) {
  interno_->parametri.ReadRcpt = valore;
}

bool CLSFW_MAILSERVER::MailParamDeliveryStatus() const {
  return interno_->parametri.DeliveryStatus;
}
void CLSFW_MAILSERVER::MailParamDeliveryStatus(bool valore) {
  interno_->parametri.DeliveryStatus = valore;
}

const std::string& CLSFW_MAILSERVER::MailParamAllegatoUnico() const {
  return interno_->parametri.AllegatoUnico;
}
void CLSFW_MAILSERVER::MailParamAllegatoUnico(const std::string& valore) {
  interno_->parametri.AllegatoUnico = valore;
}

const std::string& CLSFW_MAILSERVER::MailParamCorpoUnico() const {
  return interno_->parametri.CorpoUnico;
}
void CLSFW_MAILSERVER::MailParamCorpoUnico(const std::string& valore) {
  interno_->parametri.CorpoUnico = valore;
}

bool CLSFW_MAILSERVER::MailParamIsValoriValidi() const {
  return interno_->parametri.IsValoriValidi;
}
void CLSFW_MAILSERVER::MailParamIsValoriValidi(bool valore) {
  interno_->parametri.IsValoriValidi = valore;
}

bool CLSFW_MAILSERVER::IsPec() const {
  return interno_->messaggio.IsPec;
}
void CLSFW_MAILSERVER::IsPec(bool valore) {
  interno_->messaggio.IsPec = valore;
}

bool CLSFW_MAILSERVER::IsInvioMailConParams() const {
  return interno_->impostazioni.IsInvioMailConParams;
}
void CLSFW_MAILSERVER::IsInvioMailConParams(bool valore) {
  interno_->impostazioni.IsInvioMailConParams = valore;
}

bool CLSFW_MAILSERVER::IsStampaDifferita() const {
  return interno_->impostazioni.IsStampaDifferita;
}
void CLSFW_MAILSERVER::IsStampaDifferita(bool valore) {
  interno_->impostazioni.IsStampaDifferita = valore;
}

bool CLSFW_MAILSERVER::InvioSMTP() const {
  return interno_->impostazioni.InvioSMTP;
}
void CLSFW_MAILSERVER::InvioSMTP(bool valore) {
  interno_->impostazioni.InvioSMTP = valore;
}

const std::string& CLSFW_MAILSERVER::ListaGuid() const {
  return interno_->messaggio.ListaGuid;
}
void CLSFW_MAILSERVER::ListaGuid(const std::string& valore) {
  interno_->messaggio.ListaGuid = valore;
}

std::int32_t CLSFW_MAILSERVER::IsLista() const {
  return interno_->messaggio.IsLista;
}
void CLSFW_MAILSERVER::IsLista(std::int32_t valore) {
  interno_->messaggio.IsLista = valore;
}

host::DataOra CLSFW_MAILSERVER::DataValiditaCodiceDestinatario() const {
  return interno_->messaggio.DataValiditaCodiceDestinatario;
}
void CLSFW_MAILSERVER::DataValiditaCodiceDestinatario(host::DataOra valore) {
  interno_->messaggio.DataValiditaCodiceDestinatario = valore;
}

const std::string& CLSFW_MAILSERVER::DestinatariA() const {
  return interno_->messaggio.DestinatariA;
}
void CLSFW_MAILSERVER::DestinatariA(const std::string& valore) {
  interno_->messaggio.DestinatariA = valore;
}

const std::string& CLSFW_MAILSERVER::DestinatariCC() const {
  return interno_->messaggio.DestinatariCC;
}
void CLSFW_MAILSERVER::DestinatariCC(const std::string& valore) {
  interno_->messaggio.DestinatariCC = valore;
}

const std::string& CLSFW_MAILSERVER::DestinatariCCn() const {
  return interno_->messaggio.DestinatariCCn;
}
void CLSFW_MAILSERVER::DestinatariCCn(const std::string& valore) {
  interno_->messaggio.DestinatariCCn = valore;
}

const std::string& CLSFW_MAILSERVER::Allegati() const {
  return interno_->messaggio.Allegati;
}
void CLSFW_MAILSERVER::Allegati(const std::string& valore) {
  interno_->messaggio.Allegati = valore;
}

const std::string& CLSFW_MAILSERVER::MailCorpo() const {
  return interno_->messaggio.MailCorpo;
}
void CLSFW_MAILSERVER::MailCorpo(const std::string& valore) {
  interno_->messaggio.MailCorpo = valore;
}

const std::string& CLSFW_MAILSERVER::MailOggetto() const {
  return interno_->messaggio.MailOggetto;
}
void CLSFW_MAILSERVER::MailOggetto(const std::string& valore) {
  interno_->messaggio.MailOggetto = valore;
}

const std::string& CLSFW_MAILSERVER::INFO_RagSocCliFor() const {
  return interno_->messaggio.INFO_RagSocCliFor;
}
void CLSFW_MAILSERVER::INFO_RagSocCliFor(const std::string& valore) {
  interno_->messaggio.INFO_RagSocCliFor = valore;
}

}  // namespace orve
