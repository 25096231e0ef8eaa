#include "orve-mailserver/host/decimale.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "orve-mailserver/host/errore.h"
#include "orve-mailserver/host/variant.h"

namespace orve::host {
namespace {

std::int32_t NumeroDiDecimale(const std::string& testo) {
  try {
    (void)Decimale(testo);
  } catch (const Errore& errore) {
    return errore.Numero();
  }
  return 0;
}

TEST(Decimale, KeepsTheDigitsOfANumberAndWritesNoMoreThanItTakes) {
  struct Caso {
    const char* testo;
    const char* want;
  };
  const std::vector<Caso> casi = {
      {"0", "0"},
      {"-0,00", "0"},
      {"12,50", "12,5"},
      {" +012.5 ", "12,5"},
      {",5", "0,5"},
      {"5,", "5"},
      {"-12345678901234567,89", "-12345678901234567,89"},
      {"1E+20", "100000000000000000000"},
      {"1,25e2", "125"},
      {"1,25E1", "12,5"},
      {"2,5e-20", "0,000000000000000000025"},
      {"0e999", "0"},
      {"1e-400", "0"},
      {"79228162514264337593543950335", "79228162514264337593543950335"},
  };
  for (const auto& caso : casi) EXPECT_EQ(Decimale(caso.testo).Testo(), caso.want) << caso.testo;
  EXPECT_EQ(Decimale("-12,5").Testo('.'), "-12.5");
}

TEST(Decimale, RoundsThePlacesThatDoNotFitAHalfToEven) {
  struct Caso {
    std::string testo;
    std::string want;
  };
  const std::string ventisette(27, '0');
  const std::vector<Caso> casi = {
      {"0," + ventisette + "15", "0," + ventisette + "2"},
      {"0," + ventisette + "25", "0," + ventisette + "2"},
      {"0," + ventisette + "251", "0," + ventisette + "3"},
      {"0," + std::string(29, '9'), "1"},
      {"0," + ventisette + "05", "0"},
      {"0," + ventisette + "051", "0," + ventisette + "1"},
      {"7922816251426433759354395033,55", "7922816251426433759354395034"},
      {"7922816251426433759354395033,54", "7922816251426433759354395033,5"},
      {"79228162514264337593543950335,4", "79228162514264337593543950335"},
      // Rounded once: via 28 places it would become a half, and go up to the even one.
      {"9999999999999999999999999997,4" + std::string(28, '9'), "9999999999999999999999999997"},
  };
  for (const auto& caso : casi) EXPECT_EQ(Decimale(caso.testo).Testo(), caso.want) << caso.testo;
}

TEST(Decimale, ANumberBeyondItsRangeOverflows) {
  for (const char* testo : {"79228162514264337593543950336", "79228162514264337593543950335,5", "-1e29",
                            "1e2147483647", "1e99999999999"}) {
    EXPECT_EQ(NumeroDiDecimale(testo), 6) << testo;
  }
}

TEST(Decimale, WhatIsNoNumberMismatches) {
  for (const char* testo : {"", " ", "-", "--1", ",", "1,2,3", "1.2,3", "1 000", "dodici", "0x10", "1e",
                            "1e+-2", "1e2x", "inf", "nan"}) {
    EXPECT_EQ(NumeroDiDecimale(testo), 13) << testo;
  }
}

TEST(Decimale, EqualNumbersAreEqualHoweverWritten) {
  EXPECT_EQ(Decimale("12,50"), Decimale("1.25e1"));
  EXPECT_FALSE(Decimale("12,5") == Decimale("-12,5"));
}

TEST(Decimale, TheTextOfAMillionDigitsIsReadOnce) {
  EXPECT_EQ(Decimale("1," + std::string(1U << 20U, '0') + "1").Testo(), "1");
  EXPECT_EQ(NumeroDiDecimale(std::string(1U << 20U, '9')), 6);
}

TEST(Decimale, AValueOfAnyTypeConvertsByTheDigitsOfItsText) {
  EXPECT_EQ(Variant(0.1).ToDecimale(), Decimale("0,1"));
  EXPECT_EQ(Variant(0.1F).ToDecimale(), Decimale("0,1"));
  EXPECT_EQ(Variant(1e20).ToDecimale(), Decimale("100000000000000000000"));
  EXPECT_EQ(Variant(-7).ToDecimale(), Decimale("-7"));
  EXPECT_EQ(Variant(true).ToDecimale(), Decimale("-1"));
  EXPECT_EQ(Variant().ToDecimale(), Decimale("0"));
  EXPECT_EQ(Variant(DataOra{1.5}).ToDecimale(), Decimale("1,5"));
  EXPECT_EQ(Variant("12345678901234567,89").ToDecimale(), Decimale("12345678901234567,89"));
  EXPECT_THROW((void)Variant(Null{}).ToDecimale(), Errore);
  EXPECT_THROW((void)Variant(1e29).ToDecimale(), Errore);
}

TEST(Decimale, AValueThatHoldsOneConvertsLikeAnyNumber) {
  const Variant valore = Decimale("-12,5");
  EXPECT_EQ(valore.ToText(), "-12,5");
  EXPECT_EQ(valore.ToDouble(), -12.5);
  EXPECT_EQ(valore.ToInt32(), -12);
  EXPECT_TRUE(valore.ToBoolean());
  EXPECT_FALSE(Variant(Decimale("0")).ToBoolean());
}

}  // namespace
}  // namespace orve::host
