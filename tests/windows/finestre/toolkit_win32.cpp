// The windows of Windows, for the tests of the window contract.
#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

#include "prova.h"
#include "window_contract/toolkit.h"

namespace orve::adapters::win32::finestre {

namespace {

using window_contract::Gesto;
using window_contract::Risposta;

int Pulsante(Risposta risposta) {
  return risposta == Risposta::kOk ? IDOK : risposta == Risposta::kSi ? IDYES : IDNO;
}

// Of buttons given as "id;id;".
std::vector<Risposta> Risposte(const std::string& identificatori) {
  std::vector<Risposta> risposte;
  std::istringstream flusso(identificatori);
  for (std::string uno; std::getline(flusso, uno, ';');) {
    for (const auto risposta : {Risposta::kOk, Risposta::kSi, Risposta::kNo}) {
      if (uno == std::to_string(Pulsante(risposta))) risposte.push_back(risposta);
    }
  }
  EXPECT_EQ(std::count(identificatori.begin(), identificatori.end(), ';'),
            static_cast<std::ptrdiff_t>(risposte.size()))
      << identificatori;
  return risposte;
}

class ToolkitWin32 final : public window_contract::ToolkitSuSchermo {
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
    Vede(programma, testo, risposta, nullptr);
  }
  window_contract::MessaggioVisto Vede(const Gesto& programma, const std::string& testo, Risposta risposta,
                                       const Gesto& prima) override {
    window_contract::MessaggioVisto visto;
    const auto risponde = [&] {
      const std::string detto =
          finestre::Risponde(sotto_.programma, testo, Pulsante(risposta), prima, &visto.padrone);
      visto.titolo = detto.substr(0, detto.rfind('|'));
      visto.pulsanti = Risposte(detto.substr(detto.rfind('|') + 1));
    };
    if (GetCurrentThreadId() == sotto_.programma.Filo()) {
      const Compagno qualcuno(risponde);
      programma();
    } else {
      programma();
      risponde();
    }
    return visto;
  }
  bool PuntatoreAttende() const override {
    return GetCursor() == LoadCursorW(nullptr, MAKEINTRESOURCEW(32514));  // IDC_WAIT
  }
  void NelProgramma(const Gesto& azione) override {
    if (GetCurrentThreadId() != sotto_.programma.Filo()) sotto_.programma.Respira();
    sotto_.programma.Esegui(azione);
  }
  bool Attende(const std::function<bool()>& condizione) override { return Attendi(condizione); }
  std::string Risponde(const Gesto& gesto, const std::string& testo, Risposta risposta) override {
    const auto visto = Vede(gesto, testo, risposta, nullptr);
    const std::vector<Risposta> pulsanti =
        risposta == Risposta::kOk ? std::vector{Risposta::kOk} : std::vector{Risposta::kSi, Risposta::kNo};
    EXPECT_EQ(visto.pulsanti, pulsanti);
    return visto.titolo;
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
