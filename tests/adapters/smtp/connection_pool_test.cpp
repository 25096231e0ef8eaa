// Connections kept for the next message: which message may use them, when they end, and that nothing of one
// message shows up in another.
#include "smtp/connection_pool.h"
#include "adapters/smtp/dialogue.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <chrono>
#include <filesystem>
#include <future>
#include <memory>
#include <ostream>
#include <set>
#include <string>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

#include "adapters/smtp/outgoing.h"
#include "smtp/smtp_component.h"
#include "support/certificates.h"
#include "support/patience.h"
#include "support/scripted_server.h"
#include "support/smtp_server.h"
#include "support/temp_dir.h"

namespace orve::adapters::smtp {
namespace {

using support::Body;
using support::On;
using support::ReceivedMessage;
using support::Say;
using support::ScriptedServer;
using support::SmtpServer;
using support::SmtpServerOptions;
using support::TempDir;
using support::TestAuthority;
using support::ThenDrop;
using support::ThenReset;
using support::ThenStall;
using testing::ElementsAre;

using Pool = std::shared_ptr<ConnectionPool>;

const Script kPipelining = {Say("220 pronto"), On("EHLO prova.example.test", "250-salve\r\n250 PIPELINING")};
const Script kSender = {On("MAIL FROM:<ditta@rossi.it>", "250 Ok")};
const Script kRecipients = {On("RCPT TO:<mario@bianchi.it>", "250 Ok"),
                            On("RCPT TO:<anna@verdi.it>", "250 Ok")};
const Script kEnvelope = kSender + kRecipients;
const Script kData = {On("DATA", "354 avanti")};
const Script kMessage = kEnvelope + kData + Script{Body("250 preso")};
const Script kQuit = {On("QUIT", "221 ciao")};

Pool NewPool(PoolOptions options = {}) {
  return std::make_shared<ConnectionPool>(std::move(options));
}

/// A message to two recipients on its way to loopback, over a connection of the pool.
std::unique_ptr<SmtpComponent> Message(std::int16_t port, const Pool& pool,
                                       const SmtpOptions& options = Quick()) {
  auto component = Outgoing(port, options, pool);
  component->AddRecipientEx("Anna Verdi <anna@verdi.it>", 2);
  return component;
}

std::int32_t Send(std::int16_t port, const Pool& pool, const SmtpOptions& options = Quick()) {
  return Sent(*Message(port, pool, options));
}

/// How many connections the messages of a server came over.
std::size_t Connections(const SmtpServer& server) {
  std::set<int> ports;
  for (const ReceivedMessage& message : server.Messages()) ports.insert(message.clientPort);
  return ports.size();
}

// --- Which messages share a connection
// -----------------------------------------------------------------------------

TEST(KeptConnection, CarriesOneMessageAfterTheOther) {
  ScriptedServer server(kHello + kMessage + kMessage + kMessage + kQuit);
  Pool pool = NewPool();
  for (int i = 0; i < 3; ++i) EXPECT_EQ(Send(server.Port16(), pool), -1);
  pool.reset();
  EXPECT_EQ(server.Complaint(), "");
}

TEST(KeptConnection, IsOfferedByNoOtherPool) {
  ScriptedServer server({kHello + kMessage + kQuit, kHello + kMessage + kQuit});
  Pool one = NewPool();
  Pool other = NewPool();
  EXPECT_EQ(Send(server.Port16(), one), -1);
  EXPECT_EQ(Send(server.Port16(), other), -1);
  one.reset();
  other.reset();
  EXPECT_EQ(server.Complaint(), "");
}

TEST(KeptConnection, IsNotMadeWithoutAPool) {
  ScriptedServer server({kHello + kMessage + kQuit, kHello + kMessage + kQuit});
  EXPECT_EQ(Send(server.Port16(), nullptr), -1);
  EXPECT_EQ(Send(server.Port16(), nullptr), -1);
  EXPECT_EQ(server.Complaint(), "");
}

TEST(KeptConnection, ServesTheSameComponentAgainAndLivesAsLongAsThat) {
  ScriptedServer server(kHello + kMessage + kMessage + kQuit);
  Pool pool = NewPool();
  auto component = Message(server.Port16(), pool);
  EXPECT_EQ(Sent(*component), -1);
  pool.reset();
  EXPECT_EQ(Sent(*component), -1);
  component.reset();
  EXPECT_EQ(server.Complaint(), "");
}

TEST(KeptConnection, CarriesAMessageOfAnotherSenderToOthersWithItsOwnText) {
  const SmtpServer server;
  const Pool pool = NewPool();
  EXPECT_EQ(Send(server.Port16(), pool), -1);
  const auto other = Message(server.Port16(), pool);
  other->ClearRecipient();
  other->AddRecipientEx("Terzo <terzo@x.it>", 0);
  other->FromAddr("<altra@verdi.it>");
  other->Subject("Altra");
  EXPECT_EQ(Sent(*other), -1);
  const std::vector<ReceivedMessage> got = server.Messages();
  ASSERT_EQ(got.size(), 2U);
  EXPECT_EQ(got[0].clientPort, got[1].clientPort);
  EXPECT_EQ(got[0].sender, "ditta@rossi.it");
  EXPECT_THAT(got[0].recipients, ElementsAre("mario@bianchi.it", "anna@verdi.it"));
  EXPECT_EQ(got[1].sender, "altra@verdi.it");
  EXPECT_THAT(got[1].recipients, ElementsAre("terzo@x.it"));
  EXPECT_EQ(got[1].subject, "Altra");
}

class Accounts : public testing::Test {
 protected:
  static SmtpServerOptions Serving() {
    SmtpServerOptions serving;
    serving.auth = {"PLAIN"};
    serving.user = "utente";
    serving.password = "segreta";
    return serving;
  }

