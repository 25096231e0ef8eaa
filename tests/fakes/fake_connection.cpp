#include "fakes/fake_connection.h"

#include <utility>

#include "text/text.h"

namespace orve::fakes {

namespace {

class FakeField : public host::Field {
 public:
  FakeField(JournalPtr journal, std::string riga, host::Variant valore)
      : journal_(std::move(journal)), riga_(std::move(riga)), valore_(std::move(valore)) {}
  host::Variant Value() const override {
    journal_->Add(riga_);
    return valore_;
  }

 private:
  JournalPtr journal_;
  std::string riga_;
  host::Variant valore_;
};

struct Stato {
  Righe righe;
  std::size_t posizione = 0;
  std::int32_t aperto = 1;
};

class FakeFields : public host::Fields {
 public:
  FakeFields(JournalPtr journal, std::string nome, std::shared_ptr<Stato> stato)
      : journal_(std::move(journal)), nome_(std::move(nome)), stato_(std::move(stato)) {}
  std::shared_ptr<host::Field> Item(std::string_view nome) const override {
    if (stato_->posizione >= stato_->righe.size()) {
      throw host::Errore(3021, "FakeRecordSet",
                         "EOF o BOF è Vero oppure il record corrente è stato eliminato.");
    }
    for (const auto& [colonna, valore] : stato_->righe[stato_->posizione]) {
      if (text::EqualsIgnoreCase(colonna, nome)) {
        return std::make_shared<FakeField>(journal_, nome_ + ".Fields " + std::string(nome), valore);
      }
    }
    throw host::Errore(3265, "FakeRecordSet", "Elemento non trovato nell'insieme: " + std::string(nome));
  }

 private:
  JournalPtr journal_;
  std::string nome_;
  std::shared_ptr<Stato> stato_;
};

class FakeRecordSet : public host::RecordSet {
 public:
  FakeRecordSet(JournalPtr journal, Righe righe, std::string nome, std::int32_t aperto = 1)
      : journal_(std::move(journal)), nome_(std::move(nome)), stato_(std::make_shared<Stato>()) {
    stato_->righe = std::move(righe);
    stato_->aperto = aperto;
  }
  bool Eof() const override { return stato_->posizione >= stato_->righe.size(); }
  std::shared_ptr<host::Fields> Fields() const override {
    return std::make_shared<FakeFields>(journal_, nome_, stato_);
  }
  void MoveFirst() override {
    journal_->Add(nome_ + ".MoveFirst");
    if (stato_->righe.empty()) throw host::Errore(3021, "FakeRecordSet", "Nessun record corrente.");
    stato_->posizione = 0;
  }
  void MoveNext() override {
    journal_->Add(nome_ + ".MoveNext");
    if (Eof()) throw host::Errore(3021, "FakeRecordSet", "Nessun record corrente.");
    ++stato_->posizione;
  }
  std::int32_t State() const override { return stato_->aperto; }
  void Close() override {
    journal_->Add(nome_ + ".Close");
    stato_->aperto = 0;
  }

 private:
  JournalPtr journal_;
  std::string nome_;
  std::shared_ptr<Stato> stato_;
};

class FakeParameter : public host::Parameter {
 public:
  FakeParameter(JournalPtr journal, std::string nomeParametro)
      : nome(std::move(nomeParametro)), journal_(std::move(journal)) {}
  host::Variant Value() const override {
    journal_->Add("Parameter.Value " + nome);
    return valore;
  }
  std::string nome;
  host::Variant valore = host::Null{};  // until the command has run

 private:
  JournalPtr journal_;
};

class FakeCommand : public host::Command {
 public:
  FakeCommand(JournalPtr journal, const FakeConnection& connessione)
      : journal_(std::move(journal)), connessione_(connessione) {}
  void CommandType(std::int32_t tipo) override {
    journal_->Add("Command.CommandType " + std::to_string(tipo));
  }
  void CommandText(const std::string& testo) override {
    journal_->Add("Command.CommandText " + testo);
    conTesto_ = true;
  }
  std::shared_ptr<host::Parameter> CreateParameter(const std::string& nome, std::int32_t tipo,
                                                   std::int32_t direzione, std::int32_t lunghezza) override {
    journal_->Add("Command.CreateParameter " + nome + " " + std::to_string(tipo) + " " +
                  std::to_string(direzione) + " " + std::to_string(lunghezza));
    return std::make_shared<FakeParameter>(journal_, nome);
  }
  void ParametersAppend(const std::shared_ptr<host::Parameter>& parametro) override {
    auto aggiunto = std::dynamic_pointer_cast<FakeParameter>(parametro);
    journal_->Add("Command.Parameters.Append " + host::Richiesto(aggiunto).nome);
    parametro_ = std::move(aggiunto);
  }
  void Execute() override {
    journal_->Add("Command.Execute");
    if (parametro_ && conTesto_) parametro_->valore = connessione_.utenteConnessione;
  }
  std::shared_ptr<host::Parameter> ParametersItem(std::string_view nome) const override {
    journal_->Add("Command.Parameters.Item " + std::string(nome));
    return parametro_;
  }

 private:
  JournalPtr journal_;
  const FakeConnection& connessione_;
  std::shared_ptr<FakeParameter> parametro_;
  bool conTesto_ = false;
};

constexpr std::string_view kExecute = "ConnectionADO.Execute ";

}  // namespace

std::shared_ptr<host::RecordSet> FakeConnection::Execute(const std::string& statement, std::int32_t opzione) {
  journal_->Add(std::string(kExecute) + std::to_string(opzione) + " " + statement);
  for (auto regola = regole_.rbegin(); regola != regole_.rend(); ++regola) {
    if (statement.find(regola->first) != std::string::npos) return CreaRecordSet(journal_, regola->second);
  }
  return CreaRecordSet(journal_, {});
}

std::shared_ptr<host::Command> FakeConnection::CreateCommand() {
  journal_->Add("ConnectionADO.CreateCommand");
  return std::make_shared<FakeCommand>(journal_, *this);
}

std::vector<std::string> FakeConnection::Statements() const {
  std::vector<std::string> statements;
  for (const auto& riga : journal_->Righe({kExecute})) {
    statements.push_back(riga.substr(riga.find(' ', kExecute.size()) + 1));
  }
  return statements;
}

std::shared_ptr<host::RecordSet> CreaRecordSet(JournalPtr journal, Righe righe, const std::string& nome) {
  return std::make_shared<FakeRecordSet>(std::move(journal), std::move(righe), nome);
}

std::shared_ptr<host::RecordSet> CreaRecordSetChiuso(JournalPtr journal, const std::string& nome) {
  return std::make_shared<FakeRecordSet>(std::move(journal), Righe{}, nome, 0);
}

}  // namespace orve::fakes
