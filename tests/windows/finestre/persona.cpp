#include "persona.h"

#include <commctrl.h>
#include <commdlg.h>
#include <dlgs.h>
#include <gtest/gtest.h>
#include <richedit.h>
#include <shlobj.h>

#include <algorithm>
#include <chrono>

#include "text/text.h"
#include "win32/finestre/finestre.h"
#include "win32/finestre/testo.h"

namespace orve::adapters::win32::finestre {

namespace {

constexpr auto kPazienza = std::chrono::seconds(60);
constexpr DWORD kPausa = 5;
constexpr UINT kEsegui = WM_APP + 1;
constexpr UINT kOttieniMenu = 0x01E1;  // MN_GETHMENU

LRESULT CALLBACK Servizio(HWND finestra, UINT messaggio, WPARAM wParam, LPARAM lParam) {
  if (messaggio != kEsegui) return DefWindowProcW(finestra, messaggio, wParam, lParam);
  if (lParam != 0) (*reinterpret_cast<const std::function<void()>*>(lParam))();
  if (wParam != 0) SetEvent(reinterpret_cast<HANDLE>(wParam));
  return 0;
}

BOOL CALLBACK Raccogli(HWND finestra, LPARAM dove) {
  reinterpret_cast<std::vector<HWND>*>(dove)->push_back(finestra);
  return TRUE;
}

std::vector<HWND> Figli(HWND finestra) {
  std::vector<HWND> figli;
  EnumChildWindows(finestra, Raccogli, reinterpret_cast<LPARAM>(&figli));
  return figli;
}

HWND Aspetta(const char* che, const std::function<HWND()>& cerca) {
  HWND trovata = nullptr;
  EXPECT_TRUE(Attendi([&] {
    trovata = cerca();
    return trovata != nullptr;
  })) << che;
  return trovata;
}

bool ConTesto(HWND casella, const std::wstring& testo) {
  const auto figli = Figli(casella);
  return std::any_of(figli.begin(), figli.end(), [&](HWND figlio) { return TestoDi(figlio) == testo; });
}

HWND Menu(const Programma& programma) {
  for (auto* finestra : FinestreDi(programma)) {
    if (ClasseDi(finestra) == L"#32768") return finestra;
  }
  return nullptr;
}

void Annotate(HMENU menu, std::vector<std::string>& voci) {
  for (int i = 0; i < GetMenuItemCount(menu); ++i) {
    std::wstring testo(256, L'\0');
    testo.resize(static_cast<std::size_t>(GetMenuStringW(menu, static_cast<UINT>(i), testo.data(),
                                                         static_cast<int>(testo.size()), MF_BYPOSITION)));
    const UINT stato = GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION);
    const bool spenta = (stato & MF_GRAYED) != 0 && (stato & MF_SEPARATOR) == 0;
    voci.push_back(spenta ? "(" + Stretto(testo) + ")" : Stretto(testo));
  }
}

}  // namespace

bool Attendi(const std::function<bool()>& condizione) {
  const auto fine = std::chrono::steady_clock::now() + kPazienza;
  while (!condizione()) {
    if (std::chrono::steady_clock::now() > fine) return false;
    Sleep(kPausa);
  }
  return true;
}

Programma::Programma() : filo_(GetCurrentThreadId()) {
  WNDCLASSW classe = {};
  classe.lpfnWndProc = Servizio;
  classe.hInstance = GetModuleHandleW(nullptr);
  classe.lpszClassName = L"OrveProva";
  RegisterClassW(&classe);
  finestra_ =
      CreateWindowExW(0, L"OrveProva", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, classe.hInstance, nullptr);
}

Programma::~Programma() {
  DestroyWindow(finestra_);
}

void Programma::Esegui(const std::function<void()>& azione) const {
  SendMessageW(finestra_, kEsegui, 0, reinterpret_cast<LPARAM>(&azione));
}

void Programma::Respira() const {
  HANDLE fatto = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  PostMessageW(finestra_, kEsegui, reinterpret_cast<WPARAM>(fatto), 0);
  const auto attesa = static_cast<DWORD>(std::chrono::milliseconds(kPazienza).count());
  EXPECT_EQ(WaitForSingleObject(fatto, attesa), WAIT_OBJECT_0);
  CloseHandle(fatto);
}

std::vector<HWND> FinestreDi(const Programma& programma) {
  std::vector<HWND> finestre;
  EnumThreadWindows(programma.Filo(), Raccogli, reinterpret_cast<LPARAM>(&finestre));
  finestre.erase(
      std::remove_if(finestre.begin(), finestre.end(), [](HWND f) { return IsWindowVisible(f) == FALSE; }),
      finestre.end());
  return finestre;
}

