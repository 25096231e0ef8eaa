// The result of a statement, held in memory: it moves both ways, and outlives its connection.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "orve-mailserver/host/connection.h"

namespace orve::adapters::rows {

/// The numbers with which the application's database objects refuse a call, in addition to the engine's own.
enum ObjectErrorNumber : std::int32_t {
  kArgomentiErrati = 3001,      // an argument of the wrong type or out of range, or a text that cannot be run
  kNessunaRiga = 3021,          // a row is needed where there is none
  kElementoSconosciuto = 3265,  // no column or parameter of that name
  kOggettoChiuso = 3704,        // the record set or the connection is closed
  kConnessioneNonValida = 3709  // the command's connection is closed
};

/// Rows of equal width, one after the other.
struct Rows {
  std::vector<std::string> colonne;
  std::vector<host::Variant> valori;

  [[nodiscard]] std::size_t Numero() const { return colonne.empty() ? 0 : valori.size() / colonne.size(); }
};

/// Columns are found ignoring case; of two with the same name, the first is taken. The fields follow the
/// record set from row to row. A closed record set answers State and refuses everything else with 3704. Its
/// errors name `sorgente`, the database that the rows came from.
class RecordSetOfRows final : public host::RecordSet {
 public:
  RecordSetOfRows(Rows righe, std::string sorgente);

  [[nodiscard]] bool Eof() const override;
  [[nodiscard]] std::shared_ptr<host::Fields> Fields() const override;
  void MoveFirst() override;
  void MoveNext() override;
  [[nodiscard]] std::int32_t State() const override;
  void Close() override;

 private:
  struct Cursor;
  class Columns;
  class Column;

  std::shared_ptr<Cursor> cursore_;  // shared with the fields handed out
};

}  // namespace orve::adapters::rows
