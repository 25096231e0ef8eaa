// The ready set of outside objects as the program has it: its terminal, its name, and what it observes.
#pragma once

#include <memory>
#include <optional>

#include "orve-mail/host/allegati.h"
#include "orve-mail/host/osservazioni.h"
#include "orve-mail/host/password_in_chiaro.h"
#include "orve-mail/terminal/terminale.h"
#include "orve-mailserver/ambiente/ambiente.h"

namespace orve::app {

/// What is the same for every command, to be completed with what one chooses. The terminal's streams and
/// trace must outlive the set.
[[nodiscard]] adapters::ambiente::Options OpzioniDelProgramma(Terminale terminale,
                                                              const OsservazioniPtr& note);

/// Which servers may get a password without encryption, and what the person is told to do when a stored
/// password or server fails: on the company's own server it is in other hands.
void ScegliPermessi(adapters::ambiente::Options& opzioni, const PermessiInChiaro& permessi, bool suOdbc);

/// Sends these files and no others; the register names them and not their copies.
void ScegliAllegati(adapters::ambiente::Options& opzioni, const std::shared_ptr<Allegati>& allegati);

/// The company's directory; empty without options. Raises 5 for options that make no sense.
[[nodiscard]] std::shared_ptr<host::Directory> CreaDirectory(
    const std::optional<adapters::ldap::LdapOptions>& opzioni);

}  // namespace orve::app
