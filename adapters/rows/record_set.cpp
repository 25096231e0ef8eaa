#include "rows/record_set.h"

#include <string_view>
#include <utility>

#include "text/text.h"

namespace orve::adapters::rows {

struct RecordSetOfRows::Cursor {
  Rows righe;
  std::string sorgente;
  std::size_t riga = 0;
  bool aperto = true;

  void Aperto() const {
    if (!aperto)
      throw host::Errore(kOggettoChiuso, sorgente, "Operazione non consentita: il recordset è chiuso");
  }

  void ConRighe(bool presente) const {
    if (!presente) throw host::Errore(kNessunaRiga, sorgente, "Nessun record corrente");
  }

  [[nodiscard]] bool Fine() const { return riga >= righe.Numero(); }
};

class RecordSetOfRows::Column final : public host::Field {
 public:
  Column(std::shared_ptr<const Cursor> cursore, std::size_t posto)
      : cursore_(std::move(cursore)), posto_(posto) {}

  [[nodiscard]] host::Variant Value() const override {
    cursore_->Aperto();
    cursore_->ConRighe(!cursore_->Fine());
    return cursore_->righe.valori[cursore_->riga * cursore_->righe.colonne.size() + posto_];
  }

 private:
  std::shared_ptr<const Cursor> cursore_;
  std::size_t posto_;
};

class RecordSetOfRows::Columns final : public host::Fields {
 public:
  explicit Columns(std::shared_ptr<const Cursor> cursore) : cursore_(std::move(cursore)) {}

  [[nodiscard]] std::shared_ptr<host::Field> Item(std::string_view nome) const override {
    cursore_->Aperto();
    const auto& colonne = cursore_->righe.colonne;
    for (std::size_t posto = 0; posto < colonne.size(); ++posto) {
      if (text::EqualsIgnoreCase(colonne[posto], nome)) return std::make_shared<Column>(cursore_, posto);
    }
    throw host::Errore(kElementoSconosciuto, cursore_->sorgente,
                       "Colonna non trovata nel risultato: " + std::string(nome));
  }

 private:
  std::shared_ptr<const Cursor> cursore_;
};

RecordSetOfRows::RecordSetOfRows(Rows righe, std::string sorgente) : cursore_(std::make_shared<Cursor>()) {
  cursore_->righe = std::move(righe);
  cursore_->sorgente = std::move(sorgente);
}

bool RecordSetOfRows::Eof() const {
  cursore_->Aperto();
  return cursore_->Fine();
}

std::shared_ptr<host::Fields> RecordSetOfRows::Fields() const {
  cursore_->Aperto();
  return std::make_shared<Columns>(cursore_);
}

void RecordSetOfRows::MoveFirst() {
  cursore_->Aperto();
  cursore_->ConRighe(cursore_->righe.Numero() > 0);
  cursore_->riga = 0;
}

void RecordSetOfRows::MoveNext() {
  cursore_->Aperto();
  cursore_->ConRighe(!cursore_->Fine());
  ++cursore_->riga;
}

std::int32_t RecordSetOfRows::State() const {
  return cursore_->aperto ? 1 : 0;
}

void RecordSetOfRows::Close() {
  cursore_->Aperto();
  cursore_->aperto = false;
  cursore_->righe = {};
}

}  // namespace orve::adapters::rows
