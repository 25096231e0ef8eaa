// What was seen to happen while the library ran.
//
// The library tells its caller little: Stato keeps its value when a send is refused, and an unattended
// failure leaves a procedure's name in a log. The program must know whether this one message left, so it
// watches the outside objects at work and keeps notes here.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orve::app {

/// A line that the register took.
struct RigaRegistro {
  std::int32_t esito = 0;
  std::string nome;
  std::string indirizzo;
  std::string risultato;
};

/// No error number of a channel's.
inline constexpr std::int32_t kConsegnaRiuscita = -1;

struct Osservazioni {
  int messaggi = 0;  // shown to the person, the one that tells of a success not counted
  std::vector<RigaRegistro> registro;
  std::vector<std::string> erroriRegistro;
  std::vector<std::string> erroriDatabase;
  std::vector<std::string> erroriDirectory;  // why the look-up of the sender ended; no trouble of the send
  std::vector<std::string> oggettiMancanti;  // that the library asked for and this machine cannot make
  int finestreMostrate = 0;
  std::string finestraNegata;  // why a window that the library asked for could not be opened
  int consegneIniziate = 0;    // deliveries that a channel has begun, by an SMTP component or by MAPI
  /// How many times a channel was asked to deliver, and what it gave the last time: kConsegnaRiuscita, or
  /// the error number of the SMTP component or of MAPI.
  int consegne = 0;
  std::optional<std::int32_t> esitoConsegna;
  /// What ended the last delivery, in the words of whoever refused it; empty after a success.
  std::string motivo;
  std::string origineMotivo = "server";
  std::vector<std::string> allegatiRifiutati;  // that a channel was given and does not take along, and why
  int accettate = 0;                           // deliveries that worked; in a window there may be several
  /// One of them ended without the server's word on a message that it may have.
  bool incerta = false;
  /// Lines that reached the send log, and why others did not.
  std::vector<std::string> righeLog;
  std::vector<std::string> erroriLog;
  /// No folder for the send log is the person's alone; no trouble of the send.
  bool senzaTemporanea = false;

  /// A channel begins to deliver. What the person was told in a window before that was for the person to
  /// mend, and is no trouble of the delivery.
  void IniziaConsegna() {
    ++consegneIniziate;
    if (finestreMostrate > 0) messaggi = 0;
  }

  /// MAPI opened no session, and said why.
  [[nodiscard]] bool MapiNonDisponibile() const {
    return consegneIniziate > 0 && consegne == 0 && !motivo.empty();
  }

  /// The channel took the message, and whom it handed it to accepted it.
  [[nodiscard]] bool Consegnato() const { return consegne > 0 && esitoConsegna == kConsegnaRiuscita; }
  /// Nobody knows whether the server has the message.
  [[nodiscard]] bool Incerto() const {
    return accettate == 0 && (incerta || (consegne > 0 && !esitoConsegna));
  }
};

}  // namespace orve::app
