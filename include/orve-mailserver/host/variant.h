// A value of any type, with automation's conversions and their errors: 6 overflow, 13 type mismatch, 94 null
// where a value is needed.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/data_ora.h"
#include "orve-mailserver/host/decimale.h"
#include "orve-mailserver/host/oggetto.h"

namespace orve::host {

/// The database's null, different from a value that was never set.
struct ORVE_API Null {
  friend bool operator==(const Null&, const Null&) = default;
};

/// The value. It owns what it holds; an object is shared.
class ORVE_API Variant {
 public:
  /// An array, counted from 0; its items may be of different types.
  using Array = std::vector<Variant>;
  /// An object, which may be absent.
  using OggettoPtr = std::shared_ptr<Oggetto>;

  Variant() = default;  ///< empty
  ///@{
  /// A value of this kind.
  Variant(Null valore) : valore_(valore) {}
  template <std::same_as<bool> T>  // and nothing that merely converts to it, as pointers do
  Variant(T valore) : valore_(valore) {}
  Variant(std::int16_t valore) : valore_(valore) {}
  Variant(std::int32_t valore) : valore_(valore) {}
  ///@}
  /// A wider or an unsigned integer: held in 32 bits, or as a decimal number if it does not fit. Narrower
  /// ones convert to one of the two above on their own.
  template <std::integral T>
  requires(sizeof(T) >= sizeof(std::int32_t)) Variant(T valore) {
    if (std::in_range<std::int32_t>(valore)) {
      valore_ = static_cast<std::int32_t>(valore);
    } else {
      valore_ = Decimale(std::to_string(valore));
    }
  }
  ///@{
  /// A value of this kind.
  Variant(float valore) : valore_(valore) {}
  Variant(double valore) : valore_(valore) {}
  Variant(Decimale valore) : valore_(std::move(valore)) {}
  Variant(DataOra valore) : valore_(valore) {}
  Variant(std::string valore) : valore_(std::move(valore)) {}
  Variant(std::string_view valore) : valore_(std::string(valore)) {}
  Variant(const char* valore) : valore_(std::string(valore)) {}
  Variant(std::nullptr_t) = delete;
  Variant(Array valore) : valore_(std::move(valore)) {}
  template <class T>
  requires std::is_base_of_v<Oggetto, T> Variant(std::shared_ptr<T> valore)
      : valore_(OggettoPtr(std::move(valore))) {}
  ///@}

  ///@{
  /// What is held.
  [[nodiscard]] bool IsEmpty() const { return std::holds_alternative<std::monostate>(valore_); }
  [[nodiscard]] bool IsNull() const { return std::holds_alternative<Null>(valore_); }
  [[nodiscard]] bool IsText() const { return std::holds_alternative<std::string>(valore_); }
  [[nodiscard]] bool IsObject() const { return std::holds_alternative<OggettoPtr>(valore_); }
  [[nodiscard]] bool IsArray() const { return std::holds_alternative<Array>(valore_); }
  ///@}

  ///@{
  /// Conversions. Empty counts as 0, false or the empty text; null raises 94; a text is read as a number or
  /// date; a number is rounded, half to even; objects and arrays raise 13.
  [[nodiscard]] std::string ToText() const;
  [[nodiscard]] bool ToBoolean() const;
  [[nodiscard]] std::int16_t ToInt16() const;
  [[nodiscard]] std::int32_t ToInt32() const;
  [[nodiscard]] float ToFloat() const;
  [[nodiscard]] double ToDouble() const;
  [[nodiscard]] DataOra ToDate() const;
  ///@}
  /// A floating-point number yields the digits of its text form.
  [[nodiscard]] Decimale ToDecimale() const;
  /// As ToText, but null becomes the empty text, as in automation's concatenation of texts.
  [[nodiscard]] std::string Joined() const;

  /// The array, to read or to grow; raises 13 for any other value.
  [[nodiscard]] const Array& ToArray() const;
  [[nodiscard]] Array& ToArray();
  /// The object, which may be absent; raises 13 for any other value.
  [[nodiscard]] OggettoPtr ToObject() const;

  /// Calls the function with the value as it is held: std::monostate for empty, Null, bool, the numbers,
  /// Decimale, DataOra, std::string, OggettoPtr or Array. For adapters, which pass values on in another form.
  template <class F>
  decltype(auto) Visita(F&& funzione) const {
    return std::visit(std::forward<F>(funzione), valore_);
  }

  /// Same kind and same value, without conversion.
  friend bool operator==(const Variant&, const Variant&) = default;

 private:
  std::variant<std::monostate, Null, bool, std::int16_t, std::int32_t, float, double, Decimale, DataOra,
               std::string, OggettoPtr, Array>
      valore_;
};

}  // namespace orve::host
