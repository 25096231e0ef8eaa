#include "message_copy.h"

namespace orve::bench {

void MessageCopy::HandTo(host::ComponenteSmtp& component) const {
  for (const auto& call : calls_) call(component);
}

void MessageCopy::ClearRecipient() {
  calls_.emplace_back([](auto& component) { component.ClearRecipient(); });
}
void MessageCopy::UserName(const std::string& utente) {
  calls_.emplace_back([=](auto& component) { component.UserName(utente); });
}
void MessageCopy::Password(const std::string& password) {
  calls_.emplace_back([=](auto& component) { component.Password(password); });
}
void MessageCopy::ConnectType(std::int16_t tipo) {
  calls_.emplace_back([=](auto& component) { component.ConnectType(tipo); });
}
void MessageCopy::From(const std::string& nome) {
  calls_.emplace_back([=](auto& component) { component.From(nome); });
}
void MessageCopy::FromAddr(const std::string& indirizzo) {
  fromAddr_ = indirizzo;
  calls_.emplace_back([=](auto& component) { component.FromAddr(indirizzo); });
}
void MessageCopy::DeliveryNotification(std::int16_t valore) {
  calls_.emplace_back([=](auto& component) { component.DeliveryNotification(valore); });
}
void MessageCopy::AddRecipientEx(const std::string& elenco, std::int32_t tipo) {
  calls_.emplace_back([=](auto& component) { component.AddRecipientEx(elenco, tipo); });
}
void MessageCopy::Subject(const std::string& oggetto) {
  calls_.emplace_back([=](auto& component) { component.Subject(oggetto); });
}
void MessageCopy::BodyFormat(std::int16_t formato) {
  calls_.emplace_back([=](auto& component) { component.BodyFormat(formato); });
}
void MessageCopy::BodyText(const std::string& corpo) {
  calls_.emplace_back([=](auto& component) { component.BodyText(corpo); });
}
void MessageCopy::AddHeader(const std::string& nome, const std::string& valore) {
  calls_.emplace_back([=](auto& component) { component.AddHeader(nome, valore); });
}
void MessageCopy::AddAttachment(const std::string& percorso) {
  calls_.emplace_back([=](auto& component) { component.AddAttachment(percorso); });
}

}  // namespace orve::bench
