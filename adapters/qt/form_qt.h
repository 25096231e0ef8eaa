// A window built from its layout table.
//
// The program's sizes are twips and exact; the widgets follow in whole pixels. Until the resizing control has
// started, nothing follows the window's size; afterwards every size that the person gives the window is
// measured against the proportions at that start, so rounding errors do not add up.
#pragma once

#include <QDialog>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "forms/contenuto.h"
#include "orve-mailserver/host/controlli.h"
#include "orve-mailserver/host/layout.h"
#include "qt/elemento.h"
#include "qt/selettore_file.h"

namespace orve::adapters::qt {

/// The widget of a window: it tells its form what the person does with it.
class Finestra : public QDialog {
 public:
  Finestra();
  std::function<void()> Ridimensionata;
  std::function<void()> Attivata;
  std::function<void()> Chiusa;
  std::function<void(const QStringList&)> Lasciati;  // files dropped on the window

  std::function<void()> Abbandonata;  // Escape

  /// The close button ends here.
  void done(int esito) override;

 protected:
  void keyPressEvent(QKeyEvent* evento) override;
  void changeEvent(QEvent* evento) override;
  void resizeEvent(QResizeEvent* evento) override;
  void dragEnterEvent(QDragEnterEvent* evento) override;
  void dropEvent(QDropEvent* evento) override;
};

class FormQt : public host::Form {
 public:
  /// `mostra` is called each time before the window is shown; may be empty.
  FormQt(const host::LayoutForm& layout, std::shared_ptr<FileLasciati> lasciati,
         std::function<void()> mostra);
  FormQt(const FormQt&) = delete;
  FormQt& operator=(const FormQt&) = delete;
  FormQt(FormQt&&) = delete;
  FormQt& operator=(FormQt&&) = delete;
  ~FormQt() override;

  [[nodiscard]] std::shared_ptr<host::Controllo> Controlli(std::string_view nome) override;
  [[nodiscard]] std::string Caption() override { return didascalia_; }
  void Caption(const std::string& didascalia) override;
  [[nodiscard]] float Width() override { return width_; }
  void Width(float twip) override;
  [[nodiscard]] float Height() override { return height_; }
  void Height(float twip) override;
  void Show(std::int16_t modo, const std::shared_ptr<host::Form>& proprietario) override;
  void Chiudi() override;

  [[nodiscard]] QWidget* Widget() const { return finestra_.get(); }

 private:
  class Proporzioni;

  void Costruisci(const host::LayoutForm& layout);
  void OrdinaTastiera(const host::LayoutForm& layout) const;
  void DaiNomi(const host::LayoutForm& layout) const;
  void MostraPulsantePrincipale() const;
  void AdattaFinestra();
  void Allega(const QStringList& file);
  void Abbandona();

  std::shared_ptr<Finestra> finestra_;
  std::shared_ptr<FileLasciati> lasciati_;
  std::function<void()> mostra_;
  std::string didascalia_;
  float width_;
  float height_;
  bool aperta_ = true;
  bool caricata_ = false;
  bool primaAttivazione_ = false;    // Show has raised it before the window appeared
  std::vector<Elemento*> elementi_;  // in the order of the table
  std::shared_ptr<Proporzioni> proporzioni_;
  std::map<std::string, std::shared_ptr<host::Controllo>> controlli_;  // by folded name
  forms::Contenuto contenuto_;                                         // as it was shown
};

}  // namespace orve::adapters::qt
