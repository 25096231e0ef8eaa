// A host without windows: it says what it cannot make.
#include "orve-mailserver/host/ambiente.h"

#include <string>
#include <string_view>

#include "orve-mailserver/host/errore.h"

namespace orve::host {

void Ambiente::NonCreabile(std::string_view oggetto) {
  throw Errore(kOggettoNonCreabile, "ORVE_MAILSERVER",
               "Impossibile creare l'oggetto " + std::string(oggetto));
}

std::shared_ptr<Form> Ambiente::CreaForm(const LayoutForm& layout) {
  NonCreabile(layout.nome);
}

std::shared_ptr<ConfigurazioneGriglia> Ambiente::CreaConfigurazioneGriglia() {
  NonCreabile("ConfigurazioneGriglia");
}

std::shared_ptr<RecordSetScollegato> Ambiente::CreaRecordSetScollegato() {
  NonCreabile("RecordSetScollegato");
}

std::shared_ptr<SelettoreFile> Ambiente::CreaSelettoreFile() {
  NonCreabile("SelettoreFile");
}

std::shared_ptr<OggettoFile> Ambiente::CreaOggettoFile() {
  NonCreabile("OggettoFile");
}

std::shared_ptr<CollezioneFile> Ambiente::CreaCollezioneFile() {
  NonCreabile("CollezioneFile");
}

std::shared_ptr<CLSFW_Parametri> Ambiente::CreaParametri() {
  NonCreabile("CLSFW_Parametri");
}

OsservatoreInvio& Ambiente::Osservatore() {
  static OsservatoreInvio nessuno;  // has no state
  return nessuno;
}

}  // namespace orve::host
