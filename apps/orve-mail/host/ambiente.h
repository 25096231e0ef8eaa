// The real parts that the program hands to the library: the platform's, the means of delivery, and the host
// application's own objects in the program's version.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "mapi/mail_system.h"
#include "mime/attachment.h"
#include "orve-mail/host/allegati.h"
#include "orve-mail/host/osservazioni.h"
#include "orve-mail/host/password_in_chiaro.h"
#include "orve-mail/host/rimedi.h"
#include "orve-mail/secrets/chiave.h"
#include "orve-mail/terminal/terminale.h"
#include "orve-mailserver/host/ambiente.h"
#include "orve-mailserver/ldap/ldap_options.h"
#include "orve-mailserver/smtp/smtp_options.h"
#include "posix/orologio.h"
#include "posix/sistema.h"
#include "smtp/connection_pool.h"
#include "sqlite/sqlite_connection.h"

namespace orve::app {

/// Keeps connections the way the program does: what is said on them is traced with the rest of the dialogue.
[[nodiscard]] std::shared_ptr<adapters::smtp::ConnectionPool> CreaConnessioni(
    const adapters::smtp::SmtpOptions& smtp);

/// The company's directory; empty without options. Raises 5 for options that make no sense.
[[nodiscard]] std::shared_ptr<host::Directory> CreaDirectory(
    const std::optional<adapters::ldap::LdapOptions>& opzioni);

class AmbienteProgramma : public host::Ambiente {
 public:
  /// The terminal's streams and trace must outlive the object. `cartellaBase` is the folder that a relative
  /// configured path starts from. `connessioni`: kept by the host for several of these objects; empty: this
  /// one keeps its own. `directory`: the company's; empty: the library gets one that knows nobody.
  /// `allegati`: which files are sent with the message; empty: whatever the library names.
  AmbienteProgramma(Terminale terminale, std::shared_ptr<const Chiave> chiave,
                    adapters::smtp::SmtpOptions smtp, std::string cartellaBase, OsservazioniPtr note,
                    adapters::mapi::MapiOptions mapi = {},
                    std::shared_ptr<adapters::smtp::ConnectionPool> connessioni = nullptr,
                    std::shared_ptr<host::Directory> directory = nullptr,
                    std::shared_ptr<Allegati> allegati = nullptr);

  /// The register of sends goes there, whatever database the library works on.
  void RegistraIn(std::shared_ptr<adapters::sqlite::SqliteConnection> archivio) {
    registro_ = std::move(archivio);
  }

  /// The servers that may get a password without encryption; none unless this is called.
  void PermettiInChiaro(PermessiInChiaro permessi) { *permessi_ = std::move(permessi); }
  /// What the person is told to do when a stored password or server fails; by default for the embedded
  /// database.
  void ConRimedi(Rimedi rimedi) { *rimedi_ = std::move(rimedi); }

  std::shared_ptr<host::Messaggi> CreaMessaggi() override;
  std::shared_ptr<host::FormatoData> CreaFormatoData() override;
  std::shared_ptr<host::FormatoNumero> CreaFormatoNumero() override;
  std::shared_ptr<host::RegistroInvio> CreaRegistroInvio() override;
  std::shared_ptr<host::RisolutorePercorsi> CreaRisolutorePercorsi() override;
  /// Leaves sealed passwords sealed: the SMTP component opens them, since it knows where they are about to
  /// go.
  std::shared_ptr<host::CifratorePassword> CreaCifratorePassword() override;
  std::shared_ptr<host::ComponenteSmtp> CreaComponenteSmtp() override;
  /// Raises 429: this exists on Windows only.
  std::shared_ptr<host::OutlookApplication> CreaOutlook() override;
  std::shared_ptr<host::MAPISession> CreaMAPISession() override;
  std::shared_ptr<host::MAPIMessages> CreaMAPIMessages() override;
  std::shared_ptr<host::Mapi32> CreaMapi32() override;
  std::shared_ptr<host::FileSystem> CreaFileSystem() override;
  host::Orologio& OrologioDiSistema() override { return orologio_; }
  /// The terminal's trace; without one the lines go nowhere.
  host::DebugOutput& UscitaDiDebug() override {
    return terminale_.traccia != nullptr ? *terminale_.traccia : nessunaTraccia_;
  }
  host::GeneratoreGuid& Identificatori() override { return identificatori_; }
  host::Environment& VariabiliDiAmbiente() override { return variabili_; }
  host::Rete& ReteDiSistema() override { return rete_; }
  host::Directory& DirectoryAziendale() override { return *directory_; }
  host::OsservatoreInvio& Osservatore() override { return *note_; }

 private:
  [[nodiscard]] adapters::mime::AttachmentResolver FileDaAllegare() const;

  Terminale terminale_;
  std::shared_ptr<const Chiave> chiave_;
  std::shared_ptr<PermessiInChiaro> permessi_ =
      std::make_shared<PermessiInChiaro>();                      // the components look them up here
  std::shared_ptr<Rimedi> rimedi_ = std::make_shared<Rimedi>();  // and here
  adapters::smtp::SmtpOptions smtp_;
  std::shared_ptr<adapters::smtp::ConnectionPool> connessioni_;
  std::shared_ptr<adapters::mapi::MailSystem> posta_;
  std::string cartellaBase_;
  OsservazioniPtr note_;
  std::shared_ptr<Allegati> allegati_;
  std::shared_ptr<adapters::sqlite::SqliteConnection> registro_;
  adapters::posix::Orologio orologio_;
  adapters::posix::DebugOutputMuto nessunaTraccia_;
  adapters::posix::GeneratoreGuid identificatori_;
  adapters::posix::Environment variabili_;
  adapters::posix::Rete rete_;
  std::shared_ptr<host::Directory> directory_;
};

}  // namespace orve::app
