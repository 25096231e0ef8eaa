#include "win32/finestre/finestra.h"

#include <commctrl.h>
#include <shellapi.h>

#include <algorithm>
#include <array>
#include <utility>

#include "orve-mailserver/host/errore.h"
#include "win32/finestre/elemento.h"
#include "win32/finestre/messaggi.h"
#include "win32/finestre/testo.h"

namespace orve::adapters::win32::finestre {

namespace {

constexpr DWORD kStile =
    WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MAXIMIZEBOX | WS_CLIPCHILDREN;
constexpr DWORD kEsteso = WS_EX_CONTROLPARENT | WS_EX_ACCEPTFILES;

BOOL CALLBACK RaccogliAccesa(HWND finestra, LPARAM dove) {
  if (IsWindowVisible(finestra) != FALSE && IsWindowEnabled(finestra) != FALSE) {
    reinterpret_cast<std::vector<HWND>*>(dove)->push_back(finestra);
  }
  return TRUE;
}

RECT AreaDiLavoro(HWND finestra) {
  MONITORINFO schermo = {};
  schermo.cbSize = sizeof schermo;
  if (GetMonitorInfoW(MonitorFromWindow(finestra, MONITOR_DEFAULTTONEAREST), &schermo) == FALSE) {
    return {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
  }
  return schermo.rcWork;
}

SIZE MisuraDi(const RECT& r) {
  return {r.right - r.left, r.bottom - r.top};
}

}  // namespace

FinestreSpente::FinestreSpente(HWND tranne) {
  EnumThreadWindows(GetCurrentThreadId(), RaccogliAccesa, reinterpret_cast<LPARAM>(&spente_));
  spente_.erase(std::remove(spente_.begin(), spente_.end(), tranne), spente_.end());
  for (auto* finestra : spente_) EnableWindow(finestra, FALSE);
}

FinestreSpente::~FinestreSpente() {
  for (auto* finestra : spente_) EnableWindow(finestra, TRUE);
}

Finestra::Finestra(const host::LayoutForm& layout) : layout_(layout) {
  const ContestoVisuale contesto;
  INITCOMMONCONTROLSEX controlli = {sizeof controlli, ICC_STANDARD_CLASSES | ICC_LISTVIEW_CLASSES};
  InitCommonControlsEx(&controlli);
  struct alignas(DWORD) {
    DLGTEMPLATE modello = {kStile, kEsteso, 0, 0, 0, 10, 10};
    std::array<WORD, 4> nulla = {};  // no menu, no class of its own, no title
  } vuoto;
  CreateDialogIndirectParamW(Modulo(), &vuoto.modello, nullptr, Procedura, reinterpret_cast<LPARAM>(this));
  if (maniglia_ == nullptr) throw host::Errore(host::kOggettoNonCreabile);
  dpi_ = DpiDi(maniglia_);
  CaricaFont();
}

Finestra::~Finestra() {
  spente_.reset();
  if (maniglia_ == nullptr) return;
  SetWindowLongPtrW(maniglia_, DWLP_USER, 0);
  DestroyWindow(maniglia_);
}

void Finestra::CaricaFont() {
  font_ = FontPer(layout_, dpi_);
  fontTitoli_ = Neretto(font_.get());
}

void Finestra::Titolo(const std::string& titolo) {
  SetWindowTextW(maniglia_, Largo(titolo).c_str());
}

void Finestra::Misura(SIZE interno) {
  minima_ = interno;
  const SIZE intera = MisuraDi(ConBordo(interno, kStile, kEsteso, dpi_));
  SetWindowPos(maniglia_, nullptr, 0, 0, intera.cx, intera.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

SIZE Finestra::Misura() const {
  RECT interno = {};
  GetClientRect(maniglia_, &interno);
  return MisuraDi(interno);
}

// The Tab key follows the z-order of the windows, where a frame comes where its first control does. What the
// keyboard does not reach, captions included, comes below.
void Finestra::OrdinaTastiera(const std::vector<HWND>& controlli) const {
  constexpr UINT kSoloOrdine = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE;
  std::for_each(controlli.rbegin(), controlli.rend(), [this](HWND uno) {
    SetWindowLongPtrW(uno, GWL_STYLE, GetWindowLongPtrW(uno, GWL_STYLE) | WS_TABSTOP);
    SetWindowPos(uno, HWND_TOP, 0, 0, 0, 0, kSoloOrdine);
    auto* cornice = GetParent(uno);
    if (cornice != maniglia_) SetWindowPos(cornice, HWND_TOP, 0, 0, 0, 0, kSoloOrdine);
  });
}

void Finestra::Centra(HWND proprietario) const {
  const RECT lavoro = AreaDiLavoro(proprietario != nullptr ? proprietario : maniglia_);
  RECT intorno = lavoro;
  if (proprietario != nullptr && IsWindowVisible(proprietario) != FALSE && IsIconic(proprietario) == FALSE) {
    GetWindowRect(proprietario, &intorno);
  }
  RECT mia = {};
  GetWindowRect(maniglia_, &mia);
  const SIZE misura = MisuraDi(mia);
  const auto dentro = [](LONG valore, LONG minimo, LONG massimo) {
    return std::max(minimo, std::min(valore, massimo));
  };
  const LONG sinistra = intorno.left + (intorno.right - intorno.left - misura.cx) / 2;
  const LONG alto = intorno.top + (intorno.bottom - intorno.top - misura.cy) / 2;
  SetWindowPos(maniglia_, nullptr, dentro(sinistra, lavoro.left, lavoro.right - misura.cx),
               dentro(alto, lavoro.top, lavoro.bottom - misura.cy), 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Finestra::Mostra(HWND proprietario, bool modale) {
  const auto vita = shared_from_this();
  if (proprietario != maniglia_) {
    SetWindowLongPtrW(maniglia_, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(proprietario));
  }
  Centra(proprietario);
  mostrata_ = true;
  if (modale) spente_.emplace(maniglia_);
  SetWindowPos(maniglia_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW);
  SetForegroundWindow(maniglia_);
  SetActiveWindow(maniglia_);
  auto* primo = GetNextDlgTabItem(maniglia_, nullptr, FALSE);
  if (primo != nullptr) SendMessageW(maniglia_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(primo), TRUE);
  UpdateWindow(maniglia_);
  if (modale) Gira();
}

void Finestra::Gira() {
  std::optional<int> fine;
  while (mostrata_) {
    MSG messaggio = {};
    const BOOL arrivato = GetMessageW(&messaggio, nullptr, 0, 0);
    if (arrivato <= 0) {
      if (arrivato == 0) fine = static_cast<int>(messaggio.wParam);
      if (Chiusa) Chiusa();
      break;
    }
    const bool tasto = messaggio.message == WM_KEYDOWN && messaggio.wParam == VK_TAB;
    daTastiera_ = tasto || messaggio.message == WM_SYSCHAR;
    if (IsDialogMessageW(maniglia_, &messaggio) == FALSE) {
      TranslateMessage(&messaggio);
      DispatchMessageW(&messaggio);
    }
    daTastiera_ = false;
  }
  Nascondi();
  if (fine) PostQuitMessage(*fine);
}

// The others first: Windows activates the next window when this one disappears, and that one must be enabled.
void Finestra::Nascondi() {
  mostrata_ = false;
  spente_.reset();
  if (maniglia_ == nullptr) return;
  ShowWindow(maniglia_, SW_HIDE);
  SetWindowLongPtrW(maniglia_, GWLP_HWNDPARENT, 0);  // the owner may go before the form does
}

void Finestra::Azione(const std::function<void()>& azione) {
  if (inAzione_) return;
  const auto vita = shared_from_this();
  inAzione_ = true;
  Protetta(maniglia_, azione);
  inAzione_ = false;
}

void Finestra::LasciaFuoco(HWND controllo) const {
  auto* fuoco = GetFocus();
  if (fuoco == nullptr || (fuoco != controllo && IsChild(controllo, fuoco) == FALSE)) return;
  SendMessageW(maniglia_, WM_NEXTDLGCTL, 0, FALSE);
}

INT_PTR CALLBACK Finestra::Procedura(HWND maniglia, UINT messaggio, WPARAM wParam, LPARAM lParam) {
  if (messaggio == WM_INITDIALOG) {
    reinterpret_cast<Finestra*>(lParam)->maniglia_ = maniglia;
    SetWindowLongPtrW(maniglia, DWLP_USER, lParam);
    return FALSE;
  }
  auto* finestra = reinterpret_cast<Finestra*>(GetWindowLongPtrW(maniglia, DWLP_USER));
  if (finestra == nullptr) return FALSE;
  const auto vita = finestra->weak_from_this().lock();
  if (!vita) return FALSE;
  try {
    const auto risposta = finestra->Messaggio(messaggio, wParam, lParam);
    if (!risposta) return FALSE;
    SetWindowLongPtrW(maniglia, DWLP_MSGRESULT, *risposta);
    return TRUE;
  } catch (...) {
    return FALSE;  // memory: Windows takes no exception
  }
}

std::optional<LRESULT> Finestra::Messaggio(UINT messaggio, WPARAM wParam, LPARAM lParam) {
  switch (messaggio) {
    case WM_COMMAND:
      Comando(LOWORD(wParam), HIWORD(wParam), reinterpret_cast<HWND>(lParam));
      return 0;
    case WM_NOTIFY: {
      const auto* notifica = reinterpret_cast<NMHDR*>(lParam);
      const auto trovato = elementi_.find(notifica->hwndFrom);
      return trovato == elementi_.end() ? 0 : trovato->second->Notifica(*notifica);
    }
    case WM_CLOSE:
      VuoleUscire(Chiusa);
      return 0;
    case WM_SIZE:
      if (wParam != SIZE_MINIMIZED && Ridimensionata) Ridimensionata();
      return 0;
    case WM_GETMINMAXINFO:
      Limiti(*reinterpret_cast<MINMAXINFO*>(lParam));
      return 0;
    case WM_ACTIVATE:
      // Later: what the activation sets off may show a window, and this message must be over first.
      if (LOWORD(wParam) != WA_INACTIVE) PostMessageW(maniglia_, kAttivata, 0, 0);
      return std::nullopt;
    case kAttivata:
      if (Attivata) Attivata();
      return 0;
    case WM_DPICHANGED:
      NuovoDpi(HIWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
      return 0;
    case WM_DROPFILES:
      FileLasciati(wParam);
      return 0;
    case WM_NCDESTROY:
      mostrata_ = false;
      spente_.reset();
      maniglia_ = nullptr;
      elementi_.clear();
      if (Chiusa) Chiusa();
      return std::nullopt;
    default:
      return std::nullopt;
  }
}

void Finestra::Comando(int identificatore, int codice, HWND controllo) {
  if (controllo == nullptr) {
    // Escape. Return arrives as IDOK, and in a box it is not an order to send.
    if (identificatore == IDCANCEL) VuoleUscire(Abbandonata);
    return;
  }
  const auto trovato = elementi_.find(controllo);
  if (trovato != elementi_.end()) trovato->second->Comando(codice);
}

// Not while an action is in progress, or something in front of the window waits for an answer.
void Finestra::VuoleUscire(const std::function<void()>& uscita) const {
  if (inAzione_ || IsWindowEnabled(maniglia_) == FALSE) {
    MessageBeep(MB_OK);
    return;
  }
  if (uscita) uscita();
}

void Finestra::Limiti(MINMAXINFO& limiti) const {
  if (dpi_ == 0) return;
  const RECT lavoro = AreaDiLavoro(maniglia_);
  const SIZE schermo = MisuraDi(lavoro);
  const SIZE intera = MisuraDi(ConBordo(minima_, kStile, kEsteso, dpi_));
  limiti.ptMinTrackSize = {std::min(intera.cx, schermo.cx), std::min(intera.cy, schermo.cy)};
}

void Finestra::NuovoDpi(int dpi, const RECT& posto) {
  minima_ = {MulDiv(minima_.cx, dpi, dpi_), MulDiv(minima_.cy, dpi, dpi_)};
  dpi_ = dpi;
  const Font vecchio = std::move(font_);  // in use until the controls have the new one
  const Font vecchioTitoli = std::move(fontTitoli_);
  CaricaFont();
  if (CambiatoDpi) CambiatoDpi();
  const SIZE misura = MisuraDi(posto);
  SetWindowPos(maniglia_, nullptr, posto.left, posto.top, misura.cx, misura.cy,
               SWP_NOZORDER | SWP_NOACTIVATE);
  if (Ridimensionata) Ridimensionata();
  InvalidateRect(maniglia_, nullptr, TRUE);
}

void Finestra::FileLasciati(WPARAM lasciati) const {
  auto* elenco = reinterpret_cast<HDROP>(lasciati);
  std::vector<std::string> file;
  const UINT quanti = DragQueryFileW(elenco, 0xFFFFFFFF, nullptr, 0);
  for (UINT i = 0; i < quanti; ++i) {
    std::wstring percorso(DragQueryFileW(elenco, i, nullptr, 0), L'\0');
    DragQueryFileW(elenco, i, percorso.data(), static_cast<UINT>(percorso.size()) + 1);
    file.push_back(Stretto(percorso));
  }
  DragFinish(elenco);
  if (!file.empty() && Lasciati) Lasciati(file);
}

}  // namespace orve::adapters::win32::finestre
