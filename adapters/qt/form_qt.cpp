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
#include "qt/proporzioni.h"
#include "text/text.h"

namespace orve::adapters::qt {

namespace {

// The button whose procedure a dropped file goes through.
constexpr const char* kPulsanteAllega = "KVL_ALLEGA";

QStringList FileDi(const QMimeData* dati) {
  QStringList file;
  for (const QUrl& url : dati->urls()) {
    if (url.isLocalFile()) file << url.toLocalFile();
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
  if (!FileDi(evento->mimeData()).isEmpty()) evento->acceptProposedAction();
}

void Finestra::dropEvent(QDropEvent* evento) {
  const QStringList file = FileDi(evento->mimeData());
  if (file.isEmpty()) return;
  evento->acceptProposedAction();
  QMetaObject::invokeMethod(
      this,
      [this, file] {
        if (Lasciati) Lasciati(file);
      },
      Qt::QueuedConnection);
}

FormQt::FormQt(const host::LayoutForm& layout, std::shared_ptr<FileLasciati> lasciati,
               std::function<void()> mostra)
    : finestra_(std::make_shared<Finestra>()),
      lasciati_(std::move(lasciati)),
      mostra_(std::move(mostra)),
      didascalia_(layout.didascalia),
      width_(layout.width),
      height_(layout.height) {
  finestra_->setObjectName(Testo(layout.nome));
  finestra_->setWindowTitle(Testo(didascalia_));
  finestra_->setFont(FontPer(layout));
  Costruisci(layout);
  OrdinaTastiera(layout);
  DaiNomi(layout);
  MostraPulsantePrincipale();
  AdattaFinestra();
  finestra_->Ridimensionata = [this] {
    if (proporzioni_) proporzioni_->Segui();
  };
  finestra_->Attivata = [this] {
    if (!aperta_ || std::exchange(primaAttivazione_, false)) return;
    Azione(finestra_.get(), [this] { host::Solleva(Activate); });
  };
  finestra_->Chiusa = [this] {
    if (!std::exchange(aperta_, false)) return;
    Azione(nullptr, [this] { host::Solleva(Unload); });
  };
  finestra_->Abbandonata = [this] { Azione(finestra_.get(), [this] { Abbandona(); }); };
  finestra_->Lasciati = [this](const QStringList& file) { Allega(file); };
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

void FormQt::Costruisci(const host::LayoutForm& layout) {
  for (const auto& riga : layout.controlli) {
    std::shared_ptr<host::Controllo> controllo;
    if (riga.tipo == host::TipoControllo::kResizeForm) {
      proporzioni_ = std::make_shared<Proporzioni>(riga, *this);
      controllo = proporzioni_;
    } else {
      const auto cornice = controlli_.find(text::FoldCase(riga.cornice));
      QWidget* padre =
          cornice == controlli_.end() ? finestra_.get() : dynamic_cast<Elemento&>(*cornice->second).widget;
      controllo = CreaControllo(finestra_, riga, padre);
      elementi_.push_back(dynamic_cast<Elemento*>(controllo.get()));
    }
    controlli_.emplace(text::FoldCase(riga.nome), std::move(controllo));
  }
  // A caption may be wider than the gap before the box beside it.
  for (auto* elemento : elementi_) {
    if (dynamic_cast<host::KVL_LABEL*>(elemento) != nullptr) elemento->widget->lower();
  }
}

void FormQt::OrdinaTastiera(const host::LayoutForm& layout) const {
  std::vector<QWidget*> raggiunti;
  for (const auto* riga : forms::OrdineDiTastiera(layout)) {
    raggiunti.push_back(dynamic_cast<Elemento&>(*controlli_.at(text::FoldCase(riga->nome))).widget);
    if (raggiunti.size() > 1) QWidget::setTabOrder(raggiunti[raggiunti.size() - 2], raggiunti.back());
  }
  for (const auto* elemento : elementi_) {
    const bool raggiunto = std::find(raggiunti.begin(), raggiunti.end(), elemento->widget) != raggiunti.end();
    if (!raggiunto) elemento->widget->setFocusPolicy(Qt::NoFocus);
  }
}

void FormQt::DaiNomi(const host::LayoutForm& layout) const {
  for (const auto* elemento : elementi_) {
    elemento->widget->setAccessibleName(Testo(forms::NomeAccessibile(layout, elemento->tavola)));
  }
}

void FormQt::MostraPulsantePrincipale() const {
  for (const auto* elemento : elementi_) {
    auto* pulsante = dynamic_cast<Pulsante*>(elemento->widget);
    if (pulsante == nullptr || !elemento->tavola.cornice.empty()) continue;
    pulsante->Principale(true);
    return;
  }
}

std::shared_ptr<host::Controllo> FormQt::Controlli(std::string_view nome) {
  const auto trovato = controlli_.find(text::FoldCase(nome));
  if (trovato == controlli_.end()) throw host::Errore(host::kMembroNonSupportato);
  return trovato->second;
}

void FormQt::Caption(const std::string& didascalia) {
  didascalia_ = didascalia;
  finestra_->setWindowTitle(Testo(didascalia));
}

void FormQt::Width(float twip) {
  width_ = twip;
  AdattaFinestra();
}

void FormQt::Height(float twip) {
  height_ = twip;
  AdattaFinestra();
}

// No smaller than the program's size, unless the screen is.
void FormQt::AdattaFinestra() {
  const QSize misura(std::max(1, Pixel(width_)), std::max(1, Pixel(height_)));
  const QSize schermo = finestra_->screen()->availableSize();
  finestra_->setMinimumSize(misura.boundedTo(schermo));
  finestra_->resize(misura);
}

void FormQt::Show(std::int16_t modo, const std::shared_ptr<host::Form>& proprietario) {
  if (!std::exchange(caricata_, true)) host::Solleva(Load);
  // Raised here and not by the window's first activation: the person finds a window that is ready, even where
  // the desktop does not activate a new window.
  if (aperta_ && !finestra_->isVisible()) {
    primaAttivazione_ = true;
    host::Solleva(Activate);
  }
  if (!aperta_) return;
  if (mostra_) mostra_();
  if (auto* padre = FinestraDi(proprietario.get())) {
    static_cast<void>(finestra_->winId());  // creates the window to tie to its owner
    finestra_->windowHandle()->setTransientParent(padre->windowHandle());
  }
  contenuto_ = forms::ContenutoDi(controlli_);
  const auto finestra = finestra_;  // lives as long as it is shown
  if (modo == kModale) {
    finestra->exec();
  } else {
    finestra->show();
  }
}

void FormQt::Chiudi() {
  if (!std::exchange(aperta_, false)) return;
  finestra_->done(QDialog::Accepted);
  host::Solleva(Unload);
}

void FormQt::Abbandona() {
  const bool cambiata = forms::ContenutoDi(controlli_) != contenuto_;
  if (cambiata && MostraCasella(forms::kDomandaAbbandono, forms::kStileAbbandono, didascalia_,
                                finestra_.get()) != host::kRispostaSi) {
    return;
  }
  finestra_->reject();
}

// One file at a time goes through the button's procedure, which asks for a file and finds this one. While a
// window in front waits for its answer, nobody could press the button either.
void FormQt::Allega(const QStringList& file) {
  const auto trovato = controlli_.find(text::FoldCase(kPulsanteAllega));
  if (trovato == controlli_.end()) return;
  auto* pulsante = dynamic_cast<host::KVL_TBARMENU*>(trovato->second.get());
  const auto* widget = dynamic_cast<Elemento&>(*trovato->second).widget;
  for (const auto& uno : file) {
    if (pulsante == nullptr || !widget->isVisible() || !widget->isEnabled() || !aperta_) return;
    const auto* davanti = QApplication::activeModalWidget();
    if (davanti != nullptr && davanti != finestra_.get()) return;
    *lasciati_ = {uno};
    Azione(finestra_.get(), [pulsante] { host::Solleva(pulsante->ButtonClick); });
    lasciati_->clear();
  }
}

}  // namespace orve::adapters::qt
