// The grid in a table of Qt.
#pragma once

#include <QTableWidget>
#include <memory>

#include "forms/controlli.h"
#include "qt/elemento.h"

namespace orve::adapters::qt {

class Griglia : public Controllo<forms::Griglia> {
 public:
  Griglia(std::shared_ptr<QWidget> finestra, const host::LayoutControllo& layout, QWidget* padre);

 protected:
  void RigheIntere(bool intere) override;
  void MostraColonne() override;
  void MostraRighe(const forms::RigheMostrate& righe) override;
  void Seleziona(int riga) override;

 private:
  QTableWidget* tabella_;
};

}  // namespace orve::adapters::qt
