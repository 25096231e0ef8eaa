// The host's path resolver on Unix: where temporary files go, where the program lies, and what a configured
// path means.
#pragma once

#include <cstdint>
#include <string>

#include "host/risolutore_percorsi.h"

namespace orve::app {

class RisolutorePercorsiUnix : public host::RisolutorePercorsi {
 public:
  /// `cartellaBase`: the folder, in the form of Unix, from which a relative configured path counts.
  explicit RisolutorePercorsiUnix(std::string cartellaBase);

  void ChiudiPercorsi() override;
  /// 8 the temporary directory, 6 the program's own; raises 5 for any other kind.
  void ImpostaTipoPercorso(std::int32_t tipo, const std::string& testo) override;
  [[nodiscard]] std::string Percorso() const override;
  /// An empty or blank path means the temporary directory; "~" in front means the home of the user; a
  /// relative path counts from the base folder. The folder need not exist, and is not made.
  void ImpostaPercorso(const std::string& percorso, bool indicatore) override;

 private:
  std::string cartellaBase_;
  std::string percorso_;
};

/// A folder for temporary files that belongs to this user alone, below $TMPDIR or /tmp, made if missing, in
/// the form of Unix. Raises 70 when somebody else owns what lies there or may write in it, 76 when it cannot
/// be made.
[[nodiscard]] std::string CartellaTemporaneaDiSistema();

/// The folder of the running program.
[[nodiscard]] std::string CartellaDelProgramma();

}  // namespace orve::app
