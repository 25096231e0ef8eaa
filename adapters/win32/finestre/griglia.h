// The grid in a list view of Windows.
#pragma once

#include "forms/controlli.h"
#include "win32/finestre/elemento.h"

namespace orve::adapters::win32::finestre {

class Griglia : public Controllo<forms::Griglia> {
 public:
  Griglia(Posto posto, const host::LayoutControllo& layout);

  void Posa() override;
  LRESULT Notifica(const NMHDR& notifica) override;

 protected:
  void RigheIntere(bool intere) override;
  void MostraColonne() override;
  void MostraRighe(const forms::RigheMostrate& righe) override;
  void Seleziona(int riga) override;

 private:
  void AllargaUltima();
};

}  // namespace orve::adapters::win32::finestre
