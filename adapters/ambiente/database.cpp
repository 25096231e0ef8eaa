#include "orve-mailserver/ambiente/database.h"

#include <string_view>

#include "odbc/odbc_connection.h"
#include "sqlite/schema.h"
#include "sqlite/sqlite_connection.h"

namespace orve::adapters::ambiente {

namespace {

constexpr std::string_view kSqlite = "sqlite:";
constexpr std::string_view kOdbc = "odbc:";

}  // namespace

std::shared_ptr<host::Connection> ApriDatabase(const std::string& dove, const OpzioniDatabase& opzioni) {
  if (dove.starts_with(kOdbc)) return odbc::OdbcConnection::Apri(dove.substr(kOdbc.size()), opzioni.attese);
  sqlite::OpzioniSqlite attese;
  attese.tempoMassimo = opzioni.attese.tempoMassimo;
  auto incorporato =
      sqlite::SqliteConnection::Apri(dove.starts_with(kSqlite) ? dove.substr(kSqlite.size()) : dove, attese);
  incorporato->UtenteConnessione(opzioni.utente);
  return incorporato;
}

std::shared_ptr<host::Connection> ApriRegistro(const std::string& file) {
  return sqlite::ApriRegistro(file);
}

}  // namespace orve::adapters::ambiente
