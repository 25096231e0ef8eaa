// What the tests of the real windows share: the service over fakes with windows of Qt.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "mani.h"
#include "orve-mailserver/qt/finestre.h"
#include "window_contract/servizio_con_finestre.h"

namespace orve::adapters::qt {

using fakes::RigaAccount;
using window_contract::CartellaDiProva;

/// A Unix path in the library's form.
[[nodiscard]] std::string PerLibreria(std::string percorso);

/// And back.
[[nodiscard]] std::string PerSistema(std::string percorso);

using AmbienteConFinestre = window_contract::AmbienteConFinestre<Finestre>;

/// What the service of FinestraVera is over.
struct SottoLaFinestra {
  using CreaAmbiente = std::function<std::shared_ptr<AmbienteConFinestre>(WindowOptions)>;
  explicit SottoLaFinestra(const CreaAmbiente& crea);

  CartellaDiProva cartella;
  bool vaCopiato = false;  // what Posizione says of every file
  std::shared_ptr<AmbienteConFinestre> ambiente;
};

class FinestraVera : protected SottoLaFinestra, public window_contract::ServizioConFinestre {
 protected:
  FinestraVera();
  explicit FinestraVera(const CreaAmbiente& crea);

  /// The service opens the compose window and the person acts in it; what is still open then is closed.
  void Apri(Regia::Passo persona);

  Regia regia;
};

}  // namespace orve::adapters::qt
