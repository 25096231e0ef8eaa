#include "sqlite/sqlite_connection.h"

#include <utility>

#include "sqlite/command.h"
#include "sqlite/dialect.h"

namespace orve::adapters::sqlite {

std::shared_ptr<SqliteConnection> SqliteConnection::Apri(const std::string& percorso,
                                                         const SqliteOptions& opzioni) {
  auto database = std::make_shared<Database>(percorso, opzioni, false);
  return std::shared_ptr<SqliteConnection>(new SqliteConnection(std::move(database)));
}

SqliteConnection::SqliteConnection(std::shared_ptr<Database> database) : database_(std::move(database)) {}

// Commands may outlive the connection; the file is closed all the same.
SqliteConnection::~SqliteConnection() {
  database_->Chiudi();
}

std::shared_ptr<host::RecordSet> SqliteConnection::Execute(const std::string& statement,
                                                           std::int32_t opzione) {
  if (opzione == host::kProceduraMemorizzata) {
    auto comando = CreateCommand();
    comando->CommandType(opzione);
    comando->CommandText(statement);
    comando->Execute();
    return std::make_shared<rows::RecordSetOfRows>(rows::Rows{}, kSorgente);
  }
  if (opzione != host::kComandoTesto && opzione != host::kComandoNonIndicato) {
    throw host::Errore(rows::kArgomentiErrati, kSorgente,
                       "Opzione di esecuzione non prevista: " + std::to_string(opzione));
  }
  return std::make_shared<rows::RecordSetOfRows>(database_->Esegui(TraduciDialetto(statement), {}),
                                                 kSorgente);
}

std::shared_ptr<host::Command> SqliteConnection::CreateCommand() {
  return std::make_shared<Command>(database_);
}

std::shared_ptr<host::RecordSet> SqliteConnection::EseguiConValori(const std::string& istruzione,
                                                                   const std::vector<Value>& valori) {
  return std::make_shared<rows::RecordSetOfRows>(database_->Esegui(istruzione, valori), kSorgente);
}

void SqliteConnection::UtenteConnessione(std::optional<std::int32_t> idUtente) {
  database_->utente = idUtente;
}

std::optional<std::int32_t> SqliteConnection::UtenteConnessione() const {
  return database_->utente;
}

void SqliteConnection::Chiudi() {
  database_->Chiudi();
}

bool SqliteConnection::Aperta() const {
  return database_->Aperto();
}

}  // namespace orve::adapters::sqlite
