#include "odbc/odbc_connection.h"

#include <utility>

#include "odbc/command.h"
#include "odbc/link.h"

namespace orve::adapters::odbc {

std::shared_ptr<OdbcConnection> OdbcConnection::Apri(const std::string& stringaConnessione,
                                                     const OdbcOptions& opzioni) {
  return std::shared_ptr<OdbcConnection>(
      new OdbcConnection(std::make_shared<Link>(stringaConnessione, opzioni)));
}

OdbcConnection::OdbcConnection(std::shared_ptr<Link> collegamento) : collegamento_(std::move(collegamento)) {}

std::shared_ptr<host::RecordSet> OdbcConnection::Execute(const std::string& statement, std::int32_t opzione) {
  if (opzione == host::kProceduraMemorizzata) {
    (void)collegamento_->Chiama(statement, 0);
    return std::make_shared<rows::RecordSetOfRows>(rows::Rows{}, kSorgente);
  }
  if (opzione != host::kComandoTesto && opzione != host::kComandoNonIndicato) {
    throw host::Errore(rows::kArgomentiErrati, kSorgente,
                       "Opzione di esecuzione non prevista: " + std::to_string(opzione));
  }
  return std::make_shared<rows::RecordSetOfRows>(collegamento_->Esegui(statement), kSorgente);
}

std::shared_ptr<host::Command> OdbcConnection::CreateCommand() {
  return std::make_shared<Command>(collegamento_);
}

void OdbcConnection::Chiudi() {
  collegamento_->Chiudi();
}

bool OdbcConnection::Aperta() const {
  return collegamento_->Aperto();
}

}  // namespace orve::adapters::odbc
