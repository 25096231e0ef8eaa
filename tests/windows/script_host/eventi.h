// Handlers in a script for the events of an object: the procedures whose names are a prefix and the event's
// name.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <functional>
#include <string>

#include "win32/com_ptr.h"

namespace orve::prova {

/// Attaches the script's procedures to the object, whose own type information lists its events. `script`
/// returns the object that has the script's procedures. Returns a function that detaches them again. Raises
/// 459 for an object without events.
[[nodiscard]] std::function<void()> Ascolta(IDispatch& oggetto, const std::wstring& prefisso,
                                            std::function<adapters::win32::ComPtr<IDispatch>()> script);

}  // namespace orve::prova
