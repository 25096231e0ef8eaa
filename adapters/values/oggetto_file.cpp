#include "values/oggetto_file.h"

#include "orve-mailserver/host/errore.h"

namespace orve::adapters::values {

std::string OggettoFile::Percorso() {
  if (percorso_.empty()) throw host::Errore(host::kOggettoNonImpostato);
  return percorso_;
}

std::string OggettoFile::Nome() {
  const std::string percorso = Percorso();
  return percorso.substr(percorso.find_last_of("\\/") + 1);
}

void OggettoFile::Crea(std::int32_t tipo, const std::string& nome, const std::string& /*testo*/,
                       std::int32_t /*opzioni*/) {
  if (tipo != kCopia) throw host::Errore(host::kArgomentoNonValido);
  percorso_ = host::Richiesto(copie_).PostoPer(nome);
}

std::int32_t OggettoFile::Posizione() {
  return vaCopiato_ && vaCopiato_(Nativo()) ? static_cast<std::int32_t>(kDaCopiare) : 0;
}

void OggettoFile::Apri(const std::string& nome, const std::string& cartella, std::int32_t /*opzioni*/) {
  percorso_ = cartella.empty() ? nome : cartella + "\\" + nome;
}

void OggettoFile::ApriPercorso(const std::string& cartella, const std::string& nome,
                               const std::string& /*testo*/, std::int32_t /*opzioni*/) {
  // In a path in the root the text before the last `\` is empty, yet the folder is the root.
  percorso_ = cartella + "\\" + nome;
}

}  // namespace orve::adapters::values
