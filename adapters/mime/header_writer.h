// Header lines: encoding (RFC 2047, always UTF-8) and folding.
//
// GMime could write them too, but it guesses charsets, makes encoded words longer than allowed and lets some
// long values through as one line; a server that cuts such lines would break the message.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "mime/address_list.h"
#include "mime/message.h"

namespace orve::adapters::mime {

/// The header with free text, ended by CR LF. Control characters in it become blanks.
[[nodiscard]] std::string TextHeader(std::string_view name, std::string_view text);

/// The header with a list of mailboxes, one on each line, ended by CR LF. Raises 5 when an address is not fit
/// for it.
[[nodiscard]] std::string AddressHeader(std::string_view name, const std::vector<Address>& addresses);

/// A header of the caller's own. Those that hold mailboxes (Disposition-Notification-To and the like) keep
/// the brackets of their addresses. `utf8Addresses`: the message goes where addresses need not be ASCII.
/// Raises 5 when the caller may not use that name.
[[nodiscard]] std::string OwnHeader(const Header& header, bool utf8Addresses);

}  // namespace orve::adapters::mime
