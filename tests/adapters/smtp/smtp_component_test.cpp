// What the component does before it connects, and what it says in its trace.
#include "smtp/smtp_component.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "adapters/smtp/outgoing.h"
#include "orve-mailserver/host/errore.h"
#include "smtp/tracer.h"
#include "support/scripted_server.h"
#include "support/smtp_server.h"
#include "support/temp_dir.h"

namespace orve::adapters::smtp {
namespace {

using support::Body;
using support::On;
using support::Say;
using support::ScriptedServer;
using support::SmtpServer;
using testing::ElementsAre;

/// A server that nobody may reach.
class Untouched : public testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(server_.Count(), 0U); }
  [[nodiscard]] std::int16_t Port() const { return server_.Port16(); }

 private:
  SmtpServer server_;
};

template <class Action>
host::Errore RaisedBy(Action action) {
  try {
    action();
  } catch (const host::Errore& errore) {
    return errore;
  }
  ADD_FAILURE() << "nothing was raised";
  return {0, "", ""};
}

TEST(GetLastError, SaysThatNothingWasTriedUntilAMessageIsSent) {
  const SmtpComponent component;
  EXPECT_EQ(component.GetLastError(), host::Variant(std::int32_t{8}));
}

TEST(FromAddr, ReadsBackWhatWasWritten) {
  SmtpComponent component;
  EXPECT_EQ(component.FromAddr(), "");
  component.FromAddr("<ditta@rossi.it>");
  EXPECT_EQ(component.FromAddr(), "<ditta@rossi.it>");
}

TEST_F(Untouched, WithoutRecipientsNothingIsSentAndTheNumberIsFour) {
  const auto component = Outgoing(Port());
  component->ClearRecipient();
  component->AddRecipientEx("", 0);
  EXPECT_FALSE(component->SendMail().ToBoolean());
  EXPECT_EQ(component->GetLastError().ToInt32(), 4);
  component->AddRecipientEx("Nome <>; ;Altro <  >", 1);
  EXPECT_EQ(Sent(*component), 4);
}

TEST_F(Untouched, ClearRecipientForgetsAllThreeLists) {
  const auto component = Outgoing(Port());
  for (const int kind : {0, 1, 2}) component->AddRecipientEx("A <a@x.it>", kind);
  component->ClearRecipient();
  EXPECT_EQ(Sent(*component), 4);
}

TEST_F(Untouched, AnUnusableSenderGivesThree) {
  for (const char* sender : {"", "<>", "Rossi snc", "<a b@x.it>", "<a@x.it> SIZE=1", "<a@b@c>", "<a@>"}) {
    const auto component = Outgoing(Port());
    component->FromAddr(sender);
    EXPECT_EQ(Sent(*component), 3) << sender;
  }
}

TEST_F(Untouched, AnUnusableRecipientGivesFour) {
  for (const std::string recipient :
       {"a b@x.it", "Rossi snc", "a@x.it, b@x.it", "a@@x.it", "<a\tb@x.it>", "a@x y.it"}) {
    const auto component = Outgoing(Port());
    component->AddRecipientEx(recipient, 2);
    EXPECT_EQ(Sent(*component), 4) << recipient;
  }
}

TEST_F(Untouched, LineEndsAndNulInAddressesAreRaised) {
  const auto component = Outgoing(Port());
  for (const std::string& end :
       {std::string("\r\n"), std::string("\n"), std::string("\r"), std::string(1, '\0')}) {
    EXPECT_EQ(RaisedBy([&] { component->FromAddr("<a@x.it" + end + "RCPT TO:<b@x.it>"); }).Numero(), 5);
    EXPECT_EQ(RaisedBy([&] { component->AddRecipientEx("A <a@x.it" + end + "DATA>", 0); }).Numero(), 5);
    EXPECT_EQ(RaisedBy([&] { component->AddRecipientEx("a@x.it" + end + "DATA", 2); }).Numero(), 5);
  }
  EXPECT_EQ(component->FromAddr(), "<ditta@rossi.it>");
}

