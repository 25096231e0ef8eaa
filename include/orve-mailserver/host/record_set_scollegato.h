// A record set without a connection: fields and rows that the program fills in itself, for a grid to show.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/connection.h"
#include "orve-mailserver/host/variant.h"

namespace orve::host {

/// Fields first, then Open, then rows. Numbers are those of the database objects that it stands for.
class ORVE_API RecordSetScollegato : public RecordSet {
 public:
  /// The types of a field: an integer, a text.
  enum TipoCampo : std::int32_t { kIntero = 3, kTesto = 200 };
  /// The direction of a search: forward.
  enum Direzione : std::int32_t { kAvanti = 1 };
  /// Where a search begins: at the first row.
  enum Inizio : std::int32_t { kDalPrimo = 1 };
  /// What stands for an argument that is not given.
  static constexpr std::int32_t kNonIndicato = -1;
  /// AbsolutePosition while there is no current row.
  static constexpr std::int32_t kNessunaRiga = -3;

  /// `Fields.Append`, before Open: name, type, size in characters for a text, attribute.
  virtual void FieldsAppend(const std::string& nome, std::int32_t tipo, std::int32_t dimensione,
                            std::int32_t attributo) = 0;
  /// Opens the record set without a source.
  virtual void Open(std::int32_t cursore, std::int32_t blocco, std::int32_t opzioni) = 0;
  /// Appends a row with these values in these fields and makes it the current one. For an unknown field, or a
  /// value that its field cannot hold (such as a text longer than the field), raises an error and adds no
  /// row.
  virtual void AddNew(const std::vector<std::string>& campi, const Variant::Array& valori) = 0;
  /// How many rows there are.
  [[nodiscard]] virtual std::int32_t RecordCount() = 0;
  /// Searches for a row, by a criterion of the form "Campo='testo'" with texts compared without case, and
  /// makes it the current one; without such a row the record set is then at its end. The first `salta` rows
  /// are skipped. Raises an error for a criterion in another form; the text cannot hold an apostrophe.
  virtual void Find(const std::string& criterio, std::int32_t salta, std::int32_t direzione,
                    std::int32_t inizio) = 0;
  /// The current row, from 1, or kNessunaRiga.
  [[nodiscard]] virtual std::int32_t AbsolutePosition() = 0;
  /// Makes a row the current one; raises an error when there is no such row.
  virtual void AbsolutePosition(std::int32_t posizione) = 0;

  /// Raised after the current row has changed, for the grid that shows it.
  std::function<void()> MoveComplete;
};

}  // namespace orve::host
