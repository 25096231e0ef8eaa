// A send in manual mode over fakes, as the send procedure and the event stage leave it to the windows.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "fakes/fake_connection.h"
#include "orve-mailserver/service/CLSFW_MAILSERVER.h"
#include "service/interno.h"

namespace orve::fakes {

/// A row of the statements that list the accounts of a person.
inline Riga RigaAccount(std::int16_t id, const std::string& indirizzo, std::int16_t lettura = 0,
                        std::int16_t consegna = 0) {
  return {{"FW23_SERVERNAME", "smtp.azienda.example"},
          {"FW23_PORT", 25},
          {"FW23_TIMEOUT", 60},
          {"FW23_INDAUTH", 0},
          {"FW23_SSL", 0},
          {"FW98_IDACCOUNT", id},
          {"FW98_MAILADDRESS", indirizzo},
          {"FW98_USERNAME", "utente"},
          {"FW98_PASSWORD", "{parola}"},
          {"ALIAS", "Azienda"},
          {"LETTURA", lettura},
          {"CONSEGNA", consegna}};
}

/// What the person can choose from.
inline void OffriAccount(FakeConnection& connessione, Righe righe) {
  connessione.Risponde("INNER JOIN FW99_MAILUSERACCOUNT", std::move(righe));
}

/// On the SMTP channel with one account, in manual mode, with the chosen account in force.
inline void PreparaInvioManuale(CLSFW_MAILSERVER& servizio, Interno& interno, FakeConnection& connessione) {
  servizio.SrvMailInstallato = kvSMTPMail;
  servizio.ModalitaInvio(kvManuale);
  interno.account.UsaMittenteScelto = true;
  interno.contesto.IdUtenteCorrente = 42;
  OffriAccount(connessione, {RigaAccount(12, "noi@azienda.example")});
}

}  // namespace orve::fakes
