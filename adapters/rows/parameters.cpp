#include "rows/parameters.h"

#include "text/text.h"

namespace orve::adapters::rows {

namespace {

constexpr std::int32_t kIntero32 = 3;
constexpr std::int32_t kUscita = 2;

}  // namespace

std::shared_ptr<Parameter> Parameters::Crea(const std::string& nome, std::int32_t tipo,
                                            std::int32_t direzione) const {
  if (tipo != kIntero32 || direzione != kUscita) {
    throw host::Errore(kArgomentiErrati, sorgente_, "Parametro non previsto: " + nome);
  }
  return std::make_shared<Parameter>(nome);
}

void Parameters::Aggiungi(const std::shared_ptr<host::Parameter>& parametro) {
  (void)host::Richiesto(parametro);
  auto proprio = std::dynamic_pointer_cast<Parameter>(parametro);
  if (!proprio)
    throw host::Errore(kArgomentiErrati, sorgente_, "Il parametro appartiene a un'altra connessione");
  parametri_.push_back(std::move(proprio));
}

std::shared_ptr<Parameter> Parameters::Trova(std::string_view nome) const {
  for (const auto& parametro : parametri_) {
    if (text::EqualsIgnoreCase(parametro->Nome(), nome)) return parametro;
  }
  throw host::Errore(kElementoSconosciuto, sorgente_, "Parametro non trovato: " + std::string(nome));
}

}  // namespace orve::adapters::rows
