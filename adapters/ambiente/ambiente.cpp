#include "orve-mailserver/ambiente/ambiente.h"

#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "ambiente/log_invio.h"
#include "ambiente/messaggi_terminale.h"
#include "ambiente/parametri_corpo.h"
#include "ambiente/percorsi.h"
#include "ambiente/registro_tabella.h"
#include "ldap/ldap_directory.h"
#include "mapi/controls.h"
#include "mapi/mail_system.h"
#include "mapi/mapi32.h"
#include "password/chiave.h"
#include "password/sigillo_password.h"
#include "posix/clock.h"
#include "posix/directory_assente.h"
#include "posix/errori.h"
#include "posix/file_system.h"
#include "posix/system.h"
#include "smtp/connection_pool.h"
#include "smtp/smtp_component.h"
#include "sqlite/sqlite_connection.h"
#include "values/formatori_sql.h"

namespace orve::adapters::ambiente {

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

// How a stored text becomes the password, once it is known where it goes.
class AperturaPassword {
 public:
  explicit AperturaPassword(const Options& opzioni)
      : sigillo_(opzioni.chiave),
        conChiave_(opzioni.chiave != nullptr),
        apri_(opzioni.smtp.openPassword),
        inChiaro_(opzioni.passwordInChiaro),
        rimedioPassword_(opzioni.rimedioPassword),
        rimedioCifratura_(opzioni.rimedioCifratura) {}

  secrets::Secret operator()(const smtp::Target& meta) const {
    RichiediCifratura(meta);
    return apri_ ? apri_(meta) : Apri(meta);
  }

 private:
  void RichiediCifratura(const smtp::Target& meta) const {
    if (meta.encrypted || (inChiaro_ && inChiaro_(meta.host, meta.port))) return;
    throw host::Errore(host::kArgomentoNonValido, "AperturaPassword",
                       "utente e password viaggerebbero in chiaro fino a " + password::NomeServer(meta.host) +
                           ": " + rimedioCifratura_);
  }

  // A stored text that is not sealed is the password itself, and goes to whatever server is stored with it.
  [[nodiscard]] secrets::Secret Apri(const smtp::Target& meta) const {
    const std::string_view testo = meta.password.View();
    if (!password::SigilloPassword::Sigillato(testo)) return meta.password;
    if (!conChiave_) {
      throw host::Errore(host::kArgomentoNonValido, "AperturaPassword",
                         "la password memorizzata di «" + meta.user + "» è cifrata, e la chiave manca");
    }
    const password::LegamePassword legame{meta.user, meta.host, meta.port, meta.encrypted};
    try {
      return sigillo_.Apri(testo, legame);
    } catch (const host::Errore&) {
      throw host::Errore(host::kArgomentoNonValido, "AperturaPassword",
                         "la password memorizzata di «" + meta.user + "» non vale per " + legame.Dove() +
                             ", o la chiave è un'altra: " + rimedioPassword_);
    }
  }

  password::SigilloPassword sigillo_;
  bool conChiave_;
  std::function<secrets::Secret(const smtp::Target&)> apri_;
  std::function<bool(const std::string&, std::uint16_t)> inChiaro_;
  std::string rimedioPassword_;
  std::string rimedioCifratura_;
};

std::shared_ptr<sqlite::SqliteConnection> Incorporato(const std::shared_ptr<host::Connection>& registro) {
  auto incorporato = std::dynamic_pointer_cast<sqlite::SqliteConnection>(registro);
  if (registro && !incorporato) throw host::Errore(host::kTipoNonCorrispondente);
  return incorporato;
}

std::string CartellaCorrente() {
  std::error_code mancata;
  auto cartella = std::filesystem::current_path(mancata);
  if (mancata) throw posix::ErroreDiSistema(mancata.value(), ".");
  return cartella.string();
}

Options Completate(Options opzioni) {
  // It becomes the name of a folder.
  const std::string& nome = opzioni.programma;
  if (nome.empty() || nome == "." || nome == ".." || nome.find_first_of("/\\") != std::string::npos) {
    throw host::Errore(host::kArgomentoNonValido, "AmbientePronto",
                       "Il nome del programma non è utilizzabile");
  }
  if (opzioni.cartellaBase.empty()) opzioni.cartellaBase = CartellaCorrente();
  opzioni.smtp.openPassword = AperturaPassword(opzioni);
  if (!opzioni.connessioni) opzioni.connessioni = CreaConnessioni(opzioni.smtp);
  if (!opzioni.directory) opzioni.directory = std::make_shared<posix::DirectoryAssente>();
  return opzioni;
}

}  // namespace

