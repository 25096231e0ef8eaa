// The description from which a toolkit builds a window. There is one table per window, kept with the dialogs;
// a toolkit reads it and knows nothing else about the window.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "orve-mailserver/api.h"

namespace orve::host {

/// The kinds of control, named as the interfaces of controlli.h and griglia.h.
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
struct ORVE_API Rettangolo {
  float left = 0;    ///< from the left edge
  float top = 0;     ///< from the upper edge
  float width = 0;   ///< of the control
  float height = 0;  ///< of the control
};

/// What a control is given at design time. 0 and empty stand for the control's own default.
struct ORVE_API ValoriDiDisegno {
  bool visible = true;            ///< whether it is shown with its window
  std::int32_t maxchar = 0;       ///< characters that can be typed; 0 for no limit
  std::int32_t maxwidth = 0;      ///< width of the control in characters
  std::int32_t numrighe = 0;      ///< lines shown
  bool ismultiline = false;       ///< a box with several lines
  bool ismenupopup = true;        ///< a button: true opens a menu, false is a plain button
  std::int32_t gettextmode = 0;   ///< the control's own way of handing out its text
  std::int32_t kvlalignment = 0;  ///< 0 to the left, 1 to the right
  std::string_view tag = {};      ///< a text for the program, which no toolkit reads
  bool percorso = false;  ///< a box that holds a path: the person sees and types it in the system's own form
};

/// One control of a window.
struct ORVE_API LayoutControllo {
  std::string_view nome;                       ///< under which the form finds it
  TipoControllo tipo = TipoControllo::kFrame;  ///< its kind
  std::string_view didascalia = {};            ///< "&" before its mnemonic
  std::string_view cornice = {};               ///< the frame that holds the control; empty: the window itself
  Rettangolo posizione = {};                   ///< in what holds it
  std::int16_t tabIndex = -1;                  ///< tab order through the whole window; -1: none
  ValoriDiDisegno disegno = {};                ///< everything else
};

/// A window and its controls.
struct ORVE_API LayoutForm {
  std::string_view nome;                            ///< of the window, for error texts
  std::string_view didascalia = {};                 ///< its title
  std::string_view font = {};                       ///< the name of the font of all controls
  float width = 0;                                  ///< of the area inside border and title, in twips
  float height = 0;                                 ///< of the same area
  std::span<const LayoutControllo> controlli = {};  ///< a frame comes before the controls that it holds
  std::string_view pulsanteConferma = {};           ///< the button that confirms the window; empty: none
  /// The button whose procedure takes files dropped on the window; empty: none.
  std::string_view pulsanteFile = {};
};

}  // namespace orve::host
