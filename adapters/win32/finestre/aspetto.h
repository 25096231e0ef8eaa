// How the windows look: the current version of the controls, the resolution of the screen, the font that fits
// the layout.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <type_traits>

#include "orve-mailserver/host/layout.h"

namespace orve::adapters::win32::finestre {

/// While it lives, windows that this thread creates get version 6 of the controls. Must not be held while the
/// program's code runs: what the program creates is its own affair.
class ContestoVisuale {
 public:
  ContestoVisuale();
  ContestoVisuale(const ContestoVisuale&) = delete;
  ContestoVisuale& operator=(const ContestoVisuale&) = delete;
  ContestoVisuale(ContestoVisuale&&) = delete;
  ContestoVisuale& operator=(ContestoVisuale&&) = delete;
  ~ContestoVisuale();

 private:
  bool attivo_ = false;
  ULONG_PTR segno_ = 0;
};

/// The module that contains this code: the DLL, or a program that links it.
[[nodiscard]] HINSTANCE Modulo();

/// Dots per inch of the screen that the window is on, as far as its program is aware of them.
[[nodiscard]] int DpiDi(HWND finestra);
/// The window's rectangle around a client area of this size at 0, 0.
[[nodiscard]] RECT ConBordo(SIZE interno, DWORD stile, DWORD esteso, int dpi);

struct ChiudeFont {
  void operator()(HFONT font) const { DeleteObject(font); }
};
using Font = std::unique_ptr<std::remove_pointer_t<HFONT>, ChiudeFont>;

/// The largest font, of the layout's family or one as narrow, in which every caption fits its control.
[[nodiscard]] Font FontPer(const host::LayoutForm& layout, int dpi);
/// The same font in bold.
[[nodiscard]] Font Neretto(HFONT font);

/// `quantoB` from 0 to 100.
[[nodiscard]] COLORREF Mescola(COLORREF a, COLORREF b, int quantoB);

}  // namespace orve::adapters::win32::finestre
