// The formatters of a host that brings none of its own: values as SQL Server reads them under every language
// setting.
#pragma once

#include <optional>
#include <string>

#include "orve-mailserver/host/data_ora.h"
#include "orve-mailserver/host/formatori.h"

namespace orve::adapters::values {

class FormatoDataSql : public host::FormatoData {
 public:
  /// A date in the Italian form: day, month and year of four digits between "/", "-" or ".", optionally
  /// followed by a blank and the time of day.
  void Data(const std::string& testo) override;
  /// 0: a valid date; 1: none, or one outside the range of SQL Server's dates (before 1753).
  [[nodiscard]] std::int32_t Stato() const override;
  /// "yyyymmdd"; empty as long as there is no valid date.
  [[nodiscard]] std::string DataDB() const override;

 private:
  std::optional<host::DataOra> data_;
};

class FormatoNumeroSql : public host::FormatoNumero {
 public:
  /// The number in decimal digits with a point, never with an exponent, as a text. A text may have a comma or
  /// a point as its decimal sign. Raises 13 for what is not a number.
  [[nodiscard]] host::Variant NumeroDB(const host::Variant& valore) override;
};

}  // namespace orve::adapters::values
