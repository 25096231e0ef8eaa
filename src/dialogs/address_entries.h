// The strict reading of an address box: purely positional, without trimming and without a look at the
// address.
#pragma once

#include <string_view>

namespace orve {

/// One entry of a box.
struct VoceIndirizzo {
  std::string_view indirizzo;
  std::string_view nome;
  bool conNome = false;  // a "<" stands in the entry, so that the text before it is a name, be it empty
};

/// A name, "<", an address and ">", with whatever follows ignored, or a bare address. What is neither gives
/// an empty address.
[[nodiscard]] VoceIndirizzo LeggiVoceIndirizzo(std::string_view voce);

}  // namespace orve