  std::int32_t SendAs(const std::string& user, const std::string& password) {
    const auto component = Message(server_.Port16(), pool_);
    component->UserName(user);
    component->Password(password);
    return Sent(*component);
  }

  SmtpServer server_{Serving()};
  Pool pool_ = NewPool();
};

TEST_F(Accounts, TheSameOneUsesTheConnectionAgain) {
  EXPECT_EQ(SendAs("utente", "segreta"), -1);
  EXPECT_EQ(SendAs("utente", "segreta"), -1);
  EXPECT_EQ(Connections(server_), 1U);
  for (const ReceivedMessage& message : server_.Messages()) EXPECT_EQ(message.user, "utente");
}

TEST_F(Accounts, AnotherUserGetsAConnectionOfItsOwn) {
  EXPECT_EQ(SendAs("utente", "segreta"), -1);
  EXPECT_EQ(SendAs("altro", "segreta"), 2);
  EXPECT_EQ(server_.Count(), 1U);
}

TEST_F(Accounts, NoUserGetsAConnectionOfItsOwn) {
  EXPECT_EQ(SendAs("utente", "segreta"), -1);
  EXPECT_EQ(SendAs("", ""), -1);
  EXPECT_EQ(Connections(server_), 2U);
  EXPECT_EQ(server_.Messages().at(1).user, "");
}

TEST_F(Accounts, AChangedPasswordIsProvedAnew) {
  EXPECT_EQ(SendAs("utente", "segreta"), -1);
  EXPECT_EQ(SendAs("utente", "sbagliata"), 2);
  EXPECT_EQ(SendAs("utente", "segreta"), -1);
  EXPECT_EQ(server_.Count(), 2U);
  EXPECT_EQ(Connections(server_), 1U);
}

TEST(OtherConnections, AreMadeForAnotherPort) {
  const SmtpServer one;
  const SmtpServer other;
  const Pool pool = NewPool();
  for (const SmtpServer* server : {&one, &other, &one}) EXPECT_EQ(Send(server->Port16(), pool), -1);
  EXPECT_EQ(one.Count(), 2U);
  EXPECT_EQ(Connections(one), 1U);
  EXPECT_EQ(other.Count(), 1U);
}

TEST(OtherConnections, AreMadeForAnotherNameOfTheServer) {
  const SmtpServer server;
  const Pool pool = NewPool();
  EXPECT_EQ(Send(server.Port16(), pool), -1);
  const auto component = Message(server.Port16(), pool);
  component->ServerAddr("mail.example.test");
  EXPECT_EQ(Sent(*component), -1);
  EXPECT_EQ(Connections(server), 2U);
}

TEST(OtherConnections, AreMadeForAnotherNameInEhlo) {
  const SmtpServer server;
  const Pool pool = NewPool();
  SmtpOptions options = Quick();
  for (const char* name : {"uno.example.test", "due.example.test"}) {
    options.ehloName = name;
    EXPECT_EQ(Send(server.Port16(), pool, options), -1);
  }
  EXPECT_EQ(Connections(server), 2U);
}

TEST(OtherConnections, AreMadeForOtherMechanisms) {
  const SmtpServer server;
  const Pool pool = NewPool();
  SmtpOptions options = Quick();
  EXPECT_EQ(Send(server.Port16(), pool, options), -1);
  options.authMechanisms = {AuthMechanism::kCramMd5};
  EXPECT_EQ(Send(server.Port16(), pool, options), -1);
  EXPECT_EQ(Connections(server), 2U);
}

// --- Encryption
// ----------------------------------------------------------------------------------------------------

class KeptTls : public testing::Test {
 protected:
  KeptTls() { Serve("starttls"); }

