#include "forms/lettura_tavola.h"

#include <algorithm>
#include <limits>

#include "text/text.h"

namespace orve::adapters::forms {

namespace {

bool PrendeTastiera(host::TipoControllo tipo) {
  using enum host::TipoControllo;
  return tipo != kFrame && tipo != kEtichetta && tipo != kKvlLabel && tipo != kResizeForm;
}

const host::LayoutControllo* CorniceDi(const host::LayoutForm& form, const host::LayoutControllo& controllo) {
  const auto trovata =
      std::find_if(form.controlli.begin(), form.controlli.end(), [&](const host::LayoutControllo& uno) {
        return !controllo.cornice.empty() && text::EqualsIgnoreCase(uno.nome, controllo.cornice);
      });
  return trovata == form.controlli.end() ? nullptr : &*trovata;
}

std::string Detto(std::string_view didascalia) {
  std::string testo = text::Replace(didascalia, "&", "");
  while (testo.ends_with('.')) testo.pop_back();
  return std::string(text::Trim(testo));
}

}  // namespace

std::vector<const host::LayoutControllo*> OrdineDiTastiera(const host::LayoutForm& form) {
  std::vector<const host::LayoutControllo*> ordine;
  for (const auto& controllo : form.controlli) {
    const auto* cornice = CorniceDi(form, controllo);
    const bool fuori = cornice != nullptr && controllo.posizione.top >= cornice->posizione.height;
    if (PrendeTastiera(controllo.tipo) && controllo.tabIndex >= 0 && !fuori) ordine.push_back(&controllo);
  }
  std::stable_sort(ordine.begin(), ordine.end(),
                   [](const auto* a, const auto* b) { return a->tabIndex < b->tabIndex; });
  return ordine;
}

std::string NomeAccessibile(const host::LayoutForm& form, const host::LayoutControllo& controllo) {
  std::string nome = Detto(controllo.didascalia);
  if (!nome.empty()) return nome;
  const auto& r = controllo.posizione;
  float vicino = std::numeric_limits<float>::max();
  for (const auto& altro : form.controlli) {
    const auto& a = altro.posizione;
    const bool accanto = &altro != &controllo && text::EqualsIgnoreCase(altro.cornice, controllo.cornice) &&
                         !altro.didascalia.empty() && a.left < r.left && a.top < r.top + r.height &&
                         r.top < a.top + a.height;
    if (!accanto || r.left - a.left >= vicino) continue;
    vicino = r.left - a.left;
    nome = Detto(altro.didascalia);
  }
  return nome;
}

bool DidascalieCiStanno(const host::LayoutForm& form, const Contorno& contorno,
                        const std::function<int(const std::string&)>& larghezza, int dpi) {
  using enum host::TipoControllo;
  return std::all_of(form.controlli.begin(), form.controlli.end(), [&](const host::LayoutControllo& uno) {
    if (uno.tipo == kFrame || uno.didascalia.empty() || uno.posizione.width <= 0) return true;
    const int testo = larghezza(text::Replace(text::TrimRight(uno.didascalia), "&", ""));
    const int intorno = uno.tipo == kCheckBox   ? contorno.spunta
                        : uno.tipo == kTbarMenu ? contorno.pulsante
                                                : 0;
    return testo + intorno <= Pixel(uno.posizione.width, dpi);
  });
}

std::string TitoloConProgramma(const std::string& testo, const std::string& programma) {
  const std::string coda = " - " + programma;
  return programma.empty() || testo.ends_with(coda) ? testo : testo + coda;
}

}  // namespace orve::adapters::forms
