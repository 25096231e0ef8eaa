// The company's directory as the program has it: queried over LDAP, and observed, because the library treats
// a failed look-up as "nobody found" and does not report it.
#pragma once

#include <memory>
#include <optional>

#include "orve-mail/host/osservatori.h"
#include "orve-mailserver/host/directory.h"
#include "orve-mailserver/ldap/ldap_options.h"

namespace orve::app {

/// The directory of these options; empty without them. Raises 5 for options that make no sense.
[[nodiscard]] std::shared_ptr<host::Directory> CreaDirectory(
    const std::optional<adapters::ldap::LdapOptions>& opzioni);

/// Without a directory, one that knows nobody. `note` gets what ended a look-up, only once for a server that
/// is then left alone; an attribute that a person does not have does not end one.
[[nodiscard]] std::unique_ptr<host::Directory> OsservaDirectory(std::shared_ptr<host::Directory> vera,
                                                                OsservazioniPtr note);

}  // namespace orve::app
