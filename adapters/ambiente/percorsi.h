// The host's path resolver on Unix: where temporary files go, where the program is, and what a configured
// path means.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "orve-mailserver/host/risolutore_percorsi.h"

namespace orve::adapters::ambiente {

class RisolutorePercorsiUnix : public host::RisolutorePercorsi {
 public:
  /// `programma` names the temporary directory. `cartellaBase`: the folder, as a Unix path, that a relative
  /// configured path starts from. `senzaTemporanea` is called when the temporary directory is requested and
  /// there is none.
  RisolutorePercorsiUnix(std::string programma, std::string cartellaBase,
                         std::function<void()> senzaTemporanea = {});

  void ChiudiPercorsi() override;
  /// 8: the temporary directory or, if there is none, a path where nothing can exist; 6: the program's own.
  /// Raises 5 for any other kind.
  void ImpostaTipoPercorso(std::int32_t tipo, const std::string& testo) override;
  [[nodiscard]] std::string Percorso() const override;
  /// An empty or blank path means the temporary directory; a leading "~" means the user's home; a relative
  /// path starts from the base folder. The folder need not exist, and is not created.
  void ImpostaPercorso(const std::string& percorso, bool indicatore) override;

 private:
  [[nodiscard]] std::string CartellaTemporanea() const;

  std::string programma_;
  std::string cartellaBase_;
  std::function<void()> senzaTemporanea_;
  std::string percorso_;
};

/// A folder for temporary files, named after the program, that belongs to this user alone, created if
/// missing, as a Unix path: below $TMPDIR where that is set, else below the user's runtime directory
/// ($XDG_RUNTIME_DIR), else below /tmp. If somebody else has taken the name, the one below the user's state
/// directory ($XDG_STATE_HOME, ~/.local/state); none if that cannot be created either.
[[nodiscard]] std::optional<std::string> CartellaTemporaneaDiSistema(const std::string& programma);

/// The folder of the running program.
[[nodiscard]] std::string CartellaDelProgramma();

}  // namespace orve::adapters::ambiente
