#include "win32/finestre/griglia.h"

#include <uxtheme.h>

#include <algorithm>
#include <utility>

#include "forms/testo_visibile.h"
#include "orve-mailserver/host/errore.h"
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

Griglia::~Griglia() {
  Lascia();
}

void Griglia::Configurazione(const std::shared_ptr<host::ConfigurazioneGriglia>& configurazione) {
  const bool righe = host::Richiesto(configurazione).SelezioneRiga();
  Manda(LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT, righe ? LVS_EX_FULLROWSELECT : 0);
}

void Griglia::AggiungiColonna(const std::string& campo, const std::string& didascalia, std::int32_t numero,
                              float larghezza, bool visibile) {
  colonne_.push_back({campo, didascalia, numero, larghezza, visibile});
}

void Griglia::FineColonne() {
  forms::OrdinaColonne(colonne_);
  while (Manda(LVM_DELETECOLUMN, 0) != FALSE) {
  }
  int quale = 0;
  std::string nome;
  for (const auto& colonna : colonne_) {
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
  const auto ultima =
      std::find_if(colonne_.rbegin(), colonne_.rend(), [](const auto& uno) { return uno.visibile; });
  if (ultima == colonne_.rend()) return;
  const auto quale = static_cast<WPARAM>(std::distance(ultima, colonne_.rend()) - 1);
  RECT tutto = {};
  GetClientRect(Maniglia(), &tutto);
  LRESULT resto = tutto.right;
  for (WPARAM i = 0; i < colonne_.size(); ++i) {
    if (i != quale) resto -= Manda(LVM_GETCOLUMNWIDTH, i);
  }
  Manda(LVM_SETCOLUMNWIDTH, quale, std::max(LRESULT{1}, resto));
}

void Griglia::Posa() {
  Controllo::Posa();
  AllargaUltima();
}

void Griglia::DataSource(const std::shared_ptr<host::RecordSetScollegato>& righe) {
  Lascia();
  righe_ = righe;
  muove_ = true;
  Manda(LVM_DELETEALLITEMS);
  Mostrate({});
  try {
    if (righe_ && configurata_ && !colonne_.empty()) Copia();
  } catch (...) {
    muove_ = false;
    throw;
  }
  muove_ = false;
  AllargaUltima();  // a scroll bar may have come or gone
  if (!righe_) return;
  Segue();
  righe_->MoveComplete = [this] { Segue(); };
}

void Griglia::Lascia() {
  if (righe_) righe_->MoveComplete = nullptr;
  righe_.reset();
}

void Griglia::Copia() {
  int riga = 0;
  Mostrate(forms::RigheDi(*righe_, colonne_));
  for (const auto& celle : Righe()) {
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
}

// The selected row becomes the record set's current one.
void Griglia::Segue() {
  if (muove_ || !righe_) return;
  muove_ = true;
  const int riga = righe_->AbsolutePosition() - 1;
  const bool mostrata = riga >= 0 && riga < static_cast<int>(Manda(LVM_GETITEMCOUNT));
  LVITEMW stato = {};
  stato.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
  stato.state = mostrata ? LVIS_SELECTED | LVIS_FOCUSED : 0U;
  Manda(LVM_SETITEMSTATE, static_cast<WPARAM>(static_cast<INT_PTR>(mostrata ? riga : -1)),
        reinterpret_cast<LPARAM>(&stato));
  if (mostrata) Manda(LVM_ENSUREVISIBLE, static_cast<WPARAM>(riga), FALSE);
  muove_ = false;
}

LRESULT Griglia::Notifica(const NMHDR& notifica) {
  if (notifica.code == static_cast<UINT>(LVN_ITEMCHANGED)) {
    const auto& cambio = reinterpret_cast<const NMLISTVIEW&>(notifica);
    if ((cambio.uNewState & ~cambio.uOldState & LVIS_SELECTED) != 0) Sceglie(cambio.iItem);
  }
  // A click outside the rows, or one with Ctrl, deselects the row, which remains the current one.
  const bool clic =
      notifica.code == static_cast<UINT>(NM_CLICK) || notifica.code == static_cast<UINT>(NM_RCLICK);
  if (clic && Manda(LVM_GETSELECTEDCOUNT) == 0) Protetta(LaFinestra()->Maniglia(), [this] { Segue(); });
  return 0;
}

void Griglia::Sceglie(int riga) {
  if (muove_ || !righe_ || riga < 0) return;
  muove_ = true;
  Protetta(LaFinestra()->Maniglia(), [&] { righe_->AbsolutePosition(riga + 1); });
  muove_ = false;
}

}  // namespace orve::adapters::win32::finestre
