#include "orve-mail/ambiente_finestre.h"

#include <utility>

#include "orve-mail/parametri_corpo.h"
#include "orve-mail/uscita.h"

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
                                   std::shared_ptr<host::Directory> directory)
    : AmbienteProgramma(terminale, std::move(chiave), std::move(smtp), std::move(cartellaBase), note,
                        std::move(mapi), std::move(connessioni), std::move(directory)),
      note_(note),
      finestre_({.programma = kProgramma, .mostra = [note] { ++note->finestreMostrate; }}) {}

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
                                                   Osserva(finestre_.CreaMessaggi(), note_), ultima_);
}

}  // namespace orve::app
