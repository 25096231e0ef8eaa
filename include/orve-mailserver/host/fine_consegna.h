// What a means of delivery can tell of its last delivery beyond its number.
#pragma once

#include <string>

#include "orve-mailserver/api.h"

namespace orve::host {

/// How a delivery ended, in the words of whatever ended it.
struct ORVE_API FineConsegna {
  std::string motivo;    ///< what ended it, for a person and without secrets; empty after a success
  bool incerta = false;  ///< it failed, and whoever it was handed to may have the message all the same
};

}  // namespace orve::host
