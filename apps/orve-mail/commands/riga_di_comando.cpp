#include "orve-mail/commands/riga_di_comando.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <exception>
#include <memory>

#include "ambiente/connection_string.h"
#include "orve-mail/commands/comandi.h"
#include "orve-mail/host/traccia.h"
#include "orve-mail/terminal/numeri.h"
#include "orve-mailserver/host/errore.h"

namespace orve::app {

namespace {

constexpr const char* kDescrizione =
    "Invia un messaggio di posta per conto dell'applicazione gestionale, e mostra che cosa ne è stato "
    "registrato.";

constexpr const char* kStati =
    "Stato di uscita:\n"
    "  0  inviato e registrato (per gli altri comandi: eseguito)\n"
    "  1  invio fallito: il server, o la via per raggiungerlo, ha rifiutato il messaggio\n"
    "     (controlla-traccia: oggetti mai rilasciati; controlla: almeno un errore)\n"
    "  2  riga di comando errata\n"
    "  3  invio rifiutato prima di partire, con una riga nel registro\n"
    "  4  messaggio non partito per un errore\n"
    "  5  database, chiave, impostazioni o schermo non utilizzabili; nulla è stato tentato\n"
    "  6  un file da inviare, leggere o scrivere non è utilizzabile; nulla è stato tentato\n"
    "  7  messaggio inviato, ma non tutto è andato a buon fine\n"
    "     (controlla-traccia: tutto rilasciato, ma con righe senza riscontro;\n"
    "     controlla: solo avvisi)\n"
    "  8  finestra chiusa senza confermare; nulla è stato inviato né registrato\n"
    "  9  lista: non tutte le righe sono state inviate\n"
    "  130  lista: interrotta; invocata di nuovo, prosegue\n"
    "\n"
    "Maggiori informazioni: man orve-mail";

void InItaliano(CLI::App& programma) {
  auto formato = std::make_shared<CLI::Formatter>();
  formato->label("Usage", "Uso");
  formato->label("OPTIONS", "OPZIONI");
  formato->label("SUBCOMMAND", "COMANDO");
  formato->label("Positionals", "Argomenti");
  formato->label("REQUIRED", "(obbligatorio)");
  formato->label("Env", "variabile");
  formato->column_width(34);
  programma.formatter(formato);
  programma.option_defaults()->group("Opzioni");
}

// The words of the command line that nothing claimed.
std::string Estranei(const CLI::App& programma) {
  std::string estranei;
  for (const std::string& estraneo : programma.remaining(true)) {
    // A connection string in the wrong place may hold a password.
    estranei +=
        " «" + (adapters::ambiente::SembraStringaDiConnessione(estraneo) ? "odbc:***" : estraneo) + "»";
  }
  return estranei;
}

// The parser's own words are English; its kinds of error are few.
std::string Spiegazione(const CLI::App& programma, const CLI::ParseError& errore) {
  std::string testo = errore.what();
  const std::string opzione = testo.substr(0, testo.find(':'));
  if (dynamic_cast<const CLI::ExtrasError*>(&errore) != nullptr) {
    return "argomento non previsto:" + Estranei(programma);
  }
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&errore) != nullptr) {
    const bool troppi = testo.find("received") != std::string::npos;
    return opzione + (troppi ? ": va indicata una volta sola" : ": manca il valore");
  }
  if (dynamic_cast<const CLI::ConversionError*>(&errore) != nullptr) {
    return "valore non valido" + testo.substr(opzione.size());
  }
  if (dynamic_cast<const CLI::RequiredError*>(&errore) != nullptr) {
    const std::size_t fine = testo.find(" is required");
    const bool comando = testo.find("subcommand") != std::string::npos || fine == std::string::npos;
    if (!comando) return "manca " + testo.substr(0, fine);
    return programma.remaining().empty() ? "manca il comando" : "comando sconosciuto:" + Estranei(programma);
  }
  return testo;  // the texts of our own checks
}

const CLI::App& ComandoScelto(const CLI::App& programma) {
  const auto scelti = programma.get_subcommands();
  return scelti.empty() ? programma : *scelti.front();
}

Uscita Errata(const CLI::App& programma, const std::string& spiegazione, std::ostream& errori) {
  const CLI::App& comando = ComandoScelto(programma);
  const std::string nome = &comando == &programma ? "orve-mail" : "orve-mail " + comando.get_name();
  errori << nome << ": " << TerminalSafeLine(spiegazione) << "\nVedere «" << nome << " --help».\n";
  return Uscita::kComandoErrato;
}

