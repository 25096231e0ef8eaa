// A window built from its layout table, as far as it is not drawn.
//
// The program's sizes are twips and exact; what is on the screen follows in whole pixels. Until the resizing
// control has started, nothing follows the window's size; afterwards every size that the person gives the
// window is measured against the proportions at that start, so rounding errors do not add up.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "forms/contenuto.h"
#include "forms/elemento.h"
#include "forms/misure.h"
#include "forms/selettore_file.h"
#include "orve-mailserver/host/controlli.h"
#include "orve-mailserver/host/layout.h"

namespace orve::adapters::forms {

class Form : public host::Form {
 public:
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;
  Form(Form&&) = delete;
  Form& operator=(Form&&) = delete;
  ~Form() override;

  [[nodiscard]] std::shared_ptr<host::Controllo> Controlli(std::string_view nome) override;
  [[nodiscard]] std::string Caption() override { return didascalia_; }
  void Caption(const std::string& didascalia) override;
  [[nodiscard]] float Width() override { return width_; }
  void Width(float twip) override;
  [[nodiscard]] float Height() override { return height_; }
  void Height(float twip) override;
  void Show(std::int16_t modo, const std::shared_ptr<host::Form>& proprietario) override;
  void Chiudi() override;

 protected:
  struct Misura {
    int width = 0;
    int height = 0;
  };

  /// `lasciati` takes the files dropped on the window, one at a time.
  Form(const host::LayoutForm& layout, std::shared_ptr<FileLasciati> lasciati);

  /// Makes the controls; called by the toolkit's constructor.
  void Costruisci(const host::LayoutForm& layout);
  /// Without what nobody sees, in the order of the table.
  [[nodiscard]] const std::vector<Elemento*>& Elementi() const { return elementi_; }
  /// First to last, by the keyboard.
  [[nodiscard]] std::vector<Elemento*> OrdineDiTastiera(const host::LayoutForm& layout) const;

  // What the person does. Errors come out.

  void Attivata();
  /// Escape: a change is not lost without a question.
  void Abbandona();
  void Allega(const std::vector<std::string>& file);
  void Segui();

  // What the toolkit does.

  /// `cornice` is the frame around the control, or null.
  [[nodiscard]] virtual std::shared_ptr<host::Controllo> CreaControllo(const host::LayoutForm& layout,
                                                                       const host::LayoutControllo& riga,
                                                                       Elemento* cornice) = 0;
  virtual void Titolo(const std::string& titolo) = 0;
  /// Of the area inside the window's border and title, in pixels.
  virtual void Interno(const Misura& misura) = 0;
  [[nodiscard]] virtual Misura Interno() const = 0;
  [[nodiscard]] virtual int Dpi() const { return kPuntiPerPollice; }
  [[nodiscard]] virtual bool Visibile() const = 0;
  /// In the modal case returns when the window has been hidden. The owner may be null or another toolkit's.
  virtual void Mostra(bool modale, host::Form* proprietario) = 0;
  virtual void Nascondi() = 0;
  /// Closes the window as its frame does.
  virtual void ChiudiDallaCornice() = 0;
  /// Runs what a person's action sets off, and shows its error.
  virtual void Azione(const std::function<void()>& azione) = 0;
  /// A message over the window.
  virtual std::int32_t Chiede(const std::string& testo, std::int32_t stile, const std::string& titolo) = 0;
  /// Whether a person could use this control at this moment.
  [[nodiscard]] virtual bool Premibile(const Elemento& elemento) const = 0;

 private:
  class Ridimensiona;

  void AdattaFinestra();

  std::shared_ptr<FileLasciati> lasciati_;
  std::string pulsanteFile_;
  std::string didascalia_;
  float width_;
  float height_;
  bool aperta_ = true;
  bool caricata_ = false;
  bool primaAttivazione_ = false;  // Show has raised it before the window appeared
  std::vector<Elemento*> elementi_;
  std::shared_ptr<Ridimensiona> ridimensiona_;
  std::map<std::string, std::shared_ptr<host::Controllo>> controlli_;  // by folded name
  Contenuto contenuto_;                                                // as it was shown
};

}  // namespace orve::adapters::forms
