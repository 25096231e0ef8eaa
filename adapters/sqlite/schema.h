// The application's tables and a set of sample data to work with: two companies with customers, suppliers,
// agents, contacts, goods destinations, mail servers, accounts and users. The tables are in schema.sql and
// register.sql, the rows, each with its purpose, in sample_data.sql. Nobody in them exists; all addresses are
// in domains that nobody can own.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "sqlite/sqlite_connection.h"

namespace orve::adapters::sqlite {

/// What the engine keeps of a database, each after the name of its file, which comes first.
inline constexpr std::array kFileDelDatabase = {"", "-wal", "-shm", "-journal"};

/// A password with the login and server that it is for.
struct PasswordToEncipher {
  std::string chiara;
  std::string utente;
  std::string server;
  std::int32_t porta = 0;  // as in its column: 16 bits with a sign
  bool cifrata = false;    // the connection
};

/// Enciphers the password of an account, as the application does.
using Encipher = std::function<std::string(const PasswordToEncipher&)>;

/// Creates a new file with schema and sample data, readable by its owner alone. Raises Errore when something
/// already exists at the path, which is left as it is, or when the file cannot be written; what was begun is
/// then removed. The passwords go into the file as `cifra` gives them; without it, or when a password can
/// still be read in what it gives, 5 is raised.
void CreaDatabase(const std::string& percorso, const Encipher& cifra);

/// A file with the register of sends alone; created when it is missing, and then readable by its owner alone.
/// An existing file gets the register's table if it has none. Raises Errore when it is not a database or
/// cannot be written.
[[nodiscard]] std::shared_ptr<SqliteConnection> ApriRegistro(const std::string& percorso);

/// The clear password that the sample data give to an account, for the mail server of a trial.
[[nodiscard]] std::string PasswordDiProva(std::int32_t idAccount);

/// Points the mail server `idServer` at a host. `ssl` 0: plain connection, else encrypted; `autenticazione`
/// 0: no login. Raises 3021 when there is no such server.
void ImpostaServer(SqliteConnection& connessione, std::int32_t idServer, const std::string& host,
                   std::int32_t porta, std::int32_t ssl, std::int32_t autenticazione);

}  // namespace orve::adapters::sqlite
