// One value in the form in which it is joined into an SQL statement.
#pragma once

#include <cstdint>

#include "orve-mailserver/host/variant.h"
#include "service/oggetti.h"

namespace orve {

enum ValueType : std::int32_t {
  kValoreTesto = 0,
  kValoreDecimale = 1,
  kValoreNumero = 2,  // through the host's number formatter
  kValoreData = 3,    // through the host's date formatter
};

/// The value in the form of a statement, unescaped; empty when it has none. A failure is reported by message.
[[nodiscard]] host::Variant FormatoDB(const Oggetti& oggetti, const host::Variant& valore, std::int32_t tipo,
                                      bool ammetteNull);

}  // namespace orve
