#include "orve-mail/host/ambiente.h"

#include <string>

#include "orve-mail/host/rimedi.h"

namespace orve::app {

adapters::ambiente::Options OpzioniDelProgramma(Terminale terminale, const OsservazioniPtr& note) {
  adapters::ambiente::Options opzioni;
  opzioni.programma = "orve-mail";
  opzioni.messaggi = &terminale.errori;
  if (terminale.interattivo) opzioni.risposte = &terminale.ingresso;
  opzioni.traccia = terminale.traccia;
  opzioni.osservatore = note;
  opzioni.senzaTemporanea = [note] { note->senzaTemporanea = true; };
  return opzioni;
}

void ScegliPermessi(adapters::ambiente::Options& opzioni, const PermessiInChiaro& permessi, bool suOdbc) {
  const Rimedi rimedi(suOdbc);
  opzioni.rimedioPassword = rimedi.password;
  opzioni.rimedioCifratura = rimedi.cifratura + ", oppure permetterlo con --password-in-chiaro";
  opzioni.passwordInChiaro = [permessi](const std::string& server, std::uint16_t porta) {
    return permessi.Per(server, porta);
  };
}

void ScegliAllegati(adapters::ambiente::Options& opzioni, const std::shared_ptr<Allegati>& allegati) {
  opzioni.allegati = [allegati](std::string_view percorso) { return allegati->Apri(percorso); };
  opzioni.allegatiNelRegistro = [allegati](const std::string& testo) {
    return allegati->ConPercorsiVeri(testo);
  };
}

std::shared_ptr<host::Directory> CreaDirectory(const std::optional<adapters::ldap::LdapOptions>& opzioni) {
  return opzioni ? adapters::ambiente::ApriDirectory(*opzioni) : nullptr;
}

}  // namespace orve::app
