// The command line as a whole: parsing, help, version, and how every command ends.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "orve-mail/host/archivio.h"
#include "orve-mail/terminal/terminale.h"
#include "orve-mail/terminal/uscita.h"

namespace CLI {
class App;
class Validator;
}  // namespace CLI

namespace orve::app {

/// Runs the program with these arguments, which do not include its name. Never raises.
[[nodiscard]] Uscita Esegui(const std::vector<std::string>& argomenti, Terminale terminale);

/// Accepts the whole numbers from 1 to `massimo`.
[[nodiscard]] CLI::Validator NumeroFino(std::int64_t massimo);

/// Adds --db with its time limits and, if asked for, --chiave to a command.
void AggiungiArchivio(CLI::App& comando, PosizioneArchivio& posizione, bool conChiave);
/// Adds --registro.
void AggiungiFileRegistro(CLI::App& comando, PosizioneArchivio& posizione);

}  // namespace orve::app
