#include "orve-mail/host/resoconto.h"

#include <algorithm>
#include <vector>

#include "channels/channel_traits.h"
#include "orve-mailserver/host/registro_invio.h"
#include "text/text.h"

namespace orve::app {

namespace {

bool SenzaErrori(const Osservazioni& note) {
  return note.erroriRegistro.empty() && note.erroriDatabase.empty() && note.oggettiMancanti.empty() &&
         note.allegatiRifiutati.empty() && note.righeLog.empty() && note.erroriLog.empty();
}

bool SenzaIntoppi(const Osservazioni& note) {
  return note.messaggi == 0 && SenzaErrori(note);
}

// The distinct results of the lines that say "not sent", in their order.
std::vector<std::string> Motivi(const Osservazioni& note) {
  std::vector<std::string> motivi;
  for (const RigaRegistro& riga : note.registro) {
    if (riga.esito == host::kInviato || riga.risultato.empty()) continue;
    if (std::find(motivi.begin(), motivi.end(), riga.risultato) == motivi.end()) {
      motivi.push_back(riga.risultato);
    }
  }
  return motivi;
}

std::string PrimoMotivo(const Resoconto& resoconto, const std::string& altrimenti) {
  const auto motivi = Motivi(resoconto.note);
  if (!motivi.empty()) return motivi.front();
  return resoconto.descrizione.empty() ? altrimenti : resoconto.descrizione;
}

void ElencaDestinatari(const Osservazioni& note, std::ostream& uscita) {
  for (const RigaRegistro& riga : note.registro) uscita << "  " << TerminalSafeLine(riga.indirizzo) << "\n";
}

// Nothing failed and nothing was sent: this is what happens when there is no account to send from. Where the
// window was wanted, the person has been told by a message.
bool SenzaAccount(const Resoconto& resoconto) {
  return resoconto.mittente.empty() && resoconto.errore.empty() && SenzaErrori(resoconto.note);
}

// The window was open, and the person left it without sending.
bool Annullato(const Resoconto& resoconto) {
  const Osservazioni& note = resoconto.note;
  return note.finestreMostrate > 0 && note.consegneIniziate == 0 && note.oggettiMancanti.empty() &&
         note.registro.empty();
}

std::string MotivoNonPartito(const Resoconto& resoconto) {
  if (!resoconto.note.finestraNegata.empty()) {
    return "serviva la finestra di invio. " + resoconto.note.finestraNegata;
  }
  if (resoconto.note.MapiNonDisponibile()) return "la posta di questa macchina non è disponibile";
  return SenzaAccount(resoconto) ? "nessun account di posta per l'utente e la ditta"
                                 : "l'invio è stato interrotto da un errore";
}

std::string MotivoFallito(const Resoconto& resoconto) {
  if (!resoconto.canaleCheVuoleCorpo.empty()) {
    return "il canale " + resoconto.canaleCheVuoleCorpo +
           " non invia messaggi senza corpo. Scrivere un corpo, o impostarne uno per "
           "tutti i messaggi";
  }
  return PrimoMotivo(resoconto, "errore di invio");
}

bool Fallito(const Resoconto& resoconto) {
  if (!resoconto.daSola) return resoconto.stato == kvErroreInvioMail;
  return resoconto.note.consegne > 0 || !Motivi(resoconto.note).empty();
}

std::string Inviato(const Osservazioni& note) {
  if (note.registro.size() == 1) return "Messaggio inviato a 1 destinatario";
  return "Messaggio inviato a " + std::to_string(note.registro.size()) + " destinatari";
}

}  // namespace

Uscita Valuta(const Resoconto& resoconto) {
  const Osservazioni& note = resoconto.note;
  if (note.Consegnato()) {
    const bool riuscito = resoconto.stato == kvOK && resoconto.errore.empty() && SenzaIntoppi(note);
    return riuscito ? Uscita::kInviato : Uscita::kConRiserva;
  }
  if (Fallito(resoconto)) return Uscita::kInvioFallito;
  if (Annullato(resoconto)) return Uscita::kAnnullato;
  const bool rifiutato = resoconto.stato == kvInvioNonImpostato || !Motivi(note).empty();
  return rifiutato ? Uscita::kRifiutato : Uscita::kNonPartito;
}

std::string Spiega(const Resoconto& resoconto, Uscita uscita) {
  switch (uscita) {
    case Uscita::kInviato:
      return Inviato(resoconto.note) + ".";
    case Uscita::kConRiserva:
      return "Messaggio inviato, ma non tutto è andato a buon fine.";
    case Uscita::kInvioFallito:
      return "Messaggio non inviato: " + TerminalSafeLine(MotivoFallito(resoconto));
    case Uscita::kRifiutato:
      return "Invio rifiutato: " + TerminalSafeLine(PrimoMotivo(resoconto, "nessun motivo"));
    case Uscita::kAnnullato:
      return "Messaggio non inviato: la finestra di invio è stata chiusa senza inviare.";
    default:
      return "Messaggio non inviato: " + TerminalSafeLine(MotivoNonPartito(resoconto));
  }
}

std::vector<std::string> Dettagli(const Resoconto& resoconto) {
  const Osservazioni& note = resoconto.note;
  std::vector<std::string> dettagli;
  const auto elenca = [&dettagli](const std::string& titolo, const std::vector<std::string>& righe) {
    for (const std::string& riga : righe) dettagli.push_back(titolo + TerminalSafeLine(riga));
  };
  if (resoconto.stato != kvOK) elenca("stato: ", {std::to_string(resoconto.stato)});
  if (!resoconto.errore.empty()) elenca("errore: ", {resoconto.errore});
  if (!note.motivo.empty()) {
    const ChannelTraits* const canale = TrattiDi(note.canaleMotivo);
    elenca(canale == nullptr ? "" : std::string(canale->risponde) + ": ", {note.motivo});
  }
  if (note.Incerto()) elenca("", {"il server può aver accettato il messaggio"});
  elenca("allegato rimasto fuori: ", note.allegatiRifiutati);
  elenca("registro degli errori: ", note.righeLog);
  elenca("registro degli errori non scritto: ", note.erroriLog);
  elenca("registro degli invii non scritto: ", note.erroriRegistro);
  elenca("database: ", note.erroriDatabase);
  elenca("", note.erroriDirectory);
  elenca("oggetto non disponibile su questa macchina: ", note.oggettiMancanti);
  return dettagli;
}

Uscita Racconta(const Resoconto& resoconto, Terminale terminale) {
  const Uscita uscita = Valuta(resoconto);
  std::ostream& flusso = uscita == Uscita::kInviato ? terminale.uscita : terminale.errori;
  flusso << Spiega(resoconto, uscita) << "\n";
  if (uscita == Uscita::kInviato) ElencaDestinatari(resoconto.note, flusso);
  for (const std::string& dettaglio : Dettagli(resoconto)) terminale.errori << "  " << dettaglio << "\n";
  if (resoconto.note.senzaTemporanea) terminale.errori << "  " << kSenzaTemporanea << "\n";
  terminale.uscita.flush();
  terminale.errori.flush();
  return uscita;
}

}  // namespace orve::app
