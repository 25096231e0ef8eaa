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
    if (!Muove() && riga >= 0 && tabella_->selectedItems().isEmpty()) tabella_->selectRow(riga);
  });
}

void Griglia::RigheIntere(bool intere) {
  tabella_->setSelectionBehavior(intere ? QAbstractItemView::SelectRows : QAbstractItemView::SelectItems);
}

void Griglia::MostraColonne() {
  tabella_->setColumnCount(static_cast<int>(Colonne().size()));
  QStringList didascalie;
  for (int i = 0; i < tabella_->columnCount(); ++i) {
    const auto& colonna = Colonne()[static_cast<std::size_t>(i)];
    didascalie << Testo(colonna.didascalia);
    tabella_->setColumnWidth(i, Pixel(colonna.larghezza));
    tabella_->setColumnHidden(i, !colonna.visibile);
  }
  tabella_->setHorizontalHeaderLabels(didascalie);
  if (!didascalie.isEmpty()) tabella_->setAccessibleName(didascalie.first());
}

void Griglia::MostraRighe(const forms::RigheMostrate& righe) {
  tabella_->setRowCount(0);
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

void Griglia::Seleziona(int riga) {
  if (riga >= 0) {
    tabella_->setCurrentCell(riga, 0);
    tabella_->selectRow(riga);
  } else {
    tabella_->setCurrentItem(nullptr);
    tabella_->clearSelection();
  }
}

}  // namespace orve::adapters::qt
