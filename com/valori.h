// Between the values of the public members and those of the library.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <cstdint>
#include <optional>
#include <string>
#include <type_traits>

#include "orve-mailserver/host/variant.h"
#include "win32/conversions.h"
#include "win32/dispatch.h"

namespace orve::com {

/// An argument as the library takes it; `T` is the library's type. An object in a value of any type stands
/// for the value of its default member.
template <class T>
[[nodiscard]] T Importa(BSTR testo) requires std::is_same_v<T, std::string> {
  return adapters::win32::FromBstr(testo);
}
template <class T>
[[nodiscard]] T Importa(const VARIANT& valore) requires std::is_same_v<T, host::Variant> {
  return adapters::win32::SenzaOggetti(adapters::win32::FromCom(valore));
}
template <class T>
[[nodiscard]] T Importa(VARIANT_BOOL valore) requires std::is_same_v<T, bool> {
  return valore != VARIANT_FALSE;
}
template <class T>
[[nodiscard]] T Importa(DATE giorni) requires std::is_same_v<T, host::DataOra> {
  return {giorni};
}
template <class T, class C>
[[nodiscard]] T Importa(C valore) requires(!std::is_same_v<T, bool> &&
                                           ((std::is_arithmetic_v<T> && std::is_arithmetic_v<C>) ||
                                            std::is_enum_v<C> || std::is_enum_v<T>)) {
  return static_cast<T>(valore);
}

/// The value of an argument by reference, which a client may omit.
template <class T, class C>
[[nodiscard]] T ImportaRiferimento(const C* valore) {
  return valore == nullptr ? T{} : Importa<T>(*valore);
}

/// True for an argument of any type that was omitted.
[[nodiscard]] inline bool Mancante(const VARIANT& argomento) {
  return V_VT(&argomento) == VT_ERROR && V_ERROR(&argomento) == DISP_E_PARAMNOTFOUND;
}

/// A result for the client, which then owns it.
inline void Esporta(const std::string& testo, BSTR* valore) {
  *valore = adapters::win32::ToBstr(testo).Cedi();
}
inline void Esporta(const host::Variant& dato, VARIANT* valore) {
  *valore = adapters::win32::ToCom(dato).Cedi();
}
inline void Esporta(bool dato, VARIANT_BOOL* valore) {
  *valore = dato ? VARIANT_TRUE : VARIANT_FALSE;
}
inline void Esporta(host::DataOra dato, DATE* valore) {
  *valore = dato.giorni;
}
template <class T, class C>
void Esporta(T dato,
             C* valore) requires((std::is_arithmetic_v<T> && !std::is_same_v<T, bool>) || std::is_enum_v<T>) {
  *valore = static_cast<C>(dato);
}

}  // namespace orve::com
