#include "orve-mail/terminal/terminale.h"

#include <algorithm>
#include <optional>

#include "mime/header_text.h"
#include "text/unseen.h"

namespace orve::app {

std::string TestoSicuro(std::string_view testo) {
  const std::string valido = adapters::mime::ValidUtf8(testo);
  return text::ReplaceUnseen(valido, [](char32_t codice, text::Unseen) -> std::optional<std::string> {
    if (codice == '\n') return std::nullopt;
    if (codice == '\r') return "";
    return codice == '\t' ? " " : text::Escaped(codice);
  });
}

std::string RigaSicura(std::string_view testo) {
  std::string riga = TestoSicuro(testo);
  std::replace(riga.begin(), riga.end(), '\n', ' ');
  return riga;
}

}  // namespace orve::app
