// What the tests of the scripts ask about the processes of the machine.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace orve::app {

/// Whether any process was started with this text in its arguments.
inline bool QualcunoUsa(const std::string& testo) {
  for (const auto& voce : std::filesystem::directory_iterator("/proc")) {
    std::ifstream riga(voce.path() / "cmdline", std::ios::binary);
    const std::string argomenti{std::istreambuf_iterator<char>(riga), {}};
    if (argomenti.find(testo) != std::string::npos) return true;
  }
  return false;
}

}  // namespace orve::app
