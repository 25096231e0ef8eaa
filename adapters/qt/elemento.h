// The widget of a control. The widgets belong to the window; a control holds on to the window, so its widget
// exists for as long as it is used.
#pragma once

#include <QObject>
#include <QWidget>
#include <memory>
#include <utility>

#include "forms/elemento.h"
#include "qt/misure.h"

namespace orve::adapters::qt {

class Elemento : public forms::Elemento {
 public:
  Elemento(std::shared_ptr<QWidget> finestra, const host::LayoutControllo& controllo, QWidget* oggettoQt)
      : forms::Elemento(controllo), widget(oggettoQt), finestra_(std::move(finestra)) {
    widget->setObjectName(Testo(tavola.nome));
    widget->setVisible(vista);
    Colloca();
  }

  void Posa() override { Colloca(); }

  QWidget* widget;
  QObject ascolto;  // the listeners to the widget's signals end with the control

 protected:
  void Mostra(bool visibile) override { widget->setVisible(visibile); }
  void Accendi(bool acceso) override { widget->setEnabled(acceso); }

 private:
  void Colloca() const {
    const auto posto = forms::Posto(tavola.tipo, rettangolo, altezzaRiga);
    widget->setGeometry(posto.left, posto.top, posto.width, posto.height);
  }

  std::shared_ptr<QWidget> finestra_;
};

template <class Base>
using Controllo = forms::Controllo<Base, Elemento>;

[[nodiscard]] inline QWidget* WidgetDi(const forms::Elemento& elemento) {
  return dynamic_cast<const Elemento&>(elemento).widget;
}

}  // namespace orve::adapters::qt
