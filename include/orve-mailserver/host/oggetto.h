// The common root of every outside object, so that a Variant can carry any of them.
#pragma once

#include "orve-mailserver/api.h"

namespace orve::host {

class ORVE_API Oggetto {
 public:
  Oggetto() = default;
  Oggetto(const Oggetto&) = delete;
  Oggetto& operator=(const Oggetto&) = delete;
  Oggetto(Oggetto&&) = delete;
  Oggetto& operator=(Oggetto&&) = delete;
  virtual ~Oggetto() = default;
};

}  // namespace orve::host
