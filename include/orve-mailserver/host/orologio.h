// The system's clock and the text forms of its regional settings.
#pragma once

#include <string>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/data_ora.h"
#include "orve-mailserver/host/oggetto.h"

namespace orve::host {

/// Local time, and how it is written.
class ORVE_API Orologio : public Oggetto {
 public:
  /// Local date and time.
  [[nodiscard]] virtual DataOra Adesso() = 0;
  /// The date in the system's short form; dd/mm/yyyy on a system without regional settings.
  [[nodiscard]] virtual std::string TestoData(DataOra istante) = 0;
  /// The time as the system writes it; hh:mm:ss on a system without regional settings.
  [[nodiscard]] virtual std::string TestoOra(DataOra istante) = 0;
};

}  // namespace orve::host
