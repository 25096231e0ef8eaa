// What a statement raises, as a value that a test can compare.
#pragma once

#include <cstdint>
#include <optional>
#include <utility>

#include "orve-mailserver/host/errore.h"

namespace orve::fakes {

/// The Errore that the statement raises; none when it ends normally.
template <class Statement>
[[nodiscard]] std::optional<host::Errore> EventualeErroreDi(Statement&& statement) {
  try {
    std::forward<Statement>(statement)();
  } catch (const host::Errore& errore) {
    return errore;
  }
  return std::nullopt;
}

/// The same, with an Errore of number 0 for none.
template <class Statement>
[[nodiscard]] host::Errore ErroreDi(Statement&& statement) {
  return EventualeErroreDi(std::forward<Statement>(statement)).value_or(host::Errore(0, "", "no error"));
}

/// Its number.
template <class Statement>
[[nodiscard]] std::int32_t NumeroDi(Statement&& statement) {
  return ErroreDi(std::forward<Statement>(statement)).Numero();
}

}  // namespace orve::fakes