  void Serve(const std::string& tls) {
    const support::Certificate certificate = authority_.Issue("buono", "DNS:mail.example.test");
    SmtpServerOptions serving;
    serving.tls = tls;
    serving.certificate = certificate.certificate;
    serving.key = certificate.key;
    server_ = std::make_unique<SmtpServer>(serving);
    options_ = Quick();
    options_.caFile = authority_.CaFile();
    if (tls == "implicit") options_.implicitTlsPorts = {static_cast<std::uint16_t>(server_->Port())};
  }

  std::int32_t SendEncrypted(bool encrypted = true) {
    const auto component = Message(server_->Port16(), pool_, options_);
    component->ServerAddr("mail.example.test");
    component->ConnectType(encrypted ? 1 : 0);
    return Sent(*component);
  }

  TempDir directory_;
  TestAuthority authority_{directory_.Path()};
  std::unique_ptr<SmtpServer> server_;
  SmtpOptions options_;
  Pool pool_ = NewPool();
};

TEST_F(KeptTls, CarriesOneMessageAfterTheOther) {
  for (const std::string tls : {"starttls", "implicit"}) {
    Serve(tls);
    for (int i = 0; i < 5; ++i) EXPECT_EQ(SendEncrypted(), -1) << tls;
    EXPECT_EQ(server_->Count(), 5U);
    EXPECT_EQ(Connections(*server_), 1U) << tls;
    for (const ReceivedMessage& message : server_->Messages()) EXPECT_TRUE(message.encrypted);
  }
}

TEST_F(KeptTls, IsNotReplacedByAPlainConnectionNorTheOtherWayRound) {
  EXPECT_EQ(SendEncrypted(false), -1);
  EXPECT_EQ(SendEncrypted(true), -1);
  EXPECT_EQ(SendEncrypted(false), -1);
  std::vector<bool> encrypted;
  for (const ReceivedMessage& message : server_->Messages()) encrypted.push_back(message.encrypted);
  EXPECT_THAT(encrypted, ElementsAre(false, true, false));
  EXPECT_EQ(Connections(*server_), 2U);
}

TEST_F(KeptTls, IsNotTrustedForAnotherAuthority) {
  EXPECT_EQ(SendEncrypted(), -1);
  options_.caFile = "/nulla/qui.pem";
  EXPECT_EQ(SendEncrypted(), 0);
  EXPECT_EQ(server_->Count(), 1U);
}

TEST_F(KeptTls, MadeWithoutACheckIsNotUsedWhereOneIsWanted) {
  options_.caFile.clear();
  options_.verifyCertificates = false;
  EXPECT_EQ(SendEncrypted(), -1);
  options_.verifyCertificates = true;
  EXPECT_EQ(SendEncrypted(), 0);
  EXPECT_EQ(server_->Count(), 1U);
}

// --- How long a connection is kept
// -----------------------------------------------------------------------------------

/// A clock that stands still until the test moves it.
struct Clock {
  Channel::Clock::time_point now = Channel::Clock::now();

