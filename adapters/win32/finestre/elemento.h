// The window of a control. The windows of the controls belong to that of the form; a control holds on to it,
// so its own window exists for as long as it is used.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <memory>
#include <string>

#include "forms/elemento.h"
#include "forms/misure.h"
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

class Elemento : public forms::Elemento {
 public:
  /// Raises 429 when Windows makes no such control.
  Elemento(Posto posto, const host::LayoutControllo& controllo, const Sagoma& sagoma);
  Elemento(const Elemento&) = delete;
  Elemento& operator=(const Elemento&) = delete;
  Elemento(Elemento&&) = delete;
  Elemento& operator=(Elemento&&) = delete;
  ~Elemento() override;

  void Posa() override;
  /// Takes the form's font again.
  virtual void CambiaCarattere();
  /// What Windows reports about the control, in WM_COMMAND and WM_NOTIFY.
  virtual void Comando(int /*codice*/) {}
  virtual LRESULT Notifica(const NMHDR& /*notifica*/) { return 0; }

  [[nodiscard]] HWND Maniglia() const { return maniglia_; }
  [[nodiscard]] const std::shared_ptr<Finestra>& LaFinestra() const { return finestra_; }

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
  void Mostra(bool visibile) override;
  void Accendi(bool acceso) override;

 private:
  static LRESULT CALLBACK Procedura(HWND maniglia, UINT messaggio, WPARAM wParam, LPARAM lParam);

  std::shared_ptr<Finestra> finestra_;
  HWND maniglia_ = nullptr;
  WNDPROC predefinita_ = nullptr;
};

/// A host control over its window: `Parte` is an Elemento, or something that knows more about the window.
template <class Base, class Parte = Elemento>
using Controllo = forms::Controllo<Base, Parte>;

[[nodiscard]] inline HWND ManigliaDi(const forms::Elemento& elemento) {
  return dynamic_cast<const Elemento&>(elemento).Maniglia();
}

}  // namespace orve::adapters::win32::finestre
