#include "values/record_set_in_memoria.h"

#include <algorithm>
#include <utility>

#include "orve-mailserver/host/controlli.h"

#include "text/text.h"

namespace orve::adapters::values {

namespace {

using host::Errore;
using host::Variant;

[[noreturn]] void Fallisce(std::int32_t numero, const std::string& descrizione) {
  throw Errore(numero, "RecordSet", descrizione);
}

}  // namespace

struct RecordSetInMemoria::Tabella {
  struct Campo {
    std::string nome;
    std::int32_t tipo;
    std::int32_t dimensione;
  };

  std::vector<Campo> campi;
  std::vector<Variant::Array> righe;
  std::size_t corrente = 0;  // the number of rows: past the last one
  bool aperta = false;

  void RichiedeAperta() const {
    if (!aperta) Fallisce(kOggettoChiuso, "Operazione non consentita se l'oggetto è chiuso.");
  }

  [[nodiscard]] std::size_t IndiceDi(std::string_view nome) const {
    for (std::size_t i = 0; i < campi.size(); ++i) {
      if (text::EqualsIgnoreCase(campi[i].nome, nome)) return i;
    }
    Fallisce(kElementoNonTrovato, "Elemento non trovato nell'insieme: " + std::string(nome));
  }

  // The value as the field holds it.
  [[nodiscard]] static Variant Adatta(const Campo& campo, const Variant& valore) {
    if (valore.IsNull() || valore.IsEmpty()) return host::Null{};
    if (campo.tipo == kIntero) return valore.ToInt32();
    std::string testo = valore.ToText();
    const bool troppoLungo =
        campo.dimensione > 0 && text::Length(testo) > static_cast<std::size_t>(campo.dimensione);
    if (troppoLungo) Fallisce(kValoreNonValido, "Valore troppo lungo per il campo " + campo.nome + ".");
    return testo;
  }

