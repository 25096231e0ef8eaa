// A host without windows: what it cannot make, it says so.
#include "host/ambiente.h"

#include "host/errore.h"

namespace orve::host {

std::shared_ptr<Form> Ambiente::CreaForm(const LayoutForm& /*layout*/) {
  throw Errore(kOggettoNonCreabile);
}

std::shared_ptr<ConfigurazioneGriglia> Ambiente::CreaConfigurazioneGriglia() {
  throw Errore(kOggettoNonCreabile);
}

std::shared_ptr<RecordSetScollegato> Ambiente::CreaRecordSetScollegato() {
  throw Errore(kOggettoNonCreabile);
}

std::shared_ptr<SelettoreFile> Ambiente::CreaSelettoreFile() {
  throw Errore(kOggettoNonCreabile);
}

std::shared_ptr<OggettoFile> Ambiente::CreaOggettoFile() {
  throw Errore(kOggettoNonCreabile);
}

std::shared_ptr<CollezioneFile> Ambiente::CreaCollezioneFile() {
  throw Errore(kOggettoNonCreabile);
}

std::shared_ptr<CLSFW_Parametri> Ambiente::CreaParametri() {
  throw Errore(kOggettoNonCreabile);
}

}  // namespace orve::host
