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

using window_contract::CartellaDiProva;
using window_contract::RigaAccount;

class AmbienteConFinestre : public window_contract::AmbienteConFinestre<Finestre> {
 public:
  using window_contract::AmbienteConFinestre<Finestre>::AmbienteConFinestre;
  std::shared_ptr<host::Form> CreaForm(const host::LayoutForm& layout) override {
    return finestre.CreaForm(layout, accettaFile);
  }

  bool accettaFile = true;
};

/// What the service of FinestraVera is over.
struct SottoLaFinestra {
  Programma programma;
  CartellaDiProva cartella;
  bool vaCopiato = false;  // what Posizione says of every file
  std::shared_ptr<AmbienteConFinestre> ambiente = std::make_shared<AmbienteConFinestre>(WindowOptions{
      .cartellaCopie = cartella.Radice(), .vaCopiato = [this](const std::string&) { return vaCopiato; }});
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
