#include "odbc/command.h"

#include <utility>

namespace orve::adapters::odbc {

Command::Command(std::shared_ptr<const Link> collegamento)
    : rows::Command(kSorgente), collegamento_(std::move(collegamento)) {}

void Command::EseguiTesto(const std::string& testo) {
  (void)collegamento_->Esegui(testo);
}

void Command::EseguiProcedura(std::string_view nome, const rows::Parameters& parametri) {
  const auto valori = collegamento_->Chiama(nome, parametri.Tutti().size());
  for (std::size_t i = 0; i < valori.size(); ++i) parametri.Tutti()[i]->Value(valori[i]);
}

}  // namespace orve::adapters::odbc
