#include "win32/finestre/elemento.h"

#include <utility>

#include "orve-mailserver/host/errore.h"

namespace orve::adapters::win32::finestre {

Elemento::Elemento(Posto posto, const host::LayoutControllo& controllo, const Sagoma& sagoma)
    : forms::Elemento(controllo), finestra_(std::move(posto.finestra)) {
  const DWORD stile = WS_CHILD | WS_CLIPSIBLINGS | sagoma.stile | (vista ? WS_VISIBLE : 0U);
  const auto dove = PostoInPixel();
  const ContestoVisuale contesto;
  maniglia_ = CreateWindowExW(
      sagoma.esteso, sagoma.classe, sagoma.testo.c_str(), stile, dove.left, dove.top, dove.width, dove.height,
      posto.padre, reinterpret_cast<HMENU>(static_cast<INT_PTR>(posto.identificatore)), Modulo(), nullptr);
  if (maniglia_ == nullptr) throw host::Errore(host::kOggettoNonCreabile);
  finestra_->Registra(maniglia_, this);
  Manda(WM_SETFONT, reinterpret_cast<WPARAM>(finestra_->Carattere()));
}

// The window itself is destroyed with that of the form.
Elemento::~Elemento() {
  finestra_->Dimentica(maniglia_);
  if (predefinita_ == nullptr || IsWindow(maniglia_) == FALSE) return;
  SetWindowLongPtrW(maniglia_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(predefinita_));
  SetWindowLongPtrW(maniglia_, GWLP_USERDATA, 0);
}

forms::RettangoloInPixel Elemento::PostoInPixel() const {
  return forms::Posto(tavola.tipo, rettangolo, altezzaRiga, finestra_->Dpi());
}

void Elemento::Posa() {
  const auto dove = PostoInPixel();
  SetWindowPos(maniglia_, nullptr, dove.left, dove.top, dove.width, dove.height,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

void Elemento::CambiaCarattere() {
  Manda(WM_SETFONT, reinterpret_cast<WPARAM>(finestra_->Carattere()), TRUE);
}

void Elemento::Mostra(bool visibile) {
  if (!visibile) finestra_->LasciaFuoco(maniglia_);
  ShowWindow(maniglia_, visibile ? SW_SHOWNA : SW_HIDE);
}

// A program that disables a button because it is about to be busy has no time to draw it later.
void Elemento::Accendi(bool acceso) {
  if (!acceso) finestra_->LasciaFuoco(maniglia_);
  EnableWindow(maniglia_, acceso ? TRUE : FALSE);
  UpdateWindow(maniglia_);
}

void Elemento::Intercetta() {
  SetWindowLongPtrW(maniglia_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  predefinita_ = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrW(maniglia_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Procedura)));
}

LRESULT Elemento::Predefinito(UINT messaggio, WPARAM wParam, LPARAM lParam) const {
  return CallWindowProcW(predefinita_, maniglia_, messaggio, wParam, lParam);
}

LRESULT CALLBACK Elemento::Procedura(HWND maniglia, UINT messaggio, WPARAM wParam, LPARAM lParam) {
  auto* elemento = reinterpret_cast<Elemento*>(GetWindowLongPtrW(maniglia, GWLP_USERDATA));
  if (elemento == nullptr) return DefWindowProcW(maniglia, messaggio, wParam, lParam);
  try {
    return elemento->Messaggio(messaggio, wParam, lParam);
  } catch (...) {
    return elemento->Predefinito(messaggio, wParam, lParam);  // memory: Windows takes no exception
  }
}

}  // namespace orve::adapters::win32::finestre
