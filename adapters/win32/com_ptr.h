// Owners of COM's resources: interface pointers, texts and values. Each releases what it holds when it is
// destroyed.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <cstdint>
#include <new>
#include <utility>

namespace orve::adapters::win32 {

/// A counted pointer to a COM interface.
template <class T>
class ComPtr {
 public:
  ComPtr() = default;
  /// Shares the object: adds a reference.
  explicit ComPtr(T* oggetto) noexcept : oggetto_(oggetto) {
    if (oggetto_ != nullptr) oggetto_->AddRef();
  }
  ComPtr(const ComPtr& altro) noexcept : ComPtr(altro.oggetto_) {}
  ComPtr(ComPtr&& altro) noexcept : oggetto_(std::exchange(altro.oggetto_, nullptr)) {}
  ComPtr& operator=(const ComPtr& altro) noexcept {
    ComPtr copia(altro);
    std::swap(oggetto_, copia.oggetto_);
    return *this;
  }
  ComPtr& operator=(ComPtr&& altro) noexcept {
    ComPtr preso(std::move(altro));
    std::swap(oggetto_, preso.oggetto_);
    return *this;
  }
  ~ComPtr() { Reset(); }

  /// Takes over a reference that the caller holds.
  [[nodiscard]] static ComPtr Adotta(T* oggetto) noexcept {
    ComPtr preso;
    preso.oggetto_ = oggetto;
    return preso;
  }

  [[nodiscard]] T* Get() const noexcept { return oggetto_; }
  T* operator->() const noexcept { return oggetto_; }
  explicit operator bool() const noexcept { return oggetto_ != nullptr; }

  void Reset() noexcept {
    // First forgotten, then released: the release may re-enter here.
    if (T* vecchio = std::exchange(oggetto_, nullptr); vecchio != nullptr) vecchio->Release();
  }
  /// Gives the reference away.
  [[nodiscard]] T* Cedi() noexcept { return std::exchange(oggetto_, nullptr); }
  /// Where a function writes an interface pointer that it hands out.
  [[nodiscard]] T** Uscita() noexcept {
    Reset();
    return &oggetto_;
  }
  /// The same for functions that write any interface.
  [[nodiscard]] void** UscitaVoid() noexcept { return reinterpret_cast<void**>(Uscita()); }

  /// Another interface of the same object; empty when the object does not have it.
  template <class U>
  [[nodiscard]] ComPtr<U> Come(REFIID iid) const noexcept {
    ComPtr<U> altra;
    if (oggetto_ == nullptr || FAILED(oggetto_->QueryInterface(iid, altra.UscitaVoid()))) return {};
    return altra;
  }

 private:
  T* oggetto_ = nullptr;
};

/// A text of automation. A null one is automation's null text, which is not the same as the empty one.
class Bstr {
 public:
  Bstr() = default;
  Bstr(const Bstr&) = delete;
  Bstr& operator=(const Bstr&) = delete;
  Bstr(Bstr&& altro) noexcept : testo_(altro.Cedi()) {}
  Bstr& operator=(Bstr&& altro) noexcept {
    std::swap(testo_, altro.testo_);
    return *this;
  }
  ~Bstr() { SysFreeString(testo_); }

  [[nodiscard]] static Bstr Adotta(BSTR testo) noexcept {
    Bstr preso;
    preso.testo_ = testo;
    return preso;
  }

  [[nodiscard]] BSTR Get() const noexcept { return testo_; }
  [[nodiscard]] BSTR Cedi() noexcept { return std::exchange(testo_, nullptr); }
  [[nodiscard]] BSTR* Uscita() noexcept {
    SysFreeString(std::exchange(testo_, nullptr));
    return &testo_;
  }

 private:
  BSTR testo_ = nullptr;
};

/// A value of automation.
class VariantCom {
 public:
  VariantCom() noexcept { VariantInit(&valore_); }
  VariantCom(const VariantCom& altro) : VariantCom() {
    if (V_VT(&altro.valore_) == VT_BSTR && V_BSTR(&altro.valore_) == nullptr) {
      V_VT(&valore_) = VT_BSTR;  // the system's copy would be an empty text
      V_BSTR(&valore_) = nullptr;
    } else if (FAILED(VariantCopy(&valore_, const_cast<VARIANT*>(&altro.valore_)))) {
      throw std::bad_alloc();
    }
  }
  VariantCom(VariantCom&& altro) noexcept : VariantCom() { std::swap(valore_, altro.valore_); }
  VariantCom& operator=(const VariantCom& altro) {
    VariantCom copia(altro);
    std::swap(valore_, copia.valore_);
    return *this;
  }
  VariantCom& operator=(VariantCom&& altro) noexcept {
    VariantCom preso(std::move(altro));
    std::swap(valore_, preso.valore_);
    return *this;
  }
  ~VariantCom() { VariantClear(&valore_); }

  /// Takes over a value that the caller owns.
  [[nodiscard]] static VariantCom Adotta(const VARIANT& valore) noexcept {
    VariantCom preso;
    preso.valore_ = valore;
    return preso;
  }
  /// An object, or automation's "no object".
  [[nodiscard]] static VariantCom DiOggetto(IDispatch* oggetto) noexcept {
    VariantCom fatto;
    if (oggetto != nullptr) oggetto->AddRef();
    V_VT(&fatto.valore_) = VT_DISPATCH;
    V_DISPATCH(&fatto.valore_) = oggetto;
    return fatto;
  }
  [[nodiscard]] static VariantCom DiTesto(Bstr testo) noexcept {
    VariantCom fatto;
    V_VT(&fatto.valore_) = VT_BSTR;
    V_BSTR(&fatto.valore_) = testo.Cedi();
    return fatto;
  }
  /// Automation's null text.
  [[nodiscard]] static VariantCom TestoNullo() noexcept { return DiTesto({}); }

  [[nodiscard]] const VARIANT& Get() const noexcept { return valore_; }
  [[nodiscard]] VARIANT& Get() noexcept { return valore_; }
  /// Where a function writes a value that it hands out.
  [[nodiscard]] VARIANT* Uscita() noexcept {
    VariantClear(&valore_);
    return &valore_;
  }
  [[nodiscard]] VARIANT Cedi() noexcept {
    const VARIANT ceduto = valore_;
    VariantInit(&valore_);
    return ceduto;
  }

 private:
  VARIANT valore_;
};

}  // namespace orve::adapters::win32
