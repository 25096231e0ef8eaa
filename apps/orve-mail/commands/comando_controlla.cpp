// controlla: checks an installation without sending: database, settings, accounts, their servers, folders,
// directory and sendmail.
#include <sys/stat.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cerrno>
#include <memory>
#include <optional>
#include <system_error>

#include "addressing/active_directory.h"
#include "channels/channel_traits.h"
#include "mapi/failure.h"
#include "mapi/sendmail.h"
#include "orve-mail/checks/controllo_database.h"
#include "orve-mail/checks/controllo_server.h"
#include "orve-mail/checks/legatura_password.h"
#include "orve-mail/checks/referto.h"
#include "orve-mail/commands/comandi.h"
#include "orve-mail/commands/send_options.h"
#include "orve-mail/host/ambiente.h"
#include "orve-mailserver/posix/percorsi.h"

namespace orve::app {

namespace {

class Controllo {
 public:
  Controllo(const RichiestaInvio& richiesta, Terminale terminale)
      : richiesta_(richiesta),
        rimedi_(SuOdbc(richiesta.archivio)),
        referto_(terminale.uscita),
        terminale_(terminale) {}

  Uscita Esegui() {
    ApriChiave();
    ApriDatabase();
    ambiente_ = std::make_shared<adapters::ambiente::AmbientePronto>(Opzioni());
    if (archivio_) ControllaDati();
    ControllaCartella();
    ControllaDirectory();
    ControllaSendmail();
    referto_.Riassumi();
    return referto_.Stato();
  }

 private:
  [[nodiscard]] adapters::ambiente::Options Opzioni() const {
    auto opzioni = OpzioniDelProgramma(terminale_, note_);
    opzioni.cartellaBase = CartellaBase(richiesta_.archivio);
    opzioni.directory = CreaDirectory(richiesta_.directory);
    return opzioni;
  }

  // An error in the command line ends the command.
  template <class Azione>
  void Prova(const char* controllo, const char* rimedio, Azione azione) {
    try {
      azione();
    } catch (const ErroreProgramma& errore) {
      if (errore.Stato() == Uscita::kComandoErrato) throw;
      referto_.Errore(controllo, errore.what(), rimedio);
    } catch (const host::Errore& errore) {
      referto_.Errore(controllo, errore.Descrizione(), rimedio);
    }
  }

  void ApriChiave() {
    Prova("chiave delle password", "indicare con --chiave un file che appartenga solo a chi invia", [&] {
      chiave_ = LeggiChiave(richiesta_.archivio);
      referto_.Ok("chiave delle password", FileChiave(richiesta_.archivio));
    });
  }

  void ApriDatabase() {
    const char* const rimedio =
        SuOdbc(richiesta_.archivio)
            ? "verificare driver, server, utente e password della stringa di connessione"
            : "indicare con --db un database creato con crea-db";
    Prova("database", rimedio, [&] {
      archivio_ = ApriArchivio(richiesta_.archivio);
      referto_.Ok("database", SuOdbc(richiesta_.archivio) ? "accesso riuscito, per ODBC"
                                                          : FileArchivio(richiesta_.archivio));
    });
    if (!archivio_) return;
    Prova("registro degli invii", "indicare con --registro un file che si possa scrivere", [&] {
      registro_ = ApriRegistro(richiesta_.archivio, *archivio_);
      static_cast<void>(
          registro_->EseguiConValori("SELECT ID, ESITOINVIO FROM REGISTRO_INVII WHERE 1 = 0", {}));
      referto_.Ok("registro degli invii",
                  registro_ == archivio_->incorporato ? "nel database" : "in un file suo");
    });
  }

  void ControllaDati() {
    auto& connessione = *archivio_->connessione;
    std::optional<std::int32_t> utente;
    ControllaTabelle(*archivio_, referto_);
    Prova("utente", "indicare con --utente un utente che c'è", [&] {
      utente = TrovaUtente(connessione, richiesta_.utente);
      archivio_->DiUtente(*utente);
      referto_.Ok("utente", std::to_string(*utente));
    });
    ControllaProcedure(*archivio_, referto_);
    ControllaDitta(connessione, richiesta_.ditta, referto_);
    impostazioni_ = ControllaImpostazioni(connessione, referto_);
    const bool conAccount = impostazioni_.canale && HaAccount(*impostazioni_.canale);
    const auto account =
        ControllaAccount(connessione, utente.value_or(0), richiesta_.ditta, conAccount, referto_);
    if (conAccount) {
      ControllaAccountDelleFinestre(connessione, utente.value_or(0), richiesta_.ditta,
                                    impostazioni_.conFinestra, referto_);
    }
    if (chiave_) ControllaPassword();
    PermessiInChiaro permessi;
    Prova("password in chiaro", "ricreare il database con crea-db",
          [&] { permessi = PermessiInChiaro(*archivio_, richiesta_.passwordInChiaro); });
    for (const AccountLetto& uno : account) {
      if (SenzaServer()) {
        referto_.Saltato(uno.titolo + ", server", "il canale delle impostazioni non lo usa");
      } else {
        ControllaServer(uno, InChiaro(uno), permessi, richiesta_.smtp, rimedi_, referto_);
      }
    }
  }

