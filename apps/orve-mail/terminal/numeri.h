// Numbers on the command line.
#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace orve::app {

/// The number that the whole text represents, with a decimal point; none when it is not a number or does not
/// fit.
template <class T>
[[nodiscard]] std::optional<T> Numero(std::string_view testo) {
  T numero{};
  const auto* const fine = testo.data() + testo.size();
  const auto [letto, esito] = std::from_chars(testo.data(), fine, numero);
  if (esito != std::errc{} || letto != fine) return std::nullopt;
  return numero;
}

}  // namespace orve::app
