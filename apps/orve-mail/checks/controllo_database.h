// The part of a check that reads the database: what the library and the program read there, and the settings.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/connection.h"
#include "orve-mail/checks/referto.h"
#include "orve-mail/host/archivio.h"
#include "service/enumerations.h"

namespace orve::app {

/// Whether the channel hands its messages to the machine's sendmail command, on this system.
[[nodiscard]] bool UsaSendmail(kvEnum_ServizioMail canale);

/// The settings of the mail channel, as far as they could be read.
struct ImpostazioniLette {
  std::optional<kvEnum_ServizioMail> canale;
  std::string cartella;  // as configured; empty: the system's
  /// Messages may open the compose window without being asked to.
  bool conFinestra = false;
};

/// A sender account and its server, with the values that the library takes where a column is empty.
struct AccountLetto {
  std::int32_t id = 0;
  std::string titolo;  // "account 1 (info@ditta.it)"
  std::string server;
  std::uint16_t porta = 0;
  bool cifrata = false;
  bool autenticazione = false;
  std::string utente;
  std::string password;  // as stored
  std::string indirizzo;
};

/// Every table with the columns that are read, the function and the procedures. Nothing is changed: of the
/// procedure that takes events only its being there is looked at.
void ControllaTabelle(const Archivio& archivio, Referto& referto);
void ControllaProcedure(const Archivio& archivio, Referto& referto);

/// The row of the company. False when there is none.
bool ControllaDitta(host::Connection& connessione, const std::string& ditta, Referto& referto);

[[nodiscard]] ImpostazioniLette ControllaImpostazioni(host::Connection& connessione, Referto& referto);

/// The default accounts of the user and of the company, ordinary and certified; each once. Without one for
/// either there is an error, or a warning when `serveOrdinario` is false; certified mail is only warned
/// about.
[[nodiscard]] std::vector<AccountLetto> ControllaAccount(host::Connection& connessione, std::int32_t utente,
                                                         const std::string& ditta, bool serveOrdinario,
                                                         Referto& referto);

/// The accounts that the two windows offer the user, ordinary and certified. The windows read columns that a
/// send without one does not need, and one account that they cannot read keeps them from opening: an error
/// when `conFinestra`, else a warning.
void ControllaAccountDelleFinestre(host::Connection& connessione, std::int32_t utente,
                                   const std::string& ditta, bool conFinestra, Referto& referto);

}  // namespace orve::app
