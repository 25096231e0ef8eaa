// The description from which a toolkit builds a window. There is one table per window, kept with the dialogs;
// a toolkit reads it and knows nothing else about the window.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace orve::host {

enum class TipoControllo {
  kFrame,
  kEtichetta,
  kKvlLabel,
  kTbarMenu,
  kTxtEdit,
  kRichTextBox,
  kCheckBox,
  kCombo,
  kGriglia,
  kResizeForm,
};

/// In twips, relative to the frame or window that holds the control.
struct Rettangolo {
  float left = 0;
  float top = 0;
  float width = 0;
  float height = 0;
};

/// What a control is given at design time. 0 and empty stand for the control's own default.
struct ValoriDiDisegno {
  bool visible = true;
  std::int32_t maxchar = 0;   // characters that can be typed; 0 for no limit
  std::int32_t maxwidth = 0;  // width of the control in characters
  std::int32_t numrighe = 0;  // lines shown
  bool ismultiline = false;
  bool ismenupopup = true;  // a button: true opens a menu, false is a plain button
  std::int32_t gettextmode = 0;
  std::int32_t kvlalignment = 0;
  std::string_view tag = {};
  bool percorso = false;  // a box that holds a path: the person sees and types it in the system's own form
};

struct LayoutControllo {
  std::string_view nome;
  TipoControllo tipo = TipoControllo::kFrame;
  std::string_view didascalia = {};  // "&" before its mnemonic
  std::string_view cornice = {};     // the frame that holds the control; empty: the window itself
  Rettangolo posizione = {};
  std::int16_t tabIndex = -1;  // tab order through the whole window; -1: none
  ValoriDiDisegno disegno = {};
};

struct LayoutForm {
  std::string_view nome;
  std::string_view didascalia = {};
  std::string_view font = {};
  float width = 0;  // of the area inside border and title, in twips
  float height = 0;
  std::span<const LayoutControllo> controlli = {};  // a frame comes before the controls that it holds
  std::string_view pulsanteConferma = {};           // the button that confirms the window; empty: none
  std::string_view pulsanteFile =
      {};  // the button whose procedure takes files dropped on the window; empty: none
};

}  // namespace orve::host
