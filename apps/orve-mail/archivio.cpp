#include "orve-mail/archivio.h"

#include <string_view>

#include "orve-mail/numeri.h"
#include "orve-mail/uscita.h"
#include "posix/percorsi.h"

namespace orve::app {

using adapters::sqlite::SqliteConnection;

std::string FileArchivio(const PosizioneArchivio& posizione) {
  constexpr std::string_view kSqlite = "sqlite:";
  constexpr std::string_view kOdbc = "odbc:";
  if (posizione.db.rfind(kOdbc, 0) == 0) {
    throw ErroreProgramma(Uscita::kComandoErrato, "--db: questa versione apre solo database sqlite:FILE");
  }
  std::string file = posizione.db.rfind(kSqlite, 0) == 0 ? posizione.db.substr(kSqlite.size()) : posizione.db;
  if (file.empty()) throw ErroreProgramma(Uscita::kComandoErrato, "--db: indicare il file del database");
  try {
    static_cast<void>(adapters::posix::PercorsoLibreria(file));
  } catch (const host::Errore& errore) {
    throw ErroreProgramma(Uscita::kComandoErrato, "--db: " + errore.Descrizione());
  }
  return file;
}

std::string FileChiave(const PosizioneArchivio& posizione) {
  return posizione.chiave.empty() ? FileArchivio(posizione) + ".chiave" : posizione.chiave;
}

std::shared_ptr<SqliteConnection> ApriArchivio(const PosizioneArchivio& posizione) {
  const std::string file = FileArchivio(posizione);
  try {
    return SqliteConnection::Apri(file);
  } catch (const host::Errore& errore) {
    throw ErroreProgramma(Uscita::kNonUtilizzabile, "Database non utilizzabile: " + errore.Descrizione());
  }
}

std::int32_t TrovaUtente(SqliteConnection& archivio, const UtenteIndicato& indicato) {
  const bool perCodice = !indicato.gruppo.empty();
  const auto id = Numero<std::int32_t>(indicato.utente);
  if (!perCodice && !id) {
    throw ErroreProgramma(Uscita::kComandoErrato,
                          "--utente: «" + indicato.utente + "» è un codice; indicare anche --gruppo");
  }
  try {
    const auto trovati =
        perCodice ? archivio.EseguiConValori(
                        "SELECT FW07_ID FROM FW07_APPUSER WHERE FW07_CODICE = ?1 AND FW07_CODICE_FW06 = ?2",
                        {indicato.utente, indicato.gruppo})
                  : archivio.EseguiConValori("SELECT FW07_ID FROM FW07_APPUSER WHERE FW07_ID = ?1",
                                             {std::int64_t{*id}});
    if (!trovati->Eof()) return host::Leggi(*trovati, "FW07_ID").ToInt32();
  } catch (const host::Errore& errore) {
    throw ErroreProgramma(Uscita::kNonUtilizzabile, "Database non utilizzabile: " + errore.Descrizione());
  }
  const std::string gruppo = perCodice ? " nel gruppo «" + indicato.gruppo + "»" : "";
  throw ErroreProgramma(Uscita::kNonUtilizzabile, "Utente sconosciuto: «" + indicato.utente + "»" + gruppo);
}

}  // namespace orve::app
