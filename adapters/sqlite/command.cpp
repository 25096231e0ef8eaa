#include "sqlite/command.h"

#include <sqlite3.h>

#include <utility>

#include "sqlite/dialect.h"
#include "text/text.h"

namespace orve::adapters::sqlite {

Command::Command(std::shared_ptr<Database> database)
    : rows::Command(kSorgente), database_(std::move(database)) {}

void Command::EseguiTesto(const std::string& testo) {
  (void)database_->Esegui(TraduciDialetto(testo), {});
}

void Command::EseguiProcedura(std::string_view procedura, const rows::Parameters& parametri) {
  std::string nome(procedura);
  if (text::EqualsIgnoreCase(nome.substr(0, 4), "dbo.")) nome.erase(0, 4);
  if (text::EqualsIgnoreCase(nome, "SPFW_GetUserIDFromConnection")) {
    if (parametri.Tutti().size() != 1) {
      throw host::Errore(SQLITE_ERROR, kSorgente, "wrong number of arguments to procedure " + nome);
    }
    const auto& utente = database_->utente;
    parametri.Tutti().front()->Value(utente ? host::Variant(*utente) : host::Variant(host::Null{}));
    return;
  }
  if (!parametri.Tutti().empty() || nome.empty()) {
    throw host::Errore(SQLITE_ERROR, kSorgente, "no such procedure: " + nome);
  }
  (void)database_->Esegui(TraduciDialetto("exec " + nome), {});
}

}  // namespace orve::adapters::sqlite
