// imposta-server: where a mail server of the database really is.
#include <CLI/CLI.hpp>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orve-mail/commands/comandi.h"
#include "orve-mail/commands/riga_di_comando.h"
#include "orve-mail/host/archivio.h"
#include "orve-mail/host/messaggio.h"
#include "orve-mail/host/password_in_chiaro.h"
#include "orve-mail/secrets/password_memorizzate.h"
#include "orve-mailserver/host/errore.h"
#include "sqlite/schema.h"

namespace orve::app {

namespace {

struct ArgomentiServer {
  PosizioneArchivio posizione;
  std::int32_t id = 0;
  std::string host;
  std::int32_t porta = 0;
  bool senzaTls = false;
  bool senzaAutenticazione = false;
  bool passwordInChiaro = false;
};

// The column has 16 bits with a sign: the upper half of the ports is stored as negative numbers.
std::int32_t PortaInColonna(std::int32_t porta) {
  constexpr std::int32_t kMassimo = 32767;
  constexpr std::int32_t kGiro = 65536;
  return porta > kMassimo ? porta - kGiro : porta;
}

// The passwords of a server's accounts move with it: whoever has the key may point it elsewhere. They are
// bound to what the person asked for, never to what the database says about it afterwards: anybody who may
// write the database controls its triggers and views.
class Trasloco {
 public:
  explicit Trasloco(const PosizioneArchivio& posizione) : posizione_(posizione) {}

  /// The account with its password for the server at `legame`, as it must now be in the database.
  PasswordMemorizzata Sposta(adapters::sqlite::SqliteConnection& archivio, const PasswordMemorizzata& prima,
                             const LegamePassword& legame) {
    PasswordMemorizzata dopo = prima;
    dopo.legame = legame;
    if (!SigilloPassword::Sigillato(prima.testo) || prima.legame == legame) return dopo;
    try {
      const auto chiara = Sigillo().Apri(prima.testo, prima.legame);
      dopo.testo = Sigillo().Sigilla(chiara.View(), legame);
      SostituisciPassword(archivio, prima.account, dopo.testo);
    } catch (const host::Errore& errore) {
      if (errore.Numero() != host::kArgomentoNonValido) throw;
      if (!GiaSua(dopo)) rimaste_.push_back(prima.account);
    }
    return dopo;
  }

  /// The accounts whose passwords are valid for neither server.
  [[nodiscard]] const std::vector<std::int32_t>& Rimaste() const { return rimaste_; }

 private:
  // The key is only needed when there is something to do with it.
  const SigilloPassword& Sigillo() {
    if (!sigillo_) {
      sigillo_.emplace(LeggiChiave(posizione_));
    }
    return *sigillo_;
  }

  // Somebody else had pointed the server elsewhere in the meantime.
  [[nodiscard]] bool GiaSua(const PasswordMemorizzata& dopo) try {
    static_cast<void>(Sigillo().Apri(dopo.testo, dopo.legame));
    return true;
  } catch (const host::Errore&) {
    return false;
  }

  const PosizioneArchivio& posizione_;
  std::optional<SigilloPassword> sigillo_;
  std::vector<std::int32_t> rimaste_;
};

class ServerDaImpostare {
 public:
  ServerDaImpostare(adapters::sqlite::SqliteConnection& archivio, const ArgomentiServer& argomenti)
      : archivio_(archivio), argomenti_(argomenti) {}

  void Imposta() {
    adapters::sqlite::ImpostaServer(archivio_, argomenti_.id, argomenti_.host,
                                    PortaInColonna(argomenti_.porta), Tls(), Autenticazione());
  }

  /// What the password of a login is bound to there.
  [[nodiscard]] LegamePassword Legame(const std::string& utente) const {
    return {utente, ServerEffettivo(argomenti_.host), static_cast<std::uint16_t>(argomenti_.porta),
            !argomenti_.senzaTls};
  }

  /// Raises ErroreProgramma when the database does not hold, row by row, what was written: the server as
  /// requested, and these accounts.
  void RichiediComeScritto(const std::vector<PasswordMemorizzata>& scritte) const {
    const auto riga = archivio_.EseguiConValori(
        "SELECT IFNULL(MIN(FW23_SERVERNAME IS ?2 AND FW23_PORT IS ?3 AND FW23_SSL IS ?4 AND FW23_INDAUTH IS"
        " ?5), 0) AS SCRITTO FROM FW23_FAXER WHERE FW23_IDSERVER = ?1",
        {std::int64_t{argomenti_.id}, argomenti_.host, std::int64_t{PortaInColonna(argomenti_.porta)},
         std::int64_t{Tls()}, std::int64_t{Autenticazione()}});
    if (host::Leggi(*riga, "SCRITTO").ToInt32() == 1 &&
        LeggiPassword(archivio_, {{}, argomenti_.id}) == scritte)
      return;
    throw ErroreProgramma(
        Uscita::kNonUtilizzabile,
        "Server " + std::to_string(argomenti_.id) +
            " lasciato com'era: il database ha cambiato da sé quanto vi è stato scritto, e le password"
            " sarebbero potute finire altrove. Cercare i trigger e le viste che contiene (SELECT type, name,"
            " sql FROM sqlite_master WHERE type IN ('trigger', 'view')), togliere quelli che non sono propri"
            " e ripetere il comando");
  }

