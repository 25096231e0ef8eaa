// A number with all its decimal digits, as automation's decimal numbers have them and amounts and long codes
// of a database come: 96 bits of digits and up to 28 places behind the point.
#pragma once

#include <string>
#include <string_view>

namespace orve::host {

class Decimale {
 public:
  /// A number as a person writes it: a sign, digits with a point or a comma, an exponent, blanks round it.
  /// Places that do not fit are rounded, a half to even. Raises 13 for what is no number, 6 beyond
  /// 79228162514264337593543950335.
  explicit Decimale(std::string_view testo);

  /// The digits with this decimal sign and no more than it takes: "-12,5", never with an exponent.
  [[nodiscard]] std::string Testo(char virgola = ',') const;
  [[nodiscard]] double Numero() const;

  friend bool operator==(const Decimale&, const Decimale&) = default;

 private:
  bool negativo_ = false;
  std::string intere_;    // without zeros in front; never empty
  std::string decimali_;  // without zeros at the end
};

}  // namespace orve::host
