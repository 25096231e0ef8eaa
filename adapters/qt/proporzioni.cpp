#include "qt/proporzioni.h"

#include <utility>
#include <vector>

namespace orve::adapters::qt {

FormQt::Proporzioni::Proporzioni(const host::LayoutControllo& layout, FormQt& form)
    : Controllo(nullptr, layout, nullptr), form_(form) {}

void FormQt::Proporzioni::Avvia() {
  std::vector<forms::Proporzioni::Elemento> base;
  for (const auto* elemento : form_.elementi_) {
    base.push_back(
        {std::string(elemento->tavola.nome), std::string(elemento->tavola.cornice), elemento->rettangolo});
  }
  misure_.Fissa(form_.width_, form_.height_, std::move(base));
  host::Solleva(RichiestaControlli);
  avviata_ = misure_.Fissate();
  Segui();
}

void FormQt::Proporzioni::RegistraControllo(const std::string& nome, std::int16_t modo) {
  static_cast<void>(form_.Controlli(nome));  // raises an error for an unknown control name
  misure_.Registra(nome, modo);
}

void FormQt::Proporzioni::Segui() {
  if (!avviata_) return;
  const QSize misura = form_.finestra_->size();
  // The size that the program asked for is exact as it is.
  const QSize chiesta(Pixel(form_.width_), Pixel(form_.height_));
  if (misura.width() != chiesta.width()) form_.width_ = Twip(misura.width());
  if (misura.height() != chiesta.height()) form_.height_ = Twip(misura.height());
  for (std::size_t i = 0; i < form_.elementi_.size(); ++i) {
    auto* elemento = form_.elementi_[i];
    elemento->rettangolo = misure_.Segue(i, elemento->rettangolo, form_.width_, form_.height_);
    elemento->Posa();
  }
}

}  // namespace orve::adapters::qt
