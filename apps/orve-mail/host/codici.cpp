#include "orve-mail/host/codici.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "text/text.h"
#include "text/unseen.h"

namespace orve::app {

namespace {

// The columns' widths.
constexpr std::size_t kAgente = 10;
constexpr std::size_t kDestinazione = 20;
constexpr std::size_t kUtente = 20;
constexpr std::size_t kCifreNumero = 10;
constexpr std::size_t kCifreDitta = 9;

std::string DifettoDelNumero(std::string_view numero, std::size_t massimo) {
  const bool cifre = !numero.empty() &&
                     std::all_of(numero.begin(), numero.end(), [](char c) { return c >= '0' && c <= '9'; });
  if (!cifre) return "non è un numero";
  return numero.size() > massimo ? "ha più di " + std::to_string(massimo) + " cifre" : "";
}

std::string DifettoDelTesto(std::string_view testo, std::size_t massimo) {
  if (testo.empty()) return "è vuoto";
  if (testo.find('\'') != std::string_view::npos) return "contiene un apostrofo";
  text::Unseen nascosto = text::Unseen::kNo;
  static_cast<void>(text::ReplaceUnseen(testo, [&nascosto](char32_t, text::Unseen genere) {
    nascosto = genere;
    return std::optional<std::string>();
  }));
  if (nascosto == text::Unseen::kControl) return "contiene caratteri di controllo";
  if (nascosto == text::Unseen::kFormat) return "contiene caratteri invisibili";
  return text::Length(testo) > massimo ? "ha più di " + std::to_string(massimo) + " caratteri" : "";
}

// Company, partner, 0 or 1, destination; the last may contain further slashes.
std::string DifettoDellaDestinazione(std::string_view codice) {
  std::array<std::string_view, 3> parti;
  for (std::string_view& parte : parti) {
    const std::size_t fine = codice.find('/');
    if (fine == std::string_view::npos) return "non ha quattro parti separate da «/»";
    parte = codice.substr(0, fine);
    codice.remove_prefix(fine + 1);
  }
  if (!DifettoDellaDitta(parti[0]).empty() || !DifettoDelNumero(parti[1], kCifreNumero).empty()) {
    return "non comincia con i numeri della ditta e del cliente o fornitore";
  }
  if (parti[2] != "0" && parti[2] != "1") return "non ha 0 (cliente) o 1 (fornitore) come terza parte";
  const std::string difetto = DifettoDelTesto(codice, kDestinazione);
  return difetto.empty() ? difetto : "ha come quarta parte un codice che " + difetto;
}

}  // namespace

std::optional<kvTipologiaDestinatarioFAX> TipoDaNome(std::string_view nome) {
  const auto* const tipo = std::find_if(kTipiDiCodice.begin(), kTipiDiCodice.end(),
                                        [nome](const TipoDiCodice& voce) { return voce.nome == nome; });
  if (tipo == kTipiDiCodice.end()) return std::nullopt;
  return tipo->tipo;
}

std::string DifettoDelCodice(kvTipologiaDestinatarioFAX tipo, std::string_view codice) {
  switch (tipo) {
    case kvDestinatarioFaxAgente:
      return DifettoDelTesto(codice, kAgente);
    case kvDestinatarioFaxDestinatario:
      return DifettoDellaDestinazione(codice);
    case kvDestinatarioFaxNumero:
      return "";
    default:
      return DifettoDelNumero(codice, kCifreNumero);
  }
}

std::string DifettoDelCodiceUtente(std::string_view codice) {
  return DifettoDelTesto(codice, kUtente);
}

std::string DifettoDellaDitta(std::string_view ditta) {
  return DifettoDelNumero(ditta, kCifreDitta);
}

}  // namespace orve::app
