// What the client calls itself in EHLO.
#pragma once

#include <sys/socket.h>

#include <optional>
#include <string>
#include <string_view>

namespace orve::adapters::smtp {

/// Whether the text has only characters of host names and address literals, and at least one.
[[nodiscard]] bool IsAddressLiteralOrName(std::string_view name);

/// `wanted` when it is such a name, else the machine's when it is a full one: many servers refuse a name
/// without a domain. None when neither is.
[[nodiscard]] std::optional<std::string> HelloName(const std::string& wanted);

/// The address literal ("[192.0.2.7]", "[IPv6:2001:db8::7]") of the address from which this machine would
/// reach the server; nothing is sent for it. None when there is no way to it.
[[nodiscard]] std::optional<std::string> OwnAddressTowards(const sockaddr& server, socklen_t size);

}  // namespace orve::adapters::smtp
