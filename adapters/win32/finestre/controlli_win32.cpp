#include "win32/finestre/controlli_win32.h"

#include <algorithm>
#include <array>
#include <utility>

#include "text/text.h"
#include "win32/finestre/caselle_di_testo.h"
#include "win32/finestre/griglia.h"
#include "win32/finestre/testo.h"

namespace orve::adapters::win32::finestre {

namespace {

constexpr float kRigaEtichetta = 270;  // twips

std::wstring TestoEtichetta(const host::LayoutControllo& layout) {
  // Trailing blanks would keep the caption away from the edge that its neighbours touch.
  const bool destra = layout.disegno.kvlalignment == 1;
  return Largo(destra ? text::TrimRight(layout.didascalia) : layout.didascalia);
}

// While it lives, the pointer tells the person to wait.
class PuntatoreInAttesa {
 public:
  PuntatoreInAttesa() : prima_(SetCursor(LoadCursorW(nullptr, IDC_WAIT))) {}
  PuntatoreInAttesa(const PuntatoreInAttesa&) = delete;
  PuntatoreInAttesa& operator=(const PuntatoreInAttesa&) = delete;
  PuntatoreInAttesa(PuntatoreInAttesa&&) = delete;
  PuntatoreInAttesa& operator=(PuntatoreInAttesa&&) = delete;
  ~PuntatoreInAttesa() { SetCursor(prima_); }

 private:
  HCURSOR prima_;
};

}  // namespace

// A group box to anything that asks what it is; it is drawn here, and its controls' notifications go on to
// the window.
Riquadro::Riquadro(Posto posto, const host::LayoutControllo& layout)
    : Controllo(std::move(posto), layout,
                {WC_BUTTONW, BS_GROUPBOX | WS_CLIPCHILDREN, WS_EX_CONTROLPARENT, Largo(layout.didascalia)}) {
  Intercetta();
}

LRESULT Riquadro::Messaggio(UINT messaggio, WPARAM wParam, LPARAM lParam) {
  switch (messaggio) {
    case WM_COMMAND:
    case WM_NOTIFY:
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
      return SendMessageW(LaFinestra()->Maniglia(), messaggio, wParam, lParam);
    case WM_ERASEBKGND: {
      RECT tutto = {};
      GetClientRect(Maniglia(), &tutto);
      FillRect(reinterpret_cast<HDC>(wParam), &tutto, GetSysColorBrush(COLOR_BTNFACE));
      return 1;
    }
    case WM_PAINT:
      Dipinge();
      return 0;
    case WM_SIZE:
      InvalidateRect(Maniglia(), nullptr, TRUE);
      return Predefinito(messaggio, wParam, lParam);
    default:
      return Predefinito(messaggio, wParam, lParam);
  }
}

void Riquadro::Dipinge() const {
  PAINTSTRUCT pittura = {};
  HDC dc = BeginPaint(Maniglia(), &pittura);
  const std::wstring titolo = Largo(tavola.didascalia);
  if (!titolo.empty()) {
    const int dpi = LaFinestra()->Dpi();
    const auto scala = [dpi](int pixel) { return MulDiv(pixel, dpi, forms::kPuntiPerPollice); };
    const COLORREF testo = GetSysColor(COLOR_BTNTEXT);
    const COLORREF fondo = GetSysColor(COLOR_BTNFACE);
    auto* const prima = SelectObject(dc, LaFinestra()->CarattereTitoli());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, Mescola(testo, fondo, 25));
    RECT tutto = {};
    GetClientRect(Maniglia(), &tutto);
    SIZE misura = {};
    GetTextExtentPoint32W(dc, titolo.c_str(), static_cast<int>(titolo.size()), &misura);
    RECT riga = {scala(8), scala(1), tutto.right - scala(8), scala(1) + misura.cy};
    DrawTextW(dc, titolo.c_str(), -1, &riga, DT_LEFT | DT_SINGLELINE | DT_NOPREFIX);
    SelectObject(dc, prima);
    const int mezzo = static_cast<int>(riga.top + misura.cy / 2 + 1);
    const RECT linea = {riga.left + misura.cx + scala(8), mezzo, riga.right, mezzo + std::max(1, scala(1))};
    HBRUSH pennello = CreateSolidBrush(Mescola(testo, fondo, 80));
    if (linea.left < linea.right) FillRect(dc, &linea, pennello);
    DeleteObject(pennello);
  }
  EndPaint(Maniglia(), &pittura);
}

Etichetta::Etichetta(Posto posto, const host::LayoutControllo& layout)
    : Controllo(std::move(posto), layout,
                {WC_STATICW,
                 static_cast<DWORD>(SS_CENTERIMAGE | (layout.disegno.kvlalignment == 1 ? SS_RIGHT : SS_LEFT)),
                 0, TestoEtichetta(layout)}) {}

