// The host's path resolver on Unix: where temporary files go, where the program lies, and what a configured
// path means.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "host/risolutore_percorsi.h"

namespace orve::app {

class RisolutorePercorsiUnix : public host::RisolutorePercorsi {
 public:
  /// `cartellaBase`: the folder, in the form of Unix, from which a relative configured path counts.
  /// `senzaTemporanea` is called when the temporary directory is asked for and there is none.
  explicit RisolutorePercorsiUnix(std::string cartellaBase, std::function<void()> senzaTemporanea = {});

  void ChiudiPercorsi() override;
  /// 8 the temporary directory, or a path at which nothing can be where there is none; 6 the program's own.
  /// Raises 5 for any other kind.
  void ImpostaTipoPercorso(std::int32_t tipo, const std::string& testo) override;
  [[nodiscard]] std::string Percorso() const override;
  /// An empty or blank path means the temporary directory; "~" in front means the home of the user; a
  /// relative path counts from the base folder. The folder need not exist, and is not made.
  void ImpostaPercorso(const std::string& percorso, bool indicatore) override;

 private:
  [[nodiscard]] std::string CartellaTemporanea() const;

  std::string cartellaBase_;
  std::function<void()> senzaTemporanea_;
  std::string percorso_;
};

/// A folder for temporary files that belongs to this user alone, made if missing, in the form of Unix: below
/// $TMPDIR where that is set, else below the user's runtime directory ($XDG_RUNTIME_DIR), else below /tmp.
/// Where somebody else has taken the name, the one below the user's state directory ($XDG_STATE_HOME,
/// ~/.local/state); none where that cannot be made either.
[[nodiscard]] std::optional<std::string> CartellaTemporaneaDiSistema();

/// The folder of the running program.
[[nodiscard]] std::string CartellaDelProgramma();

}  // namespace orve::app
