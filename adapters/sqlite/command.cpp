#include "sqlite/command.h"

#include <sqlite3.h>

#include <utility>

#include "sqlite/dialect.h"
#include "text/text.h"

namespace orve::adapters::sqlite {

namespace {

constexpr std::int32_t kTipoSconosciuto = 8;  // a new command's, until it is told
constexpr std::int32_t kIntero32 = 3;
constexpr std::int32_t kUscita = 2;

}  // namespace

class Parametro final : public host::Parameter {
 public:
  explicit Parametro(std::string nome) : nome_(std::move(nome)) {}

  [[nodiscard]] host::Variant Value() const override { return valore_; }
  void Value(host::Variant valore) { valore_ = std::move(valore); }
  [[nodiscard]] const std::string& Nome() const { return nome_; }

 private:
  std::string nome_;
  host::Variant valore_ = host::Null{};
};

Comando::Comando(std::shared_ptr<Database> database)
    : database_(std::move(database)), tipo_(kTipoSconosciuto) {}

void Comando::CommandType(std::int32_t tipo) {
  tipo_ = tipo;
}

void Comando::CommandText(const std::string& testo) {
  testo_ = testo;
}

std::shared_ptr<host::Parameter> Comando::CreateParameter(const std::string& nome, std::int32_t tipo,
                                                          std::int32_t direzione,
                                                          std::int32_t /*lunghezza*/) {
  if (tipo != kIntero32 || direzione != kUscita) {
    throw host::Errore(kArgomentiErrati, kSorgente, "Parametro non previsto: " + nome);
  }
  return std::make_shared<Parametro>(nome);
}

void Comando::ParametersAppend(const std::shared_ptr<host::Parameter>& parametro) {
  (void)host::Richiesto(parametro);
  auto proprio = std::dynamic_pointer_cast<Parametro>(parametro);
  if (!proprio)
    throw host::Errore(kArgomentiErrati, kSorgente, "Il parametro appartiene a un'altra connessione");
  parametri_.push_back(std::move(proprio));
}

void Comando::Execute() {
  if (!database_->Aperto()) {
    throw host::Errore(kConnessioneNonValida, kSorgente, "La connessione del comando è chiusa");
  }
  if (tipo_ == host::kProceduraMemorizzata) {
    EseguiProcedura();
    return;
  }
  if (!parametri_.empty()) {
    throw host::Errore(kArgomentiErrati, kSorgente,
                       "I parametri sono ammessi solo per le procedure memorizzate");
  }
  (void)database_->Esegui(TraduciDialetto(testo_), {});
}

void Comando::EseguiProcedura() {
  std::string nome(text::Trim(testo_));
  if (text::EqualsIgnoreCase(nome.substr(0, 4), "dbo.")) nome.erase(0, 4);
  if (text::EqualsIgnoreCase(nome, "SPFW_GetUserIDFromConnection")) {
    if (parametri_.size() != 1) {
      throw host::Errore(SQLITE_ERROR, kSorgente, "wrong number of arguments to procedure " + nome);
    }
    const auto& utente = database_->utente;
    parametri_.front()->Value(utente ? host::Variant(*utente) : host::Variant(host::Null{}));
    return;
  }
  if (!parametri_.empty() || nome.empty()) {
    throw host::Errore(SQLITE_ERROR, kSorgente, "no such procedure: " + nome);
  }
  (void)database_->Esegui(TraduciDialetto("exec " + nome), {});
}

std::shared_ptr<host::Parameter> Comando::ParametersItem(std::string_view nome) const {
  for (const auto& parametro : parametri_) {
    if (text::EqualsIgnoreCase(parametro->Nome(), nome)) return parametro;
  }
  throw host::Errore(kElementoSconosciuto, kSorgente, "Parametro non trovato: " + std::string(nome));
}

}  // namespace orve::adapters::sqlite