void Etichetta::Posa() {
  auto dove = PostoInPixel();
  dove.height = std::min(dove.height, forms::Pixel(kRigaEtichetta, LaFinestra()->Dpi()));
  SetWindowPos(Maniglia(), nullptr, dove.left, dove.top, dove.width, dove.height,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

PulsanteMenu::PulsanteMenu(Posto posto, const host::LayoutControllo& layout, bool principale)
    : Controllo(std::move(posto), layout, {WC_BUTTONW, BS_PUSHBUTTON, 0, Largo(layout.didascalia)}),
      principale_(principale) {
  if (layout.disegno.ismenupopup) Intercetta();
}

void PulsanteMenu::Comando(int codice) {
  if (codice != BN_CLICKED) return;
  LaFinestra()->Azione([this] {
    if (tavola.disegno.ismenupopup) {
      MostraMenu();
    } else if (principale_) {
      const PuntatoreInAttesa attesa;
      host::Solleva(ButtonClick);
    } else {
      host::Solleva(ButtonClick);
    }
  });
}

void PulsanteMenu::MostraMenu() {
  host::Solleva(BeforeShowMenuPopup);
  const auto voci = Voci();
  if (voci.empty()) return;
  HMENU menu = CreatePopupMenu();
  UINT comando = 0;
  for (const auto& voce : voci) {
    AppendMenuW(menu, MF_STRING | (voce.attiva ? MF_ENABLED : MF_GRAYED), ++comando,
                Largo(voce.didascalia).c_str());
  }
  TPMPARAMS libero = {};
  libero.cbSize = sizeof libero;
  GetWindowRect(Maniglia(), &libero.rcExclude);
  const int scelta = TrackPopupMenuEx(
      menu, TPM_LEFTALIGN | TPM_TOPALIGN | TPM_VERTICAL | TPM_RETURNCMD | TPM_NONOTIFY | TPM_LEFTBUTTON,
      static_cast<int>(libero.rcExclude.left), static_cast<int>(libero.rcExclude.bottom),
      LaFinestra()->Maniglia(), &libero);
  DestroyMenu(menu);
  // The menu is gone before the choice shows a window of its own.
  if (scelta > 0 && static_cast<std::size_t>(scelta) <= voci.size()) {
    const auto& voce = voci[static_cast<std::size_t>(scelta) - 1];
    if (voce.attiva) host::Solleva(MenuItemClick, std::string(voce.chiave), std::string());
  }
}

// The arrow opens the menu, as everywhere.
LRESULT PulsanteMenu::Messaggio(UINT messaggio, WPARAM wParam, LPARAM lParam) {
  if (messaggio == WM_GETDLGCODE) {
    const auto* tasto = reinterpret_cast<const MSG*>(lParam);
    const bool giu = tasto != nullptr && tasto->message == WM_KEYDOWN && tasto->wParam == VK_DOWN;
    return Predefinito(messaggio, wParam, lParam) | (giu ? DLGC_WANTMESSAGE : 0);
  }
  if (messaggio == WM_KEYDOWN && wParam == VK_DOWN) {
    Comando(BN_CLICKED);
    return 0;
  }
  return Predefinito(messaggio, wParam, lParam);
}

LRESULT PulsanteMenu::Notifica(const NMHDR& notifica) {
  if (notifica.code != static_cast<UINT>(NM_CUSTOMDRAW) || !tavola.disegno.ismenupopup) return CDRF_DODEFAULT;
  const auto& disegno = reinterpret_cast<const NMCUSTOMDRAW&>(notifica);
  switch (disegno.dwDrawStage) {
    case CDDS_PREERASE:
    case CDDS_PREPAINT:
      return CDRF_NOTIFYPOSTPAINT;
    case CDDS_POSTPAINT:
      DisegnaTriangolo(disegno.hdc);
      return CDRF_DODEFAULT;
    default:
      return CDRF_DODEFAULT;
  }
}

void PulsanteMenu::DisegnaTriangolo(HDC dc) const {
  const int passo = std::max(1, MulDiv(4, LaFinestra()->Dpi(), forms::kPuntiPerPollice));
  RECT tutto = {};
  GetClientRect(Maniglia(), &tutto);
  const LONG x = tutto.right - passo - 1;
  const LONG y = tutto.bottom - passo - 1;
  std::array<POINT, 3> angoli = {POINT{x, y}, POINT{x - passo, y}, POINT{x, y - passo}};
  const COLORREF colore =
      Mescola(GetSysColor(attivo ? COLOR_BTNTEXT : COLOR_GRAYTEXT), GetSysColor(COLOR_BTNFACE), 35);
  HBRUSH pennello = CreateSolidBrush(colore);
  HPEN penna = CreatePen(PS_SOLID, 1, colore);
  auto* const primaPennello = SelectObject(dc, pennello);
  auto* const primaPenna = SelectObject(dc, penna);
  Polygon(dc, angoli.data(), static_cast<int>(angoli.size()));
  SelectObject(dc, primaPennello);
  SelectObject(dc, primaPenna);
  DeleteObject(pennello);
  DeleteObject(penna);
}

Spunta::Spunta(Posto posto, const host::LayoutControllo& layout)
    : Controllo(std::move(posto), layout, {WC_BUTTONW, BS_AUTOCHECKBOX, 0, Largo(layout.didascalia)}) {}

void Spunta::Comando(int codice) {
  if (codice != BN_CLICKED) return;
  LaFinestra()->Azione([this] { host::Solleva(Change); });
}

Combo::Combo(Posto posto, const host::LayoutControllo& layout)
    : Controllo(std::move(posto), layout, {WC_COMBOBOXW, CBS_DROPDOWNLIST | CBS_HASSTRINGS | WS_VSCROLL}) {
  Intercetta();
}

// The height given to a combo box is that of its list; the box itself is as high as its line and the border
// around it, which only the box knows.
void Combo::Posa() {
  constexpr auto kLinea = static_cast<WPARAM>(-1);
  constexpr int kRighe = 12;
  constexpr int kTentativi = 3;
  const auto dove = PostoInPixel();
  const auto riga = static_cast<int>(Manda(CB_GETITEMHEIGHT, 0));
  SetWindowPos(Maniglia(), nullptr, dove.left, dove.top, dove.width, dove.height + kRighe * riga,
               SWP_NOZORDER | SWP_NOACTIVATE);
  auto linea = static_cast<int>(Manda(CB_GETITEMHEIGHT, kLinea));
  for (int i = 0; i < kTentativi; ++i) {
    RECT ora = {};
    GetWindowRect(Maniglia(), &ora);
    const auto troppo = static_cast<int>(ora.bottom - ora.top) - dove.height;
    linea -= troppo;
    if (troppo == 0 || linea < 1) return;
    Manda(CB_SETITEMHEIGHT, kLinea, linea);
  }
}

void Combo::AggiungiVoce(const std::string& testo) {
  Manda(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Largo(testo).c_str()));
}

void Combo::Seleziona() {
  Manda(CB_SETCURSEL, static_cast<WPARAM>(static_cast<INT_PTR>(Selezionata())));
}

// While the list is open the person is only looking; leaving it without a choice brings the old entry back.
void Combo::Comando(int codice) {
  switch (codice) {
    case CBN_SELCHANGE:
      if (Manda(CB_GETDROPPEDSTATE) == FALSE) Confronta();
      break;
    case CBN_SELENDCANCEL:
      Seleziona();
      break;
    case CBN_CLOSEUP:
      Confronta();
      break;
    case CBN_SETFOCUS:
      if (apreDaSola_ && LaFinestra()->DaTastiera()) Manda(CB_SHOWDROPDOWN, TRUE);
      break;
    default:
      break;
  }
}

// The entry on the screen with the one in force.
void Combo::Confronta() {
  const auto scelta = static_cast<std::int16_t>(Manda(CB_GETCURSEL));
  if (scelta < 0 || scelta == Selezionata()) return;
  LaFinestra()->Azione([this, scelta] { Scelta(scelta); });
  Seleziona();  // the entry in force, even when another action was running and this one did not
}

// The window opens with the keyboard in this box, where the wheel goes too: turning it would change the
// sender unseen, unless the list is open.
LRESULT Combo::Messaggio(UINT messaggio, WPARAM wParam, LPARAM lParam) {
  if (messaggio == WM_MOUSEWHEEL && Manda(CB_GETDROPPEDSTATE) == FALSE) return 0;
  return Predefinito(messaggio, wParam, lParam);
}

std::shared_ptr<host::Controllo> CreaControllo(Posto posto, const host::LayoutControllo& layout,
                                               bool principale) {
  switch (layout.tipo) {
    case host::TipoControllo::kFrame:
      return std::make_shared<Riquadro>(std::move(posto), layout);
    case host::TipoControllo::kEtichetta:
    case host::TipoControllo::kKvlLabel:
      return std::make_shared<Etichetta>(std::move(posto), layout);
    case host::TipoControllo::kTbarMenu:
      return std::make_shared<PulsanteMenu>(std::move(posto), layout, principale);
    case host::TipoControllo::kTxtEdit:
      return std::make_shared<Riga>(std::move(posto), layout);
    case host::TipoControllo::kRichTextBox:
      return std::make_shared<Corpo>(std::move(posto), layout);
    case host::TipoControllo::kCheckBox:
      return std::make_shared<Spunta>(std::move(posto), layout);
    case host::TipoControllo::kCombo:
      return std::make_shared<Combo>(std::move(posto), layout);
    case host::TipoControllo::kGriglia:
      return std::make_shared<Griglia>(std::move(posto), layout);
    case host::TipoControllo::kResizeForm:
      break;
  }
  return nullptr;
}

}  // namespace orve::adapters::win32::finestre
