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

struct Osservazioni {
  int messaggi = 0;  // shown to the person
  std::vector<RigaRegistro> registro;
  std::vector<std::string> erroriRegistro;
  std::vector<std::string> erroriDatabase;
  std::vector<std::string> oggettiMancanti;  // that the library asked for and this machine cannot make
  int finestreMostrate = 0;
  std::string finestraNegata;  // why a window that the library asked for could not be opened
  int componenti = 0;          // SMTP components made: each begins one delivery
  /// How many times the SMTP component's SendMail ran, and the number that it gave afterwards.
  int consegne = 0;
  std::optional<std::int32_t> esitoConsegna;
  /// What ended the last delivery, in the server's words or the component's; empty after a success.
  std::string motivo;
  int accettate = 0;  // deliveries that worked; in a window there may be several
  /// One of them ended without the server's word on a message that it may have.
  bool incerta = false;
  /// Lines that reached the send log, and why others did not.
  std::vector<std::string> righeLog;
  std::vector<std::string> erroriLog;

  /// The component took the message and the server accepted it.
  [[nodiscard]] bool Consegnato() const { return consegne > 0 && esitoConsegna == -1; }
  /// Nobody knows whether the server has the message.
  [[nodiscard]] bool Incerto() const {
    return accettate == 0 && (incerta || (consegne > 0 && !esitoConsegna));
  }
};

}  // namespace orve::app
