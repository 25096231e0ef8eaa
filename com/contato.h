// What every object of the DLL is to COM: it keeps the DLL loaded for as long as it lives.
#pragma once

#include "modulo.h"
#include "win32/contato.h"

namespace orve::com {

/// An object with these interfaces, the first of which stands for the object. It starts without a reference.
template <class... Interfacce>
class Contato : public adapters::win32::Contato<Interfacce...> {
 private:
  Presenza presenza_;
};

}  // namespace orve::com
