// What every control has, whatever its kind and toolkit: its place in twips and its flags.
#pragma once

#include "orve-mailserver/host/layout.h"

namespace orve::adapters::forms {

/// A control's own values; a toolkit derives the window behind it. By itself, a control that nobody sees.
class Elemento {
 public:
  explicit Elemento(const host::LayoutControllo& controllo)
      : tavola(controllo),
        rettangolo(controllo.posizione),
        vista(controllo.disegno.visible),
        altezzaRiga(controllo.posizione.height) {}
  Elemento(const Elemento&) = delete;
  Elemento& operator=(const Elemento&) = delete;
  Elemento(Elemento&&) = delete;
  Elemento& operator=(Elemento&&) = delete;
  virtual ~Elemento() = default;

  /// Puts the window where the rectangle says.
  virtual void Posa() {}

  host::LayoutControllo tavola;
  host::Rettangolo rettangolo;
  bool vista;
  bool attivo = true;
  float altezzaRiga;  // as the table or the program has it

 protected:
  virtual void Mostra(bool /*visibile*/) {}
  virtual void Accendi(bool /*acceso*/) {}
};

/// A host control over `Parte`, an Elemento.
template <class Base, class Parte>
class Controllo : public Base, public Parte {
 public:
  using Parte::Parte;
  float Left() override { return this->rettangolo.left; }
  void Left(float twip) override { Sposta(this->rettangolo.left, twip); }
  float Top() override { return this->rettangolo.top; }
  void Top(float twip) override { Sposta(this->rettangolo.top, twip); }
  float Width() override { return this->rettangolo.width; }
  void Width(float twip) override { Sposta(this->rettangolo.width, twip); }
  float Height() override { return this->rettangolo.height; }
  void Height(float twip) override {
    this->altezzaRiga = twip;
    Sposta(this->rettangolo.height, twip);
  }
  bool Visible() override { return this->vista; }
  void Visible(bool valore) override {
    this->vista = valore;
    this->Mostra(valore);
  }
  bool Enabled() override { return this->attivo; }
  void Enabled(bool valore) override {
    this->attivo = valore;
    this->Accendi(valore);
  }

 private:
  void Sposta(float& campo, float twip) {
    campo = twip;
    this->Posa();
  }
};

}  // namespace orve::adapters::forms
