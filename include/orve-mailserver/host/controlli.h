// The window controls of the host application: what the two dialogs, and the procedures that reach controls
// by name, ask of a toolkit.
//
// Positions and sizes are in twips, 15 to a pixel at 96 dpi, relative to the frame that holds the control.
// Events are function members, empty when nobody listens. A change made by the program raises the control's
// change event just as a change by the person does, before the writing call returns. An error that escapes a
// listener comes out of the program's call that raised the event; if the event came from a person's action,
// it goes to the toolkit, which keeps the window open and tells the person.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/errore.h"
#include "orve-mailserver/host/oggetto.h"
#include "orve-mailserver/host/variant.h"

namespace orve::host {

/// Raises an event: the listener may replace or clear the event while it runs.
template <class... Parametri, class... Argomenti>
void Solleva(const std::function<void(Parametri...)>& evento, Argomenti&&... argomenti) {
  if (const auto ascoltatore = evento) ascoltatore(std::forward<Argomenti>(argomenti)...);
}

/// Any control of a form.
class ORVE_API Controllo : public Oggetto {
 public:
  ///@{
  /// Place and size, in twips.
  [[nodiscard]] virtual float Left() = 0;
  virtual void Left(float twip) = 0;
  [[nodiscard]] virtual float Top() = 0;
  virtual void Top(float twip) = 0;
  [[nodiscard]] virtual float Width() = 0;
  virtual void Width(float twip) = 0;
  [[nodiscard]] virtual float Height() = 0;
  virtual void Height(float twip) = 0;
  ///@}
  /// The control's own flag; a visible control in a hidden frame is still not seen.
  [[nodiscard]] virtual bool Visible() = 0;
  virtual void Visible(bool visibile) = 0;
  /// Whether the person can use the control.
  [[nodiscard]] virtual bool Enabled() = 0;
  virtual void Enabled(bool attivo) = 0;
};

/// A titled frame that holds other controls.
class ORVE_API Frame : public Controllo {};

/// A caption next to another control.
class ORVE_API KVL_LABEL : public Controllo {};

/// A button, plain or with a menu.
class ORVE_API KVL_TBARMENU : public Controllo {
 public:
  /// Adds an entry at the end of the menu.
  virtual void AddMenuItem(const std::string& didascalia, const std::string& chiave) = 0;
  /// Switches the entry with this key (compared without case), or at this position from 1, on or off. An
  /// entry that does not exist yet takes the setting when it is added. Raises 9 for a position below 1.
  virtual void EnableMenuItem(const Variant& chiaveOPosizione, bool attiva) = 0;

  /// A plain button was pressed.
  std::function<void()> ButtonClick;
  /// An enabled entry was chosen: its key, and a second text that is not used here.
  std::function<void(const std::string& chiave, const std::string& testo)> MenuItemClick;
  /// Raised before the menu of a menu button opens.
  std::function<void()> BeforeShowMenuPopup;
};

/// A box of one line. What the person types or pastes is cut to the box's `maxchar`, and its line breaks
/// become blanks; what the program writes is kept as it is, whatever its length.
class ORVE_API TxtEdit : public Controllo {
 public:
  /// The text. Writing raises no event.
  [[nodiscard]] virtual std::string Text() = 0;
  virtual void Text(const std::string& testo) = 0;
};

/// A box of several lines, with carriage return and line feed as the line end. Text that the person has not
/// touched reads back as it was written.
class ORVE_API KvlRichTextBox : public Controllo {
 public:
  /// The text.
  [[nodiscard]] virtual std::string Text() = 0;
  virtual void Text(const std::string& testo) = 0;
};

/// A check box; its value is the text "0" or "1".
class ORVE_API KVL_CHECKBOX : public Controllo {
 public:
  /// "0" or "1".
  [[nodiscard]] virtual std::string Text() = 0;
  /// Always raises Change, even when the value stays the same.
  virtual void Text(const std::string& valore) = 0;

