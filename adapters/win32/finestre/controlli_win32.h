// The controls of a window over those of Windows. A person's action arrives as a notification and is passed
// on as the control's event; what the program writes raises the event directly, never through the
// notification.
#pragma once

#include <memory>
#include <string>

#include "forms/controlli.h"
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
class PulsanteMenu : public Controllo<forms::PulsanteMenu> {
 public:
  /// `principale`: what it sets off may keep the program busy for as long as a server takes.
  PulsanteMenu(Posto posto, const host::LayoutControllo& layout, bool principale);
  void Comando(int codice) override;
  LRESULT Notifica(const NMHDR& notifica) override;

 protected:
  LRESULT Messaggio(UINT messaggio, WPARAM wParam, LPARAM lParam) override;

 private:
  void MostraMenu();
  void DisegnaTriangolo(HDC dc) const;

  bool principale_;
};

class Spunta : public Controllo<forms::Spunta> {
 public:
  Spunta(Posto posto, const host::LayoutControllo& layout);
  void Comando(int codice) override;

 protected:
  [[nodiscard]] bool Segnata() const override { return Manda(BM_GETCHECK) == BST_CHECKED; }
  void Segna(bool segnata) override { Manda(BM_SETCHECK, segnata ? BST_CHECKED : BST_UNCHECKED); }
};

class Combo : public Controllo<forms::Combo> {
 public:
  Combo(Posto posto, const host::LayoutControllo& layout);
  void AutoOpen(bool apre) override { apreDaSola_ = apre; }

  void Posa() override;
  void Comando(int codice) override;

 protected:
  void Svuota() override { Manda(CB_RESETCONTENT); }
  void AggiungiVoce(const std::string& testo) override;
  void Seleziona() override;
  LRESULT Messaggio(UINT messaggio, WPARAM wParam, LPARAM lParam) override;

 private:
  void Confronta();

  bool apreDaSola_ = false;
};

/// The control of a layout row; none for a kind that is built elsewhere.
[[nodiscard]] std::shared_ptr<host::Controllo> CreaControllo(Posto posto, const host::LayoutControllo& layout,
                                                             bool principale);

}  // namespace orve::adapters::win32::finestre
