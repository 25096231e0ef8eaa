#include "text/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orve::text {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Text, LengthCountsCharactersAndNotBytes) {
  EXPECT_EQ(Length(""), 0U);
  EXPECT_EQ(Length("abc"), 3U);
  EXPECT_EQ(Length("perché"), 6U);
  EXPECT_EQ(Length("€ 1 😀"), 5U);
}

TEST(Text, EveryByteThatIsNoUtf8IsOneCharacter) {
  EXPECT_EQ(Length("\xFF\xFE"), 2U);
  EXPECT_EQ(Length("a\xC3"), 2U);  // a lead byte at the end
  EXPECT_EQ(Length("\xE2\x82"
                   "b"),
            3U);                              // a sequence cut short
  EXPECT_EQ(Length("\xC0\xAF"), 2U);          // overlong forms
  EXPECT_EQ(Length("\xE0\x81\x81"), 3U);      //
  EXPECT_EQ(Length("\xF0\x80\x81\x81"), 4U);  //
  EXPECT_EQ(Length("\xED\xA0\x80"), 3U);      // half of a pair
  EXPECT_EQ(Length("\xF4\x90\x80\x80"), 4U);  // beyond the last character
}

TEST(Text, LeftAndMidCutBetweenCharacters) {
  EXPECT_EQ(Left("città nuova", 5), "città");
  EXPECT_EQ(Left("ab", 9), "ab");
  EXPECT_EQ(Left("ab", 0), "");
  EXPECT_EQ(Mid("città nuova", 7), "nuova");
  EXPECT_EQ(Mid("città nuova", 5, 3), "à n");
  EXPECT_EQ(Mid("ab", 3), "");
  EXPECT_EQ(Mid("ab", 99), "");
}

TEST(Text, WithoutLastCutsCharactersFromTheEnd) {
  EXPECT_EQ(WithoutLast("Rossi, ", 2), "Rossi");
  EXPECT_EQ(WithoutLast("àè", 1), "à");
  EXPECT_EQ(WithoutLast("x", 2), "");
}

TEST(Text, FindGivesCharacterPositionsFromOne) {
  EXPECT_EQ(Find("perché no", "no"), 8U);
  EXPECT_EQ(Find("a/b/c", "/", 3), 4U);
  EXPECT_EQ(Find("abc", "x"), 0U);
  EXPECT_EQ(Find("abc", "a", 9), 0U);
}

TEST(Text, FindGivesNoPositionToAPlaceInsideACharacter) {
  EXPECT_EQ(Find("€", "\x82\xAC"), 0U);
  EXPECT_EQ(Find("€\xAC.", "\xAC"), 2U);
}

TEST(Text, NothingIsFoundAfterTheEnd) {
  EXPECT_EQ(Find("ab", "", 3), 3U);
  EXPECT_EQ(Find("ab", "", 4), 0U);
  EXPECT_EQ(Find("", "", 9), 0U);
}

TEST(Text, TrimTakesBlanksOnly) {
  EXPECT_EQ(Trim("  a b  "), "a b");
  EXPECT_EQ(Trim("\t a"), "\t a");
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(TrimRight("  a  "), "  a");
}

TEST(Text, AnEmptyTextSplitsIntoNoParts) {
  EXPECT_THAT(Split("", ';'), IsEmpty());
}

TEST(Text, SplitKeepsEmptyParts) {
  EXPECT_THAT(Split("a;;b;", ';'), ElementsAre("a", "", "b", ""));
  EXPECT_THAT(Split(";", ';'), ElementsAre("", ""));
}

TEST(Text, ReplaceDoesNotSearchWhatItPutIn) {
  EXPECT_EQ(Replace("l'art. dell'IVA", "'", "''"), "l''art. dell''IVA");
  EXPECT_EQ(Replace("aaa", "aa", "a"), "aa");
  EXPECT_EQ(Replace("abc", "", "x"), "abc");
}

TEST(Text, ReplaceIgnoreCaseFindsEveryCaseOfTheLetters) {
  EXPECT_EQ(ReplaceIgnoreCase("***(NOME)*** e ***(nome)***", "***(Nome)***", "Anna"), "Anna e Anna");
  EXPECT_EQ(ReplaceIgnoreCase("niente", "***(Nome)***", "Anna"), "niente");
  EXPECT_EQ(ReplaceIgnoreCase("x***(Nome)***y", "***(Nome)***", ""), "xy");
}