Uscita Analizza(CLI::App& programma, Contesto& contesto, std::vector<std::string> argomenti) {
  std::reverse(argomenti.begin(), argomenti.end());  // the parser takes them from the end
  try {
    programma.parse(std::move(argomenti));
    return contesto.uscita;
  } catch (const CLI::CallForHelp&) {
    contesto.terminale.uscita << programma.help();
    return Uscita::kInviato;
  } catch (const CLI::CallForVersion& versione) {
    contesto.terminale.uscita << versione.what() << "\n";
    return Uscita::kInviato;
  } catch (const CLI::ParseError& errore) {
    return Errata(programma, Spiegazione(programma, errore), contesto.terminale.errori);
  } catch (const ErroreProgramma& errore) {
    if (errore.Stato() == Uscita::kComandoErrato) {
      return Errata(programma, errore.what(), contesto.terminale.errori);
    }
    contesto.terminale.errori << "orve-mail: " << TerminalSafeLine(errore.what()) << "\n";
    return errore.Stato();
  }
}

}  // namespace

Uscita Esegui(const std::vector<std::string>& argomenti, Terminale terminale) try {
  Contesto contesto{terminale};
  CLI::App programma(kDescrizione, "orve-mail");
  InItaliano(programma);
  programma.set_help_flag("-h,--help", "Mostra questo aiuto")->group("Opzioni");
  programma.set_version_flag("--version", "orve-mail " ORVE_VERSION, "Mostra la versione");
  std::shared_ptr<Traccia> traccia;
  programma
      .add_option_function<std::string>(
          "--traccia",
          [&](const std::string& file) {
            traccia = ApriTraccia(file, terminale.errori);
            contesto.terminale.traccia = traccia.get();
          },
          "Scrive la traccia delle istanze della libreria, davanti al comando; - per lo standard error")
      ->type_name("FILE");
  programma.require_subcommand(1);
  programma.footer(kStati);
  AggiungiCreaDb(programma, contesto);
  AggiungiInvia(programma, contesto);
  AggiungiInviaSmtp(programma, contesto);
  AggiungiLista(programma, contesto);
  AggiungiParametri(programma, contesto);
  AggiungiRegistro(programma, contesto);
  AggiungiEventi(programma, contesto);
  AggiungiImpostaServer(programma, contesto);
  AggiungiImpostaPassword(programma, contesto);
  AggiungiControlla(programma, contesto);
  AggiungiControllaTraccia(programma, contesto);
  for (CLI::App* const comando : programma.get_subcommands({})) {
    comando->group("Comandi");
    comando->get_help_ptr()->group("Opzioni");
  }
  const Uscita uscita = Analizza(programma, contesto, argomenti);
  terminale.uscita.flush();
  if (traccia && traccia->Incompleta()) {
    terminale.errori << "orve-mail: --traccia: non tutte le righe sono state scritte\n";
  }
  if (uscita == Uscita::kInviato && !terminale.uscita) {
    terminale.errori << "orve-mail: errore nella scrittura del risultato\n";
    return Uscita::kConRiserva;
  }
  return uscita;
} catch (...) {
  const host::Errore errore = host::ErroreCorrente();
  terminale.errori << "orve-mail: " << TerminalSafeLine(errore.Descrizione()) << "\n";
  return Uscita::kNonPartito;
}

CLI::Validator NumeroFino(std::int64_t massimo) {
  return {[massimo](std::string& testo) {
            const auto valore = Numero<std::int64_t>(testo);
            const bool numero = valore && *valore >= 1 && *valore <= massimo;
            return numero ? std::string()
                          : "«" + testo + "» non è un numero da 1 a " + std::to_string(massimo);
          },
          ""};
}

void AggiungiArchivio(CLI::App& comando, PosizioneArchivio& posizione, bool conChiave) {
  constexpr std::int64_t kUnGiorno = 86400;
  const auto attesa = [&comando](const char* opzione, std::chrono::seconds& valore, const char* aiuto) {
    comando
        .add_option_function<std::int64_t>(
            opzione, [&valore](std::int64_t secondi) { valore = std::chrono::seconds(secondi); }, aiuto)
        ->type_name("SECONDI")
        ->check(NumeroFino(kUnGiorno));
  };
  comando
      .add_option("--db", posizione.db,
                  "Database dell'applicazione: FILE, sqlite:FILE, oppure odbc: e una stringa di connessione")
      ->type_name("DATABASE")
      ->envname("ORVE_MAIL_DB");
  attesa("--attesa-accesso", posizione.attese.attesaAccesso,
         "Attesa massima per l'accesso a un database odbc: (se manca: 15)");
  attesa("--attesa-istruzione", posizione.attese.tempoMassimo,
         "Attesa massima per ogni istruzione del database (se manca: 30)");
  if (!conChiave) return;
  comando
      .add_option("--chiave", posizione.chiave,
                  "File con la chiave delle password (se manca: il nome del database seguito da .chiave)")
      ->type_name("FILE")
      ->envname("ORVE_MAIL_CHIAVE");
}

void AggiungiFileRegistro(CLI::App& comando, PosizioneArchivio& posizione) {
  comando
      .add_option(
          "--registro", posizione.registro,
          "File con il registro degli invii (se manca: il database stesso o, con odbc:, il nome della "
          "chiave seguito da .registro)")
      ->type_name("FILE")
      ->envname("ORVE_MAIL_REGISTRO");
}

}  // namespace orve::app
