// The company's directory as the program has it: asked over LDAP, and observed, because the library takes a
// failed look-up for nobody found and says nothing of it.
#pragma once

#include <memory>
#include <optional>

#include "host/directory.h"
#include "ldap/ldap_options.h"
#include "orve-mail/osservatori.h"

namespace orve::app {

/// Without options a directory that knows nobody. Raises 5 for options that make no sense. `note` gets what
/// ends a look-up; an attribute that a person does not have does not.
[[nodiscard]] std::unique_ptr<host::Directory> ApriDirectory(
    const std::optional<adapters::ldap::LdapOptions>& opzioni, OsservazioniPtr note);

}  // namespace orve::app