std::wstring TestoDi(HWND finestra) {
  std::wstring testo(static_cast<std::size_t>(SendMessageW(finestra, WM_GETTEXTLENGTH, 0, 0)), L'\0');
  if (testo.empty()) return testo;
  testo.resize(static_cast<std::size_t>(
      SendMessageW(finestra, WM_GETTEXT, testo.size() + 1, reinterpret_cast<LPARAM>(testo.data()))));
  return testo;
}

std::wstring ClasseDi(HWND finestra) {
  std::wstring classe(64, L'\0');
  classe.resize(
      static_cast<std::size_t>(GetClassNameW(finestra, classe.data(), static_cast<int>(classe.size()))));
  return classe;
}

HWND Discendente(HWND finestra, int identificatore) {
  for (auto* figlio : Figli(finestra)) {
    if (GetDlgCtrlID(figlio) == identificatore) return figlio;
  }
  return nullptr;
}

HWND Vista::Trova(const std::string& nome) const {
  auto* trovato = Discendente(finestra_, IdentificatoreDi(layout_, nome));
  EXPECT_NE(trovato, nullptr) << nome;
  return trovato;
}

HWND Vista::Raggiunge(const std::string& nome) const {
  auto* trovato = Trova(nome);
  EXPECT_TRUE(IsWindowVisible(trovato)) << nome;
  EXPECT_TRUE(IsWindowEnabled(trovato)) << nome;
  EXPECT_TRUE(IsWindowEnabled(finestra_)) << nome;
  return trovato;
}

std::string Vista::Titolo() const {
  return Stretto(TestoDi(finestra_));
}

std::string Vista::Contenuto(const std::string& nome) const {
  return Stretto(TestoDi(Trova(nome)));
}

bool Vista::Spuntata(const std::string& nome) const {
  return SendMessageW(Trova(nome), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

std::string Vista::Fuoco() const {
  GUITHREADINFO filo = {};
  filo.cbSize = sizeof filo;
  GetGUIThreadInfo(programma_.Filo(), &filo);
  const int identificatore = filo.hwndFocus != nullptr ? GetDlgCtrlID(filo.hwndFocus) : 0;
  const int quale = identificatore - kPrimoControllo;
  if (quale < 0 || quale >= static_cast<int>(layout_.controlli.size())) return "";
  return std::string(layout_.controlli[static_cast<std::size_t>(quale)].nome);
}

RECT Vista::Posto(const std::string& nome) const {
  auto* controllo = Trova(nome);
  RECT posto = {};
  GetWindowRect(controllo, &posto);
  MapWindowPoints(HWND_DESKTOP, GetParent(controllo), reinterpret_cast<POINT*>(&posto), 2);
  return posto;
}

SIZE Vista::Interno() const {
  RECT interno = {};
  GetClientRect(finestra_, &interno);
  return {interno.right, interno.bottom};
}

std::vector<std::string> Vista::Righe() const {
  auto* griglia = Trova("GRID_ALLEGATI");
  std::vector<std::string> righe;
  const auto quante = static_cast<int>(SendMessageW(griglia, LVM_GETITEMCOUNT, 0, 0));
  for (int i = 0; i < quante; ++i) {
    std::wstring testo(1024, L'\0');
    LVITEMW voce = {};
    voce.pszText = testo.data();
    voce.cchTextMax = static_cast<int>(testo.size());
    const LRESULT lungo =
        SendMessageW(griglia, LVM_GETITEMTEXTW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&voce));
    righe.push_back(Stretto(std::wstring_view(voce.pszText, static_cast<std::size_t>(lungo))));
  }
  return righe;
}

int Vista::RigaSelezionata() const {
  return static_cast<int>(
             SendMessageW(Trova("GRID_ALLEGATI"), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED)) +
         1;
}

void Vista::Clicca(const std::string& nome) const {
  PostMessageW(Raggiunge(nome), BM_CLICK, 0, 0);
}

void Vista::Fuoco(const std::string& nome) const {
  SendMessageW(finestra_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Raggiunge(nome)), TRUE);
}

void Vista::Tasto(WPARAM tasto) const {
  GUITHREADINFO filo = {};
  filo.cbSize = sizeof filo;
  GetGUIThreadInfo(programma_.Filo(), &filo);
  auto* dove = filo.hwndFocus != nullptr ? filo.hwndFocus : finestra_;
  PostMessageW(dove, WM_KEYDOWN, tasto, 1);
  PostMessageW(dove, WM_KEYUP, tasto, static_cast<LPARAM>(0xC0000001));
  programma_.Respira();
}

