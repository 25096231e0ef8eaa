// Which fault gives which number, each provoked by a server that plays it.
#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>
#include <chrono>
#include <optional>
#include <ostream>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include "adapters/smtp/dialogue.h"
#include "adapters/smtp/name_lookup.h"
#include "adapters/smtp/outgoing.h"
#include "smtp/smtp_component.h"
#include "support/loopback.h"
#include "support/patience.h"
#include "support/scripted_server.h"
#include "support/temp_dir.h"

namespace orve::adapters::smtp {
namespace {

using support::Body;
using support::BrokenBody;
using support::On;
using support::Pace;
using support::Say;
using support::ScriptedServer;
using support::ThenDeafen;
using support::ThenDrop;
using support::ThenReset;
using support::ThenStall;
using testing::HasSubstr;

// The way to each stage when all goes well.
const Script kRoadGreeting = {Say("220-prova.example.test\r\n220 ESMTP pronto")};
const Script kRoadHello =
    kRoadGreeting + Script{On("EHLO prova.example.test", "250-salve\r\n250-SIZE 99\r\n250 8BITMIME")};
const Script kRoadPipelining =
    kRoadGreeting + Script{On("EHLO prova.example.test", "250-salve\r\n250 PIPELINING")};
const Script kRoadSender = {On("MAIL FROM:<ditta@rossi.it>", "250 2.1.0 Ok")};
const Script kRoadRecipients = {On("RCPT TO:<mario@bianchi.it>", "250 2.1.5 Ok"),
                                On("RCPT TO:<anna@verdi.it>", "251 inoltrato")};
const Script kRoadEnvelope = kRoadSender + kRoadRecipients;
const Script kRoadData = {On("DATA", "354-avanti\r\n354 fine con un punto")};
const Script kRoadMessage = kRoadData + Script{Body("250 2.0.0 preso")};

Script WithAuth(const std::string& mechanisms, const Script& rest) {
  return kRoadGreeting + Script{On("EHLO prova.example.test", "250-salve\r\n250 AUTH " + mechanisms)} + rest;
}

Script WithTls(const Script& rest) {
  return kRoadGreeting + Script{On("EHLO prova.example.test", "250-salve\r\n250 STARTTLS")} + rest;
}

struct Fault {
  const char* label;
  Script script;
  ErrorNumber want;
  bool encrypted = false;
  bool authenticated = false;
  std::optional<bool> mayHaveArrived = false;  // none: it depends on how far the message got
};

void PrintTo(const Fault& fault, std::ostream* out) {
  *out << fault.label;
}

std::unique_ptr<SmtpComponent> MessageFor(const Fault& fault, const ScriptedServer& server,
                                          SmtpOptions options) {
  auto component = Outgoing(server.Port16(), std::move(options));
  component->AddRecipientEx("Anna Verdi <anna@verdi.it>", 2);
  component->ConnectType(fault.encrypted ? 1 : 0);
  if (fault.authenticated) {
    component->UserName("utente@rossi.it");
    component->Password("parola-d'ordine");
  }
  return component;
}

const std::vector<Fault> kFaults = {
    // The connection.
    {"GreetingRefused", {Say("554 non servo posta")}, ErrorNumber::kConnection},
    {"GreetingPutOff", {Say("421-troppo\r\n421 lavoro")}, ErrorNumber::kConnection},
    {"GreetingDropped", {ThenDrop(Say(""))}, ErrorNumber::kConnection},
    {"GreetingReset", {ThenReset(Say("220-salve"))}, ErrorNumber::kConnection},
    {"GreetingGarbage",
     {ThenDrop(Say("HTTP/1.1 400 Bad Request\r\nServer: altro"))},
     ErrorNumber::kConnection},
    {"StarttlsNotOffered", kRoadHello, ErrorNumber::kConnection, true},
    {"StarttlsRefused", WithTls({On("STARTTLS", "454 non ora")}), ErrorNumber::kConnection, true},
    {"StarttlsDropped", WithTls({ThenDrop(On("STARTTLS", "220 avanti"))}), ErrorNumber::kConnection, true},
    {"StarttlsDroppedBeforeTheReply", WithTls({ThenDrop(On("STARTTLS", ""))}), ErrorNumber::kConnection,
     true},
    {"HandshakeGarbage", WithTls({ThenDrop(On("STARTTLS", "220 avanti\r\nche cosa?"))}),
     ErrorNumber::kConnection, true},
    // EHLO and HELO.
    {"HelloRefused", kRoadGreeting + Script{On("EHLO *", "502 eh?"), On("HELO prova.example.test", "550 no")},
     ErrorNumber::kHello},
    {"EhloDropped", kRoadGreeting + Script{ThenDrop(On("EHLO *", ""))}, ErrorNumber::kHello},
    {"EhloReset", kRoadGreeting + Script{ThenReset(On("EHLO *", "250-salve"))}, ErrorNumber::kHello},
    {"EhloGarbage", kRoadGreeting + Script{ThenDrop(On("EHLO *", "benvenuto!"))}, ErrorNumber::kHello},
    {"HeloDropped", kRoadGreeting + Script{On("EHLO *", "502 eh?"), ThenDrop(On("HELO *", ""))},
     ErrorNumber::kHello},
    {"HelloRefusedWhereTlsIsNeeded", kRoadGreeting + Script{On("EHLO *", "502 eh?")}, ErrorNumber::kHello,
     true},
    // Authentication.
    {"PasswordRefused",
     WithAuth("PLAIN", {On("AUTH PLAIN", "334 "), On("*", "535-5.7.8 no\r\n535 5.7.8 davvero")}),
     ErrorNumber::kAuthentication, false, true},
    {"MechanismRefused", WithAuth("LOGIN", {On("AUTH LOGIN", "504 non la conosco")}),
     ErrorNumber::kAuthentication, false, true},
    {"PasswordPutOff", WithAuth("PLAIN", {On("AUTH PLAIN", "334 "), On("*", "454 4.7.0 riprova")}),
     ErrorNumber::kAuthentication, false, true},
    {"NoCommonMechanism", WithAuth("GSSAPI NTLM DIGEST-MD5", {}), ErrorNumber::kAuthentication, false, true},
    {"AuthNotOffered", kRoadHello, ErrorNumber::kAuthentication, false, true},
    {"AuthNotOfferedAfterHelo", kRoadGreeting + Script{On("EHLO *", "502 eh?"), On("HELO *", "250 salve")},
     ErrorNumber::kAuthentication, false, true},
    {"AuthDropped", WithAuth("PLAIN", {ThenDrop(On("AUTH PLAIN", ""))}), ErrorNumber::kAuthentication, false,
     true},
    {"AuthDroppedAfterThePassword", WithAuth("PLAIN", {On("AUTH PLAIN", "334 "), ThenReset(On("*", ""))}),
     ErrorNumber::kAuthentication, false, true},
    {"MailNeedsAuth", kRoadHello + Script{On("MAIL FROM:*", "530 5.7.0 prima autenticarsi")},
     ErrorNumber::kAuthentication},
    {"MailNeedsAuthPipelined",
     kRoadPipelining + Script{On("MAIL FROM:*", "530 5.7.0 prima autenticarsi"), On("RCPT TO:*", "503 MAIL?"),
                              On("RCPT TO:*", "503 MAIL?")},
     ErrorNumber::kAuthentication},
    // The sender.
    {"SenderRefused", kRoadHello + Script{On("MAIL FROM:*", "550-5.1.8\r\n550 5.1.8 mittente ignoto")},
     ErrorNumber::kSender},
    {"SenderPutOff", kRoadHello + Script{On("MAIL FROM:*", "451 riprova")}, ErrorNumber::kSender},
    {"SenderDropped", kRoadHello + Script{ThenDrop(On("MAIL FROM:*", ""))}, ErrorNumber::kSender},
    {"SenderReset", kRoadHello + Script{ThenReset(On("MAIL FROM:*", "25"))}, ErrorNumber::kSender},
    {"SenderGarbage", kRoadHello + Script{ThenDrop(On("MAIL FROM:*", "bene"))}, ErrorNumber::kSender},
    {"SenderAnsweredLikeData", kRoadHello + Script{On("MAIL FROM:*", "354 avanti")}, ErrorNumber::kSender},
    {"ClosedWhileIdle", kRoadGreeting + Script{ThenDrop(On("EHLO *", "250 salve\r\n421 chiudo"))},
     ErrorNumber::kSender},
    {"SenderRefusedPipelined",
     kRoadPipelining +
         Script{On("MAIL FROM:*", "550 no"), On("RCPT TO:*", "503 MAIL?"), On("RCPT TO:*", "503 MAIL?")},
     ErrorNumber::kSender},
    {"SenderRefusedPipelinedAndDropped", kRoadPipelining + Script{ThenDrop(On("MAIL FROM:*", "421 chiudo"))},
     ErrorNumber::kSender},
    // The recipients.
    {"RecipientRefused",
     kRoadHello + kRoadSender + Script{On("RCPT TO:*", "550 5.1.1 ignoto"), On("RSET", "250 Ok")},
     ErrorNumber::kRecipients},
    {"SecondRecipientRefused",
     kRoadHello + kRoadSender +
         Script{On("RCPT TO:<mario@bianchi.it>", "250 Ok"), On("RCPT TO:<anna@verdi.it>", "452 piena"),
                On("RSET", "250 Ok")},
     ErrorNumber::kRecipients},
    {"RecipientDropped", kRoadHello + kRoadSender + Script{ThenDrop(On("RCPT TO:*", ""))},
     ErrorNumber::kRecipients},
    {"SecondRecipientReset",
     kRoadHello + kRoadSender + Script{On("RCPT TO:*", "250 Ok"), ThenReset(On("RCPT TO:*", ""))},
     ErrorNumber::kRecipients},
    {"RecipientGarbage", kRoadHello + kRoadSender + Script{ThenDrop(On("RCPT TO:*", "999 eh"))},
     ErrorNumber::kRecipients},
    {"FirstRecipientRefusedPipelined",
     kRoadPipelining + kRoadSender +
         Script{On("RCPT TO:*", "550 5.1.1 ignoto"), On("RCPT TO:*", "250 Ok"), On("RSET", "250 Ok")},
     ErrorNumber::kRecipients},
    {"RecipientDroppedPipelined", kRoadPipelining + kRoadSender + Script{ThenDrop(On("RCPT TO:*", "250 Ok"))},
     ErrorNumber::kRecipients},
    // The data.
    {"DataRefused", kRoadHello + kRoadEnvelope + Script{On("DATA", "554 no")}, ErrorNumber::kData},
    {"DataPutOff", kRoadHello + kRoadEnvelope + Script{On("DATA", "451-non\r\n451 ora")}, ErrorNumber::kData},
    {"DataDropped", kRoadHello + kRoadEnvelope + Script{ThenDrop(On("DATA", ""))}, ErrorNumber::kData},
    {"DataGarbage", kRoadHello + kRoadEnvelope + Script{ThenDrop(On("DATA", "?"))}, ErrorNumber::kData},
    {"DataAnsweredLikeACommand", kRoadHello + kRoadEnvelope + Script{On("DATA", "250 fatto")},
     ErrorNumber::kData},
    {"BodyReset", kRoadHello + kRoadEnvelope + Script{ThenReset(On("DATA", "354 avanti"))},
     ErrorNumber::kData, false, false, std::nullopt},
    {"MessageRefused", kRoadHello + kRoadEnvelope + kRoadData + Script{Body("552-troppo\r\n552 grande")},
     ErrorNumber::kData},
    {"MessagePutOff", kRoadHello + kRoadEnvelope + kRoadData + Script{Body("451 riprova")},
     ErrorNumber::kData},
    {"MessageDropped", kRoadHello + kRoadEnvelope + kRoadData + Script{ThenDrop(Body(""))},
     ErrorNumber::kData, false, false, true},
    {"MessageReset", kRoadHello + kRoadEnvelope + kRoadData + Script{ThenReset(Body("25"))},
     ErrorNumber::kData, false, false, true},
    {"MessageGarbage", kRoadHello + kRoadEnvelope + kRoadData + Script{ThenDrop(Body("preso"))},
     ErrorNumber::kData, false, false, true},
    {"MessageDroppedPipelined", kRoadPipelining + kRoadEnvelope + kRoadData + Script{ThenDrop(Body(""))},
     ErrorNumber::kData, false, false, true},
    // RSET.
    {"ResetRefused",
     kRoadHello + kRoadSender + Script{On("RCPT TO:*", "550 no"), On("RSET", "502-eh\r\n502 eh?")},
     ErrorNumber::kReset},
    {"ResetDropped", kRoadHello + kRoadSender + Script{On("RCPT TO:*", "550 no"), ThenDrop(On("RSET", ""))},
     ErrorNumber::kReset},
    {"ResetGarbage", kRoadHello + kRoadSender + Script{On("RCPT TO:*", "550 no"), ThenDrop(On("RSET", "ok"))},
     ErrorNumber::kReset},
    // No fault, or none that counts.
    {"AllWell", kRoadHello + kRoadEnvelope + kRoadMessage + Script{On("QUIT", "221 ciao")},
     ErrorNumber::kNone},
    {"AllWellPipelined", kRoadPipelining + kRoadEnvelope + kRoadMessage + Script{On("QUIT", "221 ciao")},
     ErrorNumber::kNone},
    {"EhloRefusedButHeloTaken",
     kRoadGreeting + Script{On("EHLO *", "502 eh?"), On("HELO prova.example.test", "250 salve")} +
         kRoadEnvelope + kRoadMessage,
     ErrorNumber::kNone},
    {"Authenticated",
     WithAuth("LOGIN PLAIN",
              {On("AUTH PLAIN", "334 "), On("AHV0ZW50ZUByb3NzaS5pdABwYXJvbGEtZCdvcmRpbmU=", "235 Ok")}) +
         kRoadEnvelope + kRoadMessage,
     ErrorNumber::kNone, false, true},
    {"QuitRefused", kRoadHello + kRoadEnvelope + kRoadMessage + Script{On("QUIT", "500 resta")},
     ErrorNumber::kNone},
    {"QuitDropped", kRoadHello + kRoadEnvelope + kRoadMessage + Script{ThenDrop(On("QUIT", ""))},
     ErrorNumber::kNone},
    {"QuitReset", kRoadHello + kRoadEnvelope + kRoadMessage + Script{ThenReset(On("QUIT", ""))},
     ErrorNumber::kNone},
    {"DroppedAfterTheFinalReply",
     kRoadHello + kRoadEnvelope + kRoadData + Script{ThenDrop(Body("250 preso"))}, ErrorNumber::kNone},
};

class FailureNumbers : public testing::TestWithParam<std::tuple<Fault, Pace>> {};

TEST_P(FailureNumbers, FollowTheStage) {
  const auto& [fault, pace] = GetParam();
  ScriptedServer server(fault.script, pace);
  const auto component = MessageFor(fault, server, Quick());
  EXPECT_EQ(Sent(*component), static_cast<std::int32_t>(fault.want)) << component->Fine().motivo;
  EXPECT_EQ(component->Fine().motivo.empty(), fault.want == ErrorNumber::kNone);
  EXPECT_EQ(component->Fine().incerta, fault.mayHaveArrived.value_or(component->Fine().incerta));
  EXPECT_EQ(server.Complaint(), "");
}

INSTANTIATE_TEST_SUITE_P(Table, FailureNumbers,
                         testing::Combine(testing::ValuesIn(kFaults),
                                          testing::Values(Pace::kWhole, Pace::kByLine, Pace::kByByte)),
                         [](const auto& test) {
                           return std::string(std::get<0>(test.param).label) +
                                  testing::PrintToString(std::get<1>(test.param));
                         });

// --- A server that falls silent
// ----------------------------------------------------------------------------------

const std::vector<Fault> kStalls = {
    {"Greeting", {ThenStall(Say(""))}, ErrorNumber::kConnection},
    {"HalfAGreeting", {ThenStall(Say("220-salve"))}, ErrorNumber::kConnection},
    {"Starttls", WithTls({ThenStall(On("STARTTLS", ""))}), ErrorNumber::kConnection, true},
    {"Handshake", WithTls({ThenStall(On("STARTTLS", "220 avanti"))}), ErrorNumber::kConnection, true},
    {"Ehlo", kRoadGreeting + Script{ThenStall(On("EHLO *", ""))}, ErrorNumber::kHello},
    {"HalfAnEhloReply", kRoadGreeting + Script{ThenStall(On("EHLO *", "250-salve"))}, ErrorNumber::kHello},
    {"Helo", kRoadGreeting + Script{On("EHLO *", "502 eh?"), ThenStall(On("HELO *", ""))},
     ErrorNumber::kHello},
    {"Auth", WithAuth("PLAIN", {ThenStall(On("AUTH PLAIN", ""))}), ErrorNumber::kAuthentication, false, true},
    {"Password", WithAuth("PLAIN", {On("AUTH PLAIN", "334 "), ThenStall(On("*", ""))}),
     ErrorNumber::kAuthentication, false, true},
    {"Sender", kRoadHello + Script{ThenStall(On("MAIL FROM:*", ""))}, ErrorNumber::kSender},
    {"SenderPipelined", kRoadPipelining + Script{ThenStall(On("MAIL FROM:*", ""))}, ErrorNumber::kSender},
    {"Recipient", kRoadHello + kRoadSender + Script{ThenStall(On("RCPT TO:*", "250-"))},
     ErrorNumber::kRecipients},
    {"RecipientPipelined", kRoadPipelining + kRoadSender + Script{ThenStall(On("RCPT TO:*", "250 Ok"))},
     ErrorNumber::kRecipients},
    {"Data", kRoadHello + kRoadEnvelope + Script{ThenStall(On("DATA", ""))}, ErrorNumber::kData},
    {"EndOfData", kRoadHello + kRoadEnvelope + kRoadData + Script{ThenStall(Body(""))}, ErrorNumber::kData,
     false, false, true},
    {"Reset", kRoadHello + kRoadSender + Script{On("RCPT TO:*", "550 no"), ThenStall(On("RSET", ""))},
     ErrorNumber::kReset},
    {"Quit", kRoadHello + kRoadEnvelope + kRoadMessage + Script{ThenStall(On("QUIT", ""))},
     ErrorNumber::kNone},
};

/// What became of a message to a server that goes silent, or deaf, for longer than anybody waits.
struct Stalled {
  std::int32_t number = 0;
  bool mayHaveArrived = false;
  std::string failure;
  std::string complaint;
};

Stalled SentInTime(const Fault& fault, const std::string& attachment = "") {
  const auto attempt = [&](std::chrono::milliseconds timeout) {
    SmtpOptions options = Quick();
    options.replyTimeout = timeout;
    options.finalReplyTimeout = timeout;
    options.stallTimeout = timeout;
    options.connectTimeout = std::max<std::chrono::milliseconds>(timeout, std::chrono::seconds(2));
    ScriptedServer server(fault.script);
    const auto component = MessageFor(fault, server, options);
    if (!attachment.empty()) component->AddAttachment(attachment);
    Stalled outcome;
    outcome.number = Sent(*component);
    outcome.mayHaveArrived = component->Fine().incerta;
    outcome.failure = component->Fine().motivo;
    outcome.complaint = server.Complaint();
    return outcome;
  };
  return support::WithPatience(attempt, [&](const Stalled& outcome) {
    return outcome.number == static_cast<std::int32_t>(fault.want) && outcome.complaint.empty();
  });
}

class Stalls : public testing::TestWithParam<Fault> {};

TEST_P(Stalls, EndInTimeWithTheNumberOfTheStage) {
  const Stalled outcome = SentInTime(GetParam());
  EXPECT_EQ(outcome.number, static_cast<std::int32_t>(GetParam().want)) << outcome.failure;
  EXPECT_EQ(outcome.mayHaveArrived, GetParam().mayHaveArrived);
  EXPECT_EQ(outcome.complaint, "");
}

INSTANTIATE_TEST_SUITE_P(Table, Stalls, testing::ValuesIn(kStalls),
                         [](const auto& test) { return test.param.label; });

class LargeMessage : public testing::Test {
 protected:
  support::TempDir directory_;
  const std::string large_ = directory_.MakeLarge("grande.bin", 30'000'000);
};

TEST_F(LargeMessage, AServerThatStopsReadingEndsTheDeliveryInTime) {
  const Script deaf = kRoadHello + kRoadEnvelope + Script{ThenDeafen(On("DATA", "354 avanti"))};
  const Stalled outcome = SentInTime({"Deaf", deaf, ErrorNumber::kData}, large_);
  EXPECT_EQ(outcome.number, 5);
  EXPECT_EQ(outcome.failure, "tempo di invio scaduto");
  EXPECT_EQ(outcome.complaint, "");
}

TEST_F(LargeMessage, AServerThatSaysNoAndStopsReadingIsHeard) {
  ScriptedServer server(kRoadHello + kRoadEnvelope +
                        Script{ThenDeafen(On("DATA", "354 avanti\r\n552 troppo grande"))});
  const auto component = MessageFor({}, server, Quick());
  component->AddAttachment(large_);
  EXPECT_EQ(Sent(*component), 5);
  EXPECT_THAT(component->Fine().motivo, HasSubstr("552 troppo grande"));
  EXPECT_EQ(server.Complaint(), "");
}

TEST_F(LargeMessage, AServerThatSaysNoInTheMiddleIsHeard) {
  ScriptedServer server(kRoadHello + kRoadEnvelope +
                        Script{On("DATA", "354 avanti"), ThenDeafen(On("From:*", "552 basta"))});
  const auto component = MessageFor({}, server, Quick());
  component->AddAttachment(large_);
  EXPECT_EQ(Sent(*component), 5);
  EXPECT_THAT(component->Fine().motivo, HasSubstr("552 basta"));
  EXPECT_EQ(server.Complaint(), "");
}

TEST_F(LargeMessage, AServerThatDropsTheConnectionInTheMiddleEndsTheDelivery) {
  ScriptedServer server(kRoadHello + kRoadEnvelope + Script{ThenDrop(On("DATA", "354 avanti"))});
  const auto component = MessageFor({}, server, Quick());
  component->AddAttachment(large_);
  EXPECT_EQ(Sent(*component), 5);
  EXPECT_FALSE(component->Fine().incerta);
  EXPECT_EQ(server.Complaint(), "");
}

TEST_F(LargeMessage, AFileThatVanishesAfterAttachingLeavesNoTruncatedMessage) {
  const auto vanish = [this] { std::filesystem::remove(large_); };
  ScriptedServer server(kRoadHello + kRoadEnvelope + Script{On("DATA", vanish, "354 avanti"), BrokenBody()});
  const auto component = MessageFor({}, server, Quick());
  component->AddAttachment(large_);
  EXPECT_EQ(Sent(*component), 5);
  EXPECT_THAT(component->Fine().motivo, HasSubstr("il file non esiste"));
  EXPECT_EQ(server.Complaint(), "");
}

TEST_F(LargeMessage, AFileThatShrinksWhileItLeavesLeavesNoTruncatedMessage) {
  const auto shrink = [this] { std::filesystem::resize_file(large_, 1000); };
  ScriptedServer server(kRoadHello + kRoadEnvelope + Script{On("DATA", "354 avanti"), BrokenBody(shrink)});
  const auto component = MessageFor({}, server, Quick());
  component->AddAttachment(large_);
  EXPECT_EQ(Sent(*component), 5);
  EXPECT_THAT(component->Fine().motivo, HasSubstr("si è accorciato"));
  EXPECT_EQ(server.Complaint(), "");
}

// --- Names and addresses
// ----------------------------------------------------------------------------------------

struct NameFault {
  const char* label;
  std::string server;
  std::int32_t want;
};

void PrintTo(const NameFault& fault, std::ostream* out) {
  *out << fault.label;
}

class NameFaults : public testing::TestWithParam<NameFault> {};

TEST_P(NameFaults, AreTold) {
  const auto component = Outgoing(25);
  component->ServerAddr(GetParam().server);
  EXPECT_EQ(Sent(*component), GetParam().want) << component->Fine().motivo;
}

TEST(NameServers, OneThatSaysNothingIsNotWaitedFor) {
  SmtpOptions options = Quick();
  options.connectTimeout = std::chrono::milliseconds(500);
  const auto component = Outgoing(25, options);
  component->ServerAddr("silenzio.test");
  EXPECT_EQ(Sent(*component), 7);
  EXPECT_THAT(component->Fine().motivo, HasSubstr("timed out"));
}

INSTANTIATE_TEST_SUITE_P(Table, NameFaults,
                         testing::Values(NameFault{"Unknown", "ignoto.test", 7},
                                         NameFault{"NameServerFails", "guasto.test", 7},
                                         NameFault{"Empty", "", 7}, NameFault{"Blank", "   ", 7},
                                         NameFault{"LineEnd", "mail.example.test\r\nEHLO x", 7},
                                         NameFault{"Nul", std::string("mail.example.test\0.it", 21), 7},
                                         NameFault{"BlankInside", "mail example.test", 7},
                                         NameFault{"Url", "smtp://mail.example.test/", 7},
                                         NameFault{"UserInIt", "altro@mail.example.test", 7},
                                         NameFault{"PortInIt", "mail.example.test:26", 7},
                                         NameFault{"InvalidUtf8", "mail\xff.test", 7},
                                         NameFault{"Quotes", "\"mail\"", 7},
                                         NameFault{"Huge", std::string(1 << 20, 'a'), 7}),
                         [](const auto& test) { return test.param.label; });

TEST(ServerNames, BlanksAroundANameDoNotCount) {
  ScriptedServer server(kRoadHello + kRoadEnvelope + kRoadMessage);
  const auto component = MessageFor({}, server, Quick());
  component->ServerAddr("  mail.example.test ");
  EXPECT_EQ(Sent(*component), -1) << component->Fine().motivo;
  EXPECT_EQ(server.Complaint(), "");
}

TEST(ServerNames, AccentsAreLookedUpInTheAsciiForm) {
  ScriptedServer server(kRoadHello + kRoadEnvelope + kRoadMessage);
  const auto component = MessageFor({}, server, Quick());
  component->ServerAddr("posta.società.example.test");
  EXPECT_EQ(Sent(*component), -1) << component->Fine().motivo;
  EXPECT_THAT(NamesLookedUp(), testing::Contains("posta.xn--societ-nta.example.test"));
}

// --- No connection
// ----------------------------------------------------------------------------------------------

TEST(Connections, ARefusedOneGivesZero) {
  const support::LoopbackSocket nobody;
  EXPECT_EQ(Sent(*Outgoing(static_cast<std::int16_t>(nobody.Port()))), 0);
}

TEST(Connections, OneThatNobodyAcceptsGivesZeroInTime) {
  // A full connection queue: the system no longer answers.
  const support::LoopbackSocket listener;
  listener.Listen(0);
  const sockaddr_in address = support::Loopback(listener.Port());
  std::vector<posix::Descriptor> waiting;
  for (int i = 0; i < 4; ++i) {
    waiting.emplace_back(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    static_cast<void>(
        ::connect(waiting.back().Number(), reinterpret_cast<const sockaddr*>(&address), sizeof address));
  }
  SmtpOptions options = Quick();
  options.connectTimeout = std::chrono::milliseconds(500);
  const auto component = Outgoing(static_cast<std::int16_t>(listener.Port()), options);
  EXPECT_EQ(Sent(*component), 0);
  EXPECT_THAT(component->Fine().motivo, HasSubstr("Timeout was reached"));
}

TEST(Connections, PortZeroGivesZero) {
  EXPECT_EQ(Sent(*Outgoing(0)), 0);
}

// --- Nobody gets a part of it
// -----------------------------------------------------------------------------------

TEST(RefusedRecipients, TheReasonNamesEachOfThem) {
  ScriptedServer server(kRoadPipelining + kRoadSender +
                        Script{On("RCPT TO:<mario@bianchi.it>", "550 5.1.1 ignoto"),
                               On("RCPT TO:<anna@verdi.it>", "452 4.2.2 piena"), On("RSET", "250 Ok")});
  const auto component = MessageFor({}, server, Quick());
  EXPECT_EQ(Sent(*component), 4);
  EXPECT_EQ(component->Fine().motivo,
            "RCPT TO:<mario@bianchi.it>: 550 5.1.1 ignoto; RCPT TO:<anna@verdi.it>: 452 4.2.2 piena");
  EXPECT_EQ(server.Complaint(), "");
}

TEST(Replies, OneWithoutEndIsGivenUp) {
  std::string endless;
  for (int i = 0; i < 200; ++i) endless += "250-" + std::string(600, 'x') + "\r\n";
  ScriptedServer server(kRoadHello + Script{On("MAIL FROM:*", endless)});
  const auto component = MessageFor({}, server, Quick());
  EXPECT_EQ(Sent(*component), 3);
  EXPECT_THAT(component->Fine().motivo, HasSubstr("troppo lunga"));
}

TEST(Replies, OfTooManyLinesAreGivenUp) {
  for (const int lines : {256, 257}) {
    std::string reply;
    for (int i = 1; i < lines; ++i) reply += "550-x\r\n";
    ScriptedServer server(kRoadHello + Script{ThenDrop(On("MAIL FROM:*", reply + "550 no"))});
    const auto component = MessageFor({}, server, Quick());
    EXPECT_EQ(Sent(*component), 3);
    EXPECT_EQ(component->Fine().motivo.find("troppo lunga") != std::string::npos, lines > 256)
        << component->Fine().motivo;
  }
}

// What arrives at once must not hold up the send for longer than what has to be waited for.
TEST(Replies, ThatTakeTooLongAreGivenUpEvenWhereTheyHaveComeWhole) {
  ScriptedServer server(kRoadHello + Script{On("MAIL FROM:*", "250-primo\r\n250-secondo\r\n250 Ok"),
                                            ThenDrop(On("RCPT TO:*", "550 ignoto"))});
  SmtpOptions options = Quick();
  options.replyTimeout = std::chrono::milliseconds(500);
  options.trace = [&](std::string_view line) {
    if (line == "S: 250-primo") std::this_thread::sleep_for(2 * options.replyTimeout);
  };
  const auto component = MessageFor({}, server, options);
  EXPECT_EQ(Sent(*component), 3);
  EXPECT_THAT(component->Fine().motivo, HasSubstr("tempo di attesa della risposta scaduto"));
}

TEST(Replies, ALineWithoutEndIsGivenUp) {
  ScriptedServer server(kRoadHello + Script{ThenStall(On("MAIL FROM:*", std::string(200'000, '2')))});
  const auto component = MessageFor({}, server, Quick());
  EXPECT_EQ(Sent(*component), 3);
  EXPECT_THAT(component->Fine().motivo, HasSubstr("troppo lunga"));
}

}  // namespace
}  // namespace orve::adapters::smtp
