// The classes that a client can create, and the factories that create them.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <span>

namespace orve::com {

/// A creatable class; its ProgID is the library's name, a point and this name.
struct CreatableClass {
  const CLSID* identificatore;
  const wchar_t* nome;
  IUnknown* (*crea)();  // a new object with one reference for the caller; may raise
};

[[nodiscard]] std::span<const CreatableClass> ClassiCreabili();

/// The interface of a new factory of the class; CLASS_E_CLASSNOTAVAILABLE for a class that cannot be created.
HRESULT FabbricaDi(REFCLSID classe, REFIID iid, void** fabbrica) noexcept;

}  // namespace orve::com
