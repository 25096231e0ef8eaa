// The company's directory on the command line. Its password comes from a file or from the environment, never
// from the command line, where other users of the machine could read it.
#pragma once

#include <optional>
#include <string>

#include "orve-mailserver/ldap/ldap_options.h"

namespace CLI {
class App;
}

namespace orve::app {

/// The options as given. They must outlive the command line.
struct DirectoryOptions {
  std::string server;
  std::string accesso;
  std::string utente;
  std::string filePassword;
  std::string ca;
  std::string base;
  bool senzaTls = false;
};

void AggiungiDirectory(CLI::App& comando, DirectoryOptions& opzioni);

/// The directory to ask; none when none is named, or when the command has no such options. Takes the password
/// out of the environment, so that no program started later gets it. Raises ErroreProgramma: kComandoErrato
/// for what makes no sense, kNonUtilizzabile for a password file that others can read, kFileMancante for
/// authorities that cannot be read.
[[nodiscard]] std::optional<adapters::ldap::LdapOptions> LeggiDirectory(const CLI::App& comando,
                                                                        const DirectoryOptions& opzioni);

}  // namespace orve::app
