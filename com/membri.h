// The members of a dual interface, given by name: each macro defines the members of one name in a class
// derived from Pubblico. The names and their order are the interface's; the compiler finds a member forgotten
// here.
//
// A field of the library's object is read and written as such (CAMPO), a property through its overloads
// (PROPRIETA). `tipo` is the type on the side of COM.
#pragma once

#include <type_traits>

#include "pubblico.h"
#include "valori.h"

// NOLINTBEGIN(bugprone-macro-parentheses): names and types are not expressions

#define ORVE_LETTURA(nome, tipo, espressione)                               \
  HRESULT STDMETHODCALLTYPE get_##nome(tipo* valore) override {             \
    if (valore == nullptr) return E_POINTER;                                \
    *valore = {};                                                           \
    return this->Entra([&] { ::orve::com::Esporta(espressione, valore); }); \
  }

#define ORVE_CAMPO(nome, tipo)                                                                      \
  ORVE_LETTURA(nome, tipo, this->N().nome)                                                          \
  HRESULT STDMETHODCALLTYPE put_##nome(tipo valore) override {                                      \
    return this->Entra([&] {                                                                        \
      this->N().nome = ::orve::com::Importa<std::remove_cvref_t<decltype(this->N().nome)>>(valore); \
    });                                                                                             \
  }

#define ORVE_PROPRIETA(nome, tipo)                                                                   \
  ORVE_LETTURA(nome, tipo, this->N().nome())                                                         \
  HRESULT STDMETHODCALLTYPE put_##nome(tipo valore) override {                                       \
    return this->Entra([&] {                                                                         \
      this->N().nome(::orve::com::Importa<std::remove_cvref_t<decltype(this->N().nome())>>(valore)); \
    });                                                                                              \
  }

// NOLINTEND(bugprone-macro-parentheses)
