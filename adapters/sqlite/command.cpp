#include "sqlite/command.h"

#include <sqlite3.h>

#include <utility>

#include "sqlite/dialect.h"
#include "text/text.h"

namespace orve::adapters::sqlite {

namespace {

constexpr std::int32_t kTipoSconosciuto = 8;  // of a new command, until it is set

}  // namespace

Comando::Comando(std::shared_ptr<Database> database)
    : database_(std::move(database)), tipo_(kTipoSconosciuto), parametri_(kSorgente) {}

void Comando::CommandType(std::int32_t tipo) {
  tipo_ = tipo;
}

void Comando::CommandText(const std::string& testo) {
  testo_ = testo;
}

std::shared_ptr<host::Parameter> Comando::CreateParameter(const std::string& nome, std::int32_t tipo,
                                                          std::int32_t direzione,
                                                          std::int32_t /*lunghezza*/) {
  return parametri_.Crea(nome, tipo, direzione);
}

void Comando::ParametersAppend(const std::shared_ptr<host::Parameter>& parametro) {
  parametri_.Aggiungi(parametro);
}

void Comando::Execute() {
  if (!database_->Aperto()) {
    throw host::Errore(rows::kConnessioneNonValida, kSorgente, "La connessione del comando è chiusa");
  }
  if (tipo_ == host::kProceduraMemorizzata) {
    EseguiProcedura();
    return;
  }
  if (!parametri_.Tutti().empty()) {
    throw host::Errore(rows::kArgomentiErrati, kSorgente,
                       "I parametri sono ammessi solo per le procedure memorizzate");
  }
  (void)database_->Esegui(TraduciDialetto(testo_), {});
}

void Comando::EseguiProcedura() {
  std::string nome(text::Trim(testo_));
  if (text::EqualsIgnoreCase(nome.substr(0, 4), "dbo.")) nome.erase(0, 4);
  if (text::EqualsIgnoreCase(nome, "SPFW_GetUserIDFromConnection")) {
    if (parametri_.Tutti().size() != 1) {
      throw host::Errore(SQLITE_ERROR, kSorgente, "wrong number of arguments to procedure " + nome);
    }
    const auto& utente = database_->utente;
    parametri_.Tutti().front()->Value(utente ? host::Variant(*utente) : host::Variant(host::Null{}));
    return;
  }
  if (!parametri_.Tutti().empty() || nome.empty()) {
    throw host::Errore(SQLITE_ERROR, kSorgente, "no such procedure: " + nome);
  }
  (void)database_->Esegui(TraduciDialetto("exec " + nome), {});
}

std::shared_ptr<host::Parameter> Comando::ParametersItem(std::string_view nome) const {
  return parametri_.Trova(nome);
}

}  // namespace orve::adapters::sqlite
