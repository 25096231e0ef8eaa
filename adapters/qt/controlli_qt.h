// The controls of a window over the widgets of Qt. A person's action arrives as a signal of the widget and is
// passed on as the control's event; what the program writes raises the event directly, never through the
// signal.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <memory>
#include <string>

#include "forms/controlli.h"
#include "qt/caselle_di_testo.h"
#include "qt/elemento.h"

namespace orve::adapters::qt {

class PulsanteMenu : public Controllo<forms::PulsanteMenu> {
 public:
  /// `principale` marks the button that confirms the window.
  PulsanteMenu(std::shared_ptr<QWidget> finestra, const host::LayoutControllo& layout, QWidget* padre,
               bool principale);

 private:
  void MostraMenu();
};

template <class Base, class Casella>
class ControlloDiTesto : public Controllo<Base> {
 public:
  ControlloDiTesto(std::shared_ptr<QWidget> finestra, const host::LayoutControllo& layout, QWidget* padre)
      : ControlloDiTesto(std::move(finestra), layout, new Casella(layout.disegno.maxchar, padre), 0) {}
  std::string Text() override { return casella_->Legge(); }
  void Text(const std::string& testo) override { casella_->Scrive(testo); }

 private:
  ControlloDiTesto(std::shared_ptr<QWidget> finestra, const host::LayoutControllo& layout, Casella* casella,
                   int /*scelta*/)
      : Controllo<Base>(std::move(finestra), layout, casella), casella_(casella) {}

  Casella* casella_;
};

using Riga = ControlloDiTesto<host::TxtEdit, CasellaRiga>;
using RigaPercorso = ControlloDiTesto<host::TxtEdit, CasellaPercorso>;
using Corpo = ControlloDiTesto<host::KvlRichTextBox, CasellaTesto>;

class Spunta : public Controllo<forms::Spunta> {
 public:
  Spunta(std::shared_ptr<QWidget> finestra, const host::LayoutControllo& layout, QWidget* padre);

 protected:
  [[nodiscard]] bool Segnata() const override { return casella_->isChecked(); }
  void Segna(bool segnata) override { casella_->setChecked(segnata); }

 private:
  QCheckBox* casella_;
};

class Combo : public Controllo<forms::Combo> {
 public:
  Combo(std::shared_ptr<QWidget> finestra, const host::LayoutControllo& layout, QWidget* padre);
  void AutoOpen(bool apre) override;

 protected:
  void Svuota() override;
  void AggiungiVoce(const std::string& testo) override;
  void Seleziona() override;

 private:
  class Lista;

  Lista* lista_;
};

/// The control of a layout row, with its widget in `padre`; none for a kind that is built elsewhere.
[[nodiscard]] std::shared_ptr<host::Controllo> CreaControllo(const std::shared_ptr<QWidget>& finestra,
                                                             const host::LayoutControllo& layout,
                                                             QWidget* padre, bool principale);

}  // namespace orve::adapters::qt
