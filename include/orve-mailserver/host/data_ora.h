// A point in local time as automation represents it: days since 30 December 1899, the time of day in the
// fraction.
#pragma once

#include <cstdint>
#include <string>

#include "orve-mailserver/api.h"

namespace orve::host {

/// Such a point in time; compares by its value.
struct ORVE_API DataOra {
  double giorni = 0;  ///< days since 30 December 1899; 0 is "no date"

  /// Local civil time to DataOra; day and month count from 1.
  static DataOra Da(int anno, int mese, int giorno, int ora = 0, int minuto = 0, int secondo = 0);

  /// Whole days only: the date part, without the time of day.
  [[nodiscard]] DataOra SoloData() const;
  /// False when the date part is 0.
  [[nodiscard]] bool HaData() const;

  friend bool operator==(const DataOra&, const DataOra&) = default;
};

/// The civil fields of a DataOra, rounded to the second.
struct ORVE_API CampiDataOra {
  int anno;     ///< with its century
  int mese;     ///< from 1
  int giorno;   ///< of the month, from 1
  int ora;      ///< from 0 to 23
  int minuto;   ///< from 0
  int secondo;  ///< from 0
};
[[nodiscard]] ORVE_API CampiDataOra Campi(DataOra istante);

/// "dd/mm/yyyy".
[[nodiscard]] ORVE_API std::string TestoGiornoMeseAnno(DataOra istante);
/// "hh:mm:ss".
[[nodiscard]] ORVE_API std::string TestoOraMinutiSecondi(DataOra istante);

}  // namespace orve::host
