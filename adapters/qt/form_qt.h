// A window of Qt built from its layout table.
#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "forms/form.h"
#include "orve-mailserver/host/layout.h"
#include "qt/misure.h"

namespace orve::adapters::qt {

/// The widget of a window: it tells its form what the person does with it.
class Finestra : public QDialog {
 public:
  Finestra();
  std::function<void()> Ridimensionata;
  std::function<void()> Attivata;
  std::function<void()> Chiusa;
  std::function<void(const std::vector<std::string>&)> Lasciati;  // files dropped on the window

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

class FormQt final : public forms::Form {
 public:
  /// `mostra` is called each time before the window is shown; may be empty.
  FormQt(const host::LayoutForm& layout, std::shared_ptr<forms::FileLasciati> lasciati,
         std::function<void()> mostra);
  FormQt(const FormQt&) = delete;
  FormQt& operator=(const FormQt&) = delete;
  FormQt(FormQt&&) = delete;
  FormQt& operator=(FormQt&&) = delete;
  ~FormQt() override;

  [[nodiscard]] QWidget* Widget() const { return finestra_.get(); }

 protected:
  std::shared_ptr<host::Controllo> CreaControllo(const host::LayoutForm& layout,
                                                 const host::LayoutControllo& riga,
                                                 forms::Elemento* cornice) override;
  void Titolo(const std::string& titolo) override { finestra_->setWindowTitle(Testo(titolo)); }
  /// The window gets no smaller than that, unless the screen is.
  void Interno(const Misura& misura) override;
  [[nodiscard]] Misura Interno() const override { return {finestra_->width(), finestra_->height()}; }
  [[nodiscard]] bool Visibile() const override { return finestra_->isVisible(); }
  void Mostra(bool modale, host::Form* proprietario) override;
  void Nascondi() override;
  void ChiudiDallaCornice() override { finestra_->reject(); }
  void Azione(const std::function<void()>& azione) override;
  std::int32_t Chiede(const std::string& testo, std::int32_t stile, const std::string& titolo) override;
  [[nodiscard]] bool Premibile(const forms::Elemento& elemento) const override;

 private:
  void Disponi(const host::LayoutForm& layout) const;

  std::shared_ptr<Finestra> finestra_;
  std::function<void()> mostra_;
};

}  // namespace orve::adapters::qt
