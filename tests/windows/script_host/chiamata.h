// Calls into objects of a script.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string>
#include <vector>

#include "host/errore.h"
#include "win32/com_ptr.h"

namespace orve::prova {

/// The member's number. Objects of a script's own classes know no GetIDsOfNames; they are asked another way.
/// DISPID_UNKNOWN when there is none.
[[nodiscard]] DISPID NumeroDi(IDispatch& oggetto, const std::wstring& nome);

/// Calls the member with the arguments in the order in which they are written; raises the object's error.
adapters::win32::VariantCom Chiama(IDispatch& oggetto, DISPID membro, WORD modi,
                                   std::vector<VARIANT> argomenti = {});

/// Whether a call of Chiama is under way. An error of the script in it is the caller's, not one that nobody
/// caught.
[[nodiscard]] bool DentroUnaChiamata();
/// The engine tells an error to its host only, and the call just says that it did: this is what it told.
void RicordaErroreDelloScript(const host::Errore& errore);

}  // namespace orve::prova