TEST_F(Untouched, AnUnknownKindOfRecipientIsRaised) {
  const auto component = Outgoing(Port());
  EXPECT_EQ(RaisedBy([&] { component->AddRecipientEx("A <a@x.it>", 3); }).Numero(), 5);
  EXPECT_EQ(RaisedBy([&] { component->AddRecipientEx("A <a@x.it>", -1); }).Numero(), 5);
}

TEST_F(Untouched, AHeaderNameThatIsNoneOrTakenIsRaised) {
  const auto component = Outgoing(Port());
  EXPECT_EQ(RaisedBy([&] { component->AddHeader("", "x"); }).Descrizione(),
            "Nome di intestazione non valido: \"\"");
  EXPECT_EQ(RaisedBy([&] { component->AddHeader("X\r\nBcc", "x"); }).Descrizione(),
            "Nome di intestazione non valido: \"X  Bcc\"");
  EXPECT_EQ(RaisedBy([&] { component->AddHeader("Bcc", "x@y.it"); }).Descrizione(),
            "L'intestazione \"Bcc\" è gestita dal messaggio stesso");
}

TEST_F(Untouched, AFileThatCannotBeAttachedIsRaisedAndTheOthersStay) {
  const support::TempDir files;
  const auto component = Outgoing(Port());
  component->AddAttachment(files.Write("uno.txt", "1"));
  EXPECT_EQ(RaisedBy([&] { component->AddAttachment("C:\\nulla\\manca.pdf"); }).Descrizione(),
            "Impossibile allegare il file \"C:\\nulla\\manca.pdf\": il file non esiste");
  EXPECT_EQ(RaisedBy([&] { component->AddAttachment(""); }).Numero(), 53);
  EXPECT_EQ(RaisedBy([&] { component->AddAttachment(files.Path().string()); }).Numero(), 75);
}

// --- Hostile texts in every member
// ---------------------------------------------------------------------------------

struct HostileText {
  const char* label;
  std::string text;
};

void PrintTo(const HostileText& test, std::ostream* out) {
  *out << test.label;
}

class HostileTexts : public testing::TestWithParam<HostileText> {};

