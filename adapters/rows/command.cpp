#include "rows/command.h"

#include <utility>

#include "text/text.h"

namespace orve::adapters::rows {

namespace {

constexpr std::int32_t kTipoSconosciuto = 8;  // of a new command, until it is set

}  // namespace

Command::Command(std::string sorgente)
    : sorgente_(std::move(sorgente)), tipo_(kTipoSconosciuto), parametri_(sorgente_) {}

std::shared_ptr<host::Parameter> Command::CreateParameter(const std::string& nome, std::int32_t tipo,
                                                          std::int32_t direzione,
                                                          std::int32_t /*lunghezza*/) {
  return parametri_.Crea(nome, tipo, direzione);
}

void Command::ParametersAppend(const std::shared_ptr<host::Parameter>& parametro) {
  parametri_.Aggiungi(parametro);
}

void Command::Execute() {
  if (!Aperto()) {
    throw host::Errore(kConnessioneNonValida, sorgente_, "La connessione del comando è chiusa");
  }
  if (tipo_ == host::kProceduraMemorizzata) {
    EseguiProcedura(text::Trim(testo_), parametri_);
    return;
  }
  if (!parametri_.Tutti().empty()) {
    throw host::Errore(kArgomentiErrati, sorgente_,
                       "I parametri sono ammessi solo per le procedure memorizzate");
  }
  EseguiTesto(testo_);
}

std::shared_ptr<host::Parameter> Command::ParametersItem(std::string_view nome) const {
  return parametri_.Trova(nome);
}

}  // namespace orve::adapters::rows
