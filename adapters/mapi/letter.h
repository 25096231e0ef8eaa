// One message as the MAPI library and the MAPI controls know it, and its way out.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "mime/message.h"
#include "orve-mailserver/mapi/mapi_options.h"

namespace orve::adapters::mapi {

/// Classes of recipients.
inline constexpr std::int32_t kTo = 1;
inline constexpr std::int32_t kCc = 2;
inline constexpr std::int32_t kBcc = 3;

struct Recipient {
  std::int32_t kind = kTo;
  std::string name;     // alone, or followed by the address between angle brackets
  std::string address;  // bare or after "SMTP:"; empty: it is in the name
};

/// Texts are UTF-8.
struct Letter {
  std::string subject;
  std::string body;
  bool receipt = false;  // the reader is asked to confirm reading it
  std::vector<Recipient> recipients;
  std::vector<mime::Attachment> attachments;
};

/// Name and bare address of the recipient. Raises MapiFailure: kUnknownRecipient without an address,
/// kInvalidRecipients with one that no command could carry.
[[nodiscard]] mime::Address Resolve(const Recipient& recipient);

/// Delivers the letter to all recipients or to none. Raises MapiFailure.
void Deliver(const MapiOptions& options, const Letter& letter);

}  // namespace orve::adapters::mapi
