// The open file: the engine's handle with the settings that every use of it needs. Shared by the connection
// and the commands made from it, which outlive a close as errors.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "rows/record_set.h"
#include "sqlite/statement.h"

struct sqlite3;

namespace orve::adapters::sqlite {

struct SqliteOptions {
  bool solaLettura = false;
  /// How long a statement waits for a file that another connection has locked.
  std::chrono::milliseconds attesaBlocco{5000};
  /// A statement that is still running this long after its start is stopped. Waiting for a lock counts
  /// towards it, but is only ended by its own limit.
  std::chrono::milliseconds tempoMassimo{30000};
};

class Database {
 public:
  /// Opens a file that exists and is no symbolic link. `nuovo` true: the file may be empty, since it is about
  /// to get its schema. Raises Errore with the engine's number and a text that names the path.
  Database(const std::string& percorso, const SqliteOptions& opzioni, bool nuovo);
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  Database(Database&&) = delete;
  Database& operator=(Database&&) = delete;

  /// Runs exactly one statement in SQLite's own dialect and holds its rows.
  [[nodiscard]] rows::Rows Esegui(const std::string& istruzione, const std::vector<Value>& valori);
  /// Runs the statements of a text one after the other and drops their rows. For texts of the program's own.
  void EseguiScript(std::string_view script);

  /// Closes the file; a transaction left open is rolled back. Every later use raises 3704.
  void Chiudi() noexcept;
  [[nodiscard]] bool Aperto() const { return database_ != nullptr; }

  /// The application user bound to the connection, none at first.
  std::optional<std::int32_t> utente;

 private:
  void Apri(const std::string& percorso, bool solaLettura);
  void Prepara(const SqliteOptions& opzioni, bool nuovo);
  void Verifica();
  [[nodiscard]] bool SenzaIstruzioni(std::string_view testo);
  void InTempo();
  static int Scaduto(void* database);

  sqlite3* database_ = nullptr;
  std::chrono::milliseconds tempoMassimo_;
  std::chrono::steady_clock::time_point scadenza_;
  bool scaduto_ = false;
};

/// The path in the form that this platform's file calls take: either separator is accepted.
[[nodiscard]] std::string PercorsoDiSistema(std::string percorso);

}  // namespace orve::adapters::sqlite
