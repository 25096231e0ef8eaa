// A ready set of outside objects for a host on Linux: files, clock, paths, messages on a terminal or none,
// formatters, sealed passwords, a register in a table, SMTP, the machine's own mail system, and, where they
// are wanted, windows and a directory. A few options make a working set; a host that brings an object of its
// own derives from AmbientePronto and overrides what creates it.
#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/ambiente.h"
#include "orve-mailserver/host/connection.h"
#include "orve-mailserver/host/finestre.h"
#include "orve-mailserver/ldap/ldap_options.h"
#include "orve-mailserver/mapi/mapi_options.h"
#include "orve-mailserver/mime/attachment.h"
#include "orve-mailserver/smtp/smtp_options.h"

namespace orve::adapters::password {
class Chiave;
}
namespace orve::adapters::smtp {
class ConnectionPool;
}

namespace orve::adapters::ambiente {

/// The key of the stored passwords. Raises 70 when the file is missing, belongs to somebody else, can be read
/// by others, or holds no key.
[[nodiscard]] ORVE_API std::shared_ptr<const password::Chiave> LeggiChiave(const std::string& file);

/// The company's directory of persons. It is asked when a sender has no address or name, by sets of one
/// thread. Raises 5 for options that make no sense.
[[nodiscard]] ORVE_API std::shared_ptr<host::Directory> ApriDirectory(const ldap::LdapOptions& opzioni);

/// Keeps the connections to SMTP servers from one message to the next, for several sets or the whole program;
/// what is said on them while they wait is traced as `smtp` says. May be used by several threads at a time.
[[nodiscard]] ORVE_API std::shared_ptr<smtp::ConnectionPool> CreaConnessioni(
    const smtp::SmtpOptions& smtp = {});

/// What a host chooses; as it stands, SMTP and the machine's own mail system with the defaults of each, and
/// nobody who reads messages.
struct ORVE_API Options {
  /// Names windows, messages and the folder of temporary files: not empty, and without `/` and backslashes.
  std::string programma = "orve-mailserver";
  /// The folder, as a Unix path, that a relative configured path starts from; empty: the current one at
  /// construction.
  std::string cartellaBase = {};

  ///@{
  /// For the SMTP component, and for the MAPI controls and library. What `smtp.trace` captures must outlive
  /// the connections that are kept, which say goodbye at their end.
  smtp::SmtpOptions smtp = {};
  mapi::MapiOptions mapi = {};
  ///@}
  /// Absent: nobody is found.
  std::shared_ptr<host::Directory> directory = {};
  /// Absent: connections are kept for this set alone.
  std::shared_ptr<smtp::ConnectionPool> connessioni = {};

  /// Opens the passwords that are stored sealed; absent: they cannot be used. A stored text that is not
  /// sealed is the password itself. Not used when `smtp.openPassword` is set, which then
  /// opens what it likes.
  std::shared_ptr<const password::Chiave> chiave = {};
  /// Whether a server, by its name and port, may get a password over a connection without encryption; empty:
  /// none may.
  std::function<bool(const std::string& server, std::uint16_t porta)> passwordInChiaro = {};
  ///@{
  /// What whoever reads the error can do about a password that does not open, and about a server without
  /// encryption.
  std::string rimedioPassword = "memorizzarla di nuovo";
  std::string rimedioCifratura = "attivare TLS per il server";
  ///@}

  /// The embedded database whose REGISTRO_INVII takes the register of sends; absent: the one that the service
  /// works on, which must then be one as ApriDatabase returned it: over a server or behind a wrapper the
  /// register raises 13. See ApriRegistro.
  std::shared_ptr<host::Connection> registro = {};
  /// What the register keeps in place of the library's text on the attachments; empty: that text.
  std::function<std::string(const std::string& allegati)> allegatiNelRegistro = {};
  /// Which file a path of the application's stands for; empty: the path's own.
  mime::AttachmentResolver allegati = {};

  ///@{
  /// Where messages for the person are printed, and where their answers come from. Absent: they are not
  /// shown, or nobody answers, and each has its default answer. Both must outlive the set and its objects.
  std::ostream* messaggi = nullptr;
  std::istream* risposte = nullptr;
  ///@}
  /// Where the instance trace goes; absent: nowhere. Must outlive the set.
  host::DebugOutput* traccia = nullptr;
  /// The toolkit; absent: no window can be opened. While one that this set made is open, messages are boxes
  /// over it: who overrides CreaForm overrides CreaMessaggi too.
  std::shared_ptr<host::Finestre> finestre = {};
  /// Is told what becomes of each send; absent: nobody is.
  std::shared_ptr<host::OsservatoreInvio> osservatore = {};
  /// Called when no folder for temporary files is private to the user; the send log is then not written.
  std::function<void()> senzaTemporanea = {};
};

/// May serve several services one after the other; it and its objects belong to one thread at a time.
class ORVE_API AmbientePronto : public host::Ambiente {
 public:
  /// Raises 5 for a name that is none, 13 for a register that is not an embedded database, and what the
  /// system says when there is no current folder.
  explicit AmbientePronto(Options opzioni = {});
  ~AmbientePronto() override;
  AmbientePronto(const AmbientePronto&) = delete;
  AmbientePronto& operator=(const AmbientePronto&) = delete;
  AmbientePronto(AmbientePronto&&) = delete;
  AmbientePronto& operator=(AmbientePronto&&) = delete;

  std::shared_ptr<host::Messaggi> CreaMessaggi() override;
  /// Dates and numbers as statements take them.
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
  /// Each record of the send log stays one line, whatever the names in it contain.
  std::shared_ptr<host::FileSystem> CreaFileSystem() override;

  // What the windows are made of; each raises 429 without a toolkit.

  std::shared_ptr<host::Form> CreaForm(const host::LayoutForm& layout) override;
  std::shared_ptr<host::ConfigurazioneGriglia> CreaConfigurazioneGriglia() override;
  std::shared_ptr<host::RecordSetScollegato> CreaRecordSetScollegato() override;
  std::shared_ptr<host::SelettoreFile> CreaSelettoreFile() override;
  std::shared_ptr<host::OggettoFile> CreaOggettoFile() override;
  std::shared_ptr<host::CollezioneFile> CreaCollezioneFile() override;
  /// The placeholders that the library fills in a body, with their captions.
  std::shared_ptr<host::CLSFW_Parametri> CreaParametri() override;

  host::Orologio& OrologioDiSistema() override;
  host::DebugOutput& UscitaDiDebug() override;
  host::GeneratoreGuid& Identificatori() override;
  host::Environment& VariabiliDiAmbiente() override;
  host::Rete& ReteDiSistema() override;
  host::Directory& DirectoryAziendale() override;
  host::OsservatoreInvio& Osservatore() override;

 private:
  struct Interno;
  std::unique_ptr<Interno> interno_;
};

}  // namespace orve::adapters::ambiente
