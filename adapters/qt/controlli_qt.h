// The controls of a window over the widgets of Qt. A person's action arrives as a signal of the widget and is
// passed on as the control's event; what the program writes raises the event directly, never through the
// signal.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <memory>
#include <string>

#include "forms/voci_combo.h"
#include "forms/voci_menu.h"
#include "qt/caselle_di_testo.h"
#include "qt/elemento.h"

namespace orve::adapters::qt {

class PulsanteMenu : public Controllo<host::KVL_TBARMENU> {
 public:
  PulsanteMenu(std::shared_ptr<QWidget> finestra, const host::LayoutControllo& layout, QWidget* padre);
  void AddMenuItem(const std::string& didascalia, const std::string& chiave) override;
  void EnableMenuItem(const host::Variant& chiaveOPosizione, bool attiva) override;

 private:
  void MostraMenu();

  forms::VociMenu voci_;
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

class Spunta : public Controllo<host::KVL_CHECKBOX> {
 public:
  Spunta(std::shared_ptr<QWidget> finestra, const host::LayoutControllo& layout, QWidget* padre);
  std::string Text() override;
  void Text(const std::string& valore) override;

 private:
  QCheckBox* casella_;
};

class Combo : public Controllo<host::KVL_COMBO> {
 public:
  Combo(std::shared_ptr<QWidget> finestra, const host::LayoutControllo& layout, QWidget* padre);
  void EraseCombo() override;
  void AutoOpen(bool apre) override;
  void AddItemData(const std::string& testo, std::int16_t dati) override;
  std::string Text() override { return voci_.Valore(); }
  void Text(const host::Variant& valore) override;
  std::string ItemKey(std::int16_t posizione) override { return voci_.Chiave(posizione); }
  void SelezionaPosizione(std::int16_t posizione) override;

 private:
  class Lista;

  forms::VociCombo voci_;
  Lista* lista_;
};

/// The control of a layout row, with its widget in `padre`; none for a kind that is built elsewhere.
[[nodiscard]] std::shared_ptr<host::Controllo> CreaControllo(const std::shared_ptr<QWidget>& finestra,
                                                             const host::LayoutControllo& layout,
                                                             QWidget* padre);

}  // namespace orve::adapters::qt
