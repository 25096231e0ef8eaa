// The formatters of a host that brings none of its own: values as SQL Server reads them under every language
// setting.
#pragma once

#include <optional>
#include <string>

#include "host/data_ora.h"
#include "host/formatori.h"

namespace orve::adapters::forms {

class FormatoDataSql : public host::FormatoData {
 public:
  /// A date in the Italian form: day, month and year of four digits between "/", "-" or ".", with or without
  /// the time of day behind a blank.
  void Data(const std::string& testo) override;
  /// 0 good date, 1 none, or one that SQL Server's dates do not reach (before 1753).
  [[nodiscard]] std::int32_t Stato() const override;
  /// "yyyymmdd"; empty while there is no good date.
  [[nodiscard]] std::string DataDB() const override;

 private:
  std::optional<host::DataOra> data_;
};

class FormatoNumeroSql : public host::FormatoNumero {
 public:
  /// The number in decimal digits with a point, never with an exponent, as a text. A text may have a comma or
  /// a point as its decimal sign. Raises 13 for what is no number.
  [[nodiscard]] host::Variant NumeroDB(const host::Variant& valore) override;
};

}  // namespace orve::adapters::forms
