#include "qt/griglia.h"

#include <QHeaderView>

#include "qt/messaggi.h"

namespace orve::adapters::qt {

namespace {

constexpr int kAltezzaRiga = 19;
constexpr int kAltezzaTestata = 21;

}  // namespace

Griglia::Griglia(std::shared_ptr<QWidget> finestra, const host::LayoutControllo& layout, QWidget* padre)
    : Controllo(std::move(finestra), layout, new QTableWidget(padre)),
      tabella_(static_cast<QTableWidget*>(widget)) {
  tabella_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  tabella_->setSelectionMode(QAbstractItemView::SingleSelection);
  tabella_->setTabKeyNavigation(false);
  tabella_->setShowGrid(false);
  tabella_->setWordWrap(false);
  tabella_->setTextElideMode(Qt::ElideMiddle);  // the end of a file's name says what kind it is
  tabella_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  tabella_->verticalHeader()->hide();
  tabella_->verticalHeader()->setMinimumSectionSize(1);
  tabella_->verticalHeader()->setDefaultSectionSize(kAltezzaRiga);
  auto* testata = tabella_->horizontalHeader();
  testata->setFixedHeight(kAltezzaTestata);
  testata->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  testata->setStretchLastSection(true);
  testata->setHighlightSections(false);
  testata->setSectionsClickable(false);
  QObject::connect(tabella_, &QTableWidget::currentCellChanged, &ascolto,
                   [this](int riga) { Azione(widget, [&] { Sceglie(riga); }); });
  // A click with Ctrl deselects the row, which remains the current one all the same.
  QObject::connect(tabella_, &QTableWidget::itemSelectionChanged, &ascolto, [this] {
    const int riga = tabella_->currentRow();
    if (!muove_ && riga >= 0 && tabella_->selectedItems().isEmpty()) tabella_->selectRow(riga);
  });
}

Griglia::~Griglia() {
  Lascia();
}

void Griglia::Configurazione(const std::shared_ptr<host::ConfigurazioneGriglia>& configurazione) {
  const bool righe = host::Richiesto(configurazione).SelezioneRiga();
  tabella_->setSelectionBehavior(righe ? QAbstractItemView::SelectRows : QAbstractItemView::SelectItems);
}

void Griglia::AggiungiColonna(const std::string& campo, const std::string& didascalia, std::int32_t numero,
                              float larghezza, bool visibile) {
  colonne_.push_back({campo, didascalia, numero, larghezza, visibile});
}

void Griglia::FineColonne() {
  forms::OrdinaColonne(colonne_);
  tabella_->setColumnCount(static_cast<int>(colonne_.size()));
  QStringList didascalie;
  for (int i = 0; i < tabella_->columnCount(); ++i) {
    const auto& colonna = colonne_[static_cast<std::size_t>(i)];
    didascalie << Testo(colonna.didascalia);
    tabella_->setColumnWidth(i, Pixel(colonna.larghezza));
    tabella_->setColumnHidden(i, !colonna.visibile);
  }
  tabella_->setHorizontalHeaderLabels(didascalie);
  if (!didascalie.isEmpty()) tabella_->setAccessibleName(didascalie.first());
}

void Griglia::DataSource(const std::shared_ptr<host::RecordSetScollegato>& righe) {
  Lascia();
  righe_ = righe;
  muove_ = true;
  tabella_->setRowCount(0);
  Mostrate({});
  try {
    if (righe_ && configurata_ && !colonne_.empty()) Copia();
  } catch (...) {
    muove_ = false;
    throw;
  }
  muove_ = false;
  if (!righe_) return;
  Segue();
  righe_->MoveComplete = [this] { Segue(); };
}

void Griglia::Lascia() {
  if (righe_) righe_->MoveComplete = nullptr;
  righe_.reset();
}

void Griglia::Copia() {
  Mostrate(forms::RigheDi(*righe_, colonne_));
  const auto& righe = Righe();
  tabella_->setRowCount(static_cast<int>(righe.size()));
  for (int riga = 0; riga < tabella_->rowCount(); ++riga) {
    for (int i = 0; i < tabella_->columnCount(); ++i) {
      const QString valore =
          TestoVisibile(righe[static_cast<std::size_t>(riga)][static_cast<std::size_t>(i)]);
      auto* cella = new QTableWidgetItem(valore);
      // In a tag of its own, so that Qt treats it as markup whatever the text is, and shows the text as it
      // is.
      cella->setToolTip(QStringLiteral("<span>%1</span>").arg(valore.toHtmlEscaped()));
      tabella_->setItem(riga, i, cella);
    }
  }
}

// The selected row becomes the record set's current one.
void Griglia::Segue() {
  if (muove_) return;
  muove_ = true;
  const int riga = righe_->AbsolutePosition() - 1;
  const bool mostrata = riga >= 0 && riga < tabella_->rowCount();
  if (mostrata) {
    tabella_->setCurrentCell(riga, 0);
    tabella_->selectRow(riga);
  } else {
    tabella_->setCurrentItem(nullptr);
    tabella_->clearSelection();
  }
  muove_ = false;
}

void Griglia::Sceglie(int riga) {
  if (muove_ || !righe_ || riga < 0) return;
  muove_ = true;
  try {
    righe_->AbsolutePosition(riga + 1);
  } catch (...) {
    muove_ = false;
    throw;
  }
  muove_ = false;
}

}  // namespace orve::adapters::qt
