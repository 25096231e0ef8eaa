// The send log: one fixed-width line for each send that fails while nobody is there to see a message, in one
// file per day.
//
// The form of the file and of its lines is fixed: people and other programs read it by column.
#pragma once

#include <cstdint>
#include <string>

#include "orve-mailserver/host/variant.h"
#include "service/impostazioni.h"
#include "service/messaggio.h"
#include "service/oggetti.h"

namespace orve {

/// Appends a line to the log of the day in the temporary directory: status 0 no error, 1 address missing, 2
/// failed in the procedure `metodo`. Never fails, and writes nothing where the directory is missing.
void ScriviLogInvio(const Messaggio& messaggio, const Impostazioni& impostazioni, Oggetti& oggetti,
                    std::int32_t stato, const std::string& metodo);

/// The value, trimmed on both sides, in exactly `larghezza` characters: padded with blanks, or cut. Empty for
/// a null or empty value, for one that has no text form, and for a width below 0. Never fails.
[[nodiscard]] std::string FormattaCampoLog(const host::Variant& valore, std::int16_t larghezza);

/// What follows the last `\` of a path. A text without any loses its first character: "report.pdf" gives
/// "eport.pdf". Raises the errors of Variant::ToText.
[[nodiscard]] std::string EstraiNomeFile(const host::Variant& percorso);

}  // namespace orve
