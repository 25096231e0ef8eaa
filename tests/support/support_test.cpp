// The tools of the tests must themselves be able to fail.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "support/process.h"
#include "support/scripted_server.h"
#include "support/temp_dir.h"

namespace orve::support {
namespace {

/// A client that says what it is told and reads until the connection ends.
std::string Talk(int port, const std::string& words) {
  const auto connection = ConnectTo(port);
  EXPECT_TRUE(connection);
  EXPECT_EQ(::send(connection.Number(), words.data(), words.size(), MSG_NOSIGNAL),
            static_cast<ssize_t>(words.size()));
  ::shutdown(connection.Number(), SHUT_WR);
  std::string heard;
  char byte = 0;
  while (::recv(connection.Number(), &byte, 1, 0) == 1) heard += byte;
  return heard;
}

TEST(ScriptedServer, IsContentWithItsScript) {
  for (const Pace pace : {Pace::kWhole, Pace::kByLine, Pace::kByByte}) {
    ScriptedServer server({Say("220 a"), On("UNO", "250-b\r\n250 c"), On("DUE*", "354 d"), Body("250 e")},
                          pace);
    EXPECT_EQ(Talk(server.Port(), "UNO\r\nDUE x\r\nriga\r\n..\r\n\r\n.\r\nQUIT\r\n"),
              "220 a\r\n250-b\r\n250 c\r\n354 d\r\n250 e\r\n221 Fine\r\n");
    EXPECT_EQ(server.Complaint(), "");
    EXPECT_EQ(server.Message(), "riga\r\n.\r\n\r\n");
  }
}

TEST(ScriptedServer, ComplainsOfAnotherCommand) {
  ScriptedServer server({On("UNO", "250 a")});
  Talk(server.Port(), "TRE\r\n");
  EXPECT_EQ(server.Complaint(), "instead of \"UNO\" came: TRE\n");
}

TEST(ScriptedServer, ComplainsOfACommandThatNeverComes) {
  ScriptedServer server({On("UNO", "250 a"), On("DUE", "250 b")});
  Talk(server.Port(), "UNO\r\n");
  EXPECT_EQ(server.Complaint(), "the connection ended instead of: DUE\n");
}

TEST(ScriptedServer, ComplainsOfACommandTooMany) {
  ScriptedServer server({On("UNO", "250 a")});
  Talk(server.Port(), "UNO\r\nDUE\r\n");
  EXPECT_EQ(server.Complaint(), "after the script came: DUE\n");
}

TEST(ScriptedServer, ComplainsOfATornMessageAndOfAClosedOne) {
  ScriptedServer whole({Body("250 a")});
  Talk(whole.Port(), "riga\r\n");
  EXPECT_EQ(whole.Complaint(), "the connection ended within the message\n");
  ScriptedServer broken({BrokenBody()});
  Talk(broken.Port(), "riga\r\n.\r\n");
  EXPECT_EQ(broken.Complaint(), "the message was ended by a dot\n");
}

TEST(ScriptedServer, ComplainsOfASecondConnection) {
  ScriptedServer server({ThenDrop(Say("421 via"))});
  Talk(server.Port(), "");
  const auto connection = ConnectTo(server.Port());
  ASSERT_TRUE(connection);
  EXPECT_EQ(server.Complaint(), "somebody connected once more\n");
}

TEST(Process, GivesItsOutputAndStatus) {
  const ProcessResult result = RunProgram({"sh", "-c", "echo fuori; echo errore >&2; exit 3"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.output, "fuori\nerrore\n");
  EXPECT_EQ(RunProgram({"/nulla/qui"}).status, 127);
}

TEST(Process, IsBoundedInTime) {
  // Waiting for them to end would take longer than a test may.
  EXPECT_THROW(RunProgram({"sleep", "600"}, std::chrono::milliseconds(200)), std::runtime_error);
  Process silent({"sleep", "600"});
  EXPECT_THROW(silent.WaitForLine("READY", std::chrono::milliseconds(200)), std::runtime_error);
}

TEST(Process, IsGoneWithItsObject) {
  pid_t pid = 0;
  {
    Process stubborn({"sh", "-c", "trap '' TERM; echo READY; while :; do sleep 0.1; done"});
    stubborn.WaitForLine("READY");
    pid = stubborn.Pid();
    EXPECT_EQ(::kill(pid, 0), 0);
  }
  EXPECT_EQ(::kill(pid, 0), -1);
}

TEST(TempDir, IsGoneWithItsObject) {
  std::filesystem::path path;
  {
    const TempDir directory;
    path = directory.Path();
    EXPECT_EQ(ReadFile(directory.Write("a", "b")), "b");
  }
  EXPECT_FALSE(std::filesystem::exists(path));
  EXPECT_THROW(static_cast<void>(ReadFile(path)), std::runtime_error);
}

}  // namespace
}  // namespace orve::support
