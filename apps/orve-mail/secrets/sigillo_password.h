// Stored passwords: enciphered with the key of the installation and bound to the login and the server that
// they are for, so that whoever can write the database but has no key cannot send them elsewhere.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "orve-mail/secrets/chiave.h"
#include "secrets/secret.h"

namespace orve::app {

/// The name of a server as it is compared: without blanks around it and in small letters.
[[nodiscard]] std::string NomeServer(std::string_view server);

/// For whom and where a password is good.
struct LegamePassword {
  std::string utente;
  std::string server;
  std::uint16_t porta = 25;
  bool tls = false;

  /// As a person reads it: "posta.example.net, porta 587, TLS".
  [[nodiscard]] std::string Dove() const;
  /// The same login at the same server, however blanks and letters of the server's name are written.
  [[nodiscard]] bool operator==(const LegamePassword& altro) const;
};

/// Texts have the form "orve2:" and base64 of a random nonce with the authenticated box; the same password
/// never gives the same text twice. Texts of the form "orve1:" come from before passwords were bound, and are
/// opened for any server by keys of that time alone. No error names a password.
class SigilloPassword {
 public:
  /// `chiave` absent: nothing can be sealed or opened (91).
  explicit SigilloPassword(std::shared_ptr<const Chiave> chiave);

  [[nodiscard]] std::string Sigilla(std::string_view password, const LegamePassword& legame) const;
  /// Raises 5 for a text that is not sealed, was changed since, was sealed with another key or is bound
  /// elsewhere.
  [[nodiscard]] adapters::secrets::Secret Apri(std::string_view testo, const LegamePassword& legame) const;

  /// Whether the text claims to be sealed, in whatever version: such a text is never a password itself.
  [[nodiscard]] static bool Sigillato(std::string_view testo);
  /// Whether it is of the kind that is bound to nothing.
  [[nodiscard]] static bool SenzaLegame(std::string_view testo);

 private:
  std::shared_ptr<const Chiave> chiave_;
};

}  // namespace orve::app
