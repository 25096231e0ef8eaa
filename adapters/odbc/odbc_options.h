// What a program may choose about a connection over ODBC.
#pragma once

#include <chrono>

namespace orve::adapters::odbc {

struct OpzioniOdbc {
  /// How long the login may take; whole seconds, at least one.
  std::chrono::seconds attesaAccesso{15};
  /// A statement that runs longer is given up, as far as the driver can.
  std::chrono::seconds tempoMassimo{30};
};

}  // namespace orve::adapters::odbc
