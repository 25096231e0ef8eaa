#include "mime/base64_lines.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orve::adapters::mime {
namespace {

std::string Encoded(const std::vector<std::string_view>& pieces) {
  Base64Lines encoder;
  std::string lines;
  for (const std::string_view piece : pieces) encoder.Add(piece, lines);
  encoder.Finish(lines);
  return lines;
}

std::string EveryByte() {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  return bytes;
}

TEST(Base64Lines, FillsTheLastGroupUp) {
  const std::vector<std::pair<std::string_view, std::string>> cases = {
      {"", ""},
      {"f", "Zg==\r\n"},
      {"fo", "Zm8=\r\n"},
      {"foo", "Zm9v\r\n"},
      {"foob", "Zm9vYg==\r\n"},
      {"fooba", "Zm9vYmE=\r\n"},
      {"foobar", "Zm9vYmFy\r\n"},
  };
  for (const auto& [bytes, want] : cases) EXPECT_EQ(Encoded({bytes}), want) << bytes;
}

TEST(Base64Lines, KnowsEveryDigit) {
  EXPECT_EQ(Encoded({EveryByte()}),
            "AAECAwQFBgcICQoLDA0ODxAREhMUFRYXGBkaGxwdHh8gISIjJCUmJygpKissLS4vMDEyMzQ1Njc4\r\n"
            "OTo7PD0+P0BBQkNERUZHSElKS0xNTk9QUVJTVFVWV1hZWltcXV5fYGFiY2RlZmdoaWprbG1ub3Bx\r\n"
            "cnN0dXZ3eHl6e3x9fn+AgYKDhIWGh4iJiouMjY6PkJGSk5SVlpeYmZqbnJ2en6ChoqOkpaanqKmq\r\n"
            "q6ytrq+wsbKztLW2t7i5uru8vb6/wMHCw8TFxsfIycrLzM3Oz9DR0tPU1dbX2Nna29zd3t/g4eLj\r\n"
            "5OXm5+jp6uvs7e7v8PHy8/T19vf4+fr7/P3+/w==\r\n");
}

TEST(Base64Lines, AFullLineIsFollowedByNoEmptyOne) {
  const std::string line(57, 'x');
  EXPECT_EQ(Encoded({line}).size(), 78U);
  EXPECT_EQ(Encoded({line + line}).size(), 2 * 78U);
  EXPECT_EQ(Encoded({line + 'x'}).substr(78), "eA==\r\n");
}

TEST(Base64Lines, WhereThePiecesEndDoesNotShow) {
  const std::string bytes = EveryByte();
  const std::string want = Encoded({bytes});
  for (std::size_t one = 0; one <= bytes.size(); ++one) {
    for (std::size_t two = one; two <= bytes.size(); two += 7) {
      const std::string_view all = bytes;
      ASSERT_EQ(Encoded({all.substr(0, one), all.substr(one, two - one), all.substr(two)}), want)
          << one << ", " << two;
    }
  }
}

}  // namespace
}  // namespace orve::adapters::mime
