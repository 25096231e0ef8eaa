// The fixture of the contract's tests, over whatever toolkit the program brings.
#pragma once

#include <algorithm>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "channels/channel_traits.h"
#include "dialogs/layouts.h"
#include "window_contract/servizio_con_finestre.h"
#include "window_contract/toolkit.h"

namespace orve::window_contract {

/// The channels that deliver, as a window can be opened for each.
[[nodiscard]] inline std::vector<ChannelTraits> CanaliConFinestra() {
  std::vector<ChannelTraits> canali;
  std::ranges::copy_if(Canali(), std::back_inserter(canali),
                       [](const ChannelTraits& canale) { return canale.consegna != nullptr; });
  return canali;
}

/// Names the tests of a channel.
[[nodiscard]] inline std::string NomeDelCanale(const ::testing::TestParamInfo<ChannelTraits>& caso) {
  return "Canale" + std::to_string(caso.param.numero);
}

struct ConToolkit {
  std::unique_ptr<Toolkit> toolkit = CreaToolkit();
  std::shared_ptr<fakes::FakeAmbiente> ambiente = toolkit->Ambiente();
};

class Contratto : private ConToolkit, public ServizioConFinestre {
 protected:
  Contratto() : ServizioConFinestre(ConToolkit::ambiente) {}

  using ConToolkit::ambiente;
  using ConToolkit::toolkit;

  void Apri(const Persona& persona) {
    toolkit->Mostra(LayoutOpzMail(), persona, [this] { ApreInvio(); });
  }
  void Parametri(const Persona& persona) {
    toolkit->Mostra(LayoutMailParams(), persona, [this] { servizio->ReturnMailParameters(); });
  }
  /// Whether the window is gone soon.
  [[nodiscard]] bool Chiusa(const Vista& finestra) {
    return toolkit->Attende([&] { return !finestra.Aperta(); });
  }
  void Invia(const Vista& finestra) {
    finestra.Clicca("cmd_Invia");
    EXPECT_TRUE(Chiusa(finestra));
  }
  void Allega(const Vista& finestra, const std::string& percorso) {
    toolkit->ScegliFile([&] { finestra.Clicca("KVL_ALLEGA"); }, percorso);
  }
};

/// The same on a screen.
class ContrattoSuSchermo : public Contratto {
 protected:
  ToolkitSuSchermo& schermo = dynamic_cast<ToolkitSuSchermo&>(*toolkit);

  void Apri(const PersonaAlloSchermo& persona) { Contratto::Apri(ConSchermo(persona)); }
  void Parametri(const PersonaAlloSchermo& persona) { Contratto::Parametri(ConSchermo(persona)); }

  static Persona ConSchermo(const PersonaAlloSchermo& persona) {
    return [&persona](const Vista& finestra) { persona(dynamic_cast<const VistaSuSchermo&>(finestra)); };
  }
};

}  // namespace orve::window_contract
