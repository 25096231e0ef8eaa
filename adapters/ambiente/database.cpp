#include "orve-mailserver/ambiente/database.h"

#include <sys/stat.h>

#include "ambiente/connection_string.h"
#include "odbc/odbc_connection.h"
#include "orve-mailserver/posix/percorsi.h"
#include "posix/errori.h"
#include "posix/file_riservato.h"
#include "sqlite/schema.h"
#include "sqlite/sqlite_connection.h"

namespace orve::adapters::ambiente {

namespace {

// A register may be shared, and then belongs to whoever sent first; but not where anybody, or the user who
// owns the folder, could have planted it or the files that are read with it.
void RichiediRegistroProprio(const std::string& file) {
  for (const char* accanto : sqlite::kFileDelDatabase) {
    const std::string nativo = posix::PercorsoUnix(file) + accanto;
    struct stat stato {};
    // What cannot be examined cannot be opened either.
    if (::lstat(nativo.c_str(), &stato) != 0 || posix::ProprietarioFidato(stato.st_uid)) continue;
    const bool diTutti = posix::CartellaDiTutti(nativo);
    if (!diTutti && posix::CartellaFidata(nativo)) continue;
    throw host::Errore(posix::kPermessoNegato, kRegistroAltrui,
                       file + accanto + " appartiene a un altro utente e la sua cartella " +
                           (diTutti ? "è aperta a tutti" : "non è di chi invia"));
  }
}

}  // namespace

std::shared_ptr<host::Connection> ApriDatabase(const std::string& dove, const DatabaseOptions& opzioni) {
  const DatabaseName indicato = ReadDatabaseName(dove);
  if (indicato.suServer) return odbc::OdbcConnection::Apri(indicato.nome, opzioni.attese);
  // Not repeated: it may hold a password.
  if (SembraStringaDiConnessione(dove)) {
    throw host::Errore(host::kArgomentoNonValido, "ApriDatabase",
                       "Una stringa di connessione va preceduta da odbc:");
  }
  sqlite::SqliteOptions attese;
  attese.tempoMassimo = opzioni.attese.tempoMassimo;
  auto incorporato = sqlite::SqliteConnection::Apri(indicato.nome, attese);
  incorporato->UtenteConnessione(opzioni.utente);
  return incorporato;
}

std::shared_ptr<host::Connection> ApriRegistro(const std::string& file) {
  RichiediRegistroProprio(file);
  auto registro = sqlite::ApriRegistro(file);
  // Something may have been planted there meanwhile; the connection notices when another file replaces its
  // own.
  RichiediRegistroProprio(file);
  return registro;
}

}  // namespace orve::adapters::ambiente
