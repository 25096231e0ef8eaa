#include "orve-mail/terminal/cella.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

#include "mime/header_text.h"
#include "text/unseen.h"

namespace orve::app {

namespace {

constexpr std::string_view kConfini = ",;\t\r\n";

// What a formula begins with, and the full-width forms that some programs accept as well.
bool ComeFormula(std::string_view pezzo) {
  constexpr std::array<std::string_view, 8> kInizi = {"=", "+", "-", "@", "＝", "＋", "－", "＠"};
  return std::any_of(kInizi.begin(), kInizi.end(),
                     [pezzo](std::string_view inizio) { return pezzo.starts_with(inizio); });
}

// An optional sign, digits, and at most one point or comma between them.
bool SembraNumero(std::string_view pezzo) {
  if (pezzo.starts_with('-') || pezzo.starts_with('+')) pezzo.remove_prefix(1);
  const auto cifra = [](char c) { return c >= '0' && c <= '9'; };
  const auto* const fine = std::find_if_not(pezzo.begin(), pezzo.end(), cifra);
  if (fine == pezzo.begin()) return false;
  if (fine == pezzo.end()) return true;
  return (*fine == '.' || *fine == ',') && fine + 1 != pezzo.end() &&
         std::all_of(fine + 1, pezzo.end(), cifra);
}

}  // namespace

std::string CellaInerte(std::string_view testo) {
  std::string visibile = text::ReplaceUnseen(
      adapters::mime::ValidUtf8(testo), [](char32_t codice, text::Unseen) -> std::optional<std::string> {
        const bool confine = codice == '\t' || codice == '\r' || codice == '\n';
        return confine ? std::nullopt : std::optional(text::Escaped(codice));
      });
  if (SembraNumero(visibile)) return visibile;
  std::string cella;
  for (std::string_view resto = visibile; !resto.empty();) {
    // Blanks and quotes before a formula do not stop every reader.
    const std::size_t inizio = std::min(resto.find_first_not_of(" \""), resto.size());
    const std::size_t fine = std::min(resto.find_first_of(kConfini, inizio), resto.size());
    const std::string_view pezzo = resto.substr(inizio, fine - inizio);
    cella.append(resto.substr(0, inizio));
    if (ComeFormula(pezzo) && !SembraNumero(pezzo)) cella.push_back('\'');
    cella.append(pezzo).append(resto.substr(fine, 1));
    resto.remove_prefix(std::min(fine + 1, resto.size()));
  }
  // Some programs skip a leading tab or line end.
  if (!visibile.empty() && kConfini.substr(2).find(visibile.front()) != std::string_view::npos) {
    cella.insert(cella.begin(), '\'');
  }
  return cella;
}

}  // namespace orve::app
