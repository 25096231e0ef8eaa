// The streams that the program talks through. Tests bring their own.
#pragma once

#include <istream>
#include <ostream>

#include "mime/header_text.h"
#include "orve-mailserver/host/system.h"

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

using adapters::mime::TerminalSafe;
using adapters::mime::TerminalSafeLine;

}  // namespace orve::app
