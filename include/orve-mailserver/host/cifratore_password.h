// The password class of the host application. Text to text, without state; its cipher is the host's own
// business.
#pragma once

#include <string>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/oggetto.h"

namespace orve::host {

/// What enciphers the passwords of accounts. Nothing of it is kept by the library.
class ORVE_API CifratorePassword : public Oggetto {
 public:
  /// The enciphered text.
  [[nodiscard]] virtual std::string Cripta(const std::string& testo) = 0;
  /// The clear text; raises an error when Cripta did not produce the text.
  [[nodiscard]] virtual std::string Decripta(const std::string& testo) = 0;
};

}  // namespace orve::host
