// What a code can be that comes from outside.
//
// The library joins codes into its statements as they stand. So whatever a row of a list or an option brings
// is held against what the column behind it can hold before it gets there: a text that is no code would be a
// piece of a statement.
#pragma once

#include <string>
#include <string_view>

#include "service/enumerations.h"

namespace orve::app {

/// Why the text is no recipient's code of this kind, for a person: "non è un numero". Empty: it is one, or
/// the kind takes any text because none of it gets into a statement.
[[nodiscard]] std::string DifettoDelCodice(kvTipologiaDestinatarioFAX tipo, std::string_view codice);

/// The same for the code of an application user or of a group.
[[nodiscard]] std::string DifettoDelCodiceUtente(std::string_view codice);

/// The same for a company's number.
[[nodiscard]] std::string DifettoDellaDitta(std::string_view ditta);

}  // namespace orve::app
