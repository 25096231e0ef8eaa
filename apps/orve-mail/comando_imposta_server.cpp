// imposta-server: where a mail server of the database really is.
#include <CLI/CLI.hpp>
#include <memory>

#include "host/errore.h"
#include "orve-mail/archivio.h"
#include "orve-mail/comandi.h"
#include "orve-mail/messaggio.h"
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
};

// The column has 16 bits with a sign: the upper half of the ports stands in it as negative numbers.
std::int32_t PortaInColonna(std::int32_t porta) {
  constexpr std::int32_t kMassimo = 32767;
  constexpr std::int32_t kGiro = 65536;
  return porta > kMassimo ? porta - kGiro : porta;
}

Uscita Imposta(const ArgomentiServer& argomenti, Terminale terminale) {
  RichiediUtf8(argomenti.host, "--host");
  const auto archivio = ApriIncorporato(argomenti.posizione);
  try {
    adapters::sqlite::ImpostaServer(*archivio, argomenti.id, argomenti.host, PortaInColonna(argomenti.porta),
                                    argomenti.senzaTls ? 0 : 1, argomenti.senzaAutenticazione ? 0 : 1);
  } catch (const host::Errore& errore) {
    throw ErroreProgramma(Uscita::kNonUtilizzabile, errore.Descrizione());
  }
  terminale.uscita << "Server " << argomenti.id << ": " << RigaSicura(argomenti.host) << ", porta "
                   << argomenti.porta << (argomenti.senzaTls ? ", senza TLS" : ", TLS")
                   << (argomenti.senzaAutenticazione ? ", senza autenticazione" : ", autenticazione") << "\n";
  return Uscita::kInviato;
}

}  // namespace

void AggiungiImpostaServer(CLI::App& programma, Contesto& contesto) {
  auto* const comando = programma.add_subcommand(
      "imposta-server", "Cambia indirizzo e modo di un server di posta del database");
  auto argomenti = std::make_shared<ArgomentiServer>();
  AggiungiArchivio(*comando, argomenti->posizione, false);
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
  comando->callback([argomenti, &contesto] { contesto.uscita = Imposta(*argomenti, contesto.terminale); });
}

}  // namespace orve::app
