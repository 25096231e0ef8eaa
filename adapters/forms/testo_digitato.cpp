#include "forms/testo_digitato.h"

#include <cstddef>

#include "text/text.h"

namespace orve::adapters::forms {

namespace {

// Every kind of line break as the one given.
std::string ConFineRiga(std::string_view testo, std::string_view fineRiga) {
  std::string risultato;
  risultato.reserve(testo.size());
  for (std::size_t i = 0; i < testo.size(); ++i) {
    const char c = testo[i];
    if (c != '\r' && c != '\n') {
      risultato.push_back(c);
      continue;
    }
    if (c == '\r' && i + 1 < testo.size() && testo[i + 1] == '\n') ++i;
    risultato.append(fineRiga);
  }
  return risultato;
}

}  // namespace

std::string TestoAccettato(std::string_view presente, std::string_view digitato, std::int32_t maxchar,
                           bool multiriga) {
  std::string testo = ConFineRiga(digitato, multiriga ? "\r\n" : " ");
  if (maxchar <= 0) return testo;
  const auto limite = static_cast<std::size_t>(maxchar);
  const std::size_t occupati = text::Length(presente);
  testo.resize(text::Left(testo, limite > occupati ? limite - occupati : 0).size());
  // Half a line break is not one.
  if (multiriga && !testo.empty() && testo.back() == '\r') testo.pop_back();
  return testo;
}

}  // namespace orve::adapters::forms
