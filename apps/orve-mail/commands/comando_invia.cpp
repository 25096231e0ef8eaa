// invia: one message, to a business partner by code or to the recipients named.
#include <CLI/CLI.hpp>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string_view>

#include "orve-mail/commands/comandi.h"
#include "orve-mail/commands/recipient_options.h"
#include "orve-mail/commands/riga_di_comando.h"
#include "orve-mail/commands/send_options.h"

namespace orve::app {

namespace {

struct ArgomentiInvia {
  RecipientOptions destinatari;
  SendOptions invio;
  std::string modo;
  std::int32_t mittente = 0;
};

[[noreturn]] void Errata(const std::string& testo) {
  throw ErroreProgramma(Uscita::kComandoErrato, testo);
}

kvEnumModalitaInvio Modo(std::string_view nome) {
  if (nome == "manuale") return kvManuale;
  if (nome == "automatico") return kvAutomatico;
  if (nome == "semi") return kvSemiAuto;
  if (nome == "lista") return kvListaDistribuzione;
  Errata("--modo: «" + std::string(nome) + "» non è manuale, automatico, semi o lista");
}

RichiestaInvio Richiesta(const CLI::App& comando, const ArgomentiInvia& argomenti, Terminale terminale) {
  const auto codice = LeggiCodice(comando, argomenti.destinatari);
  const auto destinatari = LeggiIndirizzi(argomenti.destinatari);
  if (codice && !destinatari.empty()) Errata("indicare un codice oppure --a, --cc, --ccn, non entrambi");
  if (!codice && destinatari.empty()) Errata("manca il destinatario");
  const bool conMittente = comando.count("--mittente") > 0;
  if (codice && conMittente) Errata("--mittente vale solo con --a, --cc, --ccn");
  std::optional<kvEnumModalitaInvio> modo;
  if (comando.count("--modo") > 0) modo = Modo(argomenti.modo);
  RichiestaInvio richiesta = LeggiRichiesta(comando, argomenti.invio, terminale);
  richiesta.codice = codice;
  richiesta.destinatari = destinatari;
  richiesta.modo = modo;
  if (conMittente) richiesta.mittente = static_cast<std::int16_t>(argomenti.mittente);
  return richiesta;
}

}  // namespace

void AggiungiInvia(CLI::App& programma, Contesto& contesto) {
  auto* const comando = programma.add_subcommand("invia", "Invia un messaggio");
  auto argomenti = std::make_shared<ArgomentiInvia>();
  AggiungiCodici(*comando, argomenti->destinatari);
  AggiungiIndirizzi(*comando, argomenti->destinatari);
  comando
      ->add_option("--mittente", argomenti->mittente,
                   "Account da cui inviare (se manca: quello predefinito dell'utente o della ditta)")
      ->type_name("NUMERO")
      ->check(NumeroFino(std::numeric_limits<std::int16_t>::max()))
      ->group("Destinatari per indirizzo (ripetibili)");
  AggiungiMessaggio(*comando, argomenti->invio);
  comando
      ->add_option("--modo", argomenti->modo,
                   "manuale, automatico, semi o lista (se manca: dalle impostazioni); con --a, --cc, --ccn "
                   "il messaggio parte subito e senza finestra, qualunque sia il modo")
      ->type_name("MODO")
      ->group("Messaggio");
  AggiungiData(*comando, argomenti->invio);
  AggiungiContesto(*comando, argomenti->invio);
  AggiungiRete(*comando, argomenti->invio);
  comando->callback([comando, argomenti, &contesto] {
    contesto.uscita = Spedisci(Richiesta(*comando, *argomenti, contesto.terminale), contesto.terminale);
  });
}

}  // namespace orve::app
