#include "qt/form_qt.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QScreen>
#include <QUrl>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "forms/lettura_tavola.h"
#include "qt/aspetto.h"
#include "qt/controlli_qt.h"
#include "qt/finestra_di_form.h"
#include "qt/messaggi.h"
#include "qt/selettore_file.h"

namespace orve::adapters::qt {

namespace {

std::vector<std::string> FileDi(const QMimeData* dati) {
  std::vector<std::string> file;
  for (const QUrl& url : dati->urls()) {
    if (url.isLocalFile()) file.push_back(PercorsoNativo(url.toLocalFile()));
  }
  return file;
}

}  // namespace

QWidget* FinestraDi(host::Oggetto* oggetto) {
  auto* form = dynamic_cast<FormQt*>(oggetto);
  return form != nullptr ? form->Widget() : nullptr;
}

Finestra::Finestra()
    : QDialog(nullptr, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                           Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint) {
  setAcceptDrops(true);
}

void Finestra::done(int esito) {
  QDialog::done(esito);
  if (Chiusa) Chiusa();
}

void Finestra::keyPressEvent(QKeyEvent* evento) {
  if (evento->matches(QKeySequence::Cancel) && Abbandonata) {
    Abbandonata();
    return;
  }
  QDialog::keyPressEvent(evento);
}

void Finestra::changeEvent(QEvent* evento) {
  QDialog::changeEvent(evento);
  if (evento->type() != QEvent::ActivationChange || !isActiveWindow()) return;
  // Queued: what the activation sets off may show a window, and this event must be over first.
  QMetaObject::invokeMethod(
      this,
      [this] {
        if (Attivata) Attivata();
      },
      Qt::QueuedConnection);
}

void Finestra::resizeEvent(QResizeEvent* evento) {
  QDialog::resizeEvent(evento);
  if (Ridimensionata) Ridimensionata();
}

void Finestra::dragEnterEvent(QDragEnterEvent* evento) {
  if (!FileDi(evento->mimeData()).empty()) evento->acceptProposedAction();
}

void Finestra::dropEvent(QDropEvent* evento) {
  const auto file = FileDi(evento->mimeData());
  if (file.empty()) return;
  evento->acceptProposedAction();
  QMetaObject::invokeMethod(
      this,
      [this, file] {
        if (Lasciati) Lasciati(file);
      },
      Qt::QueuedConnection);
}

FormQt::FormQt(const host::LayoutForm& layout, std::shared_ptr<forms::FileLasciati> lasciati,
               std::function<void()> mostra)
    : Form(layout, std::move(lasciati)), finestra_(std::make_shared<Finestra>()), mostra_(std::move(mostra)) {
  finestra_->setObjectName(Testo(layout.nome));
  finestra_->setFont(FontPer(layout));
  Costruisci(layout);
  Disponi(layout);
  finestra_->Ridimensionata = [this] { Segui(); };
  finestra_->Attivata = [this] { Azione([this] { Attivata(); }); };
  finestra_->Chiusa = [this] { qt::Azione(nullptr, [this] { Chiudi(); }); };
  finestra_->Abbandonata = [this] { Azione([this] { Abbandona(); }); };
  finestra_->Lasciati = [this](const std::vector<std::string>& file) { Allega(file); };
}

FormQt::~FormQt() {
  // A control may outlive its form, and the window with it.
  finestra_->Ridimensionata = nullptr;
  finestra_->Attivata = nullptr;
  finestra_->Chiusa = nullptr;
  finestra_->Abbandonata = nullptr;
  finestra_->Lasciati = nullptr;
  finestra_->hide();
}

std::shared_ptr<host::Controllo> FormQt::CreaControllo(const host::LayoutForm& layout,
                                                       const host::LayoutControllo& riga,
                                                       forms::Elemento* cornice) {
  QWidget* padre = cornice == nullptr ? finestra_.get() : WidgetDi(*cornice);
  return qt::CreaControllo(finestra_, riga, padre, riga.nome == layout.pulsanteConferma);
}

void FormQt::Disponi(const host::LayoutForm& layout) const {
  // A caption may be wider than the gap before the box beside it.
  for (auto* elemento : Elementi()) {
    if (dynamic_cast<host::KVL_LABEL*>(elemento) != nullptr) WidgetDi(*elemento)->lower();
  }
  const auto ordine = OrdineDiTastiera(layout);
  for (std::size_t i = 1; i < ordine.size(); ++i) {
    QWidget::setTabOrder(WidgetDi(*ordine[i - 1]), WidgetDi(*ordine[i]));
  }
  for (auto* elemento : Elementi()) {
    auto* widget = WidgetDi(*elemento);
    if (std::find(ordine.begin(), ordine.end(), elemento) == ordine.end()) {
      widget->setFocusPolicy(Qt::NoFocus);
    }
    widget->setAccessibleName(Testo(forms::NomeAccessibile(layout, elemento->tavola)));
  }
}

void FormQt::Interno(const Misura& misura) {
  const QSize interno(misura.width, misura.height);
  finestra_->setMinimumSize(interno.boundedTo(finestra_->screen()->availableSize()));
  finestra_->resize(interno);
}

void FormQt::Mostra(bool modale, host::Form* proprietario) {
  if (mostra_) mostra_();
  if (auto* padre = FinestraDi(proprietario)) {
    static_cast<void>(finestra_->winId());  // creates the window to tie to its owner
    finestra_->windowHandle()->setTransientParent(padre->windowHandle());
  }
  const auto finestra = finestra_;  // lives as long as it is shown
  if (modale) {
    finestra->exec();
  } else {
    finestra->show();
  }
}

void FormQt::Nascondi() {
  if (finestra_->isVisible()) finestra_->done(QDialog::Accepted);
}

void FormQt::Azione(const std::function<void()>& azione) {
  qt::Azione(finestra_.get(), azione);
}

std::int32_t FormQt::Chiede(const std::string& testo, std::int32_t stile, const std::string& titolo) {
  return MostraCasella(testo, stile, titolo, finestra_.get());
}

bool FormQt::Premibile(const forms::Elemento& elemento) const {
  const auto* widget = WidgetDi(elemento);
  const auto* davanti = QApplication::activeModalWidget();
  return widget->isVisible() && widget->isEnabled() && (davanti == nullptr || davanti == finestra_.get());
}

}  // namespace orve::adapters::qt
