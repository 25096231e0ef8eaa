// The engine that the tests over ODBC share, started once for the program.
#pragma once

#include "support/h2_server.h"

namespace orve::adapters::odbc {

inline support::H2Server& Motore() {
  static support::H2Server motore;
  return motore;
}

}  // namespace orve::adapters::odbc