void Vista::Mnemonico(char lettera) const {
  GUITHREADINFO filo = {};
  filo.cbSize = sizeof filo;
  GetGUIThreadInfo(programma_.Filo(), &filo);
  constexpr LPARAM kConAlt = 1L << 29;
  PostMessageW(filo.hwndFocus != nullptr ? filo.hwndFocus : finestra_, WM_SYSCHAR,
               static_cast<WPARAM>(lettera), kConAlt);
  programma_.Respira();
}

void Vista::Digita(const std::string& nome, const std::string& testo) const {
  auto* casella = Raggiunge(nome);
  Fuoco(nome);
  constexpr int kFine = 0x7FFFFFFF;
  Seleziona(nome, kFine, kFine);
  for (const wchar_t carattere : Largo(testo)) SendMessageW(casella, WM_CHAR, carattere, 1);
}

void Vista::Riscrive(const std::string& nome, const std::string& testo) const {
  Seleziona(nome, 0, -1);
  auto* casella = Raggiunge(nome);
  SendMessageW(casella, WM_KEYDOWN, VK_DELETE, 1);
  for (const wchar_t carattere : Largo(testo)) SendMessageW(casella, WM_CHAR, carattere, 1);
}

void Vista::Seleziona(const std::string& nome, int inizio, int fine) const {
  SendMessageW(Raggiunge(nome), EM_SETSEL, static_cast<WPARAM>(inizio), fine);
}

void Vista::Appunti(const std::string& testo) const {
  const std::wstring largo = Largo(testo);
  programma_.Esegui([&] {
    HGLOBAL blocco = GlobalAlloc(GMEM_MOVEABLE, (largo.size() + 1) * sizeof(wchar_t));
    auto* dove = static_cast<wchar_t*>(GlobalLock(blocco));
    std::copy(largo.begin(), largo.end(), dove);
    dove[largo.size()] = L'\0';
    GlobalUnlock(blocco);
    ASSERT_TRUE(Attendi([&] { return OpenClipboard(finestra_) != FALSE; }));
    EmptyClipboard();
    SetClipboardData(CF_UNICODETEXT, blocco);
    CloseClipboard();
  });
}

std::string Vista::Appunti() const {
  std::string testo;
  programma_.Esegui([&] {
    ASSERT_TRUE(Attendi([&] { return OpenClipboard(finestra_) != FALSE; }));
    HANDLE blocco = GetClipboardData(CF_UNICODETEXT);
    if (blocco != nullptr) {
      testo = Stretto(static_cast<const wchar_t*>(GlobalLock(blocco)));
      GlobalUnlock(blocco);
    }
    CloseClipboard();
  });
  return testo;
}

void Vista::Incolla(const std::string& nome, const std::string& testo) const {
  Appunti(testo);
  SendMessageW(Raggiunge(nome), WM_PASTE, 0, 0);
}

void Vista::Lascia(const std::vector<std::string>& percorsi) const {
  std::wstring elenco;
  for (const auto& uno : percorsi) elenco += Largo(uno) + L'\0';
  elenco += L'\0';
  HGLOBAL blocco =
      GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DROPFILES) + elenco.size() * sizeof(wchar_t));
  auto* lasciati = static_cast<DROPFILES*>(GlobalLock(blocco));
  lasciati->pFiles = sizeof(DROPFILES);
  lasciati->fWide = TRUE;
  std::copy(elenco.begin(), elenco.end(), reinterpret_cast<wchar_t*>(lasciati + 1));
  GlobalUnlock(blocco);
  PostMessageW(finestra_, WM_DROPFILES, reinterpret_cast<WPARAM>(blocco), 0);
  programma_.Respira();
}

std::vector<std::string> Vista::Lette() const {
  auto* finestra = Aspetta("menu", [this] { return Menu(programma_); });
  std::vector<std::string> voci;
  Annotate(reinterpret_cast<HMENU>(SendMessageW(finestra, kOttieniMenu, 0, 0)), voci);
  PostMessageW(finestra_, WM_KEYDOWN, VK_ESCAPE, 1);
  EXPECT_TRUE(Attendi([this] { return Menu(programma_) == nullptr; }));
  programma_.Respira();
  return voci;
}

