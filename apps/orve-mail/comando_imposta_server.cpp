// imposta-server: where a mail server of the database really is.
#include <CLI/CLI.hpp>
#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "host/errore.h"
#include "orve-mail/archivio.h"
#include "orve-mail/comandi.h"
#include "orve-mail/messaggio.h"
#include "orve-mail/password_in_chiaro.h"
#include "orve-mail/password_memorizzate.h"
#include "orve-mail/riga_di_comando.h"
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

// The column has 16 bits with a sign: the upper half of the ports stands in it as negative numbers.
std::int32_t PortaInColonna(std::int32_t porta) {
  constexpr std::int32_t kMassimo = 32767;
  constexpr std::int32_t kGiro = 65536;
  return porta > kMassimo ? porta - kGiro : porta;
}

// The passwords of a server's accounts go along with it: whoever has the key may point it elsewhere.
class Trasloco {
 public:
  explicit Trasloco(const PosizioneArchivio& posizione) : posizione_(posizione) {}

  void Sposta(adapters::sqlite::SqliteConnection& archivio, const PasswordMemorizzata& prima,
              const PasswordMemorizzata& dopo) {
    if (!SigilloPassword::Sigillato(prima.testo) || prima.legame == dopo.legame) return;
    try {
      const auto chiara = Sigillo().Apri(prima.testo, prima.legame);
      SostituisciPassword(archivio, prima.account, Sigillo().Sigilla(chiara.View(), dopo.legame));
    } catch (const host::Errore& errore) {
      if (errore.Numero() != host::kArgomentoNonValido) throw;
      if (!GiaSua(dopo)) rimaste_.push_back(prima.account);
    }
  }

  /// The accounts whose passwords are good for neither server.
  [[nodiscard]] const std::vector<std::int32_t>& Rimaste() const { return rimaste_; }

 private:
  // The key is wanted only when there is something to do with it.
  const SigilloPassword& Sigillo() {
    if (!sigillo_) {
      sigillo_.emplace(std::make_shared<const Chiave>(Chiave::Leggi(FileChiave(posizione_))));
    }
    return *sigillo_;
  }

  // Somebody else had pointed the server away in the meantime.
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
    adapters::sqlite::ImpostaServer(*archivio, argomenti.id, argomenti.host, PortaInColonna(argomenti.porta),
                                    argomenti.senzaTls ? 0 : 1, argomenti.senzaAutenticazione ? 0 : 1);
    if (inChiaro) PermettiInChiaro(*archivio, argomenti.host, static_cast<std::uint16_t>(argomenti.porta));
    RitiraPermessiSuperflui(*archivio);
    const auto dopo = LeggiPassword(*archivio, {{}, argomenti.id});
    for (std::size_t i = 0; i < prima.size(); ++i) trasloco.Sposta(*archivio, prima[i], dopo[i]);
    static_cast<void>(archivio->EseguiConValori("COMMIT", {}));
  } catch (const host::Errore& errore) {
    throw ErroreProgramma(Uscita::kNonUtilizzabile, errore.Descrizione());
  }
  terminale.uscita << "Server " << argomenti.id << ": " << RigaSicura(argomenti.host) << ", porta "
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
