// The errors of the file-system object: automation's numbers for what a system reports.
#pragma once

#include <cstdint>
#include <string_view>

#include "orve-mailserver/host/errore.h"

namespace orve::adapters::values {

enum NumeroErroreFile : std::int32_t {
  kNomeFileNonValido = 52,
  kFileNonTrovato = 53,
  kErroreDispositivo = 57,
  kFileGiaEsistente = 58,
  kDiscoPieno = 61,
  kTroppiFile = 67,
  kPermessoNegato = 70,
  kPercorsoNonTrovato = 76,
};

/// The error with its standard Italian description, followed by the path it concerns.
[[nodiscard]] host::Errore ErroreFile(NumeroErroreFile numero, std::string_view percorso);

}  // namespace orve::adapters::values
