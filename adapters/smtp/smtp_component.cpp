#include "smtp/smtp_component.h"

#include <optional>
#include <unordered_set>
#include <utility>

#include "mime/address_list.h"
#include "mime/header_text.h"
#include "orve-mailserver/host/errore.h"
#include "text/text.h"

namespace orve::adapters::smtp {

namespace {

/// The message is built while the server considers sender and recipients.
void Hand(Session& session, const Envelope& envelope, mime::OutgoingMessage& message) {
  session.Deliver(
      envelope, [&](const Session::Sink& sink) { message.WriteTo(sink); }, [&] { message.Prepare(); });
}

/// Appends the mailboxes that the envelope does not name yet.
void AddToEnvelope(Envelope& envelope, std::unordered_set<std::string>& seen,
                   const std::vector<mime::Address>& addresses) {
  for (const mime::Address& address : addresses) {
    const std::optional<mime::WireAddress> wire = mime::ToWire(address.address);
    if (!wire) {
      throw DeliveryFailure(ErrorNumber::kRecipients,
                            "indirizzo non valido: \"" + mime::ForDisplay(address.address) + "\"");
    }
    envelope.recipientsNeedUtf8 = envelope.recipientsNeedUtf8 || wire->needsUtf8;
    if (seen.insert(mime::MailboxKey(wire->text)).second) envelope.recipients.push_back(wire->text);
  }
}

}  // namespace

SmtpComponent::SmtpComponent(SmtpOptions options, std::shared_ptr<ConnectionPool> pool,
                             mime::AttachmentResolver attachments)
    : options_(std::make_shared<const SmtpOptions>(std::move(options))),
      pool_(std::move(pool)),
      attachments_(std::move(attachments)) {}

void SmtpComponent::ClearRecipient() {
  message_.to.clear();
  message_.cc.clear();
  blindCopies_.clear();
}

void SmtpComponent::ServerAddr(const std::string& server) {
  target_.host = server;
}
void SmtpComponent::UserName(const std::string& utente) {
  target_.user = utente;
}
void SmtpComponent::Password(const std::string& password) {
  target_.password = password;
}
void SmtpComponent::ServerPort(std::int16_t porta) {
  target_.port = static_cast<std::uint16_t>(porta);
}
void SmtpComponent::ConnectType(std::int16_t tipo) {
  target_.encrypted = tipo != 0;
}
void SmtpComponent::From(const std::string& nome) {
  message_.from.name = nome;
}

void SmtpComponent::FromAddr(const std::string& indirizzo) {
  message_.from.address = mime::BareAddress(indirizzo);
  fromAddr_ = indirizzo;
}

std::string SmtpComponent::FromAddr() const {
  return fromAddr_;
}

void SmtpComponent::DeliveryNotification(std::int16_t valore) {
  constexpr std::int16_t kSuccessFailureDelay = 14;
  notifyDelivery_ = valore == kSuccessFailureDelay;
}

void SmtpComponent::AddRecipientEx(const std::string& elenco, std::int32_t tipo) {
  if (tipo < 0 || tipo > 2) throw host::Errore(host::kArgomentoNonValido);
  std::vector<mime::Address>& list = tipo == 0 ? message_.to : tipo == 1 ? message_.cc : blindCopies_;
  for (mime::Address& address : mime::ParseAddressList(elenco)) list.push_back(std::move(address));
}

void SmtpComponent::Subject(const std::string& oggetto) {
  message_.subject = oggetto;
}
void SmtpComponent::BodyFormat(std::int16_t formato) {
  message_.html = formato == 1;
}
void SmtpComponent::BodyText(const std::string& corpo) {
  message_.body = corpo;
}

void SmtpComponent::AddHeader(const std::string& nome, const std::string& valore) {
  mime::RequireOwnHeaderName(nome);
  message_.headers.push_back({nome, valore});
}

void SmtpComponent::AddAttachment(const std::string& percorso) {
  message_.attachments.push_back(mime::Attach(attachments_, percorso));
}

host::Variant SmtpComponent::SendMail() {
  number_ = ErrorNumber::kNothingSent;
  end_ = {};
  try {
    Deliver();
    number_ = ErrorNumber::kNone;
  } catch (const DeliveryFailure& failure) {
    number_ = failure.Number();
    end_ = {failure.what(), failure.Undecided()};
  }
  return number_ == ErrorNumber::kNone;
}

host::Variant SmtpComponent::GetLastError() const {
  return static_cast<std::int32_t>(number_);
}

void SmtpComponent::Deliver() {
  if (text::Trim(target_.host).empty()) throw DeliveryFailure(ErrorNumber::kDns, "nessun server indicato");
  const Envelope envelope = MakeEnvelope();
  message_.date = options_->clock ? options_->clock() : std::chrono::system_clock::now();
  message_.messageId = options_->newMessageId ? options_->newMessageId() : std::string();
  mime::OutgoingMessage message(message_, {.dotStuffing = true, .trailer = ".\r\n"});
  const Target target = OpenTarget();
  if (!DeliverOverKept(target, envelope, message)) DeliverOverNew(target, envelope, message);
}

/// The server to deliver to, with the password in clear.
Target SmtpComponent::OpenTarget() const {
  Target target = target_;
  if (target.user.empty() || !options_->openPassword) return target;
  try {
    target.password = options_->openPassword(target_);
  } catch (const host::Errore& error) {
    throw DeliveryFailure(ErrorNumber::kAuthentication, error.Descrizione());
  }
  return target;
}

/// False when the message has to go over a new connection. A kept one that has been closed meanwhile, or on
/// which the server refuses the sender, says nothing about this message: the server may have had enough of
/// the earlier ones.
bool SmtpComponent::DeliverOverKept(const Target& target, const Envelope& envelope,
                                    mime::OutgoingMessage& message) {
  std::unique_ptr<Session> session = pool_ ? pool_->Take(options_, target) : nullptr;
  if (!session) return false;
  try {
    Hand(*session, envelope, message);
  } catch (const DeliveryFailure&) {
    const bool decided = session->SenderTaken() || session->Clean();
    Release(std::move(session));
    if (decided) throw;
    return false;
  }
  Release(std::move(session));
  return true;
}

void SmtpComponent::DeliverOverNew(const Target& target, const Envelope& envelope,
                                   mime::OutgoingMessage& message) {
  auto session = std::make_unique<Session>(options_, target);
  try {
    session->Open();
    Hand(*session, envelope, message);
  } catch (const DeliveryFailure&) {
    Release(std::move(session));
    throw;
  }
  Release(std::move(session));
}

void SmtpComponent::Release(std::unique_ptr<Session> session) const {
  if (pool_) {
    pool_->Give(std::move(session));
  } else {
    session->Close();
  }
}

Envelope SmtpComponent::MakeEnvelope() const {
  Envelope envelope;
  const std::optional<mime::WireAddress> sender = mime::ToWire(message_.from.address);
  if (!sender) throw DeliveryFailure(ErrorNumber::kSender, "indirizzo del mittente non valido");
  envelope.sender = sender->text;
  envelope.senderNeedsUtf8 = sender->needsUtf8;
  envelope.notifyDelivery = notifyDelivery_;
  std::unordered_set<std::string> seen;
  AddToEnvelope(envelope, seen, message_.to);
  AddToEnvelope(envelope, seen, message_.cc);
  AddToEnvelope(envelope, seen, blindCopies_);
  if (envelope.recipients.empty()) throw DeliveryFailure(ErrorNumber::kRecipients, "nessun destinatario");
  return envelope;
}

}  // namespace orve::adapters::smtp