  /// Raised after the value was written, by the program or the person.
  std::function<void()> Change;
};

/// A combo box whose entries carry a number. Positions count from 0.
class ORVE_API KVL_COMBO : public Controllo {
 public:
  /// Empties the list; nothing is selected afterwards. Raises no event.
  virtual void EraseCombo() = 0;
  /// Whether the list opens by itself when the control gets the focus.
  virtual void AutoOpen(bool apre) = 0;
  /// Adds an entry at the end of the list; raises 6 when the list is full at 32,768 entries.
  virtual void AddItemData(const std::string& testo, std::int16_t dati) = 0;
  /// The number of the selected entry, as text; empty when none is selected.
  [[nodiscard]] virtual std::string Text() = 0;
  /// Selects the entry with this number, or none when there is no such entry, and raises Change.
  virtual void Text(const Variant& valore) = 0;
  /// The number of the entry at a position, as text; raises 9 when there is no such position.
  [[nodiscard]] virtual std::string ItemKey(std::int16_t posizione) = 0;
  /// Selects the entry at a position and raises Change; raises 9 when there is no such position.
  virtual void SelezionaPosizione(std::int16_t posizione) = 0;

  /// The position selected, -1 for none. Raised by every selection that the program makes, and when the
  /// person selects an entry other than the current one.
  std::function<void(std::int16_t posizione)> Change;
};

/// Keeps the controls of a window in proportion when the window is resized.
class ORVE_API KVL_RESIZEFORM : public Controllo {
 public:
  /// Which of the control's measures follow the window's size: a sum of these. 15 is all of them; 12 is a
  /// control that moves and keeps its size.
  enum Modo : std::int16_t { kLarghezza = 1, kAltezza = 2, kSinistra = 4, kAlto = 8 };

  /// Takes the window as it is now as the proportions to keep, asks for the controls through
  /// RichiestaControlli, and starts.
  virtual void Avvia() = 0;
  /// Registers a control of the window by its name; may be repeated. As long as nothing is registered, every
  /// control follows in every measure.
  virtual void RegistraControllo(const std::string& nome, std::int16_t modo) = 0;

  /// Raised by Avvia: the listener registers the controls.
  std::function<void()> RichiestaControlli;
};

/// A window with named controls.
class ORVE_API Form : public Oggetto {
 public:
  /// The mode of Show that waits for the person.
  static constexpr std::int16_t kModale = 1;

  /// The control of that name, compared without case; raises 438 when the form has none.
  [[nodiscard]] virtual std::shared_ptr<Controllo> Controlli(std::string_view nome) = 0;
  /// The window's title.
  [[nodiscard]] virtual std::string Caption() = 0;
  virtual void Caption(const std::string& didascalia) = 0;
  /// Size of the area inside the window's border and title, in twips.
  [[nodiscard]] virtual float Width() = 0;
  virtual void Width(float twip) = 0;
  /// The same for its height.
  [[nodiscard]] virtual float Height() = 0;
  virtual void Height(float twip) = 0;
  /// Shows the window and, in the modal mode, returns when it has closed. The owner window may be absent.
  /// Raises Load before the first showing and Activate each time the window becomes the active one.
  virtual void Show(std::int16_t modo, const std::shared_ptr<Form>& proprietario) = 0;
  /// Closes the window, as the person does with its close button; does nothing on a closed window. Raises
  /// Unload, once.
  virtual void Chiudi() = 0;

  /// Raised once, before the window is first shown.
  std::function<void()> Load;
  /// Raised each time the window becomes the active one.
  std::function<void()> Activate;
  /// Raised once, when the window closes.
  std::function<void()> Unload;
};

/// The control of that name as the kind asked for; raises 438 when the form has no such control, or one of
/// another kind.
template <class Tipo>
[[nodiscard]] std::shared_ptr<Tipo> ControlloDi(Form& form, std::string_view nome) {
  auto controllo = std::dynamic_pointer_cast<Tipo>(form.Controlli(nome));
  if (!controllo) throw Errore(kMembroNonSupportato);
  return controllo;
}

}  // namespace orve::host
