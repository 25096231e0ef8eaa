// What every control has, whatever its kind: its place in twips, its flags, its widget. The widgets belong to
// the window; a control holds on to the window, so its widget exists for as long as it is used.
#pragma once

#include <QFont>
#include <QObject>
#include <QWidget>
#include <memory>
#include <string>

#include "orve-mailserver/host/controlli.h"
#include "orve-mailserver/host/layout.h"
#include "qt/misure.h"

namespace orve::adapters::qt {

class Elemento {
 public:
  Elemento(std::shared_ptr<QWidget> finestra, const host::LayoutControllo& controllo, QWidget* oggettoQt)
      : tavola(controllo),
        rettangolo(controllo.posizione),
        vista(controllo.disegno.visible),
        widget(oggettoQt),
        altezzaRiga(controllo.posizione.height),
        finestra_(std::move(finestra)) {
    if (widget == nullptr) return;
    widget->setObjectName(Testo(tavola.nome));
    widget->setVisible(vista);
    Posa();
  }
  Elemento(const Elemento&) = delete;
  Elemento& operator=(const Elemento&) = delete;
  Elemento(Elemento&&) = delete;
  Elemento& operator=(Elemento&&) = delete;
  virtual ~Elemento() = default;

  /// Puts the widget where the rectangle says.
  void Posa() const {
    if (widget == nullptr) return;
    const auto posto = forms::Posto(tavola.tipo, rettangolo, altezzaRiga);
    widget->setGeometry(posto.left, posto.top, posto.width, posto.height);
  }

  host::LayoutControllo tavola;
  host::Rettangolo rettangolo;
  bool vista;
  bool attivo = true;
  QWidget* widget;    // absent for an invisible control
  float altezzaRiga;  // as the table or the program has it
  QObject ascolto;    // the listeners to the widget's signals end with the control

 protected:
  [[nodiscard]] QWidget* Finestra() const { return finestra_.get(); }

 private:
  std::shared_ptr<QWidget> finestra_;
};

template <class Base>
class Controllo : public Base, public Elemento {
 public:
  using Elemento::Elemento;
  float Left() override { return rettangolo.left; }
  void Left(float twip) override { Sposta(rettangolo.left, twip); }
  float Top() override { return rettangolo.top; }
  void Top(float twip) override { Sposta(rettangolo.top, twip); }
  float Width() override { return rettangolo.width; }
  void Width(float twip) override { Sposta(rettangolo.width, twip); }
  float Height() override { return rettangolo.height; }
  void Height(float twip) override {
    altezzaRiga = twip;
    Sposta(rettangolo.height, twip);
  }
  bool Visible() override { return vista; }
  void Visible(bool valore) override {
    vista = valore;
    if (widget != nullptr) widget->setVisible(valore);
  }
  bool Enabled() override { return attivo; }
  void Enabled(bool valore) override {
    attivo = valore;
    if (widget != nullptr) widget->setEnabled(valore);
  }

 private:
  void Sposta(float& campo, float twip) {
    campo = twip;
    Posa();
  }
};

}  // namespace orve::adapters::qt
