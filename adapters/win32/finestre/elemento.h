// What every control has, whatever its kind: its place in twips, its flags, its window. The windows of the
// controls belong to that of the form; a control holds on to it, so its own window exists for as long as it
// is used.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <memory>
#include <string>

#include "forms/misure.h"
#include "orve-mailserver/host/controlli.h"
#include "orve-mailserver/host/layout.h"
#include "win32/finestre/finestra.h"

namespace orve::adapters::win32::finestre {

/// What Windows creates a control from.
struct Sagoma {
  const wchar_t* classe;
  DWORD stile = 0;
  DWORD esteso = 0;
  std::wstring testo = {};
};

/// Where a control is made.
struct Posto {
  std::shared_ptr<Finestra> finestra;
  HWND padre = nullptr;
  int identificatore = 0;
};

class Elemento {
 public:
  /// Raises 429 when Windows makes no such control.
  Elemento(Posto posto, const host::LayoutControllo& controllo, const Sagoma& sagoma);
  Elemento(const Elemento&) = delete;
  Elemento& operator=(const Elemento&) = delete;
  Elemento(Elemento&&) = delete;
  Elemento& operator=(Elemento&&) = delete;
  virtual ~Elemento();

  /// Puts the window where the rectangle says.
  virtual void Posa();
  /// Takes the form's font again.
  virtual void CambiaCarattere();
  /// What Windows reports about the control, in WM_COMMAND and WM_NOTIFY.
  virtual void Comando(int /*codice*/) {}
  virtual LRESULT Notifica(const NMHDR& /*notifica*/) { return 0; }

  [[nodiscard]] HWND Maniglia() const { return maniglia_; }
  [[nodiscard]] const std::shared_ptr<Finestra>& LaFinestra() const { return finestra_; }

  host::LayoutControllo tavola;
  host::Rettangolo rettangolo;
  bool vista;
  bool attivo = true;
  float altezzaRiga;  // as the table or the program has it

 protected:
  /// From here on the window's messages go through Messaggio.
  void Intercetta();
  virtual LRESULT Messaggio(UINT messaggio, WPARAM wParam, LPARAM lParam) {
    return Predefinito(messaggio, wParam, lParam);
  }
  // The answer to a message is often of no interest. NOLINTNEXTLINE(modernize-use-nodiscard)
  LRESULT Predefinito(UINT messaggio, WPARAM wParam, LPARAM lParam) const;
  // NOLINTNEXTLINE(modernize-use-nodiscard)
  LRESULT Manda(UINT messaggio, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessageW(maniglia_, messaggio, wParam, lParam);
  }
  [[nodiscard]] forms::RettangoloInPixel PostoInPixel() const;
  void Mostra(bool visibile);
  void Accendi(bool acceso);

 private:
  static LRESULT CALLBACK Procedura(HWND maniglia, UINT messaggio, WPARAM wParam, LPARAM lParam);

  std::shared_ptr<Finestra> finestra_;
  HWND maniglia_ = nullptr;
  WNDPROC predefinita_ = nullptr;
};

/// A host control over its window: `Parte` is an Elemento, or something that knows more about the window.
template <class Base, class Parte = Elemento>
class Controllo : public Base, public Parte {
 public:
  using Parte::Parte;
  float Left() override { return this->rettangolo.left; }
  void Left(float twip) override { Sposta(this->rettangolo.left, twip); }
  float Top() override { return this->rettangolo.top; }
  void Top(float twip) override { Sposta(this->rettangolo.top, twip); }
  float Width() override { return this->rettangolo.width; }
  void Width(float twip) override { Sposta(this->rettangolo.width, twip); }
  float Height() override { return this->rettangolo.height; }
  void Height(float twip) override {
    this->altezzaRiga = twip;
    Sposta(this->rettangolo.height, twip);
  }
  bool Visible() override { return this->vista; }
  void Visible(bool valore) override {
    this->vista = valore;
    this->Mostra(valore);
  }
  bool Enabled() override { return this->attivo; }
  void Enabled(bool valore) override {
    this->attivo = valore;
    this->Accendi(valore);
  }

 private:
  void Sposta(float& campo, float twip) {
    campo = twip;
    this->Posa();
  }
};

}  // namespace orve::adapters::win32::finestre
