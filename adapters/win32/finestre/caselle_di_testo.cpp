#include "win32/finestre/caselle_di_testo.h"

#include <richedit.h>
#include <uxtheme.h>
#include <vssym32.h>

#include <algorithm>
#include <limits>
#include <utility>

#include "forms/testo_digitato.h"
#include "orve-mailserver/host/errore.h"
#include "text/text.h"
#include "win32/finestre/messaggi.h"
#include "win32/finestre/testo.h"

namespace orve::adapters::win32::finestre {

namespace {

constexpr LPARAM kSenzaLimite = std::numeric_limits<int>::max() - 1;
constexpr UINT kUnicode = 1200;
constexpr wchar_t kCtrlA = 0x01;
constexpr wchar_t kCtrlV = 0x16;

bool Giu(int tasto) {
  return GetKeyState(tasto) < 0;
}

// Loaded once and kept: windows may be asked for as long as the program runs.
void CaricaRichEdit() {
  static HMODULE modulo = LoadLibraryExW(L"msftedit.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  if (modulo == nullptr) throw host::Errore(host::kOggettoNonCreabile);
}

std::wstring DagliAppunti(HWND finestra) {
  std::wstring testo;
  if (OpenClipboard(finestra) == FALSE) return testo;
  HANDLE dati = GetClipboardData(CF_UNICODETEXT);
  if (const void* blocco = dati != nullptr ? GlobalLock(dati) : nullptr) {
    const auto* inizio = static_cast<const wchar_t*>(blocco);
    const auto* fine = inizio + GlobalSize(dati) / sizeof(wchar_t);
    testo.assign(inizio, std::find(inizio, fine, L'\0'));
    GlobalUnlock(dati);
  }
  CloseClipboard();
  return testo;
}

}  // namespace

std::string CasellaDiTesto::Legge() const {
  const std::wstring ora = Mostrato();
  return ora == mostrato_ ? scritto_ : Stretto(ora);
}

void CasellaDiTesto::Scrive(const std::string& testo) {
  const std::string ora = Legge();
  scrive_ = true;
  if (!testo.starts_with(ora) || !Aggiunge(Largo(testo.substr(ora.size())))) {
    SetWindowTextW(Maniglia(), Largo(testo).c_str());
    Manda(EM_EMPTYUNDOBUFFER);
  }
  scrive_ = false;
  scritto_ = testo;
  mostrato_ = Mostrato();
  prima_ = Contato();
}

void CasellaDiTesto::Comando(int codice) {
  if (codice == EN_CHANGE && !scrive_) Protetta(LaFinestra()->Maniglia(), [this] { Cambiata(); });
}

// As it will be sent, with a line end of two characters.
std::string CasellaDiTesto::Misurato(const std::wstring& contato) const {
  std::string testo = Stretto(contato);
  return multiriga_ ? text::Replace(testo, "\r", "\r\n") : testo;
}

std::wstring CasellaDiTesto::Accettato(const std::wstring& inserito) const {
  std::wstring resto = Contato();
  const auto lunghezza = static_cast<LONG>(resto.size());
  const Selezione scelta = Scelta();
  const LONG inizio = std::clamp(scelta.inizio, LONG{0}, lunghezza);
  const LONG fine = std::clamp(scelta.fine, inizio, lunghezza);
  resto.erase(static_cast<std::size_t>(inizio), static_cast<std::size_t>(fine - inizio));
  return Largo(forms::TestoAccettato(Misurato(resto), Stretto(inserito), tavola.disegno.maxchar, multiriga_));
}

void CasellaDiTesto::Incolla() {
  const std::wstring accettato = Accettato(DagliAppunti(Maniglia()));
  if (!accettato.empty()) Manda(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(accettato.c_str()));
}

// An emoji comes in two halves, which must both be let in or both refused.
bool CasellaDiTesto::Entra(wchar_t carattere) {
  if (IS_LOW_SURROGATE(carattere)) return std::exchange(meta_, false);
  if (IS_HIGH_SURROGATE(carattere)) {
    meta_ = !Accettato(L"\U0001F4E7").empty();
    return meta_;
  }
  if (carattere == L'\r' || carattere == L'\n') return !multiriga_ || !Accettato(L"\r\n").empty();
  constexpr wchar_t kCancella = 0x7F;
  const bool comando = carattere < L' ' || carattere == kCancella;
  return comando || !Accettato(std::wstring(1, carattere)).empty();
}

// Whether the key has been handled.
bool CasellaDiTesto::Tasto(WPARAM tasto) {
  const bool ctrl = Giu(VK_CONTROL) && !Giu(VK_MENU);
  if (!multiriga_) {
    if (!ctrl || tasto != 'A') return false;
    Manda(EM_SETSEL, 0, -1);
    return true;
  }
  if ((ctrl && tasto == 'V') || (Giu(VK_SHIFT) && tasto == VK_INSERT)) {
    Incolla();
    return true;
  }
  return tasto == VK_RETURN && Accettato(L"\r\n").empty();
}

LRESULT CasellaDiTesto::Messaggio(UINT messaggio, WPARAM wParam, LPARAM lParam) {
  switch (messaggio) {
    case WM_PASTE:
    case EM_PASTESPECIAL:
      Incolla();
      return 0;
    case WM_KEYDOWN:
      if (Tasto(wParam)) return 0;
      break;
    case WM_CHAR: {
      const auto carattere = static_cast<wchar_t>(wParam);
      // Already handled when the key went down.
      if (carattere == (multiriga_ ? kCtrlV : kCtrlA)) return 0;
      if (!Entra(carattere)) return 0;
      break;
    }
    default:
      break;
  }
  return Predefinito(messaggio, wParam, lParam);
}

// Text that arrives in other ways than those above: from an input method, or a dictation or screen-reading
// tool. The new part is cut as if it had been typed.
void CasellaDiTesto::Cambiata() {
  const std::wstring ora = Contato();
  const std::size_t minore = std::min(ora.size(), prima_.size());
  std::size_t testa = 0;
  while (testa < minore && ora[testa] == prima_[testa]) ++testa;
  std::size_t coda = 0;
  while (coda < minore - testa && ora[ora.size() - 1 - coda] == prima_[prima_.size() - 1 - coda]) ++coda;
  if (testa > 0 && IS_HIGH_SURROGATE(ora[testa - 1])) --testa;
  if (coda > 0 && IS_LOW_SURROGATE(ora[ora.size() - coda])) --coda;
  const std::wstring inizio = ora.substr(0, testa);
  const std::wstring inserito = ora.substr(testa, ora.size() - coda - testa);
  const std::wstring fine = ora.substr(ora.size() - coda);
  const auto limite = static_cast<std::size_t>(std::max(tavola.disegno.maxchar, 0));
  const bool aCapo = !multiriga_ && inserito.find_first_of(L"\r\n") != std::wstring::npos;
  if (!aCapo && (limite == 0 || inserito.empty() || text::Length(Misurato(ora)) <= limite)) {
    prima_ = ora;
    return;
  }
  const std::wstring accettato = Largo(
      forms::TestoAccettato(Misurato(inizio + fine), Stretto(inserito), tavola.disegno.maxchar, multiriga_));
  const std::wstring voluto = accettato.empty() ? prima_ : inizio + accettato + fine;
  scrive_ = true;
  SetWindowTextW(Maniglia(), voluto.c_str());
  const auto cursore = static_cast<LONG>(testa + accettato.size());
  Seleziona({cursore, cursore});
  Manda(EM_EMPTYUNDOBUFFER);  // undo never brings up what was refused
  scrive_ = false;
  prima_ = Contato();
}

CasellaRiga::CasellaRiga(Posto posto, const host::LayoutControllo& layout)
    : CasellaDiTesto(std::move(posto), layout, {WC_EDITW, ES_AUTOHSCROLL, WS_EX_CLIENTEDGE}, false) {
  Manda(EM_SETLIMITTEXT, static_cast<WPARAM>(kSenzaLimite));
  Intercetta();
}

std::wstring CasellaRiga::Mostrato() const {
  std::wstring testo(static_cast<std::size_t>(Manda(WM_GETTEXTLENGTH)), L'\0');
  if (testo.empty()) return testo;
  testo.resize(
      static_cast<std::size_t>(Manda(WM_GETTEXT, testo.size() + 1, reinterpret_cast<LPARAM>(testo.data()))));
  return testo;
}

CasellaDiTesto::Selezione CasellaRiga::Scelta() const {
  DWORD inizio = 0;
  DWORD fine = 0;
  Manda(EM_GETSEL, reinterpret_cast<WPARAM>(&inizio), reinterpret_cast<LPARAM>(&fine));
  return {static_cast<LONG>(inizio), static_cast<LONG>(fine)};
}

void CasellaRiga::Seleziona(Selezione selezione) {
  Manda(EM_SETSEL, static_cast<WPARAM>(selezione.inizio), selezione.fine);
}

CasellaCorpo::CasellaCorpo(Posto posto, const host::LayoutControllo& layout)
    : CasellaDiTesto(std::move(posto), layout,
                     (CaricaRichEdit(),
                      Sagoma{MSFTEDIT_CLASS,
                             ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN | ES_NOOLEDRAGDROP | WS_VSCROLL,
                             WS_EX_CLIENTEDGE}),
                     true) {
  Manda(EM_SETTEXTMODE, TM_PLAINTEXT | TM_MULTILEVELUNDO);
  Manda(EM_EXLIMITTEXT, 0, kSenzaLimite);
  Manda(EM_SETEVENTMASK, 0, ENM_CHANGE);
  constexpr WORD kMargine = 3;  // to line up with the text of the other boxes
  Manda(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(kMargine, kMargine));
  Manda(EM_EMPTYUNDOBUFFER);  // setting the font was not the person's doing
  Intercetta();
}

std::wstring CasellaCorpo::Testo(bool conLineFeed) const {
  GETTEXTLENGTHEX domanda = {GTL_PRECISE | GTL_NUMCHARS | (conLineFeed ? GTL_USECRLF : 0U), kUnicode};
  const LRESULT lunghezza = Manda(EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&domanda));
  if (lunghezza <= 0) return {};
  std::wstring testo(static_cast<std::size_t>(lunghezza), L'\0');
  GETTEXTEX come = {};
  come.cb = static_cast<DWORD>((testo.size() + 1) * sizeof(wchar_t));
  come.flags = conLineFeed ? GT_USECRLF : GT_DEFAULT;
  come.codepage = kUnicode;
  testo.resize(static_cast<std::size_t>(
      Manda(EM_GETTEXTEX, reinterpret_cast<WPARAM>(&come), reinterpret_cast<LPARAM>(testo.data()))));
  return testo;
}

std::wstring CasellaCorpo::Mostrato() const {
  std::wstring testo = Testo(true);
  // A line that was broken with Shift+Return.
  for (auto dove = testo.find(L'\v'); dove != std::wstring::npos; dove = testo.find(L'\v', dove)) {
    testo.replace(dove, 1, L"\r\n");
  }
  return testo;
}

std::wstring CasellaCorpo::Contato() const {
  return Testo(false);
}

bool CasellaCorpo::Aggiunge(const std::wstring& seguito) {
  if (IsWindowVisible(Maniglia()) == FALSE) return false;
  const auto fine = static_cast<LONG>(Contato().size());
  Seleziona({fine, fine});
  Manda(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(seguito.c_str()));
  Manda(WM_VSCROLL, SB_BOTTOM);  // the view only follows the caret in the focused box
  return true;
}

CasellaDiTesto::Selezione CasellaCorpo::Scelta() const {
  CHARRANGE scelta = {};
  Manda(EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&scelta));
  return {scelta.cpMin, scelta.cpMax};
}

