// The open connection to a data source, shared by the connection object and the commands made from it, which
// outlive a close as errors.
#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "odbc/handles.h"
#include "odbc/odbc_options.h"

namespace orve::adapters::odbc {

class Collegamento {
 public:
  /// Raises the driver's error, in which the connection string's password does not stand.
  Collegamento(const std::string& stringaConnessione, const OpzioniOdbc& opzioni);
  ~Collegamento() { Chiudi(); }
  Collegamento(const Collegamento&) = delete;
  Collegamento& operator=(const Collegamento&) = delete;
  Collegamento(Collegamento&&) = delete;
  Collegamento& operator=(Collegamento&&) = delete;

  /// Runs a text as it stands. Raises 3001 for an empty one and one with a NUL in it, 3704 when closed.
  [[nodiscard]] rows::Righe Esegui(const std::string& testo) const;
  /// Runs a procedure whose parameters are integers going out, and gives what they became. Raises 3001 for
  /// what is no name of a procedure.
  [[nodiscard]] std::vector<host::Variant> Chiama(std::string_view procedura, std::size_t parametri) const;

  void Chiudi() noexcept;
  [[nodiscard]] bool Aperto() const { return connessione_.Grezzo() != nullptr; }

 private:
  [[nodiscard]] Handle NuovaIstruzione() const;

  Handle ambiente_;
  Handle connessione_;
  std::chrono::seconds tempoMassimo_;
};

}  // namespace orve::adapters::odbc
