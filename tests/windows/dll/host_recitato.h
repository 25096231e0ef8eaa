// The host application, its database and the SMTP component, played in C++ for a program that uses the DLL.
#pragma once

#include <windows.h>

#include <map>
#include <string>

#include "classi_recitate.h"
#include "host/variant.h"
#include "win32/com_ptr.h"

namespace orve::prova {

/// As long as it lives, the library finds these objects on the present thread. A database answers every
/// question with one row that has every column.
class HostRecitato {
 public:
  HostRecitato();

  /// A column's value in every row; the columns that nobody names are empty texts.
  void Colonna(const std::string& nome, host::Variant valore) { colonne_[nome] = std::move(valore); }
  [[nodiscard]] win32::ComPtr<IDispatch> Connessione();

  /// The calls of the SMTP component and the messages shown, one a line.
  [[nodiscard]] const std::string& Giornale() const { return giornale_; }
  /// Whether a whole line of the calls reads so.
  [[nodiscard]] bool Annotato(const std::string& riga) const;

 private:
  [[nodiscard]] win32::ComPtr<IDispatch> Righe();
  [[nodiscard]] win32::ComPtr<IDispatch> Annotante(const std::wstring& nome,
                                                   win32::ComPtr<IDispatch> oggetto);

  std::map<std::string, host::Variant> colonne_;
  std::string giornale_;
  ClassiRecitate classi_;
};

/// Enters the classes of the DLL in the registry; false when that fails.
[[nodiscard]] bool RegistraDll(const std::wstring& percorso);

}  // namespace orve::prova
