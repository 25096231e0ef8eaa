// What a program may choose about a connection over ODBC.
#pragma once

#include <chrono>

#include "orve-mailserver/api.h"

namespace orve::adapters::odbc {

/// The options.
struct ORVE_API OdbcOptions {
  /// How long the login may take. The driver is told so; one that does not keep to it is abandoned after
  /// twice that time plus a second. From one second to a day.
  std::chrono::seconds attesaAccesso{15};
  /// How long a statement may run, including reading its result. The driver is told so; if it does not keep
  /// to it, the statement is cancelled after twice that time plus a second, and five seconds later abandoned
  /// together with the connection, which is then of no further use. From one second to a day.
  std::chrono::seconds tempoMassimo{30};
};

}  // namespace orve::adapters::odbc
