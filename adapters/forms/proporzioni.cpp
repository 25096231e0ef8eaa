#include "forms/proporzioni.h"

#include <utility>

#include "text/text.h"

namespace orve::adapters::forms {

void Proporzioni::Fissa(float width, float height, std::vector<Elemento> elementi) {
  width_ = width;
  height_ = height;
  elementi_ = std::move(elementi);
}

void Proporzioni::Registra(const std::string& nome, std::int16_t modo) {
  registrati_[text::FoldCase(nome)] = modo;
}

std::int16_t Proporzioni::ModoDi(const Elemento& elemento) const {
  using Resize = host::KVL_RESIZEFORM;
  constexpr std::int16_t kTutto = Resize::kLarghezza + Resize::kAltezza + Resize::kSinistra + Resize::kAlto;
  if (registrati_.empty()) return kTutto;
  for (const auto& nome : {elemento.nome, elemento.cornice}) {
    const auto trovato = registrati_.find(text::FoldCase(nome));
    if (trovato != registrati_.end()) return trovato->second;
  }
  return 0;
}

host::Rettangolo Proporzioni::Segue(std::size_t elemento, const host::Rettangolo& attuale, float width,
                                    float height) const {
  using Resize = host::KVL_RESIZEFORM;
  if (!Fissate()) return attuale;
  const auto& uno = elementi_.at(elemento);
  const std::int16_t modo = ModoDi(uno);
  const auto segue = [modo](Resize::Modo parte, float valore, float quanto) {
    return (modo & parte) != 0 ? valore * quanto : valore;
  };
  const float perLarghezza = width / width_;
  const float perAltezza = height / height_;
  return {segue(Resize::kSinistra, uno.base.left, perLarghezza),
          segue(Resize::kAlto, uno.base.top, perAltezza),
          segue(Resize::kLarghezza, uno.base.width, perLarghezza),
          segue(Resize::kAltezza, uno.base.height, perAltezza)};
}

}  // namespace orve::adapters::forms
