#include "sqlite/dialect.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace orve::adapters::sqlite {

namespace {

struct Coppia {
  const char* label;
  const char* prima;
  const char* dopo;
};

void Confronta(const std::vector<Coppia>& coppie) {
  for (const auto& coppia : coppie) {
    EXPECT_EQ(TraduciDialetto(coppia.prima), coppia.dopo) << coppia.label;
    EXPECT_EQ(TraduciDialetto(coppia.dopo), coppia.dopo) << coppia.label << ": a second time";
  }
}

TEST(Dialect, TheHintVanishes) {
  Confronta({
      {"as written", "SELECT 1 FROM T WITH (NOLOCK)  WHERE A = 1", "SELECT 1 FROM T    WHERE A = 1"},
      {"without blanks", "SELECT 1 FROM T WITH(NOLOCK)WHERE A = 1", "SELECT 1 FROM T WHERE A = 1"},
      {"any case, any white space", "FROM T with\r\n( nolock\t)", "FROM T \r\n \t"},
      {"after a bracket", "FROM [T]WITH(NOLOCK)", "FROM [T]"},
      {"between texts it must not join", "'a'WITH(NOLOCK)'b'", "'a' 'b'"},
      {"between strokes it must not begin a comment", "/WITH(NOLOCK)*", "/ *"},
      {"comments inside stay", "FROM T WITH/*a*/(/*b*/NOLOCK)", "FROM T /*a*//*b*/"},
      {"twice", "FROM T WITH (NOLOCK), U WITH (NOLOCK)", "FROM T  , U  "},
      {"another hint stays", "FROM T WITH (TABLOCK)", "FROM T WITH (TABLOCK)"},
      {"two hints stay", "FROM T WITH (NOLOCK, TABLOCK)", "FROM T WITH (NOLOCK, TABLOCK)"},
      {"a common table expression stays", "WITH X AS (SELECT 1) SELECT * FROM X",
       "WITH X AS (SELECT 1) SELECT * FROM X"},
      {"a longer word stays", "FROM T WITHX (NOLOCK)", "FROM T WITHX (NOLOCK)"},
      {"cut off", "FROM T WITH (NOLOCK", "FROM T WITH (NOLOCK"},
  });
}

TEST(Dialect, TopBecomesALimitAtTheEndOfItsSelect) {
  Confronta({
      {"constant", "SELECT TOP 1 1 FROM T where A = ''", "SELECT   1 FROM T where A = '' LIMIT 1"},
      {"ordered", "SELECT TOP 10 A FROM T ORDER BY A", "SELECT   A FROM T ORDER BY A LIMIT 10"},
      {"in parentheses", "SELECT TOP (5) A FROM T", "SELECT   A FROM T LIMIT 5"},
      {"in parentheses, without blanks", "SELECT TOP(5)A FROM T", "SELECT A FROM T LIMIT 5"},
      {"every column", "select top 3 * from T", "select   * from T LIMIT 3"},
      {"distinct", "SELECT DISTINCT TOP 2 A FROM T", "SELECT DISTINCT   A FROM T LIMIT 2"},
      {"all", "SELECT ALL TOP 2 A FROM T", "SELECT ALL   A FROM T LIMIT 2"},
      {"before white space", "SELECT TOP 1 A FROM T \r\n", "SELECT   A FROM T LIMIT 1 \r\n"},
      {"before a comment", "SELECT TOP 1 A FROM T -- fine", "SELECT   A FROM T LIMIT 1 -- fine"},
      {"before a semicolon", "SELECT TOP 1 A FROM T ;", "SELECT   A FROM T LIMIT 1 ;"},
      {"inside", "SELECT A FROM (SELECT TOP 1 A FROM T ) X", "SELECT A FROM (SELECT   A FROM T LIMIT 1 ) X"},
      {"inside and outside", "SELECT TOP 9 A FROM T WHERE A IN (SELECT TOP 1 B FROM U) ORDER BY A",
       "SELECT   A FROM T WHERE A IN (SELECT   B FROM U LIMIT 1) ORDER BY A LIMIT 9"},
      {"beside a function", "SELECT TOP 1 F(A, (B)) FROM T", "SELECT   F(A, (B)) FROM T LIMIT 1"},
      {"beside a union inside", "SELECT TOP 1 A FROM (SELECT 1 A UNION SELECT 2) X",
       "SELECT   A FROM (SELECT 1 A UNION SELECT 2) X LIMIT 1"},
      {"a member of a union stays", "SELECT TOP 1 A FROM T UNION SELECT B FROM U",
       "SELECT TOP 1 A FROM T UNION SELECT B FROM U"},
      {"the last member stays too", "SELECT A FROM T union all SELECT TOP 1 B FROM U",
       "SELECT A FROM T union all SELECT TOP 1 B FROM U"},
      {"a share stays", "SELECT TOP 10 PERCENT A FROM T", "SELECT TOP 10 PERCENT A FROM T"},
      {"ties stay", "SELECT TOP 1 WITH TIES A FROM T", "SELECT TOP 1 WITH TIES A FROM T"},
      {"a fraction stays", "SELECT TOP 1.5 A FROM T", "SELECT TOP 1.5 A FROM T"},
      {"a variable stays", "SELECT TOP (@N) A FROM T", "SELECT TOP (@N) A FROM T"},
      {"a column of that name", "SELECT TOP FROM T", "SELECT TOP FROM T"},
      {"not after select", "DELETE TOP 1 FROM T", "DELETE TOP 1 FROM T"},
      {"a text cut off gets nothing", "SELECT A FROM T WHERE A = 'x", "SELECT A FROM T WHERE A = 'x"},
  });
}

TEST(Dialect, ATextCutOffByTheEndIsNotExtended) {
  EXPECT_EQ(TraduciDialetto("SELECT TOP 1 A FROM T WHERE A = 'x"), "SELECT   A FROM T WHERE A = 'x");
  EXPECT_EQ(TraduciDialetto("exec P 'x"), "SELECT NULL WHERE P( 'x");
  EXPECT_EQ(TraduciDialetto("exec [P"), "exec [P");
}

TEST(Dialect, IsNullBecomesIfNull) {
  Confronta({
      {"as written", "SELECT ISNULL(FONT,'') FONT, ISNULL(DIMENSIONE,0) DIMENSIONE",
       "SELECT IFNULL(FONT,'') FONT, IFNULL(DIMENSIONE,0) DIMENSIONE"},
      {"any case, a blank", "SELECT IsNull (A, 0)", "SELECT IFNULL (A, 0)"},
      {"nested", "SELECT isnull(isnull(A,B),C)", "SELECT IFNULL(IFNULL(A,B),C)"},
      {"no call", "SELECT A ISNULL", "SELECT A ISNULL"},
      {"a longer word", "SELECT MYISNULL(A, 0)", "SELECT MYISNULL(A, 0)"},
  });
}

TEST(Dialect, TheOwnerPrefixVanishes) {
  Confronta({
      {"function", "(SELECT dbo.FNCG_GETCODANAG(1,0,5,'20250101'))",
       "(SELECT FNCG_GETCODANAG(1,0,5,'20250101'))"},
      {"table", "SELECT 1 FROM DBO.T", "SELECT 1 FROM T"},
      {"after a sign", "SELECT A,dbo.F(A)", "SELECT A,F(A)"},
      {"in brackets", "SELECT 1 FROM [dbo].[T]", "SELECT 1 FROM [T]"},
      {"with white space", "FROM dbo . T", "FROM   T"},
      {"twice is nonsense, and goes", "FROM dbo.dbo.T", "FROM T"},
      {"between texts it must not join", R"("a"dbo."b")", R"("a" "b")"},
      {"after a catalogue it stays", "FROM ARVIO.dbo.T", "FROM ARVIO.dbo.T"},
      {"a longer word", "FROM xdbo.T", "FROM xdbo.T"},
      {"an alias", "FROM T dbo", "FROM T dbo"},
      {"before a star", "SELECT dbo.* FROM T dbo", "SELECT dbo.* FROM T dbo"},
  });
}

TEST(Dialect, TheCatalogueOfTablesIsAView) {
  Confronta({
      {"as written", "SELECT TOP 1 1 FROM INFORMATION_SCHEMA.TABLES where TABLE_NAME = 'X'",
       "SELECT   1 FROM INFORMATION_SCHEMA_TABLES where TABLE_NAME = 'X' LIMIT 1"},
      {"any case", "FROM information_schema . tables", "FROM   INFORMATION_SCHEMA_TABLES"},
      {"another view stays", "FROM INFORMATION_SCHEMA.COLUMNS", "FROM INFORMATION_SCHEMA.COLUMNS"},
  });
}

TEST(Dialect, ExecBecomesACallWithoutRows) {
  Confronta({
      {"as written", "exec SPFW_AttivaEventoGestionale 1, 89, 7, '<A=1/>' , 1",
       "SELECT NULL WHERE SPFW_AttivaEventoGestionale( 1, 89, 7, '<A=1/>' , 1) IS NOT NULL"},
      {"a missing argument stays missing", "exec P , 89", "SELECT NULL WHERE P( , 89) IS NOT NULL"},
      {"without arguments", "EXECUTE P", "SELECT NULL WHERE P() IS NOT NULL"},
      {"with the owner", " exec dbo.P 1 ; ", " SELECT NULL WHERE P( 1) IS NOT NULL ; "},
      {"in brackets", "exec [P] 1", "SELECT NULL WHERE [P]( 1) IS NOT NULL"},
      {"before a comment", "exec P 1 -- fine", "SELECT NULL WHERE P( 1) IS NOT NULL -- fine"},
      {"after a comment", "/* a */ exec P 1", "/* a */ SELECT NULL WHERE P( 1) IS NOT NULL"},
      {"turns inside", "exec P ISNULL(NULL, dbo.F(2))",
       "SELECT NULL WHERE P( IFNULL(NULL, F(2))) IS NOT NULL"},
      {"a text is no procedure", "exec ('SELECT 1')", "exec ('SELECT 1')"},
      {"a result is not kept", "exec @r = P 1", "exec @r = P 1"},
      {"in the middle of a statement", "SELECT exec FROM T", "SELECT exec FROM T"},
      {"of another database", "exec ARVIO.dbo.P 1", "exec ARVIO.dbo.P 1"},
      {"alone", "exec", "exec"},
  });
}

TEST(Dialect, WhatStandsInQuotesBracketsOrCommentsStays) {
  for (const char* testo : {
           "SELECT ' WITH (NOLOCK) TOP 1 ISNULL( dbo.x exec INFORMATION_SCHEMA.TABLES '",
           "SELECT 'it''s dbo.x ISNULL('",
           R"(SELECT "dbo.x ISNULL( "" TOP 1")",
           "SELECT [dbo.x ISNULL( ' TOP 1]",
           "SELECT `dbo.x`",
           "SELECT 1 /* WITH (NOLOCK) ' dbo.x */ + 2",
           "SELECT 1 -- WITH (NOLOCK) ' dbo.x ISNULL(\r FROM dbo.y",
           "SELECT '--', '/*', '*/'",
           "SELECT 'dbo.x",
           "SELECT /* dbo.x",
           "SELECT 'Città dbo.È'",
       }) {
    EXPECT_EQ(TraduciDialetto(testo), testo);
  }
  EXPECT_EQ(TraduciDialetto("SELECT 1 -- dbo.a\n FROM dbo.b"), "SELECT 1 -- dbo.a\n FROM b");
  EXPECT_EQ(TraduciDialetto("SELECT '--' FROM dbo.b"), "SELECT '--' FROM b");
  EXPECT_EQ(TraduciDialetto("SELECT '' FROM dbo.b"), "SELECT '' FROM b");
}

TEST(Dialect, AVariableOrATemporaryNameIsNoKeyword) {
  for (const char* testo :
       {"SELECT @TOP 1", "SELECT #ISNULL(1)", "FROM @dbo.x", "SELECT TOP@ 1", "SELECT àdbo.x"}) {
    EXPECT_EQ(TraduciDialetto(testo), testo);
  }
}

TEST(Dialect, NothingComesOfNothing) {
  EXPECT_EQ(TraduciDialetto(""), "");
  EXPECT_EQ(TraduciDialetto(" \r\n"), " \r\n");
  EXPECT_EQ(TraduciDialetto(std::string_view("\0dbo.x\0", 7)), std::string_view("\0 x\0", 4));
}

// Statements put together from pieces whose translation is known; texts and comments between them hold
// anything.
class Generatore {
 public:
  explicit Generatore(unsigned seme) : caso_(seme) {}

  std::size_t Fino(std::size_t n) { return std::uniform_int_distribution<std::size_t>(0, n - 1)(caso_); }

  std::string Byte(std::size_t massimo, std::string_view alfabeto) {
    std::string testo(Fino(massimo), ' ');
    for (auto& c : testo)
      c = alfabeto.empty() ? static_cast<char>(Fino(256)) : alfabeto[Fino(alfabeto.size())];
    return testo;
  }

  // A text, a name or a comment whose content is anything that does not end it.
  std::string Intoccabile() {
    static const std::vector<std::pair<std::string, std::string>> kMarche = {
        {"'", "'"}, {"\"", "\""}, {"[", "]"}, {"`", "`"}, {"/*", "*/"}, {"--", "\n"}};
    const auto& [apre, chiude] = kMarche[Fino(kMarche.size())];
    static const std::vector<std::string> kParole = {
        "dbo.x", " TOP 1 ", "ISNULL(", "WITH (NOLOCK)", "exec P 1", "'", "\"", "]", "[", "`", "/*", "--",
        ";",     "\r",      "è"};
    std::string dentro;
    for (auto n = Fino(6); n > 0; --n) dentro += kParole[Fino(kParole.size())] + Byte(4, "");
    for (std::size_t dove = 0; (dove = dentro.find(chiude.front(), dove)) != std::string::npos;)
      dentro.erase(dove, 1);
    return apre + dentro + chiude;
  }

 private:
  std::mt19937 caso_;
};

TEST(DialectGenerated, EveryPieceIsTurnedByItselfAndTextsStay) {
  static const std::vector<std::pair<std::string, std::string>> kPezzi = {
      {"SELECT A", "SELECT A"},
      {"FROM T WITH (NOLOCK) ,", "FROM T   ,"},
      {"dbo.F(1)", "F(1)"},
      {"[dbo].[F]", "[F]"},
      {"ISNULL(A, 0)", "IFNULL(A, 0)"},
      {"FROM INFORMATION_SCHEMA.TABLES", "FROM INFORMATION_SCHEMA_TABLES"},
      {"(SELECT TOP 1 A FROM T)", "(SELECT   A FROM T LIMIT 1)"},
      {"(SELECT TOP (2) 'x')", "(SELECT   'x' LIMIT 2)"},
      {"WHERE A = 5", "WHERE A = 5"},
      {"\r\n", "\r\n"},
      {"exec", "exec"},
      {"TOP 1", "TOP 1"},
  };
  Generatore caso(20251);
  for (int giro = 0; giro < 20000; ++giro) {
    std::string prima = "SELECT";
    std::string dopo = "SELECT";
    for (auto n = caso.Fino(12); n > 0; --n) {
      // A name between symbols that is not a keyword keeps the pieces from meeting each other.
      if (caso.Fino(2) == 0) {
        const auto testo = caso.Intoccabile();
        prima += " X " + testo;
        dopo += " X " + testo;
      } else {
        const auto& [da, a] = kPezzi[caso.Fino(kPezzi.size())];
        prima += " X " + da;
        dopo += " X " + a;
      }
    }
    ASSERT_EQ(TraduciDialetto(prima), dopo);
    ASSERT_EQ(TraduciDialetto(dopo), dopo) << "a second time";
  }
}

TEST(DialectGenerated, ATextWithoutTurnsComesBackByteForByte) {
  Generatore caso(20252);
  for (int giro = 0; giro < 50000; ++giro) {
    // No rewrite's first word is complete without these letters.
    const auto testo = caso.Byte(
        200, giro % 2 == 0 ? "'\"[]`/*-(); \r\n\tacgjk12345.,=<>\x80\xC3\xA8\xFF" : "SELCTFROMab ('-/*)[];");
    ASSERT_EQ(TraduciDialetto(testo), testo);
  }
}

TEST(DialectGenerated, AnyBytesAreTakenWithoutHarm) {
  static const std::vector<std::string> kParole = {
      "SELECT", "TOP",   "1",  "(",        ")",      "WITH",
      "NOLOCK", "dbo",   ".",  "ISNULL",   "exec",   "INFORMATION_SCHEMA",
      "TABLES", "UNION", ";",  "'",        "\"",     "[",
      "]",      "`",     "/*", "*/",       "--",     "\n",
      " ",      "\r",    "x",  "@x",       "è",      ",",
      "*",      "/",     "-",  "DISTINCT", "PERCENT"};
  Generatore caso(20253);
  std::size_t letti = 0;
  for (int giro = 0; giro < 50000; ++giro) {
    std::string testo;
    for (auto n = caso.Fino(40); n > 0; --n) {
      testo += caso.Fino(4) == 0 ? caso.Byte(3, "") : kParole[caso.Fino(kParole.size())];
    }
    letti += TraduciDialetto(testo).size() + testo.size();
  }
  EXPECT_GT(letti, 0U);
}

// Two million characters take some tens of milliseconds; at quadratic cost they would take hours.
TEST(DialectGenerated, LongTextsTakeLinearTime) {
  struct Caso {
    const char* label;
    const char* inizio;
    const char* ripetuto;
    const char* fine;
  };
  const std::vector<Caso> casi = {
      {"one text", "SELECT '", "x", "'"},
      {"doubled quotes", "SELECT '", "''", "'"},
      {"quotes left open", "", "SELECT 'a' '", ""},
      {"parentheses that never close", "", "(", ""},
      {"parentheses that never open", "", ")", ""},
      {"limits that never end", "", "(SELECT TOP 1 ", " \r\n"},
      {"limits on one level", "", "SELECT TOP 1 ", " "},
      {"closed limits", "", "(SELECT TOP 1 x )", ""},
      {"hints", "", "WITH (NOLOCK) ", ""},
      {"hints cut off", "", "WITH (NOLOCK ", ""},
      {"hints that never begin", "", "WITH ", ""},
      {"prefixes", "", "dbo.", "x"},
      {"prefixes of nothing", "", "dbo . ", ""},
      {"replacements", "", "ISNULL(", ""},
      {"comments", "", "/**/", ""},
      {"comments left open", "", "/* ", ""},
      {"line comments", "", "--\n", ""},
      {"procedures", "exec P ", "exec ", ""},
      {"semicolons", "", ";", ""},
      {"semicolons of limits", "", "SELECT TOP 1 x;", ""},
      {"white space", "SELECT TOP 1 x", " ", ""},
  };
  for (const auto& caso : casi) {
    std::string testo = caso.inizio;
    while (testo.size() < 2000000) testo += caso.ripetuto;
    testo += caso.fine;
    const auto tradotto = TraduciDialetto(testo);
    EXPECT_LT(tradotto.size(), 3 * testo.size()) << caso.label;
  }
}

}  // namespace

}  // namespace orve::adapters::sqlite
