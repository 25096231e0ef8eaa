#include "qt/proporzioni.h"

#include "text/text.h"

namespace orve::adapters::qt {

FormQt::Proporzioni::Proporzioni(const host::LayoutControllo& layout, FormQt& form)
    : Controllo(nullptr, layout, nullptr), form_(form) {}

void FormQt::Proporzioni::Avvia() {
  width_ = form_.width_;
  height_ = form_.height_;
  base_.clear();
  for (auto* elemento : form_.elementi_) base_.push_back({elemento, elemento->rettangolo});
  host::Solleva(RichiestaControlli);
  avviata_ = width_ > 0 && height_ > 0;
  Segui();
}

void FormQt::Proporzioni::RegistraControllo(const std::string& nome, std::int16_t modo) {
  static_cast<void>(form_.Controlli(nome));  // raises an error for a name that no control has
  registrati_[text::FoldCase(nome)] = modo;
}

// What stands in a frame goes with its frame. In a window that has registered some controls, the others stay.
std::int16_t FormQt::Proporzioni::ModoDi(const Elemento& elemento) const {
  constexpr std::int16_t kTutto = kLarghezza + kAltezza + kSinistra + kAlto;
  if (registrati_.empty()) return kTutto;
  for (const auto nome : {elemento.tavola.nome, elemento.tavola.cornice}) {
    const auto trovato = registrati_.find(text::FoldCase(nome));
    if (trovato != registrati_.end()) return trovato->second;
  }
  return 0;
}

void FormQt::Proporzioni::Segui() {
  if (!avviata_) return;
  const QSize misura = form_.finestra_->size();
  // The size that the program asked for is exact as it is.
  const QSize chiesta(Pixel(form_.width_), Pixel(form_.height_));
  if (misura.width() != chiesta.width()) form_.width_ = Twip(misura.width());
  if (misura.height() != chiesta.height()) form_.height_ = Twip(misura.height());
  const float perLarghezza = form_.width_ / width_;
  const float perAltezza = form_.height_ / height_;
  for (const auto& [elemento, base] : base_) {
    const std::int16_t modo = ModoDi(*elemento);
    const auto segue = [modo](Modo parte, float valore, float quanto) {
      return (modo & parte) != 0 ? valore * quanto : valore;
    };
    auto nuovo = elemento->rettangolo;
    nuovo.left = segue(kSinistra, base.left, perLarghezza);
    nuovo.top = segue(kAlto, base.top, perAltezza);
    nuovo.width = segue(kLarghezza, base.width, perLarghezza);
    nuovo.height = segue(kAltezza, base.height, perAltezza);
    elemento->rettangolo = nuovo;
    elemento->Posa();
  }
}

}  // namespace orve::adapters::qt
