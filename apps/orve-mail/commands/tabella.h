// What the two listing commands share: rows of the database as aligned columns, as JSON or as CSV.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "orve-mail/commands/comandi.h"

namespace orve::app {

struct Colonna {
  const char* titolo;
  const char* espressione;  // in SQLite's dialect
  std::size_t larghezza;    // at most, in characters, in the aligned form; 0: unlimited
};

/// Where the rows are: the register of sends may have a file of its own.
enum class Fonte { kRegistro, kIncorporato };

struct Elenco {
  Fonte fonte;
  const char* comando;
  const char* aiuto;
  const char* tabella;
  std::vector<Colonna> colonne;
};

/// Adds the command, with --ultimi, --json and --csv. Rows come in the order in which they were written. The
/// aligned form cuts long texts; the two others never do.
void AggiungiElenco(CLI::App& programma, Contesto& contesto, const Elenco& elenco);

}  // namespace orve::app
