// What a person can do about a stored password or server. The program writes the embedded database alone; in
// the company's own somebody else does.
#pragma once

#include <string>

namespace orve::app {

struct Rimedi {
  explicit Rimedi(bool suOdbc = false);

  std::string password;   // to store a password again
  std::string cifratura;  // to switch TLS on
};

}  // namespace orve::app
