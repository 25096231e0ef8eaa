// Who receives, as the command line says it: one code of a kind, or addresses in three boxes.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "orve-mail/host/spedizione.h"

namespace CLI {
class App;
}

namespace orve::app {

/// The options as given, before they are checked. They must outlive the command line.
struct RecipientOptions {
  std::map<std::string, std::string> codici;  // by the name of the kind
  std::vector<std::string> a, cc, ccn;
};

/// An option for each kind of code: --cliente, --fornitore, ...
void AggiungiCodici(CLI::App& comando, RecipientOptions& opzioni);
/// --a, --cc, --ccn, each any number of times.
void AggiungiIndirizzi(CLI::App& comando, RecipientOptions& opzioni);

/// The one code given, if any. Raises ErroreProgramma (kComandoErrato), also for more than one.
[[nodiscard]] std::optional<CodiceDestinatario> LeggiCodice(const CLI::App& comando,
                                                            const RecipientOptions& opzioni);
/// The addresses, in the order A, CC, CCn. Raises ErroreProgramma (kComandoErrato).
[[nodiscard]] std::vector<DestinatarioInCasella> LeggiIndirizzi(const RecipientOptions& opzioni);

}  // namespace orve::app
