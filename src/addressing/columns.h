// How the procedures of this folder read columns that may be null.
#pragma once

#include <string>
#include <string_view>

#include "orve-mailserver/host/connection.h"
#include "orve-mailserver/host/variant.h"
#include "service/nvl.h"

namespace orve {

/// The text of a column of the current row, or `sostituto` when it is null or holds blanks only.
[[nodiscard]] inline std::string LeggiTesto(const host::RecordSet& riga, std::string_view colonna,
                                            const std::string& sostituto = {}) {
  return NVL(host::Leggi(riga, colonna), sostituto).ToText();
}

}  // namespace orve
