// What the whole DLL shares: how many objects a client still holds, which object represents which object of
// the library, and what the type library says about each interface. The type descriptions are dropped with
// the last object, so that no system resource is held when the DLL is unloaded.
#pragma once

#include <windows.h>

#include <filesystem>
#include <memory>

#include "descrizione_tipo.h"

namespace orve::com {

class Interno;

/// Counts one object, class factory or server lock for as long as it lives.
class Presenza {
 public:
  Presenza() noexcept;
  Presenza(const Presenza&) = delete;
  Presenza& operator=(const Presenza&) = delete;
  Presenza(Presenza&&) = delete;
  Presenza& operator=(Presenza&&) = delete;
  ~Presenza();
};

/// True when no client holds anything of the DLL.
[[nodiscard]] bool ScaricabileOra() noexcept;

/// Absolute path of the DLL.
[[nodiscard]] std::filesystem::path PercorsoDelModulo();

/// The type library in the DLL; raises the system's error when it cannot be loaded.
[[nodiscard]] adapters::win32::ComPtr<ITypeLib> LibreriaDeiTipi();

/// What the type library says about an interface.
[[nodiscard]] std::shared_ptr<const DescrizioneTipo> DescrizioneDi(REFIID interfaccia);

/// The object that represents this object of the library, with one reference for the caller; null when there
/// is none. An object of the library has at most one, so a client that compares two references gets the right
/// answer.
[[nodiscard]] IUnknown* OggettoPerNucleo(const void* nucleo) noexcept;

/// What is behind a living public object of this DLL, recognised by its identity (its answer to
/// IID_IUnknown); null for any other object, which is not called at all.
[[nodiscard]] Interno* InternoDi(IUnknown* identita) noexcept;

/// `oggetto` is the public object's identity; it is remembered without a reference, until it is forgotten.
void RicordaNucleo(const void* nucleo, IUnknown* oggetto, Interno* interno);
void DimenticaNucleo(const void* nucleo) noexcept;

}  // namespace orve::com
