// A server that plays a script: for each command expected the reply to give, whole, by line or byte by byte,
// and the ways to misbehave. It accepts one connection for each script and says at the end what did not
// follow it.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <future>
#include <iosfwd>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "support/loopback.h"

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
  std::function<void()> before = nullptr;  // run before the reply, or when a message has begun
};

/// Says something at once: the greeting.
Step Say(const std::string& reply);
/// Runs `action`, which may wait for something, and then says it.
Step Say(std::function<void()> action, const std::string& reply);
/// Waits for a command and answers.
Step On(const std::string& command, const std::string& reply);
/// The same, running `action` before the answer.
Step On(const std::string& command, std::function<void()> action, const std::string& reply);
/// Reads a message up to its lone dot and answers.
Step Body(const std::string& reply);
/// Reads until the connection ends; a lone dot is against the script.
Step BrokenBody();
/// The same, running `action` when the first line has come.
Step BrokenBody(std::function<void()> action);

/// Once the step is done, closes the connection; breaks it with a reset; goes silent until the other side
/// leaves; or does not even read until the test asks for the complaint.
Step ThenDrop(Step step);
Step ThenReset(Step step);
Step ThenStall(Step step);
Step ThenDeafen(Step step);

class ScriptedServer {
 public:
  explicit ScriptedServer(std::vector<Step> script, Pace pace = Pace::kWhole);
  /// Plays the scripts to the connections in the order in which these are made, each independently.
  explicit ScriptedServer(std::vector<std::vector<Step>> scripts, Pace pace = Pace::kWhole);
  ScriptedServer(const ScriptedServer&) = delete;
  ScriptedServer& operator=(const ScriptedServer&) = delete;
  ScriptedServer(ScriptedServer&&) = delete;
  ScriptedServer& operator=(ScriptedServer&&) = delete;
  ~ScriptedServer();

  [[nodiscard]] int Port() const { return listener_.Port(); }
  /// The port in the 16 bits of the component's property.
  [[nodiscard]] std::int16_t Port16() const { return static_cast<std::int16_t>(Port()); }

  /// Waits for the end of all connections and says what went against the scripts: empty when every command
  /// came, in order, nothing else came but a QUIT after the end of a script, and nobody connected again.
  [[nodiscard]] std::string Complaint();

  /// Waits until this side has closed the connection of that script.
  void AwaitClosed(std::size_t connection);

  /// The messages that were read over the connection of the first script, with the dots unstuffed. After
  /// Complaint.
  [[nodiscard]] const std::string& Message() const;

 private:
  class Conversation;

  void Accept();

  LoopbackSocket listener_;
  std::vector<std::unique_ptr<Conversation>> conversations_;
  std::thread thread_;
};

}  // namespace orve::support
