#include "win32/finestre/griglia.h"

#include <uxtheme.h>

#include <algorithm>
#include <utility>

#include "forms/testo_visibile.h"
#include "win32/finestre/messaggi.h"
#include "win32/finestre/nomi_accessibili.h"
#include "win32/finestre/testo.h"

namespace orve::adapters::win32::finestre {

Griglia::Griglia(Posto posto, const host::LayoutControllo& layout)
    : Controllo(std::move(posto), layout,
                {WC_LISTVIEWW, LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER,
                 WS_EX_CLIENTEDGE}) {
  Manda(LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP | LVS_EX_INFOTIP);
  SetWindowTheme(Maniglia(), L"Explorer", nullptr);
}

void Griglia::RigheIntere(bool intere) {
  Manda(LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT, intere ? LVS_EX_FULLROWSELECT : 0);
}

void Griglia::MostraColonne() {
  while (Manda(LVM_DELETECOLUMN, 0) != FALSE) {
  }
  int quale = 0;
  std::string nome;
  for (const auto& colonna : Colonne()) {
    std::wstring testo = Largo(colonna.didascalia);
    LVCOLUMNW voce = {};
    voce.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
    voce.pszText = testo.data();
    voce.cx = colonna.visibile ? forms::Pixel(colonna.larghezza, LaFinestra()->Dpi()) : 0;
    voce.iSubItem = quale;
    Manda(LVM_INSERTCOLUMNW, static_cast<WPARAM>(quale++), reinterpret_cast<LPARAM>(&voce));
    if (nome.empty()) nome = colonna.didascalia;
  }
  AllargaUltima();
  NomiAccessibili().Da(Maniglia(), Largo(nome));
}

// The last visible column takes the width that the others leave.
void Griglia::AllargaUltima() {
  const auto& colonne = Colonne();
  const auto ultima =
      std::find_if(colonne.rbegin(), colonne.rend(), [](const auto& uno) { return uno.visibile; });
  if (ultima == colonne.rend()) return;
  const auto quale = static_cast<WPARAM>(std::distance(ultima, colonne.rend()) - 1);
  RECT tutto = {};
  GetClientRect(Maniglia(), &tutto);
  LRESULT resto = tutto.right;
  for (WPARAM i = 0; i < colonne.size(); ++i) {
    if (i != quale) resto -= Manda(LVM_GETCOLUMNWIDTH, i);
  }
  Manda(LVM_SETCOLUMNWIDTH, quale, std::max(LRESULT{1}, resto));
}

void Griglia::Posa() {
  Controllo::Posa();
  AllargaUltima();
}

void Griglia::MostraRighe(const forms::RigheMostrate& righe) {
  Manda(LVM_DELETEALLITEMS);
  int riga = 0;
  for (const auto& celle : righe) {
    for (int i = 0; i < static_cast<int>(celle.size()); ++i) {
      std::wstring testo = Largo(forms::TestoVisibile(celle[static_cast<std::size_t>(i)]));
      LVITEMW voce = {};
      voce.mask = LVIF_TEXT;
      voce.iItem = riga;
      voce.iSubItem = i;
      voce.pszText = testo.data();
      Manda(i == 0 ? LVM_INSERTITEMW : LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&voce));
    }
    ++riga;
  }
  AllargaUltima();  // a scroll bar may have come or gone
}

void Griglia::Seleziona(int riga) {
  const bool mostrata = riga >= 0;
  LVITEMW stato = {};
  stato.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
  stato.state = mostrata ? LVIS_SELECTED | LVIS_FOCUSED : 0U;
  Manda(LVM_SETITEMSTATE, static_cast<WPARAM>(static_cast<INT_PTR>(riga)), reinterpret_cast<LPARAM>(&stato));
  if (mostrata) Manda(LVM_ENSUREVISIBLE, static_cast<WPARAM>(riga), FALSE);
}

LRESULT Griglia::Notifica(const NMHDR& notifica) {
  if (notifica.code == static_cast<UINT>(LVN_ITEMCHANGED)) {
    const auto& cambio = reinterpret_cast<const NMLISTVIEW&>(notifica);
    if ((cambio.uNewState & ~cambio.uOldState & LVIS_SELECTED) != 0) {
      Protetta(LaFinestra()->Maniglia(), [&] { Sceglie(cambio.iItem); });
    }
  }
  // A click outside the rows, or one with Ctrl, deselects the row, which remains the current one.
  const bool clic =
      notifica.code == static_cast<UINT>(NM_CLICK) || notifica.code == static_cast<UINT>(NM_RCLICK);
  if (clic && Manda(LVM_GETSELECTEDCOUNT) == 0) Protetta(LaFinestra()->Maniglia(), [this] { Segue(); });
  return 0;
}

}  // namespace orve::adapters::win32::finestre
