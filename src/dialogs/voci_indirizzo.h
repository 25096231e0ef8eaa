// The strict reading of an address box: purely positional, without trimming and without checking the address.
#pragma once

#include <string_view>

namespace orve {

/// One entry of a box.
struct VoceIndirizzo {
  std::string_view indirizzo;
  std::string_view nome;
  bool conNome = false;  // the entry has a "<", so the text before it is a name, even an empty one
};

/// A name, "<", an address and ">", with whatever follows ignored, or a bare address. Anything else gives an
/// empty address.
[[nodiscard]] VoceIndirizzo LeggiVoceIndirizzo(std::string_view voce);

}  // namespace orve
