#include "orve-mail/host/ambiente_finestre.h"

#include <functional>
#include <utility>

#include "orve-mail/host/parametri_corpo.h"
#include "orve-mail/terminal/uscita.h"
#include "posix/oggetto_file.h"

namespace orve::app {

namespace {

constexpr const char* kProgramma = "orve-mail";

// On the terminal or in a box, depending on the situation when the message comes.
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

AmbienteFinestre::AmbienteFinestre(Terminale terminale, std::shared_ptr<const Chiave> chiave,
                                   adapters::smtp::SmtpOptions smtp, std::string cartellaBase,
                                   const OsservazioniPtr& note, adapters::mapi::MapiOptions mapi,
                                   std::shared_ptr<adapters::smtp::ConnectionPool> connessioni,
                                   std::shared_ptr<host::Directory> directory,
                                   std::shared_ptr<Allegati> allegati)
    : AmbienteProgramma(terminale, std::move(chiave), std::move(smtp), std::move(cartellaBase), note,
                        std::move(mapi), std::move(connessioni), std::move(directory), allegati),
      finestre_({.programma = kProgramma, .creaFile = CreatoreFile(std::move(allegati)), .mostra = [note] {
                   ++note->finestreMostrate;
                 }}) {}

std::shared_ptr<host::Form> AmbienteFinestre::CreaForm(const host::LayoutForm& layout) {
  auto form = finestre_.CreaForm(layout);
  *ultima_ = form;
  return form;
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
  return finestre_.CreaOggettoFile();
}

std::shared_ptr<host::CollezioneFile> AmbienteFinestre::CreaCollezioneFile() {
  return finestre_.CreaCollezioneFile();
}

std::shared_ptr<host::CLSFW_Parametri> AmbienteFinestre::CreaParametri() {
  return CreaParametriCorpo();
}

std::shared_ptr<host::Messaggi> AmbienteFinestre::CreaMessaggi() {
  return std::make_shared<MessaggiDovePuoLeggerli>(AmbienteProgramma::CreaMessaggi(),
                                                   finestre_.CreaMessaggi(), ultima_);
}

}  // namespace orve::app
