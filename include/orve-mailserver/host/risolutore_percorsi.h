// The path resolver of the host library: system directories and configured paths. Created for each use.
#pragma once

#include <cstdint>
#include <string>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/oggetto.h"

namespace orve::host {

/// The kinds of system directory.
enum TipoPercorso : std::int32_t { kPercorsoInstallazione = 6, kPercorsoTemporaneo = 8 };

/// One path at a time: set what is wanted, then read it.
class ORVE_API RisolutorePercorsi : public Oggetto {
 public:
  /// Ends the use of the object.
  virtual void ChiudiPercorsi() = 0;
  /// Selects a system directory; the text is always empty here.
  virtual void ImpostaTipoPercorso(std::int32_t tipo, const std::string& testo) = 0;
  /// The resolved directory, with `\` between its components.
  [[nodiscard]] virtual std::string Percorso() const = 0;
  /// Sets a path as configured; the flag is always true here.
  virtual void ImpostaPercorso(const std::string& percorso, bool indicatore) = 0;
};

}  // namespace orve::host
