#include "forms/form.h"

#include <algorithm>
#include <utility>

#include "forms/lettura_tavola.h"
#include "forms/proporzioni.h"
#include "text/text.h"

namespace orve::adapters::forms {

// The control that keeps the window's controls in proportion. It is never visible.
class Form::Ridimensiona : public Controllo<host::KVL_RESIZEFORM, Elemento> {
 public:
  Ridimensiona(const host::LayoutControllo& layout, Form& form) : Controllo(layout), form_(&form) {}
  void Lascia() { form_ = nullptr; }

  void Avvia() override {
    if (form_ == nullptr) return;
    std::vector<Proporzioni::Elemento> base;
    for (const auto* elemento : form_->elementi_) {
      base.push_back(
          {std::string(elemento->tavola.nome), std::string(elemento->tavola.cornice), elemento->rettangolo});
    }
    misure_.Fissa(form_->width_, form_->height_, std::move(base));
    host::Solleva(RichiestaControlli);
    avviata_ = misure_.Fissate();
    if (form_ != nullptr) form_->Segui();
  }

  void RegistraControllo(const std::string& nome, std::int16_t modo) override {
    if (form_ == nullptr) return;
    static_cast<void>(form_->Controlli(nome));  // raises an error for an unknown control name
    misure_.Registra(nome, modo);
  }

  [[nodiscard]] bool Avviata() const { return avviata_; }
  [[nodiscard]] const Proporzioni& Misure() const { return misure_; }

 private:
  Form* form_;
  bool avviata_ = false;
  Proporzioni misure_;
};

Form::Form(const host::LayoutForm& layout, std::shared_ptr<FileLasciati> lasciati)
    : lasciati_(std::move(lasciati)),
      pulsanteFile_(text::FoldCase(layout.pulsanteFile)),
      didascalia_(layout.didascalia),
      width_(layout.width),
      height_(layout.height) {}

// A control may outlive its form.
Form::~Form() {
  if (ridimensiona_) ridimensiona_->Lascia();
}

void Form::Costruisci(const host::LayoutForm& layout) {
  Titolo(didascalia_);
  for (const auto& riga : layout.controlli) {
    std::shared_ptr<host::Controllo> controllo;
    if (riga.tipo == host::TipoControllo::kResizeForm) {
      ridimensiona_ = std::make_shared<Ridimensiona>(riga, *this);
      controllo = ridimensiona_;
    } else {
      const auto cornice = controlli_.find(text::FoldCase(riga.cornice));
      controllo = CreaControllo(
          layout, riga,
          cornice == controlli_.end() ? nullptr : dynamic_cast<Elemento*>(cornice->second.get()));
      elementi_.push_back(dynamic_cast<Elemento*>(controllo.get()));
    }
    controlli_.emplace(text::FoldCase(riga.nome), std::move(controllo));
  }
  AdattaFinestra();
}

std::vector<Elemento*> Form::OrdineDiTastiera(const host::LayoutForm& layout) const {
  std::vector<Elemento*> ordine;
  for (const auto* riga : forms::OrdineDiTastiera(layout)) {
    ordine.push_back(dynamic_cast<Elemento*>(controlli_.at(text::FoldCase(riga->nome)).get()));
  }
  return ordine;
}

std::shared_ptr<host::Controllo> Form::Controlli(std::string_view nome) {
  const auto trovato = controlli_.find(text::FoldCase(nome));
  if (trovato == controlli_.end()) throw host::Errore(host::kMembroNonSupportato);
  return trovato->second;
}

void Form::Caption(const std::string& didascalia) {
  didascalia_ = didascalia;
  Titolo(didascalia);
}

void Form::Width(float twip) {
  width_ = twip;
  AdattaFinestra();
}

void Form::Height(float twip) {
  height_ = twip;
  AdattaFinestra();
}

void Form::AdattaFinestra() {
  Interno({std::max(1, Pixel(width_, Dpi())), std::max(1, Pixel(height_, Dpi()))});
}

void Form::Segui() {
  if (!ridimensiona_ || !ridimensiona_->Avviata()) return;
  const int dpi = Dpi();
  const Misura misura = Interno();
  // The size that the program asked for is exact as it is.
  if (misura.width != Pixel(width_, dpi)) width_ = Twip(misura.width, dpi);
  if (misura.height != Pixel(height_, dpi)) height_ = Twip(misura.height, dpi);
  for (std::size_t i = 0; i < elementi_.size(); ++i) {
    auto* elemento = elementi_[i];
    elemento->rettangolo = ridimensiona_->Misure().Segue(i, elemento->rettangolo, width_, height_);
    elemento->Posa();
  }
}

void Form::Show(std::int16_t modo, const std::shared_ptr<host::Form>& proprietario) {
  if (!std::exchange(caricata_, true)) host::Solleva(Load);
  // Raised here and not by the window's first activation: the person finds a window that is ready, even where
  // a new window is not activated.
  if (aperta_ && !Visibile()) {
    primaAttivazione_ = true;
    host::Solleva(Activate);
  }
  if (!aperta_) return;
  contenuto_ = ContenutoDi(controlli_);
  Mostra(modo == kModale, proprietario.get());
}

void Form::Attivata() {
  if (!aperta_ || std::exchange(primaAttivazione_, false)) return;
  host::Solleva(Activate);
}

void Form::Chiudi() {
  if (!std::exchange(aperta_, false)) return;
  Nascondi();
  host::Solleva(Unload);
}

void Form::Abbandona() {
  const bool cambiata = ContenutoDi(controlli_) != contenuto_;
  if (cambiata && Chiede(kDomandaAbbandono, kStileAbbandono, didascalia_) != host::kRispostaSi) return;
  ChiudiDallaCornice();
}

// One file at a time goes through the button's procedure, which asks for a file and finds this one. While a
// window in front waits for its answer, nobody could press the button either.
void Form::Allega(const std::vector<std::string>& file) {
  const auto trovato = controlli_.find(pulsanteFile_);
  if (trovato == controlli_.end()) return;
  auto* pulsante = dynamic_cast<host::KVL_TBARMENU*>(trovato->second.get());
  const auto* elemento = dynamic_cast<const Elemento*>(trovato->second.get());
  for (const auto& uno : file) {
    if (pulsante == nullptr || !aperta_ || !Premibile(*elemento)) return;
    *lasciati_ = {uno};
    Azione([pulsante] { host::Solleva(pulsante->ButtonClick); });
    lasciati_->clear();
  }
}

}  // namespace orve::adapters::forms
