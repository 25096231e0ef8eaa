// A point in local time as automation represents it: days since 30 December 1899, the time of day in the
// fraction.
#pragma once

#include <cstdint>
#include <string>

namespace orve::host {

struct DataOra {
  double giorni = 0;  // 0 is "no date"

  /// Local civil time to DataOra; day and month count from 1.
  static DataOra Da(int anno, int mese, int giorno, int ora = 0, int minuto = 0, int secondo = 0);

  /// Whole days only: the date part, without the time of day.
  [[nodiscard]] DataOra SoloData() const;
  /// False when the date part is 0.
  [[nodiscard]] bool HaData() const;

  friend bool operator==(const DataOra&, const DataOra&) = default;
};

/// The civil fields of a DataOra, rounded to the second.
struct CampiDataOra {
  int anno, mese, giorno, ora, minuto, secondo;
};
[[nodiscard]] CampiDataOra Campi(DataOra istante);

/// "dd/mm/yyyy".
[[nodiscard]] std::string TestoGiornoMeseAnno(DataOra istante);
/// "hh:mm:ss".
[[nodiscard]] std::string TestoOraMinutiSecondi(DataOra istante);

}  // namespace orve::host
