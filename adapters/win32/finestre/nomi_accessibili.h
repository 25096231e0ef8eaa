// What a screen reader calls the controls.
#pragma once

#include <windows.h>

#include <string>

struct IAccPropServices;

namespace orve::adapters::win32::finestre {

/// Gives windows their names. Does nothing on a thread without COM: Windows then derives names from the
/// captions around a control.
class NomiAccessibili {
 public:
  NomiAccessibili();
  NomiAccessibili(const NomiAccessibili&) = delete;
  NomiAccessibili& operator=(const NomiAccessibili&) = delete;
  NomiAccessibili(NomiAccessibili&&) = delete;
  NomiAccessibili& operator=(NomiAccessibili&&) = delete;
  ~NomiAccessibili();

  void Da(HWND controllo, const std::wstring& nome) const;

 private:
  IAccPropServices* servizi_ = nullptr;
};

}  // namespace orve::adapters::win32::finestre
