#include "support/scripted_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <ostream>
#include <utility>

namespace orve::support {

namespace {

// Longer than any test waits for a silent server, short enough for a hanging test to fail on its own.
constexpr std::chrono::seconds kPatience{90};

bool Matches(const std::string& expected, const std::string& line) {
  if (expected.empty() || expected.back() != '*') return line == expected;
  return line.compare(0, expected.size() - 1, expected, 0, expected.size() - 1) == 0;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, Pace pace) {
  return out << (pace == Pace::kWhole ? "Whole" : pace == Pace::kByLine ? "ByLine" : "ByByte");
}

Step Say(const std::string& reply) {
  return {Step::Await::kNothing, "", reply};
}
Step Say(std::function<void()> action, const std::string& reply) {
  return {Step::Await::kNothing, "", reply, Step::Then::kGoOn, std::move(action)};
}
Step On(const std::string& command, const std::string& reply) {
  return {Step::Await::kCommand, command, reply};
}
Step On(const std::string& command, std::function<void()> action, const std::string& reply) {
  return {Step::Await::kCommand, command, reply, Step::Then::kGoOn, std::move(action)};
}
Step Body(const std::string& reply) {
  return {Step::Await::kBody, "", reply};
}
Step BrokenBody() {
  return {Step::Await::kBrokenBody, "", ""};
}

Step BrokenBody(std::function<void()> action) {
  return {Step::Await::kBrokenBody, "", "", Step::Then::kGoOn, std::move(action)};
}

Step ThenDrop(Step step) {
  step.then = Step::Then::kDrop;
  return step;
}

Step ThenReset(Step step) {
  step.then = Step::Then::kReset;
  return step;
}

Step ThenStall(Step step) {
  step.then = Step::Then::kStall;
  return step;
}

Step ThenDeafen(Step step) {
  step.then = Step::Then::kDeafen;
  return step;
}

/// One connection and its script.
class ScriptedServer::Conversation {
 public:
  Conversation(std::vector<Step> script, Pace pace) : script_(std::move(script)), pace_(pace) {}

  /// Plays the script, on a thread of its own.
  void Start(int connection) {
    connection_ = connection;
    thread_ = std::thread([this] {
      Play();
      closed_.set_value();
    });
  }
  /// Ends the conversation before it has begun.
  void NeverCame() {
    Complain("nobody connected");
    closed_.set_value();
  }
  void Join() {
    if (thread_.joinable()) thread_.join();
  }
  void AwaitClosed() { ended_.wait(); }
  /// Ends the deafness, if there is any.
  void Hear() {
    if (!hears_.exchange(true)) hearing_.set_value();
  }

  [[nodiscard]] const std::string& Complaint() const { return complaint_; }
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
  void Complain(const std::string& text) { complaint_ += text + "\n"; }

