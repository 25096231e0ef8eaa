// lista: one message for each row of a file.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>

#include "orve-mail/commands/comandi.h"
#include "orve-mail/commands/send_options.h"
#include "orve-mail/lists/lista.h"

namespace orve::app {

namespace {

constexpr const char* kAiutoColonne =
    "La prima riga di FILE nomina le colonne: tipo e codice, oppure nome e indirizzo; se servono oggetto,\n"
    "corpo, allegato. Invocato di nuovo con lo stesso file dei risultati, il comando prosegue con le righe "
    "non\n"
    "ancora inviate.\n"
    "\n"
    "Stati di uscita: orve-mail --help. Maggiori informazioni: man orve-mail";

struct ArgomentiLista {
  RichiestaLista lista;
  SendOptions invio;
  std::string modo = "lista";
};

kvEnumModalitaInvio ModoLista(std::string_view nome) {
  if (nome == "lista") return kvListaDistribuzione;
  if (nome == "automatico") return kvAutomatico;
  throw ErroreProgramma(Uscita::kComandoErrato,
                        "--modo: «" + std::string(nome) + "» non è lista o automatico");
}

std::string CartellaDi(const std::string& file) {
  const std::string cartella = std::filesystem::path(file).parent_path();
  return cartella.empty() ? "." : cartella;
}

RichiestaLista Richiesta(const CLI::App& comando, const ArgomentiLista& argomenti, Terminale terminale) {
  RichiestaLista richiesta = argomenti.lista;
  if (richiesta.file.empty()) throw ErroreProgramma(Uscita::kComandoErrato, "manca il file dell'elenco");
  RichiediUtf8(richiesta.file, "FILE");
  RichiediUtf8(richiesta.esiti, "--esito");
  if (richiesta.esiti.empty()) richiesta.esiti = richiesta.file + ".esito";
  const kvEnumModalitaInvio modo = ModoLista(argomenti.modo);
  richiesta.cartelleAllegati.insert(richiesta.cartelleAllegati.begin(), CartellaDi(richiesta.file));
  richiesta.comune = LeggiRichiesta(comando, argomenti.invio, terminale,
                                    {richiesta.file, richiesta.esiti, richiesta.esiti + ".nuovo"});
  richiesta.comune.modo = modo;
  richiesta.controllaAllegati = !argomenti.invio.allegatiSenzaControllo;
  return richiesta;
}

}  // namespace

void AggiungiLista(CLI::App& programma, Contesto& contesto) {
  auto* const comando = programma.add_subcommand("lista", "Invia un messaggio per ogni riga di un file CSV");
  auto argomenti = std::make_shared<ArgomentiLista>();
  comando->add_option("FILE", argomenti->lista.file, "L'elenco, in CSV")->type_name("")->required();
  comando
      ->add_option("--esito", argomenti->lista.esiti,
                   "File dei risultati, una riga per ogni riga (se manca: FILE seguito da .esito)")
      ->type_name("FILE");
  comando
      ->add_option("--cartella-allegati", argomenti->lista.cartelleAllegati,
                   "Cartella da cui le righe possono allegare file, oltre a quella dell'elenco (ripetibile)")
      ->type_name("CARTELLA")
      ->allow_extra_args(false)
      ->check(CLI::Validator(
          [](std::string& cartella) {
            std::error_code codice;
            const bool esiste = std::filesystem::is_directory(cartella, codice);
            return esiste ? std::string() : "«" + cartella + "» non è una cartella";
          },
          ""));
  comando->add_flag("--ritenta-incerti", argomenti->lista.ritentaIncerti,
                    "Invia di nuovo le righe di cui non si sa se siano partite");
  AggiungiMessaggio(*comando, argomenti->invio);
  comando->add_option("--modo", argomenti->modo, "lista o automatico (se manca: lista)")
      ->type_name("MODO")
      ->group("Messaggio");
  AggiungiData(*comando, argomenti->invio);
  AggiungiContesto(*comando, argomenti->invio);
  AggiungiRete(*comando, argomenti->invio);
  comando->footer(kAiutoColonne);
  comando->callback([comando, argomenti, &contesto] {
    contesto.uscita = InviaLista(Richiesta(*comando, *argomenti, contesto.terminale), contesto.terminale);
  });
}

}  // namespace orve::app
