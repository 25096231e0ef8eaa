// The controls of a window over those of Windows. A person's action arrives as a notification and is passed
// on as the control's event; what the program writes raises the event directly, never through the
// notification.
#pragma once

#include <memory>
#include <string>

#include "forms/voci_combo.h"
#include "forms/voci_menu.h"
#include "win32/finestre/elemento.h"

namespace orve::adapters::win32::finestre {

/// A frame: a section with its title and a line beside it; nothing at all without a title.
class Riquadro : public Controllo<host::Frame> {
 public:
  Riquadro(Posto posto, const host::LayoutControllo& layout);

 protected:
  LRESULT Messaggio(UINT messaggio, WPARAM wParam, LPARAM lParam) override;

 private:
  void Dipinge() const;
};

/// A caption centred on the line beside it, whatever the height of its own rectangle.
class Etichetta : public Controllo<host::KVL_LABEL> {
 public:
  Etichetta(Posto posto, const host::LayoutControllo& layout);
  void Posa() override;
};

/// A button; one with a menu has a small triangle in its corner.
class PulsanteMenu : public Controllo<host::KVL_TBARMENU> {
 public:
  /// `principale`: what it sets off may keep the program busy for as long as a server takes.
  PulsanteMenu(Posto posto, const host::LayoutControllo& layout, bool principale);
  void AddMenuItem(const std::string& didascalia, const std::string& chiave) override;
  void EnableMenuItem(const host::Variant& chiaveOPosizione, bool attiva) override;
  void Comando(int codice) override;
  LRESULT Notifica(const NMHDR& notifica) override;

 protected:
  LRESULT Messaggio(UINT messaggio, WPARAM wParam, LPARAM lParam) override;

 private:
  void MostraMenu();
  void DisegnaTriangolo(HDC dc) const;

  bool principale_;
  forms::VociMenu voci_;
};

class Spunta : public Controllo<host::KVL_CHECKBOX> {
 public:
  Spunta(Posto posto, const host::LayoutControllo& layout);
  std::string Text() override;
  void Text(const std::string& valore) override;
  void Comando(int codice) override;
};

class Combo : public Controllo<host::KVL_COMBO> {
 public:
  Combo(Posto posto, const host::LayoutControllo& layout);
  void EraseCombo() override;
  void AutoOpen(bool apre) override { apreDaSola_ = apre; }
  void AddItemData(const std::string& testo, std::int16_t dati) override;
  std::string Text() override { return voci_.Valore(); }
  void Text(const host::Variant& valore) override;
  std::string ItemKey(std::int16_t posizione) override { return voci_.Chiave(posizione); }
  void SelezionaPosizione(std::int16_t posizione) override;

  void Posa() override;
  void Comando(int codice) override;

 protected:
  LRESULT Messaggio(UINT messaggio, WPARAM wParam, LPARAM lParam) override;

 private:
  void Seleziona();
  void Scelta();

  forms::VociCombo voci_;
  bool apreDaSola_ = false;
};

/// The control of a layout row; none for a kind that is built elsewhere.
[[nodiscard]] std::shared_ptr<host::Controllo> CreaControllo(Posto posto, const host::LayoutControllo& layout,
                                                             bool principale);

/// The button that confirms the window: the first that is not in a frame.
[[nodiscard]] std::string PulsantePrincipale(const host::LayoutForm& layout);

}  // namespace orve::adapters::win32::finestre
