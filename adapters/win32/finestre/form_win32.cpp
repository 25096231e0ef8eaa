#include "win32/finestre/form_win32.h"

#include <shellapi.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "forms/lettura_tavola.h"
#include "forms/proporzioni.h"
#include "text/text.h"
#include "win32/finestre/controlli_win32.h"
#include "win32/finestre/finestre.h"
#include "win32/finestre/messaggi.h"
#include "win32/finestre/nomi_accessibili.h"
#include "win32/finestre/testo.h"

namespace orve::adapters::win32::finestre {

namespace {

// The button whose procedure a dropped file goes through.
constexpr const char* kPulsanteAllega = "KVL_ALLEGA";

}  // namespace

// The control that keeps the window's controls in proportion. It is never visible.
class FormWin32::Proporzioni : public host::KVL_RESIZEFORM {
 public:
  Proporzioni(const host::LayoutControllo& layout, FormWin32& form)
      : posto_(layout.posizione), form_(&form) {}
  void Lascia() { form_ = nullptr; }

  float Left() override { return posto_.left; }
  void Left(float twip) override { posto_.left = twip; }
  float Top() override { return posto_.top; }
  void Top(float twip) override { posto_.top = twip; }
  float Width() override { return posto_.width; }
  void Width(float twip) override { posto_.width = twip; }
  float Height() override { return posto_.height; }
  void Height(float twip) override { posto_.height = twip; }
  bool Visible() override { return visibile_; }
  void Visible(bool visibile) override { visibile_ = visibile; }
  bool Enabled() override { return attivo_; }
  void Enabled(bool attivo) override { attivo_ = attivo; }

