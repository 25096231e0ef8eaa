// A server that plays a script: for each command expected the reply to give, whole, by line or byte by byte,
// and the ways to misbehave. It takes one connection and says at the end what did not go by the script.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <thread>
#include <vector>

namespace orve::support {

/// How replies go over the wire.
enum class Pace { kWhole, kByLine, kByByte };
std::ostream& operator<<(std::ostream& out, Pace pace);

struct Step {
  enum class Await { kNothing, kCommand, kBody, kBrokenBody };
  enum class Then { kGoOn, kDrop, kReset, kStall, kDeafen };

  Await await = Await::kNothing;
  std::string command;  // without line end; a closing "*" stands for anything
  std::string reply;    // lines joined by "\r\n", the last line end may be missing; empty: none
  Then then = Then::kGoOn;
  std::function<void()> before =
      nullptr;  // run between the command and the reply, or when a message has begun
};

/// Says something at once: the greeting.
Step Say(const std::string& reply);
/// Waits for a command and answers.
Step On(const std::string& command, const std::string& reply);
/// The same, running `action` before the answer.
Step On(const std::string& command, std::function<void()> action, const std::string& reply);
/// Reads a message up to its lone dot and answers.
Step Body(const std::string& reply);
/// Reads until the connection ends; it is against the script if a lone dot comes.
Step BrokenBody();
/// The same, running `action` when the first line has come.
Step BrokenBody(std::function<void()> action);

/// Once the step is done, closes the connection; breaks it with a reset; falls silent until the other side
/// goes; or does not even read for two seconds.
Step ThenDrop(Step step);
Step ThenReset(Step step);
Step ThenStall(Step step);
Step ThenDeafen(Step step);

class ScriptedServer {
 public:
  explicit ScriptedServer(std::vector<Step> script, Pace pace = Pace::kWhole);
  ScriptedServer(const ScriptedServer&) = delete;
  ScriptedServer& operator=(const ScriptedServer&) = delete;
  ScriptedServer(ScriptedServer&&) = delete;
  ScriptedServer& operator=(ScriptedServer&&) = delete;
  ~ScriptedServer();

  [[nodiscard]] int Port() const { return port_; }
  /// The port in the 16 bits of the component's property.
  [[nodiscard]] std::int16_t Port16() const { return static_cast<std::int16_t>(port_); }

  /// Waits for the end of the connection and says what went against the script: empty when every command
  /// came, in order, nothing else came but a QUIT behind the end of the script, and nobody connected a second
  /// time.
  [[nodiscard]] std::string Complaint();

  /// The message that was read, dots undone. After Complaint.
  [[nodiscard]] const std::string& Message() const { return message_; }

 private:
  using Clock = std::chrono::steady_clock;

  void Play();
  bool PlayStep(const Step& step);
  void AwaitEnd();
  void StayDeaf();
  bool AwaitCommand(const std::string& expected);
  bool AwaitBody(const Step& step);
  bool ReadLine(std::string& line);
  bool ReadSome();
  void Reply(const std::string& reply);
  void SendAll(const char* bytes, std::size_t size) const;
  void Complain(const std::string& text);

  std::vector<Step> script_;
  Pace pace_;
  int listener_ = -1;
  int connection_ = -1;
  int port_ = 0;
  Clock::time_point deadline_;
  std::string received_;
  std::string message_;
  std::string complaint_;
  std::thread thread_;
};

}  // namespace orve::support