 private:
  [[nodiscard]] std::int32_t Tls() const { return argomenti_.senzaTls ? 0 : 1; }
  [[nodiscard]] std::int32_t Autenticazione() const { return argomenti_.senzaAutenticazione ? 0 : 1; }

  adapters::sqlite::SqliteConnection& archivio_;
  const ArgomentiServer& argomenti_;
};

Uscita Imposta(const ArgomentiServer& argomenti, Terminale terminale) {
  RichiediUtf8(argomenti.host, "--host");
  const bool inChiaro = argomenti.senzaTls && !argomenti.senzaAutenticazione;
  if (inChiaro && !argomenti.passwordInChiaro) {
    throw ErroreProgramma(Uscita::kComandoErrato,
                          "--senza-tls: utente e password viaggerebbero in chiaro; indicare anche "
                          "--password-in-chiaro, o --senza-autenticazione");
  }
  if (argomenti.passwordInChiaro && !inChiaro) {
    throw ErroreProgramma(Uscita::kComandoErrato,
                          "--password-in-chiaro vale con --senza-tls e con l'autenticazione");
  }
  const auto archivio = ApriIncorporato(argomenti.posizione);
  Trasloco trasloco(argomenti.posizione);
  try {
    static_cast<void>(archivio->EseguiConValori("BEGIN IMMEDIATE", {}));
    const auto prima = LeggiPassword(*archivio, {{}, argomenti.id});
    ServerDaImpostare server(*archivio, argomenti);
    server.Imposta();
    if (inChiaro) PermettiInChiaro(*archivio, argomenti.host, static_cast<std::uint16_t>(argomenti.porta));
    RitiraPermessiSuperflui(*archivio);
    std::vector<PasswordMemorizzata> scritte;
    scritte.reserve(prima.size());
    for (const PasswordMemorizzata& una : prima)
      scritte.push_back(trasloco.Sposta(*archivio, una, server.Legame(una.legame.utente)));
    server.RichiediComeScritto(scritte);
    static_cast<void>(archivio->EseguiConValori("COMMIT", {}));
  } catch (const host::Errore& errore) {
    throw ErroreProgramma(Uscita::kNonUtilizzabile, errore.Descrizione());
  }
  terminale.uscita << "Server " << argomenti.id << ": " << TerminalSafeLine(argomenti.host) << ", porta "
                   << argomenti.porta << (argomenti.senzaTls ? ", senza TLS" : ", TLS")
                   << (argomenti.senzaAutenticazione ? ", senza autenticazione" : ", autenticazione")
                   << (inChiaro ? ", password in chiaro" : "") << "\n";
  for (const std::int32_t account : trasloco.Rimaste()) {
    terminale.uscita << "Account " << account
                     << ": la password non è di questo server; memorizzarla di nuovo con imposta-password\n";
  }
  return Uscita::kInviato;
}

}  // namespace

void AggiungiImpostaServer(CLI::App& programma, Contesto& contesto) {
  auto* const comando = programma.add_subcommand(
      "imposta-server", "Cambia indirizzo e modo di un server di posta del database");
  auto argomenti = std::make_shared<ArgomentiServer>();
  AggiungiArchivio(*comando, argomenti->posizione, true);
  comando->add_option("SERVER", argomenti->id, "Numero del server")
      ->required()
      ->type_name("")
      ->check(NumeroFino(2147483647));
  comando->add_option("--host", argomenti->host, "Nome o indirizzo della macchina")
      ->required()
      ->type_name("HOST");
  comando->add_option("--porta", argomenti->porta, "Porta")
      ->required()
      ->type_name("NUMERO")
      ->check(NumeroFino(65535));
  comando->add_flag("--senza-tls", argomenti->senzaTls, "Connessione non cifrata");
  comando->add_flag("--senza-autenticazione", argomenti->senzaAutenticazione,
                    "Nessun nome utente e password");
  comando->add_flag("--password-in-chiaro", argomenti->passwordInChiaro,
                    "Permette che utente e password viaggino senza TLS");
  comando->callback([argomenti, &contesto] { contesto.uscita = Imposta(*argomenti, contesto.terminale); });
}

}  // namespace orve::app
