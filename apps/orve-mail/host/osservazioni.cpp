#include "orve-mail/host/osservazioni.h"

#include "channels/channel_traits.h"
#include "channels/mapi32_channel.h"
#include "ldap/failure.h"

namespace orve::app {

void Osservazioni::MessaggioMostrato(const std::string& testo, std::int32_t /*stile*/) {
  if (testo != MDLFW_MAPI::kMessaggioInviato) ++messaggi;
}

void Osservazioni::OggettoNonCreato(const std::string& oggetto, const host::Errore& errore) {
  if (errore.Numero() == host::kOggettoNonCreabile) oggettiMancanti.push_back(oggetto);
}

// What the person was told in a window before a delivery was theirs to fix, and is not a problem of the
// delivery.
void Osservazioni::ConsegnaIniziata(kvEnum_ServizioMail conCanale) {
  ++consegneIniziate;
  canale = conCanale;
  if (finestreMostrate > 0) messaggi = 0;
}

void Osservazioni::ConsegnaFinita(const host::EsitoConsegna& esito) {
  ++consegne;
  if (esito.riuscita) ++accettate;
  esitoConsegna = esito.riuscita ? kConsegnaRiuscita : esito.numero;
  motivo = esito.fine.motivo;
  canaleMotivo = canale;
  incerta = incerta || esito.fine.incerta;
}

void Osservazioni::AllegatoRifiutato(const std::string& /*percorso*/, const host::Errore& errore) {
  if (!HaTratto(canale, &ChannelTraits::avvisaDegliAllegati)) allegatiRifiutati.push_back(Riga(errore));
}

// A server that is left alone was reported before; one without the property that is asked for has not failed.
void Osservazioni::RicercaInDirectoryFallita(const host::Errore& errore) {
  const bool lasciata = dynamic_cast<const adapters::ldap::LeftAlone*>(&errore) != nullptr;
  if (!lasciata && errore.Numero() != adapters::ldap::kNoProperty) {
    erroriDirectory.push_back(errore.Descrizione());
  }
}

std::string Osservazioni::Riga(const host::Errore& errore) {
  return errore.Descrizione() + " (" + errore.Sorgente() + " " + std::to_string(errore.Numero()) + ")";
}

}  // namespace orve::app