  std::vector<Step> script_;
  Pace pace_;
  int connection_ = -1;
  Clock::time_point deadline_ = Clock::now() + kPatience;
  std::string received_;
  std::string message_;
  std::string complaint_;
  std::promise<void> closed_;
  std::future<void> ended_ = closed_.get_future();
  std::atomic<bool> hears_ = false;
  std::promise<void> hearing_;
  std::thread thread_;
};

ScriptedServer::ScriptedServer(std::vector<Step> script, Pace pace)
    : ScriptedServer(std::vector<std::vector<Step>>{std::move(script)}, pace) {}

ScriptedServer::ScriptedServer(std::vector<std::vector<Step>> scripts, Pace pace) {
  for (std::vector<Step>& script : scripts) {
    conversations_.push_back(std::make_unique<Conversation>(std::move(script), pace));
  }
  constexpr int kWaiting = 8;
  listener_.Listen(kWaiting);
  thread_ = std::thread([this] { Accept(); });
}

ScriptedServer::~ScriptedServer() {
  if (thread_.joinable()) {
    // A test that failed early never connects: wake the accept.
    ::shutdown(listener_.Number(), SHUT_RDWR);
    thread_.join();
  }
  for (const auto& conversation : conversations_) {
    conversation->Hear();
    conversation->Join();
  }
}

std::string ScriptedServer::Complaint() {
  if (thread_.joinable()) thread_.join();
  std::string complaint;
  for (const auto& conversation : conversations_) {
    conversation->Hear();
    conversation->Join();
    complaint += conversation->Complaint();
  }
  pollfd entry{listener_.Number(), POLLIN, 0};
  if (::poll(&entry, 1, 0) > 0) complaint += "somebody connected once more\n";
  return complaint;
}

void ScriptedServer::AwaitClosed(std::size_t connection) {
  conversations_.at(connection)->AwaitClosed();
}

const std::string& ScriptedServer::Message() const {
  return conversations_.front()->Message();
}

void ScriptedServer::Accept() {
  const auto patience = std::chrono::duration_cast<std::chrono::milliseconds>(kPatience).count();
  const int on = 1;
  for (const auto& conversation : conversations_) {
    pollfd entry{listener_.Number(), POLLIN, 0};
    const bool came = ::poll(&entry, 1, static_cast<int>(patience)) > 0;
    const int connection = came ? ::accept4(listener_.Number(), nullptr, nullptr, SOCK_CLOEXEC) : -1;
    if (connection < 0) {
      conversation->NeverCame();
      continue;
    }
    ::setsockopt(connection, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    conversation->Start(connection);
  }
}

void ScriptedServer::Conversation::Play() {
  const bool toTheEnd =
      std::all_of(script_.begin(), script_.end(), [this](const Step& step) { return PlayStep(step); });
  if (toTheEnd) AwaitEnd();
  if (connection_ >= 0) ::close(connection_);
}

/// False when the script ends here.
bool ScriptedServer::Conversation::PlayStep(const Step& step) {
  switch (step.await) {
    case Step::Await::kNothing:
      break;
    case Step::Await::kCommand:
      if (!AwaitCommand(step.command)) return false;
      break;
    case Step::Await::kBody:
    case Step::Await::kBrokenBody:
      if (!AwaitBody(step)) return false;
      break;
  }
  const bool inMessage = step.await == Step::Await::kBody || step.await == Step::Await::kBrokenBody;
  if (step.before && !inMessage) step.before();
  if (!step.reply.empty()) Reply(step.reply);
  if (step.then == Step::Then::kGoOn) return true;
  if (step.then == Step::Then::kStall) {
    while (ReadSome()) {
    }
  } else if (step.then == Step::Then::kDeafen) {
    StayDeaf();
  } else if (step.then == Step::Then::kReset) {
    const linger hard{1, 0};
    ::setsockopt(connection_, SOL_SOCKET, SO_LINGER, &hard, sizeof hard);
  }
  ::close(connection_);
  connection_ = -1;
  if (&step != &script_.back()) Complain("steps stand after the end of the connection");
  return false;
}

void ScriptedServer::Conversation::AwaitEnd() {
  std::string line;
  while (ReadLine(line)) {
    if (line == "QUIT") {
      Reply("221 Fine");
    } else {
      Complain("after the script came: " + line);
    }
  }
}

void ScriptedServer::Conversation::StayDeaf() {
  // A hang-up is queued after what has not been read: only the test knows when to read on.
  hearing_.get_future().wait_until(deadline_);
  while (ReadSome()) received_.clear();
}

bool ScriptedServer::Conversation::AwaitCommand(const std::string& expected) {
  std::string line;
  if (!ReadLine(line)) {
    Complain("the connection ended instead of: " + expected);
    return false;
  }
  if (Matches(expected, line)) return true;
  Complain("instead of \"" + expected + "\" came: " + line);
  return false;
}

bool ScriptedServer::Conversation::AwaitBody(const Step& step) {
  const bool broken = step.await == Step::Await::kBrokenBody;
  std::string line;
  while (ReadLine(line)) {
    if (message_.empty() && step.before) step.before();
    if (line == ".") {
      if (broken) Complain("the message was ended by a dot");
      return !broken;
    }
    message_ += line.substr(line.starts_with('.') ? 1 : 0) + "\r\n";
  }
  if (!broken) Complain("the connection ended within the message");
  return broken;
}

/// A line without its end; false at the end of the connection.
bool ScriptedServer::Conversation::ReadLine(std::string& line) {
  std::size_t end = 0;
  while ((end = received_.find("\r\n")) == std::string::npos) {
    if (!ReadSome()) return false;
  }
  line = received_.substr(0, end);
  received_.erase(0, end + 2);
  return true;
}

bool ScriptedServer::Conversation::ReadSome() {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline_ - Clock::now()).count();
  pollfd entry{connection_, POLLIN, 0};
  if (::poll(&entry, 1, static_cast<int>(std::max<long long>(left, 0))) <= 0) {
    Complain("nothing came for too long");
    return false;
  }
  std::array<char, 65536> buffer{};
  const ssize_t count = ::recv(connection_, buffer.data(), buffer.size(), 0);
  if (count <= 0) return false;
  received_.append(buffer.data(), static_cast<std::size_t>(count));
  return true;
}

void ScriptedServer::Conversation::Reply(const std::string& reply) {
  std::string bytes = reply;
  if (bytes.size() < 2 || bytes.compare(bytes.size() - 2, 2, "\r\n") != 0) bytes += "\r\n";
  while (!bytes.empty()) {
    const std::size_t size = pace_ == Pace::kWhole    ? bytes.size()
                             : pace_ == Pace::kByLine ? bytes.find('\n') + 1
                                                      : 1;
    SendAll(bytes.data(), size);
    bytes.erase(0, size);
    if (pace_ != Pace::kWhole) std::this_thread::sleep_for(std::chrono::microseconds(500));
  }
}

void ScriptedServer::Conversation::SendAll(const char* bytes, std::size_t size) const {
  while (size > 0) {
    const ssize_t count = ::send(connection_, bytes, size, MSG_NOSIGNAL);
    if (count <= 0) return;  // the other side has gone: what counts is what it did before that
    bytes += count;
    size -= static_cast<std::size_t>(count);
  }
}

}  // namespace orve::support
