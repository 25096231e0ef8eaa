// What automation reports as a failure, as an error of the library.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include "orve-mailserver/host/errore.h"

namespace orve::adapters::win32 {

/// The number by which automation's languages know a failure: the object's own where it gives one, 438 for an
/// unknown member, 13, 6, 5, 9, 7, 70, 429, 445, 449, 450, 462 for the failures that have a number there,
/// else the code as it is.
[[nodiscard]] std::int32_t NumeroDi(HRESULT esito) noexcept;

/// The error of a failed call. What the object reported in `eccezione` comes first, then what it left as the
/// thread's error information, then the system's text for the code. Takes the texts out of `eccezione`.
[[nodiscard]] host::Errore ErroreDi(HRESULT esito, EXCEPINFO* eccezione = nullptr);

/// Raises the error when the call failed.
inline void Verifica(HRESULT esito) {
  if (FAILED(esito)) throw ErroreDi(esito);
}

}  // namespace orve::adapters::win32
