// The rows of a list as messages: which columns there are, and what each row asks for.
#pragma once

#include <cstddef>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "orve-mail/host/spedizione.h"
#include "orve-mail/lists/csv.h"

namespace orve::app {

struct RigaLista {
  std::size_t riga = 0;  // the line of the file on which it begins
  /// Why no message can be made from it, for a person; the other members are then empty.
  std::string errore;
  std::optional<CodiceDestinatario> codice;  // none: `voce` is the recipient
  VoceDestinatario voce;
  // Empty: the list's common one.
  std::string oggetto;
  std::string corpo;     // lines end in carriage return and line feed
  std::string allegato;  // a file on this machine
  /// What the row says, in 32 hexadecimal digits: rows that differ in a field differ here.
  std::string impronta;
  /// The recipient for a person: "cliente 1001", "Rossi <rossi@example.org>".
  std::string destinatario;
};

/// The rows of a file. Its first row names the columns, in any order and without regard to case: "tipo" and
/// "codice", or "indirizzo" and optionally "nome", or all four, with each row filling one pair; and
/// optionally "oggetto", "corpo", "allegato". A relative attachment is relative to the folder of the file.
class RigheLista {
 public:
  /// Raises ErroreProgramma (kFileMancante) when the file cannot be read or its first row does not name the
  /// columns.
  explicit RigheLista(std::string file);

  /// The next row; false at the end. Raises ErroreProgramma (kFileMancante) when reading the file fails.
  [[nodiscard]] bool Prossima(RigaLista& riga);

  /// Starts again with the first row.
  void Ricomincia();

 private:
  void LeggiIntestazione();
  [[nodiscard]] bool Leggi(CsvRecord& record);
  void Interpreta(const std::vector<std::string>& campi, RigaLista& riga) const;

  std::string file_;
  std::ifstream flusso_;
  std::optional<CsvReader> lettore_;
  std::vector<std::size_t> colonne_;  // for each position in a row, which of the known columns it is
};

}  // namespace orve::app
