#include "qt/aspetto.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QResizeEvent>
#include <QStyle>
#include <QStyleOptionButton>
#include <algorithm>

#include "forms/lettura_tavola.h"
#include "qt/misure.h"

namespace orve::adapters::qt {

namespace {

constexpr forms::Contorno kContorno = {.pulsante = 4, .spunta = 20};
constexpr int kAltezzaTesto = 18;
constexpr qreal kRaggio = 4;

// The family of the layout where the machine has it, else one of the same width, else the desktop's own.
QString Famiglia(const host::LayoutForm& layout) {
  const QStringList presenti = QFontDatabase::families();
  for (const auto& famiglia :
       {Testo(layout.font), QStringLiteral("Segoe UI"), QStringLiteral("Noto Sans"),
        QStringLiteral("Open Sans"), QStringLiteral("Liberation Sans"), QStringLiteral("Arial")}) {
    if (presenti.contains(famiglia)) return famiglia;
  }
  return QApplication::font().family();
}

QColor Mescola(const QColor& a, const QColor& b, qreal quantoB) {
  const qreal quantoA = 1 - quantoB;
  return QColor::fromRgbF(static_cast<float>(a.redF() * quantoA + b.redF() * quantoB),
                          static_cast<float>(a.greenF() * quantoA + b.greenF() * quantoB),
                          static_cast<float>(a.blueF() * quantoA + b.blueF() * quantoB));
}

}  // namespace

QFont FontPer(const host::LayoutForm& layout) {
  QFont font(Famiglia(layout));
  for (int pixel = forms::kFontGrande; pixel >= forms::kFontPiccolo; --pixel) {
    font.setPixelSize(pixel);
    const QFontMetrics misure(font);
    const auto larghezza = [&](const std::string& testo) { return misure.horizontalAdvance(Testo(testo)); };
    if (forms::DidascalieCiStanno(layout, kContorno, larghezza)) break;
  }
  return font;
}

void Riquadro::paintEvent(QPaintEvent* /*evento*/) {
  if (title().isEmpty()) return;
  QPainter pittore(this);
  QFont neretto = font();
  neretto.setBold(true);
  pittore.setFont(neretto);
  const QColor testo = palette().color(QPalette::WindowText);
  const QColor fondo = palette().color(QPalette::Window);
  constexpr int kRientro = 8;
  const QFontMetrics misure(neretto);
  const QRect riga(kRientro, 1, width() - 2 * kRientro, misure.height());
  pittore.setPen(Mescola(testo, fondo, 0.25));
  pittore.drawText(riga, static_cast<int>(Qt::AlignLeft) | static_cast<int>(Qt::AlignVCenter), title());
  pittore.setPen(Mescola(testo, fondo, 0.8));
  const int mezzo = riga.center().y() + 1;
  pittore.drawLine(riga.left() + misure.horizontalAdvance(title()) + kRientro, mezzo, riga.right(), mezzo);
}

void Etichetta::resizeEvent(QResizeEvent* evento) {
  setContentsMargins(0, 0, 0, std::max(0, evento->size().height() - kAltezzaTesto));
  QLabel::resizeEvent(evento);
}

Pulsante::Pulsante(const QString& testo, bool conMenu, bool principale, QWidget* padre)
    : QPushButton(testo, padre), conMenu_(conMenu), principale_(principale) {
  // Return in a text box is not an order to send.
  setAutoDefault(false);
  setDefault(false);
  setAttribute(Qt::WA_Hover);
}

void Pulsante::paintEvent(QPaintEvent* /*evento*/) {
  const QPalette colori = palette();
  const bool scuro = principale_ && isEnabled();
  const QColor scritta = colori.color(scuro ? QPalette::HighlightedText : QPalette::ButtonText);
  QColor fondo = colori.color(scuro ? QPalette::Highlight : QPalette::Button);
  QColor bordo = Mescola(colori.color(QPalette::Window), colori.color(QPalette::WindowText), 0.3);
  if (scuro) bordo = Mescola(fondo, Qt::black, 0.2);
  if (isDown()) {
    fondo = Mescola(fondo, Qt::black, 0.15);
  } else if (isEnabled() && underMouse()) {
    fondo = Mescola(fondo, scuro ? QColor(Qt::white) : colori.color(QPalette::Highlight), 0.12);
  }
  QPainter pittore(this);
  pittore.setRenderHint(QPainter::Antialiasing);
  const bool fuoco = hasFocus();
  if (fuoco && !scuro) bordo = colori.color(QPalette::Highlight);
  pittore.setPen(QPen(bordo, fuoco ? 2.0 : 1.0));
  pittore.setBrush(fondo);
  const qreal meta = fuoco ? 1.0 : 0.5;
  pittore.drawRoundedRect(QRectF(rect()).adjusted(meta, meta, -meta, -meta), kRaggio, kRaggio);
  if (fuoco && scuro) {
    pittore.setPen(QPen(scritta, 1.0));
    pittore.drawRoundedRect(QRectF(rect()).adjusted(2.5, 2.5, -2.5, -2.5), kRaggio - 2, kRaggio - 2);
  }
  QStyleOptionButton opzioni;
  opzioni.initFrom(this);
  const bool sottolinea = style()->styleHint(QStyle::SH_UnderlineShortcut, &opzioni, this) != 0;
  const int come = static_cast<int>(Qt::AlignCenter) |
                   static_cast<int>(sottolinea ? Qt::TextShowMnemonic : Qt::TextHideMnemonic);
  pittore.setPen(scritta);
  pittore.drawText(rect(), come, text());
  if (!conMenu_) return;
  QPainterPath triangolo;
  const QPointF angolo(width() - 4.0, height() - 4.0);
  triangolo.moveTo(angolo);
  triangolo.lineTo(angolo.x() - 4.0, angolo.y());
  triangolo.lineTo(angolo.x(), angolo.y() - 4.0);
  triangolo.closeSubpath();
  pittore.fillPath(triangolo, Mescola(scritta, fondo, 0.35));
}

// A program that disables the button because it is about to be busy has no time to draw it later.
void Pulsante::changeEvent(QEvent* evento) {
  QPushButton::changeEvent(evento);
  if (evento->type() == QEvent::EnabledChange && principale_ && !isEnabled() && isVisible()) repaint();
}

void Pulsante::keyPressEvent(QKeyEvent* evento) {
  const int tasto = evento->key();
  if (tasto == Qt::Key_Return || tasto == Qt::Key_Enter) {
    click();
  } else if (conMenu_ && tasto == Qt::Key_Down && MostraMenu) {
    MostraMenu();
  } else {
    QPushButton::keyPressEvent(evento);
  }
}

}  // namespace orve::adapters::qt
