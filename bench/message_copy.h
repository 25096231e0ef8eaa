// What the library has handed to an SMTP component, kept so that the same message can be handed to another.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "orve-mailserver/host/componente_smtp.h"

namespace orve::bench {

/// Keeps the calls and delivers nothing. The server's name and port are not kept: a copy goes elsewhere.
class MessageCopy : public host::ComponenteSmtp {
 public:
  /// Repeats the calls on `component`.
  void HandTo(host::ComponenteSmtp& component) const;

  void ClearRecipient() override;
  void ServerAddr(const std::string& /*server*/) override {}
  void UserName(const std::string& utente) override;
  void Password(const std::string& password) override;
  void ServerPort(std::int16_t /*porta*/) override {}
  void ConnectType(std::int16_t tipo) override;
  void From(const std::string& nome) override;
  void FromAddr(const std::string& indirizzo) override;
  [[nodiscard]] std::string FromAddr() const override { return fromAddr_; }
  void DeliveryNotification(std::int16_t valore) override;
  void AddRecipientEx(const std::string& elenco, std::int32_t tipo) override;
  void Subject(const std::string& oggetto) override;
  void BodyFormat(std::int16_t formato) override;
  void BodyText(const std::string& corpo) override;
  void AddHeader(const std::string& nome, const std::string& valore) override;
  void AddAttachment(const std::string& percorso) override;
  host::Variant SendMail() override { return true; }
  [[nodiscard]] host::Variant GetLastError() const override { return -1; }

 private:
  std::vector<std::function<void(host::ComponenteSmtp&)>> calls_;
  std::string fromAddr_;
};

}  // namespace orve::bench
