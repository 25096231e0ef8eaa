#include "sqlite/statement.h"

#include <sqlite3.h>

#include <charconv>
#include <chrono>
#include <limits>

#include "rows/values.h"
#include "text/text.h"

namespace orve::adapters::sqlite {

namespace {

// Removes that many digits from the front of the text.
bool Cifre(std::string_view& testo, std::size_t quante, int& numero) {
  if (testo.size() < quante) return false;
  const auto* fine = testo.data() + quante;
  if (testo.substr(0, quante).find_first_not_of("0123456789") != std::string_view::npos) return false;
  if (std::from_chars(testo.data(), fine, numero).ptr != fine) return false;
  testo.remove_prefix(quante);
  return true;
}

bool Segno(std::string_view& testo, char segno) {
  if (testo.empty() || testo.front() != segno) return false;
  testo.remove_prefix(1);
  return true;
}

bool LeggiOra(std::string_view testo, int& ora, int& minuto, int& secondo) {
  if (!Cifre(testo, 2, ora) || !Segno(testo, ':') || !Cifre(testo, 2, minuto) || !Segno(testo, ':') ||
      !Cifre(testo, 2, secondo)) {
    return false;
  }
  const bool frazione = Segno(testo, '.');
  if (testo.empty() == frazione || testo.find_first_not_of("0123456789") != std::string_view::npos)
    return false;
  return ora < 24 && minuto < 60 && secondo < 60;
}

}  // namespace

host::Errore ErroreMotore(sqlite3* database, int esito) {
  if (database == nullptr) return {esito, kSorgente, sqlite3_errstr(esito)};
  const int esteso = sqlite3_extended_errcode(database);
  // The connection holds the error of its last call, which need not be this one.
  if ((esteso & 0xFF) != (esito & 0xFF)) return {esito, kSorgente, sqlite3_errstr(esito)};
  return {esteso, kSorgente, sqlite3_errmsg(database)};
}

bool LeggiData(std::string_view testo, host::DataOra& data) {
  int anno = 0;
  int mese = 0;
  int giorno = 0;
  int ora = 0;
  int minuto = 0;
  int secondo = 0;
  if (!Cifre(testo, 4, anno)) return false;
  const bool trattini = Segno(testo, '-');
  if (!Cifre(testo, 2, mese) || Segno(testo, '-') != trattini || !Cifre(testo, 2, giorno)) return false;
  if (!testo.empty()) {
    if (!Segno(testo, ' ') && !Segno(testo, 'T')) return false;
    if (!LeggiOra(testo, ora, minuto, secondo)) return false;
  }
  const std::chrono::year_month_day civile{std::chrono::year{anno},
                                           std::chrono::month{static_cast<unsigned>(mese)},
                                           std::chrono::day{static_cast<unsigned>(giorno)}};
  if (anno < 100 || !civile.ok()) return false;
  data = host::DataOra::Da(anno, mese, giorno, ora, minuto, secondo);
  return true;
}

Statement::Statement(sqlite3* database, std::string_view testo) : database_(database) {
  if (testo.empty()) return;
  if (testo.size() >= static_cast<std::size_t>(std::numeric_limits<int>::max())) {
    throw host::Errore(SQLITE_TOOBIG, kSorgente, sqlite3_errstr(SQLITE_TOOBIG));
  }
  const char* resto = nullptr;
  const int esito =
      sqlite3_prepare_v2(database_, testo.data(), static_cast<int>(testo.size()), &istruzione_, &resto);
  if (esito != SQLITE_OK) throw ErroreMotore(database_, esito);
  if (resto != nullptr) resto_ = testo.substr(static_cast<std::size_t>(resto - testo.data()));
  for (int colonna = 0; colonna < Colonne(); ++colonna) specie_.push_back(SpecieDichiarata(colonna));
}

// The engine repeats here the error that Avanza has already raised.
Statement::~Statement() {
  sqlite3_finalize(istruzione_);
}

void Statement::Valori(const std::vector<Value>& valori) {
  const auto attesi = static_cast<std::size_t>(sqlite3_bind_parameter_count(istruzione_));
  if (attesi != valori.size()) {
    throw host::Errore(SQLITE_RANGE, kSorgente,
                       "L'istruzione vuole " + std::to_string(attesi) + " parametri, ne ha ricevuti " +
                           std::to_string(valori.size()));
  }
  for (std::size_t i = 0; i < valori.size(); ++i) {
    const int posto = static_cast<int>(i) + 1;
    int esito = SQLITE_OK;
    if (const auto* intero = std::get_if<std::int64_t>(&valori[i])) {
      esito = sqlite3_bind_int64(istruzione_, posto, *intero);
    } else if (const auto* numero = std::get_if<double>(&valori[i])) {
      esito = sqlite3_bind_double(istruzione_, posto, *numero);
    } else if (const auto* testo = std::get_if<std::string>(&valori[i])) {
      esito = sqlite3_bind_text64(istruzione_, posto, testo->data(), testo->size(), SQLITE_TRANSIENT,
                                  SQLITE_UTF8);
    }  // a parameter starts as null
    if (esito != SQLITE_OK) throw ErroreMotore(database_, esito);
  }
}

bool Statement::Avanza() {
  const int esito = sqlite3_step(istruzione_);
  if (esito == SQLITE_ROW) return true;
  if (esito != SQLITE_DONE) throw ErroreMotore(database_, esito);
  return false;
}

int Statement::Colonne() const {
  return sqlite3_column_count(istruzione_);
}

std::string Statement::NomeColonna(int colonna) const {
  const char* nome = sqlite3_column_name(istruzione_, colonna);
  if (nome == nullptr) throw host::Errore(host::kMemoriaInsufficiente);
  return nome;
}

Statement::Kind Statement::SpecieDichiarata(int colonna) const {
  const char* dichiarata = sqlite3_column_decltype(istruzione_, colonna);
  if (dichiarata == nullptr) return Kind::kComune;
  if (text::EqualsIgnoreCase(dichiarata, "BIT")) return Kind::kBit;
  for (const char* data : {"DATE", "DATETIME", "DATETIME2", "SMALLDATETIME"}) {
    if (text::EqualsIgnoreCase(dichiarata, data)) return Kind::kData;
  }
  return Kind::kComune;
}

std::string Statement::Testo(int colonna) const {
  const bool byte = sqlite3_column_type(istruzione_, colonna) == SQLITE_BLOB;
  const void* dati = byte ? sqlite3_column_blob(istruzione_, colonna)
                          : static_cast<const void*>(sqlite3_column_text(istruzione_, colonna));
  const auto lunghezza = static_cast<std::size_t>(sqlite3_column_bytes(istruzione_, colonna));
  if (dati == nullptr && sqlite3_errcode(database_) == SQLITE_NOMEM)
    throw host::Errore(host::kMemoriaInsufficiente);
  return dati == nullptr ? std::string() : std::string(static_cast<const char*>(dati), lunghezza);
}

host::Variant Statement::Leggi(int colonna) const {
  const auto specie = specie_[static_cast<std::size_t>(colonna)];
  const int tipo = sqlite3_column_type(istruzione_, colonna);
  if (tipo == SQLITE_NULL) return host::Null{};
  host::DataOra data;
  // A date of eight digits is stored as a whole number in a column declared DATE.
  if (specie == Kind::kData && tipo != SQLITE_FLOAT && LeggiData(Testo(colonna), data)) return data;
  // Reading the text of a number would turn the column into a text: ask the type as it was.
  if (tipo == SQLITE_INTEGER) {
    const auto numero = sqlite3_column_int64(istruzione_, colonna);
    return specie == Kind::kBit ? host::Variant(numero != 0) : rows::DaIntero(numero);
  }
  if (tipo == SQLITE_FLOAT) return sqlite3_column_double(istruzione_, colonna);
  return Testo(colonna);
}

}  // namespace orve::adapters::sqlite
