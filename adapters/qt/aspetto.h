// How the windows look: the font that fits the layout, section frames and flat buttons. All colours come from
// the palette, so a dark desktop gets dark windows.
#pragma once

#include <QFont>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <functional>

#include "orve-mailserver/host/layout.h"

namespace orve::adapters::qt {

/// The largest font, of the layout's family or one as narrow, in which every caption fits its control.
[[nodiscard]] QFont FontPer(const host::LayoutForm& layout);

/// A frame drawn as a section: its title and a line beside it; nothing at all without a title.
class Riquadro : public QGroupBox {
 public:
  using QGroupBox::QGroupBox;

 protected:
  void paintEvent(QPaintEvent* evento) override;
};

/// A caption centred on the line beside it, whatever the height of its own rectangle.
class Etichetta : public QLabel {
 public:
  using QLabel::QLabel;

 protected:
  void resizeEvent(QResizeEvent* evento) override;
};

/// A flat button; one with a menu has a small triangle in its corner.
class Pulsante : public QPushButton {
 public:
  /// `principale` marks the button that confirms the window.
  Pulsante(const QString& testo, bool conMenu, bool principale, QWidget* padre);

  /// Opens the menu when the person asks for it with the keys that open menus.
  std::function<void()> MostraMenu;

 protected:
  void paintEvent(QPaintEvent* evento) override;
  void keyPressEvent(QKeyEvent* evento) override;
  void changeEvent(QEvent* evento) override;

 private:
  bool conMenu_;
  bool principale_;
};

}  // namespace orve::adapters::qt
