// A process whose locale has other letters and another decimal separator: the application may have set it,
// its windows do, and so do some drivers.
#include <gtest/gtest.h>

#include <string>

#include "adapters/odbc/motore.h"
#include "odbc/odbc_connection.h"
#include "support/process_locale.h"

namespace orve::adapters::odbc {

namespace {

host::Variant Valore(OdbcConnection& connessione, const std::string& espressione) {
  return host::Leggi(*connessione.Execute("SELECT " + espressione + " AS V", host::kComandoTesto), "V");
}

TEST(OdbcLocale, AConnectionStringIsReadAlikeInTurkish) {
  const std::string stringa = Motore().ConnectionString("locale");
  const support::ProcessLocale turco("tr_TR", "UTF-8");
  EXPECT_EQ(Valore(*OdbcConnection::Apri(stringa), "CAST('Iıİi' AS VARCHAR(10))"), host::Variant("Iıİi"));
}

TEST(OdbcLocale, NumbersAreReadAlikeWithAnotherDecimalSeparator) {
  const auto connessione = OdbcConnection::Apri(Motore().ConnectionString("locale"));
  for (const char* nome : {"it_IT", "ps_AF"}) {
    const support::ProcessLocale altro(nome, "UTF-8");
    for (const char* tipo : {"REAL", "DOUBLE PRECISION", "DECIMAL(10,2)"}) {
      const host::Variant valore = Valore(*connessione, "CAST(-1234.5 AS " + std::string(tipo) + ")");
      EXPECT_EQ(valore, host::Variant(-1234.5)) << nome << " " << tipo;
      EXPECT_EQ(valore.ToText(), "-1234,5") << nome << " " << tipo;
    }
  }
}

TEST(OdbcLocale, AProcedureHasAPlainNameWhateverLettersTheLocaleHas) {
  const auto connessione = OdbcConnection::Apri(Motore().ConnectionString("locale"));
  const support::ProcessLocale tedesco("de_DE", "ISO-8859-1");
  try {
    (void)connessione->Execute("perch\xE9", host::kProceduraMemorizzata);
    FAIL() << "taken";
  } catch (const host::Errore& errore) {
    EXPECT_EQ(errore.Descrizione(), "Non è il nome di una procedura: perch\xE9");
  }
}

}  // namespace

}  // namespace orve::adapters::odbc
