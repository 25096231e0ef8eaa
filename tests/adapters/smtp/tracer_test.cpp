// Which of a server's words may appear in a trace and in the text of a failure.
#include "smtp/tracer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace orve::adapters::smtp {
namespace {

using testing::ElementsAre;

constexpr std::string_view kSecret = "Gatto.Nero7";

struct Overheard {
  std::vector<std::string> lines;
  Tracer tracer;

  explicit Overheard(std::string_view password)
      : tracer([this](std::string_view line) { lines.emplace_back(line); }, password) {}

  void LogIn(const std::string& token) {
    tracer.Sent("AUTH PLAIN " + token + "\r\n");
    tracer.Received("235 benvenuto\r\n");
    tracer.LoginOver();
    lines.clear();
  }
};

struct Repetition {
  const char* how;
  const char* words;
};

const Repetition kRepetitions[] = {
    {"in clear", "Gatto.Nero7"},
    {"in clear, in capitals", "GATTO.NERO7"},
    {"the first half", "comincia con Gatto."},
    {"the second half", "finisce con .Nero7"},
    {"letter by letter", "G a t t o . N e r o 7"},
    {"with dashes between", "G-a-t-t-o-.-N-e-r-o-7"},
    {"backwards", "7oreN.ottaG"},
    {"by ROT13", "Tnggb.Areb7"},
    {"base64 of itself", "R2F0dG8uTmVybzc="},
    {"base64 without its padding", "R2F0dG8uTmVybzc"},
    {"base64 after one byte", "eEdhdHRvLk5lcm83"},
    {"base64 after two bytes", "eHhHYXR0by5OZXJvNw=="},
    {"base64 after a word of its own alphabet", "tokenR2F0dG8uTmVybzc="},
    {"base64 in two pieces", "R2F0dG8u e TmVybzc="},
    {"base64 with blanks", "R2F0 dG8u TmVy bzc="},
    {"half in base64", "R2F0dG8u"},
    {"base64 of base64", "UjJGMGRHOHVUbVZ5YnpjPQ=="},
    {"base64 of hexadecimal", "NDc2MTc0NzQ2ZjJlNGU2NTcyNmYzNw=="},
    {"hexadecimal", "476174746f2e4e65726f37"},
    {"hexadecimal in capitals", "476174746F2E4E65726F37"},
    {"hexadecimal with colons", "47:61:74:74:6f:2e:4e:65:72:6f:37"},
    {"hexadecimal with 0x", "0x47 0x61 0x74 0x74 0x6f 0x2e 0x4e 0x65 0x72 0x6f 0x37"},
    {"hexadecimal after one digit", "a476174746f2e4e65726f37"},
    {"base32", "I5QXI5DPFZHGK4TPG4"},
    {"base32 of a text that begins earlier", "pbdwc5dun4xe4zlsn43q"},
    {"by percents", "%47%61%74%74%6f%2e%4e%65%72%6f%37"},
    {"by percents, in part", "Ga%74to%2eNe%72o7"},
    {"quoted printable", "G=61tt=6F=2EN=65ro7"},
    {"by references to characters", "&#71;&#97;&#116;&#116;&#111;&#46;&#78;&#101;&#114;&#111;&#55;"},
    {"by references to characters, hexadecimal", "&#x47;a&#x74;to.&#x4e;er&#x6f;7"},
    {"by backslashes", R"(\x47a\x74to.\x4e\x65ro7)"},
    {"by octal backslashes", R"(\107a\164to.\116\145ro7)"},
    {"decimal", "71 97 116 116 111 46 78 101 114 111 55"},
    {"octal", "107 141 164 164 157 56 116 145 162 157 67"},
    {"octal with 0o", "0o107 0o141 0o164 0o164 0o157 0o56 0o116 0o145 0o162 0o157 0o67"},
    {"binary", "1000111 1100001 1110100 1110100 1101111 101110 1001110 1100101 1110010 1101111 110111"},
    {"binary without blanks",
     "0100011101100001011101000111010001101111001011100100111001100101011100100110111100110111"},
    {"in wide letters", "Ｇａｔｔｏ．Ｎｅｒｏ７"},
    {"base64 of wide letters", "77yn772B772U772U772P77yO77yu772F772S772P77yX"},
    {"base32 of base64", "KIZEMMDEI44HKVDNKZ4WE6TDHU"},
};

TEST(Masking, KnowsTheSecretInEveryFormThatAProgramUndoes) {
  for (const auto& [how, words] : kRepetitions) {
    SCOPED_TRACE(how);
    Overheard traced(kSecret);
    traced.tracer.Received("550 5.7.1 dice: " + std::string(words) + " ?\r\n");
    EXPECT_THAT(traced.lines, ElementsAre("S: 550 ***"));
    EXPECT_EQ(traced.tracer.Masked("RCPT TO:<b@x.example>: 550 5.7.1 dice: " + std::string(words)), "***");
    traced.lines.clear();
    traced.tracer.Note(words);
    EXPECT_THAT(traced.lines, ElementsAre("* ***"));
  }
}

TEST(Masking, KnowsTheSecretWhereItIsSpreadOverLines) {
  for (const std::string words :
       {"Gatto.Nero7", "R2F0dG8uTmVybzc", "476174746f2e4e65726f37", "UjJGMGRHOHVUbVZ5YnpjPQ",
        "&#71;&#97;&#116;&#116;&#111;&#46;&#78;&#101;&#114;&#111;&#55;"}) {
    for (std::size_t size = 1; size < words.size(); ++size) {
      SCOPED_TRACE(words + " by " + std::to_string(size));
      Overheard traced(kSecret);
      std::string text;
      for (std::size_t at = 0; at < words.size(); at += size) {
        traced.tracer.Received("550-5.7.1 " + words.substr(at, size) + "\r\n");
        text += (text.empty() ? "550-5.7.1 " : " / 550-5.7.1 ") + words.substr(at, size);
      }
      EXPECT_THAT(traced.lines, testing::Contains("S: 550-***"));
      std::string shown;
      for (const std::string& line : traced.lines) {
        if (line != "S: 550-***") shown += line.substr(std::string_view("S: 550-5.7.1 ").size());
      }
      EXPECT_LT(shown.size(), words.size() * 3 / 4) << shown;
      EXPECT_EQ(traced.tracer.Masked(text), "***");
    }
  }
}

TEST(Masking, EndsWithTheRepetition) {
  Overheard traced(kSecret);
  traced.tracer.Received("250-Gatto.Nero7\r\n250 Ok\r\n");
  EXPECT_THAT(traced.lines, ElementsAre("S: 250-***", "S: 250 Ok"));
}

TEST(Masking, KnowsWhatWasSentInAuth) {
  Overheard traced("x");
  traced.LogIn("AHV0ZW50ZQB4");
  traced.tracer.Received("250-AHV0ZW50ZQB4\r\n250-ZW50ZQB4\r\n250 Ok");
  EXPECT_THAT(traced.lines, ElementsAre("S: 250-***", "S: 250-***", "S: 250 Ok"));
}

TEST(Masking, KnowsTheAnswerToAChallenge) {
  Overheard traced(kSecret);
  traced.tracer.Sent("AUTH CRAM-MD5\r\n");
  traced.tracer.Received("334 PDEyMz4=\r\n");
  // "utente 3dbc88f0624776a737b39093f6eb6427"
  traced.tracer.Sent("dXRlbnRlIDNkYmM4OGYwNjI0Nzc2YTczN2IzOTA5M2Y2ZWI2NDI3\r\n");
  traced.tracer.Received("235 Ok\r\n");
  traced.tracer.Received("250 3dbc88f0624776a737b39093f6eb6427\r\n");
  EXPECT_THAT(traced.lines,
              ElementsAre("C: AUTH CRAM-MD5", "S: 334 ***", "C: ***", "S: 235 Ok", "S: 250 ***"));
}

TEST(Masking, LeavesOrdinaryRepliesAsTheyAre) {
  const std::vector<std::string> replies = {
      "220 mail.rossi.example ESMTP Postfix (Debian/GNU), Tue, 5 Nov 2024 10:00:00 +0100",
      "250-mail.rossi.example Hello [192.0.2.1], pleased to meet you",
      "250-SIZE 52428800",
      "250 AUTH PLAIN LOGIN XOAUTH2",
      "235 2.7.0 Authentication successful",
      "250 2.1.5 <mario@rossi.example> Recipient ok",
      "250 2.0.0 Ok: queued as 4F2A1B3C9D1E",
      "550 5.1.1 <c29tZW9uZQ@x.example>: Recipient address rejected: User unknown in virtual mailbox table",
      "554 5.7.1 https://www.spamhaus.example/query/ip/192.0.2.1",
      "535-5.7.8 Username and Password not accepted. Learn more at",
      "535 5.7.8  https://support.example/mail/?p=BadCredentials 4fb4d7f45d1cf-5cb9a8f2a1bsm123 - gsmtp",
  };
  for (const std::string_view password : {"a", "ab", "cat", "Gatto.Nero7", "Verdi2024!", "12345678"}) {
    Overheard traced(password);
    for (const std::string& reply : replies) {
      traced.tracer.Received(reply);
      EXPECT_EQ(traced.lines.back(), "S: " + reply) << password;
      EXPECT_EQ(traced.tracer.Masked(reply), reply) << password;
    }
  }
}

TEST(Masking, DoesNotTakeTheAddressesOfTheMessageForTheSecret) {
  Overheard traced("Rossi-2024");
  traced.tracer.Sent("RCPT TO:<mario@Rossi.example>\r\n");
  traced.tracer.Received("250 2.1.5 <mario@Rossi.example> Ok\r\n");
  EXPECT_EQ(traced.lines.back(), "S: 250 2.1.5 <mario@Rossi.example> Ok");
  traced.tracer.Received("250 Rossi-2024\r\n");
  EXPECT_EQ(traced.lines.back(), "S: 250 ***");
}

TEST(Masking, OfAShortSecretGoesByWords) {
  Overheard traced("no1");
  traced.tracer.Received("550 parola: no1\r\n550 nono123");
  EXPECT_THAT(traced.lines, ElementsAre("S: 550 ***", "S: 550 nono123"));
}

TEST(Masking, OfASecretOfDigitsKnowsItsHalvesToo) {
  Overheard traced("20247316");
  traced.tracer.Received("550 comincia con 2024\r\n");
  traced.tracer.Received("550 finisce con 7316\r\n");
  EXPECT_THAT(traced.lines, ElementsAre("S: 550 ***", "S: 550 ***"));
}

TEST(Masking, OfASecretWithAYearDoesNotTakeEveryYearForIt) {
  Overheard traced("Verdi2024");
  traced.tracer.Received("220 mail.rossi.example, 5 Nov 2024\r\n");
  EXPECT_THAT(traced.lines, ElementsAre("S: 220 mail.rossi.example, 5 Nov 2024"));
}

TEST(Masking, OfALoginEndsWithNothingThatTheServerSays) {
  for (const std::string untidy : {"", "bene", "235", "235 bene", "535 no", "235-", "2350 bene", "35 bene",
                                   "334 cHdk", "354 avanti", "199 x"}) {
    SCOPED_TRACE(untidy);
    Overheard traced(kSecret);
    traced.tracer.Sent("AUTH LOGIN\r\n");
    traced.tracer.Received(untidy + "\n334 VXNlcm5hbWU6\r\n");
    traced.tracer.Sent("dXRlbnRl\r\n");
    EXPECT_EQ(traced.lines.back(), "C: ***");
    traced.tracer.Received(untidy + "\n334 UGFzc3dvcmQ6\r\n");
    traced.tracer.Sent("YWx0cm8=\r\n");
    EXPECT_EQ(traced.lines.back(), "C: ***");
    traced.tracer.Received("550 dXRlbnRl\r\n550 YWx0cm8\r\n");
    EXPECT_EQ(traced.lines.back(), "S: 550 ***");
    traced.tracer.LoginOver();
    traced.tracer.Sent("MAIL FROM:<a@x.example>\r\n");
    EXPECT_EQ(traced.lines.back(), "C: MAIL FROM:<a@x.example>");
  }
}

TEST(Masking, OfALoginShowsWhatIsNoCredential) {
  Overheard traced(kSecret);
  traced.tracer.Sent("AUTH CRAM-MD5\r\n");
  traced.tracer.Received("334 ?\r\n");
  traced.tracer.Sent("*\r\n");
  traced.tracer.Received("501 5.7.0 rinuncia\r\n");
  traced.tracer.Sent("AUTH LOGIN dXRlbnRl\r\n");
  traced.tracer.Received("535 no\r\n");
  traced.tracer.Sent("QUIT\r\n");
  EXPECT_THAT(traced.lines, ElementsAre("C: AUTH CRAM-MD5", "S: 334 ***", "C: *", "S: 501 5.7.0 rinuncia",
                                        "C: AUTH LOGIN ***", "S: 535 no", "C: QUIT"));
}

TEST(Masking, KnowsTheSecretInACommandTooAndAllowsNothingOfIt) {
  for (const std::string command : {"R2F0dG8uTmVybzc=", "Gatto.Nero7", "RCPT TO:<gatto.nero7@x.example>",
                                    "AHV0ZW50ZQBHYXR0by5OZXJvNw=="}) {
    SCOPED_TRACE(command);
    Overheard traced(kSecret);
    traced.tracer.Sent(command + "\r\n");
    EXPECT_THAT(traced.lines, ElementsAre("C: ***"));
    traced.tracer.Received("550 dice: " + command + "\r\n550 dice: Gatto.\r\n");
    EXPECT_THAT(traced.lines, ElementsAre("C: ***", "S: 550 ***", "S: 550 ***"));
  }
}

TEST(Masking, OfALoginIsRememberedWhereNobodyTraced) {
  Overheard traced("x");
  traced.tracer.Into({});
  traced.LogIn("AHV0ZW50ZQB4");
  EXPECT_EQ(traced.tracer.Masked("550 AHV0ZW50ZQB4"), "***");
  traced.tracer.Into([&](std::string_view line) { traced.lines.emplace_back(line); });
  traced.tracer.Received("550 AHV0ZW50ZQB4");
  EXPECT_THAT(traced.lines, ElementsAre("S: 550 ***"));
}

}  // namespace
}  // namespace orve::adapters::smtp