  void Avvia() override {
    if (form_ == nullptr) return;
    std::vector<forms::Proporzioni::Elemento> base;
    for (const auto* elemento : form_->elementi_) {
      const auto& tavola = elemento->tavola;
      base.push_back({std::string(tavola.nome), std::string(tavola.cornice), elemento->rettangolo});
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
  [[nodiscard]] const forms::Proporzioni& Misure() const { return misure_; }

 private:
  host::Rettangolo posto_;
  bool visibile_ = true;
  bool attivo_ = true;
  FormWin32* form_;
  bool avviata_ = false;
  forms::Proporzioni misure_;
};

HWND ManigliaDi(host::Oggetto* oggetto) {
  auto* form = dynamic_cast<FormWin32*>(oggetto);
  return form != nullptr ? form->Maniglia() : nullptr;
}

int IdentificatoreDi(const host::LayoutForm& layout, std::string_view nome) {
  const auto trovato = std::find_if(layout.controlli.begin(), layout.controlli.end(), [&](const auto& riga) {
    return text::EqualsIgnoreCase(riga.nome, nome);
  });
  if (trovato == layout.controlli.end()) return 0;
  return kPrimoControllo + static_cast<int>(std::distance(layout.controlli.begin(), trovato));
}

FormWin32::FormWin32(const host::LayoutForm& layout, std::shared_ptr<FileLasciati> lasciati)
    : finestra_(std::make_shared<Finestra>(layout)),
      lasciati_(std::move(lasciati)),
      didascalia_(layout.didascalia),
      width_(layout.width),
      height_(layout.height) {
  finestra_->Titolo(didascalia_);
  Costruisci(layout);
  AdattaFinestra();
  finestra_->Ridimensionata = [this] { Segui(); };
  finestra_->Attivata = [this] {
    if (!aperta_ || std::exchange(primaAttivazione_, false)) return;
    Protetta(finestra_->Maniglia(), [this] { host::Solleva(Activate); });
  };
  finestra_->Chiusa = [this] {
    if (!std::exchange(aperta_, false)) return;
    finestra_->Nascondi();
    Protetta(nullptr, [this] { host::Solleva(Unload); });
  };
  finestra_->Abbandonata = [this] { finestra_->Azione([this] { Abbandona(); }); };
  finestra_->CambiatoDpi = [this] {
    for (auto* elemento : elementi_) {
      elemento->CambiaCarattere();
      elemento->Posa();
    }
  };
  if (lasciati_) {
    finestra_->Lasciati = [this](const std::vector<std::wstring>& file) { Allega(file); };
  } else {
    DragAcceptFiles(finestra_->Maniglia(), FALSE);
  }
}

FormWin32::~FormWin32() {
  // A control may outlive its form, and the window with it.
  finestra_->Ridimensionata = nullptr;
  finestra_->Attivata = nullptr;
  finestra_->Chiusa = nullptr;
  finestra_->Abbandonata = nullptr;
  finestra_->CambiatoDpi = nullptr;
  finestra_->Lasciati = nullptr;
  finestra_->Nascondi();
  if (proporzioni_) proporzioni_->Lascia();
}

void FormWin32::Costruisci(const host::LayoutForm& layout) {
  const std::string principale = PulsantePrincipale(layout);
  int identificatore = kPrimoControllo;
  for (const auto& riga : layout.controlli) {
    std::shared_ptr<host::Controllo> controllo;
    if (riga.tipo == host::TipoControllo::kResizeForm) {
      proporzioni_ = std::make_shared<Proporzioni>(riga, *this);
      controllo = proporzioni_;
    } else {
      const auto cornice = controlli_.find(text::FoldCase(riga.cornice));
      auto* padre = cornice == controlli_.end() ? finestra_->Maniglia()
                                                : dynamic_cast<Elemento&>(*cornice->second).Maniglia();
      controllo = CreaControllo({finestra_, padre, identificatore}, riga, riga.nome == principale);
      elementi_.push_back(dynamic_cast<Elemento*>(controllo.get()));
      elementi_.back()->Posa();
    }
    ++identificatore;
    controlli_.emplace(text::FoldCase(riga.nome), std::move(controllo));
  }
  std::vector<HWND> ordine;
  for (const auto* riga : forms::OrdineDiTastiera(layout)) {
    ordine.push_back(dynamic_cast<Elemento&>(*controlli_.at(text::FoldCase(riga->nome))).Maniglia());
  }
  finestra_->OrdinaTastiera(ordine);
  DaiNomi(layout);
}

void FormWin32::DaiNomi(const host::LayoutForm& layout) const {
  NomiAccessibili nomi;
  for (const auto* elemento : elementi_) {
    nomi.Da(elemento->Maniglia(), Largo(forms::NomeAccessibile(layout, elemento->tavola)));
  }
}

std::shared_ptr<host::Controllo> FormWin32::Controlli(std::string_view nome) {
  const auto trovato = controlli_.find(text::FoldCase(nome));
  if (trovato == controlli_.end()) throw host::Errore(host::kMembroNonSupportato);
  return trovato->second;
}

void FormWin32::Caption(const std::string& didascalia) {
  didascalia_ = didascalia;
  finestra_->Titolo(didascalia);
}

void FormWin32::Width(float twip) {
  width_ = twip;
  AdattaFinestra();
}

void FormWin32::Height(float twip) {
  height_ = twip;
  AdattaFinestra();
}

void FormWin32::AdattaFinestra() {
  const int dpi = finestra_->Dpi();
  finestra_->Misura({std::max(1, forms::Pixel(width_, dpi)), std::max(1, forms::Pixel(height_, dpi))});
}

void FormWin32::Segui() {
  if (!proporzioni_ || !proporzioni_->Avviata()) return;
  const int dpi = finestra_->Dpi();
  const SIZE misura = finestra_->Misura();
  // The size that the program asked for is exact as it is.
  if (misura.cx != forms::Pixel(width_, dpi)) width_ = forms::Twip(static_cast<int>(misura.cx), dpi);
  if (misura.cy != forms::Pixel(height_, dpi)) height_ = forms::Twip(static_cast<int>(misura.cy), dpi);
  for (std::size_t i = 0; i < elementi_.size(); ++i) {
    auto* elemento = elementi_[i];
    elemento->rettangolo = proporzioni_->Misure().Segue(i, elemento->rettangolo, width_, height_);
    elemento->Posa();
  }
}

void FormWin32::Show(std::int16_t modo, const std::shared_ptr<host::Form>& proprietario) {
  if (!std::exchange(caricata_, true)) host::Solleva(Load);
  // Raised here and not by the window's first activation: the person finds a window that is ready, even where
  // another program stays in front.
  if (aperta_ && !finestra_->Visibile()) {
    primaAttivazione_ = true;
    host::Solleva(Activate);
  }
  if (!aperta_) return;
  contenuto_ = forms::ContenutoDi(controlli_);
  auto* padrone = ManigliaDi(proprietario.get());
  finestra_->Mostra(padrone != nullptr ? padrone : GetActiveWindow(), modo == kModale);
}

void FormWin32::Chiudi() {
  if (!std::exchange(aperta_, false)) return;
  finestra_->Nascondi();
  host::Solleva(Unload);
}

void FormWin32::Abbandona() {
  const bool cambiata = forms::ContenutoDi(controlli_) != contenuto_;
  if (cambiata && MostraCasella(forms::kDomandaAbbandono, forms::kStileAbbandono, didascalia_,
                                finestra_->Maniglia()) != host::kRispostaSi) {
    return;
  }
  if (finestra_->Chiusa) finestra_->Chiusa();
}

// One file at a time goes through the button's procedure, which asks for a file and finds this one. While a
// window in front waits for its answer, nobody could press the button either.
void FormWin32::Allega(const std::vector<std::wstring>& file) {
  const auto trovato = controlli_.find(text::FoldCase(kPulsanteAllega));
  if (trovato == controlli_.end()) return;
  auto* pulsante = dynamic_cast<host::KVL_TBARMENU*>(trovato->second.get());
  auto* maniglia = dynamic_cast<Elemento&>(*trovato->second).Maniglia();
  for (const auto& uno : file) {
    const bool premibile = IsWindowVisible(maniglia) != FALSE && IsWindowEnabled(maniglia) != FALSE &&
                           IsWindowEnabled(finestra_->Maniglia()) != FALSE;
    if (pulsante == nullptr || !premibile || !aperta_) return;
    *lasciati_ = {uno};
    finestra_->Azione([pulsante] { host::Solleva(pulsante->ButtonClick); });
    lasciati_->clear();
  }
}

}  // namespace orve::adapters::win32::finestre
