#include "support/process.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <stdexcept>
#include <thread>

#include "posix/deadline.h"

namespace orve::support {

namespace {

using Clock = std::chrono::steady_clock;
using adapters::posix::MillisecondsUntil;

[[noreturn]] void BecomeProgram(const std::vector<char*>& arguments, int output, pid_t parent) {
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (::getppid() != parent) ::_exit(127);
  const int nothing = ::open("/dev/null", O_RDONLY);
  ::dup2(nothing, STDIN_FILENO);
  ::dup2(output, STDOUT_FILENO);
  ::dup2(output, STDERR_FILENO);
  ::execvp(arguments[0], arguments.data());
  ::_exit(127);
}

}  // namespace

Process::Process(const std::vector<std::string>& command) {
  std::vector<std::string> copies = command;
  std::vector<char*> arguments;
  arguments.reserve(copies.size() + 1);
  for (std::string& argument : copies) arguments.push_back(argument.data());
  arguments.push_back(nullptr);

  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe for " + command.front());
  const pid_t parent = ::getpid();
  pid_ = ::fork();
  if (pid_ == 0) BecomeProgram(arguments, ends[1], parent);
  ::close(ends[1]);
  pipe_ = adapters::posix::Descriptor(ends[0]);
  if (pid_ < 0) throw std::runtime_error("cannot start " + command.front());
}

Process::~Process() {
  Stop();
}

std::string Process::WaitForLine(std::string_view prefix, std::chrono::milliseconds timeout) {
  const auto deadline = Clock::now() + timeout;
  std::size_t line = 0;
  for (;;) {
    for (std::size_t end = 0; (end = output_.find('\n', line)) != std::string::npos; line = end + 1) {
      if (output_.compare(line, prefix.size(), prefix) == 0) return output_.substr(line, end - line);
    }
    if (!ReadSome(deadline)) {
      throw std::runtime_error("no line \"" + std::string(prefix) + "\" came; output: " + output_);
    }
  }
}

int Process::Wait(std::chrono::milliseconds timeout) {
  const auto deadline = Clock::now() + timeout;
  while (ReadSome(deadline)) {
  }
  while (!Ended()) {
    if (Clock::now() >= deadline) throw std::runtime_error("the program did not end; output: " + output_);
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  return WIFEXITED(status_) ? WEXITSTATUS(status_) : 128 + WTERMSIG(status_);
}

void Process::Stop() noexcept {
  if (ended_ || pid_ < 0) return;
  ::kill(pid_, SIGTERM);
  const auto patience = Clock::now() + std::chrono::seconds(3);
  while (!Ended()) {
    if (Clock::now() >= patience) ::kill(pid_, SIGKILL);
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
}

bool Process::ReadSome(Clock::time_point deadline) {
  pollfd entry{pipe_.Number(), POLLIN, 0};
  std::array<char, 8192> buffer{};
  for (;;) {
    const int ready = ::poll(&entry, 1, MillisecondsUntil(deadline));
    if (ready < 0 && errno == EINTR) continue;
    if (ready <= 0) return false;
    const ssize_t count = ::read(pipe_.Number(), buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    output_.append(buffer.data(), static_cast<std::size_t>(count));
    return true;
  }
}

bool Process::Ended() {
  if (!ended_) ended_ = ::waitpid(pid_, &status_, WNOHANG) == pid_;
  return ended_;
}

ProcessResult RunProgram(const std::vector<std::string>& command, std::chrono::milliseconds timeout) {
  Process process(command);
  const int status = process.Wait(timeout);
  return {status, process.Output()};
}

}  // namespace orve::support
