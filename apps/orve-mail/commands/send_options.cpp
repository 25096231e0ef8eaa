#include "orve-mail/commands/send_options.h"

#include <CLI/CLI.hpp>
#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <string_view>
#include <utility>

#include "mime/address_list.h"
#include "orve-mail/commands/riga_di_comando.h"
#include "orve-mail/host/codici.h"
#include "orve-mail/host/file_dialogo.h"
#include "orve-mail/host/messaggio.h"
#include "orve-mail/terminal/numeri.h"
#include "smtp/hello.h"

namespace orve::app {

namespace {

bool Indicata(const CLI::App& comando, const char* opzione) {
  const CLI::Option* const trovata = comando.get_option_no_throw(opzione);
  return trovata != nullptr && trovata->count() > 0;
}

std::chrono::milliseconds Millisecondi(double secondi) {
  return std::chrono::milliseconds(static_cast<std::int64_t>(secondi * 1000));
}

// Where the dialogue goes: a line for each line of it.
std::function<void(std::string_view)> Dialogo(const std::string& file, std::ostream& errori) {
  if (file.empty()) return {};
  if (file == "-") return [&errori](std::string_view riga) { errori << TerminalSafeLine(riga) << std::endl; };
  return ScriviDialogo(file);
}

adapters::smtp::SmtpOptions OpzioniSmtp(const CLI::App& comando, const SendOptions& opzioni,
                                        std::ostream& errori) {
  adapters::smtp::SmtpOptions smtp;
  if (!opzioni.ca.empty()) {
    RichiediFileLeggibile(opzioni.ca);
    smtp.caFile = opzioni.ca;
  }
  if (Indicata(comando, "--attesa-connessione"))
    smtp.connectTimeout = Millisecondi(opzioni.attesaConnessione);
  if (Indicata(comando, "--attesa-risposta")) {
    smtp.replyTimeout = Millisecondi(opzioni.attesaRisposta);
    smtp.finalReplyTimeout = smtp.replyTimeout;
    smtp.stallTimeout = smtp.replyTimeout;
  }
  smtp.ehloName = opzioni.nomeEhlo;
  smtp.implicitTlsPorts.insert(smtp.implicitTlsPorts.end(), opzioni.porteTls.begin(), opzioni.porteTls.end());
  smtp.trace = Dialogo(opzioni.dialogo, errori);
  return smtp;
}

adapters::mapi::MapiOptions OpzioniMapi(const CLI::App& comando, const SendOptions& opzioni) {
  adapters::mapi::MapiOptions mapi;
  if (Indicata(comando, "--sendmail")) mapi.sendmail = opzioni.sendmail;
  if (Indicata(comando, "--sendmail-mittente")) {
    RichiediUtf8(opzioni.mittenteSendmail, "--sendmail-mittente");
    const VoceDestinatario mittente = LeggiDestinatario(opzioni.mittenteSendmail);
    mapi.senderAddress = mittente.indirizzo;
    mapi.senderName = mittente.nome;
  }
  if (Indicata(comando, "--attesa-risposta")) mapi.timeout = Millisecondi(opzioni.attesaRisposta);
  return mapi;
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
  const std::string difetto = richiesta.ditta.empty() ? "" : DifettoDellaDitta(richiesta.ditta);
  if (!difetto.empty()) {
    throw ErroreProgramma(Uscita::kComandoErrato, "--ditta: «" + richiesta.ditta + "» " + difetto);
  }
}

}  // namespace

void AggiungiMessaggio(CLI::App& comando, SendOptions& opzioni) {
  RichiestaInvio& richiesta = opzioni.richiesta;
  const auto testo = [&comando](const char* opzione, std::string& valore, const char* aiuto,
                                const char* tipo) {
    comando.add_option(opzione, valore, aiuto)->type_name(tipo)->group("Messaggio");
  };
  testo("--oggetto", richiesta.oggetto, "Oggetto", "TESTO");
  testo("--corpo", opzioni.corpo, "Corpo: un testo, @FILE, oppure @- per lo standard input", "TESTO");
  comando
      .add_option("--allegato", opzioni.allegati, "File da allegare (ripetibile; il primo è il documento)")
      ->type_name("FILE")
      ->allow_extra_args(false)
      ->group("Messaggio");
  comando
      .add_flag("--allegati-senza-controllo", opzioni.allegatiSenzaControllo,
                "Non verifica gli allegati prima dell'invio")
      ->group("Messaggio");
  comando.add_flag("--pec", richiesta.pec, "Posta certificata")->group("Messaggio");
  testo("--titolo", richiesta.titolo, "Titolo della stampa nel registro", "TESTO");
  testo("--azienda", richiesta.azienda, "Ragione sociale del destinatario", "TESTO");
  testo("--tipo-documento", richiesta.tipoDocumento, "Tipo del documento nel registro", "TESTO");
  testo("--numero-registrazione", richiesta.numeroRegistrazione, "Numero di registrazione", "TESTO");
  testo("--numero-documento", richiesta.numeroDocumento, "Numero del documento", "TESTO");
  testo("--sezione-documento", richiesta.sezioneDocumento, "Sezione del documento", "TESTO");
}

void AggiungiData(CLI::App& comando, SendOptions& opzioni) {
  comando.add_option("--data", opzioni.data, "Data a cui vale il codice: gg/mm/aaaa oppure aaaa-mm-gg")
      ->type_name("DATA")
      ->group("Messaggio");
}

void AggiungiContesto(CLI::App& comando, SendOptions& opzioni) {
  RichiestaInvio& richiesta = opzioni.richiesta;
  AggiungiArchivio(comando, richiesta.archivio, true);
  AggiungiFileRegistro(comando, richiesta.archivio);
  richiesta.ditta = "1";
  richiesta.utente.utente = "1";
  comando.add_option("--ditta", richiesta.ditta, "Ditta corrente (se manca: 1)")->type_name("NUMERO");
  comando
      .add_option("--utente", richiesta.utente.utente,
                  "Utente dell'applicazione: numero, oppure codice insieme a --gruppo (se manca: 1)")
      ->type_name("UTENTE");
  comando.add_option("--gruppo", richiesta.utente.gruppo, "Codice del gruppo dell'utente")
      ->type_name("CODICE");
}

void AggiungiRete(CLI::App& comando, SendOptions& opzioni) {
  const auto rete = [&comando](const char* opzione, auto& valore, const char* aiuto, const char* tipo) {
    return comando.add_option(opzione, valore, aiuto)->type_name(tipo)->group("Rete");
  };
  rete("--ca", opzioni.ca, "Certificati delle autorità di cui fidarsi al posto di quelle del sistema",
       "FILE");
  const CLI::Validator nomeDiMacchina(
      [](std::string& testo) {
        const std::string ascii = adapters::mime::AsciiDomain(testo).value_or("");
        const bool nome = adapters::smtp::IsAddressLiteralOrName(ascii);
        return nome ? std::string() : "«" + testo + "» non è il nome di una macchina né un [indirizzo]";
      },
      "");
  rete("--ehlo", opzioni.nomeEhlo,
       "Nome con cui presentarsi ai server (se manca: quello completo della macchina, altrimenti il suo "
       "indirizzo)",
       "NOME")
      ->check(nomeDiMacchina);
  rete("--porta-tls", opzioni.porteTls,
       "Porta su cui TLS comincia subito, oltre alla 465 (ripetibile); vale per gli account cifrati", "PORTA")
      ->allow_extra_args(false)
      ->check(NumeroFino(65535));
  comando
      .add_flag("--password-in-chiaro", opzioni.richiesta.passwordInChiaro,
                "Permette, per questa volta, che utente e password viaggino senza TLS")
      ->group("Rete");
  const CLI::Validator secondi(
      [](std::string& testo) {
        constexpr double kMinimo = 0.001;
        constexpr double kMassimo = 86400;
        const auto valore = Numero<double>(testo);
        const bool numero = valore && *valore >= kMinimo && *valore <= kMassimo;
        return numero ? std::string() : "«" + testo + "» non è un numero di secondi";
      },
      "");
  rete("--attesa-connessione", opzioni.attesaConnessione, "Attesa massima per la connessione", "SECONDI")
      ->check(secondi);
  rete("--attesa-risposta", opzioni.attesaRisposta, "Attesa massima per ogni risposta del server", "SECONDI")
      ->check(secondi);
  rete("--sendmail", opzioni.sendmail,
       "Comando a cui i canali MAPI affidano il messaggio (se manca: /usr/sbin/sendmail)", "PERCORSO");
  rete("--sendmail-mittente", opzioni.mittenteSendmail,
       "Mittente dei canali MAPI, «Nome <indirizzo>» (se manca: quello del sistema di posta)", "MITTENTE");
  rete("--dialogo", opzioni.dialogo,
       "Scrive il dialogo con il server, senza password; - per lo standard error", "FILE");
  AggiungiDirectory(comando, opzioni.directory);
}

RichiestaInvio LeggiRichiesta(const CLI::App& comando, const SendOptions& opzioni, Terminale terminale,
                              const std::vector<std::string>& altriEsclusi) {
  RichiestaInvio richiesta = opzioni.richiesta;
  richiesta.esclusi = FileDelProgramma(richiesta.archivio);
  if (!opzioni.directory.filePassword.empty()) richiesta.esclusi.push_back(opzioni.directory.filePassword);
  richiesta.esclusi.insert(richiesta.esclusi.end(), altriEsclusi.begin(), altriEsclusi.end());
  RichiediTesti(richiesta);
  if (Indicata(comando, "--data")) richiesta.data = LeggiData(opzioni.data);
  if (Indicata(comando, "--corpo")) {
    RichiediUtf8(opzioni.corpo, "--corpo");
    richiesta.corpo = LeggiCorpo(opzioni.corpo, terminale.ingresso, richiesta.esclusi);
  }
  for (const std::string& allegato : opzioni.allegati) {
    RichiediUtf8(allegato, "--allegato");
    richiesta.allegati.push_back(
        PreparaAllegato(allegato, !opzioni.allegatiSenzaControllo, richiesta.esclusi));
  }
  richiesta.smtp = OpzioniSmtp(comando, opzioni, terminale.errori);
  richiesta.mapi = OpzioniMapi(comando, opzioni);
  richiesta.directory = LeggiDirectory(comando, opzioni.directory);
  if (richiesta.directory && Indicata(comando, "--attesa-connessione"))
    richiesta.directory->connectTimeout = Millisecondi(opzioni.attesaConnessione);
  if (richiesta.directory && Indicata(comando, "--attesa-risposta"))
    richiesta.directory->operationTimeout = Millisecondi(opzioni.attesaRisposta);
  return richiesta;
}

}  // namespace orve::app