void Vista::Scelta(const std::string& didascalia) const {
  auto* finestra = Aspetta("menu", [this] { return Menu(programma_); });
  std::vector<std::string> voci;
  Annotate(reinterpret_cast<HMENU>(SendMessageW(finestra, kOttieniMenu, 0, 0)), voci);
  voci.erase(std::remove(voci.begin(), voci.end(), std::string()),
             voci.end());  // the keyboard skips the lines
  const auto trovata = std::find(voci.begin(), voci.end(), didascalia);
  EXPECT_NE(trovata, voci.end()) << didascalia;
  if (trovata == voci.end()) {
    PostMessageW(finestra_, WM_KEYDOWN, VK_ESCAPE, 1);
  } else {
    for (auto voce = voci.begin(); voce <= trovata; ++voce) PostMessageW(finestra_, WM_KEYDOWN, VK_DOWN, 1);
    PostMessageW(finestra_, WM_KEYDOWN, VK_RETURN, 1);
  }
  EXPECT_TRUE(Attendi([this] { return Menu(programma_) == nullptr; }));
}

std::vector<std::string> Vista::VociDiMenu(const std::string& pulsante) const {
  Clicca(pulsante);
  return Lette();
}

void Vista::Sceglie(const std::string& pulsante, const std::string& didascalia) const {
  Clicca(pulsante);
  Scelta(didascalia);
}

std::vector<std::string> Vista::VociDelTesto(const std::string& nome) const {
  auto* casella = Raggiunge(nome);
  RECT posto = {};
  GetWindowRect(casella, &posto);
  PostMessageW(casella, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(casella),
               MAKELPARAM(posto.left + 5, posto.top + 5));
  return Lette();
}

void Vista::ScegliePerTesto(const std::string& nome, const std::string& didascalia) const {
  auto* casella = Raggiunge(nome);
  PostMessageW(casella, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(casella), -1);
  Scelta(didascalia);
  programma_.Respira();
}

void Vista::Ridimensiona(int width, int height) const {
  RECT intera = {};
  GetWindowRect(finestra_, &intera);
  const SIZE interno = Interno();
  const int bordoX = static_cast<int>(intera.right - intera.left - interno.cx);
  const int bordoY = static_cast<int>(intera.bottom - intera.top - interno.cy);
  SetWindowPos(finestra_, nullptr, 0, 0, width + bordoX, height + bordoY, SWP_NOZORDER | SWP_NOACTIVATE);
}

void Vista::VoceDopo(const std::string& combo) const {
  Fuoco(combo);
  Tasto(VK_DOWN);
}

void Vista::VocePrima(const std::string& combo) const {
  Fuoco(combo);
  Tasto(VK_UP);
}

window_contract::Posto Vista::Dove(const std::string& nome) const {
  const RECT posto = Posto(nome);
  return {static_cast<int>(posto.left), static_cast<int>(posto.top),
          static_cast<int>(posto.right - posto.left), static_cast<int>(posto.bottom - posto.top)};
}

window_contract::Posto Vista::Area() const {
  const SIZE interno = Interno();
  return {0, 0, static_cast<int>(interno.cx), static_cast<int>(interno.cy)};
}

void Vista::Preme(window_contract::Tasto tasto) const {
  switch (tasto) {
    case window_contract::Tasto::kInvio:
      return Tasto(VK_RETURN);
    case window_contract::Tasto::kEsc:
      return Tasto(VK_ESCAPE);
    case window_contract::Tasto::kSu:
      return Tasto(VK_UP);
    case window_contract::Tasto::kGiu:
      return Tasto(VK_DOWN);
    case window_contract::Tasto::kInizio:
      return Tasto(VK_HOME);
    case window_contract::Tasto::kTab:
      return Tasto(VK_TAB);
    case window_contract::Tasto::kIndietro:
      return Tasto(VK_BACK);
  }
}

void Vista::Annulla(const std::string& nome) const {
  SendMessageW(Trova(nome), EM_UNDO, 0, 0);
}

void Vista::Scrive(const std::string& nome, const std::string& testo) const {
  for (const wchar_t carattere : Largo(testo)) SendMessageW(Raggiunge(nome), WM_CHAR, carattere, 1);
}

int Vista::Cursore(const std::string& nome) const {
  DWORD inizio = 0;
  DWORD fine = 0;
  SendMessageW(Trova(nome), EM_GETSEL, reinterpret_cast<WPARAM>(&inizio), reinterpret_cast<LPARAM>(&fine));
  return inizio == fine ? static_cast<int>(fine) : -1;
}

