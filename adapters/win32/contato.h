// What every object of ours is to COM: it counts its references and ends with the last.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <tuple>

namespace orve::adapters::win32 {

/// An object with these interfaces, the first of which stands for the object. It starts without a reference.
template <class... Interfacce>
class Contato : public Interfacce... {
 public:
  Contato(const Contato&) = delete;
  Contato& operator=(const Contato&) = delete;
  Contato(Contato&&) = delete;
  Contato& operator=(Contato&&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** oggetto) override {
    if (oggetto == nullptr) return E_POINTER;
    *oggetto = Trova(iid);
    if (*oggetto == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override {
    return static_cast<ULONG>(InterlockedIncrement(&riferimenti_));
  }
  ULONG STDMETHODCALLTYPE Release() override {
    const LONG rimasti = InterlockedDecrement(&riferimenti_);
    if (rimasti == 0) delete this;
    return static_cast<ULONG>(rimasti);
  }

 protected:
  using Prima = std::tuple_element_t<0, std::tuple<Interfacce...>>;

  Contato() = default;
  virtual ~Contato() = default;

  /// The object as that interface, without adding a reference; null for one that it does not have. A class
  /// adds the interfaces that its own ones are derived from.
  [[nodiscard]] virtual void* Trova(REFIID iid) noexcept {
    if (iid == IID_IUnknown) return static_cast<Prima*>(this);
    void* trovata = nullptr;
    static_cast<void>(
        ((iid == __uuidof(Interfacce) && (trovata = static_cast<Interfacce*>(this)) != nullptr) || ...));
    return trovata;
  }

 private:
  LONG riferimenti_ = 0;
};

}  // namespace orve::adapters::win32
