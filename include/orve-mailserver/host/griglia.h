// The grid control: rows of a record set in columns.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/controlli.h"
#include "orve-mailserver/host/record_set_scollegato.h"

namespace orve::host {

/// Settings handed to a grid as one object.
class ORVE_API ConfigurazioneGriglia : public Oggetto {
 public:
  /// The field that identifies a row.
  virtual void ColonnaChiave(const std::string& campo) = 0;
  [[nodiscard]] virtual std::string ColonnaChiave() = 0;
  /// Whether the person selects whole rows.
  virtual void SelezioneRiga(bool attiva) = 0;
  [[nodiscard]] virtual bool SelezioneRiga() = 0;
};

/// A grid. It is configured once, from Configurazione to FineConfigurazione, and then bound to rows.
class ORVE_API KVL_QGRIDWRAPPER : public Controllo {
 public:
  /// Takes its settings from the object, and begins the configuration.
  virtual void Configurazione(const std::shared_ptr<ConfigurazioneGriglia>& configurazione) = 0;
  /// Columns that stay in place when the person scrolls sideways.
  virtual void ColonneFisse(std::int32_t numero) = 0;
  /// A column of the field given, with its caption, its position from 1, its width in twips and whether it is
  /// visible.
  virtual void AggiungiColonna(const std::string& campo, const std::string& didascalia, std::int32_t numero,
                               float larghezza, bool visibile) = 0;
  ///@{
  /// Ends the columns, then the configuration; until then the grid shows nothing.
  virtual void FineColonne() = 0;
  virtual void FineConfigurazione() = 0;
  ///@}
  /// Binds the grid to a record set and shows its rows as they are; an absent one clears the binding. The
  /// record set's current row is the selected one: the grid follows it, and moves it when the person selects
  /// a row.
  virtual void DataSource(const std::shared_ptr<RecordSetScollegato>& righe) = 0;
};

}  // namespace orve::host
