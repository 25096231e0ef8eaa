// What the system calls report, as errors of the file-system object.
#pragma once

#include <string_view>

#include "values/errori_file.h"

namespace orve::adapters::posix {

using values::ErroreFile;
using enum values::NumeroErroreFile;

/// The error for an errno. ENOENT counts as "path not found"; a caller that knows the folder exists raises 53
/// itself.
[[nodiscard]] host::Errore ErroreDiSistema(int codice, std::string_view percorso);

}  // namespace orve::adapters::posix
