// Messages to the person: every box that a window or the library shows passes through here.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "orve-mailserver/host/messaggi.h"

class QWidget;

namespace orve::adapters::qt {

/// Shows a message and returns the answer: 1 OK, 6 yes, 7 no (also when a question is closed). Without a
/// parent, the active window is the parent.
std::int32_t MostraCasella(const std::string& testo, std::int32_t stile, const std::string& titolo,
                           QWidget* padre);

/// Runs what a person's action sets off. No exception may reach Qt: an error is shown to the person, and the
/// window stays open.
void Azione(QWidget* padre, const std::function<void()>& azione);

[[nodiscard]] std::shared_ptr<host::Messaggi> CreaMessaggi(std::string programma);

}  // namespace orve::adapters::qt