void CasellaCorpo::Seleziona(Selezione selezione) {
  CHARRANGE scelta = {selezione.inizio, selezione.fine};
  Manda(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&scelta));
}

LRESULT CasellaCorpo::Messaggio(UINT messaggio, WPARAM wParam, LPARAM lParam) {
  switch (messaggio) {
    case WM_GETDLGCODE: {
      // The Tab key can leave the box, and entering it selects nothing.
      const auto* tasto = reinterpret_cast<const MSG*>(lParam);
      const bool esce = tasto != nullptr && (tasto->wParam == VK_TAB || tasto->wParam == VK_ESCAPE) &&
                        (tasto->message == WM_KEYDOWN || tasto->message == WM_CHAR);
      return esce ? DLGC_WANTARROWS | DLGC_WANTCHARS : DLGC_WANTARROWS | DLGC_WANTCHARS | DLGC_WANTALLKEYS;
    }
    case WM_ENABLE:
      Manda(EM_SETBKGNDCOLOR, wParam != FALSE ? TRUE : FALSE,
            static_cast<LPARAM>(GetSysColor(COLOR_BTNFACE)));
      break;
    case WM_NCPAINT: {
      const LRESULT risposta = CasellaDiTesto::Messaggio(messaggio, wParam, lParam);
      DipingeBordo();
      return risposta;
    }
    case WM_CONTEXTMENU:
      MenuDiScelta(lParam);
      return 0;
    default:
      break;
  }
  return CasellaDiTesto::Messaggio(messaggio, wParam, lParam);
}

