// Messages to the person: every box that a window or the library shows passes through here.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "orve-mailserver/host/messaggi.h"

namespace orve::adapters::win32::finestre {

/// Shows a message and returns the answer: 1 OK, 6 yes, 7 no. Without an owner, the thread's active window is
/// the owner.
std::int32_t MostraCasella(const std::string& testo, std::int32_t stile, const std::string& titolo,
                           HWND proprietario);

/// Runs what must not let an exception out: an error is shown to the person.
void Protetta(HWND finestra, const std::function<void()>& azione);

[[nodiscard]] std::shared_ptr<host::Messaggi> CreaMessaggi(std::string programma);

}  // namespace orve::adapters::win32::finestre
