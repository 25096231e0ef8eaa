// What a window holds that a person can change. A person who leaves a window with Escape is asked before a
// change is lost: the key gets hit by mistake, or to close a list that has already closed. The buttons and
// the frame of the window are used on purpose and ask nothing.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "orve-mailserver/host/controlli.h"
#include "orve-mailserver/host/messaggi.h"

namespace orve::adapters::forms {

using Contenuto = std::vector<std::string>;

/// The current texts, choices and rows of these controls; no longer equal to an earlier one once any of them
/// has changed.
[[nodiscard]] Contenuto ContenutoDi(const std::map<std::string, std::shared_ptr<host::Controllo>>& controlli);

constexpr const char* kDomandaAbbandono = "Chiudere la finestra e perdere le modifiche?";
constexpr std::int32_t kStileAbbandono = host::kDomanda + host::kSecondoPredefinito;

}  // namespace orve::adapters::forms
