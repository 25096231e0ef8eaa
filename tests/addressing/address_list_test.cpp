// The lenient reader of address lists: what it makes of every form of an item.
#include "addressing/address_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/errori.h"

namespace orve {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// The items read, as name, "/" and address.
std::vector<std::string> Letti(AddressListReader& lettore, const std::string& elenco) {
  std::vector<std::string> voci;
  lettore.Leggi(elenco, [&](const std::string& indirizzo, const std::string& nome) {
    voci.push_back(nome + "/" + indirizzo);
  });
  return voci;
}

struct CasoElenco {
  const char* etichetta;
  const char* elenco;
  std::vector<std::string> want;
};

class ElencoLeniente : public ::testing::TestWithParam<CasoElenco> {};

TEST_P(ElencoLeniente, Reads) {
  AddressListReader lettore;
  EXPECT_EQ(Letti(lettore, GetParam().elenco), GetParam().want);
}

INSTANTIATE_TEST_SUITE_P(
    Tabella, ElencoLeniente,
    ::testing::Values(
        CasoElenco{"AnEmptyList", "", {}},
        CasoElenco{"NameAndAddress", "Anna<a@x.example>", {"Anna/a@x.example"}},
        CasoElenco{
            "TwoItems", "Anna<a@x.example>;Bruno<b@x.example>", {"Anna/a@x.example", "Bruno/b@x.example"}},
        CasoElenco{
            "ABareAddressInFront", "a@x.example;Bruno<b@x.example>", {"/a@x.example", "Bruno/b@x.example"}},
        CasoElenco{"ABareAddressAfterANamedItemHasItsName",
                   "Anna<a@x.example>;b@x.example",
                   {"Anna/a@x.example", "Anna/b@x.example"}},
        CasoElenco{"AnEmptyNameIsANameToo",
                   "Anna<a@x.example>;<b@x.example>;c@x.example",
                   {"Anna/a@x.example", "/b@x.example", "/c@x.example"}},
        CasoElenco{
            "WithoutTheClosingBracketTheAddressRunsToTheEnd", "Anna<a@x.example ", {"Anna/a@x.example "}},
        CasoElenco{"WithoutTheOpeningBracketTheNameIsTheOneBefore",
                   "Anna<a@x.example>;b@x.example>",
                   {"Anna/a@x.example", "Anna/b@x.example"}},
        CasoElenco{"EmptyItemsAreSkipped", ";Anna<a@x.example>;;", {"Anna/a@x.example"}},
        CasoElenco{
            "AnItemWithoutAnAddressIsSkippedButItsNameStays", "Anna<>;b@x.example", {"Anna/b@x.example"}},
        CasoElenco{"OnlyBrackets", "<>", {}}, CasoElenco{"OnlyAnOpeningBracket", "Anna<", {}},
        CasoElenco{"BlanksStay", " Anna < a@x.example > ", {" Anna / a@x.example "}},
        CasoElenco{"ASeparatorInsideANameSplitsTheItem",
                   "Rossi; Anna<a@x.example>",
                   {"/Rossi", " Anna/a@x.example"}},
        CasoElenco{"TheFirstBracketsCount", "A<B<a@x.example>>", {"A/B<a@x.example"}},
        CasoElenco{"AccentedLettersCountAsOneCharacter", "Nicolò è<n@x.example>", {"Nicolò è/n@x.example"}}),
    [](const auto& caso) { return std::string(caso.param.etichetta); });

TEST(AddressListReader, TheNameSurvivesFromOneListToTheNext) {
  AddressListReader lettore;
  EXPECT_THAT(Letti(lettore, "Anna<a@x.example>"), ElementsAre("Anna/a@x.example"));
  EXPECT_THAT(Letti(lettore, ""), IsEmpty());
  EXPECT_THAT(Letti(lettore, "b@x.example"), ElementsAre("Anna/b@x.example"));
}

TEST(AddressListReader, AClosingBracketInFrontOfTheOpeningOneEndsTheReadingAtThatItem) {
  AddressListReader lettore;
  std::vector<std::string> letti;
  const auto numero = fakes::NumeroDi([&] {
    lettore.Leggi("Anna<a@x.example>;b>c<d;e@x.example",
                  [&](const std::string& indirizzo, const std::string&) { letti.push_back(indirizzo); });
  });
  EXPECT_EQ(numero, 5);
  EXPECT_THAT(letti, ElementsAre("a@x.example"));
}

TEST(AddressListReader, APositionBeyondSixteenBitsIsAnOverflow) {
  AddressListReader lettore;
  const std::string ultimo(32766, 'x');
  EXPECT_THAT(Letti(lettore, ultimo + "<a@x.example"), ElementsAre(ultimo + "/a@x.example"));
  EXPECT_EQ(fakes::NumeroDi([&] { Letti(lettore, ultimo + "x<a@x.example"); }), 6);
}

TEST(AddressListReader, MoreThan32767ItemsAreAnOverflow) {
  AddressListReader lettore;
  std::string elenco = "a";
  for (int i = 1; i < 32767; ++i) elenco += ";a";
  EXPECT_EQ(Letti(lettore, elenco).size(), 32767U);
  EXPECT_EQ(fakes::NumeroDi([&] { Letti(lettore, elenco + ";a"); }), 6);
}

}  // namespace
}  // namespace orve
