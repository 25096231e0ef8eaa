#include <gtest/gtest.h>

#include <vector>

#include "channels/account_channel.h"

namespace orve {
namespace {

TEST(QuotaNome, ACommaInFirstPositionDoesNotQuote) {
  EXPECT_EQ(QuotaNome(",Rossi"), ",Rossi");
}

TEST(QuotaNome, QuotesByWhereACommaStands) {
  struct Caso {
    const char* etichetta;
    const char* nome;
    const char* want;
  };
  const std::vector<Caso> casi = {
      {"empty", "", ""},
      {"no comma", "Mario Rossi", "Mario Rossi"},
      {"comma inside", "Rossi, Mario", "\"Rossi, Mario\""},
      {"comma at the second character", "R,", "\"R,\""},
      {"comma after an accented first character", "È,x", "\"È,x\""},
      {"comma last", "Rossi,", "\"Rossi,\""},
      {"only a comma", ",", ","},
      {"commas first and later", ",Rossi,", "\",Rossi,\""},
      {"two commas in front", ",,", "\",,\""},
      {"semicolon", "Rossi; Mario", "Rossi; Mario"},
      {"quotes inside are not doubled", "Bar \"Sport\", Roma", R"("Bar "Sport", Roma")"},
  };
  for (const auto& caso : casi) EXPECT_EQ(QuotaNome(caso.nome), caso.want) << caso.etichetta;
}

TEST(ComponiMittente, KeepsTheTwoQuotesEvenWithoutAName) {
  struct Caso {
    const char* etichetta;
    const char* nome;
    const char* indirizzo;
    const char* want;
  };
  const std::vector<Caso> casi = {
      {"name and address", "Orve S.p.A.", "info@orve.example", "\"Orve S.p.A.\"<info@orve.example>"},
      {"no name", "", "info@orve.example", "\"\"<info@orve.example>"},
      {"blank name", "   ", "info@orve.example", "\"\"<info@orve.example>"},
      {"blanks around a name stay", " Orve ", "info@orve.example", "\" Orve \"<info@orve.example>"},
      {"no address", "Orve", "", "\"Orve\"<>"},
      {"neither", "", "", "\"\"<>"},
      {"a quote in the name stays", "A\"B", "x@y.it", R"("A"B"<x@y.it>)"},
  };
  for (const auto& caso : casi) {
    EXPECT_EQ(ComponiMittente(caso.nome, caso.indirizzo), caso.want) << caso.etichetta;
  }
}

}  // namespace
}  // namespace orve
