// Calls into objects of a script.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string>
#include <vector>

#include "orve-mailserver/host/errore.h"
#include "win32/com_ptr.h"

namespace orve::prova {

/// The member's number. Objects of a script's own classes have no GetIDsOfNames; they are asked another way.
/// DISPID_UNKNOWN when there is none.
[[nodiscard]] DISPID NumeroDi(IDispatch& oggetto, const std::wstring& nome);

/// Calls the member with the arguments in the order in which they are written; raises the object's error.
adapters::win32::VariantCom Chiama(IDispatch& oggetto, DISPID membro, WORD modi,
                                   std::vector<VARIANT> argomenti = {});

/// Whether a call of Chiama is in progress. A script error in it belongs to the caller; it is not an uncaught
/// one.
[[nodiscard]] bool DentroUnaChiamata();
/// The engine reports an error only to its host, and the call just says that it did: this is what it
/// reported.
void RicordaErroreDelloScript(const host::Errore& errore);

}  // namespace orve::prova
