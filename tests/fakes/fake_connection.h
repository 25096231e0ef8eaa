// A database of rules: a statement that contains a rule's text gets the rule's rows, any other an empty
// result. Otherwise it behaves as the real connections do (adapters/connection_contract.h).
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "fakes/journal.h"
#include "orve-mailserver/host/connection.h"

namespace orve::fakes {

/// Column names (any case) and values of one row.
using Riga = std::map<std::string, host::Variant>;

/// The row with one column replaced.
inline Riga Con(Riga riga, const std::string& colonna, const host::Variant& valore) {
  riga[colonna] = valore;
  return riga;
}
using Righe = std::vector<Riga>;

class FakeConnection : public host::Connection {
 public:
  explicit FakeConnection(JournalPtr journal) : journal_(std::move(journal)) {}

  /// Statements that contain `testo` give these rows. The rule added last is tried first.
  void Risponde(const std::string& testo, Righe righe) {
    Calcola(testo, [righe = std::move(righe)] { return righe; });
  }
  /// Statements that contain `testo` give the rows that the call produces each time; it may raise an Errore.
  void Calcola(const std::string& testo, std::function<Righe()> risposta) {
    regole_.emplace_back(testo, std::move(risposta));
  }
  /// From now on a statement without a rule is one that the engine cannot run: an error.
  void SoloRegole() { soloRegole_ = true; }
  /// What SPFW_GetUserIDFromConnection puts into its output parameter.
  host::Variant utenteConnessione = 7;

  std::shared_ptr<host::RecordSet> Execute(const std::string& statement, std::int32_t opzione) override;
  /// The command must not outlive the connection.
  std::shared_ptr<host::Command> CreateCommand() override;

  /// The connection is gone: every use of it is an error, record sets stay as they are.
  void Chiudi() { aperta_ = false; }
  [[nodiscard]] bool Aperta() const { return aperta_; }

  /// The statements run so far, without the option.
  [[nodiscard]] std::vector<std::string> Statements() const;

 private:
  JournalPtr journal_;
  std::vector<std::pair<std::string, std::function<Righe()>>> regole_;
  bool soloRegole_ = false;
  bool aperta_ = true;
};

/// An open record set over rows held in memory; `nome` is its name in the journal.
std::shared_ptr<host::RecordSet> CreaRecordSet(JournalPtr journal, Righe righe,
                                               const std::string& nome = "RecordSet");
/// A record set that nobody has opened yet.
std::shared_ptr<host::RecordSet> CreaRecordSetChiuso(JournalPtr journal,
                                                     const std::string& nome = "RecordSet");

}  // namespace orve::fakes
