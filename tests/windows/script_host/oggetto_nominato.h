// An object whose members are functions found by name, as a script sees it.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "win32/com_ptr.h"
#include "win32/contato.h"

namespace orve::prova {

/// The arguments of a call in the order in which they were written, with references followed.
class Argomenti {
 public:
  explicit Argomenti(const DISPPARAMS& parametri) : parametri_(parametri) {}
  [[nodiscard]] std::size_t Quanti() const { return parametri_.cArgs; }
  /// Raises 450 for a missing argument.
  [[nodiscard]] const VARIANT& operator[](std::size_t indice) const;
  /// Any value as text, as the script would show it.
  [[nodiscard]] std::string Testo(std::size_t indice) const;
  /// Raises 424 for what is not an object.
  [[nodiscard]] adapters::win32::ComPtr<IDispatch> Oggetto(std::size_t indice) const;

 private:
  const DISPPARAMS& parametri_;
};

/// Any value as text; booleans "true" and "false", numbers with a point, objects and arrays by their kind.
[[nodiscard]] std::string TestoDi(const VARIANT& valore);

/// Common base of the objects here: no type library describes them.
class OggettoSenzaTipo : public adapters::win32::Contato<IDispatch> {
 public:
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* quanti) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT quale, LCID lingua, ITypeInfo** tipo) override;
};

class OggettoNominato : public OggettoSenzaTipo {
 public:
  using Membro = std::function<adapters::win32::VariantCom(const Argomenti&)>;

  /// The member is called as a method, or read or written as a property. An empty name is the default member.
  void Aggiungi(std::wstring nome, Membro membro) { membri_.push_back({std::move(nome), std::move(membro)}); }

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID riservato, LPOLESTR* nomi, UINT quanti, LCID lingua,
                                          DISPID* numeri) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID membro, REFIID riservato, LCID lingua, WORD modi,
                                   DISPPARAMS* argomenti, VARIANT* risultato, EXCEPINFO* eccezione,
                                   UINT* argomentoErrato) override;

 private:
  struct Voce {
    std::wstring nome;
    Membro membro;
  };
  std::vector<Voce> membri_;
};

/// Runs a script's call into this program; what it raises becomes the script's error.
HRESULT Rispondi(const std::function<adapters::win32::VariantCom()>& azione, VARIANT* risultato,
                 EXCEPINFO* eccezione);

}  // namespace orve::prova
