#include "orve-mail/host/archivio.h"

#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "ambiente/connection_string.h"
#include "orve-mail/host/codici.h"
#include "orve-mail/host/messaggio.h"
#include "orve-mail/secrets/memoria.h"
#include "orve-mail/terminal/numeri.h"
#include "orve-mail/terminal/uscita.h"
#include "orve-mailserver/ambiente/database.h"
#include "orve-mailserver/posix/percorsi.h"
#include "sqlite/schema.h"
#include "text/text.h"

namespace orve::app {

using adapters::ambiente::ReadDatabaseName;
using adapters::sqlite::SqliteConnection;

namespace {

[[noreturn]] void NonUtilizzabile(const host::Errore& errore) {
  throw ErroreProgramma(Uscita::kNonUtilizzabile, "Database non utilizzabile: " + errore.Descrizione());
}

[[noreturn]] void RegistroNonUtilizzabile(const host::Errore& errore) {
  const bool altrui = errore.Sorgente() == adapters::ambiente::kRegistroAltrui;
  throw ErroreProgramma(
      Uscita::kNonUtilizzabile,
      "Registro non utilizzabile: " + errore.Descrizione() +
          (altrui ? "; indicare con --registro un file proprio, o in una cartella propria e chiusa agli altri"
                  : ""));
}

std::string ChiaveAccanto(const PosizioneArchivio& posizione) {
  return FileArchivio(posizione) + ".chiave";
}

std::string FileRegistro(const PosizioneArchivio& posizione) {
  if (!posizione.registro.empty()) return posizione.registro;
  if (!posizione.chiave.empty()) return posizione.chiave + ".registro";
  throw ErroreProgramma(Uscita::kComandoErrato,
                        "--registro: con un database odbc: indicare il file del registro");
}

std::shared_ptr<host::Connection> Apri(const PosizioneArchivio& posizione) {
  try {
    return adapters::ambiente::ApriDatabase(posizione.db, {.attese = posizione.attese});
  } catch (const host::Errore& errore) {
    NonUtilizzabile(errore);
  }
}

}  // namespace

bool SuOdbc(const PosizioneArchivio& posizione) {
  return ReadDatabaseName(posizione.db).suServer;
}

std::string FileArchivio(const PosizioneArchivio& posizione) {
  if (SuOdbc(posizione)) {
    throw ErroreProgramma(Uscita::kComandoErrato,
                          "--db: questo comando lavora solo sul database incorporato, sqlite:FILE");
  }
  std::string file = ReadDatabaseName(posizione.db).nome;
  if (file.empty()) throw ErroreProgramma(Uscita::kComandoErrato, "--db: indicare il file del database");
  if (adapters::ambiente::SembraStringaDiConnessione(file)) {
    throw ErroreProgramma(Uscita::kComandoErrato, "--db: una stringa di connessione va preceduta da odbc:");
  }
  try {
    static_cast<void>(adapters::posix::PercorsoLibreria(file));
  } catch (const host::Errore& errore) {
    throw ErroreProgramma(Uscita::kComandoErrato, "--db: " + errore.Descrizione());
  }
  return file;
}

std::string CartellaBase(const PosizioneArchivio& posizione) {
  if (SuOdbc(posizione)) return std::filesystem::current_path().native();
  return std::filesystem::absolute(FileArchivio(posizione)).parent_path().native();
}

std::string FileChiave(const PosizioneArchivio& posizione) {
  if (!posizione.chiave.empty()) return posizione.chiave;
  if (SuOdbc(posizione)) {
    throw ErroreProgramma(Uscita::kComandoErrato,
                          "--chiave: con un database odbc: indicare il file della chiave");
  }
  return ChiaveAccanto(posizione);
}

std::shared_ptr<const Chiave> LeggiChiave(const PosizioneArchivio& posizione) {
  const std::string file = FileChiave(posizione);
  return Oppure(Uscita::kNonUtilizzabile,
                [&] { return std::make_shared<const Chiave>(Chiave::Leggi(file)); });
}

bool ChiaveDelDatabase(const PosizioneArchivio& posizione) {
  if (SuOdbc(posizione)) return false;
  std::error_code codice;
  return posizione.chiave.empty() ||
         std::filesystem::equivalent(posizione.chiave, ChiaveAccanto(posizione), codice);
}

std::vector<std::string> FileDelProgramma(const PosizioneArchivio& posizione) {
  std::vector<std::string> file;
  const auto database = [&file](const std::string& nome) {
    for (const char* accanto : adapters::sqlite::kFileDelDatabase) file.push_back(nome + accanto);
  };
  const auto chiave = [&file](const std::string& nome) {
    file.push_back(nome);
    file.push_back(Chiave::Nascente(nome));
  };
  if (!SuOdbc(posizione)) {
    const std::string nome = FileArchivio(posizione);
    database(nome);
    chiave(nome + ".chiave");
  }
  if (!posizione.chiave.empty()) {
    chiave(posizione.chiave);
    database(posizione.chiave + ".registro");
  }
  if (!posizione.registro.empty()) database(posizione.registro);
  return file;
}

Archivio ApriArchivio(const PosizioneArchivio& posizione) {
  if (!SuOdbc(posizione)) {
    auto incorporato = ApriIncorporato(posizione);
    return {incorporato, incorporato};
  }
  DimenticaVariabile("ORVE_MAIL_DB");  // a connection string may hold a password, and has been read
  RichiediUtf8(ReadDatabaseName(posizione.db).nome, "--db");
  return {Apri(posizione), nullptr};
}

std::shared_ptr<SqliteConnection> ApriIncorporato(const PosizioneArchivio& posizione) {
  static_cast<void>(FileArchivio(posizione));  // which says what is wrong with the option
  return std::dynamic_pointer_cast<SqliteConnection>(Apri(posizione));
}

std::shared_ptr<SqliteConnection> ApriRegistro(const PosizioneArchivio& posizione, const Archivio& archivio) {
  if (archivio.incorporato && posizione.registro.empty()) return archivio.incorporato;
  try {
    return std::dynamic_pointer_cast<SqliteConnection>(
        adapters::ambiente::ApriRegistro(FileRegistro(posizione)));
  } catch (const host::Errore& errore) {
    RegistroNonUtilizzabile(errore);
  }
}

std::shared_ptr<SqliteConnection> ApriRegistroPerLettura(const PosizioneArchivio& posizione) {
  if (!SuOdbc(posizione) && posizione.registro.empty()) return ApriIncorporato(posizione);
  try {
    return SqliteConnection::Apri(FileRegistro(posizione));
  } catch (const host::Errore& errore) {
    RegistroNonUtilizzabile(errore);
  }
}

std::string Letterale(std::string_view testo) {
  return "'" + text::Replace(testo, "'", "''") + "'";
}

std::int32_t TrovaUtente(host::Connection& connessione, const UtenteIndicato& indicato) {
  const bool perCodice = !indicato.gruppo.empty();
  const auto id = Numero<std::int32_t>(indicato.utente);
  if (!perCodice && !id) {
    throw ErroreProgramma(Uscita::kComandoErrato,
                          "--utente: «" + indicato.utente + "» è un codice; indicare anche --gruppo");
  }
  for (const auto& [opzione, codice] :
       {std::pair{"--utente", indicato.utente}, std::pair{"--gruppo", indicato.gruppo}}) {
    const std::string difetto = perCodice ? DifettoDelCodiceUtente(codice) : "";
    if (difetto.empty()) continue;
    throw ErroreProgramma(Uscita::kComandoErrato,
                          std::string(opzione).append(": «").append(codice).append("» ").append(difetto));
  }
  const std::string filtro = perCodice ? "FW07_CODICE = " + Letterale(indicato.utente) +
                                             " AND FW07_CODICE_FW06 = " + Letterale(indicato.gruppo)
                                       : "FW07_ID = " + std::to_string(*id);
  try {
    const auto trovati =
        connessione.Execute("SELECT FW07_ID FROM FW07_APPUSER WHERE " + filtro, host::kComandoTesto);
    if (!trovati->Eof()) return host::Leggi(*trovati, "FW07_ID").ToInt32();
  } catch (const host::Errore& errore) {
    NonUtilizzabile(errore);
  }
  const std::string gruppo = perCodice ? " nel gruppo «" + indicato.gruppo + "»" : "";
  throw ErroreProgramma(Uscita::kNonUtilizzabile, "Utente sconosciuto: «" + indicato.utente + "»" + gruppo);
}

}  // namespace orve::app
