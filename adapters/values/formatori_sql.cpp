#include "values/formatori_sql.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <string>
#include <type_traits>

#include "orve-mailserver/host/errore.h"
#include "orve-mailserver/host/variant.h"

namespace orve::adapters::values {

void FormatoDataSql::Data(const std::string& testo) {
  constexpr int kPrimoAnno = 1753;
  std::string italiana = testo;
  // Only the date's own separators: a time of day keeps its form.
  const auto fineData =
      italiana.begin() + static_cast<std::ptrdiff_t>(
                             std::min(italiana.find(' ', italiana.find_first_not_of(' ')), italiana.size()));
  std::replace_if(
      italiana.begin(), fineData, [](char c) { return c == '-' || c == '.'; }, '/');
  data_.reset();
  try {
    const host::DataOra letta = host::Variant(italiana).ToDate();
    if (host::Campi(letta).anno >= kPrimoAnno) data_ = letta;
  } catch (const host::Errore&) {  // NOLINT(bugprone-empty-catch): Stato tells
  }
}

std::int32_t FormatoDataSql::Stato() const {
  return data_ ? 0 : 1;
}

std::string FormatoDataSql::DataDB() const {
  if (!data_) return {};
  const host::CampiDataOra campi = host::Campi(*data_);
  std::array<char, 40> testo{};
  std::snprintf(testo.data(), testo.size(), "%04d%02d%02d", campi.anno, campi.mese, campi.giorno);
  return testo.data();
}

host::Variant FormatoNumeroSql::NumeroDB(const host::Variant& valore) {
  const std::string intero = valore.Visita([](const auto& contenuto) {
    if constexpr (std::is_same_v<std::decay_t<decltype(contenuto)>, host::Decimale>) {
      return contenuto.Testo('.');
    } else {
      return std::string();
    }
  });
  if (!intero.empty()) return intero;
  // Long enough for the largest number without an exponent.
  std::array<char, 400> cifre{};
  const auto [fine, esito] =
      std::to_chars(cifre.data(), cifre.data() + cifre.size(), valore.ToDouble(), std::chars_format::fixed);
  if (esito != std::errc{}) throw host::Errore(host::kOverflow);
  return std::string(cifre.data(), fine);
}

}  // namespace orve::adapters::values
