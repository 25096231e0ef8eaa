#include "mapi/letter.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <optional>
#include <string_view>
#include <unordered_set>

#include "mapi/failure.h"
#include "mapi/sendmail.h"
#include "mime/address_list.h"
#include "mime/attachment.h"
#include "mime/header_text.h"
#include "mime/message_writer.h"
#include "text/text.h"

namespace orve::adapters::mapi {

namespace {

constexpr std::string_view kSmtp = "SMTP:";

std::string WithoutType(std::string_view address) {
  const std::string_view trimmed = text::Trim(address);
  const bool typed = text::EqualsIgnoreCase(trimmed.substr(0, kSmtp.size()), kSmtp);
  return std::string(typed ? trimmed.substr(kSmtp.size()) : trimmed);
}

/// The address may be at the end of the name; what precedes it is then the name.
mime::Address Separate(const Recipient& recipient) {
  if (!text::Trim(recipient.address).empty()) return {recipient.name, WithoutType(recipient.address)};
  const std::string_view text = text::Trim(recipient.name);
  const std::size_t open = text.rfind('<');
  if (open != std::string_view::npos && text.back() == '>') {
    return {std::string(text::Trim(text.substr(0, open))),
            WithoutType(text.substr(open + 1, text.size() - open - 2))};
  }
  return {"", text.find('@') == std::string_view::npos ? std::string() : std::string(text)};
}

std::string HostName() {
  constexpr std::size_t kLongestName = 256;
  std::array<char, kLongestName> name{};
  if (::gethostname(name.data(), name.size() - 1) != 0 || name.front() == '\0') return "localhost";
  return name.data();
}

/// The user's address on this machine.
std::string OwnAddress() {
  constexpr std::size_t kRoom = std::size_t{16} * 1024;
  std::string room(kRoom, '\0');
  passwd entry{};
  passwd* found = nullptr;
  const bool known =
      ::getpwuid_r(::geteuid(), &entry, room.data(), room.size(), &found) == 0 && found != nullptr;
  return std::string(known ? found->pw_name : "nobody") + "@" + HostName();
}

std::string RequireWire(const std::string& address, std::int32_t number) {
  const std::optional<mime::WireAddress> wire = mime::ToWire(address);
  if (!wire) throw MapiFailure(number, "Indirizzo non valido: \"" + mime::ForDisplay(address) + "\"");
  return wire->text;
}

class Dispatch {
 public:
  explicit Dispatch(const MapiOptions& options) : options_(options) {}

  void Prepare(const Letter& letter) {
    message_.subject = letter.subject;
    message_.body = letter.body;
    Address();
    for (const Recipient& recipient : letter.recipients) Add(recipient);
    if (letter.receipt) AskForReceipt();
    for (const mime::Attachment& attachment : letter.attachments) {
      mime::Attachment& leaving = message_.attachments.emplace_back(attachment);
      leaving.path = mime::RequireAttachable(attachment.path, attachment.held ? attachment.name : "");
    }
  }

  void Send() const {
    Submit(options_, envelope_, [this](const Sink& sink) { mime::WriteMessage(message_, sink); });
  }

 private:
  // An unusable sender address is the fault of whoever set the options: no log-on.
  void Address() {
    std::string domain = HostName();
    if (!options_.senderAddress.empty()) {
      envelope_.sender = RequireWire(options_.senderAddress, kLoginFailure);
      message_.from = {options_.senderName, options_.senderAddress};
      const std::size_t at = envelope_.sender.rfind('@');
      if (at != std::string::npos) domain = envelope_.sender.substr(at + 1);
    }
    message_.messageId = mime::NewMessageId(domain);
  }

  void Add(const Recipient& recipient) {
    mime::Address address = Resolve(recipient);
    const std::string wire = RequireWire(address.address, kInvalidRecipients);
    if (seen_.insert(mime::MailboxKey(wire)).second) envelope_.recipients.push_back(wire);
    if (recipient.kind == kTo) {
      message_.to.push_back(std::move(address));
    } else if (recipient.kind == kCc) {
      message_.cc.push_back(std::move(address));
    }
  }

  void AskForReceipt() {
    const std::string to = options_.senderAddress.empty() ? OwnAddress() : options_.senderAddress;
    message_.headers.push_back({"Disposition-Notification-To", to});
  }

  const MapiOptions& options_;
  mime::Message message_;
  Envelope envelope_;
  std::unordered_set<std::string> seen_;
};

}  // namespace

mime::Address Resolve(const Recipient& recipient) {
  mime::Address resolved = Separate(recipient);
  try {
    resolved.address = mime::BareAddress(resolved.address);
  } catch (...) {
    throw MapiFailure(kInvalidRecipients, CurrentFailure().what());
  }
  if (resolved.address.empty()) {
    throw MapiFailure(kUnknownRecipient,
                      "Destinatario senza indirizzo: \"" + mime::ForDisplay(recipient.name) + "\"");
  }
  static_cast<void>(RequireWire(resolved.address, kInvalidRecipients));
  return resolved;
}

void Deliver(const MapiOptions& options, const Letter& letter) {
  try {
    Dispatch dispatch(options);
    dispatch.Prepare(letter);
    dispatch.Send();
  } catch (...) {
    throw CurrentFailure();
  }
}

}  // namespace orve::adapters::mapi