TEST(Text, CaseIsToldFromLettersInEveryAlphabet) {
  struct Caso {
    const char* a;
    const char* b;
    bool wantEqual;
  };
  const std::vector<Caso> casi = {
      {"Conto", "CONTO", true},
      {"CITTÀ", "città", true},
      {"Ÿ", "ÿ", true},
      {"ŠKODA, Œuvre, ŽIŽEK", "škoda, œuvre, žižek", true},
      {"Đ, Ł, Ń, Ğ", "đ, ł, ń, ğ", true},
      {"ΩΜΈΓΑ", "ωμέγα", true},
      {"ΟΔΟΣ", "οδος", true},  // the small sigma has a different form at the end of a word
      {"ΟΔΟΣ", "οδοσ", true},
      {"ЖЁЛТЫЙ", "жёлтый", true},
      {"ՀԱՅ", "հայ", true},
      {"Ꭰ", "ꭰ", true},  // folded to the capital
      {"Ⅻ", "ⅻ", true},
      {"ＡＢＣ", "ａｂｃ", true},
      {"𐐀", "𐐨", true},             // four bytes
      {"Ⱥ", "ⱥ", true},             // two bytes and three
      {"K", "\xE2\x84\xAA", true},  // one byte and three: the sign of the kelvin
      {"ẞ", "ß", true},             // three bytes and two
      {"a", "b", false},
      {"×", "÷", false},  // where letters would form a pair
      {"à", "a", false},  // an accent is no matter of case
      {"Š", "s", false},
      {"ß", "ss", false},  // nor is a second letter
      {"ﬁ", "fi", false},
      {"İ", "i", false},  // the Turkish letters are different from i
      {"ı", "I", false},
      {"ª", "º", false},  // letters without another case
      {"ĸ", "Ĺ", false},
      {"あ", "ア", false},
      {"א", "ב", false},
      {"\xC3", "\xE3", false},  // bytes that are not text
      {"\xE0\x81\x81", "a", false},
  };
  for (const auto& [a, b, wantEqual] : casi) {
    EXPECT_EQ(EqualsIgnoreCase(a, b), wantEqual) << a << " / " << b;
    EXPECT_EQ(EqualsIgnoreCase(b, a), wantEqual) << b << " / " << a;
  }
}

TEST(Text, WhatIsFoldedKeepsItsCharactersAndFoldsNoMore) {
  for (const char* testo : {"Ⱥ\xC3K\xE2\x84\xAA\xED\xA0\x80ẞ", "😀 Š\xFF", "İı"}) {
    const std::string piegato = FoldCase(testo);
    EXPECT_EQ(Length(piegato), Length(testo)) << testo;
    EXPECT_EQ(FoldCase(piegato), piegato) << testo;
  }
  EXPECT_EQ(FoldCase("Ⱥ"), "ⱥ");
  EXPECT_EQ(FoldCase("\xC3K\xFF"), "\xC3k\xFF");
}

TEST(Text, CodePage1252TakesWhatItHasAndMarksTheRest) {
  EXPECT_EQ(ToWindows1252("perché €"), "perch\xE9 \x80");
  EXPECT_EQ(ToWindows1252("“l’art”"),
            "\x93l\x92"
            "art\x94");
  EXPECT_EQ(ToWindows1252("日本 😀"), "?? ?");
  EXPECT_EQ(ToWindows1252("\xFF"), "?");
  EXPECT_EQ(ToWindows1252("\xC2\x81"), "?");  // U+0081, which the code page leaves open
}

TEST(Text, EveryByteOfCodePage1252IsACharacterAndMostComeBackAsTheyWere) {
  const std::string open = "\x81\x8D\x8F\x90\x9D";  // bytes that the page leaves open
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all.push_back(static_cast<char>(byte));
  EXPECT_EQ(Length(FromWindows1252(all)), 256U);
  for (const char c : all) {
    const std::string one(1, c);
    const std::string back = ToWindows1252(FromWindows1252(one));
    EXPECT_EQ(back, open.find(c) == std::string::npos ? one : "?") << static_cast<int>(c);
  }
}

TEST(Text, BytesOfCodePage1252BecomeTheCharactersThatItsTableShows) {
  EXPECT_EQ(FromWindows1252("perch\xE9 \x80 \x93l\x92"
                            "art\x94"),
            "perché € “l’art”");
  EXPECT_EQ(FromWindows1252("\x81\x8D\x8F\x90\x9D"), "\u0081\u008D\u008F\u0090\u009D");
  EXPECT_EQ(FromWindows1252("\xA0\xFF"), "\u00A0ÿ");
  EXPECT_EQ(FromWindows1252(std::string_view("a\0b", 3)), std::string_view("a\0b", 3));
  EXPECT_EQ(FromWindows1252(""), "");
}

TEST(Text, LongTextsTakeLinearWork) {
  const std::string lungo(4'000'000, 'x');
  EXPECT_EQ(Length(lungo), lungo.size());
  EXPECT_EQ(Split(std::string(1'000'000, ';'), ';').size(), 1'000'001U);
  EXPECT_EQ(Replace(lungo, "x", "yy").size(), 2 * lungo.size());
}

}  // namespace
}  // namespace orve::text
