// What a send leaves in the application's register and in its event system: one line and one event for each
// recipient, whatever its box.
#pragma once

#include <string>
#include <string_view>

namespace orve {

/// What all lines of one send have in common, as the channel words it.
struct RigheInvio {
  std::string_view apertura;  // between name and address of a recipient: "<" or " <"
  std::string allegati;
  std::string oggetto;
};

}  // namespace orve
