#include "service/address_check.h"

#define PCRE2_CODE_UNIT_WIDTH 8
#include <gtest/gtest.h>
#include <pcre2.h>

#include <memory>
#include <random>
#include <string>

#include "fakes/servizio_di_prova.h"

namespace orve {
namespace {

struct Caso {
  const char* label;
  std::string testo;
  bool want;
};

TEST(AddressCheck, FindsAWellFormedAddressAnywhere) {
  const Caso casi[] = {
      {"plain", "mario.rossi@azienda.example", true},
      {"lower and upper case", "Mario@AZIENDA.Example", true},
      {"other words around it", "scrivere a info@azienda.example, grazie", true},
      {"angle brackets", "Rossi <info@azienda.example>", true},
      {"no at sign", "info.azienda.example", false},
      {"no point after the at sign", "info@azienda", false},
      {"one letter after the last point", "info@azienda.x", false},
      {"two letters", "info@azienda.it", true},
      {"fifteen letters", "info@azienda.abcdefghijklmno", true},
      {"sixteen letters", "info@azienda.abcdefghijklmnop", false},
      {"a digit after the letters", "info@azienda.it5", false},
      {"an underscore after the letters", "info@azienda.it_", false},
      {"a hyphen after the letters", "info@azienda.it-x", true},
      {"a later label saves it", "info@azienda.x.example", true},
      {"point directly after the at sign", "info@.it", false},
      {"no local part", "@azienda.example", false},
      {"local part of signs only", "+%.-@azienda.example", false},
      {"signs, then a letter", "+%.-a-@azienda.example", true},
      {"accented letter in front", "caffè@azienda.example", false},
      {"accented letter, then ASCII", "èa@azienda.example", true},
      {"accented letter after the letters", "info@azienda.exampleè", true},
      {"two at signs", "a@b@azienda.example", true},
      {"blank address", "   ", false},
      {"empty", "", false},
      {"NUL inside", std::string("a\0b@azienda.example", 19), true},
      {"line break before the domain", "info@\nazienda.example", false},
  };
  for (const auto& caso : casi) EXPECT_EQ(ContieneIndirizzo(caso.testo), caso.want) << caso.label;
}

class Pattern {
 public:
  Pattern() {
    constexpr const char* kPattern = R"(\b[A-Z0-9._%+-]+@[A-Z0-9.-]+\.[A-Z]{2,15}\b)";
    int errore = 0;
    PCRE2_SIZE dove = 0;
    code_.reset(pcre2_compile(reinterpret_cast<PCRE2_SPTR>(kPattern), PCRE2_ZERO_TERMINATED, PCRE2_CASELESS,
                              &errore, &dove, nullptr));
    match_.reset(pcre2_match_data_create_from_pattern(code_.get(), nullptr));
  }
  [[nodiscard]] bool Test(const std::string& testo) const {
    return pcre2_match(code_.get(), reinterpret_cast<PCRE2_SPTR>(testo.data()), testo.size(), 0, 0,
                       match_.get(), nullptr) >= 0;
  }

 private:
  struct Libera {
    void operator()(pcre2_code* code) const { pcre2_code_free(code); }
    void operator()(pcre2_match_data* match) const { pcre2_match_data_free(match); }
  };
  std::unique_ptr<pcre2_code, Libera> code_;
  std::unique_ptr<pcre2_match_data, Libera> match_;
};

// Texts made of the characters that matter to the pattern, so that many of them come close to an address.
TEST(AddressCheck, AgreesWithTheRegularExpressionOnAGeneratedCorpus) {
  const Pattern pattern;
  const std::string alfabeto = "aZ09._%+-@@@... <>;é\t_xyit";
  std::mt19937 caso(20261114);
  std::uniform_int_distribution<std::size_t> carattere(0, alfabeto.size() - 1);
  std::uniform_int_distribution<int> lunghezza(0, 40);
  int trovati = 0;
  for (int giro = 0; giro < 400'000; ++giro) {
    std::string testo;
    for (int i = lunghezza(caso); i > 0; --i) testo.push_back(alfabeto[carattere(caso)]);
    const bool want = pattern.Test(testo);
    trovati += want ? 1 : 0;
    ASSERT_EQ(ContieneIndirizzo(testo), want) << testo;
  }
  EXPECT_GT(trovati, 1000);  // the corpus would prove nothing without both answers
  EXPECT_LT(trovati, 399'000);
}

TEST(AddressCheck, TakesTextsOfTenMegabytesInItsStride) {
  const std::string dieciMega(10'000'000, 'a');
  EXPECT_FALSE(ContieneIndirizzo(dieciMega));
  EXPECT_FALSE(ContieneIndirizzo(dieciMega + "@" + dieciMega));
  EXPECT_FALSE(ContieneIndirizzo(std::string(10'000'000, '@')));
  std::string punti = "a@";
  for (int i = 0; i < 5'000'000; ++i) punti += "a.";
  EXPECT_FALSE(ContieneIndirizzo(punti));
  EXPECT_TRUE(ContieneIndirizzo(dieciMega + "@b.it"));
}

class ControlloIndirizzi : public fakes::ServizioDiProva {};

TEST_F(ControlloIndirizzi, TheCheckIsOpenToCallersAndShowsNothing) {
  EXPECT_TRUE(servizio->CheckRegularMailAddress("info@azienda.example"));
  EXPECT_FALSE(servizio->CheckRegularMailAddress("info"));
  EXPECT_TRUE(Messaggi().empty());
}

}  // namespace
}  // namespace orve
