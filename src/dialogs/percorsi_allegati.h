// Paths with `\` between their components, split as the windows need them.
#pragma once

#include <string>
#include <string_view>

namespace orve {

struct PercorsoDiviso {
  std::string cartella;  // without the "\" before the name; empty for a path without one
  std::string nome;
};

[[nodiscard]] inline PercorsoDiviso DividiPercorso(std::string_view percorso) {
  const auto ultima = percorso.rfind('\\');
  if (ultima == std::string_view::npos) return {{}, std::string(percorso)};
  return {std::string(percorso.substr(0, ultima)), std::string(percorso.substr(ultima + 1))};
}

}  // namespace orve