std::shared_ptr<const password::Chiave> LeggiChiave(const std::string& file) {
  return std::make_shared<const password::Chiave>(password::Chiave::Leggi(file));
}

std::shared_ptr<host::Directory> ApriDirectory(const ldap::LdapOptions& opzioni) {
  return std::make_shared<ldap::LdapDirectory>(opzioni);
}

std::shared_ptr<smtp::ConnectionPool> CreaConnessioni(const smtp::SmtpOptions& smtp) {
  smtp::PoolOptions opzioni;
  opzioni.trace = smtp.trace;
  return std::make_shared<smtp::ConnectionPool>(std::move(opzioni));
}

struct AmbientePronto::Interno {
  explicit Interno(Options scelte)
      : opzioni(Completate(std::move(scelte))),
        registro(Incorporato(opzioni.registro)),
        posta(std::make_shared<mapi::MailSystem>(opzioni.mapi)) {}

  Options opzioni;
  std::shared_ptr<sqlite::SqliteConnection> registro;
  std::shared_ptr<mapi::MailSystem> posta;
  std::shared_ptr<std::weak_ptr<host::Form>> ultimaFinestra = std::make_shared<std::weak_ptr<host::Form>>();
  posix::Clock orologio;
  posix::SilentDebugOutput nessunaTraccia;
  posix::GuidGenerator identificatori;
  posix::Environment variabili;
  posix::Network rete;
};

AmbientePronto::AmbientePronto(Options opzioni) : interno_(std::make_unique<Interno>(std::move(opzioni))) {}

AmbientePronto::~AmbientePronto() = default;

std::shared_ptr<host::Messaggi> AmbientePronto::CreaMessaggi() {
  const Options& opzioni = interno_->opzioni;
  auto terminale = std::make_shared<MessaggiTerminale>(opzioni.programma, opzioni.messaggi, opzioni.risposte);
  if (!opzioni.finestre) return terminale;
  return std::make_shared<MessaggiDovePuoLeggerli>(std::move(terminale), opzioni.finestre->CreaMessaggi(),
                                                   interno_->ultimaFinestra);
}

std::shared_ptr<host::FormatoData> AmbientePronto::CreaFormatoData() {
  return std::make_shared<values::FormatoDataSql>();
}

std::shared_ptr<host::FormatoNumero> AmbientePronto::CreaFormatoNumero() {
  return std::make_shared<values::FormatoNumeroSql>();
}

std::shared_ptr<host::RegistroInvio> AmbientePronto::CreaRegistroInvio() {
  return std::make_shared<RegistroTabella>(interno_->registro, interno_->opzioni.allegatiNelRegistro);
}

std::shared_ptr<host::RisolutorePercorsi> AmbientePronto::CreaRisolutorePercorsi() {
  const Options& opzioni = interno_->opzioni;
  return std::make_shared<RisolutorePercorsiUnix>(opzioni.programma, opzioni.cartellaBase,
                                                  opzioni.senzaTemporanea);
}

std::shared_ptr<host::CifratorePassword> AmbientePronto::CreaCifratorePassword() {
  return std::make_shared<CifratoreSigillato>();
}

std::shared_ptr<host::ComponenteSmtp> AmbientePronto::CreaComponenteSmtp() {
  const Options& opzioni = interno_->opzioni;
  return std::make_shared<smtp::SmtpComponent>(opzioni.smtp, opzioni.connessioni, opzioni.allegati);
}

