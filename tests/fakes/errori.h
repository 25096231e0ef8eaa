// What a statement raises, as a value that a test can compare.
#pragma once

#include <cstdint>
#include <optional>
#include <utility>

#include "orve-mailserver/host/errore.h"

namespace orve::fakes {

/// The Errore that the statement raises; none when it ends normally.
template <class Statement>
std::optional<host::Errore> ErroreDi(Statement&& statement) {
  try {
    std::forward<Statement>(statement)();
  } catch (const host::Errore& errore) {
    return errore;
  }
  return std::nullopt;
}

/// Its number; 0 when it ends normally.
template <class Statement>
std::int32_t NumeroDi(Statement&& statement) {
  const auto errore = ErroreDi(std::forward<Statement>(statement));
  return errore ? errore->Numero() : 0;
}

}  // namespace orve::fakes