// The border that single-line boxes have; the rich edit's own is from another age.
void CasellaCorpo::DipingeBordo() {
  HTHEME tema = OpenThemeData(Maniglia(), L"EDIT");
  if (tema == nullptr) return;
  RECT intera = {};
  GetWindowRect(Maniglia(), &intera);
  OffsetRect(&intera, -intera.left, -intera.top);
  HDC dc = GetWindowDC(Maniglia());
  const int x = GetSystemMetrics(SM_CXEDGE);
  const int y = GetSystemMetrics(SM_CYEDGE);
  ExcludeClipRect(dc, x, y, static_cast<int>(intera.right) - x, static_cast<int>(intera.bottom) - y);
  DrawThemeBackground(tema, dc, EP_EDITBORDER_NOSCROLL, attivo ? EPSN_NORMAL : EPSN_DISABLED, &intera,
                      nullptr);
  ReleaseDC(Maniglia(), dc);
  CloseThemeData(tema);
}

// The single-line box gets this menu from Windows.
void CasellaCorpo::MenuDiScelta(LPARAM dove) {
  enum Voce : UINT { kAnnulla = 1, kTaglia, kCopia, kIncolla, kElimina, kTutto };
  const Selezione scelta = Scelta();
  const auto se = [](bool acceso) {
    return static_cast<UINT>(MF_STRING | (acceso ? MF_ENABLED : MF_GRAYED));
  };
  const bool scelto = scelta.fine > scelta.inizio;
  HMENU menu = CreatePopupMenu();
  AppendMenuW(menu, se(Manda(EM_CANUNDO) != FALSE), kAnnulla, L"&Annulla");
  AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
  AppendMenuW(menu, se(scelto), kTaglia, L"&Taglia");
  AppendMenuW(menu, se(scelto), kCopia, L"&Copia");
  AppendMenuW(menu, se(IsClipboardFormatAvailable(CF_UNICODETEXT) != FALSE), kIncolla, L"&Incolla");
  AppendMenuW(menu, se(scelto), kElimina, L"&Elimina");
  AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
  AppendMenuW(menu, se(!Contato().empty()), kTutto, L"&Seleziona tutto");
  POINT punto = {static_cast<short>(LOWORD(dove)), static_cast<short>(HIWORD(dove))};
  if (dove == -1) {  // asked for by the keyboard
    Manda(EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&punto), scelta.inizio);
    ClientToScreen(Maniglia(), &punto);
  }
  SetFocus(Maniglia());
  const int voce =
      TrackPopupMenuEx(menu, TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON, static_cast<int>(punto.x),
                       static_cast<int>(punto.y), Maniglia(), nullptr);
  DestroyMenu(menu);
  switch (voce) {
    case kAnnulla:
      Manda(EM_UNDO);
      break;
    case kTaglia:
      Manda(WM_CUT);
      break;
    case kCopia:
      Manda(WM_COPY);
      break;
    case kIncolla:
      Incolla();
      break;
    case kElimina:
      Manda(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L""));
      break;
    case kTutto:
      Seleziona({0, -1});
      break;
    default:
      break;
  }
}

}  // namespace orve::adapters::win32::finestre
