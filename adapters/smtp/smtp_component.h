// The SMTP component: collects one message through the members the application knows and delivers it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "mime/attachment.h"
#include "mime/message.h"
#include "mime/message_writer.h"
#include "orve-mailserver/host/componente_smtp.h"
#include "orve-mailserver/smtp/smtp_options.h"
#include "smtp/channel.h"
#include "smtp/connection_pool.h"
#include "smtp/failure.h"
#include "smtp/session.h"

namespace orve::adapters::smtp {

/// Delivers over a connection of the pool, or over a new one for each message where there is no pool. What
/// the server does is told by GetLastError and never raised; what the caller does wrong is raised as
/// host::Errore by the member that was given it, with an Italian description: an address with CR, LF or NUL
/// (FromAddr, AddRecipientEx), a file that cannot be attached (AddAttachment), a header name that is invalid
/// or belongs to the message itself (AddHeader).
class SmtpComponent final : public host::ComponenteSmtp {
 public:
  /// `pool` may be shared with other senders; empty: no connection is kept. `attachments`: which files the
  /// paths of AddAttachment stand for; empty: the paths' own.
  explicit SmtpComponent(SmtpOptions options = {}, std::shared_ptr<ConnectionPool> pool = nullptr,
                         mime::AttachmentResolver attachments = {});

  void ClearRecipient() override;
  void ServerAddr(const std::string& server) override;
  /// An empty user means no authentication.
  void UserName(const std::string& utente) override;
  void Password(const std::string& password) override;
  /// The 16 bits of a TCP port: negative values stand for the ports above 32767. 25 unless set.
  void ServerPort(std::int16_t porta) override;
  void ConnectType(std::int16_t tipo) override;
  void From(const std::string& nome) override;
  void FromAddr(const std::string& indirizzo) override;
  [[nodiscard]] std::string FromAddr() const override;
  void DeliveryNotification(std::int16_t valore) override;
  void AddRecipientEx(const std::string& elenco, std::int32_t tipo) override;
  void Subject(const std::string& oggetto) override;
  void BodyFormat(std::int16_t formato) override;
  void BodyText(const std::string& corpo) override;
  void AddHeader(const std::string& nome, const std::string& valore) override;
  void AddAttachment(const std::string& percorso) override;
  /// True when the message was delivered.
  host::Variant SendMail() override;
  /// A 32-bit integer: -1 only after a delivery, 0 to 7 after a failed one, 8 while none has been tried.
  [[nodiscard]] host::Variant GetLastError() const override;

  /// The reason in the server's words or ours. Uncertain when the delivery failed after the end of the
  /// message, without a reply from the server: the message may have been accepted all the same.
  [[nodiscard]] host::FineConsegna Fine() const override { return end_; }

 private:
  void Deliver();
  [[nodiscard]] Target OpenTarget() const;
  [[nodiscard]] bool DeliverOverKept(const Target& target, const Envelope& envelope,
                                     mime::OutgoingMessage& message);
  void DeliverOverNew(const Target& target, const Envelope& envelope, mime::OutgoingMessage& message);
  void Release(std::unique_ptr<Session> session) const;
  [[nodiscard]] Envelope MakeEnvelope() const;

  std::shared_ptr<const SmtpOptions> options_;
  std::shared_ptr<ConnectionPool> pool_;
  mime::AttachmentResolver attachments_;
  Target target_;
  std::string fromAddr_;
  mime::Message message_;
  std::vector<mime::Address> blindCopies_;
  bool notifyDelivery_ = false;
  ErrorNumber number_ = ErrorNumber::kNothingSent;
  host::FineConsegna end_;
};

}  // namespace orve::adapters::smtp
