// What a person can do about a stored password or server. The program only writes the embedded database; the
// company's own is in other hands.
#pragma once

#include <string>

namespace orve::app {

struct Rimedi {
  explicit Rimedi(bool suOdbc = false);

  std::string password;   // to store a password again
  std::string cifratura;  // to switch TLS on
};

}  // namespace orve::app
