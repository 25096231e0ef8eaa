// The windows of Windows, for the tests of the window contract.
#include <algorithm>
#include <fstream>
#include <iterator>

#include "prova.h"
#include "window_contract/toolkit.h"

namespace orve::adapters::win32::finestre {

namespace {

using window_contract::Gesto;
using window_contract::Risposta;

int Pulsante(Risposta risposta) {
  return risposta == Risposta::kOk ? IDOK : risposta == Risposta::kSi ? IDYES : IDNO;
}

class ToolkitWin32 final : public window_contract::Toolkit {
 public:
  std::shared_ptr<fakes::FakeAmbiente> Ambiente() override { return sotto_.ambiente; }
  void VaCopiato(bool copiato) override { sotto_.vaCopiato = copiato; }
  std::string File(const std::string& nome, const std::string& contenuto) override {
    return sotto_.cartella.File(nome, contenuto);
  }
  std::string PerPersona(const std::string& percorso) const override { return percorso; }
  std::string Mancante() const override { return sotto_.cartella.Radice() + "\\manca.pdf"; }
  void Rimuove(const std::string& percorso) override {
    std::filesystem::remove(window_contract::Percorso(percorso));
  }
  std::string Legge(const std::string& percorso) override {
    std::ifstream flusso(window_contract::Percorso(percorso), std::ios::binary);
    return {std::istreambuf_iterator<char>(flusso), {}};
  }

  /// No more than a line.
  int AltezzaDidascalia(int nellaTavola) const override { return std::min(nellaTavola, 18); }

  void Mostra(const host::LayoutForm& layout, const window_contract::Persona& persona,
              const Gesto& programma) override {
    const Compagno qualcuno(InFinestra(sotto_.programma, layout, persona));
    programma();
  }
  void MostraMessaggio(const std::string& testo, Risposta risposta, const Gesto& programma) override {
    const Compagno qualcuno([&] { finestre::Risponde(sotto_.programma, testo, Pulsante(risposta)); });
    programma();
  }
  void NelProgramma(const Gesto& azione) override {
    if (GetCurrentThreadId() != sotto_.programma.Filo()) sotto_.programma.Respira();
    sotto_.programma.Esegui(azione);
  }
  bool Attende(const std::function<bool()>& condizione) override { return Attendi(condizione); }
  std::string Risponde(const Gesto& gesto, const std::string& testo, Risposta risposta) override {
    gesto();
    const std::string detto = finestre::Risponde(sotto_.programma, testo, Pulsante(risposta));
    const std::string pulsanti =
        risposta == Risposta::kOk ? "|1;" : "|" + std::to_string(IDYES) + ";" + std::to_string(IDNO) + ";";
    EXPECT_TRUE(detto.ends_with(pulsanti)) << detto;
    return detto.substr(0, detto.rfind('|'));
  }
  void ScegliFile(const Gesto& gesto, const std::string& percorso) override {
    gesto();
    EXPECT_EQ(finestre::ScegliFile(sotto_.programma, percorso), "Allega file");
  }

 private:
  SottoLaFinestra sotto_;
};

}  // namespace

}  // namespace orve::adapters::win32::finestre

std::unique_ptr<orve::window_contract::Toolkit> orve::window_contract::CreaToolkit() {
  return std::make_unique<adapters::win32::finestre::ToolkitWin32>();
}
