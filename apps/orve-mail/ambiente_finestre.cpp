#include "orve-mail/ambiente_finestre.h"

#include <functional>
#include <utility>

#include "orve-mail/parametri_corpo.h"
#include "orve-mail/uscita.h"
#include "posix/oggetto_file.h"

namespace orve::app {

namespace {

constexpr const char* kProgramma = "orve-mail";

// On the terminal or in a box, as it stands when the message comes.
class MessaggiDovePuoLeggerli : public host::Messaggi {
 public:
  MessaggiDovePuoLeggerli(std::shared_ptr<host::Messaggi> terminale, std::shared_ptr<host::Messaggi> finestre,
                          std::shared_ptr<const std::weak_ptr<host::Form>> ultima)
      : terminale_(std::move(terminale)), finestre_(std::move(finestre)), ultima_(std::move(ultima)) {}
  std::string TitoloFinestra(const std::string& testo) override { return Quelli().TitoloFinestra(testo); }
  std::int32_t MostraMsg(const std::string& testo, std::int32_t stile, const std::string& titolo,
                         const std::shared_ptr<host::Oggetto>& proprietario) override {
    return Quelli().MostraMsg(testo, stile, titolo, proprietario);
  }

 private:
  [[nodiscard]] host::Messaggi& Quelli() const { return ultima_->expired() ? *terminale_ : *finestre_; }

  std::shared_ptr<host::Messaggi> terminale_;
  std::shared_ptr<host::Messaggi> finestre_;
  std::shared_ptr<const std::weak_ptr<host::Form>> ultima_;
};

// A file of the window's under a path that the library's statements can take, with its own name for people.
class FileDellaFinestra : public host::OggettoFile {
 public:
  FileDellaFinestra(std::shared_ptr<host::OggettoFile> vero, std::shared_ptr<Allegati> allegati)
      : vero_(std::move(vero)), allegati_(std::move(allegati)) {}
  [[nodiscard]] std::string Nome() override { return allegati_->NomeVero(vero_->Percorso()); }
  [[nodiscard]] bool Esiste() override { return vero_->Esiste(); }
  void Chiudi() override { vero_->Chiudi(); }
  void CopiaIn(const std::shared_ptr<host::OggettoFile>& altro, std::int32_t opzioni) override {
    vero_->CopiaIn(altro, opzioni);
  }
  void Crea(std::int32_t tipo, const std::string& nome, const std::string& testo,
            std::int32_t opzioni) override {
    if (tipo != kCopia || Allegati::NomeInnocuo(nome)) return vero_->Crea(tipo, nome, testo, opzioni);
    const std::string posto = allegati_->PostoPer(nome);
    const auto ultima = posto.rfind('\\');
    vero_->Apri(posto.substr(ultima + 1), posto.substr(0, ultima), 0);
  }
  [[nodiscard]] std::string Percorso() override { return vero_->Percorso(); }
  [[nodiscard]] std::int32_t Posizione() override { return vero_->Posizione(); }
  void Apri(const std::string& nome, const std::string& cartella, std::int32_t opzioni) override {
    vero_->Apri(nome, cartella, opzioni);
  }
  void ApriPercorso(const std::string& cartella, const std::string& nome, const std::string& testo,
                    std::int32_t opzioni) override {
    vero_->ApriPercorso(cartella, nome, testo, opzioni);
  }

 private:
  std::shared_ptr<host::OggettoFile> vero_;
  std::shared_ptr<Allegati> allegati_;
};

std::function<bool(const std::string&)> VaCopiato(bool perLaLibreria) {
  if (!perLaLibreria) return {};
  return [](const std::string& nativo) {
    return !Allegati::NomeInnocuo(nativo) || adapters::posix::SuSupportoEsterno(nativo);
  };
}

}  // namespace

void RichiediSchermo(const std::string& perche) {
  try {
    adapters::qt::AssicuraApplicazione();
  } catch (const host::Errore& errore) {
    throw ErroreProgramma(Uscita::kNonUtilizzabile, perche + " " + errore.Descrizione());
  }
}

AmbienteFinestre::AmbienteFinestre(Terminale terminale, std::shared_ptr<const Chiave> chiave,
                                   adapters::smtp::SmtpOptions smtp, std::string cartellaBase,
                                   const OsservazioniPtr& note, adapters::mapi::MapiOptions mapi,
                                   std::shared_ptr<adapters::smtp::ConnectionPool> connessioni,
                                   std::shared_ptr<host::Directory> directory,
                                   std::shared_ptr<Allegati> allegati)
    : AmbienteProgramma(terminale, std::move(chiave), std::move(smtp), std::move(cartellaBase), note,
                        std::move(mapi), std::move(connessioni), std::move(directory), allegati),
      note_(note),
      allegati_(std::move(allegati)),
      finestre_({.programma = kProgramma, .vaCopiato = VaCopiato(allegati_ != nullptr), .mostra = [note] {
                   ++note->finestreMostrate;
                 }}) {}

std::shared_ptr<host::Form> AmbienteFinestre::CreaForm(const host::LayoutForm& layout) {
  try {
    auto form = finestre_.CreaForm(layout);
    *ultima_ = form;
    return form;
  } catch (const host::Errore& errore) {
    note_->finestraNegata = errore.Descrizione();
    throw;
  }
}

std::shared_ptr<host::ConfigurazioneGriglia> AmbienteFinestre::CreaConfigurazioneGriglia() {
  return finestre_.CreaConfigurazioneGriglia();
}

std::shared_ptr<host::RecordSetScollegato> AmbienteFinestre::CreaRecordSetScollegato() {
  return finestre_.CreaRecordSetScollegato();
}

std::shared_ptr<host::SelettoreFile> AmbienteFinestre::CreaSelettoreFile() {
  return finestre_.CreaSelettoreFile();
}

std::shared_ptr<host::OggettoFile> AmbienteFinestre::CreaOggettoFile() {
  auto oggetto = finestre_.CreaOggettoFile();
  if (!allegati_) return oggetto;
  return std::make_shared<FileDellaFinestra>(std::move(oggetto), allegati_);
}

std::shared_ptr<host::CollezioneFile> AmbienteFinestre::CreaCollezioneFile() {
  return finestre_.CreaCollezioneFile();
}

std::shared_ptr<host::CLSFW_Parametri> AmbienteFinestre::CreaParametri() {
  return CreaParametriCorpo();
}

std::shared_ptr<host::Messaggi> AmbienteFinestre::CreaMessaggi() {
  return std::make_shared<MessaggiDovePuoLeggerli>(AmbienteProgramma::CreaMessaggi(),
                                                   Osserva(finestre_.CreaMessaggi(), note_), ultima_);
}

}  // namespace orve::app
