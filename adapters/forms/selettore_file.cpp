#include "forms/selettore_file.h"

#include <utility>

#include "orve-mailserver/host/errore.h"

namespace orve::adapters::forms {

SelettoreFile::SelettoreFile(std::shared_ptr<FileLasciati> lasciati, CreatoreFile creaFile)
    : lasciati_(std::move(lasciati)), creaFile_(std::move(creaFile)) {}

std::int32_t SelettoreFile::Mostra(std::int32_t /*opzioni*/) {
  scelto_.reset();
  std::string file;
  if (lasciati_->empty()) {
    file = Chiede(titolo_);
  } else {
    file = std::move(lasciati_->front());
    lasciati_->pop_front();
  }
  if (file.empty()) return 0;
  const std::string percorso = PerLibreria(file);
  const auto ultima = percorso.rfind('\\');
  if (ultima == std::string::npos) throw host::Errore(host::kArgomentoNonValido);
  scelto_ = creaFile_();
  scelto_->ApriPercorso(percorso.substr(0, ultima), percorso.substr(ultima + 1), "", 0);
  return kConfermato;
}

}  // namespace orve::adapters::forms
