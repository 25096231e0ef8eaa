// Deliveries to real servers; what arrives is read by Python's email package.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "adapters/smtp/name_lookup.h"
#include "adapters/smtp/outgoing.h"
#include "orve-mailserver/host/errore.h"
#include "smtp/smtp_component.h"
#include "support/certificates.h"
#include "support/smtp_server.h"
#include "support/temp_dir.h"

namespace orve::adapters::smtp {
namespace {

using support::Certificate;
using support::Mailbox;
using support::ReadFile;
using support::ReceivedMessage;
using support::SmtpServer;
using support::SmtpServerOptions;
using support::TempDir;
using support::TestAuthority;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(Delivery, EveryMemberReachesTheReader) {
  const SmtpServer server;
  const TempDir files;
  std::string bytes;
  for (int i = 0; i < 200'000; ++i) bytes += static_cast<char>(i * 31 % 256);
  SmtpOptions options = Quick();
  options.clock = [] { return std::chrono::system_clock::from_time_t(1'700'000'000); };
  options.newMessageId = [] { return std::string("numero.uno@rossi.it"); };

  SmtpComponent component(options);
  component.ClearRecipient();
  component.ServerAddr("127.0.0.1");
  component.ServerPort(server.Port16());
  component.ConnectType(0);
  component.From("Società Però & C., snc");
  component.FromAddr("<ditta@rossi.it>");
  component.AddRecipientEx("\"Rossi, Mario\" <mario@x.it>;Niccolò Bruni <nic@x.it>Terzo <terzo@x.it>;", 0);
  component.AddRecipientEx("ditta@rossi.it;Copia <copia@x.it>; <>", 1);
  component.AddRecipientEx("Nascosto <nascosto@x.it>", 2);
  component.Subject("Fattura n° 12 — perché è scaduta");
  component.BodyText("Gentile Niccolò,\r\n.\r\nin allegato la fattura.\nSaluti\n");
  component.AddHeader("Disposition-Notification-To", component.FromAddr());
  component.AddHeader("X-Priority", "1");
  component.AddAttachment(files.Write("fattura n° 12, à.pdf", bytes));
  component.AddAttachment(files.Write("vuoto.txt", ""));
  ASSERT_EQ(Sent(component), -1) << component.Fine().motivo;

  const ReceivedMessage got = server.OnlyMessage();
  EXPECT_THAT(got.defects, IsEmpty());
  EXPECT_EQ(got.sender, "ditta@rossi.it");
  EXPECT_THAT(got.recipients, ElementsAre("mario@x.it", "nic@x.it", "terzo@x.it", "ditta@rossi.it",
                                          "copia@x.it", "nascosto@x.it"));
  EXPECT_THAT(got.from, ElementsAre(Mailbox{"Società Però & C., snc", "ditta@rossi.it"}));
  EXPECT_THAT(got.to, ElementsAre(Mailbox{"Rossi, Mario", "mario@x.it"}, Mailbox{"Niccolò Bruni", "nic@x.it"},
                                  Mailbox{"Terzo", "terzo@x.it"}));
  EXPECT_THAT(got.cc, ElementsAre(Mailbox{"", "ditta@rossi.it"}, Mailbox{"Copia", "copia@x.it"}));
  EXPECT_EQ(got.subject, "Fattura n° 12 — perché è scaduta");
  EXPECT_EQ(got.body, "Gentile Niccolò,\r\n.\r\nin allegato la fattura.\r\nSaluti\r\n");
  EXPECT_EQ(got.bodyType, "text/plain");
  EXPECT_EQ(got.bodyCharset, "utf-8");
  EXPECT_EQ(got.date, 1'700'000'000);
  EXPECT_EQ(got.Header("Message-ID"), "<numero.uno@rossi.it>");
  EXPECT_EQ(got.Header("Disposition-Notification-To"), "<ditta@rossi.it>");
  EXPECT_EQ(got.Header("X-Priority"), "1");
  EXPECT_EQ(got.hello, "prova.example.test");
  EXPECT_FALSE(got.encrypted);
  ASSERT_EQ(got.attachments.size(), 2U);
  EXPECT_EQ(got.attachments[0].name, "fattura n° 12, à.pdf");
  EXPECT_EQ(got.attachments[0].type, "application/pdf");
  EXPECT_TRUE(ReadFile(got.attachments[0].content) == bytes);
  EXPECT_EQ(got.attachments[1].name, "vuoto.txt");
  EXPECT_EQ(ReadFile(got.attachments[1].content), "");

  const std::string raw = ReadFile(got.file);
  EXPECT_EQ(raw.find("nascosto"), std::string::npos);
  EXPECT_EQ(raw.find("Bcc"), std::string::npos);
}

TEST(Delivery, HtmlKeepsWhatStandsAfterTheClosingTag) {
  const SmtpServer server;
  const auto component = Outgoing(server.Port16());
  component->BodyFormat(1);
  component->BodyText("<html><body>È pronta</body></html><p>Ufficio vendite</p>");
  ASSERT_EQ(Sent(*component), -1);
  const ReceivedMessage got = server.OnlyMessage();
  EXPECT_EQ(got.bodyType, "text/html");
  EXPECT_EQ(got.body, "<html><body>È pronta</body></html><p>Ufficio vendite</p>\r\n");
}

TEST(Delivery, OnlyBlindCopiesMakeAMessageWithoutNamedRecipients) {
  const SmtpServer server;
  const auto component = Outgoing(server.Port16());
  component->ClearRecipient();
  component->AddRecipientEx("", 0);
  component->AddRecipientEx("A <a@x.it>;B <b@x.it>", 2);
  ASSERT_EQ(Sent(*component), -1);
  const ReceivedMessage got = server.OnlyMessage();
  EXPECT_THAT(got.recipients, ElementsAre("a@x.it", "b@x.it"));
  EXPECT_THAT(got.to, IsEmpty());
  EXPECT_EQ(got.Header("To"), "undisclosed-recipients:;");
}

TEST(Delivery, AnAddressNamedTwiceGetsOneCopy) {
  const SmtpServer server;
  const auto component = Outgoing(server.Port16());
  component->ClearRecipient();
  component->AddRecipientEx("A <a@x.it>;B <a@X.IT>;C <A@x.it>", 0);
  component->AddRecipientEx("a@x.it", 1);
  ASSERT_EQ(Sent(*component), -1);
  const ReceivedMessage got = server.OnlyMessage();
  EXPECT_THAT(got.recipients, ElementsAre("a@x.it", "A@x.it"));
  EXPECT_EQ(got.to.size(), 3U);
}

TEST(Delivery, ASecondSubmissionIsAnotherMessage) {
  const SmtpServer server;
  const auto component = Outgoing(server.Port16());
  EXPECT_EQ(Sent(*component), -1);
  EXPECT_EQ(Sent(*component), -1);
  const std::vector<ReceivedMessage> got = server.Messages();
  ASSERT_EQ(got.size(), 2U);
  EXPECT_NE(got[0].Header("Message-ID"), got[1].Header("Message-ID"));
}

TEST(Delivery, AThousandRecipientsGoInGroups) {
  for (const bool pipelining : {false, true}) {
    SmtpServerOptions options;
    if (pipelining) options.extensions = {"PIPELINING"};
    const SmtpServer server(options);
    const auto component = Outgoing(server.Port16());
    component->ClearRecipient();
    std::string list;
    for (int i = 0; i < 1000; ++i) {
      list += "Cliente n. " + std::to_string(i) + " <c" + std::to_string(i) + "@x.it>;";
    }
    component->AddRecipientEx(list, 0);
    ASSERT_EQ(Sent(*component), -1) << component->Fine().motivo;
    const ReceivedMessage got = server.OnlyMessage();
    ASSERT_EQ(got.recipients.size(), 1000U);
    EXPECT_EQ(got.recipients.back(), "c999@x.it");
  }
}

// --- Refusals
// ------------------------------------------------------------------------------------------------------

TEST(Refusal, OfOneRecipientKeepsTheMessageFromAll) {
  for (const bool pipelining : {false, true}) {
    SmtpServerOptions options;
    options.refused = {"no@x.it"};
    if (pipelining) options.extensions = {"PIPELINING"};
    const SmtpServer server(options);
    const auto component = Outgoing(server.Port16());
    component->AddRecipientEx("No <no@x.it>;Anna <anna@x.it>", 2);
    EXPECT_EQ(Sent(*component), 4);
    EXPECT_EQ(component->Fine().motivo, "RCPT TO:<no@x.it>: 550 5.1.1 Casella inesistente");
    EXPECT_EQ(server.Count(), 0U);
  }
}

TEST(Refusal, OfTheSizeIsAFailureOfTheData) {
  SmtpServerOptions options;
  options.sizeLimit = 100'000;
  const SmtpServer server(options);
  const TempDir files;
  const auto component = Outgoing(server.Port16());
  component->AddAttachment(files.Write("grande.bin", std::string(500'000, 'x')));
  EXPECT_EQ(Sent(*component), 5);
  EXPECT_EQ(server.Count(), 0U);
}

TEST(Refusal, OfTheMessageLeavesTheComponentUsable) {
  SmtpServerOptions options;
  options.refused = {"no@x.it"};
  const SmtpServer server(options);
  const auto component = Outgoing(server.Port16());
  component->ClearRecipient();
  component->AddRecipientEx("No <no@x.it>", 0);
  EXPECT_EQ(Sent(*component), 4);
  component->ClearRecipient();
  component->AddRecipientEx("Anna <anna@x.it>", 0);
  EXPECT_EQ(Sent(*component), -1);
  EXPECT_EQ(component->Fine().motivo, "");
  EXPECT_THAT(server.OnlyMessage().recipients, ElementsAre("anna@x.it"));
}

// --- Accents in addresses
// ------------------------------------------------------------------------------------------

TEST(AccentsInAddresses, DomainsTravelInTheirAsciiForm) {
  const SmtpServer server;
  const auto component = Outgoing(server.Port16());
  component->FromAddr("<ditta@però.it>");
  component->ClearRecipient();
  component->AddRecipientEx("A <a@società.it>", 0);
  ASSERT_EQ(Sent(*component), -1) << component->Fine().motivo;
  const ReceivedMessage got = server.OnlyMessage();
  EXPECT_EQ(got.sender, "ditta@xn--per-ena.it");
  EXPECT_THAT(got.recipients, ElementsAre("a@xn--societ-nta.it"));
  EXPECT_THAT(got.to, ElementsAre(Mailbox{"A", "a@xn--societ-nta.it"}));
  EXPECT_THAT(got.Header("Message-ID"), testing::EndsWith("@xn--per-ena.it>"));
}

TEST(AccentsInAddresses, InALocalPartNeedAServerThatTakesThem) {
  const SmtpServer server;
  const auto recipient = Outgoing(server.Port16());
  recipient->AddRecipientEx("N <nicolò@x.it>", 1);
  EXPECT_EQ(Sent(*recipient), 4);
  const auto sender = Outgoing(server.Port16());
  sender->FromAddr("<nicolò@x.it>");
  EXPECT_EQ(Sent(*sender), 3);
  EXPECT_EQ(server.Count(), 0U);
}

TEST(AccentsInAddresses, InALocalPartAreSentWhereTheyAreTaken) {
  SmtpServerOptions options;
  options.smtpUtf8 = true;
  const SmtpServer server(options);
  const auto component = Outgoing(server.Port16());
  component->AddRecipientEx("N <nicolò@x.it>", 1);
  ASSERT_EQ(Sent(*component), -1) << component->Fine().motivo;
  const ReceivedMessage got = server.OnlyMessage();
  EXPECT_EQ(got.mailOptions, "SMTPUTF8");
  EXPECT_THAT(got.recipients, ElementsAre("mario@bianchi.it", "nicolò@x.it"));
}

// --- Delivery notifications
// ----------------------------------------------------------------------------------------

TEST(DeliveryNotifications, AreAskedForWhereTheyAreOffered) {
  SmtpServerOptions options;
  options.extensions = {"DSN"};
  const SmtpServer server(options);
  const auto component = Outgoing(server.Port16());
  component->AddRecipientEx("Anna <anna@x.it>", 2);
  component->DeliveryNotification(14);
  ASSERT_EQ(Sent(*component), -1) << component->Fine().motivo;
  const ReceivedMessage got = server.OnlyMessage();
  EXPECT_EQ(got.mailOptions, "RET=HDRS");
  EXPECT_THAT(got.recipientOptions,
              ElementsAre("NOTIFY=SUCCESS,FAILURE,DELAY", "NOTIFY=SUCCESS,FAILURE,DELAY"));
}

TEST(DeliveryNotifications, AreNotAskedForWithoutNeedOrOffer) {
  SmtpServerOptions options;
  options.extensions = {"DSN"};
  const SmtpServer offering(options);
  EXPECT_EQ(Sent(*Outgoing(offering.Port16())), -1);
  EXPECT_EQ(offering.OnlyMessage().mailOptions, "");
  const SmtpServer silent;
  const auto component = Outgoing(silent.Port16());
  component->DeliveryNotification(14);
  EXPECT_EQ(Sent(*component), -1) << component->Fine().motivo;
  EXPECT_EQ(silent.OnlyMessage().mailOptions, "");
  EXPECT_THAT(silent.OnlyMessage().recipientOptions, ElementsAre(""));
}

// --- Encryption
// ----------------------------------------------------------------------------------------------------

struct TlsCase {
  const char* label;
  const char* tls;          // what the server speaks
  const char* certificate;  // good, altro (another name) or scaduto (expired)
  bool trusted;             // the authority is known
  bool verified;
  std::int32_t want;
};

void PrintTo(const TlsCase& test, std::ostream* out) {
  *out << test.label;
}

class Tls : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    directory = std::make_unique<TempDir>();
    authority = std::make_unique<TestAuthority>(directory->Path());
    good = authority->Issue("buono", "DNS:mail.example.test");
    other = authority->Issue("altro", "DNS:altro.example.test");
    expired = authority->Issue("scaduto", "DNS:mail.example.test", true);
  }
  static void TearDownTestSuite() {
    authority.reset();
    directory.reset();
  }

  static SmtpServerOptions Serving(const std::string& tls, const Certificate& certificate) {
    SmtpServerOptions options;
    options.tls = tls;
    options.certificate = certificate.certificate;
    options.key = certificate.key;
    return options;
  }

  static std::unique_ptr<SmtpComponent> Encrypted(const SmtpServer& server, const std::string& tls,
                                                  SmtpOptions options = Quick(), bool trusted = true) {
    if (trusted) options.caFile = authority->CaFile();
    if (tls == "implicit") options.implicitTlsPorts = {static_cast<std::uint16_t>(server.Port())};
    auto component = Outgoing(server.Port16(), options);
    component->ServerAddr("mail.example.test");
    component->ConnectType(1);
    return component;
  }

  static inline std::unique_ptr<TempDir> directory;
  static inline std::unique_ptr<TestAuthority> authority;
  static inline Certificate good, other, expired;
};

class TlsCases : public Tls, public testing::WithParamInterface<TlsCase> {};

TEST_P(TlsCases, DecideWhetherTheMessageLeaves) {
  const TlsCase& test = GetParam();
  const std::string kind = test.certificate;
  const SmtpServer server(Serving(test.tls, kind == "good" ? good : kind == "other" ? other : expired));
  SmtpOptions options = Quick();
  options.verifyCertificates = test.verified;
  const auto component = Encrypted(server, test.tls, options, test.trusted);
  EXPECT_EQ(Sent(*component), test.want) << component->Fine().motivo;
  EXPECT_EQ(server.Count(), test.want == -1 ? 1U : 0U);
  if (test.want == -1) {
    EXPECT_TRUE(server.OnlyMessage().encrypted);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Table, TlsCases,
    testing::Values(TlsCase{"Starttls", "starttls", "good", true, true, -1},
                    TlsCase{"Implicit", "implicit", "good", true, true, -1},
                    TlsCase{"StarttlsUnknownAuthority", "starttls", "good", false, true, 0},
                    TlsCase{"ImplicitUnknownAuthority", "implicit", "good", false, true, 0},
                    TlsCase{"StarttlsWrongName", "starttls", "other", true, true, 0},
                    TlsCase{"ImplicitWrongName", "implicit", "other", true, true, 0},
                    TlsCase{"StarttlsExpired", "starttls", "expired", true, true, 0},
                    TlsCase{"ImplicitExpired", "implicit", "expired", true, true, 0},
                    TlsCase{"UncheckedUnknownAuthority", "starttls", "good", false, false, -1},
                    TlsCase{"UncheckedWrongName", "implicit", "other", true, false, -1},
                    TlsCase{"UncheckedExpired", "starttls", "expired", true, false, -1}),
    [](const auto& test) { return test.param.label; });

TEST_F(Tls, IsNeverGivenUpWhereTheServerLacksIt) {
  const SmtpServer server;
  const auto component = Encrypted(server, "starttls");
  component->UserName("utente");
  component->Password("segreta");
  EXPECT_EQ(Sent(*component), 0);
  EXPECT_EQ(server.Count(), 0U);
}

TEST_F(Tls, IsNotUsedOnAPlainConnection) {
  const SmtpServer server(Serving("starttls", good));
  const auto component = Encrypted(server, "starttls");
  component->ConnectType(0);
  EXPECT_EQ(Sent(*component), -1);
  EXPECT_FALSE(server.OnlyMessage().encrypted);
}

TEST_F(Tls, WithTheFirstByteIsNoMatchForStarttls) {
  const SmtpServer starttls(Serving("starttls", good));
  EXPECT_EQ(Sent(*Encrypted(starttls, "implicit")), 0);
  const SmtpServer implicit(Serving("implicit", good));
  SmtpOptions options = Quick();
  options.connectTimeout = std::chrono::seconds(2);
  EXPECT_EQ(Sent(*Encrypted(implicit, "starttls", options)), 0);
}

TEST_F(Tls, BeginsWithTheFirstByteOnTheStandardPortAlone) {
  EXPECT_THAT(SmtpOptions().implicitTlsPorts, ElementsAre(465));
}

TEST_F(Tls, AnAuthorityFileThatIsMissingGivesZero) {
  const SmtpServer server(Serving("starttls", good));
  SmtpOptions options = Quick();
  options.caFile = "/nulla/qui.pem";
  EXPECT_EQ(Sent(*Encrypted(server, "starttls", options, false)), 0);
}

TEST_F(Tls, AConnectionThatBreaksInTheMiddleEndsTheDeliveryAndNotTheProcess) {
  for (const std::string tls : {"starttls", "implicit"}) {
    SmtpServerOptions serving = Serving(tls, good);
    serving.abortAfter = 1'000'000;
    const SmtpServer server(serving);
    const auto component = Encrypted(server, tls);
    component->AddAttachment(directory->MakeLarge("grande.bin", 20'000'000));
    EXPECT_EQ(Sent(*component), 5);
    EXPECT_EQ(server.Count(), 0U);
  }
}

TEST_F(Tls, WritingToAClosedConnectionDoesNotEndTheProcess) {
  // A broken pipe raises a signal whose default action is the end of the application.
  const auto before = std::signal(SIGPIPE, SIG_DFL);
  for (const std::string tls : {"starttls", "implicit"}) {
    SmtpServerOptions serving = Serving(tls, good);
    serving.closeAtData = true;
    const SmtpServer server(serving);
    const auto component = Encrypted(server, tls);
    component->AddAttachment(directory->MakeLarge("grande.bin", 20'000'000));
    EXPECT_EQ(Sent(*component), 5);
  }
  std::signal(SIGPIPE, before);
}

TEST_F(Tls, ALargeAttachmentArrivesWhole) {
  for (const std::string tls : {"starttls", "implicit"}) {
    std::string bytes;
    for (unsigned i = 0; i < 5'000'000; ++i) bytes += static_cast<char>(i * 7919U >> 3U);
    const SmtpServer server(Serving(tls, good));
    const auto component = Encrypted(server, tls);
    component->AddAttachment(directory->Write("grande.bin", bytes));
    ASSERT_EQ(Sent(*component), -1) << component->Fine().motivo;
    EXPECT_TRUE(ReadFile(server.OnlyMessage().attachments.at(0).content) == bytes);
  }
}

// --- Authentication
// ------------------------------------------------------------------------------------------------

struct AuthCase {
  const char* label;
  std::vector<std::string> offered;
  std::vector<AuthMechanism> allowed;
  std::int32_t want;
};

void PrintTo(const AuthCase& test, std::ostream* out) {
  *out << test.label;
}

class AuthCases : public Tls, public testing::WithParamInterface<AuthCase> {
 protected:
  static constexpr const char* kUser = "ufficio.vendite@rossi.it";
  static constexpr const char* kPassword = "pàrola=d'Ordine\"9";
};

TEST_P(AuthCases, OpenTheServerAndLeaveNoSecretInTheTrace) {
  for (const std::string tls : {"none", "starttls", "implicit"}) {
    SmtpServerOptions serving = Serving(tls, good);
    serving.auth = GetParam().offered;
    serving.user = kUser;
    serving.password = kPassword;
    serving.requireAuth = true;
    const SmtpServer server(serving);
    SmtpOptions options = Quick();
    options.authMechanisms = GetParam().allowed;
    std::string trace;
    options.trace = [&](std::string_view line) { trace += std::string(line) + "\n"; };
    const auto component = Encrypted(server, tls, options);
    component->ConnectType(tls == "none" ? 0 : 1);
    component->UserName(kUser);
    component->Password(kPassword);
    EXPECT_EQ(Sent(*component), GetParam().want) << component->Fine().motivo;
    if (GetParam().want == -1) {
      EXPECT_EQ(server.OnlyMessage().user, kUser);
      EXPECT_THAT(trace, HasSubstr("C: AUTH "));
    }

    component->Password("sbagliata-9");
    EXPECT_EQ(Sent(*component), 2);
    EXPECT_EQ(server.Count(), GetParam().want == -1 ? 1U : 0U);
    // In clear, and in base64 from each of the three places it can begin at.
    for (const char* secret :
         {kPassword, "sbagliata-9", "cMOgcm9sYT1kJ09yZGluZSI5", "DoHJvbGE9ZCdPcmRpbmUi",
          "w6Byb2xhPWQnT3JkaW5l", "c2JhZ2xpYXRhLT", "NiYWdsaWF0YS05", "zYmFnbGlhdGEtO"}) {
      EXPECT_EQ(trace.find(secret), std::string::npos) << secret;
    }
  }
}

const std::vector<AuthMechanism> kUsual = SmtpOptions().authMechanisms;

INSTANTIATE_TEST_SUITE_P(
    Table, AuthCases,
    testing::Values(AuthCase{"Plain", {"PLAIN"}, kUsual, -1}, AuthCase{"Login", {"LOGIN"}, kUsual, -1},
                    AuthCase{"CramMd5", {"CRAM-MD5"}, kUsual, -1},
                    AuthCase{"Xoauth2", {"XOAUTH2"}, {AuthMechanism::kXoauth2}, -1},
                    AuthCase{"AnyOfAll", {"XOAUTH2", "PLAIN", "LOGIN", "CRAM-MD5"}, kUsual, -1},
                    AuthCase{"TheTokenAmongAll",
                             {"PLAIN", "LOGIN", "CRAM-MD5", "XOAUTH2"},
                             {AuthMechanism::kPlain, AuthMechanism::kXoauth2},
                             -1},
                    AuthCase{"OneAllowed", {"PLAIN", "LOGIN", "CRAM-MD5"}, {AuthMechanism::kLogin}, -1},
                    AuthCase{"NoneInCommon", {"LOGIN"}, {AuthMechanism::kPlain}, 2},
                    AuthCase{"NoneOffered", {}, kUsual, 2}, AuthCase{"NoneAllowed", {"PLAIN"}, {}, 2}),
    [](const auto& test) { return test.param.label; });

TEST(Authentication, IsDemandedByTheServerWithNumberTwo) {
  SmtpServerOptions serving;
  serving.auth = {"PLAIN"};
  serving.requireAuth = true;
  const SmtpServer server(serving);
  EXPECT_EQ(Sent(*Outgoing(server.Port16())), 2);
  EXPECT_EQ(server.Count(), 0U);
}

TEST(Authentication, DoesNotTakePlaceWithoutAUser) {
  SmtpServerOptions serving;
  serving.auth = {"PLAIN"};
  const SmtpServer server(serving);
  const auto component = Outgoing(server.Port16());
  component->Password("segreta");
  EXPECT_EQ(Sent(*component), -1);
  EXPECT_EQ(server.OnlyMessage().user, "");
}

TEST(Authentication, WithCredentialsThatCannotTravelFailsWithoutAConnection) {
  const auto component = Outgoing(1);
  component->UserName("utente");
  component->Password(std::string("seg\0reta", 8));
  EXPECT_EQ(Sent(*component), 2);
  component->UserName(std::string("ute\0nte", 7));
  component->Password("segreta");
  EXPECT_EQ(Sent(*component), 2);
}

// --- Cost
// ----------------------------------------------------------------------------------------------------------

long PeakMemory() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.rfind("VmHWM:", 0) == 0) return std::stol(line.substr(6));
  }
  return -1;
}

TEST(Cost, AHundredMegabytesLeaveInFlatMemory) {
  const SmtpServer server;
  const TempDir files;
  const std::string path = files.MakeLarge("grande.bin", 100U << 20U);
  EXPECT_EQ(Sent(*Outgoing(server.Port16())), -1);
  std::ofstream("/proc/self/clear_refs") << "5";
  const long before = PeakMemory();
  const auto component = Outgoing(server.Port16());
  component->AddAttachment(path);
  ASSERT_EQ(Sent(*component), -1) << component->Fine().motivo;
  EXPECT_LT(PeakMemory() - before, 10 * 1024);
  EXPECT_EQ(std::filesystem::file_size(server.Directory() / "0002.eml") / 1'000'000, 143U);
}

}  // namespace
}  // namespace orve::adapters::smtp
