#include "orve-mailserver/host/variant.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>

#include "orve-mailserver/host/errore.h"

namespace orve::host {
namespace {

std::int32_t NumeroDi(const std::function<void()>& azione) {
  try {
    azione();
  } catch (const Errore& errore) {
    return errore.Numero();
  }
  return 0;
}

class Cosa : public Oggetto {};

TEST(Variant, ANewValueIsEmptyAndCountsAsZeroFalseAndNoText) {
  const Variant vuoto;
  EXPECT_TRUE(vuoto.IsEmpty());
  EXPECT_EQ(vuoto.ToText(), "");
  EXPECT_EQ(vuoto.ToInt32(), 0);
  EXPECT_FALSE(vuoto.ToBoolean());
}

TEST(Variant, NullConvertsToNothingButJoinsAsTheEmptyText) {
  const Variant nullo = Null{};
  EXPECT_EQ(NumeroDi([&] { (void)nullo.ToText(); }), 94);
  EXPECT_EQ(NumeroDi([&] { (void)nullo.ToInt16(); }), 94);
  EXPECT_EQ(NumeroDi([&] { (void)nullo.ToBoolean(); }), 94);
  EXPECT_EQ(nullo.Joined(), "");
}

struct CasoNumero {
  const char* label;
  Variant valore;
  std::int32_t want;
};

TEST(Variant, NumbersConvertByAutomationsRules) {
  const CasoNumero casi[] = {
      {"true is -1", true, -1},
      {"half rounds to even, down", 2.5, 2},
      {"half rounds to even, up", 3.5, 4},
      {"text", " 42 ", 42},
      {"text with sign", "-7", -7},
      {"text with plus", "+7", 7},
      {"text with a decimal comma", "1,6", 2},
      {"text with a decimal point", "1.6", 2},
      {"float", 77.0F, 77},
  };
  for (const auto& caso : casi) EXPECT_EQ(caso.valore.ToInt32(), caso.want) << caso.label;
}

TEST(Variant, IntegersOfEveryWidthAreTakenForWhatTheyAre) {
  EXPECT_EQ(Variant(std::int8_t{-3}), Variant(-3));
  EXPECT_EQ(Variant(std::uint16_t{65535}), Variant(65535));
  EXPECT_EQ(Variant(std::uint32_t{7}), Variant(7));
  EXPECT_EQ(Variant(std::int64_t{-2147483648}), Variant(std::numeric_limits<std::int32_t>::min()));
  EXPECT_EQ(Variant(2147483647LL), Variant(2147483647));
  EXPECT_EQ(Variant(std::size_t{12}), Variant(12));
  EXPECT_EQ(Variant(std::uint32_t{4000000000U}), Variant(Decimale("4000000000")));
  EXPECT_EQ(Variant(std::int64_t{-2147483649}), Variant(Decimale("-2147483649")));
  EXPECT_EQ(Variant((std::int64_t{1} << 53U) + 1).ToText(), "9007199254740993");
  EXPECT_EQ(Variant(std::numeric_limits<std::uint64_t>::max()).ToText(), "18446744073709551615");
  EXPECT_EQ(NumeroDi([] { (void)Variant(std::uint64_t{2147483648U}).ToInt32(); }), 6);
}

TEST(Variant, OnlyATruthValueIsOne) {
  static_assert(std::is_convertible_v<bool, Variant>);
  static_assert(std::is_convertible_v<char*, Variant>);
  static_assert(!std::is_convertible_v<void*, Variant>);
  static_assert(!std::is_convertible_v<const int*, Variant>);
  static_assert(!std::is_convertible_v<Cosa*, Variant>);
  static_assert(!std::is_convertible_v<void (*)(), Variant>);
  static_assert(!std::is_convertible_v<std::nullptr_t, Variant>);
  EXPECT_EQ(Variant(true).ToText(), "Vero");
  EXPECT_EQ(Variant("Vero"), Variant(std::string("Vero")));
}

TEST(Variant, NumbersThatDoNotFitOverflow) {
  EXPECT_EQ(NumeroDi([] { (void)Variant(32768).ToInt16(); }), 6);
  EXPECT_EQ(NumeroDi([] { (void)Variant(-32769).ToInt16(); }), 6);
  EXPECT_EQ(Variant(32767).ToInt16(), 32767);
  EXPECT_EQ(NumeroDi([] { (void)Variant(2147483648.0).ToInt32(); }), 6);
  EXPECT_EQ(NumeroDi([] { (void)Variant(1e300).ToFloat(); }), 6);
  EXPECT_EQ(NumeroDi([] { (void)Variant("1e999").ToDouble(); }), 6);
  EXPECT_EQ(NumeroDi([] { (void)Variant(std::nan("")).ToInt32(); }), 6);
}

TEST(Variant, TextsThatAreNoNumbersMismatch) {
  for (const char* testo : {"", "abc", "12x", "nan", "inf", "1,2,3", "0x10", "-"}) {
    EXPECT_EQ(NumeroDi([&] { (void)Variant(testo).ToInt32(); }), 13) << testo;
  }
}

TEST(Variant, TextsOfValuesAreTheItalianOnes) {
  EXPECT_EQ(Variant(true).ToText(), "Vero");
  EXPECT_EQ(Variant(false).ToText(), "Falso");
  EXPECT_EQ(Variant(77.0F).ToText(), "77");
  EXPECT_EQ(Variant(1.5).ToText(), "1,5");
  EXPECT_EQ(Variant(-2.5e-20).ToText(), "-2,5E-20");
  EXPECT_EQ(Variant(std::int16_t{-3}).ToText(), "-3");
  EXPECT_EQ(Variant(DataOra::Da(2026, 11, 14)).ToText(), "14/11/2026");
  EXPECT_EQ(Variant(DataOra::Da(2026, 11, 14, 10, 22, 5)).ToText(), "14/11/2026 10:22:05");
  EXPECT_EQ(Variant(DataOra{0.5}).ToText(), "12:00:00");
}

TEST(Variant, DatesAreReadFromDayMonthYear) {
  EXPECT_EQ(Variant("14/11/2026").ToDate(), DataOra::Da(2026, 11, 14));
  EXPECT_EQ(Variant(" 14/11/2026 10:22:05 ").ToDate(), DataOra::Da(2026, 11, 14, 10, 22, 5));
  EXPECT_EQ(Variant(45000).ToDate().giorni, 45000);
  for (const char* testo : {"31/02/2026", "2026-11-14", "14/11", "14/11/2026 25:00:00", "14/11/2026x", ""}) {
    EXPECT_EQ(NumeroDi([&] { (void)Variant(testo).ToDate(); }), 13) << testo;
  }
}

TEST(Variant, ObjectsAndArraysAreNoTexts) {
  const Variant oggetto = std::make_shared<Cosa>();
  const Variant elenco = Variant::Array{"a", 1};
  EXPECT_EQ(NumeroDi([&] { (void)oggetto.ToText(); }), 13);
  EXPECT_EQ(NumeroDi([&] { (void)elenco.ToInt32(); }), 13);
  EXPECT_EQ(NumeroDi([&] { (void)Variant(1).ToArray(); }), 13);
  EXPECT_EQ(NumeroDi([&] { (void)Variant(1).ToObject(); }), 13);
  EXPECT_NE(oggetto.ToObject(), nullptr);
  EXPECT_EQ(elenco.ToArray().size(), 2U);
}

TEST(Variant, AnAbsentObjectIsStillAnObject) {
  const Variant assente = std::shared_ptr<Cosa>();
  EXPECT_TRUE(assente.IsObject());
  EXPECT_EQ(assente.ToObject(), nullptr);
}

TEST(DataOra, CountsDaysSinceTheOrigin) {
  EXPECT_EQ(DataOra::Da(1899, 12, 30).giorni, 0);
  EXPECT_EQ(DataOra::Da(1900, 1, 1).giorni, 2);
  EXPECT_EQ(DataOra::Da(2026, 11, 14, 12).giorni, 46340.5);
  EXPECT_EQ(DataOra::Da(1899, 12, 29, 6).giorni, -1.25);
}

TEST(DataOra, HasADateOnlyWhenItsDatePartIsNotZero) {
  EXPECT_FALSE(DataOra{}.HaData());
  EXPECT_FALSE(DataOra{0.75}.HaData());
  EXPECT_TRUE(DataOra::Da(2026, 1, 1).HaData());
}

TEST(DataOra, ShowsDayAndTime) {
  const DataOra istante = DataOra::Da(2026, 2, 3, 4, 5, 6);
  EXPECT_EQ(TestoGiornoMeseAnno(istante), "03/02/2026");
  EXPECT_EQ(TestoOraMinutiSecondi(istante), "04:05:06");
}

TEST(DataOra, RoundsTheLastInstantOfADayIntoTheNext) {
  const DataOra quasiMezzanotte{DataOra::Da(2026, 12, 31).giorni + 0.99999999};
  EXPECT_EQ(TestoGiornoMeseAnno(quasiMezzanotte), "01/01/2027");
  EXPECT_EQ(TestoOraMinutiSecondi(quasiMezzanotte), "00:00:00");
}

TEST(DataOra, ShowsTheNearestDayForValuesOutsideTheCalendar) {
  EXPECT_EQ(TestoGiornoMeseAnno(DataOra{std::numeric_limits<double>::infinity()}), "31/12/9999");
  EXPECT_EQ(TestoGiornoMeseAnno(DataOra{std::nan("")}), "01/01/0100");
}

TEST(Errore, KeepsItsThreePartsAndExtendsTheDescriptionOnly) {
  const Errore errore(1001, "Motore", "testo");
  const Errore esteso = errore.ConSuffisso("NOME");
  EXPECT_EQ(esteso.Numero(), 1001);
  EXPECT_EQ(esteso.Sorgente(), "Motore");
  EXPECT_EQ(esteso.Descrizione(), "testoNOME");
}

TEST(Errore, ForeignExceptionsBecomeErrors) {
  const auto tradotto = [](const std::function<void()>& azione) {
    try {
      azione();
    } catch (...) {
      return ErroreCorrente();
    }
    return Errore(0, "", "");
  };
  EXPECT_EQ(tradotto([] { throw std::bad_alloc(); }).Numero(), 7);
  EXPECT_EQ(tradotto([] { throw std::runtime_error("estraneo"); }).Numero(), 440);
  EXPECT_EQ(tradotto([] { throw std::runtime_error("estraneo"); }).Descrizione(), "estraneo");
  EXPECT_EQ(tradotto([] { throw 5; }).Numero(), 440);
  EXPECT_EQ(tradotto([] { throw Errore(kOverflow); }).Numero(), 6);
}

TEST(Errore, AnAbsentObjectThatIsUsedRaises91) {
  EXPECT_EQ(NumeroDi([] { (void)Richiesto(std::shared_ptr<Cosa>()); }), 91);
}

}  // namespace
}  // namespace orve::host
