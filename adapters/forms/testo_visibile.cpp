#include "forms/testo_visibile.h"

#include <optional>

#include "text/unseen.h"

namespace orve::adapters::forms {

std::string TestoVisibile(std::string_view testo) {
  return text::ReplaceUnseen(testo, [](char32_t codice, text::Unseen) -> std::optional<std::string> {
    const bool spazio = codice == '\t' || codice == '\r' || codice == '\n';
    return spazio ? std::nullopt : std::optional(text::Escaped(codice));
  });
}

}  // namespace orve::adapters::forms
