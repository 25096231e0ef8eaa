// invia-smtp: one message bypassing the send procedure, always through SMTP and from the default account.
#include <CLI/CLI.hpp>
#include <memory>

#include "orve-mail/commands/comandi.h"
#include "orve-mail/commands/recipient_options.h"
#include "orve-mail/commands/send_options.h"

namespace orve::app {

namespace {

struct ArgomentiInviaSmtp {
  RecipientOptions destinatari;
  SendOptions invio;
  bool silenzioso = false;
};

RichiestaInvio Richiesta(const CLI::App& comando, const ArgomentiInviaSmtp& argomenti, Terminale terminale) {
  auto destinatari = LeggiIndirizzi(argomenti.destinatari);
  if (destinatari.empty()) throw ErroreProgramma(Uscita::kComandoErrato, "manca il destinatario");
  RichiestaInvio richiesta = LeggiRichiesta(comando, argomenti.invio, terminale);
  richiesta.destinatari = std::move(destinatari);
  return richiesta;
}

}  // namespace

void AggiungiInviaSmtp(CLI::App& programma, Contesto& contesto) {
  auto* const comando = programma.add_subcommand("invia-smtp",
                                                 "Invia un messaggio dall'account predefinito, sempre per "
                                                 "SMTP, qualunque sia il canale delle impostazioni");
  auto argomenti = std::make_shared<ArgomentiInviaSmtp>();
  AggiungiIndirizzi(*comando, argomenti->destinatari);
  AggiungiMessaggio(*comando, argomenti->invio);
  comando
      ->add_flag("--silenzioso", argomenti->silenzioso,
                 "La libreria non mostra i propri errori, e il programma li riporta in fondo")
      ->group("Messaggio");
  AggiungiContesto(*comando, argomenti->invio);
  AggiungiRete(*comando, argomenti->invio);
  comando->callback([comando, argomenti, &contesto] {
    contesto.uscita = SpedisciDaSola(Richiesta(*comando, *argomenti, contesto.terminale),
                                     argomenti->silenzioso, contesto.terminale);
  });
}

}  // namespace orve::app
