#include "fakes/fake_connection.h"

#include <utility>

#include "text/text.h"

namespace orve::fakes {

namespace {

// The numbers with which the database's objects refuse a call.
constexpr std::int32_t kArgomentiErrati = 3001;
constexpr std::int32_t kNessunaRiga = 3021;
constexpr std::int32_t kElementoSconosciuto = 3265;
constexpr std::int32_t kOggettoChiuso = 3704;
constexpr std::int32_t kConnessioneNonValida = 3709;

// The numbers with which the server refuses a statement or a procedure.
constexpr std::int32_t kSintassi = 102;
constexpr std::int32_t kParametroMancante = 201;
constexpr std::int32_t kProceduraSconosciuta = 2812;

// The position of a record set, shared with its fields.
struct Cursor {
  Righe righe;
  std::size_t posizione = 0;
  std::int32_t aperto = 1;

  void RichiedeAperto() const {
    if (aperto == 0) {
      throw host::Errore(kOggettoChiuso, "FakeRecordSet", "Operazione non consentita se l'oggetto è chiuso.");
    }
  }
  [[nodiscard]] bool Fine() const {
    RichiedeAperto();
    return posizione >= righe.size();
  }
  [[nodiscard]] const host::Variant& Valore(std::string_view nome) const {
    if (Fine()) {
      throw host::Errore(kNessunaRiga, "FakeRecordSet",
                         "EOF o BOF è Vero oppure il record corrente è stato eliminato.");
    }
    for (const auto& [colonna, valore] : righe[posizione]) {
      if (text::EqualsIgnoreCase(colonna, nome)) return valore;
    }
    throw host::Errore(kElementoSconosciuto, "FakeRecordSet",
                       "Elemento non trovato nell'insieme: " + std::string(nome));
  }
};

class FakeField : public host::Field {
 public:
  FakeField(JournalPtr journal, const std::string& nomeRecordSet, std::string colonna,
            std::shared_ptr<const Cursor> cursore)
      : journal_(std::move(journal)),
        riga_(nomeRecordSet + ".Fields " + colonna),
        colonna_(std::move(colonna)),
        cursore_(std::move(cursore)) {}
  host::Variant Value() const override {
    journal_->Add(riga_);
    return cursore_->Valore(colonna_);
  }

 private:
  JournalPtr journal_;
  std::string riga_;
  std::string colonna_;
  std::shared_ptr<const Cursor> cursore_;
};

class FakeFields : public host::Fields {
 public:
  FakeFields(JournalPtr journal, std::string nome, std::shared_ptr<const Cursor> cursore)
      : journal_(std::move(journal)), nome_(std::move(nome)), cursore_(std::move(cursore)) {}
  std::shared_ptr<host::Field> Item(std::string_view nome) const override {
    (void)cursore_->Valore(nome);  // an unknown column is refused here
    return std::make_shared<FakeField>(journal_, nome_, std::string(nome), cursore_);
  }

 private:
  JournalPtr journal_;
  std::string nome_;
  std::shared_ptr<const Cursor> cursore_;
};

class FakeRecordSet : public host::RecordSet {
 public:
  FakeRecordSet(JournalPtr journal, Righe righe, std::string nome, std::int32_t aperto = 1)
      : journal_(std::move(journal)), nome_(std::move(nome)), cursore_(std::make_shared<Cursor>()) {
    cursore_->righe = std::move(righe);
    cursore_->aperto = aperto;
  }
  bool Eof() const override { return cursore_->Fine(); }
  std::shared_ptr<host::Fields> Fields() const override {
    cursore_->RichiedeAperto();
    return std::make_shared<FakeFields>(journal_, nome_, cursore_);
  }
  void MoveFirst() override {
    journal_->Add(nome_ + ".MoveFirst");
    cursore_->RichiedeAperto();
    if (cursore_->righe.empty()) throw host::Errore(kNessunaRiga, "FakeRecordSet", "Nessun record corrente.");
    cursore_->posizione = 0;
  }
  void MoveNext() override {
    journal_->Add(nome_ + ".MoveNext");
    if (Eof()) throw host::Errore(kNessunaRiga, "FakeRecordSet", "Nessun record corrente.");
    ++cursore_->posizione;
  }
  std::int32_t State() const override { return cursore_->aperto; }
  void Close() override {
    journal_->Add(nome_ + ".Close");
    cursore_->RichiedeAperto();
    cursore_->aperto = 0;
  }

 private:
  JournalPtr journal_;
  std::string nome_;
  std::shared_ptr<Cursor> cursore_;
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
    testo_ = testo;
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
    parametri_.push_back(std::move(aggiunto));
  }
  void Execute() override {
    journal_->Add("Command.Execute");
    if (!connessione_.Aperta()) {
      throw host::Errore(kConnessioneNonValida, "FakeCommand", "La connessione del comando è chiusa.");
    }
    if (!text::EqualsIgnoreCase(testo_, "SPFW_GetUserIDFromConnection")) {
      throw host::Errore(kProceduraSconosciuta, "FakeCommand",
                         "Impossibile trovare la procedura '" + testo_ + "'.");
    }
    if (parametri_.size() != 1) {
      throw host::Errore(kParametroMancante, "FakeCommand", "La procedura vuole un parametro.");
    }
    parametri_.front()->valore = connessione_.utenteConnessione;
  }
  std::shared_ptr<host::Parameter> ParametersItem(std::string_view nome) const override {
    journal_->Add("Command.Parameters.Item " + std::string(nome));
    for (const auto& parametro : parametri_) {
      if (text::EqualsIgnoreCase(parametro->nome, nome)) return parametro;
    }
    throw host::Errore(kElementoSconosciuto, "FakeCommand",
                       "Elemento non trovato nell'insieme: " + std::string(nome));
  }

 private:
  JournalPtr journal_;
  const FakeConnection& connessione_;
  std::string testo_;
  std::vector<std::shared_ptr<FakeParameter>> parametri_;
};

constexpr std::string_view kExecute = "ConnectionADO.Execute ";

}  // namespace

std::shared_ptr<host::RecordSet> FakeConnection::Execute(const std::string& statement, std::int32_t opzione) {
  journal_->Add(std::string(kExecute) + std::to_string(opzione) + " " + statement);
  if (!aperta_) throw host::Errore(kOggettoChiuso, "FakeConnection", "La connessione è chiusa.");
  const bool eseguibile = (opzione == host::kComandoTesto || opzione == host::kComandoNonIndicato) &&
                          !text::Trim(statement).empty() && statement.find('\0') == std::string::npos;
  if (!eseguibile) {
    throw host::Errore(kArgomentiErrati, "FakeConnection", "Argomenti di tipo errato o non compresi.");
  }
  for (auto regola = regole_.rbegin(); regola != regole_.rend(); ++regola) {
    if (statement.find(regola->first) != std::string::npos) return CreaRecordSet(journal_, regola->second());
  }
  if (soloRegole_) throw host::Errore(kSintassi, "FakeConnection", "Sintassi non corretta: " + statement);
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
