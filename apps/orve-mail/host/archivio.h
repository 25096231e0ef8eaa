// The application's database as named by a command of the program: the embedded one, or the company's own
// server over ODBC.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orve-mailserver/host/connection.h"
#include "orve-mailserver/odbc/odbc_options.h"
#include "password/chiave.h"
#include "sqlite/sqlite_connection.h"

namespace orve::app {

using adapters::password::Chiave;

/// How a command names the database, its key, and where the register of sends goes.
struct PosizioneArchivio {
  std::string db = {};        // FILE, sqlite:FILE, or odbc: and a connection string
  std::string chiave = {};    // empty: next to the database file
  std::string registro = {};  // empty: in the embedded database, or next to the key
  adapters::odbc::OdbcOptions attese = {};
};

/// An open database.
struct Archivio {
  std::shared_ptr<host::Connection> connessione;
  /// The same database when it is the embedded one, else absent.
  std::shared_ptr<adapters::sqlite::SqliteConnection> incorporato;

  /// Binds the connection to an application user. On a server the application's own procedure identifies the
  /// user.
  void DiUtente(std::int32_t id) const {
    if (incorporato) incorporato->UtenteConnessione(id);
  }
};

/// Whether the text names a database over ODBC.
[[nodiscard]] bool SuOdbc(const PosizioneArchivio& posizione);

/// The file of the embedded database that the text names. Raises ErroreProgramma (kComandoErrato) when it
/// names none, or a server.
[[nodiscard]] std::string FileArchivio(const PosizioneArchivio& posizione);

/// The folder that a relative configured path starts from: the database file's, or the current one.
[[nodiscard]] std::string CartellaBase(const PosizioneArchivio& posizione);

/// The key file: the one named, else the database file's name followed by ".chiave". Raises ErroreProgramma
/// (kComandoErrato) when a server is named and no key.
[[nodiscard]] std::string FileChiave(const PosizioneArchivio& posizione);

/// The key in that file. Raises ErroreProgramma: kNonUtilizzabile for one that cannot be used.
[[nodiscard]] std::shared_ptr<const Chiave> LeggiChiave(const PosizioneArchivio& posizione);

/// Whether that is the key next to the embedded database, however it was named, and not a shared one.
[[nodiscard]] bool ChiaveDelDatabase(const PosizioneArchivio& posizione);

/// The program's own files: the database with SQLite's side files, the key, the register. Some of them need
/// not exist.
[[nodiscard]] std::vector<std::string> FileDelProgramma(const PosizioneArchivio& posizione);

/// The open database. Raises ErroreProgramma: kNonUtilizzabile with what the database says, never with a
/// password in it.
[[nodiscard]] Archivio ApriArchivio(const PosizioneArchivio& posizione);

/// The open embedded database, for what only it can do. Raises ErroreProgramma as the others do.
[[nodiscard]] std::shared_ptr<adapters::sqlite::SqliteConnection> ApriIncorporato(
    const PosizioneArchivio& posizione);

/// Where the register of sends goes: the embedded database, or the file of --registro, or a file next to the
/// key. The file is created when it is missing. Raises ErroreProgramma.
[[nodiscard]] std::shared_ptr<adapters::sqlite::SqliteConnection> ApriRegistro(
    const PosizioneArchivio& posizione, const Archivio& archivio);

/// The same for reading; it must exist. Raises ErroreProgramma.
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
/// not an id.
[[nodiscard]] std::int32_t TrovaUtente(host::Connection& connessione, const UtenteIndicato& indicato);

}  // namespace orve::app
