#include "fakes/headless.h"

#include <gtest/gtest.h>

#include "fakes/controlli_headless.h"
#include "text/text.h"

namespace orve::fakes {

namespace {

class FakeConfigurazioneGriglia : public host::ConfigurazioneGriglia {
 public:
  explicit FakeConfigurazioneGriglia(JournalPtr journal) : journal_(std::move(journal)) {}
  void ColonnaChiave(const std::string& campo) override {
    journal_->Add("ConfigurazioneGriglia.ColonnaChiave " + campo);
    colonna_ = campo;
  }
  std::string ColonnaChiave() override { return colonna_; }
  void SelezioneRiga(bool attiva) override {
    journal_->Add("ConfigurazioneGriglia.SelezioneRiga " + SiNo(attiva));
    selezione_ = attiva;
  }
  bool SelezioneRiga() override { return selezione_; }

 private:
  JournalPtr journal_;
  std::string colonna_;
  bool selezione_ = false;
};

}  // namespace

std::shared_ptr<host::Controllo> headless::Crea(const JournalPtr& journal,
                                                const host::LayoutControllo& layout) {
  switch (layout.tipo) {
    case host::TipoControllo::kFrame:
      return std::make_shared<Controllo<host::Frame>>(journal, layout);
    case host::TipoControllo::kEtichetta:
    case host::TipoControllo::kKvlLabel:
      return std::make_shared<Controllo<host::KVL_LABEL>>(journal, layout);
    case host::TipoControllo::kTbarMenu:
      return std::make_shared<Pulsante>(journal, layout);
    case host::TipoControllo::kTxtEdit:
      return std::make_shared<Casella<host::TxtEdit>>(journal, layout);
    case host::TipoControllo::kRichTextBox:
      return std::make_shared<Casella<host::KvlRichTextBox>>(journal, layout);
    case host::TipoControllo::kCheckBox:
      return std::make_shared<Spunta>(journal, layout);
    case host::TipoControllo::kCombo:
      return std::make_shared<Combo>(journal, layout);
    case host::TipoControllo::kGriglia:
      return std::make_shared<Griglia>(journal, layout);
    case host::TipoControllo::kResizeForm:
      return std::make_shared<Proporzioni>(journal, layout);
  }
  throw host::Errore(host::kMembroNonSupportato);
}

std::shared_ptr<host::ConfigurazioneGriglia> CreaFakeConfigurazioneGriglia(JournalPtr journal) {
  return std::make_shared<FakeConfigurazioneGriglia>(std::move(journal));
}

HeadlessForm::HeadlessForm(JournalPtr journal, const host::LayoutForm& layout, Persona persona)
    : journal_(std::move(journal)),
      nome_(layout.nome),
      didascalia_(layout.didascalia),
      width_(layout.width),
      height_(layout.height),
      persona_(std::move(persona)) {
  for (const auto& controllo : layout.controlli) {
    const bool nuovo =
        controlli_.emplace(text::FoldCase(controllo.nome), headless::Crea(journal_, controllo)).second;
    EXPECT_TRUE(nuovo) << "two controls of one name: " << controllo.nome;
  }
}

std::shared_ptr<host::Controllo> HeadlessForm::Controlli(std::string_view nome) {
  const auto trovato = controlli_.find(text::FoldCase(nome));
  if (trovato == controlli_.end()) throw host::Errore(host::kMembroNonSupportato);
  return trovato->second;
}

std::string HeadlessForm::Caption() {
  journal_->Add("legge " + nome_ + ".Caption");
  return didascalia_;
}
void HeadlessForm::Caption(const std::string& didascalia) {
  journal_->Add(nome_ + ".Caption " + didascalia);
  didascalia_ = didascalia;
}
float HeadlessForm::Width() {
  return width_;
}
void HeadlessForm::Width(float twip) {
  journal_->Add(nome_ + ".Width " + Mostra(twip));
  width_ = twip;
}
float HeadlessForm::Height() {
  journal_->Add("legge " + nome_ + ".Height");
  return height_;
}
void HeadlessForm::Height(float twip) {
  journal_->Add(nome_ + ".Height " + Mostra(twip));
  height_ = twip;
}

void HeadlessForm::Show(std::int16_t modo, const std::shared_ptr<host::Form>& proprietario) {
  journal_->Add(nome_ + ".Show " + std::to_string(modo) + (proprietario ? "|(oggetto)" : "|(assente)"));
  if (!caricata_) {
    caricata_ = true;
    host::Solleva(Load);
  }
  Riattiva();
  if (persona_ && aperta_) persona_(*this);
  if (aperta_) ChiudeFinestra();
}

void HeadlessForm::Chiudi() {
  journal_->Add(nome_ + ".Chiudi");
  ChiudeFinestra();
}

void HeadlessForm::ChiudeFinestra() {
  if (!aperta_) return;
  aperta_ = false;
  journal_->Add(nome_ + " chiude");
  host::Solleva(Unload);
  journal_->Add(nome_ + " chiusa");
}

void HeadlessForm::Riattiva() {
  journal_->Add(nome_ + " attiva");
  host::Solleva(Activate);
}

// The control as the kind that the test takes it for.
template <class Tipo>
Tipo* HeadlessForm::Mio(std::string_view nome) const {
  const auto trovato = controlli_.find(text::FoldCase(nome));
  auto* controllo = trovato == controlli_.end() ? nullptr : dynamic_cast<Tipo*>(trovato->second.get());
  EXPECT_NE(controllo, nullptr) << nome << " is no such control";
  return controllo;
}

// The same, if a person could use it at this moment.
template <class Tipo>
Tipo* HeadlessForm::Raggiunge(std::string_view nome) const {
  auto* controllo = Mio<Tipo>(nome);
  if (controllo == nullptr) return nullptr;
  EXPECT_TRUE(aperta_) << nome << ": the window is closed";
  EXPECT_TRUE(Vede(nome)) << nome << " cannot be seen";
  EXPECT_TRUE(Attivo(nome)) << nome << " is disabled";
  return aperta_ && Vede(nome) && Attivo(nome) ? controllo : nullptr;
}

void HeadlessForm::Preme(std::string_view pulsante) {
  auto* premuto = Raggiunge<headless::Pulsante>(pulsante);
  if (premuto == nullptr) return;
  EXPECT_FALSE(premuto->disegno.disegno.ismenupopup) << pulsante << " brings up a menu";
  host::Solleva(premuto->ButtonClick);
}

std::vector<adapters::forms::VoceMenu> HeadlessForm::ApreMenu(std::string_view pulsante) {
  auto* premuto = Raggiunge<headless::Pulsante>(pulsante);
  if (premuto == nullptr) return {};
  EXPECT_TRUE(premuto->disegno.disegno.ismenupopup) << pulsante << " has no menu";
  host::Solleva(premuto->BeforeShowMenuPopup);
  return premuto->voci.Voci();
}

void HeadlessForm::Sceglie(std::string_view pulsante, const std::string& chiave) {
  const auto voci = ApreMenu(pulsante);
  auto* premuto = Mio<headless::Pulsante>(pulsante);
  const auto* voce = premuto != nullptr ? premuto->voci.ConChiave(chiave) : nullptr;
  EXPECT_NE(voce, nullptr) << pulsante << " has no entry " << chiave;
  if (voce == nullptr) return;
  EXPECT_TRUE(voce->attiva) << chiave << " is switched off";
  if (voce->attiva) host::Solleva(premuto->MenuItemClick, std::string(voce->chiave), std::string());
}

void HeadlessForm::Digita(std::string_view casella, std::string_view testo) {
  auto* scritta = Raggiunge<headless::ConTesto>(casella);
  if (scritta == nullptr) return;
  const auto& disegno = Mio<headless::Stato>(casella)->disegno.disegno;
  scritta->testo +=
      adapters::forms::TestoAccettato(scritta->testo, testo, disegno.maxchar, disegno.ismultiline);
}

void HeadlessForm::Riscrive(std::string_view casella, std::string_view testo) {
  auto* scritta = Raggiunge<headless::ConTesto>(casella);
  if (scritta == nullptr) return;
  scritta->testo.clear();
  Digita(casella, testo);
}

void HeadlessForm::Spunta(std::string_view casella, bool valore) {
  auto* spuntata = Raggiunge<headless::Spunta>(casella);
  if (spuntata == nullptr) return;
  spuntata->valore = valore ? "1" : "0";
  host::Solleva(spuntata->Change);
}

void HeadlessForm::SceglieVoce(std::string_view combo, std::int16_t posizione) {
  auto* scelta = Raggiunge<headless::Combo>(combo);
  if (scelta != nullptr && scelta->voci.Selezionata() != posizione) scelta->Sceglie(posizione);
}

void HeadlessForm::SelezionaRiga(std::string_view griglia, std::int32_t riga) {
  auto* scelta = Raggiunge<headless::Griglia>(griglia);
  if (scelta == nullptr) return;
  EXPECT_NE(scelta->righe, nullptr) << griglia << " is not bound";
  if (scelta->righe) scelta->righe->AbsolutePosition(riga);
}

std::string HeadlessForm::Testo(std::string_view controllo) {
  const auto trovato = controlli_.find(text::FoldCase(controllo));
  if (trovato == controlli_.end())
    return Mio<headless::Stato>(controllo) != nullptr ? "" : "(nessun controllo)";
  if (auto* casella = dynamic_cast<headless::ConTesto*>(trovato->second.get())) return casella->testo;
  if (auto* spunta = dynamic_cast<headless::Spunta*>(trovato->second.get())) return spunta->valore;
  auto* combo = Mio<headless::Combo>(controllo);
  return combo != nullptr ? combo->voci.Valore() : "";
}

bool HeadlessForm::Vede(std::string_view controllo) const {
  const auto* stato = Mio<headless::Stato>(controllo);
  if (stato == nullptr) return false;
  const auto cornice = stato->disegno.cornice;
  return stato->visible && (cornice.empty() || Vede(cornice));
}

bool HeadlessForm::Attivo(std::string_view controllo) const {
  const auto* stato = Mio<headless::Stato>(controllo);
  if (stato == nullptr) return false;
  const auto cornice = stato->disegno.cornice;
  return stato->enabled && (cornice.empty() || Attivo(cornice));
}

std::vector<std::string> HeadlessForm::Voci(std::string_view combo) const {
  std::vector<std::string> testi;
  if (const auto* scelta = Mio<headless::Combo>(combo); scelta != nullptr) {
    for (const auto& voce : scelta->voci.Voci()) testi.push_back(voce.testo);
  }
  return testi;
}

std::int16_t HeadlessForm::VoceScelta(std::string_view combo) const {
  const auto* scelta = Mio<headless::Combo>(combo);
  return scelta != nullptr ? scelta->voci.Selezionata() : std::int16_t{-1};
}

std::vector<std::string> HeadlessForm::Righe(std::string_view griglia) const {
  const auto* vista = Mio<headless::Griglia>(griglia);
  return vista != nullptr ? vista->celle : std::vector<std::string>();
}

std::int32_t HeadlessForm::RigaSelezionata(std::string_view griglia) const {
  const auto* vista = Mio<headless::Griglia>(griglia);
  return vista != nullptr ? vista->selezionata : host::RecordSetScollegato::kNessunaRiga;
}

host::Rettangolo HeadlessForm::Posizione(std::string_view controllo) const {
  const auto* stato = Mio<headless::Stato>(controllo);
  return stato != nullptr ? stato->rettangolo : host::Rettangolo{};
}

}  // namespace orve::fakes
