// The host application, its database and the SMTP component, played in C++ for a program that uses the DLL.
#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "classi_recitate.h"
#include "orve-mailserver/host/variant.h"
#include "win32/com_ptr.h"

namespace orve::prova {

/// As long as it lives, the library finds these objects on the current thread. A database answers every query
/// with one row that has every column, except for the queries that Risposta and SenzaRighe name and for
/// REGISTRO_INVII, of which it returns the rows whose NUMREG is in the query. The SMTP component is refused a
/// recipient whose address begins with "rifiutata".
class HostRecitato {
 public:
  HostRecitato();

  /// A column's value in every row; the columns not named are empty texts.
  void Colonna(const std::string& nome, host::Variant valore) { colonne_[nome] = std::move(valore); }
  /// The same for the queries that contain this text.
  void Risposta(const std::string& domanda, const std::string& colonna, host::Variant valore) {
    risposte_[domanda][colonna] = std::move(valore);
  }
  void SenzaRighe(const std::string& domanda) { senzaRighe_ = domanda; }
  [[nodiscard]] adapters::win32::ComPtr<IDispatch> Connessione();

  /// The calls of the SMTP component and the messages shown, one a line.
  [[nodiscard]] const std::string& Giornale() const { return giornale_; }
  /// Whether a whole line of the calls reads like this.
  [[nodiscard]] bool Annotato(const std::string& riga) const;

 private:
  using Riga = std::map<std::string, host::Variant>;

  [[nodiscard]] std::vector<Riga> Trova(const std::string& domanda) const;
  [[nodiscard]] static adapters::win32::ComPtr<IDispatch> Righe(std::vector<Riga> trovate);
  [[nodiscard]] adapters::win32::ComPtr<IDispatch> Registro();
  [[nodiscard]] adapters::win32::ComPtr<IDispatch> Smtp();
  [[nodiscard]] adapters::win32::ComPtr<IDispatch> Annotante(const std::wstring& nome,
                                                             adapters::win32::ComPtr<IDispatch> oggetto);

  Riga colonne_;
  std::map<std::string, Riga> risposte_;
  std::string senzaRighe_;
  std::vector<Riga> registrate_;
  std::string giornale_;
  ClassiRecitate classi_;
};

/// Registers the classes of the DLL; false when that fails.
[[nodiscard]] bool RegistraDll(const std::wstring& percorso);

}  // namespace orve::prova
