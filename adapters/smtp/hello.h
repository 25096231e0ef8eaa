// What the client calls itself in EHLO.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orve::adapters::smtp {

/// Whether the text is not empty and consists of characters of host names and address literals.
[[nodiscard]] bool IsAddressLiteralOrName(std::string_view name);

/// `wanted` when it is such a name, else the machine's name when it is fully qualified: many servers refuse a
/// name without a domain. None when neither is.
[[nodiscard]] std::optional<std::string> HelloName(const std::string& wanted);

/// The address literal ("[192.0.2.7]", "[IPv6:2001:db8::7]") of this end of the connection. None when it has
/// no such address.
[[nodiscard]] std::optional<std::string> OwnAddress(int socket);

}  // namespace orve::adapters::smtp