  PoolOptions Options() {
    PoolOptions options;
    options.idleLimit = std::chrono::seconds(30);
    options.now = [this] { return now; };
    return options;
  }
};

TEST(IdleConnection, IsUsedUpToItsLimit) {
  ScriptedServer server(kHello + kMessage + kMessage + kMessage + kQuit);
  Clock clock;
  Pool pool = NewPool(clock.Options());
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(Send(server.Port16(), pool), -1);
    clock.now += std::chrono::milliseconds(29'999);
  }
  pool.reset();
  EXPECT_EQ(server.Complaint(), "");
}

TEST(IdleConnection, IsClosedWithQuitAtItsLimit) {
  ScriptedServer server({kHello + kMessage + kQuit, kHello + kMessage + kQuit});
  Clock clock;
  Pool pool = NewPool(clock.Options());
  EXPECT_EQ(Send(server.Port16(), pool), -1);
  clock.now += std::chrono::seconds(30);
  EXPECT_EQ(Send(server.Port16(), pool), -1);
  pool.reset();
  EXPECT_EQ(server.Complaint(), "");
}

TEST(IdleConnection, IsClosedByAMessageToAnotherServerToo) {
  ScriptedServer server(kHello + kMessage + kQuit);
  const SmtpServer other;
  Clock clock;
  const Pool pool = NewPool(clock.Options());
  EXPECT_EQ(Send(server.Port16(), pool), -1);
  clock.now += std::chrono::seconds(30);
  EXPECT_EQ(Send(other.Port16(), pool), -1);
  EXPECT_EQ(server.Complaint(), "");
}

TEST(IdleConnection, ThatWaitedLongestMakesRoom) {
  ScriptedServer first(kHello + kMessage + kQuit);
  ScriptedServer second(kHello + kMessage + kMessage + kQuit);
  ScriptedServer third(kHello + kMessage + kQuit);
  PoolOptions options;
  options.waiting = 2;
  Pool pool = NewPool(options);
  for (ScriptedServer* server : {&first, &second, &third}) EXPECT_EQ(Send(server->Port16(), pool), -1);
  EXPECT_EQ(first.Complaint(), "");
  EXPECT_EQ(Send(second.Port16(), pool), -1);
  pool.reset();
  EXPECT_EQ(second.Complaint() + third.Complaint(), "");
}

TEST(IdleConnection, MayBeForbidden) {
  ScriptedServer server({kHello + kMessage + kQuit, kHello + kMessage + kQuit});
  PoolOptions options;
  options.waiting = 0;
  const Pool pool = NewPool(options);
  EXPECT_EQ(Send(server.Port16(), pool), -1);
  EXPECT_EQ(Send(server.Port16(), pool), -1);
  EXPECT_EQ(server.Complaint(), "");
}

TEST(KeptConnection, CarriesAHundredMessagesAndNoMore) {
  EXPECT_EQ(PoolOptions().messagesPerConnection, 100U);
  Script hundred = kHello;
  for (int i = 0; i < 100; ++i) hundred = hundred + kMessage;
  ScriptedServer server({hundred + kQuit, kHello + kMessage + kQuit});
  Pool pool = NewPool();
  for (int i = 0; i < 101; ++i) ASSERT_EQ(Send(server.Port16(), pool), -1);
  pool.reset();
  EXPECT_EQ(server.Complaint(), "");
}

TEST(KeptConnection, CountsARefusedMessageToo) {
  const Script refused = kSender + Script{On("RCPT TO:*", "550 ignoto"), On("RSET", "250 Ok")};
  ScriptedServer server({kHello + refused + kMessage + kQuit, kHello + kMessage + kQuit});
  PoolOptions options;
  options.messagesPerConnection = 2;
  Pool pool = NewPool(options);
  EXPECT_EQ(Send(server.Port16(), pool), 4);
  EXPECT_EQ(Send(server.Port16(), pool), -1);
  EXPECT_EQ(Send(server.Port16(), pool), -1);
  pool.reset();
  EXPECT_EQ(server.Complaint(), "");
}

TEST(EndOfAPool, DoesNotWaitForAServerThatIsSlowToTakeItsLeave) {
  ScriptedServer server(kHello + kMessage + Script{ThenStall(On("QUIT", ""))});
  Pool pool = NewPool();
  SmtpOptions patient = Quick();
  patient.replyTimeout = std::chrono::minutes(10);
  EXPECT_EQ(Send(server.Port16(), pool, patient), -1);
  pool.reset();
  EXPECT_EQ(server.Complaint(), "");  // there would be one about a client that waits
}

TEST(EndOfAPool, OutlivesAServerThatHasGone) {
  ScriptedServer server(kHello + kEnvelope + kData + Script{ThenReset(Body("250 preso"))});
  Pool pool = NewPool();
  EXPECT_EQ(Send(server.Port16(), pool), -1);
  server.AwaitClosed(0);
  pool.reset();
  EXPECT_EQ(server.Complaint(), "");
}

// --- A server that has left meanwhile
// ------------------------------------------------------------------------------

/// The dialogue of the following messages, without what libcurl says about itself.
SmtpOptions Traced(std::vector<std::string>& dialogue) {
  SmtpOptions options = Quick();
  options.trace = [&dialogue](std::string_view line) {
    if (line.substr(0, 2) != "* ") dialogue.emplace_back(line);
  };
  return options;
}

TEST(ServerThatLeft, IsNoticedBeforeAnythingOfTheMessageIsSaid) {
  const std::vector<std::pair<const char*, Script>> departures = {
      {"closed", {ThenDrop(Body("250 preso"))}},
      {"reset", {ThenReset(Body("250 preso"))}},
      {"said 421 and closed", {Body("250 preso"), ThenDrop(Say("421 troppo tempo"))}},
      {"said 421 and waits", {ThenStall(Body("250 preso\r\n421 troppo tempo"))}},
  };
  for (const auto& [label, departure] : departures) {
    ScriptedServer server({kHello + kEnvelope + kData + departure, kHello + kMessage + kQuit});
    Pool pool = NewPool();
    EXPECT_EQ(Send(server.Port16(), pool), -1) << label;
    if (std::string(label) != "said 421 and waits") server.AwaitClosed(0);
    std::vector<std::string> dialogue;
    EXPECT_EQ(Send(server.Port16(), pool, Traced(dialogue)), -1) << label;
    ASSERT_FALSE(dialogue.empty());
    EXPECT_EQ(dialogue.front(), "S: 220 pronto") << label;
    pool.reset();
    EXPECT_EQ(server.Complaint(), "") << label;
  }
}

TEST(ServerThatLeft, WithA421LongAfterTheMessageIsNoticed) {
  std::promise<void> idle;
  const auto wait = [&] { idle.get_future().wait(); };
  ScriptedServer server(
      {kHello + kMessage + Script{ThenDrop(Say(wait, "421 troppo tempo"))}, kHello + kMessage + kQuit});
  Pool pool = NewPool();
  EXPECT_EQ(Send(server.Port16(), pool), -1);
  idle.set_value();
  server.AwaitClosed(0);
  EXPECT_EQ(Send(server.Port16(), pool), -1);
  pool.reset();
  EXPECT_EQ(server.Complaint(), "");
}

TEST_F(KeptTls, IsReplacedWhenTheServerHasClosedIt) {
  for (const std::string tls : {"starttls", "implicit"}) {
    Serve(tls);
    EXPECT_EQ(SendEncrypted(), -1);
    server_->DropConnections();
    EXPECT_EQ(SendEncrypted(), -1);
    EXPECT_EQ(server_->Count(), 2U);
    EXPECT_EQ(Connections(*server_), 2U);
  }
}

// --- What a message leaves behind
// ------------------------------------------------------------------------------------

/// A message over a connection that has carried one already, and the next message after it.
struct Second {
  const char* label;
  Script script;  // what happens to it on the kept connection
  Script retry;   // what happens to it on a new one; empty: there is no second one
  ErrorNumber want;
  bool kept = false;  // the next message goes over the last connection
  bool mayHaveArrived = false;
};

void PrintTo(const Second& second, std::ostream* out) {
  *out << second.label;
}

const Script kRefusal = {On("RCPT TO:*", "550 5.1.1 ignoto")};
const Script kReset = {On("RSET", "250 Ok")};
const Script kAnnaRefused = {On("RCPT TO:<mario@bianchi.it>", "250 Ok"),
                             On("RCPT TO:<anna@verdi.it>", "550 ignota")};
const Script kNoSender = {On("RCPT TO:*", "503 MAIL?"), On("RCPT TO:*", "503 MAIL?")};

const std::vector<Second> kSeconds = {
    {"Taken", kMessage, {}, ErrorNumber::kNone, true},
    {"RecipientRefused", kSender + kAnnaRefused + kReset, {}, ErrorNumber::kRecipients, true},
    {"RecipientLeft",
     kSender + Script{ThenDrop(On("RCPT TO:*", "421 chiudo"))},
     {},
     ErrorNumber::kRecipients},
    {"RecipientDropped", kSender + Script{ThenDrop(On("RCPT TO:*", ""))}, {}, ErrorNumber::kRecipients},
    {"RecipientStalled", kSender + Script{ThenStall(On("RCPT TO:*", ""))}, {}, ErrorNumber::kRecipients},
    {"ResetRefused",
     kSender + kAnnaRefused + Script{On("RSET", "502 eh?"), On("QUIT", "221 ciao")},
     {},
     ErrorNumber::kReset},
    {"ResetDropped", kSender + kAnnaRefused + Script{ThenDrop(On("RSET", ""))}, {}, ErrorNumber::kReset},
    {"DataRefused", kEnvelope + Script{On("DATA", "554 no"), On("QUIT", "221 ciao")}, {}, ErrorNumber::kData},
    {"DataDropped", kEnvelope + Script{ThenDrop(On("DATA", ""))}, {}, ErrorNumber::kData},
    {"DataStalled", kEnvelope + Script{ThenStall(On("DATA", ""))}, {}, ErrorNumber::kData},
    {"MessageRefused",
     kEnvelope + kData + Script{Body("552 troppo"), On("QUIT", "221 ciao")},
     {},
     ErrorNumber::kData},
    {"MessageDropped", kEnvelope + kData + Script{ThenDrop(Body(""))}, {}, ErrorNumber::kData, false, true},
    {"MessageStalled", kEnvelope + kData + Script{ThenStall(Body(""))}, {}, ErrorNumber::kData, false, true},
    {"TakenWithMoreWords",
     kEnvelope + kData + Script{Body("250 preso\r\n250 davvero"), On("QUIT", "221 ciao")},
     {},
     ErrorNumber::kNone},
    // A sender that is refused on a kept connection is repeated on a new one, which decides.
    {"SenderRefusedTwice",
     {On("MAIL FROM:*", "550 no"), On("QUIT", "221 ciao")},
     {On("MAIL FROM:*", "550 no"), On("QUIT", "221 ciao")},
     ErrorNumber::kSender},
    {"SenderNeedsAuthTwice",
     {On("MAIL FROM:*", "530 no"), On("QUIT", "221 ciao")},
     {On("MAIL FROM:*", "530 no"), On("QUIT", "221 ciao")},
     ErrorNumber::kAuthentication},
    {"TooManyMessages",
     {On("MAIL FROM:*", "452 4.5.3 basta"), On("QUIT", "221 ciao")},
     kMessage,
     ErrorNumber::kNone,
     true},
    {"SenderLeft", {ThenDrop(On("MAIL FROM:*", "421 chiudo"))}, kMessage, ErrorNumber::kNone, true},
    {"SenderDropped", {ThenDrop(On("MAIL FROM:*", ""))}, kMessage, ErrorNumber::kNone, true},
    {"SenderReset", {ThenReset(On("MAIL FROM:*", "25"))}, kMessage, ErrorNumber::kNone, true},
    {"SenderStalled", {ThenStall(On("MAIL FROM:*", ""))}, kMessage, ErrorNumber::kNone, true},
    {"SenderGarbage", {ThenDrop(On("MAIL FROM:*", "eh?"))}, kMessage, ErrorNumber::kNone, true},
    {"SenderDroppedThenRecipientRefused",
     {ThenDrop(On("MAIL FROM:*", ""))},
     kSender + kAnnaRefused + kReset,
     ErrorNumber::kRecipients,
     true},
};

// With PIPELINING: MAIL and both RCPT have been sent when the first reply comes.
const std::vector<Second> kPipelinedSeconds = {
    {"Taken", kMessage, {}, ErrorNumber::kNone, true},
    {"FirstRecipientRefused",
     kSender + kRefusal + Script{On("RCPT TO:*", "250 Ok")} + kReset,
     {},
     ErrorNumber::kRecipients,
     true},
    {"SecondRecipientRefused", kSender + kAnnaRefused + kReset, {}, ErrorNumber::kRecipients, true},
    {"BothRecipientsRefused", kSender + kRefusal + kRefusal + kReset, {}, ErrorNumber::kRecipients, true},
    {"RecipientLeft",
     kSender + Script{On("RCPT TO:*", "250 Ok"), ThenDrop(On("RCPT TO:*", "421 chiudo"))},
     {},
     ErrorNumber::kRecipients},
    {"SecondRecipientDropped",
     kSender + Script{ThenDrop(On("RCPT TO:*", "250 Ok"))},
     {},
     ErrorNumber::kRecipients},
    {"ResetRefused",
     kSender + kAnnaRefused + Script{On("RSET", "502 eh?"), On("QUIT", "221 ciao")},
     {},
     ErrorNumber::kReset},
    {"DataRefused", kEnvelope + Script{On("DATA", "554 no"), On("QUIT", "221 ciao")}, {}, ErrorNumber::kData},
    {"MessageDropped", kEnvelope + kData + Script{ThenDrop(Body(""))}, {}, ErrorNumber::kData, false, true},
    {"SenderRefusedTwice", Script{On("MAIL FROM:*", "550 no")} + kNoSender + kQuit,
     Script{On("MAIL FROM:*", "550 no")} + kNoSender + kQuit, ErrorNumber::kSender},
    {"SenderNeedsAuthTwice", Script{On("MAIL FROM:*", "530 no")} + kNoSender + kQuit,
     Script{On("MAIL FROM:*", "530 no")} + kNoSender + kQuit, ErrorNumber::kAuthentication},
    {"SenderRefusedButRecipientsTaken",
     Script{On("MAIL FROM:*", "550 no"), On("RCPT TO:*", "250 Ok"), On("RCPT TO:*", "250 Ok")} + kQuit,
     Script{On("MAIL FROM:*", "550 no"), On("RCPT TO:*", "250 Ok"), On("RCPT TO:*", "250 Ok")} + kQuit,
     ErrorNumber::kSender},
    {"SenderLeft", {ThenDrop(On("MAIL FROM:*", "421 chiudo"))}, kMessage, ErrorNumber::kNone, true},
    {"SenderDropped", {ThenDrop(On("MAIL FROM:*", ""))}, kMessage, ErrorNumber::kNone, true},
};

class KeptFailures : public testing::Test {
 protected:
  static void Play(const Second& second, const Script& hello) {
    std::vector<Script> scripts = {hello + kMessage + second.script};
    if (!second.retry.empty()) scripts.push_back(hello + second.retry);
    if (!second.kept) scripts.push_back(hello);
    scripts.back() = scripts.back() + kMessage + kQuit;
    const auto want = static_cast<std::int32_t>(second.want);
    const auto attempt = [&](std::chrono::milliseconds timeout) {
      ScriptedServer server(scripts);
      SmtpOptions impatient = Quick();
      impatient.replyTimeout = timeout;
      impatient.finalReplyTimeout = timeout;
      Pool pool = NewPool();
      Played played;
      played.first = Send(server.Port16(), pool);
      {
        const auto message = Message(server.Port16(), pool, impatient);
        played.second = Sent(*message);
        played.failure = message->Fine().motivo;
        played.mayHaveArrived = message->Fine().incerta;
      }
      played.next = Send(server.Port16(), pool);
      pool.reset();
      played.complaint = server.Complaint();
      return played;
    };
    const Played played = support::WithPatience(
        attempt, [&](const Played& one) { return one.second == want && one.complaint.empty(); });
    EXPECT_EQ(played.first, -1);
    EXPECT_EQ(played.second, want) << played.failure;
    EXPECT_EQ(played.failure.empty(), second.want == ErrorNumber::kNone);
    EXPECT_EQ(played.mayHaveArrived, second.mayHaveArrived);
    EXPECT_EQ(played.next, -1);
    EXPECT_EQ(played.complaint, "");
  }

