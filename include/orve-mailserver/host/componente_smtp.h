// The SMTP component: an outside object that takes one message and delivers it. An instance is used for one
// message and then dropped. The member names are the component's own.
#pragma once

#include <cstdint>
#include <string>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/fine_consegna.h"
#include "orve-mailserver/host/oggetto.h"
#include "orve-mailserver/host/variant.h"

namespace orve::host {

/// One message and its delivery. Nothing is sent before SendMail.
class ORVE_API ComponenteSmtp : public Oggetto {
 public:
  /// Empties the recipient lists.
  virtual void ClearRecipient() = 0;
  /// Host to connect to.
  virtual void ServerAddr(const std::string& server) = 0;
  ///@{
  /// Credentials; without them no authentication takes place.
  virtual void UserName(const std::string& utente) = 0;
  virtual void Password(const std::string& password) = 0;
  ///@}
  /// Port to connect to.
  virtual void ServerPort(std::int16_t porta) = 0;
  /// 0 plain connection, 1 encrypted connection.
  virtual void ConnectType(std::int16_t tipo) = 0;
  /// Display name of the sender.
  virtual void From(const std::string& nome) = 0;
  /// Address of the sender between angle brackets; reads back what was written.
  virtual void FromAddr(const std::string& indirizzo) = 0;
  [[nodiscard]] virtual std::string FromAddr() const = 0;
  /// 14 asks for delivery status notification.
  virtual void DeliveryNotification(std::int16_t valore) = 0;
  /// Adds the addresses of a list of entries joined by ";", each a display name, a blank and the address
  /// between angle brackets. tipo 0 To, 1 Cc, 2 Bcc.
  virtual void AddRecipientEx(const std::string& elenco, std::int32_t tipo) = 0;
  /// The subject, on one line.
  virtual void Subject(const std::string& oggetto) = 0;
  /// 1 marks the body as HTML.
  virtual void BodyFormat(std::int16_t formato) = 0;
  /// The body: plain text, or HTML when BodyFormat says so.
  virtual void BodyText(const std::string& corpo) = 0;
  /// Adds a header line; the value is on one line.
  virtual void AddHeader(const std::string& nome, const std::string& valore) = 0;
  /// Attaches a file; raises an error when it cannot.
  virtual void AddAttachment(const std::string& percorso) = 0;
  /// Submits the message and blocks until that is done. The result says nothing that GetLastError does not.
  virtual Variant SendMail() = 0;
  /// -1 when the last submission succeeded, else 0 connection, 1 HELO/EHLO, 2 authentication, 3 sender, 4
  /// recipients, 5 data, 6 reset, 7 DNS.
  [[nodiscard]] virtual Variant GetLastError() const = 0;
  /// What the component itself can tell of its last submission.
  [[nodiscard]] virtual FineConsegna Fine() const { return {}; }
};

}  // namespace orve::host
