// What a window holds that a person can change. Whoever leaves a window by Escape is asked before a change is
// lost: the key is hit by mistake, or to close a list that is closed already. The buttons and the frame of
// the window are pressed on purpose and ask nothing.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/controlli.h"
#include "host/messaggi.h"

namespace orve::adapters::forms {

using Contenuto = std::vector<std::string>;

/// The texts, choices and rows of these controls as they stand; unequal to what it was once any is changed.
[[nodiscard]] Contenuto ContenutoDi(const std::map<std::string, std::shared_ptr<host::Controllo>>& controlli);

constexpr const char* kDomandaAbbandono = "Chiudere la finestra e perdere le modifiche?";
constexpr std::int32_t kStileAbbandono = host::kDomanda + host::kSecondoPredefinito;

}  // namespace orve::adapters::forms
