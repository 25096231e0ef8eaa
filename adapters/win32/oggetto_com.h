// The side of a host object that COM sees. Every wrapper of this folder has it, so an object that a caller
// handed in is given back, or passed on, as the same object.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <memory>
#include <utility>

#include "orve-mailserver/host/errore.h"
#include "orve-mailserver/host/oggetto.h"
#include "win32/com_ptr.h"

namespace orve::adapters::win32 {

class OggettoCom {
 public:
  OggettoCom() = default;
  OggettoCom(const OggettoCom&) = delete;
  OggettoCom& operator=(const OggettoCom&) = delete;
  OggettoCom(OggettoCom&&) = delete;
  OggettoCom& operator=(OggettoCom&&) = delete;

  /// The wrapped object, never null; the reference stays with this object.
  [[nodiscard]] virtual IDispatch* Com() const noexcept = 0;

 protected:
  virtual ~OggettoCom() = default;
};

/// The COM object behind a host object; null for an absent object and for one that has none.
template <class T>
[[nodiscard]] IDispatch* ComDi(const std::shared_ptr<T>& oggetto) noexcept {
  const auto* com = dynamic_cast<const OggettoCom*>(oggetto.get());
  return com == nullptr ? nullptr : com->Com();
}

/// The same, to be passed to another object: raises 13 for an object that has none, instead of passing
/// nothing.
template <class T>
[[nodiscard]] IDispatch* ComDaConsegnare(const std::shared_ptr<T>& oggetto) {
  IDispatch* const com = ComDi(oggetto);
  if (oggetto && com == nullptr) throw host::Errore(host::kTipoNonCorrispondente);
  return com;
}

/// An object that the library knows nothing about: it can only be passed on.
class OggettoIgnoto final : public host::Oggetto, public OggettoCom {
 public:
  explicit OggettoIgnoto(ComPtr<IDispatch> oggetto) : oggetto_(std::move(oggetto)) {}
  [[nodiscard]] IDispatch* Com() const noexcept override { return oggetto_.Get(); }

 private:
  ComPtr<IDispatch> oggetto_;
};

}  // namespace orve::adapters::win32
