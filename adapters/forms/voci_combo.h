// The entries of a combo box and the one selected, as every toolkit keeps them. Nothing here raises an event:
// the control does, once the list is complete.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "orve-mailserver/host/variant.h"

namespace orve::adapters::forms {

class VociCombo {
 public:
  struct Voce {
    std::string testo;
    std::int16_t dati = 0;
  };

  /// Empties the list; nothing is selected afterwards.
  void Svuota();
  /// Raises 6 when the list is full: a position is a 16-bit number.
  void Aggiungi(const std::string& testo, std::int16_t dati);
  /// The data of the selected entry, as text; empty when none is selected.
  [[nodiscard]] std::string Valore() const;
  /// Selects the first entry with these data, given as a number or as its text, or none.
  void SelezionaValore(const host::Variant& valore);
  /// Both raise 9 when there is no such position.
  [[nodiscard]] std::string Chiave(std::int16_t posizione) const;
  void SelezionaPosizione(std::int16_t posizione);

  [[nodiscard]] const std::vector<Voce>& Voci() const { return voci_; }
  /// -1 for none.
  [[nodiscard]] std::int16_t Selezionata() const { return selezionata_; }

 private:
  [[nodiscard]] const Voce& VoceA(std::int16_t posizione) const;

  std::vector<Voce> voci_;
  std::int16_t selezionata_ = -1;
};

}  // namespace orve::adapters::forms
