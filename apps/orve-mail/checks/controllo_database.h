// The part of a check that reads the database: what the library and the program read there, and the settings.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "orve-mail/checks/referto.h"
#include "orve-mail/host/archivio.h"
#include "orve-mailserver/host/connection.h"
#include "orve-mailserver/service/enumerazioni.h"

namespace orve::app {

/// The settings of the mail channel, as far as they could be read.
struct ImpostazioniLette {
  std::optional<kvEnum_ServizioMail> canale;
  std::string cartella;  // as configured; empty: the system's
  /// Messages may open the compose window unasked.
  bool conFinestra = false;
};

/// A sender account and its server, with the values that the library uses where a column is empty.
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

/// Every table with the columns that are read, the function and the procedures. Nothing is changed: the
/// procedure that takes events is only checked for existence.
void ControllaTabelle(const Archivio& archivio, Referto& referto);
void ControllaProcedure(const Archivio& archivio, Referto& referto);

/// The row of the company. False when there is none.
bool ControllaDitta(host::Connection& connessione, const std::string& ditta, Referto& referto);

[[nodiscard]] ImpostazioniLette ControllaImpostazioni(host::Connection& connessione, Referto& referto);

/// The default accounts of the user and of the company, ordinary and certified; each once. If neither has
/// one, that is an error, or a warning when `serveOrdinario` is false; for certified mail it is only ever a
/// warning.
[[nodiscard]] std::vector<AccountLetto> ControllaAccount(host::Connection& connessione, std::int32_t utente,
                                                         const std::string& ditta, bool serveOrdinario,
                                                         Referto& referto);

/// The accounts that the two windows offer the user, ordinary and certified. The windows read columns that a
/// send without one does not need, and one account that they cannot read keeps them from opening: an error
/// when `conFinestra`, else a warning.
void ControllaAccountDelleFinestre(host::Connection& connessione, std::int32_t utente,
                                   const std::string& ditta, bool conFinestra, Referto& referto);

}  // namespace orve::app
