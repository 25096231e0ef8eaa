#include "orve-mail/host/finestre.h"

#include <functional>
#include <utility>

#include "orve-mail/terminal/uscita.h"
#include "orve-mailserver/qt/finestre.h"
#include "posix/oggetto_file.h"

namespace orve::app {

namespace {

constexpr const char* kProgramma = "orve-mail";

// Where the copies of a send go, whose paths the library's statements can take; they are removed with the
// send.
class CopieInvio : public adapters::values::CartellaCopie {
 public:
  explicit CopieInvio(std::shared_ptr<Allegati> allegati) : allegati_(std::move(allegati)) {}
  [[nodiscard]] std::string PostoPer(const std::string& nome) override { return allegati_->PostoPer(nome); }

 private:
  std::shared_ptr<Allegati> allegati_;
};

// A file that is copied is checked first, just as one that is attached in place is checked when it is sent.
// The copy has the file's own name for people.
class FileDellaFinestra : public adapters::posix::OggettoFile {
 public:
  explicit FileDellaFinestra(std::shared_ptr<Allegati> allegati)
      : OggettoFile(std::make_shared<CopieInvio>(allegati),
                    [](const std::string& nativo) {
                      return !Allegati::NomeInnocuo(nativo) || adapters::posix::SuSupportoEsterno(nativo);
                    }),
        allegati_(std::move(allegati)) {}
  [[nodiscard]] std::string Nome() override { return allegati_->NomeVero(Percorso()); }
  void CopiaIn(const std::shared_ptr<host::OggettoFile>& altro, std::int32_t /*opzioni*/) override {
    allegati_->Copia(Percorso(), host::Richiesto(altro).Percorso());
  }

 private:
  std::shared_ptr<Allegati> allegati_;
};

std::function<std::shared_ptr<host::OggettoFile>()> CreatoreFile(std::shared_ptr<Allegati> allegati) {
  if (!allegati) return {};
  return [allegati = std::move(allegati)] { return std::make_shared<FileDellaFinestra>(allegati); };
}

}  // namespace

void RichiediSchermo(const std::string& perche) {
  try {
    adapters::qt::AssicuraApplicazione();
  } catch (const host::Errore& errore) {
    throw ErroreProgramma(Uscita::kNonUtilizzabile, perche + " " + errore.Descrizione());
  }
}

std::shared_ptr<host::Finestre> CreaFinestre(const OsservazioniPtr& note,
                                             std::shared_ptr<Allegati> allegati) {
  return std::make_shared<adapters::qt::Finestre>(adapters::qt::WindowOptions{
      .programma = kProgramma, .creaFile = CreatoreFile(std::move(allegati)), .mostra = [note] {
        ++note->finestreMostrate;
      }});
}

}  // namespace orve::app
