// Addresses: the lists joined by ";" that the application hands over, and the form an address takes on the
// wire.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "mime/message.h"

namespace orve::adapters::mime {

/// The mailboxes of a list of entries joined by ";", each a display name, a blank and the address between
/// angle brackets, or a bare address.
///
/// Lenient, because names come from master data as people typed them: the address is the content of the last
/// pair of brackets in an entry, a ";" or "<" inside a quoted name is part of it, a quote that is never
/// closed is an ordinary character, and a piece without "@" before a bracketed entry belongs to that entry's
/// name. The ";" between two entries may be missing if the second one follows the ">" of an address without a
/// blank, or has no name. Entries with an empty address are skipped. Raises 5 when an address holds CR, LF or
/// NUL.
[[nodiscard]] std::vector<Address> ParseAddressList(std::string_view list);

/// The bare address in `text`, which may stand between angle brackets. Raises 5 when it holds CR, LF or NUL.
[[nodiscard]] std::string BareAddress(std::string_view text);

/// An address as it goes into a command or a header: the domain in its ASCII (IDN) form.
struct WireAddress {
  std::string text;
  bool needsUtf8 = false;  // the local part is not ASCII: only a server with SMTPUTF8 can take it
};

/// The wire form of `address`, or none when no command or header could carry it: empty, longer than a path
/// may be, blanks, control or special characters outside a quoted local part, a domain that has no ASCII
/// form.
[[nodiscard]] std::optional<WireAddress> ToWire(std::string_view address);

/// What two addresses of one mailbox have in common: only the domain is case-insensitive.
[[nodiscard]] std::string MailboxKey(std::string_view address);

/// The ASCII (IDN) form of a host or domain name; none when it has no such form. An ASCII name comes back as
/// it is.
[[nodiscard]] std::optional<std::string> AsciiDomain(std::string_view domain);

}  // namespace orve::adapters::mime
