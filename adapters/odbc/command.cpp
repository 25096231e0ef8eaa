#include "odbc/command.h"

#include <utility>

#include "text/text.h"

namespace orve::adapters::odbc {

namespace {

constexpr std::int32_t kTipoSconosciuto = 8;  // of a new command, until it is set

}  // namespace

Comando::Comando(std::shared_ptr<const Collegamento> collegamento)
    : collegamento_(std::move(collegamento)), tipo_(kTipoSconosciuto), parametri_(kSorgente) {}

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
  if (!collegamento_->Aperto()) {
    throw host::Errore(rows::kConnessioneNonValida, kSorgente, "La connessione del comando è chiusa");
  }
  const auto& parametri = parametri_.Tutti();
  if (tipo_ != host::kProceduraMemorizzata) {
    if (!parametri.empty()) {
      throw host::Errore(rows::kArgomentiErrati, kSorgente,
                         "I parametri sono ammessi solo per le procedure memorizzate");
    }
    (void)collegamento_->Esegui(testo_);
    return;
  }
  const auto valori = collegamento_->Chiama(text::Trim(testo_), parametri.size());
  for (std::size_t i = 0; i < valori.size(); ++i) parametri[i]->Value(valori[i]);
}

std::shared_ptr<host::Parameter> Comando::ParametersItem(std::string_view nome) const {
  return parametri_.Trova(nome);
}

}  // namespace orve::adapters::odbc
