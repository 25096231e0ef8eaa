#include "odbc/wide_text.h"

#include <array>
#include <codecvt>
#include <locale>

#include "odbc/handles.h"

namespace orve::adapters::odbc {

namespace {

using Conversion = std::codecvt<char16_t, char8_t, std::mbstate_t>;

constexpr std::string_view kSostituto = "\xEF\xBF\xBD";  // U+FFFD

const Conversion& DiSistema() {
  return std::use_facet<Conversion>(std::locale::classic());
}

}  // namespace

std::u16string Largo(std::string_view testo) {
  std::u16string largo(testo.size(), u'\0');  // never more units than bytes
  const auto* inizio = reinterpret_cast<const char8_t*>(testo.data());
  const char8_t* letto = inizio;
  char16_t* scritto = largo.data();
  std::mbstate_t stato{};
  const auto esito = DiSistema().in(stato, inizio, inizio + testo.size(), letto, largo.data(),
                                    largo.data() + largo.size(), scritto);
  if (!testo.empty() && (esito != std::codecvt_base::ok || letto != inizio + testo.size())) {
    throw host::Errore(rows::kArgomentiErrati, kSorgente, "Il testo per il database non è UTF-8 valido");
  }
  largo.resize(static_cast<std::size_t>(scritto - largo.data()));
  return largo;
}

std::string Stretto(std::u16string_view testo) {
  std::string stretto;
  stretto.reserve(testo.size());
  std::array<char8_t, 512> tratto{};
  const char16_t* letto = testo.data();
  const char16_t* const fine = testo.data() + testo.size();
  while (letto != fine) {
    std::mbstate_t stato{};
    const char16_t* prossimo = letto;
    char8_t* scritto = tratto.data();
    const auto esito =
        DiSistema().out(stato, letto, fine, prossimo, tratto.data(), tratto.data() + tratto.size(), scritto);
    stretto.append(reinterpret_cast<const char*>(tratto.data()),
                   static_cast<std::size_t>(scritto - tratto.data()));
    // Whatever the library calls it: where nothing more can be read there is half a pair.
    if (prossimo == letto || esito == std::codecvt_base::error) {
      stretto += kSostituto;
      ++prossimo;
    }
    letto = prossimo;
  }
  return stretto;
}

}  // namespace orve::adapters::odbc
