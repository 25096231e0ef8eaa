// Which characters a reader does not see, and what replaces them.
#include "text/unseen.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace orve::text {

TEST(Unseen, ControlCharactersAndWhatTurnsATextRoundOrShowsNothing) {
  for (const std::uint32_t code :
       {0x0U, 0x9U, 0xAU, 0x1BU, 0x1FU, 0x7FU, 0x80U, 0x9BU, 0x9FU, 0x2028U, 0x2029U}) {
    EXPECT_EQ(Classify(char32_t{code}), Unseen::kControl) << code;
  }
  for (const std::uint32_t code : {0x061CU, 0x180EU, 0x200BU, 0x200EU, 0x200FU, 0x202AU, 0x202EU, 0x2060U,
                                   0x2066U, 0x2069U, 0x206FU, 0xFEFFU, 0xFFF9U, 0xE0001U, 0xE007FU}) {
    EXPECT_EQ(Classify(char32_t{code}), Unseen::kFormat) << code;
  }
  for (const std::uint32_t code : {0x20U, 0x7EU, 0xA0U, 0xADU, 0xE8U, 0x200CU, 0x200DU, 0x2019U, 0x202FU,
                                   0x2027U, 0xFFFDU, 0xFE0FU, 0x1F600U, 0xE0080U}) {
    EXPECT_EQ(Classify(char32_t{code}), Unseen::kNo) << code;
  }
}

TEST(Unseen, AreReplacedAndTheRestStaysToTheByte) {
  const std::string testo = "a\x1B[31m\xE2\x80\x8F fdp.exe è\xFF\xF3\xA0\x80\x81\xC2";
  EXPECT_EQ(ReplaceUnseen(testo, [](char32_t code, Unseen) { return Escaped(code); }),
            "a\\u001B[31m\\u200F fdp.exe è\xFF\\uDB40\\uDC01\xC2");
  EXPECT_EQ(ReplaceUnseen(testo, [](char32_t, Unseen) { return std::nullopt; }), testo);
}

}  // namespace orve::text
