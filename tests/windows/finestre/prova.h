// What the tests of the real windows share: the service over fakes with windows of Win32.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "dialogs/layouts.h"
#include "persona.h"
#include "win32/finestre/finestre.h"
#include "window_contract/servizio_con_finestre.h"

namespace orve::adapters::win32::finestre {

using fakes::RigaAccount;
using window_contract::CartellaDiProva;

using AmbienteConFinestre = window_contract::AmbienteConFinestre<Finestre>;

/// What the service of FinestraVera is over.
struct SottoLaFinestra {
  Programma programma;
  CartellaDiProva cartella;
  bool vaCopiato = false;   // what Posizione says of every file
  bool accettaFile = true;  // whether files can be dropped
  std::shared_ptr<AmbienteConFinestre> ambiente = std::make_shared<AmbienteConFinestre>(
      WindowOptions{.cartellaCopie = cartella.Radice(),
                    .vaCopiato = [this](const std::string&) { return vaCopiato; },
                    .accettaFile = [this] { return accettaFile; }});
};

class FinestraVera : protected SottoLaFinestra, public window_contract::ServizioConFinestre {
 protected:
  using Azione = std::function<void(const Vista&)>;

  FinestraVera() : ServizioConFinestre(ambiente) {}

  /// The service opens the compose window and the person acts in it; what is still open then is closed.
  void Apri(Azione persona);
  /// The same of the parameters window.
  void Parametri(Azione persona);
};

}  // namespace orve::adapters::win32::finestre
