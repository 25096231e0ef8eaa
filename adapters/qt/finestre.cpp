#include "orve-mailserver/qt/finestre.h"

#include <utility>

#include "forms/righe_griglia.h"
#include "posix/oggetto_file.h"
#include "qt/form_qt.h"
#include "qt/messaggi.h"
#include "qt/selettore_file.h"
#include "values/collezione_file.h"
#include "values/record_set_in_memoria.h"

namespace orve::adapters::qt {

struct Finestre::Comune {
  explicit Comune(WindowOptions scelte)
      : opzioni(std::move(scelte)), copie(std::make_shared<posix::CartellaCopie>(opzioni.cartellaCopie)) {}

  [[nodiscard]] std::shared_ptr<host::OggettoFile> CreaFile() const {
    if (opzioni.creaFile) return opzioni.creaFile();
    return opzioni.vaCopiato ? std::make_shared<posix::OggettoFile>(copie, opzioni.vaCopiato)
                             : std::make_shared<posix::OggettoFile>(copie);
  }

  WindowOptions opzioni;
  std::shared_ptr<posix::CartellaCopie> copie;
  std::shared_ptr<forms::FileLasciati> lasciati = std::make_shared<forms::FileLasciati>();
};

Finestre::Finestre(WindowOptions opzioni) : comune_(std::make_shared<Comune>(std::move(opzioni))) {}
Finestre::~Finestre() = default;

std::shared_ptr<host::Form> Finestre::CreaForm(const host::LayoutForm& layout) {
  AssicuraApplicazione();
  return std::make_shared<FormQt>(layout, comune_->lasciati, comune_->opzioni.mostra);
}

std::shared_ptr<host::ConfigurazioneGriglia> Finestre::CreaConfigurazioneGriglia() {
  return std::make_shared<forms::ConfigurazioneGriglia>();
}

std::shared_ptr<host::RecordSetScollegato> Finestre::CreaRecordSetScollegato() {
  return std::make_shared<values::RecordSetInMemoria>();
}

std::shared_ptr<host::SelettoreFile> Finestre::CreaSelettoreFile() {
  AssicuraApplicazione();
  return CreaSelettore(comune_->lasciati, [comune = comune_] { return comune->CreaFile(); });
}

std::shared_ptr<host::OggettoFile> Finestre::CreaOggettoFile() {
  return comune_->CreaFile();
}

std::shared_ptr<host::CollezioneFile> Finestre::CreaCollezioneFile() {
  return std::make_shared<values::CollezioneInMemoria>();
}

std::shared_ptr<host::Messaggi> Finestre::CreaMessaggi() {
  return qt::CreaMessaggi(comune_->opzioni.programma);
}

}  // namespace orve::adapters::qt
