// The exports of the DLL.
#include <windows.h>

#include <olectl.h>

#include "class_factory.h"
#include "modulo.h"
#include "registrazione.h"

STDAPI DllGetClassObject(REFCLSID classe, REFIID iid, void** fabbrica) {
  return orve::com::FabbricaDi(classe, iid, fabbrica);
}

STDAPI DllCanUnloadNow() {
  return orve::com::ScaricabileOra() ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
  return SUCCEEDED(orve::com::Registra()) ? S_OK : SELFREG_E_CLASS;
}

STDAPI DllUnregisterServer() {
  return SUCCEEDED(orve::com::TogliRegistrazione()) ? S_OK : SELFREG_E_CLASS;
}
