// What is ODBC's own: values of every type, long texts, several results, errors, connections that fail or are
// lost, and secrets that stay out of it all.
#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "adapters/odbc/motore.h"
#include "fakes/errori.h"
#include "odbc/odbc_connection.h"
#include "odbc/wide_text.h"
#include "support/temp_dir.h"

namespace orve::adapters::odbc {

namespace {

using fakes::ErroreDi;

class Odbc : public ::testing::Test {
 protected:
  [[nodiscard]] std::shared_ptr<host::RecordSet> Esegui(const std::string& testo) const {
    return connessione->Execute(testo, host::kComandoTesto);
  }
  [[nodiscard]] host::Variant Valore(const std::string& espressione) const {
    return host::Leggi(*Esegui("SELECT " + espressione + " AS V"), "V");
  }

  std::shared_ptr<OdbcConnection> connessione = OdbcConnection::Apri(Motore().ConnectionString("valori"));
};

TEST_F(Odbc, ValuesOfEveryTypeKeepTheirKind) {
  struct Caso {
    const char* espressione;
    host::Variant want;
  };
  const std::vector<Caso> casi = {
      {"CAST(5 AS SMALLINT)", 5},
      {"CAST(-7 AS INTEGER)", -7},
      {"CAST(2147483648 AS BIGINT)", 2147483648.0},
      {"CAST(1.25 AS REAL)", 1.25},
      {"CAST(-0.5 AS DOUBLE PRECISION)", -0.5},
      {"CAST(12345.67 AS DECIMAL(10,2))", 12345.67},
      {"CAST(12 AS DECIMAL(10,0))", 12},
      {"CAST('x' AS VARCHAR(10))", "x"},
      {"CAST('' AS VARCHAR(10))", ""},
      {"CAST('  ' AS VARCHAR(10))", "  "},
      {"CAST(NULL AS INTEGER)", host::Null{}},
      {"CAST(NULL AS VARCHAR(5))", host::Null{}},
      {"CAST(NULL AS TIMESTAMP)", host::Null{}},
      {"DATE '2026-11-20'", host::DataOra::Da(2026, 11, 20)},
      {"TIMESTAMP '2026-11-20 10:22:05'", host::DataOra::Da(2026, 11, 20, 10, 22, 5)},
  };
  for (const auto& caso : casi) EXPECT_EQ(Valore(caso.espressione), caso.want) << caso.espressione;
  EXPECT_TRUE(Valore("CAST(1 AS BOOLEAN)").ToBoolean());
}

TEST_F(Odbc, TextsOfEveryAlphabetTravelBothWays) {
  for (const char* testo : {"Città d''Oro", "Αθήνα – «Perù»", "日本語", "\xF0\x9F\x93\xA7 posta", "שלום"}) {
    const std::string letto = Valore("CAST('" + std::string(testo) + "' AS VARCHAR(100))").ToText();
    std::string atteso = testo;
    if (const auto doppio = atteso.find("''"); doppio != std::string::npos) atteso.erase(doppio, 1);
    EXPECT_EQ(letto, atteso);
  }
}

TEST_F(Odbc, ALongTextComesWhole) {
  for (const std::size_t lunghezza : {4094U, 4095U, 4096U, 8190U, 200001U}) {
    const auto letto = Valore("CAST(REPEAT('à', " + std::to_string(lunghezza) + ") AS TEXT)").ToText();
    EXPECT_EQ(letto.size(), 2 * lunghezza);
    EXPECT_EQ(letto.find_first_not_of("à"), std::string::npos);
  }
}

TEST_F(Odbc, ALongTextComesWholeFromAnotherDriverToo) {
  const auto altra = OdbcConnection::Apri("Driver=SQLite3;Database=:memory:");
  for (const std::size_t lunghezza : {4094U, 4095U, 4096U, 8190U, 200001U}) {
    const auto righe =
        altra->Execute("SELECT replace(hex(zeroblob(" + std::to_string(lunghezza) + ")), '00', 'à') AS V",
                       host::kComandoTesto);
    const auto letto = host::Leggi(*righe, "V").ToText();
    EXPECT_EQ(letto.size(), 2 * lunghezza);
    EXPECT_EQ(letto.find_first_not_of("à"), std::string::npos);
  }
}

TEST_F(Odbc, ABitIsABooleanOrNull) {
  const auto conBit = OdbcConnection::Apri(Motore().ConnectionString("valori") + ";BoolsAsChar=0");
  const auto righe = conBit->Execute(
      "SELECT CAST(1 AS BOOLEAN) AS VERO, CAST(0 AS BOOLEAN) AS FALSO, CAST(NULL AS BOOLEAN) AS NULLO",
      host::kComandoTesto);
  EXPECT_EQ(host::Leggi(*righe, "VERO"), host::Variant(true));
  EXPECT_EQ(host::Leggi(*righe, "FALSO"), host::Variant(false));
  EXPECT_TRUE(host::Leggi(*righe, "NULLO").IsNull());
}

TEST_F(Odbc, OfSeveralResultsTheFirstWithColumnsCounts) {
  const auto righe = Esegui("SET @X = 1; SELECT 'a' AS V; SELECT 'b' AS W");
  EXPECT_EQ(host::Leggi(*righe, "V"), host::Variant("a"));
  EXPECT_EQ(ErroreDi([&] { (void)host::Leggi(*righe, "W"); }).Numero(), 3265);
  righe->MoveNext();
  EXPECT_TRUE(righe->Eof());
}

TEST_F(Odbc, AnErrorAfterTheFirstResultIsTheStatementsOwn) {
  const auto errore = ErroreDi([&] { (void)Esegui("SELECT 1 AS V; SELECT 1 FROM NON_ESISTE"); });
  EXPECT_NE(errore.Numero(), 0);
  EXPECT_NE(errore.Descrizione().find("NON_ESISTE"), std::string::npos) << errore.Descrizione();
  EXPECT_EQ(Valore("7"), host::Variant(7)) << "the connection serves on";
}

TEST_F(Odbc, AnErrorCarriesNumberStateAndText) {
  const auto errore = ErroreDi([&] { (void)Esegui("SELECT 1 FROM NON_ESISTE"); });
  EXPECT_NE(errore.Numero(), 0);
  EXPECT_EQ(errore.Sorgente(), "ODBC");
  EXPECT_NE(errore.Descrizione().find("NON_ESISTE"), std::string::npos) << errore.Descrizione();
  EXPECT_NE(errore.Descrizione().find("(42"), std::string::npos) << errore.Descrizione();
}

TEST_F(Odbc, TextThatIsNoUtf8IsRefusedAndNotSent) {
  const auto errore = ErroreDi([&] { (void)Esegui("SELECT '\xC3('"); });
  EXPECT_EQ(errore.Numero(), 3001);
}

TEST_F(Odbc, AProcedureWhoseNameIsNoNameIsRefused) {
  for (const char* nome : {"", "A B", "A; DROP TABLE T", "A(1)}"}) {
    EXPECT_EQ(ErroreDi([&] { (void)connessione->Execute(nome, host::kProceduraMemorizzata); }).Numero(), 3001)
        << nome;
  }
}

TEST_F(Odbc, AClosedConnectionRefusesEverythingButItsResults) {
  const auto righe = Esegui("SELECT 1 AS V");
  connessione->Chiudi();
  connessione->Chiudi();
  EXPECT_FALSE(connessione->Aperta());
  EXPECT_EQ(ErroreDi([&] { (void)Esegui("SELECT 1"); }).Numero(), 3704);
  EXPECT_EQ(ErroreDi([&] { connessione->CreateCommand()->Execute(); }).Numero(), 3709);
  EXPECT_EQ(host::Leggi(*righe, "V"), host::Variant(1));
}

TEST(OdbcPerso, AServerThatGoesAwayIsAnErrorOfTheStatementThatFindsItSo) {
  auto motore = std::make_unique<support::H2Server>();
  const auto connessione = OdbcConnection::Apri(motore->ConnectionString("perso"));
  const auto righe = connessione->Execute("SELECT 1 AS V", host::kComandoTesto);
  motore.reset();
  for (int volta = 0; volta < 2; ++volta) {
    const auto errore = ErroreDi([&] { (void)connessione->Execute("SELECT 1", host::kComandoTesto); });
    EXPECT_NE(errore.Numero(), 0);
    EXPECT_FALSE(errore.Descrizione().empty());
  }
  EXPECT_EQ(host::Leggi(*righe, "V"), host::Variant(1));
}

TEST(OdbcAccesso, AFailedLoginTellsWhyAndKeepsThePassword) {
  for (const char* stringa :
       {"Driver={PostgreSQL Unicode};Server=127.0.0.1;Port=1;Database=x;UID=sa;PWD=se-gre-ta",
        "Driver=se-gre-ta;PWD=se-gre-ta", "Driver=Inesistente;Password={se-gre-ta};"}) {
    const auto errore = ErroreDi([&] { (void)OdbcConnection::Apri(stringa); });
    EXPECT_NE(errore.Numero(), 0) << stringa;
    EXPECT_EQ(errore.Sorgente(), "ODBC");
    EXPECT_FALSE(errore.Descrizione().empty());
    EXPECT_EQ(errore.Descrizione().find("se-gre-ta"), std::string::npos) << errore.Descrizione();
  }
}

TEST(OdbcAccesso, AStringThatIsNoConnectionStringIsAnError) {
  for (const char* stringa : {"", ";", "Driver", "DSN=non_esiste"}) {
    EXPECT_NE(ErroreDi([&] { (void)OdbcConnection::Apri(stringa); }).Numero(), 0) << stringa;
  }
}

TEST(OdbcAccesso, AStringThatNoDriverCouldTakeIsRefusedWithoutBeingRepeated) {
  for (const std::string& stringa : {"Driver=SQLite3;PWD=se-gre-ta;X=" + std::string(40000, 'x'),
                                     "Driver=SQLite3;PWD=se-gre-ta;X=" + std::string(65504, 'x'),
                                     std::string("Driver=SQLite3;Database=:memory:;\0PWD=se-gre-ta", 44)}) {
    const auto errore = ErroreDi([&] { (void)OdbcConnection::Apri(stringa); });
    EXPECT_EQ(errore.Numero(), 3001) << stringa.size();
    EXPECT_EQ(errore.Descrizione().find("se-gre-ta"), std::string::npos) << errore.Descrizione();
  }
}

TEST(OdbcTesto, HalfASurrogatePairIsReplaced) {
  EXPECT_EQ(Stretto(u"a\xD83Dz"), "a\xEF\xBF\xBDz");
  EXPECT_EQ(Stretto(u"\xDCE7"), "\xEF\xBF\xBD");
  EXPECT_EQ(Stretto(u"\xD83D"), "\xEF\xBF\xBD");
}

TEST(OdbcTesto, BothWaysGiveTheSameText) {
  std::string lungo;
  for (int i = 0; i < 3000; ++i) lungo += i % 3 == 0 ? "à" : i % 3 == 1 ? "\xF0\x9F\x93\xA7" : "x";
  EXPECT_EQ(Stretto(Largo(lungo)), lungo);
  EXPECT_EQ(Stretto(Largo("")), "");
}

}  // namespace

}  // namespace orve::adapters::odbc
