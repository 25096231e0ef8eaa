// The controls of a window as far as they are not drawn: what the program asks of them, and what they keep. A
// toolkit derives how each is shown, and passes on what the person does.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "forms/righe_griglia.h"
#include "forms/voci_combo.h"
#include "forms/voci_menu.h"
#include "orve-mailserver/host/controlli.h"
#include "orve-mailserver/host/griglia.h"

namespace orve::adapters::forms {

class PulsanteMenu : public host::KVL_TBARMENU {
 public:
  void AddMenuItem(const std::string& didascalia, const std::string& chiave) override {
    voci_.Aggiungi(didascalia, chiave);
  }
  void EnableMenuItem(const host::Variant& chiaveOPosizione, bool attiva) override {
    voci_.Abilita(chiaveOPosizione, attiva);
  }

 protected:
  [[nodiscard]] const std::vector<VoceMenu>& Voci() const { return voci_.Voci(); }

 private:
  VociMenu voci_;
};

class Spunta : public host::KVL_CHECKBOX {
 public:
  std::string Text() override { return Segnata() ? "1" : "0"; }
  void Text(const std::string& valore) override;

 protected:
  [[nodiscard]] virtual bool Segnata() const = 0;
  /// Raises no event.
  virtual void Segna(bool segnata) = 0;
};

class Combo : public host::KVL_COMBO {
 public:
  void EraseCombo() override;
  void AddItemData(const std::string& testo, std::int16_t dati) override;
  std::string Text() override { return voci_.Valore(); }
  void Text(const host::Variant& valore) override;
  std::string ItemKey(std::int16_t posizione) override { return voci_.Chiave(posizione); }
  void SelezionaPosizione(std::int16_t posizione) override;

 protected:
  /// -1 for none.
  [[nodiscard]] std::int16_t Selezionata() const { return voci_.Selezionata(); }
  /// The person has selected another entry.
  void Scelta(std::int16_t posizione);

  /// The list on the screen. None of these raises an event.
  virtual void Svuota() = 0;
  virtual void AggiungiVoce(const std::string& testo) = 0;
  /// Shows the selected entry.
  virtual void Seleziona() = 0;

 private:
  VociCombo voci_;
};

class Griglia : public host::KVL_QGRIDWRAPPER {
 public:
  Griglia() = default;
  Griglia(const Griglia&) = delete;
  Griglia& operator=(const Griglia&) = delete;
  Griglia(Griglia&&) = delete;
  Griglia& operator=(Griglia&&) = delete;
  ~Griglia() override { Lascia(); }

  void Configurazione(const std::shared_ptr<host::ConfigurazioneGriglia>& configurazione) override;
  /// Columns share the width of the grid and never scroll sideways, so all of them stay in place.
  void ColonneFisse(std::int32_t /*numero*/) override {}
  void AggiungiColonna(const std::string& campo, const std::string& didascalia, std::int32_t numero,
                       float larghezza, bool visibile) override;
  void FineColonne() override;
  void FineConfigurazione() override { configurata_ = true; }
  /// The rows as they are now.
  void DataSource(const std::shared_ptr<host::RecordSetScollegato>& righe) override;

  /// What the grid shows.
  [[nodiscard]] const RigheMostrate& Righe() const { return mostrate_; }

 protected:
  /// In their order.
  [[nodiscard]] const std::vector<ColonnaGriglia>& Colonne() const { return colonne_; }
  /// Whether the selection is the program's at this moment.
  [[nodiscard]] bool Muove() const { return muove_; }
  /// The person has selected a row, from 0: it becomes the record set's current one. Passes on its error.
  void Sceglie(int riga);
  /// The record set's current row becomes the selected one.
  void Segue();

  virtual void RigheIntere(bool intere) = 0;
  virtual void MostraColonne() = 0;
  /// In place of what is there.
  virtual void MostraRighe(const RigheMostrate& righe) = 0;
  /// Selects a row, from 0; -1 for none.
  virtual void Seleziona(int riga) = 0;

 private:
  void Lascia();

  std::vector<ColonnaGriglia> colonne_;
  bool configurata_ = false;
  bool muove_ = false;  // the selection and the record set do not chase each other
  RigheMostrate mostrate_;
  std::shared_ptr<host::RecordSetScollegato> righe_;
};

}  // namespace orve::adapters::forms
