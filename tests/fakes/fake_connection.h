// A database of rules: a statement that holds a rule's text gets the rule's rows, any other an empty result.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "fakes/journal.h"
#include "host/connection.h"

namespace orve::fakes {

/// Column names (any case) and values of one row.
using Riga = std::map<std::string, host::Variant>;
using Righe = std::vector<Riga>;

class FakeConnection : public host::Connection {
 public:
  explicit FakeConnection(JournalPtr journal) : journal_(std::move(journal)) {}

  /// Statements that hold `testo` give these rows. The rule added last is asked first.
  void Risponde(const std::string& testo, Righe righe) { regole_.emplace_back(testo, std::move(righe)); }
  /// What SPFW_GetUserIDFromConnection puts into its output parameter.
  host::Variant utenteConnessione = 7;

  std::shared_ptr<host::RecordSet> Execute(const std::string& statement, std::int32_t opzione) override;
  std::shared_ptr<host::Command> CreateCommand() override;

  /// The statements run so far, without the option.
  [[nodiscard]] std::vector<std::string> Statements() const;

 private:
  JournalPtr journal_;
  std::vector<std::pair<std::string, Righe>> regole_;
};

/// An open record set over rows held in memory; `nome` stands in the journal.
std::shared_ptr<host::RecordSet> CreaRecordSet(JournalPtr journal, Righe righe,
                                               const std::string& nome = "RecordSet");
/// A record set that nobody has opened yet.
std::shared_ptr<host::RecordSet> CreaRecordSetChiuso(JournalPtr journal,
                                                     const std::string& nome = "RecordSet");

}  // namespace orve::fakes
