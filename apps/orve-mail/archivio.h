// The application's database as a command of the program names it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "sqlite/sqlite_connection.h"

namespace orve::app {

/// How a command names the database and its key.
struct PosizioneArchivio {
  std::string db;      // FILE or sqlite:FILE
  std::string chiave;  // empty: beside the database
};

/// The database file that the text names. Raises ErroreProgramma (kComandoErrato) when it names none, or
/// another kind of database.
[[nodiscard]] std::string FileArchivio(const PosizioneArchivio& posizione);

/// The key file: the one named, else the database file's name followed by ".chiave".
[[nodiscard]] std::string FileChiave(const PosizioneArchivio& posizione);

/// The open database. Raises ErroreProgramma (kNonUtilizzabile).
[[nodiscard]] std::shared_ptr<adapters::sqlite::SqliteConnection> ApriArchivio(
    const PosizioneArchivio& posizione);

/// An application user as a command names it: an id, or a code together with a group's code.
struct UtenteIndicato {
  std::string utente;
  std::string gruppo;  // empty: `utente` is an id
};

/// The id of the user. Raises ErroreProgramma: kNonUtilizzabile when nobody has it, kComandoErrato when it is
/// no id.
[[nodiscard]] std::int32_t TrovaUtente(adapters::sqlite::SqliteConnection& archivio,
                                       const UtenteIndicato& indicato);

}  // namespace orve::app
