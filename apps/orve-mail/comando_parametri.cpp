// parametri: asks, in the library's window, for the parameters of a send to a whole list, and prints the
// answers.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "addressing/senders.h"
#include "orve-mail/ambiente_finestre.h"
#include "orve-mail/comandi.h"
#include "orve-mail/interfaccia_programma.h"
#include "orve-mail/messaggio.h"
#include "orve-mail/riga_di_comando.h"
#include "posix/percorsi.h"
#include "service/CLSFW_MAILSERVER.h"

namespace orve::app {

namespace {

constexpr const char* kVoce = "orve-mail";

struct Argomenti {
  PosizioneArchivio archivio;
  UtenteIndicato utente{.utente = "1", .gruppo = {}};
  int ditta = 1;
  std::string corpo;
};

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
  return RigaSicura(riga);
}

std::string Percorso(const std::string& percorso) {
  return percorso.empty() ? percorso : RigaSicura(adapters::posix::PercorsoUnix(percorso));
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

Uscita Chiedi(const Argomenti& argomenti, Terminale terminale) {
  RichiediSchermo("I parametri si danno in una finestra.");
  auto chiave = std::make_shared<const Chiave>(Chiave::Leggi(FileChiave(argomenti.archivio)));
  const auto archivio = ApriArchivio(argomenti.archivio);
  const std::int32_t utente = TrovaUtente(*archivio, argomenti.utente);
  archivio->UtenteConnessione(utente);
  const auto note = std::make_shared<Osservazioni>();
  const std::string base = std::filesystem::absolute(FileArchivio(argomenti.archivio)).parent_path().native();
  const auto ambiente = std::make_shared<AmbienteFinestre>(terminale, std::move(chiave),
                                                           adapters::smtp::SmtpOptions{}, base, note);
  CLSFW_MAILSERVER servizio(ambiente);
  servizio.ConnectionADO = archivio;
  servizio.ActiveInterface = CreaInterfaccia(utente, ambiente->CreaMessaggi());
  servizio.DittaCorrente = argomenti.ditta;
  Prepara(servizio, utente);
  servizio.MailParamCorpoUnico(LeggiCorpo(argomenti.corpo, terminale.ingresso));
  servizio.ReturnMailParameters();
  // The library says nothing when its window fails.
  if (note->finestreMostrate == 0) {
    throw ErroreProgramma(Uscita::kNonPartito, "La finestra dei parametri non si è aperta.");
  }
  terminale.uscita << "confermato: " << SiNo(servizio.MailParamIsValoriValidi()) << "\n"
                   << "tipo: " << (servizio.MailParamTipo() == 1 ? "pec" : "mail") << "\n"
                   << "account: " << RigaSicura(servizio.MailParamAccount()->Indirizzo()) << "\n"
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
  auto argomenti = std::make_shared<Argomenti>();
  AggiungiArchivio(*comando, argomenti->archivio, true);
  comando->add_option("--ditta", argomenti->ditta, "Ditta corrente (se manca: 1)")
      ->type_name("NUMERO")
      ->check(NumeroFino(999'999'999));
  comando
      ->add_option("--utente", argomenti->utente.utente,
                   "Utente dell'applicazione: numero, oppure codice insieme a --gruppo (se manca: 1)")
      ->type_name("UTENTE");
  comando->add_option("--gruppo", argomenti->utente.gruppo, "Codice del gruppo dell'utente")
      ->type_name("CODICE");
  comando
      ->add_option("--corpo", argomenti->corpo,
                   "Corpo proposto nella finestra: un testo, @FILE, oppure @- per lo standard input")
      ->type_name("TESTO");
  comando->callback([argomenti, &contesto] {
    RichiediUtf8(argomenti->corpo, "--corpo");
    RichiediUtf8(argomenti->utente.utente, "--utente");
    RichiediUtf8(argomenti->utente.gruppo, "--gruppo");
    contesto.uscita = Chiedi(*argomenti, contesto.terminale);
  });
}

}  // namespace orve::app
