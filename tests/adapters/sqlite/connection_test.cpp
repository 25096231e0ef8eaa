// What the embedded database does beyond the contract of all connections: values, one statement at a time,
// errors with the engine's number, texts of every kind, bounded time.
#include "sqlite/sqlite_connection.h"

#include <gmock/gmock.h>

#include <chrono>
#include <random>

#include "adapters/sqlite/prova.h"
#include "sqlite/collation.h"

namespace orve::adapters::sqlite {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using namespace std::string_view_literals;

using SqliteConnectionTest = ConDatiDiProva;

TEST_F(SqliteConnectionTest, ValuesComeInTheirAutomationKind) {
  (void)Esegui(
      "CREATE TABLE VALORI (A INT, B BIT, C DATE, D DATETIME, E FLOAT, F VARCHAR(10), G, H SMALLDATETIME, I "
      "DATETIME2)");
  struct Caso {
    const char* label;
    const char* colonna;
    const char* valore;
    host::Variant want;
  };
  const std::vector<Caso> casi = {
      {"whole number", "A", "5", 5},
      {"smallest of 32 bits", "A", "-2147483648", static_cast<std::int32_t>(-2147483647 - 1)},
      {"largest of 32 bits", "A", "2147483647", 2147483647},
      {"beyond 32 bits", "A", "2147483648", 2147483648.0},
      {"null", "A", "NULL", host::Null{}},
      {"text in a numeric column", "A", "'x'", "x"},
      {"bit set", "B", "1", true},
      {"bit clear", "B", "0", false},
      {"bit null", "B", "NULL", host::Null{}},
      {"date of eight digits", "C", "'20250131'", host::DataOra::Da(2025, 1, 31)},
      {"date with dashes", "C", "'2025-01-31'", host::DataOra::Da(2025, 1, 31)},
      {"time stamp", "D", "'2025-01-31 10:22:05'", host::DataOra::Da(2025, 1, 31, 10, 22, 5)},
      {"time stamp with a fraction", "D", "'2025-01-31T10:22:05.123'",
       host::DataOra::Da(2025, 1, 31, 10, 22, 5)},
      {"small date", "H", "'20250131'", host::DataOra::Da(2025, 1, 31)},
      {"long date", "I", "'20250131'", host::DataOra::Da(2025, 1, 31)},
      {"no day of the calendar", "C", "'2025-02-30'", "2025-02-30"},
      {"no time of day", "D", "'2025-01-31 25:00:00'", "2025-01-31 25:00:00"},
      {"a date null", "C", "NULL", host::Null{}},
      {"a number in a date column", "C", "7.5", 7.5},
      {"fraction", "E", "1.25", 1.25},
      {"whole number in a float column", "E", "3", 3.0},
      {"text", "F", "'è'", "è"},
      {"number in a text column", "F", "12", "12"},
      {"empty text", "F", "''", ""},
      {"bytes", "G", "x'00FF41'",
       std::string("\0\xFF"
                   "A",
                   3)},
  };
  for (const auto& caso : casi) {
    (void)Esegui("DELETE FROM VALORI");
    (void)Esegui(std::string("INSERT INTO VALORI (") + caso.colonna + ") VALUES (" + caso.valore + ")");
    EXPECT_EQ(host::Leggi(*Esegui(std::string("SELECT ") + caso.colonna + " FROM VALORI"), caso.colonna),
              caso.want)
        << caso.label;
  }
}

TEST_F(SqliteConnectionTest, OfTwoColumnsWithOneNameTheFirstCounts) {
  EXPECT_EQ(host::Leggi(*Esegui("SELECT 1 AS A, 2 AS a"), "A"), host::Variant(1));
}

TEST_F(SqliteConnectionTest, AnErrorOfTheEngineKeepsItsNumberAndText) {
  const auto mancante = ErroreDi([&] { (void)Esegui("SELECT 1 FROM NON_ESISTE"); });
  EXPECT_EQ(mancante.Numero(), 1);
  EXPECT_EQ(mancante.Sorgente(), "SQLite");
  EXPECT_EQ(mancante.Descrizione(), "no such table: NON_ESISTE");
  const auto doppia = ErroreDi([&] { (void)Esegui("INSERT INTO CG18_ANADITTABASE VALUES (1, 1)"); });
  EXPECT_EQ(doppia.Numero(), 1555) << "the extended number";
  EXPECT_EQ(doppia.Descrizione(), "UNIQUE constraint failed: CG18_ANADITTABASE.CG18_DITTA");
}

TEST_F(SqliteConnectionTest, OneTextRunsOneStatementOrNone) {
  const auto* const account = "SELECT FW98_IDACCOUNT FROM FW98_MAILACCOUNT";
  const auto prima = Righe(account, {"FW98_IDACCOUNT"});
  for (const char* testo : {
           "DELETE FROM FW98_MAILACCOUNT; SELECT 1",
           "SELECT CG16_CODICE FROM CG16_ANAGGEN WHERE CG16_CODICE= 1; DELETE FROM FW98_MAILACCOUNT",
           "SELECT FW07_ID FROM FW07_APPUSER WHERE FW07_CODICE = ''; DELETE FROM FW98_MAILACCOUNT; --'",
           "SELECT 1;;; DROP TABLE FW98_MAILACCOUNT",
           "SELECT 1; this is no statement",
           "SELECT 1; '",
       }) {
    EXPECT_EQ(ErroreDi([&] { (void)Esegui(testo); }).Numero(), 3001) << testo;
    EXPECT_EQ(Righe(account, {"FW98_IDACCOUNT"}), prima) << testo;
  }
  for (const char* testo :
       {"SELECT 1 A;", "SELECT 1 A ; \r\n", "SELECT 1 A; -- fine", "SELECT 1 A; /* fine */ ;;"}) {
    EXPECT_EQ(host::Leggi(*Esegui(testo), "A"), host::Variant(1)) << testo;
  }
}

TEST_F(SqliteConnectionTest, AStatementIsTakenWithWhateverItsTextsHold) {
  struct Caso {
    const char* label;
    std::string testo;
  };
  const std::vector<Caso> casi = {
      {"line ends", "uno\r\ndue\rtre\n"},
      {"quotes", "\"`[]"},
      {"bytes that are no UTF-8", "\xFF\xFE\xC3(\x80"},
      {"every control character", "\x01\x02\x07\x08\x0B\x0C\x1A\x1B\x7F"},
      {"beyond the basic plane", "\xF0\x9F\x93\xA7 posta"},
      {"turns of the dialect", "dbo.x WITH (NOLOCK) TOP 1 ISNULL( exec -- /* */ ;"},
      {"a megabyte", std::string(1 << 20, 'x')},
      {"a megabyte of accents",
       [] {
         std::string testo;
         for (int i = 0; i < (1 << 19); ++i) testo += "è";
         return testo;
       }()},
  };
  for (const auto& caso : casi) {
    const auto righe = Esegui("SELECT '" + caso.testo + "' AS A");
    EXPECT_EQ(host::Leggi(*righe, "A"), host::Variant(caso.testo)) << caso.label;
  }
}

TEST_F(SqliteConnectionTest, AStatementOfAMegabyteThatIsNoneIsAnError) {
  struct Caso {
    const char* label;
    std::string testo;
  };
  const std::vector<Caso> casi = {
      {"letters", std::string(1 << 20, 'x')},
      {"parentheses", "SELECT " + std::string(1 << 20, '(')},
      {"signs", "SELECT " + std::string(1 << 20, '-')},
      {"quotes left open", "SELECT '" + std::string(1 << 20, 'x')},
      {"a code of a megabyte", "SELECT 1 FROM CG16_ANAGGEN WHERE CG16_CODICE= " + std::string(1 << 20, 'x')},
      {"bytes that are no UTF-8", std::string(1 << 20, '\xFF')},
      {"a chain of conditions",
       [] {
         std::string testo = "SELECT 1 WHERE 1";
         for (int i = 0; i < 100000; ++i) testo += " OR 1";
         return testo;
       }()},
  };
  for (const auto& caso : casi) {
    const auto errore = ErroreDi([&] { (void)Esegui(caso.testo); });
    EXPECT_NE(errore.Numero(), 0) << caso.label;
    EXPECT_EQ(errore.Sorgente(), "SQLite") << caso.label;
  }
  EXPECT_FALSE(Esegui("SELECT 1")->Eof());
}

TEST_F(SqliteConnectionTest, AnyTextLeavesTheConnectionAndTheFileWhole) {
  static const std::vector<std::string> kParole = {"SELECT",
                                                   "*",
                                                   "FROM",
                                                   "CG16_ANAGGEN",
                                                   "FW07_APPUSER",
                                                   "WHERE",
                                                   "CG16_CODICE",
                                                   "=",
                                                   "1",
                                                   "'x'",
                                                   "TOP",
                                                   "(",
                                                   ")",
                                                   "WITH",
                                                   "NOLOCK",
                                                   "dbo.",
                                                   "FNCG_GETCODANAG",
                                                   ",",
                                                   "ISNULL",
                                                   "exec",
                                                   "SPFW_AttivaEventoGestionale",
                                                   "UNION",
                                                   "ORDER BY",
                                                   "AS",
                                                   "'",
                                                   "\"",
                                                   "[",
                                                   "]",
                                                   "--",
                                                   "/*",
                                                   "*/",
                                                   ";",
                                                   "\r",
                                                   "\n",
                                                   "?",
                                                   "NULL",
                                                   "è",
                                                   "\xFF",
                                                   "JOIN",
                                                   "ON",
                                                   "LIMIT",
                                                   "INFORMATION_SCHEMA.TABLES",
                                                   "@x"};
  std::mt19937 caso(20254);  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same texts at every run
  const auto fino = [&caso](std::size_t n) {
    return std::uniform_int_distribution<std::size_t>(0, n - 1)(caso);
  };
  std::size_t riusciti = 0;
  for (int giro = 0; giro < 20000; ++giro) {
    std::string testo = fino(2) == 0 ? "SELECT" : "";
    for (auto n = fino(15); n > 0; --n) testo += " " + kParole[fino(kParole.size())];
    if (ErroreDi([&] { (void)Esegui(testo); }).Numero() == 0) ++riusciti;
  }
  EXPECT_GT(riusciti, 50U) << "the texts should not all be refused";
  EXPECT_THAT(Righe("PRAGMA integrity_check", {"integrity_check"}), ElementsAre("ok"));
}

TEST_F(SqliteConnectionTest, AValueGoesInAndComesOutWhole) {
  std::string tutto("NUL\0 e 'apici' \"doppi\" \r\n \xFF è "sv);
  tutto += std::string(1 << 20, 'y');
  (void)connessione->EseguiConValori(
      "INSERT INTO REGISTRO_INVII (IDVOCE, TIPOCANALE, CANALEINVIO, RISULTATO, CORPO) VALUES (?1, ?2, ?3, "
      "?4, ?5)",
      {std::string("IDV"), std::int64_t{5}, 77.0, nullptr, tutto});
  const auto riga = Esegui("SELECT * FROM REGISTRO_INVII");
  EXPECT_EQ(host::Leggi(*riga, "CORPO"), host::Variant(tutto));
  EXPECT_EQ(host::Leggi(*riga, "TIPOCANALE"), host::Variant(5));
  EXPECT_EQ(host::Leggi(*riga, "CANALEINVIO"), host::Variant(77.0));
  EXPECT_TRUE(host::Leggi(*riga, "RISULTATO").IsNull());
}

TEST_F(SqliteConnectionTest, AsManyValuesAsParametersAreWanted) {
  EXPECT_EQ(ErroreDi([&] { (void)connessione->EseguiConValori("SELECT ?1", {}); }).Numero(), 25);
  EXPECT_EQ(ErroreDi([&] {
              (void)connessione->EseguiConValori("SELECT ?1", {nullptr, nullptr});
            }).Numero(),
            25);
}

TEST_F(SqliteConnectionTest, AStatementThatNeverEndsIsStopped) {
  SqliteOptions opzioni;
  opzioni.tempoMassimo = std::chrono::milliseconds(200);
  const auto breve = SqliteConnection::Apri(percorso, opzioni);
  const auto errore = ErroreDi([&] {
    (void)breve->Execute(
        "WITH RECURSIVE N(I) AS (SELECT 1 UNION ALL SELECT I+1 FROM N) SELECT COUNT(*) FROM N", 1);
  });
  EXPECT_EQ(errore.Numero(), 9) << errore.Descrizione();
  EXPECT_EQ(errore.Descrizione(), "L'istruzione ha superato il tempo massimo");
  // Far too short for the clock to be checked.
  EXPECT_FALSE(breve->Execute("SELECT 1", 1)->Eof()) << "the next statement has its own time";
}

TEST_F(SqliteConnectionTest, TheProcedureOptionRunsAProcedureWithoutArguments) {
  const auto errore =
      ErroreDi([&] { (void)Esegui("SPFW_AttivaEventoGestionale", host::kProceduraMemorizzata); });
  EXPECT_EQ(errore.Numero(), 1);
  EXPECT_THAT(errore.Descrizione(), StartsWith("wrong number of arguments"));
  EXPECT_EQ(ErroreDi([&] { (void)Esegui("", host::kProceduraMemorizzata); }).Numero(), 1);
}

TEST_F(SqliteConnectionTest, ACommandRunsATextToo) {
  const auto comando = connessione->CreateCommand();
  comando->CommandText("UPDATE FW24_FAXCONFIG SET FW24_BCC = 1");
  comando->Execute();
  EXPECT_THAT(Righe("SELECT COUNT(*) N FROM FW24_FAXCONFIG WHERE FW24_BCC = 1", {"N"}), ElementsAre("2"));
  comando->ParametersAppend(comando->CreateParameter("X", 3, 2, 0));
  EXPECT_EQ(ErroreDi([&] { comando->Execute(); }).Numero(), 3001) << "a text takes no parameters";
}

TEST_F(SqliteConnectionTest, AProcedureIsFoundWithOwnerAndInAnyCase) {
  connessione->UtenteConnessione(3);
  for (const char* nome : {"SPFW_GetUserIDFromConnection", "dbo.SPFW_GetUserIDFromConnection",
                           " spfw_getuseridfromconnection "}) {
    const auto comando = connessione->CreateCommand();
    comando->CommandType(host::kProceduraMemorizzata);
    comando->CommandText(nome);
    comando->ParametersAppend(comando->CreateParameter("IDUtenteApp", 3, 2, 0));
    comando->Execute();
    EXPECT_EQ(comando->ParametersItem("idutenteapp")->Value(), host::Variant(3)) << nome;
  }
  EXPECT_EQ(connessione->UtenteConnessione(), 3);
}

TEST_F(SqliteConnectionTest, OnlyAnOutputNumberIsAParameter) {
  const auto comando = connessione->CreateCommand();
  EXPECT_EQ(ErroreDi([&] { (void)comando->CreateParameter("A", 200, 2, 0); }).Numero(), 3001) << "a text";
  EXPECT_EQ(ErroreDi([&] { (void)comando->CreateParameter("A", 3, 1, 0); }).Numero(), 3001) << "an input";
}

TEST_F(SqliteConnectionTest, AClosedConnectionCanBeClosedAgain) {
  const auto comando = connessione->CreateCommand();
  comando->CommandText("SELECT 1");
  EXPECT_TRUE(connessione->Aperta());
  connessione->Chiudi();
  connessione->Chiudi();
  EXPECT_FALSE(connessione->Aperta());
  EXPECT_EQ(ErroreDi([&] { (void)Esegui("SELECT 1"); }).Numero(), 3704);
  EXPECT_EQ(ErroreDi([&] { comando->Execute(); }).Numero(), 3709);
  const auto dopo = connessione->CreateCommand();
  EXPECT_EQ(ErroreDi([&] { dopo->Execute(); }).Numero(), 3709);
}

TEST_F(SqliteConnectionTest, AConnectionThatEndsUndoesWhatItLeftOpen) {
  (void)Esegui("BEGIN");
  (void)Esegui("DELETE FROM CO03_LEGCONTATTO");
  const auto comando = connessione->CreateCommand();
  connessione.reset();
  const auto altra = SqliteConnection::Apri(percorso);
  EXPECT_FALSE(altra->Execute("SELECT 1 FROM CO03_LEGCONTATTO", 1)->Eof());
  EXPECT_EQ(ErroreDi([&] { comando->Execute(); }).Numero(), 3709) << "a command left over";
}

TEST_F(SqliteConnectionTest, AViewOfAForeignFileRunsNoProcedure) {
  (void)Esegui("CREATE VIEW TRANELLO AS SELECT SPFW_AttivaEventoGestionale(1, 89, 7, 'x', 1) A");
  EXPECT_NE(ErroreDi([&] { (void)Esegui("SELECT A FROM TRANELLO"); }).Numero(), 0);
  EXPECT_THAT(Righe("SELECT 1 A FROM EVENTI_GESTIONALI", {"A"}), IsEmpty());
}

TEST(Collation, TextsCompareWithoutCaseAndBlanksAtTheEnd) {
  struct Caso {
    const char* label;
    std::string_view primo;
    std::string_view secondo;
    int want;
  };
  const std::vector<Caso> casi = {
      {"equal", "abc", "abc", 0},
      {"case", "ABC", "abc", 0},
      {"case of accents", "CITTÀ", "città", 0},
      {"an accent counts", "citta", "città", -1},
      {"blanks at the end", "abc", "ABC   ", 0},
      {"blanks only", "", "   ", 0},
      {"blanks in front count", " abc", "abc", -1},
      {"a line end counts", "abc", "abc\n", -1},
      {"shorter", "ab", "abc", -1},
      {"greater", "b", "A", 1},
      {"the sign of multiplication is no letter", "\xC3\x97", "\xC3\xB7", -1},
      {"no UTF-8 is equal to itself", "a\xFF", "A\xFF", 0},
      {"no UTF-8 and nothing else", "\xC3", "\xC3\xA8", -1},
      {"nothing", "", "", 0},
  };
  const auto segno = [](int numero) { return numero > 0 ? 1 : numero < 0 ? -1 : 0; };
  for (const auto& caso : casi) {
    EXPECT_EQ(segno(ConfrontaItaliano(caso.primo, caso.secondo)), caso.want) << caso.label;
    EXPECT_EQ(segno(ConfrontaItaliano(caso.secondo, caso.primo)), -caso.want)
        << caso.label << ", turned round";
  }
}

}  // namespace

}  // namespace orve::adapters::sqlite
