#include "values/collezione_file.h"

#include "orve-mailserver/host/errore.h"

namespace orve::adapters::values {

std::shared_ptr<host::OggettoFile> CollezioneInMemoria::Item(std::int32_t posizione) {
  return file_[Indice(posizione)];
}

void CollezioneInMemoria::Remove(std::int32_t posizione) {
  file_.erase(file_.begin() + static_cast<std::ptrdiff_t>(Indice(posizione)));
}

std::size_t CollezioneInMemoria::Indice(std::int32_t posizione) const {
  const bool esiste = posizione >= 0 && static_cast<std::size_t>(posizione) < file_.size();
  if (!esiste) throw host::Errore(host::kIndiceFuoriIntervallo);
  return static_cast<std::size_t>(posizione);
}

}  // namespace orve::adapters::values
