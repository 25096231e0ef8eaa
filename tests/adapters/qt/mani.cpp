#include "mani.h"

#include <QAbstractButton>
#include <QClipboard>
#include <QDropEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTableWidget>
#include <QTest>
#include <QUrl>
#include <algorithm>
#include <stdexcept>
#include <utility>

#include "orve-mailserver/qt/finestre.h"

namespace orve::adapters::qt {

namespace {

constexpr int kOgni = 5;  // milliseconds between two checks

QString Q(const std::string& testo) {
  return QString::fromStdString(testo);
}

QMenu& MenuAperto() {
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  if (menu == nullptr) throw std::runtime_error("no menu is open");
  return *menu;
}

}  // namespace

Regia::Regia() {
  AssicuraApplicazione();
  fermo_.start();
  QTimer::singleShot(kOgni, qApp, [this, vita = std::weak_ptr<int>(vita_)] {
    if (!vita.expired()) Guarda();
  });
}

Regia::~Regia() {
  for (const auto& attesa : attese_) ADD_FAILURE() << "the window " << attesa.finestra << " never came";
}

void Regia::Poi(const std::string& finestra, Passo passo) {
  fermo_.restart();
  attese_.push_back({finestra, std::move(passo)});
}

void Regia::Risponde(const std::string& testo, const std::string& pulsante) {
  Poi("MostraMsg", [testo, pulsante](QWidget& casella) {
    EXPECT_EQ(dynamic_cast<QMessageBox&>(casella).text().toStdString(), testo);
    PremeNellaCasella(casella, pulsante);
  });
}

void Regia::ScegliFile(const std::string& percorso) {
  Poi("SelettoreFile", [percorso](QWidget& scelta) {
    EXPECT_EQ(scelta.windowTitle().toStdString(), "Allega file");
    auto& dialogo = dynamic_cast<QFileDialog&>(scelta);
    if (percorso.empty()) {
      QTest::keyClick(&dialogo, Qt::Key_Escape);
      return;
    }
    auto* nome = dialogo.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    nome->setText(Q(percorso));
    QTest::keyClick(nome, Qt::Key_Return);
  });
}

// Asks to be called again before it acts: an action may wait in a window of its own.
void Regia::Guarda() {
  QTimer::singleShot(kOgni, qApp, [this, vita = std::weak_ptr<int>(vita_)] {
    if (!vita.expired()) Guarda();
  });
  auto* finestra = QApplication::activeModalWidget();
  if (finestra == nullptr || !finestra->isVisible()) return;
  if (fermo_.elapsed() > kPazienza) {
    auto* messaggio = qobject_cast<QMessageBox*>(finestra);
    ADD_FAILURE() << "stuck in " << finestra->objectName().toStdString() << ": "
                  << (messaggio != nullptr ? messaggio->text() : finestra->windowTitle()).toStdString();
    attese_.clear();
    while (auto* popup = QApplication::activePopupWidget()) popup->close();
    finestra->close();
    return;
  }
  if (attese_.empty() || finestra->objectName() != Q(attese_.front().finestra)) return;
  if (!finestra->isActiveWindow()) return;  // the keyboard is not its own yet
  const auto passo = std::move(attese_.front().passo);
  attese_.pop_front();
  fermo_.restart();
  try {
    passo(*finestra);
  } catch (const std::exception& errore) {
    ADD_FAILURE() << errore.what();
    attese_.clear();
    finestra->close();
  }
  fermo_.restart();
}

QWidget& Trova(QWidget& finestra, const std::string& nome) {
  auto* widget = finestra.findChild<QWidget*>(Q(nome));
  if (widget == nullptr) throw std::runtime_error("no control " + nome);
  return *widget;
}

void PremeNellaCasella(QWidget& casella, const std::string& testo) {
  auto* messaggio = qobject_cast<QMessageBox*>(&casella);
  for (auto* pulsante : messaggio->buttons()) {
    if (pulsante->text().remove(QLatin1Char('&')) != Q(testo)) continue;
    QTest::mouseClick(pulsante, Qt::LeftButton);
    return;
  }
  ADD_FAILURE() << "no button " << testo;
  messaggio->reject();
}

void Clicca(QWidget& finestra, const std::string& nome) {
  auto& widget = Trova(finestra, nome);
  EXPECT_TRUE(widget.isVisible()) << nome << " cannot be seen";
  EXPECT_TRUE(widget.isEnabled()) << nome << " is disabled";
  // A check box is clicked on its indicator.
  const QPoint dove(std::min(8, widget.width() / 2), widget.height() / 2);
  QTest::mouseClick(&widget, Qt::LeftButton, Qt::NoModifier, dove);
}

namespace {

void VaInFondo(QWidget& widget) {
  widget.setFocus();
  const bool riga = qobject_cast<QLineEdit*>(&widget) != nullptr;
  QTest::keyClick(&widget, Qt::Key_End, riga ? Qt::NoModifier : Qt::ControlModifier);
}

}  // namespace

void Digita(QWidget& finestra, const std::string& nome, const std::string& testo) {
  auto& widget = Trova(finestra, nome);
  EXPECT_TRUE(widget.isVisible() && widget.isEnabled()) << nome << " cannot be typed in";
  VaInFondo(widget);
  for (const QChar carattere : Q(testo))
    QTest::sendKeyEvent(QTest::Click, &widget, Qt::Key_unknown, carattere, Qt::NoModifier);
}

void Riscrive(QWidget& finestra, const std::string& nome, const std::string& testo) {
  auto& widget = Trova(finestra, nome);
  EXPECT_TRUE(widget.isVisible() && widget.isEnabled()) << nome << " cannot be typed in";
  widget.setFocus();
  QTest::keyClick(&widget, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(&widget, Qt::Key_Delete);
  Digita(finestra, nome, testo);
}

void Incolla(QWidget& finestra, const std::string& nome, const std::string& testo) {
  auto& widget = Trova(finestra, nome);
  VaInFondo(widget);
  QApplication::clipboard()->setText(Q(testo));
  QTest::keyClick(&widget, Qt::Key_V, Qt::ControlModifier);
}

std::vector<std::string> VociDiMenu(QWidget& finestra, const std::string& pulsante) {
  Clicca(finestra, pulsante);
  return VociDelMenuAperto();
}

std::vector<std::string> VociDelMenuAperto() {
  auto& menu = MenuAperto();
  std::vector<std::string> voci;
  for (const auto* azione : menu.actions()) {
    const std::string testo = azione->text().toStdString();
    voci.push_back(azione->isEnabled() ? testo : "(" + testo + ")");
  }
  QTest::keyClick(&menu, Qt::Key_Escape);
  return voci;
}

void Sceglie(QWidget& finestra, const std::string& pulsante, const std::string& chiave) {
  Clicca(finestra, pulsante);
  auto& menu = MenuAperto();
  for (auto* azione : menu.actions()) {
    if (azione->objectName() != Q(chiave) && azione->text() != Q(chiave)) continue;
    EXPECT_TRUE(azione->isEnabled()) << chiave << " is switched off";
    QTest::mouseClick(&menu, Qt::LeftButton, Qt::NoModifier, menu.actionGeometry(azione).center());
    Respira();
    return;
  }
  throw std::runtime_error(pulsante + " has no entry " + chiave);
}

std::string Contenuto(QWidget& finestra, const std::string& nome) {
  auto& widget = Trova(finestra, nome);
  if (auto* riga = qobject_cast<QLineEdit*>(&widget)) return riga->text().toStdString();
  return dynamic_cast<QPlainTextEdit&>(widget).toPlainText().toStdString();
}

std::vector<std::string> Righe(QWidget& finestra) {
  const auto& tabella = Trova<QTableWidget>(finestra, "GRID_ALLEGATI");
  std::vector<std::string> righe;
  righe.reserve(static_cast<std::size_t>(tabella.rowCount()));
  for (int i = 0; i < tabella.rowCount(); ++i) righe.push_back(tabella.item(i, 0)->text().toStdString());
  return righe;
}

int RigaSelezionata(QWidget& finestra) {
  const auto& tabella = Trova<QTableWidget>(finestra, "GRID_ALLEGATI");
  const auto scelte = tabella.selectionModel()->selectedRows();
  return scelte.isEmpty() ? 0 : scelte.first().row() + 1;
}

void Lascia(QWidget& su, const std::vector<std::string>& file) {
  QMimeData dati;
  dati.setText(Q(file.front()));
  QList<QUrl> url;
  for (const auto& uno : file) url << QUrl::fromLocalFile(Q(uno));
  dati.setUrls(url);
  QDragEnterEvent arriva(QPoint(10, 10), Qt::CopyAction, &dati, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&su, &arriva);
  EXPECT_TRUE(arriva.isAccepted());
  QDropEvent lascia(QPointF(10, 10), Qt::CopyAction, &dati, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&su, &lascia);
  Respira();
}

void Respira() {
  for (int i = 0; i < 3; ++i) QApplication::processEvents();
}

}  // namespace orve::adapters::qt
