// The toolkit without a screen, for the tests of the window contract.
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

#include "fakes/fake_ambiente.h"
#include "fakes/headless.h"
#include "window_contract/toolkit.h"

namespace orve::window_contract {

namespace {

using fakes::HeadlessForm;

class VistaHeadless final : public Vista {
 public:
  explicit VistaHeadless(HeadlessForm& form) : form_(form) {}

  bool Aperta() const override { return form_.Aperta(); }
  bool Vede(const std::string& nome) const override { return form_.Vede(nome); }
  bool Attivo(const std::string& nome) const override { return form_.Attivo(nome); }
  std::string Titolo() const override { return form_.Titolo(); }
  std::string Contenuto(const std::string& nome) const override {
    if (!E<host::KVL_COMBO>(nome)) return form_.Testo(nome);
    const auto scelta = form_.VoceScelta(nome);
    return scelta < 0 ? "" : form_.Voci(nome)[static_cast<std::size_t>(scelta)];
  }
  bool Spuntata(const std::string& nome) const override { return form_.Testo(nome) == "1"; }
  std::vector<std::string> Righe() const override { return form_.Righe("GRID_ALLEGATI"); }
  int RigaSelezionata() const override { return std::max(0, form_.RigaSelezionata("GRID_ALLEGATI")); }

  void Clicca(const std::string& nome) const override {
    if (E<host::KVL_CHECKBOX>(nome)) {
      form_.Spunta(nome, !Spuntata(nome));
    } else {
      form_.Preme(nome);
    }
  }
  void Digita(const std::string& nome, const std::string& testo) const override { form_.Digita(nome, testo); }
  void Riscrive(const std::string& nome, const std::string& testo) const override {
    form_.Riscrive(nome, testo);
  }
  void Incolla(const std::string& nome, const std::string& testo) const override {
    form_.Digita(nome, testo);
  }
  void VoceDopo(const std::string& combo) const override { Sposta(combo, 1); }
  void VocePrima(const std::string& combo) const override { Sposta(combo, -1); }
  std::vector<std::string> VociDiMenu(const std::string& pulsante) const override {
    std::vector<std::string> voci;
    for (const auto& voce : form_.ApreMenu(pulsante)) {
      voci.push_back(voce.attiva ? voce.didascalia : "(" + voce.didascalia + ")");
    }
    return voci;
  }
  void Sceglie(const std::string& pulsante, const std::string& didascalia) const override {
    for (const auto& voce : form_.ApreMenu(pulsante)) {
      if (voce.didascalia == didascalia) return form_.Sceglie(pulsante, voce.chiave);
    }
    ADD_FAILURE() << pulsante << " has no entry " << didascalia;
  }
  void Chiude() const override { form_.ChiudeFinestra(); }

 private:
  template <class Tipo>
  [[nodiscard]] bool E(const std::string& nome) const {
    return dynamic_cast<Tipo*>(form_.Controlli(nome).get()) != nullptr;
  }
  void Sposta(const std::string& combo, int passi) const {
    form_.SceglieVoce(combo, static_cast<std::int16_t>(form_.VoceScelta(combo) + passi));
  }

  HeadlessForm& form_;
};

/// Says what is released, as the ambiente over real windows does.
class AmbienteHeadless final : public fakes::FakeAmbiente {
 public:
  std::shared_ptr<host::RecordSetScollegato> CreaRecordSetScollegato() override {
    return fakes::ConRilascio(journal, FakeAmbiente::CreaRecordSetScollegato(), "RecordSetScollegato");
  }
  std::shared_ptr<host::CollezioneFile> CreaCollezioneFile() override {
    return fakes::ConRilascio(journal, FakeAmbiente::CreaCollezioneFile(), "CollezioneFile");
  }
  std::shared_ptr<host::Messaggi> CreaMessaggi() override {
    return fakes::ConRilascio(journal, FakeAmbiente::CreaMessaggi(), "Messaggi");
  }
};

class ToolkitHeadless final : public Toolkit {
 public:
  ToolkitHeadless() {
    ambiente_->persona = [this](HeadlessForm& form) {
      if (!persona_) {
        ADD_FAILURE() << "nobody expected the window " << form.Nome();
        return;
      }
      EXPECT_EQ(form.Nome(), attesa_);
      const auto persona = std::exchange(persona_, nullptr);
      persona(VistaHeadless(form));
    };
  }

  std::shared_ptr<fakes::FakeAmbiente> Ambiente() override { return ambiente_; }
  void VaCopiato(bool copiato) override { copiato_ = copiato; }
  std::string File(const std::string& nome, const std::string& contenuto) override {
    std::string percorso = R"(C:\Prova\)" + nome;
    ambiente_->file[percorso] = contenuto;
    if (copiato_) ambiente_->posizioni[percorso] = host::OggettoFile::kDaCopiare;
    return percorso;
  }
  std::string PerPersona(const std::string& percorso) const override { return percorso; }
  std::string Mancante() const override { return R"(C:\Prova\manca.pdf)"; }
  void Rimuove(const std::string& percorso) override { ambiente_->file.erase(percorso); }
  std::string Legge(const std::string& percorso) override { return ambiente_->file.at(percorso); }

  void Mostra(const host::LayoutForm& layout, const Persona& persona, const Gesto& programma) override {
    attesa_ = layout.nome;
    persona_ = persona;
    programma();
    EXPECT_FALSE(persona_) << "the window " << attesa_ << " never came";
  }
  void MostraMessaggio(const std::string& testo, Risposta risposta, const Gesto& programma) override {
    Risponde(programma, testo, risposta);
  }
  void NelProgramma(const Gesto& azione) override { azione(); }
  bool Attende(const std::function<bool()>& condizione) override { return condizione(); }
  std::string Risponde(const Gesto& gesto, const std::string& testo, Risposta risposta) override {
    ambiente_->rispostaMessaggio = risposta == Risposta::kOk   ? 1
                                   : risposta == Risposta::kSi ? std::int32_t{host::kRispostaSi}
                                                               : std::int32_t{host::kRispostaNo};
    const std::string riga = "ObjMessaggi.MostraMsg " + testo;
    const auto prima = ambiente_->journal->Conta(riga);
    gesto();
    const auto mostrati = ambiente_->journal->Righe({riga});
    EXPECT_EQ(mostrati.size(), prima + 1) << testo;
    if (mostrati.empty()) return {};
    const auto titolo = mostrati.back().find('|', mostrati.back().find('|', riga.size()) + 1) + 1;
    return mostrati.back().substr(titolo, mostrati.back().find('|', titolo) - titolo);
  }
  void ScegliFile(const Gesto& gesto, const std::string& percorso) override {
    ambiente_->fileScelto = percorso.empty() ? std::nullopt : std::optional(percorso);
    gesto();
  }

 private:
  std::shared_ptr<fakes::FakeAmbiente> ambiente_ = std::make_shared<AmbienteHeadless>();
  bool copiato_ = false;
  std::string attesa_;
  Persona persona_;
};

}  // namespace

std::unique_ptr<Toolkit> CreaToolkit() {
  return std::make_unique<ToolkitHeadless>();
}

}  // namespace orve::window_contract
