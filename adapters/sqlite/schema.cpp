#include "sqlite/schema.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <memory>
#include <system_error>

#include "sqlite/embedded_sql.h"

namespace orve::adapters::sqlite {

namespace {

std::filesystem::path PercorsoFile(const std::string& testo) {
  return {std::u8string(testo.begin(), testo.end())};
}

[[noreturn]] void NonCreato(const std::string& percorso, const std::string& motivo) {
  throw host::Errore(SQLITE_CANTOPEN, kSorgente,
                     "Impossibile creare il database " + percorso + ": " + motivo);
}

// An empty file of our own, closed to others from its first moment: of two simultaneous callers only one gets
// it. The engine gives its side files the mode of the database. False when something already exists there.
bool CreaFileVuoto(const std::string& percorso) {
  if (percorso.empty() || percorso.find('\0') != std::string::npos)
    NonCreato(percorso, "il percorso non è valido");
  const int file = ::open(percorso.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC | O_NOCTTY,
                          S_IRUSR | S_IWUSR);
  if (file < 0) {
    const int motivo = errno;
    if (motivo == EEXIST) return false;
    NonCreato(percorso, std::generic_category().message(motivo));
  }
  ::close(file);
  return true;
}

void CifraPassword(Database& database, const Encipher& cifra) {
  // An account without a server uses the one that the library falls back on where the columns are empty.
  const auto account = database.Esegui(
      "SELECT FW98_IDACCOUNT, FW98_USERNAME, IFNULL(FW23_SERVERNAME, 'localhost'), IFNULL(FW23_PORT, 25),"
      " IFNULL(FW23_SSL, 0) FROM FW98_MAILACCOUNT LEFT OUTER JOIN FW23_FAXER"
      " ON FW98_IDSERVER_FW23 = FW23_IDSERVER WHERE FW98_USERNAME IS NOT NULL",
      {});
  for (auto riga = account.valori.begin(); riga != account.valori.end(); riga += 5) {
    const std::int32_t id = riga[0].ToInt32();
    const PasswordToEncipher password{PasswordDiProva(id), riga[1].ToText(), riga[2].ToText(),
                                      riga[3].ToInt32(), riga[4].ToInt32() >= 1};
    auto cifrata = cifra(password);
    if (cifrata.find(password.chiara) != std::string::npos) throw host::Errore(host::kArgomentoNonValido);
    (void)database.Esegui("UPDATE FW98_MAILACCOUNT SET FW98_PASSWORD = ?1 WHERE FW98_IDACCOUNT = ?2",
                          {std::move(cifrata), std::int64_t{id}});
  }
}

}  // namespace

void CreaDatabase(const std::string& percorso, const Encipher& cifra) {
  if (!cifra) throw host::Errore(host::kArgomentoNonValido);
  const auto diSistema = PercorsoDiSistema(percorso);
  if (!CreaFileVuoto(diSistema)) NonCreato(diSistema, "esiste già");
  try {
    Database database(percorso, {}, true);
    (void)database.Esegui("PRAGMA foreign_keys = ON", {});
    (void)database.Esegui("BEGIN IMMEDIATE", {});
    database.EseguiScript(kSchemaSql);
    database.EseguiScript(kRegistroSql);
    database.EseguiScript(kDatiDiProvaSql);
    CifraPassword(database, cifra);
    (void)database.Esegui("COMMIT", {});
  } catch (...) {
    std::error_code ignorato;
    std::filesystem::remove(PercorsoFile(diSistema), ignorato);
    throw;
  }
}

std::shared_ptr<SqliteConnection> ApriRegistro(const std::string& percorso) {
  (void)CreaFileVuoto(PercorsoDiSistema(percorso));
  Database database(percorso, {}, true);
  (void)database.Esegui("BEGIN IMMEDIATE", {});
  database.EseguiScript(kRegistroSql);
  (void)database.Esegui("COMMIT", {});
  database.Chiudi();
  return SqliteConnection::Apri(percorso);
}

std::string PasswordDiProva(std::int32_t idAccount) {
  return "Prova-" + std::to_string(idAccount) + "-arvenia";
}

void ImpostaServer(SqliteConnection& connessione, std::int32_t idServer, const std::string& host,
                   std::int32_t porta, std::int32_t ssl, std::int32_t autenticazione) {
  const auto cambiate = connessione.EseguiConValori(
      "UPDATE FW23_FAXER SET FW23_SERVERNAME = ?2, FW23_PORT = ?3, FW23_SSL = ?4, FW23_INDAUTH = ?5"
      " WHERE FW23_IDSERVER = ?1 RETURNING FW23_IDSERVER",
      {std::int64_t{idServer}, host, std::int64_t{porta}, std::int64_t{ssl}, std::int64_t{autenticazione}});
  if (cambiate->Eof()) {
    throw host::Errore(rows::kNessunaRiga, kSorgente,
                       "Nessun server di posta con il codice " + std::to_string(idServer));
  }
}

}  // namespace orve::adapters::sqlite
