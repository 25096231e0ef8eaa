#include "qt/controlli_qt.h"

#include <QFocusEvent>
#include <QLabel>
#include <QMenu>
#include <QWheelEvent>
#include <optional>
#include <utility>

#include "qt/aspetto.h"
#include "qt/attesa.h"
#include "qt/griglia.h"
#include "qt/messaggi.h"

namespace orve::adapters::qt {

namespace {

QWidget* CreaEtichetta(const host::LayoutControllo& layout, QWidget* padre) {
  QString testo = Testo(layout.didascalia);
  const auto lato = layout.disegno.kvlalignment == 1 ? Qt::AlignRight : Qt::AlignLeft;
  // Trailing blanks would keep the caption away from the edge that its neighbours touch.
  while (lato == Qt::AlignRight && testo.endsWith(QLatin1Char(' '))) testo.chop(1);
  auto* etichetta = new Etichetta(testo, padre);
  etichetta->setTextFormat(Qt::PlainText);
  etichetta->setAlignment(lato | Qt::AlignVCenter);
  etichetta->setAttribute(Qt::WA_TransparentForMouseEvents);
  return etichetta;
}

QWidget* CreaRiquadro(const host::LayoutControllo& layout, QWidget* padre) {
  auto* riquadro = new Riquadro(padre);
  riquadro->setTitle(Testo(layout.didascalia));
  return riquadro;
}

}  // namespace

PulsanteMenu::PulsanteMenu(std::shared_ptr<QWidget> finestra, const host::LayoutControllo& layout,
                           QWidget* padre, bool principale)
    : Controllo(std::move(finestra), layout,
                new Pulsante(Testo(layout.didascalia), layout.disegno.ismenupopup, principale, padre)) {
  auto* pulsante = static_cast<Pulsante*>(widget);
  const bool menu = layout.disegno.ismenupopup;
  QObject::connect(pulsante, &QPushButton::clicked, &ascolto, [this, menu, principale] {
    Azione(widget, [&] {
      if (menu) {
        MostraMenu();
        return;
      }
      // The button that confirms a window may keep the program busy for as long as a server takes.
      std::optional<PuntatoreInAttesa> attesa;
      if (principale) attesa.emplace();
      host::Solleva(ButtonClick);
    });
  });
  if (menu) pulsante->MostraMenu = [pulsante] { pulsante->click(); };
}

void PulsanteMenu::MostraMenu() {
  host::Solleva(BeforeShowMenuPopup);
  auto* menu = new QMenu(widget);
  menu->setObjectName(Testo(std::string(tavola.nome) + "_menu"));
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setFont(widget->font());
  for (const auto& voce : Voci()) {
    auto* azione = menu->addAction(Testo(voce.didascalia));
    azione->setObjectName(Testo(voce.chiave));
    azione->setEnabled(voce.attiva);
    // Queued, so that the menu is gone before the choice shows a window of its own.
    QObject::connect(
        azione, &QAction::triggered, &ascolto,
        [this, chiave = voce.chiave] {
          Azione(widget, [&] { host::Solleva(MenuItemClick, std::string(chiave), std::string()); });
        },
        Qt::QueuedConnection);
  }
  menu->popup(widget->mapToGlobal(QPoint(0, widget->height())));
}

Spunta::Spunta(std::shared_ptr<QWidget> finestra, const host::LayoutControllo& layout, QWidget* padre)
    : Controllo(std::move(finestra), layout, new QCheckBox(Testo(layout.didascalia), padre)),
      casella_(static_cast<QCheckBox*>(widget)) {
  QObject::connect(casella_, &QCheckBox::clicked, &ascolto,
                   [this] { Azione(widget, [&] { host::Solleva(Change); }); });
}

class Combo::Lista : public QComboBox {
 public:
  explicit Lista(QWidget* padre) : QComboBox(padre) {
    setFocusPolicy(Qt::StrongFocus);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);  // long lists are not measured
  }
  bool apreDaSola = false;

 protected:
  void focusInEvent(QFocusEvent* evento) override {
    QComboBox::focusInEvent(evento);
    const bool daTastiera = evento->reason() == Qt::TabFocusReason ||
                            evento->reason() == Qt::BacktabFocusReason ||
                            evento->reason() == Qt::ShortcutFocusReason;
    if (apreDaSola && daTastiera) showPopup();
  }
  // The window opens with the keyboard in this box: turning the wheel over it would change the sender unseen.
  // The open list handles the wheel itself.
  void wheelEvent(QWheelEvent* evento) override { evento->ignore(); }
};

Combo::Combo(std::shared_ptr<QWidget> finestra, const host::LayoutControllo& layout, QWidget* padre)
    : Controllo(std::move(finestra), layout, new Lista(padre)), lista_(static_cast<Lista*>(widget)) {
  // Also emitted when the person confirms the current entry.
  QObject::connect(lista_, &QComboBox::activated, &ascolto, [this](int posizione) {
    const auto scelta = static_cast<std::int16_t>(posizione);
    if (scelta == Selezionata()) return;
    Azione(widget, [&] { Scelta(scelta); });
  });
}

void Combo::AutoOpen(bool apre) {
  lista_->apreDaSola = apre;
}

void Combo::Svuota() {
  lista_->clear();
}

void Combo::AggiungiVoce(const std::string& testo) {
  lista_->addItem(Testo(testo));
  Seleziona();  // left alone, the list selects its first entry
}

void Combo::Seleziona() {
  lista_->setCurrentIndex(Selezionata());
}

std::shared_ptr<host::Controllo> CreaControllo(const std::shared_ptr<QWidget>& finestra,
                                               const host::LayoutControllo& layout, QWidget* padre,
                                               bool principale) {
  switch (layout.tipo) {
    case host::TipoControllo::kFrame:
      return std::make_shared<Controllo<host::Frame>>(finestra, layout, CreaRiquadro(layout, padre));
    case host::TipoControllo::kEtichetta:
    case host::TipoControllo::kKvlLabel:
      return std::make_shared<Controllo<host::KVL_LABEL>>(finestra, layout, CreaEtichetta(layout, padre));
    case host::TipoControllo::kTbarMenu:
      return std::make_shared<PulsanteMenu>(finestra, layout, padre, principale);
    case host::TipoControllo::kTxtEdit:
      if (layout.disegno.percorso) return std::make_shared<RigaPercorso>(finestra, layout, padre);
      return std::make_shared<Riga>(finestra, layout, padre);
    case host::TipoControllo::kRichTextBox:
      return std::make_shared<Corpo>(finestra, layout, padre);
    case host::TipoControllo::kCheckBox:
      return std::make_shared<Spunta>(finestra, layout, padre);
    case host::TipoControllo::kCombo:
      return std::make_shared<Combo>(finestra, layout, padre);
    case host::TipoControllo::kGriglia:
      return std::make_shared<Griglia>(finestra, layout, padre);
    case host::TipoControllo::kResizeForm:
      break;
  }
  return nullptr;
}

}  // namespace orve::adapters::qt
