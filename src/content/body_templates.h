// Which body a message carries, and the placeholders in it.
#pragma once

#include <string>
#include <string_view>

#include "service/contesto.h"
#include "service/impostazioni.h"
#include "service/messaggio.h"
#include "service/oggetti.h"

namespace orve {

/// The notice as it is, with its placeholders and line ends of carriage return and line feed.
[[nodiscard]] std::string_view CorpoStandard();

/// The body of the message, filled. Raises what the look-ups for the placeholders raise where the body is the
/// caller's own.
[[nodiscard]] std::string GetCorpoMail(const Messaggio& messaggio, const Impostazioni& impostazioni,
                                       Contesto& contesto, const Oggetti& oggetti);

/// The notice, or the standing message in its place. Never raises: if it cannot be filled, the result is the
/// notice with its placeholders, or empty.
[[nodiscard]] std::string GetCorpoStandard(const Messaggio& messaggio, const Impostazioni& impostazioni,
                                           Contesto& contesto, const Oggetti& oggetti);

/// The text with its thirteen placeholders filled. Raises what the look-ups of user and group raise.
[[nodiscard]] std::string CompilaTestoMail(const Messaggio& messaggio, Contesto& contesto,
                                           const Oggetti& oggetti, const std::string& testo);

}  // namespace orve
