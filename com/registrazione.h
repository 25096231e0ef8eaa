// The entries by which programs find the classes: for all users of the machine, or for the current one where
// the rights for all are missing.
#pragma once

#include <windows.h>

namespace orve::com {

/// Writes the entries of the creatable classes and of the type library; entries from an earlier location are
/// replaced.
HRESULT Registra() noexcept;

/// Removes the entries, for all users and for the current one; a missing entry is not a failure. The names of
/// the classes stay as long as the other bitness has the classes.
HRESULT TogliRegistrazione() noexcept;

}  // namespace orve::com
