// The host's password class: authenticated encryption with the key of the installation.
#pragma once

#include <memory>
#include <string>

#include "host/cifratore_password.h"
#include "orve-mail/chiave.h"

namespace orve::app {

/// Texts have the form "orve1:" and base64 of a random nonce with the box; the same password never gives the
/// same text twice. No error names a password.
class CifratoreSodium : public host::CifratorePassword {
 public:
  explicit CifratoreSodium(std::shared_ptr<const Chiave> chiave);

  [[nodiscard]] std::string Cripta(const std::string& testo) override;
  /// Raises 5 for a text that Cripta did not make, was changed since, or was made with another key.
  [[nodiscard]] std::string Decripta(const std::string& testo) override;

 private:
  std::shared_ptr<const Chiave> chiave_;
};

}  // namespace orve::app
