#include "forms/controlli.h"

#include <utility>

#include "orve-mailserver/host/errore.h"

namespace orve::adapters::forms {

namespace {

// While it lives, what the selection does is the grid's own doing.
class Movimento {
 public:
  explicit Movimento(bool& muove) : muove_(muove) { muove_ = true; }
  Movimento(const Movimento&) = delete;
  Movimento& operator=(const Movimento&) = delete;
  Movimento(Movimento&&) = delete;
  Movimento& operator=(Movimento&&) = delete;
  ~Movimento() { muove_ = false; }

 private:
  bool& muove_;
};

}  // namespace

void Spunta::Text(const std::string& valore) {
  Segna(valore == "1");
  host::Solleva(Change);
}

void Combo::EraseCombo() {
  voci_.Svuota();
  Svuota();
}

void Combo::AddItemData(const std::string& testo, std::int16_t dati) {
  voci_.Aggiungi(testo, dati);
  AggiungiVoce(testo);
}

void Combo::Text(const host::Variant& valore) {
  voci_.SelezionaValore(valore);
  Seleziona();
  host::Solleva(Change, voci_.Selezionata());
}

void Combo::SelezionaPosizione(std::int16_t posizione) {
  voci_.SelezionaPosizione(posizione);
  Seleziona();
  host::Solleva(Change, posizione);
}

void Combo::Scelta(std::int16_t posizione) {
  voci_.SelezionaPosizione(posizione);
  host::Solleva(Change, posizione);
}

void Griglia::Configurazione(const std::shared_ptr<host::ConfigurazioneGriglia>& configurazione) {
  RigheIntere(host::Richiesto(configurazione).SelezioneRiga());
}

void Griglia::AggiungiColonna(const std::string& campo, const std::string& didascalia, std::int32_t numero,
                              float larghezza, bool visibile) {
  colonne_.push_back({campo, didascalia, numero, larghezza, visibile});
}

void Griglia::FineColonne() {
  OrdinaColonne(colonne_);
  MostraColonne();
}

void Griglia::DataSource(const std::shared_ptr<host::RecordSetScollegato>& righe) {
  Lascia();
  righe_ = righe;
  {
    const Movimento movimento(muove_);
    mostrate_.clear();
    MostraRighe(mostrate_);
    if (righe_ && configurata_ && !colonne_.empty()) {
      mostrate_ = RigheDi(*righe_, colonne_);
      MostraRighe(mostrate_);
    }
  }
  if (!righe_) return;
  Segue();
  righe_->MoveComplete = [this] { Segue(); };
}

void Griglia::Lascia() {
  if (righe_) righe_->MoveComplete = nullptr;
  righe_.reset();
}

void Griglia::Segue() {
  if (muove_ || !righe_) return;
  const Movimento movimento(muove_);
  const std::int32_t riga = righe_->AbsolutePosition() - 1;
  const bool mostrata = riga >= 0 && static_cast<std::size_t>(riga) < mostrate_.size();
  Seleziona(mostrata ? riga : -1);
}

void Griglia::Sceglie(int riga) {
  if (muove_ || !righe_ || riga < 0) return;
  const Movimento movimento(muove_);
  righe_->AbsolutePosition(riga + 1);
}

}  // namespace orve::adapters::forms
