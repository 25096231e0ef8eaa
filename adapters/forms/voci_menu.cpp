#include "forms/voci_menu.h"

#include "orve-mailserver/host/errore.h"
#include "text/text.h"

namespace orve::adapters::forms {

void VociMenu::Aggiungi(const std::string& didascalia, const std::string& chiave) {
  bool attiva = true;
  const auto posizione = static_cast<std::int32_t>(voci_.size()) + 1;
  if (const auto attesa = attesePerPosizione_.find(posizione); attesa != attesePerPosizione_.end()) {
    attiva = attesa->second;
  }
  if (const auto attesa = attesePerChiave_.find(text::FoldCase(chiave)); attesa != attesePerChiave_.end()) {
    attiva = attesa->second;
  }
  voci_.push_back({didascalia, chiave, attiva});
}

void VociMenu::Abilita(const host::Variant& chiaveOPosizione, bool attiva) {
  if (chiaveOPosizione.IsText()) {
    const std::string chiave = chiaveOPosizione.ToText();
    attesePerChiave_[text::FoldCase(chiave)] = attiva;
    for (auto& voce : voci_) {
      if (text::EqualsIgnoreCase(voce.chiave, chiave)) voce.attiva = attiva;
    }
    return;
  }
  const std::int32_t posizione = chiaveOPosizione.ToInt32();
  if (posizione < 1) throw host::Errore(host::kIndiceFuoriIntervallo);
  attesePerPosizione_[posizione] = attiva;
  const auto indice = static_cast<std::size_t>(posizione) - 1;
  if (indice < voci_.size()) voci_[indice].attiva = attiva;
}

const VoceMenu* VociMenu::ConChiave(const std::string& chiave) const {
  for (const auto& voce : voci_) {
    if (text::EqualsIgnoreCase(voce.chiave, chiave)) return &voce;
  }
  return nullptr;
}

}  // namespace orve::adapters::forms
