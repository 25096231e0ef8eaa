// The class factory of a class that a test plays.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <functional>
#include <utility>

#include "win32/com_ptr.h"
#include "win32/contato.h"

namespace orve::prova {

/// Each creation returns what `crea` returns; one that is absent, or raises, plays a machine that cannot
/// create the object.
class Fabbrica final : public adapters::win32::Contato<IClassFactory> {
 public:
  explicit Fabbrica(std::function<adapters::win32::ComPtr<IDispatch>()> crea) : crea_(std::move(crea)) {}

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* esterno, REFIID iid, void** oggetto) override {
    *oggetto = nullptr;
    if (esterno != nullptr) return CLASS_E_NOAGGREGATION;
    try {
      const auto fatto = crea_();
      return fatto ? fatto->QueryInterface(iid, oggetto) : E_FAIL;
    } catch (...) {
      return E_FAIL;
    }
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL /*blocca*/) override { return S_OK; }

 private:
  std::function<adapters::win32::ComPtr<IDispatch>()> crea_;
};

}  // namespace orve::prova
