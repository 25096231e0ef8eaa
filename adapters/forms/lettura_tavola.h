// What a layout table implies: the tab order of a window, and what a screen reader calls its controls.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "orve-mailserver/host/layout.h"

namespace orve::adapters::forms {

/// The controls that the keyboard reaches, by tab index; without those below the edge of their frame.
[[nodiscard]] std::vector<const host::LayoutControllo*> OrdineDiTastiera(const host::LayoutForm& form);

/// The caption without its mnemonic and its dots, or for a box without one that of the caption to its left;
/// empty when there is none.
[[nodiscard]] std::string NomeAccessibile(const host::LayoutForm& form,
                                          const host::LayoutControllo& controllo);

/// The title of a window: the text followed, once, by the program's name. A window asks for it each time it
/// becomes active.
[[nodiscard]] std::string TitoloConProgramma(const std::string& testo, const std::string& programma);

}  // namespace orve::adapters::forms
