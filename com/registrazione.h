// The entries by which programs find the classes: for all users of the machine, or for the present one where
// the rights for all are missing.
#pragma once

#include <windows.h>

namespace orve::com {

/// Writes the entries of the creatable classes and of the type library; entries of an earlier place are
/// replaced.
HRESULT Registra() noexcept;

/// Takes the entries away, for all and for the present user; what is not there is no failure. The names of
/// the classes stay while programs of the other width have the classes.
HRESULT TogliRegistrazione() noexcept;

}  // namespace orve::com
