#include "win32/finestre/finestre.h"

#include <utility>

#include "forms/righe_griglia.h"
#include "values/collezione_file.h"
#include "values/record_set_in_memoria.h"
#include "win32/finestre/form_win32.h"
#include "win32/finestre/messaggi.h"
#include "win32/finestre/oggetto_file.h"
#include "win32/finestre/selettore_file.h"

namespace orve::adapters::win32::finestre {

struct Finestre::Comune {
  explicit Comune(WindowOptions scelte)
      : opzioni(std::move(scelte)), copie(std::make_shared<CartellaCopie>(opzioni.cartellaCopie)) {}

  [[nodiscard]] std::shared_ptr<host::OggettoFile> CreaFile() const {
    return opzioni.vaCopiato ? std::make_shared<OggettoFile>(copie, opzioni.vaCopiato)
                             : std::make_shared<OggettoFile>(copie);
  }

  WindowOptions opzioni;
  std::shared_ptr<CartellaCopie> copie;
  std::shared_ptr<forms::FileLasciati> lasciati = std::make_shared<forms::FileLasciati>();
};

Finestre::Finestre(WindowOptions opzioni) : comune_(std::make_shared<Comune>(std::move(opzioni))) {}
Finestre::~Finestre() = default;

std::shared_ptr<host::Form> Finestre::CreaForm(const host::LayoutForm& layout) {
  const auto& accettaFile = comune_->opzioni.accettaFile;
  return std::make_shared<FormWin32>(layout, !accettaFile || accettaFile() ? comune_->lasciati : nullptr);
}

std::shared_ptr<host::ConfigurazioneGriglia> Finestre::CreaConfigurazioneGriglia() {
  return std::make_shared<forms::ConfigurazioneGriglia>();
}

std::shared_ptr<host::RecordSetScollegato> Finestre::CreaRecordSetScollegato() {
  return std::make_shared<values::RecordSetInMemoria>();
}

std::shared_ptr<host::SelettoreFile> Finestre::CreaSelettoreFile() {
  return CreaSelettore(comune_->lasciati, [comune = comune_] { return comune->CreaFile(); });
}

std::shared_ptr<host::OggettoFile> Finestre::CreaOggettoFile() {
  return comune_->CreaFile();
}

std::shared_ptr<host::CollezioneFile> Finestre::CreaCollezioneFile() {
  return std::make_shared<values::CollezioneInMemoria>();
}

std::shared_ptr<host::Messaggi> Finestre::CreaMessaggi() {
  return finestre::CreaMessaggi(comune_->opzioni.programma);
}

}  // namespace orve::adapters::win32::finestre
