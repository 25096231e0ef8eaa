// The instance trace in a file of the person's choice instead of the system log.
#pragma once

#include <memory>
#include <ostream>
#include <string>

#include "orve-mailserver/host/system.h"

namespace orve::app {

/// A debug output with a destination of its own.
class Traccia : public host::DebugOutput {
 public:
  /// A line was lost on the way, so the trace is wrong about some objects.
  [[nodiscard]] virtual bool Incompleta() const noexcept = 0;
};

/// Appends each line as a whole to the file, which several programs may do at once; "-" is the error stream,
/// which must outlive the trace. Raises ErroreProgramma (kFileMancante) when the file cannot be written.
[[nodiscard]] std::shared_ptr<Traccia> ApriTraccia(const std::string& file, std::ostream& errori);

}  // namespace orve::app
