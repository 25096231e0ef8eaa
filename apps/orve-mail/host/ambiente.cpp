#include "orve-mail/host/ambiente.h"

#include <utility>

#include "forms/formatori_sql.h"
#include "ldap/ldap_directory.h"
#include "mapi/controls.h"
#include "mapi/mapi32.h"
#include "orve-mail/host/log_invio.h"
#include "orve-mail/host/percorsi_host.h"
#include "orve-mail/host/registro_tabella.h"
#include "orve-mail/secrets/sigillo_password.h"
#include "orve-mail/terminal/messaggi_terminale.h"
#include "posix/directory_assente.h"
#include "posix/file_system.h"
#include "smtp/smtp_component.h"

namespace orve::app {

namespace {

// The library takes the result as the password and passes it on to the SMTP component. If it gets an error it
// uses the stored text itself, so a text that cannot be opened must not be an error here.
class CifratoreSigillato : public host::CifratorePassword {
 public:
  std::string Cripta(const std::string& /*testo*/) override {
    throw host::Errore(host::kMembroNonSupportato, "CifratorePassword",
                       "Una password si cifra soltanto per un account e il suo server");
  }
  std::string Decripta(const std::string& testo) override { return testo; }
};

void RichiediCifratura(const PermessiInChiaro& permessi, const Rimedi& rimedi,
                       const adapters::smtp::Target& meta) {
  if (meta.encrypted || permessi.Per(meta.host, meta.port)) return;
  throw host::Errore(host::kArgomentoNonValido, "PermessiInChiaro",
                     "utente e password viaggerebbero in chiaro fino a " + NomeServer(meta.host) + ": " +
                         rimedi.cifratura + ", oppure permetterlo con --password-in-chiaro");
}

// A stored text that is not sealed is the password itself, and goes to whatever server is stored with it.
adapters::secrets::Secret ApriPassword(const SigilloPassword& sigillo, const Rimedi& rimedi,
                                       const adapters::smtp::Target& meta) {
  const std::string_view testo = meta.password.View();
  if (!SigilloPassword::Sigillato(testo)) return meta.password;
  const LegamePassword legame{meta.user, meta.host, meta.port, meta.encrypted};
  try {
    return sigillo.Apri(testo, legame);
  } catch (const host::Errore&) {
    throw host::Errore(host::kArgomentoNonValido, "SigilloPassword",
                       "la password memorizzata di «" + meta.user + "» non vale per " + legame.Dove() +
                           ", o la chiave è un'altra: " + rimedi.password);
  }
}

}  // namespace

std::shared_ptr<adapters::smtp::ConnectionPool> CreaConnessioni(const adapters::smtp::SmtpOptions& smtp) {
  adapters::smtp::PoolOptions opzioni;
  opzioni.trace = smtp.trace;
  return std::make_shared<adapters::smtp::ConnectionPool>(std::move(opzioni));
}

std::shared_ptr<host::Directory> CreaDirectory(const std::optional<adapters::ldap::LdapOptions>& opzioni) {
  return opzioni ? std::make_shared<adapters::ldap::LdapDirectory>(*opzioni) : nullptr;
}

AmbienteProgramma::AmbienteProgramma(Terminale terminale, std::shared_ptr<const Chiave> chiave,
                                     adapters::smtp::SmtpOptions smtp, std::string cartellaBase,
                                     OsservazioniPtr note, adapters::mapi::MapiOptions mapi,
                                     std::shared_ptr<adapters::smtp::ConnectionPool> connessioni,
                                     std::shared_ptr<host::Directory> directory,
                                     std::shared_ptr<Allegati> allegati)
    : terminale_(terminale),
      chiave_(std::move(chiave)),
      smtp_(std::move(smtp)),
      connessioni_(connessioni ? std::move(connessioni) : CreaConnessioni(smtp_)),
      posta_(std::make_shared<adapters::mapi::MailSystem>(std::move(mapi))),
      cartellaBase_(std::move(cartellaBase)),
      note_(std::move(note)),
      allegati_(std::move(allegati)),
      directory_(directory ? std::move(directory) : std::make_shared<adapters::posix::DirectoryAssente>()) {
  smtp_.openPassword = [sigillo = SigilloPassword(chiave_), permessi = permessi_,
                        rimedi = rimedi_](const adapters::smtp::Target& meta) {
    RichiediCifratura(*permessi, *rimedi, meta);
    return ApriPassword(sigillo, *rimedi, meta);
  };
}

adapters::mime::AttachmentResolver AmbienteProgramma::FileDaAllegare() const {
  if (!allegati_) return {};
  return [allegati = allegati_](std::string_view percorso) { return allegati->Apri(percorso); };
}

std::shared_ptr<host::Messaggi> AmbienteProgramma::CreaMessaggi() {
  return std::make_shared<MessaggiTerminale>(terminale_);
}

std::shared_ptr<host::FormatoData> AmbienteProgramma::CreaFormatoData() {
  return std::make_shared<adapters::forms::FormatoDataSql>();
}

std::shared_ptr<host::FormatoNumero> AmbienteProgramma::CreaFormatoNumero() {
  return std::make_shared<adapters::forms::FormatoNumeroSql>();
}

std::shared_ptr<host::RegistroInvio> AmbienteProgramma::CreaRegistroInvio() {
  return std::make_shared<RegistroTabella>(registro_, allegati_);
}

std::shared_ptr<host::RisolutorePercorsi> AmbienteProgramma::CreaRisolutorePercorsi() {
  return std::make_shared<RisolutorePercorsiUnix>(cartellaBase_,
                                                  [note = note_] { note->senzaTemporanea = true; });
}

std::shared_ptr<host::CifratorePassword> AmbienteProgramma::CreaCifratorePassword() {
  return std::make_shared<CifratoreSigillato>();
}

std::shared_ptr<host::ComponenteSmtp> AmbienteProgramma::CreaComponenteSmtp() {
  return std::make_shared<adapters::smtp::SmtpComponent>(smtp_, connessioni_, FileDaAllegare());
}

std::shared_ptr<host::OutlookApplication> AmbienteProgramma::CreaOutlook() {
  throw host::Errore(host::kOggettoNonCreabile, "Outlook.Application",
                     "Impossibile creare l'oggetto Outlook.Application");
}

std::shared_ptr<host::MAPISession> AmbienteProgramma::CreaMAPISession() {
  return std::make_shared<adapters::mapi::SessionControl>(posta_);
}

std::shared_ptr<host::MAPIMessages> AmbienteProgramma::CreaMAPIMessages() {
  return std::make_shared<adapters::mapi::MessagesControl>(posta_, FileDaAllegare());
}

std::shared_ptr<host::Mapi32> AmbienteProgramma::CreaMapi32() {
  return std::make_shared<adapters::mapi::Mapi32>(posta_, FileDaAllegare());
}

std::shared_ptr<host::FileSystem> AmbienteProgramma::CreaFileSystem() {
  return LogSuUnaRiga(std::make_shared<adapters::posix::FileSystem>());
}

}  // namespace orve::app
