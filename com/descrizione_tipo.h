// What the type library says about one interface, ready for calls by number, and the call itself.
//
// The system's ITypeInfo::Invoke alone is too strict for scripts: it refuses a script's variable where a
// typed argument by reference is declared, crashes on an omitted one, and does not support the METHOD call of
// a property, which JScript makes. So the arguments are brought into the exact form declared before they
// reach it. The library changes none of its arguments by reference; therefore each gets a value of its own,
// and nothing is written back.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <map>
#include <utility>
#include <vector>

#include "win32/com_ptr.h"

namespace orve::com {

class DescrizioneTipo {
 public:
  /// Reads the members; raises the system's error.
  explicit DescrizioneTipo(adapters::win32::ComPtr<ITypeInfo> tipo);

  [[nodiscard]] ITypeInfo* Tipo() const { return tipo_.Get(); }

  /// IDispatch::Invoke on the dual interface at `istanza`. Returns automation's own codes and raises nothing
  /// but exhausted memory.
  HRESULT Invoca(void* istanza, DISPID membro, LCID lingua, WORD modi, DISPPARAMS* argomenti,
                 VARIANT* risultato, EXCEPINFO* eccezione, UINT* argomentoErrato) const;

 private:
  struct Parameter {
    VARTYPE tipo = VT_EMPTY;
    IID interfaccia = IID_NULL;  // of an object
    bool perRiferimento = false;
    bool facoltativo = false;
    adapters::win32::VariantCom predefinito;  // empty: the type's own zero
  };
  using Parameters = std::vector<Parameter>;
  using Membro = std::pair<DISPID, INVOKEKIND>;
  using Membri = std::map<Membro, Parameters>;

  /// Raises what the default member of an object raises.
  static HRESULT Converti(const VARIANT& dato, const Parameter& parametro, LCID lingua,
                          adapters::win32::VariantCom& valore);
  [[nodiscard]] Parameters Leggi(const FUNCDESC& funzione) const;
  void LeggiTipo(const TYPEDESC& tipo, Parameter& parametro) const;
  [[nodiscard]] Membri::const_iterator Scegli(DISPID membro, WORD modi, const DISPPARAMS& argomenti) const;
  HRESULT InvocaPredefinito(void* istanza, DISPID membro, LCID lingua, WORD modi, DISPPARAMS* argomenti,
                            VARIANT* risultato, EXCEPINFO* eccezione, UINT* argomentoErrato) const;

  adapters::win32::ComPtr<ITypeInfo> tipo_;
  Membri membri_;
};

}  // namespace orve::com
