#include "mime/message_writer.h"
#include "fakes/errori.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "mime/header_text.h"
#include "orve-mailserver/host/errore.h"
#include "support/received_message.h"
#include "support/temp_dir.h"
#include "text/text.h"

namespace orve::adapters::mime {
namespace {

using support::Mailbox;
using support::ReadFile;
using support::ReceivedMessage;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const auto kInstant = std::chrono::system_clock::from_time_t(1'700'000'000);

Message Simple() {
  Message message;
  message.from = {"Ditta Rossi", "ditta@rossi.it"};
  message.to = {{"Mario Bianchi", "mario@bianchi.it"}};
  message.subject = "Fattura";
  message.body = "Buongiorno,\r\nin allegato la fattura.\r\n";
  message.messageId = "prova@rossi.it";
  message.date = kInstant;
  return message;
}

std::string Written(const Message& message, const WriteOptions& options = {}) {
  std::string bytes;
  WriteMessage(
      message,
      [&](std::string_view piece) {
        EXPECT_LE(piece.size(), kPieceBytes);
        bytes += piece;
      },
      options);
  return bytes;
}

/// What every message must be on the wire, whatever was put into it.
void ExpectCleanWire(const std::string& bytes) {
  std::size_t start = 0;
  while (start < bytes.size()) {
    const std::size_t end = bytes.find("\r\n", start);
    ASSERT_NE(end, std::string::npos) << "the last line is not ended";
    const std::string_view line(bytes.data() + start, end - start);
    ASSERT_LE(line.size(), 998U);
    ASSERT_TRUE(std::all_of(line.begin(), line.end(), [](char c) {
      return (c >= ' ' && c < 0x7f) || c == '\t';
    })) << testing::PrintToString(line);
    start = end + 2;
  }
}

class MessageWriter : public testing::Test {
 protected:
  ReceivedMessage Parsed(const Message& message) {
    const std::string bytes = Written(message);
    ExpectCleanWire(bytes);
    ReceivedMessage read = support::ReadMessage(directory_.Write("message.eml", bytes), directory_.Path());
    EXPECT_THAT(read.defects, IsEmpty());
    return read;
  }

  support::TempDir directory_;
};

std::string LocalDate(std::time_t instant) {
  std::tm fields{};
  ::localtime_r(&instant, &fields);
  std::array<char, 64> text{};
  const std::size_t length = std::strftime(text.data(), text.size(), "%a, %d %b %Y %H:%M:%S %z", &fields);
  return {text.data(), length};
}

TEST_F(MessageWriter, APlainMessageIsWrittenToTheLetter) {
  EXPECT_EQ(Written(Simple()),
            "From: Ditta Rossi <ditta@rossi.it>\r\n"
            "To: Mario Bianchi <mario@bianchi.it>\r\n"
            "Subject: Fattura\r\n"
            "Date: " +
                LocalDate(1'700'000'000) +
                "\r\n"
                "Message-ID: <prova@rossi.it>\r\n"
                "MIME-Version: 1.0\r\n"
                "Content-Type: text/plain; charset=utf-8\r\n"
                "Content-Transfer-Encoding: 7bit\r\n"
                "\r\n"
                "Buongiorno,\r\nin allegato la fattura.\r\n");
}

TEST_F(MessageWriter, AccentsCommasAndQuotesReachTheReader) {
  Message message = Simple();
  message.from.name = "Società \"Però & C.\", snc";
  message.to = {{"Rossi, Mario", "m@x.it"}, {"Niccolò Aragonés", "n@x.it"}, {"", "solo@x.it"}};
  message.cc = {{R"(A\B "C")", "ab@x.it"}, {"Perché; così <no>", "p@società.it"}};
  message.subject = "Fattura n° 12 — perché è già scaduta, €uro 1.000 \U0001F4C4";
  message.body = "È così.\nFine";
  const ReceivedMessage read = Parsed(message);
  EXPECT_THAT(read.from, ElementsAre(Mailbox{"Società \"Però & C.\", snc", "ditta@rossi.it"}));
  EXPECT_THAT(read.to, ElementsAre(Mailbox{"Rossi, Mario", "m@x.it"}, Mailbox{"Niccolò Aragonés", "n@x.it"},
                                   Mailbox{"", "solo@x.it"}));
  EXPECT_THAT(read.cc, ElementsAre(Mailbox{"A\\B \"C\"", "ab@x.it"},
                                   Mailbox{"Perché; così <no>", "p@xn--societ-nta.it"}));
  EXPECT_EQ(read.subject, message.subject);
  EXPECT_EQ(read.body, "È così.\r\nFine\r\n");
  EXPECT_EQ(read.bodyType, "text/plain");
  EXPECT_EQ(read.bodyCharset, "utf-8");
  EXPECT_EQ(read.Header("Message-ID"), "<prova@rossi.it>");
  EXPECT_EQ(read.date, 1'700'000'000);
}

TEST_F(MessageWriter, EncodedTextIsUtf8Everywhere) {
  Message message = Simple();
  message.from.name = "Città";
  message.subject = "Città";
  message.attachments = {directory_.Write("Città.pdf", "x")};
  std::string bytes = Written(message);
  std::transform(bytes.begin(), bytes.end(), bytes.begin(),
                 [](char c) { return static_cast<char>(std::tolower(c)); });
  EXPECT_EQ(bytes.find("iso-8859"), std::string::npos);
  EXPECT_THAT(bytes, HasSubstr("filename*=utf-8''citt%c3%a0.pdf"));
  EXPECT_THAT(bytes, HasSubstr("from: =?utf-8?"));
  EXPECT_THAT(bytes, HasSubstr("subject: =?utf-8?"));
}

TEST_F(MessageWriter, TextThatLooksEncodedIsShownAsItWasTyped) {
  Message message = Simple();
  message.subject = "vedi =?utf-8?q?x?= e basta";
  EXPECT_EQ(Parsed(message).subject, "vedi =?utf-8?q?x?= e basta");
}

TEST_F(MessageWriter, HtmlIsMarkedAsHtml) {
  Message message = Simple();
  message.html = true;
  message.body = "<html><body>È</body></html><p>firma</p>";
  const ReceivedMessage read = Parsed(message);
  EXPECT_EQ(read.bodyType, "text/html");
  EXPECT_EQ(read.bodyCharset, "utf-8");
  EXPECT_EQ(read.body, "<html><body>È</body></html><p>firma</p>\r\n");
}

TEST_F(MessageWriter, WithoutNamedRecipientsTheHeaderSaysSo) {
  Message message = Simple();
  message.to.clear();
  EXPECT_THAT(Written(message), HasSubstr("\r\nTo: undisclosed-recipients:;\r\n"));
}

TEST_F(MessageWriter, DateAndIdentifierAreMadeWhereNoneAreGiven) {
  Message message = Simple();
  message.messageId.clear();
  message.date.reset();
  std::set<std::string> identifiers;
  for (int i = 0; i < 20; ++i) {
    const ReceivedMessage read = Parsed(message);
    EXPECT_NEAR(static_cast<double>(read.date), static_cast<double>(std::time(nullptr)), 60);
    EXPECT_THAT(read.Header("Message-ID"), testing::MatchesRegex("<[0-9a-f]{32}@rossi\\.it>"));
    identifiers.insert(read.Header("Message-ID"));
  }
  EXPECT_EQ(identifiers.size(), 20U);
}

/// Puts the program elsewhere while it lives.
class Elsewhere {
 public:
  explicit Elsewhere(const char* zone) {
    if (const char* const before = std::getenv("TZ")) before_ = before;
    ::setenv("TZ", zone, 1);
  }
  Elsewhere(const Elsewhere&) = delete;
  Elsewhere& operator=(const Elsewhere&) = delete;
  Elsewhere(Elsewhere&&) = delete;
  Elsewhere& operator=(Elsewhere&&) = delete;
  ~Elsewhere() {
    if (before_) {
      ::setenv("TZ", before_->c_str(), 1);
    } else {
      ::unsetenv("TZ");
    }
    ::tzset();
  }

 private:
  std::optional<std::string> before_;
};

TEST_F(MessageWriter, TheDateIsThatOfThePlaceEvenWhereItChangesMeanwhile) {
  const std::vector<std::pair<const char*, std::string>> places = {
      {"UTC0", "Tue, 14 Nov 2023 22:13:20 +0000"},     {"CET-1", "Tue, 14 Nov 2023 23:13:20 +0100"},
      {"IST-5:30", "Wed, 15 Nov 2023 03:43:20 +0530"}, {"NST3:30", "Tue, 14 Nov 2023 18:43:20 -0330"},
      {"XXX0:15", "Tue, 14 Nov 2023 21:58:20 -0015"},
  };
  for (const auto& [zone, want] : places) {
    const Elsewhere there(zone);
    EXPECT_THAT(Written(Simple()), HasSubstr("\r\nDate: " + want + "\r\n")) << zone;
  }
}

TEST_F(MessageWriter, ThousandsOfRecipientsAreAllNamed) {
  Message message = Simple();
  message.to.clear();
  for (int i = 0; i < 5000; ++i) {
    message.to.push_back({"Cliente n. " + std::to_string(i), "c" + std::to_string(i) + "@x.it"});
  }
  const ReceivedMessage read = Parsed(message);
  ASSERT_EQ(read.to.size(), 5000U);
  EXPECT_EQ(read.to[4999], (Mailbox{"Cliente n. 4999", "c4999@x.it"}));
}

// --- Headers of the caller's own
// -----------------------------------------------------------------------------------

TEST_F(MessageWriter, TheReceiptHeaderKeepsItsBrackets) {
  Message message = Simple();
  message.headers = {{"Disposition-Notification-To", "<ditta@rossi.it>"}};
  EXPECT_THAT(Written(message), HasSubstr("\r\nDisposition-Notification-To: <ditta@rossi.it>\r\n"));
  message.headers = {{"Disposition-Notification-To", "<ditta@società.it>"}};
  EXPECT_THAT(Written(message), HasSubstr("\r\nDisposition-Notification-To: <ditta@xn--societ-nta.it>\r\n"));
}

TEST_F(MessageWriter, OwnHeadersAreEncodedAndFolded) {
  Message message = Simple();
  message.headers = {{"X-Priority", "1"}, {"X-Nota", "perché no"}, {"X-Lunga", std::string(5000, 'x')}};
  const ReceivedMessage read = Parsed(message);
  EXPECT_EQ(read.Header("X-Priority"), "1");
  EXPECT_EQ(read.Header("X-Nota"), "perché no");
  EXPECT_EQ(read.Header("X-Lunga"), std::string(5000, 'x'));
}

TEST_F(MessageWriter, ALineEndInAHeaderValueMakesNoNewHeader) {
  Message message = Simple();
  message.headers = {{"X-Nota", "uno\r\nBcc: spia@x.it\r\n\r\ncorpo"}};
  message.subject = "due\r\nBcc: spia@x.it";
  message.from.name = "tre\r\nBcc: spia@x.it";
  const ReceivedMessage read = Parsed(message);
  EXPECT_EQ(read.Header("Bcc"), "");
  EXPECT_EQ(read.Header("X-Nota"), "uno  Bcc: spia@x.it    corpo");
  EXPECT_EQ(read.subject, "due  Bcc: spia@x.it");
  EXPECT_THAT(read.from, ElementsAre(Mailbox{"tre  Bcc: spia@x.it", "ditta@rossi.it"}));
}

TEST(HeaderNames, ThatAreNoneOrTheMessagesOwnAreRefused) {
  for (const std::string name :
       {"", "X Nota", "X-Nota:", "X-N\r\nBcc", "X-N\xc3\xa0", "From", "to", "CC", "bcc", "Subject", "Date",
        "message-id", "MIME-Version", "Content-Type", "content-disposition"}) {
    Message message = Simple();
    message.headers = {{name, "x"}};
    EXPECT_THROW(static_cast<void>(Written(message)), host::Errore) << name;
  }
  Message message = Simple();
  message.headers = {{std::string(77, 'X'), "x"}};
  EXPECT_THROW(static_cast<void>(Written(message)), host::Errore);
}

// --- Hostile texts
// -------------------------------------------------------------------------------------------------

struct HostileText {
  const char* label;
  std::string text;
};

void PrintTo(const HostileText& test, std::ostream* out) {
  *out << test.label;
}

class HostileTexts : public testing::TestWithParam<HostileText> {};

TEST_P(HostileTexts, InEveryTextMemberLeaveASoundMessage) {
  const std::string& text = GetParam().text;
  Message message = Simple();
  const std::string shorter = text.substr(0, 20'000);  // Python takes seconds for each megabyte of addresses
  message.from.name = text;
  message.to = {{shorter, "m@x.it"}};
  message.cc = {{shorter, "c@x.it"}};
  message.subject = text;
  message.body = text;
  message.headers = {{"X-Nota", text}, {"Disposition-Notification-To", text}};
  message.messageId = "prova@rossi.it";
  const std::string bytes = Written(message);
  ExpectCleanWire(bytes);

  support::TempDir directory;
  const ReceivedMessage read = support::ReadMessage(directory.Write("m.eml", bytes), directory.Path());
  std::vector<std::string> names;
  for (const auto& header : read.headers) names.push_back(header.first);
  EXPECT_THAT(names, ElementsAre("From", "To", "Cc", "Subject", "Date", "Message-ID", "X-Nota",
                                 "Disposition-Notification-To", "MIME-Version", "Content-Type",
                                 "Content-Transfer-Encoding"));
  const auto shownAs = [](const std::string& given) { return std::string(text::Trim(HeaderSafe(given))); };
  const std::string shown = shownAs(text);
  EXPECT_TRUE(read.subject == shown) << read.subject.substr(0, 200);
  EXPECT_TRUE(read.Header("X-Nota") == shown) << read.Header("X-Nota").substr(0, 200);
  EXPECT_TRUE(read.from == std::vector<Mailbox>({{shown, "ditta@rossi.it"}}));
  EXPECT_TRUE(read.to == std::vector<Mailbox>({{shownAs(shorter), "m@x.it"}}));
  EXPECT_TRUE(read.cc == std::vector<Mailbox>({{shownAs(shorter), "c@x.it"}}));
}

TEST(NameSafeText, TurnsNobodysNameRoundAndHidesNothing) {
  EXPECT_EQ(NameSafe("Rossi\xE2\x80\x8F\xD8\x9C\xE2\x80\x8B Mario\r\n"), "Rossi___ Mario  ");
  EXPECT_EQ(NameSafe("città \xE2\x80\x8D \xff"), "città \xE2\x80\x8D \xEF\xBF\xBD");
  EXPECT_EQ(HeaderSafe("\xE2\x80\x8F"), "\xE2\x80\x8F");
}

TEST(HeaderSafeText, HasNoControlCharactersAndIsValid) {
  EXPECT_EQ(HeaderSafe("a\r\nb\tc\x1b\x7f"), "a  b c  ");
  EXPECT_EQ(HeaderSafe(std::string("a\0b", 3)), "a b");
  EXPECT_EQ(HeaderSafe("a\xc2\x85"
                       "b\xe2\x80\xa8"
                       "c\xe2\x80\xa9"),
            "a b c ");
  EXPECT_EQ(HeaderSafe("città €\xff\xc3("), "città €\xEF\xBF\xBD\xEF\xBF\xBD(");
  EXPECT_EQ(HeaderSafe("\xc2\xe2\x80"), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
}

std::string Repeated(const std::string& unit, std::size_t size) {
  std::string text;
  while (text.size() < size) text += unit;
  return text;
}

INSTANTIATE_TEST_SUITE_P(
    Table, HostileTexts,
    testing::Values(HostileText{"Empty", ""}, HostileText{"Blanks", "   "},
                    HostileText{"LineEnds", "a\r\nBcc: x@y.it\r\n\r\nb\nc\rd\r\n"},
                    HostileText{"LineEndsFirst", "\r\n\r\n.\r\n"},
                    HostileText{"Nul", std::string("a\0b\0", 4)},
                    HostileText{"Controls", "a\x01\x08\x0b\x1b[31m\x7f"},
                    HostileText{"Utf8Controls",
                                "a\xc2\x85"
                                "b\xe2\x80\xa8"
                                "c\xe2\x80\xa9"},
                    HostileText{"InvalidUtf8", "a\xff\xfe\xc3(\xe2\x82"},
                    HostileText{"Overlong", "\xc0\xaf\xed\xa0\x80\xf8\x88\x80\x80\x80"},
                    HostileText{"Quotes", "\"'\\\"\\\\\"\";<>(),:@[]"},
                    HostileText{"Brackets", "<<a@b>>;<c@d>"},
                    HostileText{"EncodedWord", "=?utf-8?q?=0d=0aBcc:_x@y.it?="},
                    HostileText{"EncodedWordUnknown", "=?x-ignoto?q?a?= =?utf-8?b?!?="},
                    HostileText{"SixtyFourKilobytesOfOneWord", std::string(1 << 16, 'x')},
                    HostileText{"OneMegabyteOfWords", Repeated("parola ", 1 << 20)},
                    HostileText{"SixtyFourKilobytesOfAccents", Repeated("è", 1 << 16)},
                    HostileText{"SixtyFourKilobytesOfEncodedWords", Repeated("=?utf-8?q?x?= ", 1 << 16)},
                    HostileText{"SixtyFourKilobytesOfDots", Repeated(".", 1 << 16)},
                    HostileText{"SixtyFourKilobytesOfQuotes", Repeated("\"", 1 << 16)},
                    HostileText{"OneMegabyteOfLines", Repeated(".\r\n", 1 << 20)},
                    HostileText{"OneMegabyteOfNul", std::string(1 << 20, '\0')}),
    [](const auto& test) { return test.param.label; });

TEST(UnfitAddresses, NeverReachAHeader) {
  for (const std::string address :
       {"", "a b@x.it", "a@x.it\r\nBcc: b@y.it", "a@x.it>, <b@y.it", "a,b@x.it"}) {
    Message message = Simple();
    message.to = {{"", address}};
    EXPECT_THROW(static_cast<void>(Written(message)), host::Errore) << address;
  }
}

// --- Bodies
// --------------------------------------------------------------------------------------------------------

struct BodyCase {
  const char* label;
  std::string body;
  std::string want;
  const char* encoding;
};

void PrintTo(const BodyCase& test, std::ostream* out) {
  *out << test.label;
}

class Bodies : public MessageWriter, public testing::WithParamInterface<BodyCase> {};

TEST_P(Bodies, ArriveWithCanonicalLineEnds) {
  Message message = Simple();
  message.body = GetParam().body;
  const ReceivedMessage read = Parsed(message);
  EXPECT_EQ(read.body, GetParam().want);
  EXPECT_EQ(read.Header("Content-Transfer-Encoding"), GetParam().encoding);
}

INSTANTIATE_TEST_SUITE_P(
    Table, Bodies,
    testing::Values(
        BodyCase{"Empty", "", "", "7bit"}, BodyCase{"UnixLines", "a\nb\n", "a\r\nb\r\n", "7bit"},
        BodyCase{"DosLines", "a\r\nb\r\n", "a\r\nb\r\n", "7bit"},
        BodyCase{"OldMacLines", "a\rb", "a\r\nb\r\n", "7bit"},
        BodyCase{"MixedLines", "a\n\r\n\rb\r\r\nc", "a\r\n\r\n\r\nb\r\n\r\nc\r\n", "7bit"},
        BodyCase{"BlanksAtLineEnds", "a  \r\nb\t\r\n", "a  \r\nb\t\r\n", "7bit"},
        BodyCase{"FewAccents", "Perché questo è quanto, saluti\n", "Perché questo è quanto, saluti\r\n",
                 "quoted-printable"},
        BodyCase{"BlanksAtLineEndsWithAccents", "Perché questo è quanto  \nsaluti \n",
                 "Perché questo è quanto  \r\nsaluti \r\n", "quoted-printable"},
        BodyCase{"EqualSigns", "Perché questo x=3D\n", "Perché questo x=3D\r\n", "quoted-printable"},
        BodyCase{"MostlyAccents", "èèèè€€€€\nàà", "èèèè€€€€\r\nàà\r\n", "base64"},
        BodyCase{"Longest7bitLine", std::string(998, 'a') + "\nb", std::string(998, 'a') + "\r\nb\r\n",
                 "7bit"},
        BodyCase{"TooLongLine", std::string(999, 'a'), std::string(999, 'a') + "\r\n", "quoted-printable"},
        BodyCase{"Dots", ".\n..\n.a\n.\r\n", ".\r\n..\r\n.a\r\n.\r\n", "7bit"},
        BodyCase{"Nul", std::string("a\0b", 3),
                 "a\xEF\xBF\xBD"
                 "b\r\n",
                 "base64"},
        BodyCase{"InvalidUtf8", "Gentile cliente, citt\xe0\n", "Gentile cliente, citt\xEF\xBF\xBD\r\n",
                 "quoted-printable"}),
    [](const auto& test) { return test.param.label; });

TEST_F(MessageWriter, DotsAreDoubledOnlyWhereTheTransportAsks) {
  Message message = Simple();
  message.body = ".\r\n.a\r\nb.\r\n..\r\n";
  EXPECT_THAT(Written(message), testing::EndsWith("\r\n\r\n.\r\n.a\r\nb.\r\n..\r\n"));
  EXPECT_THAT(Written(message, {.dotStuffing = true, .trailer = ".\r\n"}),
              testing::EndsWith("\r\n\r\n..\r\n..a\r\nb.\r\n...\r\n.\r\n"));
}

TEST_F(MessageWriter, ADotInFrontOfAHeaderIsDoubledToo) {
  Message message = Simple();
  message.headers = {{".X", "uno"}, {"X-Due", "."}};
  EXPECT_THAT(Written(message, {.dotStuffing = true, .trailer = {}}),
              HasSubstr("\r\n..X: uno\r\nX-Due: .\r\n"));
  EXPECT_THAT(Written(message), HasSubstr("\r\n.X: uno\r\nX-Due: .\r\n"));
}

TEST_F(MessageWriter, DotsAreDoubledAcrossTheBordersOfPieces) {
  Message message = Simple();
  std::string lines;
  for (int i = 0; i < 70'000; ++i) lines += ".\r\n";
  message.body = lines;
  const std::string plain = Written(message);
  const std::string stuffed = Written(message, {.dotStuffing = true, .trailer = ""});
  EXPECT_EQ(stuffed.size(), plain.size() + 70'000);
}

// --- Attachments
// ---------------------------------------------------------------------------------------------------

TEST_F(MessageWriter, AttachmentsArriveByteByByte) {
  std::string everyByte;
  for (int i = 0; i < 100'000; ++i) everyByte += static_cast<char>(i * 7 % 256);
  const std::vector<std::pair<std::string, std::string>> files = {
      {"fattura.pdf", everyByte},
      {"vuoto.txt", ""},
      {"righe.txt", "a\nb\r\nc\rd\n.\r\n..\n"},
      {"Fattura n° 12 \"perché\" ; è molto lunga, con tanti caratteri accentati così da spezzare il nome.pdf",
       "%PDF-1.4"},
      {"dati.csv", "a;b\n"},
      {"pagina.html", "<p>\n"},
      {"posta.eml", "From: x\n\nFrom y\n"},
      {"' percento %41.p7m", std::string(1, '\0')}};
  Message message = Simple();
  for (const auto& [name, content] : files) message.attachments.emplace_back(directory_.Write(name, content));
  const ReceivedMessage read = Parsed(message);
  ASSERT_EQ(read.attachments.size(), files.size());
  for (std::size_t i = 0; i < files.size(); ++i) {
    EXPECT_EQ(read.attachments[i].name, files[i].first);
    EXPECT_EQ(ReadFile(read.attachments[i].content), files[i].second) << files[i].first;
  }
  EXPECT_EQ(read.attachments[0].type, "application/pdf");
  EXPECT_EQ(read.body, "Buongiorno,\r\nin allegato la fattura.\r\n");
}

TEST_F(MessageWriter, AHostileFileNameMakesNoHeader) {
  Message message = Simple();
  message.attachments = {directory_.Write("a\r\nBcc: x@y.it\r\n\r\n\x01\xff\"b\\.pdf", "x")};
  const ReceivedMessage read = Parsed(message);
  ASSERT_EQ(read.attachments.size(), 1U);
  EXPECT_EQ(read.attachments[0].name, "a  Bcc: x@y.it     \xEF\xBF\xBD\"b_.pdf");
  EXPECT_EQ(read.Header("Bcc"), "");
}

TEST_F(MessageWriter, AFileTravelsUnderTheNameThatItIsGiven) {
  Message message = Simple();
  const std::string path = directory_.Write("a.bin", "x");
  message.attachments = {Attachment(path, "Perché.pdf"), Attachment(path, "x/../..\\b.txt"),
                         Attachment(path)};
  const ReceivedMessage read = Parsed(message);
  ASSERT_EQ(read.attachments.size(), 3U);
  EXPECT_EQ(read.attachments[0].name, "Perché.pdf");
  EXPECT_EQ(read.attachments[0].type, "application/pdf");
  EXPECT_EQ(read.attachments[1].name, ".._b.txt");
  EXPECT_EQ(read.attachments[2].name, "a.bin");
}

TEST_F(MessageWriter, ASenderThatIsLeftToTheTransportStandsNowhere) {
  Message message = Simple();
  message.from = {};
  message.messageId = "";
  const std::string bytes = Written(message);
  EXPECT_EQ(bytes.find("From:"), std::string::npos);
  EXPECT_NE(bytes.find("@localhost>\r\n"), std::string::npos);
  message.from.name = "Ditta Rossi";
  EXPECT_THROW(static_cast<void>(Written(message)), host::Errore);
}

int ErrorWhileWriting(const Message& message, const ByteSink& sink) {
  return fakes::NumeroDi([&] { WriteMessage(message, sink); });
}

TEST_F(MessageWriter, AFileThatHasVanishedEndsTheWriting) {
  Message message = Simple();
  message.attachments = {directory_.Write("a.bin", std::string(200'000, 'a')),
                         directory_.Write("b.bin", "b")};
  std::string bytes;
  const int number = ErrorWhileWriting(message, [&](std::string_view piece) {
    std::filesystem::remove(directory_.Path() / "b.bin");
    bytes += piece;
  });
  EXPECT_EQ(number, 53);
  EXPECT_EQ(bytes.find("--\r\n"), std::string::npos) << "a truncated message was closed like a whole message";
}

TEST_F(MessageWriter, AFileThatShrinksMeanwhileEndsTheWriting) {
  Message message = Simple();
  message.attachments = {directory_.Write("a.bin", std::string(2'000'000, 'a'))};
  EXPECT_EQ(
      ErrorWhileWriting(
          message, [&](std::string_view) { std::filesystem::resize_file(directory_.Path() / "a.bin", 10); }),
      75);
}

TEST_F(MessageWriter, AFileThatHasBecomeADirectoryEndsTheWriting) {
  Message message = Simple();
  message.attachments = {directory_.Path().string()};
  EXPECT_EQ(ErrorWhileWriting(message, [](std::string_view) {}), 75);
}

TEST_F(MessageWriter, WhatTheSinkThrowsComesOutAndNothingFollows) {
  Message message = Simple();
  message.attachments = {directory_.Write("a.bin", std::string(1'000'000, 'a'))};
  int pieces = 0;
  EXPECT_THROW(WriteMessage(message,
                            [&](std::string_view) {
                              if (++pieces == 3) throw std::length_error("basta");
                            }),
               std::length_error);
  EXPECT_EQ(pieces, 3);
}

TEST_F(MessageWriter, PreparingBeforehandChangesNothing) {
  Message message = Simple();
  message.body += ".\r\nfine\r\n";
  const WriteOptions options{.dotStuffing = true, .trailer = ".\r\n"};
  OutgoingMessage prepared(message, options);
  prepared.Prepare();
  prepared.Prepare();
  std::string bytes;
  prepared.WriteTo([&](std::string_view piece) { bytes += piece; });
  EXPECT_EQ(bytes, Written(message, options));
  EXPECT_THAT(bytes, testing::EndsWith("\r\n..\r\nfine\r\n.\r\n"));
}

TEST_F(MessageWriter, ALargeBodyLeavesInPieces) {
  Message message = Simple();
  for (int i = 0; i < 5000; ++i) message.body += "." + std::to_string(i) + " righe da mille e una notte\n";
  std::string bytes;
  std::size_t largest = 0;
  WriteMessage(message,
               [&](std::string_view piece) {
                 EXPECT_FALSE(piece.empty());
                 largest = std::max(largest, piece.size());
                 bytes += piece;
               },
               {.dotStuffing = true, .trailer = ".\r\n"});
  EXPECT_EQ(largest, kPieceBytes);
  EXPECT_THAT(bytes, testing::EndsWith("\r\n..4999 righe da mille e una notte\r\n.\r\n"));
}

TEST_F(MessageWriter, WhatFailsInPreparingIsRaisedByTheWriting) {
  Message message = Simple();
  message.headers = {{"Bcc", "x@y.it"}};
  OutgoingMessage prepared(message);
  prepared.Prepare();
  int pieces = 0;
  EXPECT_THROW(prepared.WriteTo([&](std::string_view) { ++pieces; }), host::Errore);
  EXPECT_EQ(pieces, 0);
}

TEST_F(MessageWriter, PreparingOpensNoFile) {
  Message message = Simple();
  message.attachments = {(directory_.Path() / "a.bin").string()};
  OutgoingMessage prepared(message);
  prepared.Prepare();
  directory_.Write("a.bin", "foobar");
  std::string bytes;
  prepared.WriteTo([&](std::string_view piece) { bytes += piece; });
  EXPECT_THAT(bytes, HasSubstr("\r\nZm9vYmFy\r\n"));
}

/// Peak of the resident memory since it was last reset, in kB.
long PeakMemory() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.rfind("VmHWM:", 0) == 0) return std::stol(line.substr(6));
  }
  return -1;
}

TEST_F(MessageWriter, MemoryStaysFlatWhateverAnAttachmentWeighs) {
  const std::string path = directory_.MakeLarge("grande.bin", 300U << 20U);
  Message message = Simple();
  message.attachments = {path};
  static_cast<void>(Written(Simple()));
  std::ofstream("/proc/self/clear_refs") << "5";
  const long before = PeakMemory();
  std::size_t total = 0;
  WriteMessage(message, [&](std::string_view piece) { total += piece.size(); });
  EXPECT_GT(total, 400U << 20);
  EXPECT_LT(PeakMemory() - before, 8 * 1024);
}

}  // namespace
}  // namespace orve::adapters::mime
