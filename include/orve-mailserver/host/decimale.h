// A number with all its decimal digits, like automation's decimal numbers, and the form in which amounts and
// long codes come from a database: 96 bits of digits and up to 28 decimal places.
#pragma once

#include <string>
#include <string_view>

#include "orve-mailserver/api.h"

namespace orve::host {

/// Such a number, which does not change; compares by its value.
class ORVE_API Decimale {
 public:
  /// A number as a person writes it: a sign, digits with a point or a comma, an exponent, blanks around it.
  /// Places that do not fit are rounded, half to even. Raises 13 for what is not a number, 6
  /// beyond 79228162514264337593543950335.
  explicit Decimale(std::string_view testo);

  /// The shortest form with this decimal separator: "-12,5", never with an exponent.
  [[nodiscard]] std::string Testo(char virgola = ',') const;
  /// The nearest floating-point number.
  [[nodiscard]] double Numero() const;

  friend bool operator==(const Decimale&, const Decimale&) = default;

 private:
  bool negativo_ = false;
  std::string intere_;    // without leading zeros; never empty
  std::string decimali_;  // without trailing zeros
};

}  // namespace orve::host
