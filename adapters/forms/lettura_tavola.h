// What a layout table implies: the tab order of a window, and what a screen reader calls its controls.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "forms/misure.h"
#include "orve-mailserver/host/layout.h"

namespace orve::adapters::forms {

/// The controls that the keyboard reaches, by tab index; without those below the edge of their frame.
[[nodiscard]] std::vector<const host::LayoutControllo*> OrdineDiTastiera(const host::LayoutForm& form);

/// The caption without its mnemonic and its dots, or for a box without one that of the caption to its left;
/// empty when there is none.
[[nodiscard]] std::string NomeAccessibile(const host::LayoutForm& form,
                                          const host::LayoutControllo& controllo);

inline constexpr int kFontGrande = 12;  // pixels at 96 dpi: the sizes of font that are tried
inline constexpr int kFontPiccolo = 9;

/// The room that a control needs in addition to its caption, in pixels.
struct Contorno {
  int pulsante = 0;
  int spunta = 0;
};
/// Whether every caption fits its control; `larghezza` measures a text in pixels of this resolution, as
/// `contorno` is.
[[nodiscard]] bool DidascalieCiStanno(const host::LayoutForm& form, const Contorno& contorno,
                                      const std::function<int(const std::string&)>& larghezza,
                                      int dpi = kPuntiPerPollice);

/// The title of a window: the text followed, once, by the program's name. A window asks for it each time it
/// becomes active.
[[nodiscard]] std::string TitoloConProgramma(const std::string& testo, const std::string& programma);

}  // namespace orve::adapters::forms
