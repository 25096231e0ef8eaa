#include "sqlite/database.h"

#include <sqlite3.h>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <system_error>

#include "sqlite/collation.h"
#include "sqlite/procedures.h"

namespace orve::adapters::sqlite {

namespace {

// How many steps of the engine's virtual machine there are between two checks of the clock.
constexpr int kPassiTraControlli = 10000;

// A view of each connection, not of the file: SQLite's own catalogue under the names that the statements use.
constexpr const char* kVistaTabelle =
    "CREATE TEMP VIEW INFORMATION_SCHEMA_TABLES AS"
    " SELECT 'main' AS TABLE_CATALOG, 'dbo' AS TABLE_SCHEMA, name COLLATE ITALIANO_CI AS TABLE_NAME,"
    " CASE type WHEN 'view' THEN 'VIEW' ELSE 'BASE TABLE' END AS TABLE_TYPE"
    " FROM main.sqlite_master WHERE type IN ('table', 'view') AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\'";

std::filesystem::path Percorso(const std::string& testo) {
  return {std::u8string(testo.begin(), testo.end())};
}

// Explains what the engine would only call "unable to open".
void VerificaFile(const std::string& percorso) {
  if (percorso.empty() || percorso.find('\0') != std::string::npos) {
    throw host::Errore(SQLITE_CANTOPEN, kSorgente, "Il percorso del database non è valido");
  }
  std::error_code errore;
  const auto stato = std::filesystem::status(Percorso(percorso), errore);
  if (stato.type() == std::filesystem::file_type::not_found) {
    throw host::Errore(SQLITE_CANTOPEN, kSorgente, "Il database " + percorso + " non esiste");
  }
  if (!errore && stato.type() != std::filesystem::file_type::regular) {
    throw host::Errore(SQLITE_CANTOPEN, kSorgente, "Il database " + percorso + " non è un file");
  }
  if (std::filesystem::is_symlink(Percorso(percorso), errore)) {
    throw host::Errore(SQLITE_CANTOPEN, kSorgente,
                       "Il database " + percorso + " è un collegamento simbolico; indicare il file stesso");
  }
}

// The folders may be reached through links, as whole disks often are; the engine would refuse that too.
std::string SenzaLegamiDavanti(const std::string& percorso) {
  const auto file = Percorso(percorso);
  std::error_code errore;
  const auto cartella = std::filesystem::canonical(file.parent_path(), errore);
  return errore ? percorso : (cartella / file.filename()).string();
}

int Limitato(std::chrono::milliseconds tempo) {
  return static_cast<int>(std::clamp<std::int64_t>(tempo.count(), 0, std::numeric_limits<int>::max()));
}

}  // namespace

std::string PercorsoDiSistema(std::string percorso) {
#ifndef _WIN32
  std::replace(percorso.begin(), percorso.end(), '\\', '/');
  // A relative path could read as one of the engine's own names, ":memory:" or "file:...".
  if (!percorso.empty() && percorso.front() != '/') percorso.insert(0, "./");
#endif
  return percorso;
}

Database::Database(const std::string& percorso, const SqliteOptions& opzioni, bool nuovo)
    : tempoMassimo_(opzioni.tempoMassimo) {
  const auto diSistema = PercorsoDiSistema(percorso);
  VerificaFile(diSistema);
  try {
    Apri(diSistema, opzioni.solaLettura);
    Prepara(opzioni, nuovo);
  } catch (const host::Errore& errore) {
    Chiudi();
    throw host::Errore(errore.Numero(), errore.Sorgente(),
                       "Impossibile aprire il database " + percorso + ": " + errore.Descrizione());
  }
}

Database::~Database() {
  Chiudi();
}

void Database::Apri(const std::string& percorso, bool solaLettura) {
  const int modo = (solaLettura ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE) | SQLITE_OPEN_EXRESCODE |
                   SQLITE_OPEN_NOFOLLOW;
  const int esito = sqlite3_open_v2(SenzaLegamiDavanti(percorso).c_str(), &database_, modo, nullptr);
  if (esito != SQLITE_OK) throw ErroreMotore(database_, esito);
}

// Text in double quotes is a name, as on SQL Server; the schema of a foreign file may call no function of
// ours.
void Database::Prepara(const SqliteOptions& opzioni, bool nuovo) {
  sqlite3_busy_timeout(database_, Limitato(opzioni.attesaBlocco));
  sqlite3_db_config(database_, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(database_, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  sqlite3_db_config(database_, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(database_, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  sqlite3_progress_handler(database_, kPassiTraControlli, Scaduto, this);
  RegistraConfronto(database_);
  RegistraProcedure(database_);
  // The first access to the file: one that is locked, damaged or no database at all shows here.
  const auto pagine = Esegui("PRAGMA main.page_count", {});
  if (!nuovo && pagine.valori.front() == host::Variant(0)) {
    throw host::Errore(SQLITE_NOTADB, kSorgente, "il file è vuoto");
  }
  (void)Esegui("PRAGMA temp_store = MEMORY", {});
  (void)Esegui(kVistaTabelle, {});
}

void Database::Verifica() {
  if (database_ == nullptr) {
    throw host::Errore(rows::kOggettoChiuso, kSorgente, "Operazione non consentita: la connessione è chiusa");
  }
  // A file that was deleted or replaced would keep answering from contents that no longer exist.
  int spostato = 0;
  if (sqlite3_file_control(database_, "main", SQLITE_FCNTL_HAS_MOVED, &spostato) == SQLITE_OK &&
      spostato != 0) {
    throw host::Errore(SQLITE_READONLY_DBMOVED, kSorgente,
                       "Il file del database è stato spostato, sostituito o cancellato");
  }
}

void Database::InTempo() {
  scaduto_ = false;
  scadenza_ = std::chrono::steady_clock::now() + tempoMassimo_;
}

int Database::Scaduto(void* database) {
  auto& questo = *static_cast<Database*>(database);
  questo.scaduto_ = std::chrono::steady_clock::now() > questo.scadenza_;
  return questo.scaduto_ ? 1 : 0;
}

// White space, comments and ";" only. What the engine cannot parse still counts as something.
bool Database::SenzaIstruzioni(std::string_view testo) {
  try {
    return Statement(database_, testo).Vuota();
  } catch (const host::Errore&) {
    return false;
  }
}

rows::Rows Database::Esegui(const std::string& istruzione, const std::vector<Value>& valori) {
  Verifica();
  // The engine would read up to the NUL and run what precedes it.
  if (istruzione.find('\0') != std::string::npos) {
    throw host::Errore(rows::kArgomentiErrati, kSorgente, "L'istruzione contiene un carattere NUL");
  }
  InTempo();
  try {
    Statement preparata(database_, istruzione);
    if (preparata.Vuota()) throw host::Errore(rows::kArgomentiErrati, kSorgente, "L'istruzione è vuota");
    if (!SenzaIstruzioni(preparata.Resto())) {
      throw host::Errore(rows::kArgomentiErrati, kSorgente, "Il testo contiene più di un'istruzione");
    }
    preparata.Valori(valori);
    rows::Rows righe;
    for (int colonna = 0; colonna < preparata.Colonne(); ++colonna) {
      righe.colonne.push_back(preparata.NomeColonna(colonna));
    }
    while (preparata.Avanza()) {
      for (int colonna = 0; colonna < preparata.Colonne(); ++colonna)
        righe.valori.push_back(preparata.Leggi(colonna));
    }
    return righe;
  } catch (const host::Errore& errore) {
    if (!scaduto_) throw;
    throw host::Errore(errore.Numero(), errore.Sorgente(), "L'istruzione ha superato il tempo massimo");
  }
}

void Database::EseguiScript(std::string_view script) {
  Verifica();
  InTempo();
  for (;;) {
    Statement preparata(database_, script);
    if (preparata.Vuota()) return;
    script = preparata.Resto();
    while (preparata.Avanza()) {
    }
  }
}

void Database::Chiudi() noexcept {
  sqlite3_close_v2(database_);
  database_ = nullptr;
}

}  // namespace orve::adapters::sqlite
