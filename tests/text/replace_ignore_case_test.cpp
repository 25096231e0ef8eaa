#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "text/text.h"

namespace orve::text {
namespace {

TEST(ReplaceIgnoreCase, FindsANeedleWhereverItStands) {
  struct Caso {
    const char* etichetta;
    const char* testo;
    const char* from;
    const char* to;
    const char* want;
  };
  const std::vector<Caso> casi = {
      {"sign first, at the start", "***(A)***x", "***(a)***", "1", "1x"},
      {"sign first, at the end", "x***(A)***", "***(a)***", "1", "x1"},
      {"sign first, twice side by side", "*(A)*(a)", "*(a)", "1", "11"},
      {"more signs than the needle has", "*****(A)", "*(a)", "1", "****1"},
      {"only a part of the signs in front", "(A)*(A)", "*(a)", "1", "(A)1"},
      {"signs without a letter", "a**b***", "**", "1", "a1b1*"},
      {"cut short", "***(A)**", "***(a)***", "1", "***(A)**"},
      {"letter first", "AbcaBC", "abc", "x", "xx"},
      {"overlapping finds count once", "aaa", "AA", "x", "xa"},
      {"what was put in is not searched again", "ab", "a", "aa", "aab"},
      {"longer than the text", "ab", "abc", "x", "ab"},
      {"empty text", "", "a", "x", ""},
      {"empty needle", "ab", "", "x", "ab"},
      {"accents are compared as they stand", "ÀB", "àb", "x", "ÀB"},
  };
  for (const auto& caso : casi) {
    EXPECT_EQ(ReplaceIgnoreCase(caso.testo, caso.from, caso.to), caso.want) << caso.etichetta;
  }
}

TEST(ReplaceIgnoreCase, ALongTextOfFirstCharactersIsSearchedOnce) {
  const std::string lungo(1U << 20U, '*');
  EXPECT_EQ(ReplaceIgnoreCase(lungo, "***(Nome)***", "x"), lungo);
}

}  // namespace
}  // namespace orve::text
