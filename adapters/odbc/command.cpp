#include "odbc/command.h"

#include <utility>

namespace orve::adapters::odbc {

Comando::Comando(std::shared_ptr<const Collegamento> collegamento)
    : rows::Comando(kSorgente), collegamento_(std::move(collegamento)) {}

void Comando::EseguiTesto(const std::string& testo) {
  (void)collegamento_->Esegui(testo);
}

void Comando::EseguiProcedura(std::string_view nome, const rows::Parametri& parametri) {
  const auto valori = collegamento_->Chiama(nome, parametri.Tutti().size());
  for (std::size_t i = 0; i < valori.size(); ++i) parametri.Tutti()[i]->Value(valori[i]);
}

}  // namespace orve::adapters::odbc
