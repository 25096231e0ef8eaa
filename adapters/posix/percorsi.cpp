#include "orve-mailserver/posix/percorsi.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "posix/errori.h"

namespace orve::adapters::posix {

namespace {

void RichiediPercorso(std::string_view percorso) {
  if (percorso.empty() || percorso.find('\0') != std::string_view::npos) {
    throw ErroreFile(kNomeFileNonValido, percorso.substr(0, percorso.find('\0')));
  }
}

}  // namespace

std::string PercorsoUnix(std::string_view percorso) {
  RichiediPercorso(percorso);
  std::string nativo(percorso);
  std::replace(nativo.begin(), nativo.end(), '\\', '/');
  return nativo;
}

std::string PercorsoLibreria(std::string_view percorso) {
  RichiediPercorso(percorso);
  if (percorso.find('\\') != std::string_view::npos) throw ErroreFile(kNomeFileNonValido, percorso);
  std::string libreria(percorso);
  std::replace(libreria.begin(), libreria.end(), '/', '\\');
  return libreria;
}

std::string PercorsoLibreriaAssoluto(std::string_view percorso) {
  RichiediPercorso(percorso);
  std::error_code codice;
  const auto assoluto = std::filesystem::absolute(std::filesystem::path(percorso), codice);
  if (codice) throw ErroreDiSistema(codice.value(), percorso);  // the current folder is gone
  std::string libreria = PercorsoLibreria(assoluto.lexically_normal().native());
  // Nothing comes before the name of a file in the root, and by itself it would be one in the current folder.
  const bool nellaRadice = libreria.size() > 1 && libreria.rfind('\\') == 0;
  return nellaRadice ? "\\." + libreria : libreria;
}

}  // namespace orve::adapters::posix
