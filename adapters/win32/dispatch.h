// An object of automation, reached by the names of its members at run time, whatever language made it.
//
// The names are given in the object's own case. Every failure is an Errore with the object's number, source
// and description; an unknown member is 438, a member of "no object" 91.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <array>
#include <concepts>
#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <utility>

#include "orve-mailserver/host/variant.h"
#include "win32/com_ptr.h"
#include "win32/conversions.h"
#include "win32/oggetto_com.h"

namespace orve::adapters::win32 {

/// The identifier of IDispatchEx, which mingw's libraries leave out.
inline constexpr IID kDispatchEx = {
    0xA6EF9860, 0xC720, 0x11D0, {0x93, 0x37, 0x00, 0xA0, 0xC9, 0x0D, 0xCA, 0xA9}};

/// One argument of a call.
class Argomento {
 public:
  template <class T>
  // Nothing that is already an argument is convertible.
  // NOLINTNEXTLINE(bugprone-forwarding-reference-overload)
  requires std::convertible_to<T, host::Variant> Argomento(T&& valore)
      : valore_(ToCom(host::Variant(std::forward<T>(valore)))) {}
  Argomento(VariantCom valore) : valore_(std::move(valore)) {}
  /// An object, which may be absent.
  Argomento(IDispatch* oggetto) : valore_(VariantCom::DiOggetto(oggetto)) {}

  /// A value that the object may change; the library does not read it back.
  [[nodiscard]] static Argomento PerRiferimento(VariantCom valore);
  [[nodiscard]] static Argomento PerRiferimento(const host::Variant& valore) {
    return PerRiferimento(ToCom(valore));
  }

 private:
  friend class Dispatch;

  VariantCom valore_;
  bool perRiferimento_ = false;
};

class Dispatch {
 public:
  Dispatch() = default;
  explicit Dispatch(ComPtr<IDispatch> oggetto) : oggetto_(std::move(oggetto)) {}
  explicit Dispatch(IDispatch* oggetto) : oggetto_(oggetto) {}

  [[nodiscard]] IDispatch* Com() const noexcept { return oggetto_.Get(); }
  explicit operator bool() const noexcept { return static_cast<bool>(oggetto_); }

  /// Reads a property, with arguments where it has them. This also works for a member that its object
  /// implements as a function, as reading does in automation's languages.
  template <class... A>
  [[nodiscard]] host::Variant Get(const char* membro, A&&... argomenti) const {
    return FromCom(
        Chiama(membro, DISPATCH_PROPERTYGET | DISPATCH_METHOD, std::forward<A>(argomenti)...).Get());
  }
  /// The same for a member that returns an object; "no object", empty and null give an absent one. Raises 13
  /// for any other value.
  template <class... A>
  [[nodiscard]] Dispatch LeggiOggetto(const char* membro, A&&... argomenti) const {
    return Oggetto(Chiama(membro, DISPATCH_PROPERTYGET | DISPATCH_METHOD, std::forward<A>(argomenti)...));
  }
  /// The default member, read with arguments.
  template <class... A>
  [[nodiscard]] VariantCom GetDefault(A&&... argomenti) const {
    std::array<Argomento, sizeof...(A)> elenco{Argomento(std::forward<A>(argomenti))...};
    return Invoca(DISPID_VALUE, DISPATCH_PROPERTYGET | DISPATCH_METHOD, elenco);
  }
  /// Writes a property.
  void Put(const char* membro, Argomento valore) const;
  /// Writes a value of any type: an object is set, anything else is written.
  void PutValore(const char* membro, const host::Variant& valore) const;
  /// Sets a property to an object, or to "no object". If the object only supports plain writing, and refuses
  /// the set without running it, it gets a plain write.
  void PutRef(const char* membro, IDispatch* oggetto) const;
  /// Calls a method for its effect.
  template <class... A>
  void Run(const char* membro, A&&... argomenti) const {
    Chiama(membro, DISPATCH_METHOD, std::forward<A>(argomenti)...);
  }
  /// Calls a method for its result.
  template <class... A>
  [[nodiscard]] host::Variant Call(const char* membro, A&&... argomenti) const {
    return Get(membro, std::forward<A>(argomenti)...);
  }
  template <class... A>
  [[nodiscard]] Dispatch ChiamaOggetto(const char* membro, A&&... argomenti) const {
    return LeggiOggetto(membro, std::forward<A>(argomenti)...);
  }

  /// The object that a value holds; absent for "no object", empty and null. Raises 13 for any other value.
  [[nodiscard]] static Dispatch Oggetto(const VariantCom& valore);

  /// The number of a member. Raises 438 when the object does not know it, 91 when there is no object.
  [[nodiscard]] DISPID Numero(const char* membro) const;
  /// Calls a member by its number; `tipo` is a sum of DISPATCH_ flags.
  [[nodiscard]] VariantCom Invoca(DISPID membro, WORD tipo, std::span<Argomento> argomenti) const;

 private:
  template <class... A>
  VariantCom Chiama(const char* membro, WORD tipo, A&&... argomenti) const {
    std::array<Argomento, sizeof...(A)> elenco{Argomento(std::forward<A>(argomenti))...};
    return Invoca(Numero(membro), tipo, elenco);
  }

  ComPtr<IDispatch> oggetto_;
};

/// What an argument means where a value is wanted: for an object the value of its default member, and so on
/// until it is not an object; any other value as it is, with references followed. Raises 91 for "no object",
/// 438 for an object without a default member, and whatever reading it raises.
[[nodiscard]] VariantCom ValorePredefinito(const VARIANT& valore);
/// The same for a value of the library, the elements of arrays included.
[[nodiscard]] host::Variant SenzaOggetti(host::Variant valore);

/// A new object of the class with that name ("Outlook.Application") or identifier
/// ("{DF8A4FE2-221A-4504-987A-3FD4720DB929}"); raises 429, with the class and the
/// system's code, where the machine cannot make one.
[[nodiscard]] Dispatch CreaOggetto(const wchar_t* classe);
/// Whether the machine knows the class at all.
[[nodiscard]] bool ClasseRegistrata(const wchar_t* classe) noexcept;

/// A host object that wraps an automation object.
template <class Interfaccia>
class Involucro : public Interfaccia, public OggettoCom {
 public:
  explicit Involucro(Dispatch oggetto) : oggetto_(std::move(oggetto)) {}
  [[nodiscard]] IDispatch* Com() const noexcept final { return oggetto_.Com(); }

 protected:
  [[nodiscard]] const Dispatch& Oggetto() const { return oggetto_; }

 private:
  Dispatch oggetto_;
};

/// The wrapper for an object, absent for an absent one.
template <class Tipo>
[[nodiscard]] std::shared_ptr<Tipo> Avvolgi(Dispatch oggetto) {
  return oggetto ? std::make_shared<Tipo>(std::move(oggetto)) : nullptr;
}

}  // namespace orve::adapters::win32
