// Binds the passwords that date from before passwords were bound to their servers.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "orve-mail/host/archivio.h"
#include "orve-mail/secrets/password_memorizzate.h"
#include "password/sigillo_password.h"

namespace orve::app {

/// Why a password stays unbound.
enum class Slegata {
  kNonSiApre,    // unusable with this key
  kCopiata,      // every box has a nonce of its own: the same text in two rows was copied by somebody
  kSenzaServer,  // bound to the defaults, it would be lost when the account gets its server
  kNonScritta,   // the database accepts no changes, or the text was changed meanwhile
};

struct PasswordSlegata {
  PasswordMemorizzata password;
  Slegata perche;
};

struct Legatura {
  std::size_t cifrate = 0;                     // bound or not
  std::vector<PasswordMemorizzata> riscritte;  // now bound to what is in the database
  std::vector<PasswordSlegata> rimaste;

  /// Whether some text is left that opens for any server.
  [[nodiscard]] bool RestaAperta() const;
};

/// Binds what can be bound; only the embedded database is written. Raises host::Errore when the accounts
/// cannot be read.
[[nodiscard]] Legatura LegaPassword(const Archivio& archivio, const SigilloPassword& sigillo);

}  // namespace orve::app
