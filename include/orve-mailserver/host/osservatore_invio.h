// What a program learns of a send while the library works on it.
//
// The library tells its caller little: `Stato` keeps its value when a send is refused, and an unattended
// failure leaves a procedure's name in a log. A program that has to know more overrides what it needs here
// and hands the object out from its Ambiente.
#pragma once

#include <cstdint>
#include <string>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/errore.h"
#include "orve-mailserver/host/fine_consegna.h"
#include "orve-mailserver/service/enumerazioni.h"

namespace orve::host {

/// What came of a delivery.
struct ORVE_API EsitoConsegna {
  bool riuscita = false;  ///< the channel's object took the message
  /// After a failure: the number of the SMTP component or of MAPI, or that of the error raised.
  std::int32_t numero = 0;
  FineConsegna fine = {};  ///< what the object itself can tell of it
};

/// Each operation is called in the thread of the send, in the order of what happens; a send waits for it.
/// What it raises is dropped, so an observer cannot change a send. An error is passed as it was raised, so
/// its own type can be asked for.
class ORVE_API OsservatoreInvio {
 public:
  OsservatoreInvio() = default;
  virtual ~OsservatoreInvio() = default;

  /// A message is about to be shown to the person.
  virtual void MessaggioMostrato(const std::string& /*testo*/, std::int32_t /*stile*/) {}
  /// A window that the send needs could not be made.
  virtual void FinestraNonAperta(const Errore& /*errore*/) {}
  /// The object of a channel could not be created. The channel may end in silence without it.
  virtual void OggettoNonCreato(const std::string& /*oggetto*/, const Errore& /*errore*/) {}

  /// A channel has its object and begins to fill it. Not every delivery that begins is ended. A stand-alone
  /// SMTP call passes kvSMTPSSLMail, whatever the settings say.
  virtual void ConsegnaIniziata(kvEnum_ServizioMail /*canale*/) {}
  /// MAPI32.DLL opened no session, and nothing is handed over.
  virtual void SessioneNegata(std::int32_t /*numero*/, const FineConsegna& /*fine*/) {}
  /// The channel's object was asked to deliver, once, and this is what came of it.
  virtual void ConsegnaFinita(const EsitoConsegna& /*esito*/) {}
  /// The channel's object refused a file. The message goes out without it and without those after it.
  virtual void AllegatoRifiutato(const std::string& /*percorso*/, const Errore& /*errore*/) {}

  /// The register accepted a line. `esito` is one of EsitoInvio; `indirizzo` the recipient as the channel
  /// writes it; `risultato` why it was not sent, empty otherwise.
  virtual void RigaRegistrata(std::int32_t /*esito*/, const std::string& /*nome*/,
                              const std::string& /*indirizzo*/, const std::string& /*risultato*/) {}
  /// The register refused a line: the records of this message end there.
  virtual void RigaNonRegistrata(const Errore& /*errore*/) {}

  /// A line about a failure went into the send log.
  virtual void RigaDiLogScritta(const std::string& /*riga*/) {}
  /// The send log could not be opened, written or closed.
  virtual void LogNonScritto(const Errore& /*errore*/) {}
  /// The folder of the send log does not exist, so no line was written.
  virtual void CartellaDelLogMancante(const std::string& /*cartella*/) {}

  /// An error ended the look-up of the sender in the directory, which counts as "nobody found". Not called
  /// where there is no directory; called at every look-up while a directory that failed is left alone.
  virtual void RicercaInDirectoryFallita(const Errore& /*errore*/) {}

 protected:
  OsservatoreInvio(const OsservatoreInvio&) = default;
  OsservatoreInvio& operator=(const OsservatoreInvio&) = default;
  OsservatoreInvio(OsservatoreInvio&&) = default;
  OsservatoreInvio& operator=(OsservatoreInvio&&) = default;
};

}  // namespace orve::host
