#include "orve-mail/host/finestre.h"

#include <functional>
#include <utility>

#include "orve-mail/terminal/uscita.h"
#include "orve-mailserver/qt/finestre.h"
#include "posix/oggetto_file.h"

namespace orve::app {

namespace {

constexpr const char* kProgramma = "orve-mail";

// A file that is copied is checked first, just as one that is attached in place is checked when it is sent.
// The copy has a path that the library's statements can take and the file's own name for people, and is
// removed with the send.
class FileDellaFinestra : public adapters::posix::OggettoFile {
 public:
  explicit FileDellaFinestra(std::shared_ptr<Allegati> allegati)
      : OggettoFile(nullptr,
                    [](const std::string& nativo) {
                      return !Allegati::NomeInnocuo(nativo) || adapters::posix::SuSupportoEsterno(nativo);
                    }),
        allegati_(std::move(allegati)) {}
  [[nodiscard]] std::string Nome() override { return allegati_->NomeVero(Percorso()); }
  void CopiaIn(const std::shared_ptr<host::OggettoFile>& altro, std::int32_t /*opzioni*/) override {
    allegati_->Copia(Percorso(), host::Richiesto(altro).Percorso());
  }
  void Crea(std::int32_t tipo, const std::string& nome, const std::string& /*testo*/,
            std::int32_t opzioni) override {
    if (tipo != kCopia) throw host::Errore(host::kArgomentoNonValido);
    const std::string posto = allegati_->PostoPer(nome);
    const auto ultima = posto.rfind('\\');
    Apri(posto.substr(ultima + 1), posto.substr(0, ultima), opzioni);
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