  // Whether the channel has the accounts for something else. Where it has none, they are those of the
  // stand-alone send, which goes through their servers.
  [[nodiscard]] bool SenzaServer() const {
    const ChannelTraits* const canale = impostazioni_.canale ? TrattiDi(*impostazioni_.canale) : nullptr;
    return canale != nullptr && canale->haAccount && !canale->serverDellAccount;
  }

  [[nodiscard]] std::optional<adapters::secrets::Secret> InChiaro(const AccountLetto& account) const {
    if (!SigilloPassword::Sigillato(account.password)) return adapters::secrets::Secret(account.password);
    try {
      return SigilloPassword(chiave_).Apri(account.password,
                                           {account.utente, account.server, account.porta, account.cifrata});
    } catch (const host::Errore&) {
      return std::nullopt;
    }
  }

  // What gets bound here is what is in the database now, so it is shown to the person.
  void ControllaPassword() {
    const char* const nome = "password degli account";
    Prova(nome, rimedi_.password.c_str(), [&] {
      const Legatura legatura = LegaPassword(*archivio_, SigilloPassword(chiave_));
      std::string riscritte;
      for (const PasswordMemorizzata& password : legatura.riscritte)
        Aggiungi(riscritte, password, " per " + password.legame.Dove());
      std::string rimaste;
      std::string senzaServer;
      for (const auto& [password, perche] : legatura.rimaste) {
        if (perche == Slegata::kSenzaServer) {
          Aggiungi(senzaServer, password, "");
        } else {
          Aggiungi(rimaste, password,
                   perche == Slegata::kNonSiApre ? " (non si apre con questa chiave)"
                   : perche == Slegata::kCopiata ? " (copiata: lo stesso testo sta in un altro account)"
                                                 : " (nel database non si può riscrivere)");
        }
      }
      if (!rimaste.empty()) referto_.Avviso(nome, "non legate al loro server: " + rimaste, rimedi_.password);
      if (!senzaServer.empty()) {
        referto_.Avviso(nome, "senza un server a cui legarle: " + senzaServer,
                        "assegnare un server all'account, o toglierne la password, e ripetere controlla");
      }
      if (!riscritte.empty()) {
        referto_.Avviso(
            nome, "riscritte, ora legate al loro server: " + riscritte,
            "verificare che siano i server giusti; se uno non lo è, correggerlo e cambiare la password");
      }
      if (legatura.rimaste.empty() && legatura.riscritte.empty()) {
        referto_.Ok(nome, std::to_string(legatura.cifrate) +
                              (legatura.cifrate == 1 ? " cifrata" : " cifrate") + ", legate al loro server");
      }
      if (!legatura.RestaAperta() && !chiave_->SoloLegate()) RiservaChiave();
    });
  }

  static void Aggiungi(std::string& elenco, const PasswordMemorizzata& password, const std::string& nota) {
    elenco += (elenco.empty() ? "account " : "; account ") + std::to_string(password.account) + nota;
  }

  // An old text that somebody has kept must not open again. A key that is not next to this database may serve
  // others that still contain such texts.
  void RiservaChiave() {
    const std::string file = FileChiave(richiesta_.archivio);
    const std::string aMano =
        "quando nessun database che usa la chiave ha più password non legate, scrivere in " + file +
        " orve-mail-chiave-2 al posto di orve-mail-chiave-1";
    const char* const nome = "chiave delle password";
    if (!ChiaveDelDatabase(richiesta_.archivio)) {
      return referto_.Avviso(nome, "apre ancora le password non legate, e qui non ne restano", aMano);
    }
    try {
      chiave_->RiservaALegate(file);
      referto_.Ok(nome, "ora apre soltanto password legate al loro server");
    } catch (const host::Errore& errore) {
      referto_.Avviso(nome, "apre ancora le password non legate: " + errore.Descrizione(), aMano);
    }
  }

