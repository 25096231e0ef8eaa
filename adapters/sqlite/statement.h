// One prepared statement of the engine, finalised on every exit path, and the engine's errors as the system's
// own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "orve-mailserver/host/errore.h"
#include "orve-mailserver/host/variant.h"

struct sqlite3;
struct sqlite3_stmt;

namespace orve::adapters::sqlite {

/// The source of every error of this adapter.
inline constexpr const char* kSorgente = "SQLite";

/// The connection's last error: the engine's extended number and text. `esito` is what the call returned.
[[nodiscard]] host::Errore ErroreMotore(sqlite3* database, int esito);

/// A value for a parameter of a statement: null, whole number, number, text.
using Value = std::variant<std::nullptr_t, std::int64_t, double, std::string>;

class Statement {
 public:
  /// Prepares the first statement of the text, which must outlive this object. An empty text prepares
  /// nothing.
  Statement(sqlite3* database, std::string_view testo);
  ~Statement();
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;
  Statement(Statement&&) = delete;
  Statement& operator=(Statement&&) = delete;

  /// True when the text held nothing but white space and comments.
  [[nodiscard]] bool Vuota() const { return istruzione_ == nullptr; }
  /// What follows the first statement.
  [[nodiscard]] std::string_view Resto() const { return resto_; }

  /// Gives the parameters ?1, ?2, ... their values; their number must be the statement's own.
  void Valori(const std::vector<Value>& valori);
  /// The next row; false past the last one.
  bool Avanza();

  [[nodiscard]] int Colonne() const;
  [[nodiscard]] std::string NomeColonna(int colonna) const;
  /// The value of a column of the current row. Whole numbers are 32-bit integers, or 64-bit floats where they
  /// do not fit; bytes come as a text. A column declared BIT gives a boolean, one declared DATE or DATETIME a
  /// date, when the stored value can be read as such.
  [[nodiscard]] host::Variant Leggi(int colonna) const;

 private:
  enum class Kind : std::uint8_t { kComune, kBit, kData };

  [[nodiscard]] Kind SpecieDichiarata(int colonna) const;
  [[nodiscard]] std::string Testo(int colonna) const;

  sqlite3* database_;
  sqlite3_stmt* istruzione_ = nullptr;
  std::string_view resto_;
  std::vector<Kind> specie_;
};

/// A date as the database writes it, "yyyymmdd" or "yyyy-mm-dd", optionally followed by a blank or "T" and
/// "hh:mm:ss" with or without fraction. False when the text is none of these or not a calendar date.
[[nodiscard]] bool LeggiData(std::string_view testo, host::DataOra& data);

}  // namespace orve::adapters::sqlite