bool Vista::CursoreInVista(const std::string& nome) const {
  POINT dove = {};
  SendMessageW(Trova(nome), EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&dove), Cursore(nome));
  RECT vista = {};
  GetClientRect(Trova(nome), &vista);
  return dove.y >= vista.top && dove.y < vista.bottom;
}

void Vista::ConfermaVoce(const std::string& combo) const {
  Fuoco(combo);
  SendMessageW(Trova(combo), CB_SHOWDROPDOWN, TRUE, 0);
  Tasto(VK_RETURN);
}

void Vista::Rotella(const std::string& combo) const {
  Fuoco(combo);
  SendMessageW(Trova(combo), WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
}

void Vista::Chiude() const {
  PostMessageW(finestra_, WM_CLOSE, 0, 0);
  EXPECT_TRUE(Attendi([this] { return !Aperta(); }));
}

std::string Risponde(const Programma& programma, const std::string& testo, int pulsante,
                     const std::function<void()>& prima, std::string* padrone) {
  auto* casella = Aspetta(testo.c_str(), [&]() -> HWND {
    for (auto* finestra : FinestreDi(programma)) {
      if (ClasseDi(finestra) == L"#32770" && IsWindowEnabled(finestra) != FALSE &&
          ConTesto(finestra, Largo(testo))) {
        return finestra;
      }
    }
    return nullptr;
  });
  if (casella == nullptr) return "";
  std::string detto = Stretto(TestoDi(casella)) + "|";
  for (auto* figlio : Figli(casella)) {
    if (ClasseDi(figlio) == L"Button") detto += std::to_string(GetDlgCtrlID(figlio)) + ";";
  }
  if (padrone != nullptr) *padrone = Stretto(TestoDi(GetWindow(casella, GW_OWNER)));
  if (prima) prima();
  PostMessageW(casella, WM_COMMAND, MAKEWPARAM(pulsante, BN_CLICKED),
               reinterpret_cast<LPARAM>(GetDlgItem(casella, pulsante)));
  EXPECT_TRUE(Attendi([&] { return IsWindow(casella) == FALSE; }));
  return detto;
}

std::string ScegliFile(const Programma& programma, const std::string& percorso) {
  HWND casella = nullptr;
  auto* scelta = Aspetta("file", [&]() -> HWND {
    for (auto* finestra : FinestreDi(programma)) {
      casella = Discendente(finestra, edt1);
      if (casella == nullptr) casella = Discendente(finestra, cmb13);
      if (casella != nullptr && ClasseDi(finestra) == L"#32770") return finestra;
    }
    return nullptr;
  });
  if (scelta == nullptr) return "";
  std::string titolo = Stretto(TestoDi(scelta));
  SendMessageW(casella, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(Largo(percorso).c_str()));
  PostMessageW(GetParent(casella), WM_COMMAND, percorso.empty() ? IDCANCEL : IDOK, 0);
  EXPECT_TRUE(Attendi([&] { return IsWindow(scelta) == FALSE; }));
  programma.Respira();
  return titolo;
}

Compagno::Compagno(std::function<void()> azione)
    : finito_(CreateEventW(nullptr, TRUE, FALSE, nullptr)), filo_([this, azione = std::move(azione)] {
        azione();
        SetEvent(finito_);
      }) {}

Compagno::~Compagno() {
  do {
    MSG messaggio = {};
    while (PeekMessageW(&messaggio, nullptr, 0, 0, PM_REMOVE) != FALSE) DispatchMessageW(&messaggio);
  } while (MsgWaitForMultipleObjectsEx(1, &finito_, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE) !=
           WAIT_OBJECT_0);
  filo_.join();
  CloseHandle(finito_);
}

std::function<void()> InFinestra(const Programma& programma, const host::LayoutForm& layout,
                                 std::function<void(const Vista&)> azione) {
  return [&programma, &layout, azione = std::move(azione)] {
    const auto ultimo = kPrimoControllo + static_cast<int>(layout.controlli.size()) - 1;
    auto* finestra = Aspetta("finestra", [&]() -> HWND {
      for (auto* una : FinestreDi(programma)) {
        if (Discendente(una, ultimo) != nullptr && Discendente(una, ultimo + 1) == nullptr) return una;
      }
      return nullptr;
    });
    if (finestra == nullptr) return;
    const Vista vista(programma, finestra, layout);
    programma.Respira();
    azione(vista);
    programma.Respira();
    if (vista.Aperta()) vista.Chiude();
  };
}

}  // namespace orve::adapters::win32::finestre
