// The host application's interface object in the program's version: its message object and the logged-in
// user.
#pragma once

#include <cstdint>
#include <memory>

#include "orve-mailserver/host/interfaccia_host.h"

namespace orve::app {

/// An interface whose application has this user and this message object, which may be absent.
[[nodiscard]] std::shared_ptr<host::InterfacciaHost> CreaInterfaccia(
    std::int32_t idUtente, std::shared_ptr<host::Messaggi> messaggi);

}  // namespace orve::app
