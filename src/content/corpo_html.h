// Mail as HTML with the user's signature, where the company asks for it in its settings.
#pragma once

#include <cstdint>
#include <string>

#include "service/contesto.h"
#include "service/oggetti.h"

namespace orve {

/// Whether the company asks for HTML. A failure is reported by message and counts as no.
[[nodiscard]] bool EsisteParamHTMLFW95(const Contesto& contesto, const Oggetti& oggetti);

/// The body as an HTML document, with the user's signature after it. A body that
/// cannot be made is reported by message and left out, a signature that cannot be read is left out silently.
[[nodiscard]] std::string CorpoHTMLConFirma(const Contesto& contesto, const Oggetti& oggetti,
                                            const std::string& corpo);

// Its steps.

/// The setting that names the table of signatures, as FW95_VALORE.
inline constexpr const char* kStatementTabellaFirme =
    " SELECT FW95_VALORE FROM FW95_SETTINGS WITH (NOLOCK) "
    " WHERE FW95_CODICE = 'AIT_FIRME' ";
/// Name of the table of signatures; empty when there is none.
[[nodiscard]] std::string TabellaFirmeFW95(const Contesto& contesto, const Oggetti& oggetti);

struct FirmaUtente {
  std::string testo;
  std::string font;             // empty: the standard one
  std::int16_t dimensione = 0;  // of HTML's font sizes, 1 to 7; 0: the standard one
};
/// The signature of the logged-in user. What cannot be read is left out in silence.
[[nodiscard]] FirmaUtente GetFirmaUtente(const Contesto& contesto, const Oggetti& oggetti,
                                         const std::string& tabella);

[[nodiscard]] std::string TestoInHTML(const Oggetti& oggetti, const std::string& testo,
                                      const std::string& font, std::int32_t dimensione);

}  // namespace orve
