// Which characters a reader does not see, and what is put in their place.
#include "text/unseen.h"

#include <gtest/gtest.h>

#include <string>

namespace orve::text {

TEST(Unseen, ControlCharactersAndWhatTurnsATextRoundOrShowsNothing) {
  for (const char32_t code : {0x0, 0x9, 0xA, 0x1B, 0x1F, 0x7F, 0x80, 0x9B, 0x9F, 0x2028, 0x2029}) {
    EXPECT_EQ(Classify(code), Unseen::kControl) << static_cast<unsigned>(code);
  }
  for (const char32_t code : {0x061C, 0x180E, 0x200B, 0x200E, 0x200F, 0x202A, 0x202E, 0x2060, 0x2066, 0x2069,
                              0x206F, 0xFEFF, 0xFFF9, 0xE0001, 0xE007F}) {
    EXPECT_EQ(Classify(code), Unseen::kFormat) << static_cast<unsigned>(code);
  }
  for (const char32_t code : {0x20, 0x7E, 0xA0, 0xAD, 0xE8, 0x200C, 0x200D, 0x2019, 0x202F, 0x2027, 0xFFFD,
                              0xFE0F, 0x1F600, 0xE0080}) {
    EXPECT_EQ(Classify(code), Unseen::kNo) << static_cast<unsigned>(code);
  }
}

TEST(Unseen, AreReplacedAndTheRestStaysToTheByte) {
  const std::string testo = "a\x1B[31m\xE2\x80\xAE fdp.exe è\xFF\xF3\xA0\x80\x81\xC2";
  EXPECT_EQ(ReplaceUnseen(testo, [](char32_t code, Unseen) { return Escaped(code); }),
            "a\\u001B[31m\\u202E fdp.exe è\xFF\\uDB40\\uDC01\xC2");
  EXPECT_EQ(ReplaceUnseen(testo, [](char32_t, Unseen) { return std::nullopt; }), testo);
}

}  // namespace orve::text
