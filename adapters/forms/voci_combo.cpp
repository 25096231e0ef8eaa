#include "forms/voci_combo.h"

#include "orve-mailserver/host/errore.h"

namespace orve::adapters::forms {

namespace {

constexpr std::size_t kVociMassime = 32768;  // positions 0 to 32767

}  // namespace

void VociCombo::Svuota() {
  voci_.clear();
  selezionata_ = -1;
}

void VociCombo::Aggiungi(const std::string& testo, std::int16_t dati) {
  if (voci_.size() >= kVociMassime) throw host::Errore(host::kOverflow);
  voci_.push_back({testo, dati});
}

std::string VociCombo::Valore() const {
  return selezionata_ < 0 ? std::string() : Chiave(selezionata_);
}

void VociCombo::SelezionaValore(const host::Variant& valore) {
  selezionata_ = -1;
  const std::string cercato = valore.ToText();
  for (std::size_t i = 0; i < voci_.size(); ++i) {
    if (std::to_string(voci_[i].dati) != cercato) continue;
    selezionata_ = static_cast<std::int16_t>(i);
    return;
  }
}

std::string VociCombo::Chiave(std::int16_t posizione) const {
  return std::to_string(VoceA(posizione).dati);
}

void VociCombo::SelezionaPosizione(std::int16_t posizione) {
  static_cast<void>(VoceA(posizione));
  selezionata_ = posizione;
}

const VociCombo::Voce& VociCombo::VoceA(std::int16_t posizione) const {
  const bool esiste = posizione >= 0 && static_cast<std::size_t>(posizione) < voci_.size();
  if (!esiste) throw host::Errore(host::kIndiceFuoriIntervallo);
  return voci_[static_cast<std::size_t>(posizione)];
}

}  // namespace orve::adapters::forms
