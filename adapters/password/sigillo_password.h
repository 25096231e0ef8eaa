// Stored passwords: enciphered with the key of the installation and bound to the login and the server that
// they are for, so that somebody who can write the database but has no key cannot have them sent elsewhere.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "orve-mailserver/secrets/secret.h"
#include "password/chiave.h"

namespace orve::adapters::password {

/// The name of a server as it is compared: without surrounding blanks and in lower case.
[[nodiscard]] std::string NomeServer(std::string_view server);

/// For whom and where a password is valid.
struct LegamePassword {
  std::string utente;
  std::string server;
  std::uint16_t porta = 25;
  bool tls = false;

  /// As a person reads it: "posta.example.net, porta 587, TLS".
  [[nodiscard]] std::string Dove() const;
  /// The same login at the same server, ignoring blanks and case in the server's name.
  [[nodiscard]] bool operator==(const LegamePassword& altro) const;
};

/// Texts have the form "orve2:" and base64 of a random nonce with the authenticated box; the same password
/// never gives the same text twice. Texts of the form "orve1:" date from before passwords were bound, and
/// only keys of that time open them, for any server. No error names a password.
class SigilloPassword {
 public:
  /// `chiave` absent: nothing can be sealed or opened (91).
  explicit SigilloPassword(std::shared_ptr<const Chiave> chiave);

  [[nodiscard]] std::string Sigilla(std::string_view password, const LegamePassword& legame) const;
  /// Raises 5 for a text that is not sealed, has been changed since, was sealed with another key or is bound
  /// elsewhere.
  [[nodiscard]] secrets::Secret Apri(std::string_view testo, const LegamePassword& legame) const;

  /// Whether the text claims to be sealed, in whatever version: such a text is never a password itself.
  [[nodiscard]] static bool Sigillato(std::string_view testo);
  /// Whether it is of the kind that is bound to nothing.
  [[nodiscard]] static bool SenzaLegame(std::string_view testo);

 private:
  std::shared_ptr<const Chiave> chiave_;
};

}  // namespace orve::adapters::password
