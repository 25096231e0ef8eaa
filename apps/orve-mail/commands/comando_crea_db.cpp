// crea-db: the embedded database with schema and sample data, and the key of its passwords.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <memory>
#include <system_error>

#include "orve-mail/commands/comandi.h"
#include "orve-mail/commands/riga_di_comando.h"
#include "orve-mail/host/archivio.h"
#include "orve-mailserver/host/errore.h"
#include "password/chiave.h"
#include "password/sigillo_password.h"
#include "sqlite/schema.h"

namespace orve::app {

namespace {

bool Esiste(const std::string& file) {
  return ::access(file.c_str(), F_OK) == 0;
}

std::shared_ptr<const Chiave> NuovaChiave(const std::string& file) {
  return Oppure(Uscita::kNonUtilizzabile, [&] {
    auto chiave = std::make_shared<const Chiave>(Chiave::Nuova());
    chiave->Scrivi(file);
    return chiave;
  });
}

Uscita CreaDb(const PosizioneArchivio& posizione, Terminale terminale) {
  const std::string db = FileArchivio(posizione);
  const std::string file = FileChiave(posizione);
  // An existing key serves other databases too, and is kept.
  const bool nuova = !Esiste(file);
  const auto chiave = nuova ? NuovaChiave(file) : LeggiChiave(posizione);
  try {
    const adapters::password::SigilloPassword sigillo(chiave);
    adapters::sqlite::CreaDatabase(db, [&](const adapters::sqlite::PasswordToEncipher& password) {
      return sigillo.Sigilla(password.chiara, {password.utente, password.server,
                                               static_cast<std::uint16_t>(password.porta), password.cifrata});
    });
  } catch (...) {
    if (nuova) ::unlink(file.c_str());
    throw ErroreProgramma(Uscita::kNonUtilizzabile, host::ErroreCorrente().Descrizione());
  }
  terminale.uscita << "Creato il database " << TerminalSafeLine(db) << " con i dati di prova.\n"
                   << "Chiave delle password: " << TerminalSafeLine(file) << (nuova ? "" : " (già presente)")
                   << "\n";
  return Uscita::kInviato;
}

}  // namespace

void AggiungiCreaDb(CLI::App& programma, Contesto& contesto) {
  auto* const comando = programma.add_subcommand("crea-db", "Crea un database con tabelle e dati di prova");
  auto posizione = std::make_shared<PosizioneArchivio>();
  comando->add_option("FILE", posizione->db, "File da creare, anche come sqlite:FILE")
      ->type_name("")
      ->required();
  comando
      ->add_option("--chiave", posizione->chiave,
                   "File con la chiave delle password, creato se manca (se non indicato: FILE.chiave)")
      ->type_name("FILE")
      ->envname("ORVE_MAIL_CHIAVE");
  comando->callback([posizione, &contesto] { contesto.uscita = CreaDb(*posizione, contesto.terminale); });
}

}  // namespace orve::app
