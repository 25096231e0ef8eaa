// How an error of the library crosses the boundary: as a result code that carries its number, with source and
// description alongside. No exception gets out.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <utility>

#include "orve-mailserver/host/errore.h"
#include "win32/errori_com.h"

namespace orve::com {

using adapters::win32::Verifica;

/// The code under which a client sees the number: automation's numbers in the control facility, a result code
/// as it is.
[[nodiscard]] HRESULT HresultDi(const host::Errore& errore) noexcept;

/// Leaves the exception in flight for the client, as an error of a member of this interface, and returns its
/// code. Call it in a catch block only.
HRESULT RiportaErroreCorrente(REFIID interfaccia) noexcept;

/// Runs a member.
template <class Azione>
HRESULT Esegui(REFIID interfaccia, Azione&& azione) noexcept {
  try {
    std::forward<Azione>(azione)();
    return S_OK;
  } catch (...) {
    return RiportaErroreCorrente(interfaccia);
  }
}

}  // namespace orve::com