std::shared_ptr<host::OutlookApplication> AmbientePronto::CreaOutlook() {
  throw host::Errore(host::kOggettoNonCreabile, "Outlook.Application",
                     "Impossibile creare l'oggetto Outlook.Application");
}

std::shared_ptr<host::MAPISession> AmbientePronto::CreaMAPISession() {
  return std::make_shared<mapi::SessionControl>(interno_->posta);
}

std::shared_ptr<host::MAPIMessages> AmbientePronto::CreaMAPIMessages() {
  return std::make_shared<mapi::MessagesControl>(interno_->posta, interno_->opzioni.allegati);
}

std::shared_ptr<host::Mapi32> AmbientePronto::CreaMapi32() {
  return std::make_shared<mapi::Mapi32>(interno_->posta, interno_->opzioni.allegati);
}

std::shared_ptr<host::FileSystem> AmbientePronto::CreaFileSystem() {
  return LogSuUnaRiga(std::make_shared<posix::FileSystem>());
}

std::shared_ptr<host::Form> AmbientePronto::CreaForm(const host::LayoutForm& layout) {
  if (!interno_->opzioni.finestre) return Ambiente::CreaForm(layout);
  auto form = interno_->opzioni.finestre->CreaForm(layout);
  *interno_->ultimaFinestra = form;
  return form;
}

std::shared_ptr<host::ConfigurazioneGriglia> AmbientePronto::CreaConfigurazioneGriglia() {
  const auto& finestre = interno_->opzioni.finestre;
  return finestre ? finestre->CreaConfigurazioneGriglia() : Ambiente::CreaConfigurazioneGriglia();
}

std::shared_ptr<host::RecordSetScollegato> AmbientePronto::CreaRecordSetScollegato() {
  const auto& finestre = interno_->opzioni.finestre;
  return finestre ? finestre->CreaRecordSetScollegato() : Ambiente::CreaRecordSetScollegato();
}

std::shared_ptr<host::SelettoreFile> AmbientePronto::CreaSelettoreFile() {
  const auto& finestre = interno_->opzioni.finestre;
  return finestre ? finestre->CreaSelettoreFile() : Ambiente::CreaSelettoreFile();
}

std::shared_ptr<host::OggettoFile> AmbientePronto::CreaOggettoFile() {
  const auto& finestre = interno_->opzioni.finestre;
  return finestre ? finestre->CreaOggettoFile() : Ambiente::CreaOggettoFile();
}

std::shared_ptr<host::CollezioneFile> AmbientePronto::CreaCollezioneFile() {
  const auto& finestre = interno_->opzioni.finestre;
  return finestre ? finestre->CreaCollezioneFile() : Ambiente::CreaCollezioneFile();
}

std::shared_ptr<host::CLSFW_Parametri> AmbientePronto::CreaParametri() {
  return interno_->opzioni.finestre ? CreaParametriCorpo() : Ambiente::CreaParametri();
}

host::Orologio& AmbientePronto::OrologioDiSistema() {
  return interno_->orologio;
}

host::DebugOutput& AmbientePronto::UscitaDiDebug() {
  host::DebugOutput* const traccia = interno_->opzioni.traccia;
  return traccia != nullptr ? *traccia : interno_->nessunaTraccia;
}

host::GeneratoreGuid& AmbientePronto::Identificatori() {
  return interno_->identificatori;
}

host::Environment& AmbientePronto::VariabiliDiAmbiente() {
  return interno_->variabili;
}

host::Rete& AmbientePronto::ReteDiSistema() {
  return interno_->rete;
}

host::Directory& AmbientePronto::DirectoryAziendale() {
  return *interno_->opzioni.directory;
}

host::OsservatoreInvio& AmbientePronto::Osservatore() {
  const auto& osservatore = interno_->opzioni.osservatore;
  return osservatore ? *osservatore : Ambiente::Osservatore();
}

}  // namespace orve::adapters::ambiente