 private:
  struct Played {
    std::int32_t first = 0;
    std::int32_t second = 0;
    std::int32_t next = 0;
    std::string failure;
    bool mayHaveArrived = false;
    std::string complaint;
  };
};

class OfOneMessage : public KeptFailures, public testing::WithParamInterface<Second> {};
class OfOneMessagePipelined : public KeptFailures, public testing::WithParamInterface<Second> {};

TEST_P(OfOneMessage, DoNotReachTheNext) {
  Play(GetParam(), kHello);
}
TEST_P(OfOneMessagePipelined, DoNotReachTheNext) {
  Play(GetParam(), kPipelining);
}

INSTANTIATE_TEST_SUITE_P(KeptFailures, OfOneMessage, testing::ValuesIn(kSeconds),
                         [](const auto& test) { return test.param.label; });
INSTANTIATE_TEST_SUITE_P(KeptFailures, OfOneMessagePipelined, testing::ValuesIn(kPipelinedSeconds),
                         [](const auto& test) { return test.param.label; });

TEST(Pipelining, NeverSendsDataWithTheEnvelope) {
  ScriptedServer server(kPipelining + kMessage + kQuit);
  std::vector<std::string> dialogue;
  EXPECT_EQ(Send(server.Port16(), nullptr, Traced(dialogue)), -1);
  EXPECT_EQ(server.Complaint(), "");
  EXPECT_THAT(dialogue,
              ElementsAre("S: 220 pronto", "C: EHLO prova.example.test", "S: 250-salve", "S: 250 PIPELINING",
                          "C: MAIL FROM:<ditta@rossi.it>", "C: RCPT TO:<mario@bianchi.it>",
                          "C: RCPT TO:<anna@verdi.it>", "S: 250 Ok", "S: 250 Ok", "S: 250 Ok", "C: DATA",
                          "S: 354 avanti", "S: 250 preso", "C: QUIT"));
}

TEST(KeptConnection, ThatCannotCarryAccentsRefusesTheMessageAndIsKept) {
  ScriptedServer server(kHello + kMessage + kMessage + kQuit);
  Pool pool = NewPool();
  EXPECT_EQ(Send(server.Port16(), pool), -1);
  {
    const auto accents = Message(server.Port16(), pool);
    accents->AddRecipientEx("N <nicolò@x.it>", 1);
    EXPECT_EQ(Sent(*accents), 4);
  }
  EXPECT_EQ(Send(server.Port16(), pool), -1);
  pool.reset();
  EXPECT_EQ(server.Complaint(), "");
}

TEST(KeptConnection, IsDroppedWhenAFileBreaksOffInTheMiddleOfAMessage) {
  const TempDir files;
  const std::string file = files.MakeLarge("grande.bin", 1'000'000);
  const auto vanish = [&] { std::filesystem::remove(file); };
  ScriptedServer server(
      {kHello + kMessage + kEnvelope + Script{On("DATA", vanish, "354 avanti"), support::BrokenBody()},
       kHello + kMessage + kQuit});
  Pool pool = NewPool();
  EXPECT_EQ(Send(server.Port16(), pool), -1);
  {
    const auto truncated = Message(server.Port16(), pool);
    truncated->AddAttachment(file);
    EXPECT_EQ(Sent(*truncated), 5);
  }
  EXPECT_EQ(Send(server.Port16(), pool), -1);
  pool.reset();
  EXPECT_EQ(server.Complaint(), "");
}

TEST(KeptConnection, ThatWasNotAuthenticatedIsNotKept) {
  ScriptedServer server({kHello + kQuit, kHello + kQuit});
  const Pool pool = NewPool();
  for (int i = 0; i < 2; ++i) {
    const auto component = Message(server.Port16(), pool);
    component->UserName("utente");
    component->Password("segreta");
    EXPECT_EQ(Sent(*component), 2);
  }
  EXPECT_EQ(server.Complaint(), "");
}

// --- Traces, programs, threads
// ---------------------------------------------------------------------------------------

TEST(KeptConnection, IsTracedForTheMessageThatUsesItAndForThePoolBehindIt) {
  ScriptedServer server(kHello + kMessage + kMessage + kQuit);
  std::vector<std::string> ofPool;
  PoolOptions options;
  options.trace = [&](std::string_view line) { ofPool.emplace_back(line); };
  Pool pool = NewPool(options);
  std::vector<std::string> first;
  std::vector<std::string> second;
  EXPECT_EQ(Send(server.Port16(), pool, Traced(first)), -1);
  EXPECT_EQ(Send(server.Port16(), pool, Traced(second)), -1);
  pool.reset();
  EXPECT_EQ(server.Complaint(), "");
  EXPECT_EQ(first.back(), "S: 250 preso");
  EXPECT_THAT(second, ElementsAre("C: MAIL FROM:<ditta@rossi.it>", "S: 250 Ok",
                                  "C: RCPT TO:<mario@bianchi.it>", "S: 250 Ok", "C: RCPT TO:<anna@verdi.it>",
                                  "S: 250 Ok", "C: DATA", "S: 354 avanti", "S: 250 preso"));
  EXPECT_THAT(ofPool, ElementsAre("C: QUIT"));
}

TEST(KeptConnection, ObeysTheTimeOutsOfTheMessageThatUsesIt) {
  const auto attempt = [](std::chrono::milliseconds timeout) {
    ScriptedServer server(kHello + kMessage + kEnvelope + Script{ThenStall(On("DATA", ""))});
    const Pool pool = NewPool();
    SmtpOptions patient = Quick();
    patient.replyTimeout = std::chrono::minutes(10);
    EXPECT_EQ(Send(server.Port16(), pool, patient), -1);
    SmtpOptions impatient = Quick();
    impatient.replyTimeout = timeout;
    const std::int32_t number = Send(server.Port16(), pool, impatient);
    return std::pair(number, server.Complaint());
  };
  const std::pair<std::int32_t, std::string> wanted(5, "");
  EXPECT_EQ(support::WithPatience(attempt, [&](const auto& outcome) { return outcome == wanted; }), wanted);
}

TEST(KeptConnection, IsNotInheritedByProgramsThatTheHostStarts) {
  const SmtpServer server;
  const Pool pool = NewPool();
  EXPECT_EQ(Send(server.Port16(), pool), -1);
  int sockets = 0;
  for (int descriptor = 3; descriptor < 256; ++descriptor) {
    sockaddr_in peer{};
    socklen_t length = sizeof peer;
    const bool connected = ::getpeername(descriptor, reinterpret_cast<sockaddr*>(&peer), &length) == 0;
    if (!connected || ntohs(peer.sin_port) != server.Port()) continue;
    ++sockets;
    EXPECT_NE(::fcntl(descriptor, F_GETFD) & FD_CLOEXEC, 0);
  }
  EXPECT_EQ(sockets, 1);
}

TEST(PoolSharedByThreads, DeliversEachMessageOnce) {
  constexpr int kThreads = 4;
  constexpr int kMessages = 25;
  const SmtpServer server;
  const Pool pool = NewPool();
  const auto work = [&](int thread) {
    for (int i = 0; i < kMessages; ++i) {
      const auto component = Outgoing(server.Port16(), Quick(), pool);
      component->Subject(std::to_string(thread) + "-" + std::to_string(i));
      component->ClearRecipient();
      component->AddRecipientEx("X <x" + std::to_string(thread) + "-" + std::to_string(i) + "@x.it>", 0);
      EXPECT_EQ(Sent(*component), -1) << component->Fine().motivo;
    }
  };
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int thread = 0; thread < kThreads; ++thread) threads.emplace_back(work, thread);
  for (std::thread& thread : threads) thread.join();
  const std::vector<std::string> recipients = server.Recipients();
  EXPECT_EQ(recipients.size(), static_cast<std::size_t>(kThreads * kMessages));
  EXPECT_EQ(std::set<std::string>(recipients.begin(), recipients.end()).size(), recipients.size());
}

}  // namespace
}  // namespace orve::adapters::smtp