TEST_P(HostileTexts, NeverReachACommandOrTheHeader) {
  const SmtpServer server;
  const std::string& text = GetParam().text;
  const auto component = Outgoing(server.Port16());
  component->From(text);
  component->Subject(text);
  component->BodyText(text);
  component->AddHeader("X-Nota", text);
  component->ClearRecipient();
  // The text as a name, without what ends an entry, which a name cannot contain outside quotes.
  std::string name;
  for (const char c : text) {
    if (std::string_view(";<>\"@").find(c) == std::string_view::npos) name += c;
  }
  component->AddRecipientEx(name.substr(0, 20'000) + " <mario@bianchi.it>", 0);
  ASSERT_EQ(Sent(*component), -1) << component->Fine().motivo;
  const support::ReceivedMessage got = server.OnlyMessage();
  EXPECT_EQ(got.sender, "ditta@rossi.it");
  EXPECT_THAT(got.recipients, ElementsAre("mario@bianchi.it"));
  ASSERT_EQ(got.to.size(), 1U);
  EXPECT_EQ(got.to[0].address, "mario@bianchi.it");
  EXPECT_EQ(got.headers.size(), 9U);
  EXPECT_EQ(got.Header("Bcc"), "");
}

std::string Repeated(const std::string& unit, std::size_t size) {
  std::string text;
  while (text.size() < size) text += unit;
  return text;
}

INSTANTIATE_TEST_SUITE_P(
    Table, HostileTexts,
    testing::Values(HostileText{"Empty", ""},
                    HostileText{"LineEnds", "a\r\nBcc: x@y.it\r\n\r\n.\r\nQUIT\r\n"},
                    HostileText{"LoneDot", ".\r\nMAIL FROM:<x@y.it>\r\n"},
                    HostileText{"Nul", std::string("a\0b", 3)},
                    HostileText{"InvalidUtf8", "citt\xe0 \xff\xfe"}, HostileText{"Quotes", "\"'\\\"<>;,@[]"},
                    HostileText{"BareLineFeedDot", "a\n.\nb\r.\rc"},
                    HostileText{"OneMegabyte", Repeated("parola è ", 1 << 20)},
                    HostileText{"SixtyFourKilobytesOfOneWord", std::string(1 << 16, 'x')}),
    [](const auto& test) { return test.param.label; });

TEST(HostileCredentials, NeverReachACommand) {
  support::SmtpServerOptions serving;
  serving.auth = {"PLAIN"};
  serving.user = "utente";
  serving.password = "segreta";
  const SmtpServer server(serving);
  for (const std::string& text : {std::string("a\r\nMAIL FROM:<x@y.it>"), std::string("\xff\xfe"),
                                  std::string("\"'\\"), std::string(1 << 20, 'x')}) {
    const auto component = Outgoing(server.Port16());
    component->UserName(text);
    component->Password(text);
    EXPECT_EQ(Sent(*component), 2) << component->Fine().motivo;
  }
  EXPECT_EQ(server.Count(), 0U);
}

TEST(OpenedPassword, IsAskedForOnceTheTargetIsFinalAndServesTheLogin) {
  support::SmtpServerOptions serving;
  serving.auth = {"PLAIN"};
  serving.user = "utente";
  serving.password = "segreta";
  const SmtpServer server(serving);
  SmtpOptions options = Quick();
  std::vector<std::string> asked;
  options.openPassword = [&](const Target& target) {
    asked.push_back(target.user + "/" + std::string(target.password.View()) + "@" + target.host + ":" +
                    std::to_string(target.port) + (target.encrypted ? "+" : "-"));
    return secrets::Secret("segreta");
  };
  const auto component = Outgoing(server.Port16(), options);
  component->Password("sigillata");
  component->UserName("utente");
  EXPECT_EQ(Sent(*component), -1) << component->Fine().motivo;
  EXPECT_EQ(asked,
            std::vector<std::string>{"utente/sigillata@127.0.0.1:" + std::to_string(server.Port()) + "-"});
}

TEST(OpenedPassword, ThatCannotBeHadIsAFailedLoginWithoutAConnection) {
  SmtpOptions options = Quick();
  std::vector<std::string> trace;
  options.trace = [&](std::string_view line) { trace.emplace_back(line); };
  options.openPassword = [](const Target&) -> secrets::Secret {
    throw host::Errore(5, "prova", "non si apre");
  };
  const auto component = Outgoing(1, options);
  component->UserName("utente");
  component->Password("sigillata");
  EXPECT_EQ(Sent(*component), 2);
  EXPECT_EQ(component->Fine().motivo, "non si apre");
  EXPECT_TRUE(trace.empty());
}

// --- The trace
// -----------------------------------------------------------------------------------------------------

std::vector<std::string> Dialogue(const std::vector<std::string>& trace) {
  std::vector<std::string> dialogue;
  for (const std::string& line : trace) {
    if (line.rfind("* ", 0) != 0) dialogue.push_back(line);
  }
  return dialogue;
}

TEST(Trace, ShowsTheDialogueWithoutCredentials) {
  ScriptedServer server({Say("220 pronto"), On("EHLO *", "250-salve\r\n250 AUTH LOGIN"),
                         On("AUTH LOGIN", "334 VXNlcm5hbWU6"), On("dXRlbnRl", "334 UGFzc3dvcmQ6"),
                         On("c2VncmV0YQ==", "235 benvenuto"), On("MAIL FROM:<ditta@rossi.it>", "250 Ok"),
                         On("RCPT TO:<mario@bianchi.it>", "250 Ok"), On("DATA", "354 avanti"),
                         Body("250 preso"), On("QUIT", "221 ciao")});
  SmtpOptions options = Quick();
  std::vector<std::string> trace;
  options.trace = [&](std::string_view line) { trace.emplace_back(line); };
  const auto component = Outgoing(server.Port16(), options);
  component->UserName("utente");
  component->Password("segreta");
  ASSERT_EQ(Sent(*component), -1) << component->Fine().motivo;
  EXPECT_EQ(server.Complaint(), "");
  EXPECT_THAT(Dialogue(trace),
              ElementsAre("S: 220 pronto", "C: EHLO prova.example.test", "S: 250-salve", "S: 250 AUTH LOGIN",
                          "C: AUTH LOGIN", "S: 334 ***", "C: ***", "S: 334 ***", "C: ***", "S: 235 benvenuto",
                          "C: MAIL FROM:<ditta@rossi.it>", "S: 250 Ok", "C: RCPT TO:<mario@bianchi.it>",
                          "S: 250 Ok", "C: DATA", "S: 354 avanti", "S: 250 preso", "C: QUIT"));
}

TEST(Trace, MasksAServerThatRepeatsThePassword) {
  ScriptedServer server({Say("220 pronto"), On("EHLO *", "250-salve\r\n250 AUTH PLAIN"),
                         On("AUTH PLAIN", "334 "), On("*", "235 Ok"),
                         On("MAIL FROM:*", "550 segreta? AHV0ZW50ZQBzZWdyZXRh")});
  SmtpOptions options = Quick();
  std::vector<std::string> trace;
  options.trace = [&](std::string_view line) { trace.emplace_back(line); };
  const auto component = Outgoing(server.Port16(), options);
  component->UserName("utente");
  component->Password("segreta");
  EXPECT_EQ(Sent(*component), 3);
  EXPECT_EQ(component->Fine().motivo, "MAIL FROM:<ditta@rossi.it>: 550 ***");
  for (const std::string& line : trace) {
    EXPECT_EQ(line.find("segreta"), std::string::npos);
    EXPECT_EQ(line.find("AHV0ZW50ZQBzZWdyZXRh"), std::string::npos);
  }
}

TEST(Trace, GoesOnMaskingAfterAnUntidyLine) {
  ScriptedServer server({Say("220 pronto"), On("EHLO *", "250-salve\r\n250 AUTH LOGIN"),
                         On("AUTH LOGIN", "un momento\r\n334 VXNlcm5hbWU6"),
                         On("*", "235-\r\n334 UGFzc3dvcmQ6"), ThenDrop(On("*", "235 benvenuto"))});
  SmtpOptions options = Quick();
  std::vector<std::string> trace;
  options.trace = [&](std::string_view line) { trace.emplace_back(line); };
  const auto component = Outgoing(server.Port16(), options);
  component->UserName("utente");
  component->Password("segreta");
  Sent(*component);
  const std::vector<std::string> dialogue = Dialogue(trace);
  EXPECT_THAT(dialogue,
              testing::IsSupersetOf({"C: AUTH LOGIN", "S: ***", "S: 334 ***", "C: ***", "S: 235 benvenuto"}));
  for (const std::string& line : dialogue) {
    EXPECT_EQ(line.find("dXRlbnRl"), std::string::npos) << line;
    EXPECT_EQ(line.find("c2VncmV0YQ"), std::string::npos) << line;
  }
}

TEST(Trace, GoesOnMaskingAfterALineThatOnlyLooksFinal) {
  ScriptedServer server({Say("220 pronto"), On("EHLO *", "250-salve\r\n250 AUTH LOGIN"),
                         On("AUTH LOGIN", "235\n334 VXNlcm5hbWU6"), On("*", "235\n334 UGFzc3dvcmQ6"),
                         On("c2VncmV0YQ==", "235 benvenuto"), On("MAIL FROM:*", "250 Ok"),
                         On("RCPT TO:*", "550 c2VncmV0YQ"), On("RSET", "250 Ok"), On("QUIT", "221 ciao")});
  SmtpOptions options = Quick();
  std::vector<std::string> trace;
  options.trace = [&](std::string_view line) { trace.emplace_back(line); };
  const auto component = Outgoing(server.Port16(), options);
  component->UserName("utente");
  component->Password("segreta");
  EXPECT_EQ(Sent(*component), 4);
  EXPECT_EQ(server.Complaint(), "");  // the password was asked for and sent
  EXPECT_THAT(component->Fine().motivo, testing::Not(testing::HasSubstr("c2VncmV0YQ")));
  const std::vector<std::string> dialogue = Dialogue(trace);
  EXPECT_THAT(dialogue, testing::Contains("C: MAIL FROM:<ditta@rossi.it>"));
  for (const std::string& line : dialogue) {
    EXPECT_EQ(line.find("dXRlbnRl"), std::string::npos) << line;
    EXPECT_EQ(line.find("c2VncmV0YQ"), std::string::npos) << line;
  }
}

TEST(FailureText, HoldsNoSecretThatTheServerSpreadsOverItsRefusals) {
  const std::string token = "AHV0ZW50ZQBQYXJvbGEuU2VncmV0YS00Mg==";
  constexpr std::size_t kPiece = 4;
  for (const bool traced : {false, true}) {
    SCOPED_TRACE(traced);
    std::vector<support::Step> script = {
        Say("220 pronto"), On("EHLO *", "250-salve\r\n250-PIPELINING\r\n250 AUTH PLAIN"),
        On("AUTH PLAIN", "334 "), On(token, "235 Ok"), On("MAIL FROM:*", "250 Ok")};
    std::string recipients;
    for (std::size_t at = 0; at < token.size(); at += kPiece) {
      script.push_back(On("RCPT TO:*", "550 5.1.1 " + token.substr(at, kPiece)));
      recipients += "r" + std::to_string(at) + "@bianchi.it;";
    }
    script.push_back(On("RSET", "250 Ok"));
    script.push_back(On("QUIT", "221 ciao"));
    ScriptedServer server(script);
    SmtpOptions options = Quick();
    if (traced) options.trace = [](std::string_view) {};
    const auto component = Outgoing(server.Port16(), options);
    component->ClearRecipient();
    component->AddRecipientEx(recipients, 1);
    component->UserName("utente");
    component->Password("Parola.Segreta-42");
    EXPECT_EQ(Sent(*component), 4);
    EXPECT_EQ(server.Complaint(), "");
    const std::string text = component->Fine().motivo;
    std::size_t pieces = 0;
    for (std::size_t at = 0; at < token.size(); at += kPiece) {
      if (text.find(token.substr(at, kPiece)) != std::string::npos) ++pieces;
    }
    EXPECT_LE(pieces, 1U) << text;
    EXPECT_THAT(text, testing::HasSubstr("RCPT TO:<r0@bianchi.it>: 550 "));
    EXPECT_THAT(text, testing::HasSubstr("RCPT TO:<r32@bianchi.it>: 550 ***"));
  }
}

TEST(Trace, ThatCannotBeWrittenDoesNotStopTheMessage) {
  const SmtpServer server;
  SmtpOptions options = Quick();
  options.trace = [](std::string_view) { throw std::runtime_error("disco pieno"); };
  EXPECT_EQ(Sent(*Outgoing(server.Port16(), options)), -1);
  EXPECT_EQ(server.Count(), 1U);
}

TEST(Tracer, MasksTheWholeExchangeOfAnAuthentication) {
  std::vector<std::string> lines;
  Tracer tracer([&](std::string_view line) { lines.emplace_back(line); }, "pwd");
  tracer.Sent("AUTH PLAIN AHUAcHdk\r\n");
  tracer.Received("334 cHdk\r\n");
  tracer.Sent("qualsiasi cosa\r\n");
  tracer.Received("535-no\r\n535 non con pwd\r\n");
  tracer.LoginOver();
  tracer.Sent("MAIL FROM:<a@x.it>\r\nRCPT TO:<b@x.it>\r\n");
  tracer.Note("con pwd\n");
  EXPECT_THAT(lines, ElementsAre("C: AUTH PLAIN ***", "S: 334 ***", "C: ***", "S: 535-no", "S: 535 ***",
                                 "C: MAIL FROM:<a@x.it>", "C: RCPT TO:<b@x.it>", "* ***"));
}

}  // namespace
}  // namespace orve::adapters::smtp
