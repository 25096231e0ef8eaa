// The special fields that are offered for the body of a message: the placeholders that the library
// fills, with what the person reads for each.
#pragma once

#include <memory>

#include "orve-mailserver/host/parametri.h"

namespace orve::adapters::ambiente {

[[nodiscard]] std::shared_ptr<host::CLSFW_Parametri> CreaParametriCorpo();

}  // namespace orve::adapters::ambiente
