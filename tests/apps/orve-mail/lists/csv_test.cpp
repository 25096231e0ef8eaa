// The reader of lists: what it takes, what it refuses, and that a refused row costs the others nothing.
#include "orve-mail/lists/csv.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/resource.h>

#include <algorithm>
#include <cstddef>
#include <ios>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <vector>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#include <sanitizer/allocator_interface.h>
#define ORVE_CON_SANITIZER
#endif
#endif

namespace orve::app {

namespace {

using ::testing::SizeIs;
using Campi = std::vector<std::string>;

struct Letto {
  std::size_t riga;
  Campi campi;
  std::string errore;
  friend bool operator==(const Letto&, const Letto&) = default;
};

std::ostream& operator<<(std::ostream& out, const Letto& letto) {
  out << letto.riga << ":";
  for (const std::string& campo : letto.campi) out << " [" << campo << "]";
  return out << " " << letto.errore;
}

std::vector<Letto> Leggi(const std::string& testo) {
  std::istringstream flusso(testo);
  CsvReader lettore(flusso);
  std::vector<Letto> righe;
  for (CsvRecord record; lettore.Prossimo(record);)
    righe.push_back({record.riga, record.campi, record.errore});
  return righe;
}

#if defined(ORVE_CON_SANITIZER)
// The sanitizer keeps freed memory for a while, so only what is in use means anything.
constexpr bool kConSanitizer = true;
std::size_t MemoriaInUso() {
  return __sanitizer_get_current_allocated_bytes();
}
#else
constexpr bool kConSanitizer = false;
std::size_t MemoriaInUso() {
  return ::mallinfo2().uordblks;
}
#endif

long MemoriaMassima() {
  rusage uso{};
  ::getrusage(RUSAGE_SELF, &uso);
  return uso.ru_maxrss;  // KiB
}

}  // namespace

struct CasoCsv {
  const char* nome;
  std::string testo;
  std::vector<Letto> righe;
};

void PrintTo(const CasoCsv& caso, std::ostream* out) {
  *out << caso.nome;
}

class Csv : public ::testing::TestWithParam<CasoCsv> {};

TEST_P(Csv, IsReadAs) {
  EXPECT_EQ(Leggi(GetParam().testo), GetParam().righe);
}

INSTANTIATE_TEST_SUITE_P(
    WellFormed, Csv,
    ::testing::Values(
        CasoCsv{"NothingAtAll", "", {}}, CasoCsv{"OnlyLineEnds", "\n\r\n\n", {}},
        CasoCsv{"CommasAndLineFeeds", "a,b\n1,2\n", {{1, {"a", "b"}, ""}, {2, {"1", "2"}, ""}}},
        CasoCsv{"SemicolonsAndCarriageReturns", "a;b\r\n1;2\r\n", {{1, {"a", "b"}, ""}, {2, {"1", "2"}, ""}}},
        CasoCsv{"ASemicolonInTheHeaderLeavesCommasAlone",
                "a;b\n1,5;2",
                {{1, {"a", "b"}, ""}, {2, {"1,5", "2"}, ""}}},
        CasoCsv{"AQuotedSemicolonInTheHeaderIsNoSeparator",
                "\"a;\",b\n1,2",
                {{1, {"a;", "b"}, ""}, {2, {"1", "2"}, ""}}},
        CasoCsv{"NoLineEndAtTheEnd", "a\n1", {{1, {"a"}, ""}, {2, {"1"}, ""}}},
        CasoCsv{"AMarkInFront",
                "\xEF\xBB\xBF"
                "a\n1\n",
                {{1, {"a"}, ""}, {2, {"1"}, ""}}},
        CasoCsv{"AMarkInFrontOfQuotes", "\xEF\xBB\xBF\"a\"\n", {{1, {"a"}, ""}}},
        CasoCsv{"OnlyAMark", "\xEF\xBB\xBF", {}},
        CasoCsv{"EmptyFields", "a,b,c\n,,\n", {{1, {"a", "b", "c"}, ""}, {2, {"", "", ""}, ""}}},
        CasoCsv{"EmptyLinesCountButAreNoRows", "\na\n\n\r\n1\n", {{2, {"a"}, ""}, {5, {"1"}, ""}}},
        CasoCsv{"BlanksBelongToTheField", "a,b\n 1 , 2\n", {{1, {"a", "b"}, ""}, {2, {" 1 ", " 2"}, ""}}},
        CasoCsv{"QuotesHoldSeparators", "a,b\n\"1,1\",2\n", {{1, {"a", "b"}, ""}, {2, {"1,1", "2"}, ""}}},
        CasoCsv{
            "DoubledQuotes", "a\n\"\"\"x\"\"\"\n\"\"\n", {{1, {"a"}, ""}, {2, {"\"x\""}, ""}, {3, {""}, ""}}},
        CasoCsv{"LineEndsInQuotesCountForTheRowsBehind",
                "a,b\n\"1\n2\r\n3\",x\n4,5\n",
                {{1, {"a", "b"}, ""}, {2, {"1\n2\r\n3", "x"}, ""}, {5, {"4", "5"}, ""}}},
        CasoCsv{"QuotesThatCloseAtTheEnd", "a\n\"1\"", {{1, {"a"}, ""}, {2, {"1"}, ""}}},
        CasoCsv{"AccentsAndEmoji", "a\nperché 📧\n", {{1, {"a"}, ""}, {2, {"perché 📧"}, ""}}}),
    [](const auto& caso) { return caso.param.nome; });

INSTANTIATE_TEST_SUITE_P(
    Malformed, Csv,
    ::testing::Values(
        CasoCsv{"AQuoteInsideAField",
                "a\n1\"2\n3\n",
                {{1, {"a"}, ""}, {2, {}, "ha virgolette in mezzo a un campo"}, {3, {"3"}, ""}}},
        CasoCsv{"TextAfterClosedQuotes",
                "a\n\"1\" 2\n3\n",
                {{1, {"a"}, ""}, {2, {}, "ha del testo dietro le virgolette chiuse"}, {3, {"3"}, ""}}},
        CasoCsv{
            "QuotesThatNeverCloseCostOneLine",
            "a\n\"1\n2\n3\n",
            {{1, {"a"}, ""}, {2, {}, "ha virgolette aperte e mai chiuse"}, {3, {"2"}, ""}, {4, {"3"}, ""}}},
        CasoCsv{
            "QuotesThatCloseInTheNextRowCostOneLine",
            "a,b\n\"1,x\n\"2\",y\n",
            {{1, {"a", "b"}, ""}, {2, {}, "ha del testo dietro le virgolette chiuse"}, {3, {"2", "y"}, ""}}},
        CasoCsv{"QuotesThatNeverCloseAtTheVeryEnd",
                "a\n\"",
                {{1, {"a"}, ""}, {2, {}, "ha virgolette aperte e mai chiuse"}}},
        CasoCsv{"ALoneCarriageReturn",
                "a\n1\r2\n3\n",
                {{1, {"a"}, ""}, {2, {}, "ha un ritorno a capo isolato"}, {3, {"3"}, ""}}},
        CasoCsv{"ACarriageReturnAtTheVeryEnd",
                "a\n1\r",
                {{1, {"a"}, ""}, {2, {}, "ha un ritorno a capo isolato"}}},
        CasoCsv{"OldLineEndsAreNoLineEnds", "a\r1\r", {{1, {}, "ha un ritorno a capo isolato"}}},
        CasoCsv{"ANul",
                std::string("a\n1\0x\n3\n", 8),
                {{1, {"a"}, ""}, {2, {}, "contiene un byte nullo"}, {3, {"3"}, ""}}},
        CasoCsv{"ANulInQuotesOverTwoLines",
                std::string("a\n\"1\n\0\"\n3\n", 10),
                {{1, {"a"}, ""}, {2, {}, "contiene un byte nullo"}, {4, {"3"}, ""}}},
        CasoCsv{"BytesThatAreNoUtf8",
                "a\nperch\xE9\n3\n",
                {{1, {"a"}, ""}, {2, {}, "non è un testo UTF-8"}, {3, {"3"}, ""}}},
        CasoCsv{"AHalfCharacterAtTheVeryEnd", "a\n\xC3", {{1, {"a"}, ""}, {2, {}, "non è un testo UTF-8"}}},
        CasoCsv{"TextOfTwoByteCharacters",
                std::string("\xFF\xFE"
                            "a\0\n\0",
                            6),
                {{1, {}, "contiene un byte nullo"}, {2, {}, "contiene un byte nullo"}}}),
    [](const auto& caso) { return caso.param.nome; });

TEST(CsvReader, FieldsOfAMegabyteArriveWhole) {
  const std::string lungo(1'000'000, 'x');
  const auto righe = Leggi("a,b\n" + lungo + ",\"" + lungo + "\n\"\"\"\n1,2\n");
  ASSERT_THAT(righe, SizeIs(3));
  EXPECT_TRUE(righe[1].campi == (Campi{lungo, lungo + "\n\""}));
  EXPECT_EQ(righe[2], (Letto{4, {"1", "2"}, ""}));
}

TEST(CsvReader, ALineWithoutEndIsRefusedAndLeft) {
  const std::string senzaFine(CsvReader::kRigaMassima + 200'000, 'x');
  const auto righe = Leggi("a\n" + senzaFine + "\n1\n");
  ASSERT_THAT(righe, SizeIs(3));
  EXPECT_EQ(righe[1], (Letto{2, {}, "è più lunga di 20 MiB"}));
  EXPECT_EQ(righe[2], (Letto{3, {"1"}, ""}));
}

TEST(CsvReader, ARowOfNothingButSeparatorsTakesNoMemory) {
  const auto righe = Leggi("a\n" + std::string(5'000'000, ',') + "\n1\n");
  ASSERT_THAT(righe, SizeIs(3));
  EXPECT_EQ(righe[1], (Letto{2, {}, "ha troppi campi"}));
  EXPECT_EQ(righe[2], (Letto{3, {"1"}, ""}));
}

// Each missing quote is searched for no further than the next one.
TEST(CsvReader, ManyMissingQuotesAreReadInOnePass) {
  std::string testo = "a,b\n";
  for (int i = 0; i < 100'000; ++i) testo += "\"x,y\n";
  const auto righe = Leggi(testo);
  ASSERT_THAT(righe, SizeIs(100'001));
  for (std::size_t i = 1; i < righe.size(); ++i) {
    ASSERT_EQ(righe[i].riga, i + 1);
    ASSERT_NE(righe[i].errore, "");
  }
}

TEST(CsvReader, MemoryDoesNotGrowWithTheRows) {
  struct Ripetuto : std::streambuf {  // a hundred megabytes that are stored nowhere
    std::string riga = "cliente;1001;" + std::string(1000, 'x') + "\n";
    int volte = 0;
    int underflow() override {
      if (volte++ == 100'000) return traits_type::eof();
      setg(riga.data(), riga.data(), riga.data() + riga.size());
      return traits_type::to_int_type(riga.front());
    }
  } molte;
  std::istream flusso(&molte);
  CsvReader lettore(flusso);
  CsvRecord record;
  ASSERT_TRUE(lettore.Prossimo(record));
  const long prima = MemoriaMassima();
  const std::size_t inUso = MemoriaInUso();
  std::size_t righe = 1;
  std::size_t massimo = inUso;
  while (lettore.Prossimo(record)) {
    ++righe;
    massimo = std::max(massimo, MemoriaInUso());
  }
  EXPECT_EQ(righe, 100'000U);
  EXPECT_LT(massimo - inUso, 8U * 1024 * 1024);
  if (!kConSanitizer) {
    EXPECT_LT(MemoriaMassima() - prima, 8 * 1024);
  }
}

TEST(CsvReader, AStreamThatCannotBeReadIsToldFromItsEnd) {
  struct Rotto : std::streambuf {
    int underflow() override { throw std::runtime_error("disco"); }
  } rotto;
  std::istream flusso(&rotto);
  CsvReader lettore(flusso);
  CsvRecord record;
  EXPECT_THROW(static_cast<void>(lettore.Prossimo(record)), std::ios_base::failure);
}

}  // namespace orve::app
