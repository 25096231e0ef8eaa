// The company's directory as the program has it: asked over LDAP, and observed, because the library takes a
// failed look-up for nobody found and says nothing of it.
#pragma once

#include <memory>
#include <optional>

#include "host/directory.h"
#include "ldap/ldap_options.h"
#include "orve-mail/host/osservatori.h"

namespace orve::app {

/// The directory of these options; empty without them. Raises 5 for options that make no sense.
[[nodiscard]] std::shared_ptr<host::Directory> CreaDirectory(
    const std::optional<adapters::ldap::LdapOptions>& opzioni);

/// Without a directory one that knows nobody. `note` gets what ends a look-up, once for a server that is then
/// left alone; an attribute that a person does not have ends none.
[[nodiscard]] std::unique_ptr<host::Directory> OsservaDirectory(std::shared_ptr<host::Directory> vera,
                                                                OsservazioniPtr note);

}  // namespace orve::app
