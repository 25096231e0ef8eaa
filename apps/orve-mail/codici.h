// What a code from outside may be.
//
// The library joins codes into its statements as they are. So whatever comes from a row of a list or from an
// option is first checked against what its column can hold: text that is not a code would become part of a
// statement.
#pragma once

#include <string>
#include <string_view>

#include "service/enumerations.h"

namespace orve::app {

/// Why the text is not a recipient's code of this kind, for a person: "non è un numero". Empty: it is one, or
/// the kind accepts any text because none of it gets into a statement.
[[nodiscard]] std::string DifettoDelCodice(kvTipologiaDestinatarioFAX tipo, std::string_view codice);

/// The same for the code of an application user or of a group.
[[nodiscard]] std::string DifettoDelCodiceUtente(std::string_view codice);

/// The same for a company's number.
[[nodiscard]] std::string DifettoDellaDitta(std::string_view ditta);

}  // namespace orve::app
