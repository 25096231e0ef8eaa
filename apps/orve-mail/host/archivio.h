// The application's database as a command of the program names it: the embedded one, or the company's own
// server over ODBC.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/connection.h"
#include "odbc/odbc_options.h"
#include "sqlite/sqlite_connection.h"

namespace orve::app {

/// How a command names the database, its key, and where the register of sends goes.
struct PosizioneArchivio {
  std::string db = {};        // FILE, sqlite:FILE, or odbc: and a connection string
  std::string chiave = {};    // empty: beside the database file
  std::string registro = {};  // empty: in the embedded database, or beside the key
  adapters::odbc::OpzioniOdbc attese = {};
};

/// An open database.
struct Archivio {
  std::shared_ptr<host::Connection> connessione;
  /// The same database when it is the embedded one, else absent.
  std::shared_ptr<adapters::sqlite::SqliteConnection> incorporato;

  /// Binds the connection to an application user. On a server the application's own procedure knows him.
  void DiUtente(std::int32_t id) const {
    if (incorporato) incorporato->UtenteConnessione(id);
  }
};

/// Whether the text names a database over ODBC.
[[nodiscard]] bool SuOdbc(const PosizioneArchivio& posizione);

/// The file of the embedded database that the text names. Raises ErroreProgramma (kComandoErrato) when it
/// names none, or a server.
[[nodiscard]] std::string FileArchivio(const PosizioneArchivio& posizione);

/// The folder from which a relative configured path counts: the database file's, or the current one.
[[nodiscard]] std::string CartellaBase(const PosizioneArchivio& posizione);

/// The key file: the one named, else the database file's name followed by ".chiave". Raises ErroreProgramma
/// (kComandoErrato) when a server is named and no key.
[[nodiscard]] std::string FileChiave(const PosizioneArchivio& posizione);

/// Whether that is the key beside the embedded database, however it was named, and not one that is shared.
[[nodiscard]] bool ChiaveDelDatabase(const PosizioneArchivio& posizione);

/// The files that are the program's own: the database with what SQLite keeps beside it, the key, the
/// register. Some of them need not exist.
[[nodiscard]] std::vector<std::string> FileDelProgramma(const PosizioneArchivio& posizione);

/// The open database. Raises ErroreProgramma: kNonUtilizzabile with what the database says, in which no
/// password stands.
[[nodiscard]] Archivio ApriArchivio(const PosizioneArchivio& posizione);

/// The open embedded database, for what only it can do. Raises ErroreProgramma as the others do.
[[nodiscard]] std::shared_ptr<adapters::sqlite::SqliteConnection> ApriIncorporato(
    const PosizioneArchivio& posizione);

/// Where the register of sends goes: the embedded database, or the file of --registro, or beside the key.
/// The file is made when it is missing. Raises ErroreProgramma.
[[nodiscard]] std::shared_ptr<adapters::sqlite::SqliteConnection> ApriRegistro(
    const PosizioneArchivio& posizione, const Archivio& archivio);

/// The same, which must be there, for reading. Raises ErroreProgramma.
[[nodiscard]] std::shared_ptr<adapters::sqlite::SqliteConnection> ApriRegistroPerLettura(
    const PosizioneArchivio& posizione);

/// The text as a literal of a statement: between apostrophes, its own doubled.
[[nodiscard]] std::string Letterale(std::string_view testo);

/// An application user as a command names it: an id, or a code together with a group's code.
struct UtenteIndicato {
  std::string utente;
  std::string gruppo;  // empty: `utente` is an id
};

/// The id of the user. Raises ErroreProgramma: kNonUtilizzabile when nobody has it, kComandoErrato when it is
/// no id.
[[nodiscard]] std::int32_t TrovaUtente(host::Connection& connessione, const UtenteIndicato& indicato);

}  // namespace orve::app
