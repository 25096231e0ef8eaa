// The program's real parts together with its windows: for a command that may show a person a window.
#pragma once

#include <memory>
#include <string>

#include "orve-mail/host/ambiente.h"
#include "orve-mailserver/qt/finestre.h"

namespace orve::app {

/// Raises ErroreProgramma (kNonUtilizzabile) where no window can be opened; `perche` begins its text and says
/// what needs the window.
void RichiediSchermo(const std::string& perche);

/// Hands out the windows; the first one shows whether they can be opened. While one is open, messages appear
/// as boxes over it, otherwise on the terminal.
class AmbienteFinestre : public AmbienteProgramma {
 public:
  AmbienteFinestre(Terminale terminale, std::shared_ptr<const Chiave> chiave,
                   adapters::smtp::SmtpOptions smtp, std::string cartellaBase, const OsservazioniPtr& note,
                   adapters::mapi::MapiOptions mapi = {},
                   std::shared_ptr<adapters::smtp::ConnectionPool> connessioni = nullptr,
                   std::shared_ptr<host::Directory> directory = nullptr,
                   std::shared_ptr<Allegati> allegati = nullptr);

  /// Raises 429 without a display.
  std::shared_ptr<host::Form> CreaForm(const host::LayoutForm& layout) override;
  std::shared_ptr<host::ConfigurazioneGriglia> CreaConfigurazioneGriglia() override;
  std::shared_ptr<host::RecordSetScollegato> CreaRecordSetScollegato() override;
  std::shared_ptr<host::SelettoreFile> CreaSelettoreFile() override;
  std::shared_ptr<host::OggettoFile> CreaOggettoFile() override;
  std::shared_ptr<host::CollezioneFile> CreaCollezioneFile() override;
  std::shared_ptr<host::CLSFW_Parametri> CreaParametri() override;
  std::shared_ptr<host::Messaggi> CreaMessaggi() override;

 private:
  adapters::qt::Finestre finestre_;
  std::shared_ptr<std::weak_ptr<host::Form>> ultima_ = std::make_shared<std::weak_ptr<host::Form>>();
};

}  // namespace orve::app
