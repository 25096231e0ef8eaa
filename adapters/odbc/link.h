// The open connection to a data source, shared by the connection object and the commands made from it, which
// outlive a close as errors.
//
// The driver is told how long login and statements may take. Not every driver keeps to it, especially with a
// server that has gone silent, so each call runs on a thread of its own: a statement that is long overdue is
// cancelled, and what does not come back even then is left behind together with its connection.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "odbc/handles.h"
#include "orve-mailserver/odbc/odbc_options.h"

namespace orve::adapters::odbc {

class Link {
 public:
  /// Raises the driver's error, without the connection string's password, and 3001 for a string that no
  /// driver could take.
  Link(const std::string& stringaConnessione, const OdbcOptions& opzioni);

  /// Runs a text as it is. Raises 3001 for an empty one and one with a NUL in it, 3704 when closed.
  [[nodiscard]] rows::Rows Esegui(const std::string& testo) const;
  /// Runs a procedure whose parameters are output integers, and returns their values. Raises 3001 for what is
  /// not the name of a procedure.
  [[nodiscard]] std::vector<host::Variant> Chiama(std::string_view procedura, std::size_t parametri) const;

  void Chiudi() noexcept { accesso_.reset(); }
  [[nodiscard]] bool Aperto() const { return accesso_ != nullptr; }

 private:
  class Access;
  struct Execution;

  [[nodiscard]] std::shared_ptr<Execution> NuovaEsecuzione() const;
  template <class Work>
  [[nodiscard]] auto InTempo(Work lavoro) const;

  std::shared_ptr<Access> accesso_;
  std::chrono::seconds tempoMassimo_;
};

}  // namespace orve::adapters::odbc
