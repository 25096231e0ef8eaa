// invia: one message, to a business partner by code or to the recipients named.
#include <CLI/CLI.hpp>
#include <array>
#include <chrono>
#include <fstream>
#include <map>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "orve-mail/comandi.h"
#include "orve-mail/numeri.h"
#include "orve-mail/riga_di_comando.h"
#include "orve-mail/spedizione.h"

namespace orve::app {

namespace {

// The options as they come, before they are looked at.
struct Argomenti {
  RichiestaInvio richiesta;
  std::map<std::string, std::string> codici;  // by option
  std::vector<std::string> a, cc, ccn;
  std::vector<std::string> allegati;
  std::string corpo;
  std::string modo;
  std::string data;
  std::string ca;
  std::string traccia;
  double attesaConnessione = 0;
  double attesaRisposta = 0;
  bool allegatiSenzaControllo = false;
};

struct TipoDiCodice {
  const char* opzione;
  kvTipologiaDestinatarioFAX tipo;
  const char* aiuto;
};

constexpr std::array<TipoDiCodice, 7> kTipi = {{
    {"--cliente", kvDestinatarioFaxCliente, "Codice di un cliente della ditta"},
    {"--fornitore", kvDestinatarioFaxFornitore, "Codice di un fornitore della ditta"},
    {"--agente", kvDestinatarioFaxAgente, "Codice di un agente della ditta"},
    {"--contatto", kvDestinatarioFaxContatto, "Numero di un contatto"},
    {"--destinatario", kvDestinatarioFaxDestinatario,
     "Destinazione merce: ditta/cliente o fornitore/0 o 1/destinazione"},
    {"--numero", kvDestinatarioFaxNumero, "Testo con l'indirizzo dietro <***> o, con --pec, dietro <*pec*>"},
    {"--anagrafica", kvDestinatarioFaxAnagrafica, "Codice di anagrafica generale"},
}};

std::optional<kvEnumModalitaInvio> Modo(std::string_view nome) {
  if (nome == "manuale") return kvManuale;
  if (nome == "automatico") return kvAutomatico;
  if (nome == "semi") return kvSemiAuto;
  if (nome == "lista") return kvListaDistribuzione;
  return std::nullopt;
}

[[noreturn]] void Errata(const std::string& testo) {
  throw ErroreProgramma(Uscita::kComandoErrato, testo);
}

void AggiungiDestinatari(CLI::App& comando, Argomenti& argomenti) {
  for (const TipoDiCodice& tipo : kTipi) {
    comando.add_option(tipo.opzione, argomenti.codici[tipo.opzione], tipo.aiuto)
        ->type_name("CODICE")
        ->group("Destinatario (uno solo di questi, oppure --a, --cc, --ccn)");
  }
  const auto aggiungi = [&comando](const char* opzione, std::vector<std::string>& voci, const char* aiuto) {
    comando.add_option(opzione, voci, aiuto)
        ->type_name("\"NOME <INDIRIZZO>\"")
        ->allow_extra_args(false)
        ->group("Destinatari per indirizzo (ripetibili)");
  };
  aggiungi("--a", argomenti.a, "Destinatario");
  aggiungi("--cc", argomenti.cc, "Destinatario per conoscenza");
  aggiungi("--ccn", argomenti.ccn, "Destinatario per conoscenza nascosta");
}

void AggiungiMessaggio(CLI::App& comando, Argomenti& argomenti) {
  RichiestaInvio& richiesta = argomenti.richiesta;
  const auto testo = [&comando](const char* opzione, std::string& valore, const char* aiuto,
                                const char* tipo) {
    return comando.add_option(opzione, valore, aiuto)->type_name(tipo)->group("Messaggio");
  };
  testo("--oggetto", richiesta.oggetto, "Oggetto", "TESTO");
  testo("--corpo", argomenti.corpo, "Corpo: un testo, @FILE, oppure @- per lo standard input", "TESTO");
  comando
      .add_option("--allegato", argomenti.allegati, "File da allegare (ripetibile; il primo è il documento)")
      ->type_name("FILE")
      ->allow_extra_args(false)
      ->group("Messaggio");
  comando
      .add_flag("--allegati-senza-controllo", argomenti.allegatiSenzaControllo,
                "Non verifica gli allegati prima dell'invio")
      ->group("Messaggio");
  comando.add_flag("--pec", richiesta.pec, "Posta certificata")->group("Messaggio");
  testo("--modo", argomenti.modo, "manuale, automatico, semi o lista (se manca: dalle impostazioni)", "MODO");
  testo("--data", argomenti.data, "Data a cui vale il codice: gg/mm/aaaa oppure aaaa-mm-gg", "DATA");
  testo("--titolo", richiesta.titolo, "Titolo della stampa nel registro", "TESTO");
  testo("--azienda", richiesta.azienda, "Ragione sociale del destinatario", "TESTO");
  testo("--tipo-documento", richiesta.tipoDocumento, "Tipo del documento nel registro", "TESTO");
  testo("--numero-registrazione", richiesta.numeroRegistrazione, "Numero di registrazione", "TESTO");
  testo("--numero-documento", richiesta.numeroDocumento, "Numero del documento", "TESTO");
  testo("--sezione-documento", richiesta.sezioneDocumento, "Sezione del documento", "TESTO");
}

void AggiungiContesto(CLI::App& comando, Argomenti& argomenti) {
  RichiestaInvio& richiesta = argomenti.richiesta;
  AggiungiArchivio(comando, richiesta.archivio, true);
  richiesta.ditta = "1";
  richiesta.utente.utente = "1";
  comando.add_option("--ditta", richiesta.ditta, "Ditta corrente (se manca: 1)")->type_name("NUMERO");
  comando
      .add_option("--utente", richiesta.utente.utente,
                  "Utente dell'applicazione: numero, oppure codice insieme a --gruppo (se manca: 1)")
      ->type_name("UTENTE");
  comando.add_option("--gruppo", richiesta.utente.gruppo, "Codice del gruppo dell'utente")
      ->type_name("CODICE");
  const auto rete = [&comando](const char* opzione, auto& valore, const char* aiuto, const char* tipo) {
    return comando.add_option(opzione, valore, aiuto)->type_name(tipo)->group("Rete");
  };
  rete("--ca", argomenti.ca, "Certificati delle autorità di cui fidarsi al posto di quelle del sistema",
       "FILE");
  const CLI::Validator secondi(
      [](std::string& testo) {
        constexpr double kMinimo = 0.001;
        constexpr double kMassimo = 86400;
        const auto valore = Numero<double>(testo);
        const bool numero = valore && *valore >= kMinimo && *valore <= kMassimo;
        return numero ? std::string() : "«" + testo + "» non è un numero di secondi";
      },
      "");
  rete("--attesa-connessione", argomenti.attesaConnessione, "Attesa massima per la connessione", "SECONDI")
      ->check(secondi);
  rete("--attesa-risposta", argomenti.attesaRisposta, "Attesa massima per ogni risposta del server",
       "SECONDI")
      ->check(secondi);
  rete("--traccia", argomenti.traccia,
       "Scrive il dialogo con il server, senza password; - per lo standard error", "FILE");
}

// The one code given, if any.
std::optional<CodiceDestinatario> Codice(const CLI::App& comando, const Argomenti& argomenti) {
  std::optional<CodiceDestinatario> codice;
  for (const TipoDiCodice& tipo : kTipi) {
    if (comando.count(tipo.opzione) == 0) continue;
    if (codice) Errata("indicare un solo destinatario per codice");
    codice = CodiceDestinatario{argomenti.codici.at(tipo.opzione), tipo.tipo};
    RichiediUtf8(codice->codice, tipo.opzione);
  }
  return codice;
}

std::vector<DestinatarioInCasella> Destinatari(const Argomenti& argomenti) {
  std::vector<DestinatarioInCasella> destinatari;
  const auto aggiungi = [&](const std::vector<std::string>& voci, std::int16_t casella, const char* opzione) {
    for (const std::string& voce : voci) {
      RichiediUtf8(voce, opzione);
      destinatari.push_back({LeggiDestinatario(voce), casella});
    }
  };
  aggiungi(argomenti.a, 0, "--a");
  aggiungi(argomenti.cc, 1, "--cc");
  aggiungi(argomenti.ccn, 2, "--ccn");
  return destinatari;
}

std::chrono::milliseconds Millisecondi(double secondi) {
  return std::chrono::milliseconds(static_cast<std::int64_t>(secondi * 1000));
}

adapters::smtp::SmtpOptions OpzioniSmtp(const CLI::App& comando, const Argomenti& argomenti) {
  adapters::smtp::SmtpOptions opzioni;
  if (!argomenti.ca.empty()) {
    RichiediFileLeggibile(argomenti.ca);
    opzioni.caFile = argomenti.ca;
  }
  if (comando.count("--attesa-connessione") > 0) {
    opzioni.connectTimeout = Millisecondi(argomenti.attesaConnessione);
  }
  if (comando.count("--attesa-risposta") > 0) {
    opzioni.replyTimeout = Millisecondi(argomenti.attesaRisposta);
    opzioni.finalReplyTimeout = opzioni.replyTimeout;
    opzioni.stallTimeout = opzioni.replyTimeout;
  }
  return opzioni;
}

// Where the dialogue goes: a line for each line of it.
std::function<void(std::string_view)> Traccia(const std::string& file, std::ostream& errori) {
  if (file.empty()) return {};
  if (file == "-") return [&errori](std::string_view riga) { errori << RigaSicura(riga) << std::endl; };
  auto flusso = std::make_shared<std::ofstream>(file, std::ios::app);
  if (!flusso->good())
    throw ErroreProgramma(Uscita::kFileMancante, "--traccia: impossibile scrivere " + file);
  return [flusso](std::string_view riga) { *flusso << RigaSicura(riga) << std::endl; };
}

void RichiediTesti(const RichiestaInvio& richiesta) {
  const std::array<std::pair<const char*, const std::string*>, 9> testi = {
      {{"--oggetto", &richiesta.oggetto},
       {"--titolo", &richiesta.titolo},
       {"--azienda", &richiesta.azienda},
       {"--tipo-documento", &richiesta.tipoDocumento},
       {"--numero-registrazione", &richiesta.numeroRegistrazione},
       {"--numero-documento", &richiesta.numeroDocumento},
       {"--sezione-documento", &richiesta.sezioneDocumento},
       {"--utente", &richiesta.utente.utente},
       {"--gruppo", &richiesta.utente.gruppo}}};
  for (const auto& [opzione, testo] : testi) RichiediUtf8(*testo, opzione);
  const bool numero = richiesta.ditta.find_first_not_of("0123456789") == std::string::npos;
  if (!numero || richiesta.ditta.size() > 9) Errata("--ditta: «" + richiesta.ditta + "» non è un numero");
}

RichiestaInvio Richiesta(const CLI::App& comando, const Argomenti& argomenti, Terminale terminale) {
  RichiestaInvio richiesta = argomenti.richiesta;
  RichiediTesti(richiesta);
  richiesta.codice = Codice(comando, argomenti);
  richiesta.destinatari = Destinatari(argomenti);
  if (richiesta.codice && !richiesta.destinatari.empty()) {
    Errata("indicare un codice oppure --a, --cc, --ccn, non entrambi");
  }
  if (!richiesta.codice && richiesta.destinatari.empty()) Errata("manca il destinatario");
  if (comando.count("--modo") > 0) {
    richiesta.modo = Modo(argomenti.modo);
    if (!richiesta.modo) Errata("--modo: «" + argomenti.modo + "» non è manuale, automatico, semi o lista");
  }
  if (comando.count("--data") > 0) richiesta.data = LeggiData(argomenti.data);
  if (comando.count("--corpo") > 0) {
    RichiediUtf8(argomenti.corpo, "--corpo");
    richiesta.corpo = LeggiCorpo(argomenti.corpo, terminale.ingresso);
  }
  for (const std::string& allegato : argomenti.allegati) {
    RichiediUtf8(allegato, "--allegato");
    richiesta.allegati.push_back(PreparaAllegato(allegato, !argomenti.allegatiSenzaControllo));
  }
  richiesta.smtp = OpzioniSmtp(comando, argomenti);
  richiesta.smtp.trace = Traccia(argomenti.traccia, terminale.errori);
  return richiesta;
}

}  // namespace

void AggiungiInvia(CLI::App& programma, Contesto& contesto) {
  auto* const comando = programma.add_subcommand("invia", "Invia un messaggio");
  auto argomenti = std::make_shared<Argomenti>();
  AggiungiDestinatari(*comando, *argomenti);
  AggiungiMessaggio(*comando, *argomenti);
  AggiungiContesto(*comando, *argomenti);
  comando->callback([comando, argomenti, &contesto] {
    contesto.uscita = Spedisci(Richiesta(*comando, *argomenti, contesto.terminale), contesto.terminale);
  });
}

}  // namespace orve::app
