// The streams that the program talks through. Tests bring their own.
#pragma once

#include <istream>
#include <ostream>
#include <string>
#include <string_view>

#include "orve-mailserver/host/sistema.h"

namespace orve::app {

struct Terminale {
  std::istream& ingresso;
  std::ostream& uscita;
  std::ostream& errori;
  bool interattivo = false;  // somebody sits at `ingresso` and can answer
  int colonne = 0;           // of the screen that `uscita` goes to; 0: it goes to none, or to one that only
                             // takes line after line
  /// Where the library's instance trace goes; absent: nowhere.
  host::DebugOutput* traccia = nullptr;
};

/// The text in a form safe for a terminal: valid UTF-8, with tabs as blanks, and no other control characters
/// except line feeds, since texts come from servers and databases that may contain anything. Other control
/// characters, and those that reverse the text or show nothing, become escapes: "\u202E".
[[nodiscard]] std::string TestoSicuro(std::string_view testo);

/// The same on one line.
[[nodiscard]] std::string RigaSicura(std::string_view testo);

}  // namespace orve::app
