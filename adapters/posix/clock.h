// The system's clock, in local time, with the Italian text forms.
#pragma once

#include <string>

#include "orve-mailserver/host/orologio.h"

namespace orve::adapters::posix {

class Clock : public host::Orologio {
 public:
  /// Whole seconds.
  [[nodiscard]] host::DataOra Adesso() override;
  /// "dd/mm/yyyy", whatever the locale of the process: file names and payloads depend on this form.
  [[nodiscard]] std::string TestoData(host::DataOra istante) override;
  /// "hh:mm:ss", likewise.
  [[nodiscard]] std::string TestoOra(host::DataOra istante) override;
};

}  // namespace orve::adapters::posix
