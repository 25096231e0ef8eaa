// The formatters of the host library: values in the form that the database expects inside a statement.
#pragma once

#include <cstdint>
#include <string>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/oggetto.h"
#include "orve-mailserver/host/variant.h"

namespace orve::host {

/// The form of dates. An object keeps the date that it was given last.
class ORVE_API FormatoData : public Oggetto {
 public:
  /// Sets the date from a text in the form of the regional settings.
  virtual void Data(const std::string& testo) = 0;
  /// 0 when the text given was a valid date.
  [[nodiscard]] virtual std::int32_t Stato() const = 0;
  /// The date as the database expects it, without quotes ("yyyymmdd").
  [[nodiscard]] virtual std::string DataDB() const = 0;
};

/// The form of numbers.
class ORVE_API FormatoNumero : public Oggetto {
 public:
  /// The number as the database expects it.
  [[nodiscard]] virtual Variant NumeroDB(const Variant& valore) = 0;
};

}  // namespace orve::host
