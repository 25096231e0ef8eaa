// invia: one message, to a business partner by code or to the recipients named.
#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <string_view>

#include "orve-mail/comandi.h"
#include "orve-mail/opzioni_destinatari.h"
#include "orve-mail/opzioni_invio.h"

namespace orve::app {

namespace {

struct Argomenti {
  OpzioniDestinatari destinatari;
  OpzioniInvio invio;
  std::string modo;
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

RichiestaInvio Richiesta(const CLI::App& comando, const Argomenti& argomenti, Terminale terminale) {
  const auto codice = LeggiCodice(comando, argomenti.destinatari);
  const auto destinatari = LeggiIndirizzi(argomenti.destinatari);
  if (codice && !destinatari.empty()) Errata("indicare un codice oppure --a, --cc, --ccn, non entrambi");
  if (!codice && destinatari.empty()) Errata("manca il destinatario");
  std::optional<kvEnumModalitaInvio> modo;
  if (comando.count("--modo") > 0) modo = Modo(argomenti.modo);
  RichiestaInvio richiesta = LeggiRichiesta(comando, argomenti.invio, terminale);
  richiesta.codice = codice;
  richiesta.destinatari = destinatari;
  richiesta.modo = modo;
  return richiesta;
}

}  // namespace

void AggiungiInvia(CLI::App& programma, Contesto& contesto) {
  auto* const comando = programma.add_subcommand("invia", "Invia un messaggio");
  auto argomenti = std::make_shared<Argomenti>();
  AggiungiCodici(*comando, argomenti->destinatari);
  AggiungiIndirizzi(*comando, argomenti->destinatari);
  AggiungiMessaggio(*comando, argomenti->invio);
  comando
      ->add_option("--modo", argomenti->modo,
                   "manuale, automatico, semi o lista (se manca: dalle impostazioni)")
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
