#include "odbc/result.h"

#include <sqlucode.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

#include "odbc/wide_text.h"
#include "rows/values.h"

namespace orve::adapters::odbc {

namespace {

struct Column {
  std::string nome;
  SQLSMALLINT tipo = SQL_UNKNOWN_TYPE;
};

Column Descrivi(const Handle& istruzione, SQLUSMALLINT posto) {
  std::array<SQLWCHAR, 512> nome{};
  SQLSMALLINT lunghezza = 0;
  SQLSMALLINT tipo = SQL_UNKNOWN_TYPE;
  SQLULEN ampiezza = 0;
  SQLSMALLINT decimali = 0;
  SQLSMALLINT annullabile = 0;
  istruzione.Verifica(SQLDescribeColW(istruzione.Grezzo(), posto, nome.data(),
                                      static_cast<SQLSMALLINT>(nome.size()), &lunghezza, &tipo, &ampiezza,
                                      &decimali, &annullabile));
  const auto unita = std::min(static_cast<std::size_t>(std::max<SQLSMALLINT>(lunghezza, 0)), nome.size() - 1);
  return {Stretto({reinterpret_cast<const char16_t*>(nome.data()), unita}), tipo};
}

// A value of fixed size; false for null.
template <class T>
bool Fisso(const Handle& istruzione, SQLUSMALLINT posto, SQLSMALLINT tipo, T& valore) {
  SQLLEN presente = 0;
  istruzione.Verifica(
      SQLGetData(istruzione.Grezzo(), posto, tipo, &valore, static_cast<SQLLEN>(sizeof valore), &presente));
  return presente != SQL_NULL_DATA;
}

// A text of any length, piece by piece; false for null.
bool Testo(const Handle& istruzione, SQLUSMALLINT posto, std::string& valore) {
  std::u16string largo;
  std::array<char16_t, 4096> pezzo{};
  for (;;) {
    SQLLEN restanti = 0;  // bytes, including this piece
    const SQLRETURN esito = SQLGetData(istruzione.Grezzo(), posto, SQL_C_WCHAR, pezzo.data(),
                                       static_cast<SQLLEN>(sizeof pezzo), &restanti);
    if (esito == SQL_NO_DATA) break;
    istruzione.Verifica(esito);
    if (restanti == SQL_NULL_DATA) return false;
    // Full up to the NUL at its end, with more to come; the driver need not know how much.
    const bool piena = esito == SQL_SUCCESS_WITH_INFO &&
                       (restanti == SQL_NO_TOTAL || restanti >= static_cast<SQLLEN>(sizeof pezzo));
    if (piena) {
      largo.append(pezzo.data(), pezzo.size() - 1);
      continue;
    }
    const auto detta = static_cast<std::size_t>(std::max<SQLLEN>(restanti, 0)) / 2;
    // A length that is unknown, or greater than the piece, is not that of the piece.
    const bool vale = restanti != SQL_NO_TOTAL && detta < pezzo.size();
    const auto nul = std::find(pezzo.begin(), std::prev(pezzo.end()), u'\0') - pezzo.begin();
    largo.append(pezzo.data(), vale ? detta : static_cast<std::size_t>(nul));
    break;
  }
  valore = Stretto(largo);
  return true;
}

// A decimal as the driver spells it.
host::Variant Decimale(const std::string& testo) {
  const char* const fine = testo.data() + testo.size();
  std::int64_t intero = 0;
  const auto letto = std::from_chars(testo.data(), fine, intero);
  if (letto.ec == std::errc() && letto.ptr == fine) return rows::DaIntero(intero);
  double numero = 0;
  const auto reale = std::from_chars(testo.data(), fine, numero);
  if (reale.ec == std::errc() && reale.ptr == fine) return numero;
  return testo;
}

host::Variant Valore(const Handle& istruzione, SQLUSMALLINT posto, SQLSMALLINT tipo) {
  switch (tipo) {
    case SQL_BIT: {
      unsigned char bit = 0;
      if (!Fisso(istruzione, posto, SQL_C_BIT, bit)) return host::Null{};
      return bit != 0;
    }
    case SQL_TINYINT:
    case SQL_SMALLINT:
    case SQL_INTEGER:
    case SQL_BIGINT: {
      SQLBIGINT numero = 0;
      if (!Fisso(istruzione, posto, SQL_C_SBIGINT, numero)) return host::Null{};
      return rows::DaIntero(numero);
    }
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE: {
      double numero = 0;
      if (!Fisso(istruzione, posto, SQL_C_DOUBLE, numero)) return host::Null{};
      return numero;
    }
    case SQL_DATE:
    case SQL_TYPE_DATE:
    case SQL_TIMESTAMP:
    case SQL_TYPE_TIMESTAMP: {
      SQL_TIMESTAMP_STRUCT istante{};
      if (!Fisso(istruzione, posto, SQL_C_TYPE_TIMESTAMP, istante)) return host::Null{};
      return host::DataOra::Da(istante.year, istante.month, istante.day, istante.hour, istante.minute,
                               istante.second);
    }
    default: {
      std::string testo;
      if (!Testo(istruzione, posto, testo)) return host::Null{};
      return tipo == SQL_DECIMAL || tipo == SQL_NUMERIC ? Decimale(testo) : host::Variant(testo);
    }
  }
}

rows::Rows LeggiRighe(const Handle& istruzione, SQLSMALLINT colonne) {
  rows::Rows righe;
  std::vector<SQLSMALLINT> tipi;
  for (SQLUSMALLINT posto = 1; posto <= colonne; ++posto) {
    auto colonna = Descrivi(istruzione, posto);
    righe.colonne.push_back(std::move(colonna.nome));
    tipi.push_back(colonna.tipo);
  }
  for (;;) {
    const SQLRETURN esito = SQLFetch(istruzione.Grezzo());
    if (esito == SQL_NO_DATA) return righe;
    istruzione.Verifica(esito);
    for (SQLUSMALLINT posto = 1; posto <= colonne; ++posto) {
      righe.valori.push_back(Valore(istruzione, posto, tipi[posto - 1U]));
    }
  }
}

}  // namespace

rows::Rows LeggiRisultati(const Handle& istruzione) {
  rows::Rows righe;
  for (;;) {
    SQLSMALLINT colonne = 0;
    istruzione.Verifica(SQLNumResultCols(istruzione.Grezzo(), &colonne));
    if (colonne > 0 && righe.colonne.empty()) righe = LeggiRighe(istruzione, colonne);
    const SQLRETURN esito = SQLMoreResults(istruzione.Grezzo());
    if (esito == SQL_NO_DATA) return righe;
    istruzione.Verifica(esito);
  }
}

}  // namespace orve::adapters::odbc
