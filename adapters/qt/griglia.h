// The grid: the rows of a record set as they were when it was bound, one of them selected.
#pragma once

#include <QTableWidget>
#include <memory>
#include <string>
#include <vector>

#include "forms/righe_griglia.h"
#include "orve-mailserver/host/griglia.h"
#include "qt/elemento.h"

namespace orve::adapters::qt {

class Griglia : public Controllo<forms::GrigliaMostrata> {
 public:
  Griglia(std::shared_ptr<QWidget> finestra, const host::LayoutControllo& layout, QWidget* padre);
  Griglia(const Griglia&) = delete;
  Griglia& operator=(const Griglia&) = delete;
  Griglia(Griglia&&) = delete;
  Griglia& operator=(Griglia&&) = delete;
  ~Griglia() override;

  void Configurazione(const std::shared_ptr<host::ConfigurazioneGriglia>& configurazione) override;
  /// Columns share the width of the grid and never scroll sideways, so all of them stay in place.
  void ColonneFisse(std::int32_t /*numero*/) override {}
  void AggiungiColonna(const std::string& campo, const std::string& didascalia, std::int32_t numero,
                       float larghezza, bool visibile) override;
  void FineColonne() override;
  void FineConfigurazione() override { configurata_ = true; }
  void DataSource(const std::shared_ptr<host::RecordSetScollegato>& righe) override;

 private:
  void Lascia();
  void Copia();
  void Segue();
  void Sceglie(int riga);

  QTableWidget* tabella_;
  std::vector<forms::ColonnaGriglia> colonne_;
  bool configurata_ = false;
  bool muove_ = false;  // the selection and the record set do not chase each other
  std::shared_ptr<host::RecordSetScollegato> righe_;
};

}  // namespace orve::adapters::qt
