// What was observed while the library ran.
//
// The library tells its caller little: Stato keeps its value when a send is refused, and an unattended
// failure leaves a procedure's name in a log. The program must know whether this one message was sent, so it
// watches the outside objects at work and keeps notes here.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orve::app {

/// A line that the register accepted.
struct RigaRegistro {
  std::int32_t esito = 0;
  std::string nome;
  std::string indirizzo;
  std::string risultato;
};

/// Not an error number of any channel.
inline constexpr std::int32_t kConsegnaRiuscita = -1;

struct Osservazioni {
  int messaggi = 0;  // shown to the person, not counting the one that reports success
  std::vector<RigaRegistro> registro;
  std::vector<std::string> erroriRegistro;
  std::vector<std::string> erroriDatabase;
  std::vector<std::string>
      erroriDirectory;  // why the look-up of the sender ended; not a problem for the send
  std::vector<std::string> oggettiMancanti;  // that the library asked for and this machine cannot create
  int finestreMostrate = 0;
  std::string finestraNegata;  // why a window that the library asked for could not be opened
  int consegneIniziate = 0;    // deliveries that a channel has begun, by an SMTP component or by MAPI
  /// How many times a channel was asked to deliver, and what it returned the last time: kConsegnaRiuscita, or
  /// the error number of the SMTP component or of MAPI.
  int consegne = 0;
  std::optional<std::int32_t> esitoConsegna;
  /// What ended the last delivery, in the words of whatever refused it; empty after a success.
  std::string motivo;
  std::string origineMotivo = "server";
  std::vector<std::string> allegatiRifiutati;  // given to a channel that does not send them, and why
  int accettate = 0;                           // successful deliveries; in a window there may be several
  /// One of them ended without an answer from the server, which may have the message.
  bool incerta = false;
  /// Lines that reached the send log, and why others did not.
  std::vector<std::string> righeLog;
  std::vector<std::string> erroriLog;
  /// There is no folder for the send log that is private to the person; not a problem for the send.
  bool senzaTemporanea = false;

  /// A channel begins to deliver. Anything that the person was told in a window before that was theirs to
  /// fix, and is not a problem of the delivery.
  void IniziaConsegna() {
    ++consegneIniziate;
    if (finestreMostrate > 0) messaggi = 0;
  }

  /// MAPI opened no session, and said why.
  [[nodiscard]] bool MapiNonDisponibile() const {
    return consegneIniziate > 0 && consegne == 0 && !motivo.empty();
  }

  /// The channel took the message, and whoever it was handed to accepted it.
  [[nodiscard]] bool Consegnato() const { return consegne > 0 && esitoConsegna == kConsegnaRiuscita; }
  /// It is not known whether the server has the message.
  [[nodiscard]] bool Incerto() const {
    return accettate == 0 && (incerta || (consegne > 0 && !esitoConsegna));
  }
};

}  // namespace orve::app