  [[nodiscard]] const Variant& Valore(std::size_t campo) const {
    RichiedeAperta();
    if (corrente >= righe.size()) {
      Fallisce(
          kNessunRecord,
          "BOF o EOF è true oppure il record corrente è stato eliminato. L'operazione richiede un record "
          "corrente.");
    }
    return righe[corrente][campo];
  }
};

namespace {

// `Campo='testo'` and nothing else.
struct Criterio {
  std::string_view campo;
  std::string_view testo;
};

Criterio LeggiCriterio(std::string_view criterio) {
  const auto apre = criterio.find("='");
  const auto chiude = criterio.size() - 1;
  const bool forma =
      apre != std::string_view::npos && apre > 0 && apre + 2 <= chiude && criterio[chiude] == '\'';
  if (forma) {
    const auto testo = criterio.substr(apre + 2, chiude - apre - 2);
    if (testo.find('\'') == std::string_view::npos) return {criterio.substr(0, apre), testo};
  }
  Fallisce(RecordSetInMemoria::kArgomentiErrati,
           "Argomenti non corretti, non compresi nell'intervallo consentito o in conflitto.");
}

}  // namespace

RecordSetInMemoria::RecordSetInMemoria() : tabella_(std::make_shared<Tabella>()) {}

bool RecordSetInMemoria::Eof() const {
  tabella_->RichiedeAperta();
  return tabella_->corrente >= tabella_->righe.size();
}

std::shared_ptr<host::Fields> RecordSetInMemoria::Fields() const {
  class CampoCorrente : public host::Field {
   public:
    CampoCorrente(std::shared_ptr<Tabella> tabella, std::size_t indice)
        : tabella_(std::move(tabella)), indice_(indice) {}
    [[nodiscard]] Variant Value() const override { return tabella_->Valore(indice_); }

   private:
    std::shared_ptr<Tabella> tabella_;
    std::size_t indice_;
  };
  class Campi : public host::Fields {
   public:
    explicit Campi(std::shared_ptr<Tabella> tabella) : tabella_(std::move(tabella)) {}
    [[nodiscard]] std::shared_ptr<host::Field> Item(std::string_view nome) const override {
      return std::make_shared<CampoCorrente>(tabella_, tabella_->IndiceDi(nome));
    }

   private:
    std::shared_ptr<Tabella> tabella_;
  };
  return std::make_shared<Campi>(tabella_);
}

void RecordSetInMemoria::MoveFirst() {
  tabella_->RichiedeAperta();
  if (tabella_->righe.empty()) Fallisce(kNessunRecord, "Nessun record corrente.");
  Vai(0);
}

void RecordSetInMemoria::MoveNext() {
  if (Eof()) Fallisce(kNessunRecord, "Nessun record corrente.");
  Vai(tabella_->corrente + 1);
}

std::int32_t RecordSetInMemoria::State() const {
  return tabella_->aperta ? 1 : 0;
}

void RecordSetInMemoria::Close() {
  tabella_->RichiedeAperta();
  tabella_->aperta = false;
  tabella_->righe.clear();
  tabella_->corrente = 0;
}

void RecordSetInMemoria::FieldsAppend(const std::string& nome, std::int32_t tipo, std::int32_t dimensione,
                                      std::int32_t /*attributo*/) {
  if (tabella_->aperta) Fallisce(kOggettoAperto, "Operazione non consentita se l'oggetto è aperto.");
  tabella_->campi.push_back({nome, tipo, dimensione});
}

void RecordSetInMemoria::Open(std::int32_t /*cursore*/, std::int32_t /*blocco*/, std::int32_t /*opzioni*/) {
  if (tabella_->aperta) Fallisce(kOggettoAperto, "Operazione non consentita se l'oggetto è aperto.");
  tabella_->aperta = true;
}

void RecordSetInMemoria::AddNew(const std::vector<std::string>& campi, const Variant::Array& valori) {
  tabella_->RichiedeAperta();
  if (campi.size() != valori.size()) {
    Fallisce(kArgomentiErrati, "Il numero dei valori non corrisponde a quello dei campi.");
  }
  Variant::Array riga(tabella_->campi.size(), Variant(host::Null{}));
  for (std::size_t i = 0; i < campi.size(); ++i) {
    const std::size_t campo = tabella_->IndiceDi(campi[i]);
    riga[campo] = Tabella::Adatta(tabella_->campi[campo], valori[i]);
  }
  tabella_->righe.push_back(std::move(riga));
  Vai(tabella_->righe.size() - 1);
}

std::int32_t RecordSetInMemoria::RecordCount() {
  tabella_->RichiedeAperta();
  return static_cast<std::int32_t>(tabella_->righe.size());
}

void RecordSetInMemoria::Find(const std::string& criterio, std::int32_t salta, std::int32_t direzione,
                              std::int32_t inizio) {
  tabella_->RichiedeAperta();
  if (direzione != kAvanti || inizio != kDalPrimo || salta < 0) {
    Fallisce(kArgomentiErrati, "La ricerca procede soltanto in avanti dalla prima riga.");
  }
  const auto [campo, testo] = LeggiCriterio(criterio);
  const std::size_t colonna = tabella_->IndiceDi(campo);
  const std::string cercato = text::FoldCase(testo);
  auto riga = static_cast<std::size_t>(salta);
  while (riga < tabella_->righe.size() &&
         text::FoldCase(tabella_->righe[riga][colonna].Joined()) != cercato) {
    ++riga;
  }
  Vai(std::min(riga, tabella_->righe.size()));
}

std::int32_t RecordSetInMemoria::AbsolutePosition() {
  return Eof() ? kNessunaRiga : static_cast<std::int32_t>(tabella_->corrente) + 1;
}

void RecordSetInMemoria::AbsolutePosition(std::int32_t posizione) {
  tabella_->RichiedeAperta();
  const bool esiste = posizione >= 1 && static_cast<std::size_t>(posizione) <= tabella_->righe.size();
  if (!esiste) Fallisce(kArgomentiErrati, "Nessuna riga in questa posizione.");
  Vai(static_cast<std::size_t>(posizione) - 1);
}

void RecordSetInMemoria::Vai(std::size_t riga) {
  tabella_->corrente = riga;
  host::Solleva(MoveComplete);
}

}  // namespace orve::adapters::values
