#include "win32/finestre/aspetto.h"

#include "forms/lettura_tavola.h"
#include "win32/finestre/testo.h"

namespace orve::adapters::win32::finestre {

namespace {

constexpr forms::Contorno kContorno = {.pulsante = 6, .spunta = 18};  // at 96 dpi
constexpr WORD kManifesto = 2;                                        // of finestre.rc

// Made once and kept; a program without the resource gets the controls that it has anyway.
class Contesto {
 public:
  Contesto() {
    ACTCTXW descrizione = {};
    descrizione.cbSize = sizeof descrizione;
    descrizione.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    descrizione.hModule = Modulo();
    descrizione.lpResourceName = MAKEINTRESOURCEW(kManifesto);
    maniglia_ = CreateActCtxW(&descrizione);
  }
  Contesto(const Contesto&) = delete;
  Contesto& operator=(const Contesto&) = delete;
  Contesto(Contesto&&) = delete;
  Contesto& operator=(Contesto&&) = delete;
  ~Contesto() {
    if (Pronto()) ReleaseActCtx(maniglia_);
  }
  [[nodiscard]] bool Pronto() const { return maniglia_ != INVALID_HANDLE_VALUE; }
  [[nodiscard]] HANDLE Maniglia() const { return maniglia_; }

 private:
  HANDLE maniglia_ = INVALID_HANDLE_VALUE;
};

// Functions that only newer systems have.
template <class Funzione>
Funzione* DiUser32(const char* nome) {
  return reinterpret_cast<Funzione*>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), nome)));
}

class Schermo {
 public:
  Schermo() : dc_(GetDC(nullptr)) {}
  Schermo(const Schermo&) = delete;
  Schermo& operator=(const Schermo&) = delete;
  Schermo(Schermo&&) = delete;
  Schermo& operator=(Schermo&&) = delete;
  ~Schermo() { ReleaseDC(nullptr, dc_); }
  [[nodiscard]] HDC Dc() const { return dc_; }

 private:
  HDC dc_;
};

int CALLBACK Trovata(const LOGFONTW* /*font*/, const TEXTMETRICW* /*misure*/, DWORD /*tipo*/, LPARAM dove) {
  *reinterpret_cast<bool*>(dove) = true;
  return 0;
}

LOGFONTW Descrizione(const std::wstring& famiglia, int altezza) {
  LOGFONTW descrizione = {};
  descrizione.lfHeight = -altezza;
  descrizione.lfWeight = FW_NORMAL;
  descrizione.lfCharSet = DEFAULT_CHARSET;
  descrizione.lfQuality = CLEARTYPE_QUALITY;
  famiglia.copy(descrizione.lfFaceName, LF_FACESIZE - 1);
  return descrizione;
}

bool Presente(HDC dc, const std::wstring& famiglia) {
  LOGFONTW cercata = Descrizione(famiglia, 0);
  bool trovata = false;
  EnumFontFamiliesExW(dc, &cercata, Trovata, reinterpret_cast<LPARAM>(&trovata), 0);
  return trovata;
}

std::wstring Famiglia(HDC dc, const host::LayoutForm& layout) {
  for (const auto& famiglia : {Largo(layout.font), std::wstring(L"Segoe UI"), std::wstring(L"Tahoma"),
                               std::wstring(L"Liberation Sans"), std::wstring(L"Arial")}) {
    if (!famiglia.empty() && Presente(dc, famiglia)) return famiglia;
  }
  return L"MS Shell Dlg 2";
}

}  // namespace

ContestoVisuale::ContestoVisuale() {
  static const Contesto contesto;
  attivo_ = contesto.Pronto() && ActivateActCtx(contesto.Maniglia(), &segno_) != FALSE;
}

ContestoVisuale::~ContestoVisuale() {
  if (attivo_) DeactivateActCtx(0, segno_);
}

HINSTANCE Modulo() {
  HMODULE modulo = nullptr;
  static const char qui = 0;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&qui), &modulo);
  return modulo;
}

int DpiDi(HWND finestra) {
  static auto* const dpiDi = DiUser32<UINT WINAPI(HWND)>("GetDpiForWindow");
  const UINT dpi = dpiDi != nullptr ? dpiDi(finestra) : 0;
  if (dpi != 0) return static_cast<int>(dpi);
  const Schermo schermo;
  const int delloSchermo = GetDeviceCaps(schermo.Dc(), LOGPIXELSX);
  return delloSchermo > 0 ? delloSchermo : forms::kPuntiPerPollice;
}

RECT ConBordo(SIZE interno, DWORD stile, DWORD esteso, int dpi) {
  RECT intero = {0, 0, interno.cx, interno.cy};
  static auto* const conDpi =
      DiUser32<BOOL WINAPI(LPRECT, DWORD, BOOL, DWORD, UINT)>("AdjustWindowRectExForDpi");
  if (conDpi == nullptr || conDpi(&intero, stile, FALSE, esteso, static_cast<UINT>(dpi)) == FALSE) {
    AdjustWindowRectEx(&intero, stile, FALSE, esteso);
  }
  return {0, 0, intero.right - intero.left, intero.bottom - intero.top};
}

Font FontPer(const host::LayoutForm& layout, int dpi) {
  const Schermo schermo;
  const std::wstring famiglia = Famiglia(schermo.Dc(), layout);
  const auto scala = [dpi](int pixel) { return MulDiv(pixel, dpi, forms::kPuntiPerPollice); };
  const forms::Contorno contorno = {scala(kContorno.pulsante), scala(kContorno.spunta)};
  const auto larghezza = [&](const std::string& didascalia) {
    const std::wstring testo = Largo(didascalia);
    SIZE misura = {};
    GetTextExtentPoint32W(schermo.Dc(), testo.c_str(), static_cast<int>(testo.size()), &misura);
    return static_cast<int>(misura.cx);
  };
  Font font;
  for (int pixel = forms::kFontGrande; pixel >= forms::kFontPiccolo; --pixel) {
    const LOGFONTW descrizione = Descrizione(famiglia, scala(pixel));
    font.reset(CreateFontIndirectW(&descrizione));
    auto* const prima = SelectObject(schermo.Dc(), font.get());
    const bool ciStanno = forms::DidascalieCiStanno(layout, contorno, larghezza, dpi);
    SelectObject(schermo.Dc(), prima);
    if (ciStanno) break;
  }
  return font;
}

Font Neretto(HFONT font) {
  LOGFONTW descrizione = {};
  GetObjectW(font, sizeof descrizione, &descrizione);
  descrizione.lfWeight = FW_BOLD;
  return Font(CreateFontIndirectW(&descrizione));
}

COLORREF Mescola(COLORREF a, COLORREF b, int quantoB) {
  const auto parte = [quantoB](int unA, int unB) { return (unA * (100 - quantoB) + unB * quantoB) / 100; };
  return RGB(parte(GetRValue(a), GetRValue(b)), parte(GetGValue(a), GetGValue(b)),
             parte(GetBValue(a), GetBValue(b)));
}

}  // namespace orve::adapters::win32::finestre
