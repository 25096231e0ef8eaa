// parametri: asks, in the library's window, for the parameters of a send to a whole list, and prints the
// answers.
#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <string_view>

#include "orve-mail/commands/comandi.h"
#include "orve-mail/commands/send_options.h"
#include "orve-mail/host/ambiente.h"
#include "orve-mail/host/finestre.h"
#include "orve-mail/host/interfaccia_programma.h"
#include "orve-mailserver/addressing/mittenti.h"
#include "orve-mailserver/posix/percorsi.h"
#include "orve-mailserver/service/CLSFW_MAILSERVER.h"

namespace orve::app {

namespace {

constexpr const char* kVoce = "orve-mail";

// A line of the answers: the text on one line, whatever it holds.
std::string SuUnaRiga(std::string_view testo) {
  std::string riga;
  for (const char c : testo) {
    if (c == '\r') continue;
    if (c == '\n') {
      riga += "\\n";
    } else if (c == '\\') {
      riga += "\\\\";
    } else {
      riga += c;
    }
  }
  return TerminalSafeLine(riga);
}

std::string Percorso(const std::string& percorso) {
  return percorso.empty() ? percorso : TerminalSafeLine(adapters::posix::PercorsoUnix(percorso));
}

const char* SiNo(bool valore) {
  return valore ? "sì" : "no";
}

void Prepara(CLSFW_MAILSERVER& servizio, std::int32_t utente) try {
  servizio.GetImpostazioni();
  servizio.InizializzaRegistroInvioMailMultiprofilo(kVoce, kVoce, utente, "");
} catch (const host::Errore& errore) {
  throw ErroreProgramma(
      Uscita::kNonUtilizzabile,
      "Impostazioni non utilizzabili: " + std::to_string(errore.Numero()) + " " + errore.Descrizione());
}

Uscita Chiedi(const RichiestaInvio& richiesta, Terminale terminale) {
  RichiediSchermo("I parametri si danno in una finestra.");
  auto chiave = LeggiChiave(richiesta.archivio);
  const auto archivio = ApriArchivio(richiesta.archivio);
  const std::int32_t utente = TrovaUtente(*archivio.connessione, richiesta.utente);
  archivio.DiUtente(utente);
  const auto note = std::make_shared<Osservazioni>();
  auto opzioni = OpzioniDelProgramma(terminale, note);
  opzioni.cartellaBase = CartellaBase(richiesta.archivio);
  opzioni.chiave = std::move(chiave);
  opzioni.registro = ApriRegistro(richiesta.archivio, archivio);
  opzioni.finestre = CreaFinestre(note);
  const auto ambiente = std::make_shared<adapters::ambiente::AmbientePronto>(std::move(opzioni));
  CLSFW_MAILSERVER servizio(ambiente);
  servizio.ConnectionADO = archivio.connessione;
  servizio.ActiveInterface = CreaInterfaccia(utente, ambiente->CreaMessaggi());
  servizio.DittaCorrente = richiesta.ditta;
  Prepara(servizio, utente);
  servizio.MailParamCorpoUnico(richiesta.corpo.value_or(""));
  servizio.ReturnMailParameters();
  // The library says nothing when its window fails.
  if (note->finestreMostrate == 0) {
    throw ErroreProgramma(Uscita::kNonPartito, "La finestra dei parametri non si è aperta.");
  }
  terminale.uscita << "confermato: " << SiNo(servizio.MailParamIsValoriValidi()) << "\n"
                   << "tipo: " << (servizio.MailParamTipo() == 1 ? "pec" : "mail") << "\n"
                   << "account: " << TerminalSafeLine(servizio.MailParamAccount()->Indirizzo()) << "\n"
                   << "lettura: " << SiNo(servizio.MailParamReadRcpt()) << "\n"
                   << "consegna: " << SiNo(servizio.MailParamDeliveryStatus()) << "\n"
                   << "allegato: " << Percorso(servizio.MailParamAllegatoUnico()) << "\n"
                   << "corpo: " << SuUnaRiga(servizio.MailParamCorpoUnico()) << "\n";
  return servizio.MailParamIsValoriValidi() ? Uscita::kInviato : Uscita::kAnnullato;
}

}  // namespace

void AggiungiParametri(CLI::App& programma, Contesto& contesto) {
  auto* const comando = programma.add_subcommand(
      "parametri", "Chiede in una finestra i parametri di un invio a una lista e mostra le risposte");
  auto opzioni = std::make_shared<SendOptions>();
  AggiungiContesto(*comando, *opzioni);
  comando
      ->add_option("--corpo", opzioni->corpo,
                   "Corpo proposto nella finestra: un testo, @FILE, oppure @- per lo standard input")
      ->type_name("TESTO");
  comando->callback([comando, opzioni, &contesto] {
    contesto.uscita = Chiedi(LeggiRichiesta(*comando, *opzioni, contesto.terminale), contesto.terminale);
  });
}

}  // namespace orve::app