  void ControllaCartella() {
    const char* const rimedio =
        "correggere FW24_PATHTMP, o creare la cartella e darne la scrittura a chi invia";
    Prova("cartella temporanea", rimedio, [&] {
      const auto risolutore = ambiente_->CreaRisolutorePercorsi();
      risolutore->ImpostaPercorso(impostazioni_.cartella, true);
      const std::string cartella = adapters::posix::PercorsoUnix(risolutore->Percorso());
      std::string prova = cartella + "/orve-mail-prova-XXXXXX";
      const int file = ::mkstemp(prova.data());
      if (file < 0) {
        const int motivo = errno;
        return referto_.Errore("cartella temporanea",
                               cartella + ": " + std::generic_category().message(motivo), rimedio);
      }
      ::close(file);
      ::unlink(prova.c_str());
      referto_.Ok("cartella temporanea", cartella);
    });
  }

  // Without a directory the library simply goes without its answers, so nothing here stops a send.
  void ControllaDirectory() {
    if (!richiesta_.directory) {
      return referto_.Saltato("directory aziendale", "nessuna directory configurata");
    }
    auto& directory = ambiente_->DirectoryAziendale();
    try {
      static_cast<void>(directory.CreaConnessione());
      static_cast<void>(host::Richiesto(directory.ApriOggetto("LDAP://rootDSE")).Get("defaultNamingContext"));
    } catch (const host::Errore& errore) {
      return referto_.Avviso(
          "directory aziendale", errore.Descrizione(),
          "verificare server, credenziali e rete; senza, nomi e indirizzi vengono solo dagli account");
    }
    const std::string utente = MDL_ACTIVEDIRECTORY::GetNomeUtenteRete(ambiente_->ReteDiSistema());
    MDL_ACTIVEDIRECTORY::DatiUtenteDirectory persona;
    const bool riuscita = MDL_ACTIVEDIRECTORY::GetDatiUtenteDirectory(
        directory, utente, persona,
        [&](const host::Errore& errore) { note_->RicercaInDirectoryFallita(errore); });
    if (!riuscita) {
      const auto& motivi = note_->erroriDirectory;
      referto_.Avviso(
          "directory aziendale",
          "la ricerca di «" + utente + "» non riesce" + (motivi.empty() ? "" : ": " + motivi.back()),
          "verificare che le credenziali possano cercare le persone");
    } else if (persona.EmailAddress.empty() && persona.LastName.empty()) {
      referto_.Avviso("directory aziendale", "risponde, ma non conosce «" + utente + "»",
                      "inviare da un utente della rete, o indicare nome e indirizzo negli account");
    } else {
      referto_.Ok("directory aziendale", "«" + utente + "», " + persona.EmailAddress);
    }
  }

  void ControllaSendmail() {
    const bool serve = impostazioni_.canale && HaTratto(*impostazioni_.canale, &ChannelTraits::usaSendmail);
    try {
      adapters::mapi::RequireSendmail(richiesta_.mapi);
      referto_.Ok("sendmail", richiesta_.mapi.sendmail);
    } catch (const adapters::mapi::MapiFailure& errore) {
      if (!serve) return referto_.Saltato("sendmail", "non c'è, e il canale delle impostazioni non lo usa");
      referto_.Errore("sendmail", errore.what(),
                      "installare un sistema di posta, o indicarne il comando con --sendmail");
    }
  }

  const RichiestaInvio& richiesta_;
  const Rimedi rimedi_;
  Referto referto_;
  Terminale terminale_;
  std::shared_ptr<const Chiave> chiave_;
  std::optional<Archivio> archivio_;
  std::shared_ptr<adapters::sqlite::SqliteConnection> registro_;
  OsservazioniPtr note_ = std::make_shared<Osservazioni>();
  std::shared_ptr<adapters::ambiente::AmbientePronto> ambiente_;
  ImpostazioniLette impostazioni_;
};

}  // namespace

void AggiungiControlla(CLI::App& programma, Contesto& contesto) {
  auto* const comando =
      programma.add_subcommand("controlla", "Controlla un'installazione senza inviare nulla");
  auto opzioni = std::make_shared<SendOptions>();
  AggiungiContesto(*comando, *opzioni);
  AggiungiRete(*comando, *opzioni);
  comando->callback([comando, opzioni, &contesto] {
    const RichiestaInvio richiesta = LeggiRichiesta(*comando, *opzioni, contesto.terminale);
    contesto.uscita = Controllo(richiesta, contesto.terminale).Esegui();
  });
}

}  // namespace orve::app
