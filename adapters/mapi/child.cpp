#include "mapi/child.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>
#include <utility>

#include "posix/deadline.h"
#include "posix/pipe_signal.h"

namespace orve::adapters::mapi {

namespace {

using posix::Descriptor;
using posix::MillisecondsUntil;

constexpr std::size_t kKeptOutput = 4096;

[[noreturn]] void Raise(int error, const char* what) {
  throw std::system_error(error, std::generic_category(), what);
}

struct Pipe {
  Descriptor read;
  Descriptor write;
};

// A descriptor other than the three standard ones, so that giving the child its own cannot overwrite it.
Descriptor AboveStandard(Descriptor plain) {
  if (plain.Number() > STDERR_FILENO) return plain;
  Descriptor moved(::fcntl(plain.Number(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
  if (moved.Number() < 0) Raise(errno, "fcntl");
  return moved;
}

Pipe NewPipe() {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) Raise(errno, "pipe2");
  Pipe pipe{Descriptor(ends[0]), Descriptor(ends[1])};
  pipe.read = AboveStandard(std::move(pipe.read));
  pipe.write = AboveStandard(std::move(pipe.write));
  return pipe;
}

void DoNotBlock(const Descriptor& descriptor) {
  const int flags = ::fcntl(descriptor.Number(), F_GETFL);
  if (flags < 0 || ::fcntl(descriptor.Number(), F_SETFL, flags | O_NONBLOCK) != 0) Raise(errno, "fcntl");
}

// What a mail command needs to know about its caller, and nothing else: this process's own variables may hold
// what is none of its business, database passwords for example. A name that ends in _ stands for all names
// that begin with it. Some commands fetch a password of their own, from a keyring or with a ticket.
constexpr std::array<std::string_view, 22> kKept = {"PATH",
                                                    "HOME",
                                                    "USER",
                                                    "LOGNAME",
                                                    "SHELL",
                                                    "TMPDIR",
                                                    "TZ",
                                                    "LANG",
                                                    "LC_",
                                                    "XDG_",
                                                    "LANGUAGE",
                                                    "MAILNAME",
                                                    "HOSTNAME",
                                                    "DISPLAY",
                                                    "XAUTHORITY",
                                                    "GPG_TTY",
                                                    "GNUPGHOME",
                                                    "KRB5CCNAME",
                                                    "SSH_AUTH_SOCK",
                                                    "WAYLAND_DISPLAY",
                                                    "PASSWORD_STORE_DIR",
                                                    "DBUS_SESSION_BUS_ADDRESS"};

std::vector<char*> CleanEnvironment() {
  std::vector<char*> kept;
  for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
    const std::string_view variable(*entry);
    const std::string_view name = variable.substr(0, variable.find('='));
    const bool wanted = std::any_of(kKept.begin(), kKept.end(), [&](std::string_view known) {
      return known.back() == '_' ? name.substr(0, known.size()) == known : name == known;
    });
    if (wanted) kept.push_back(*entry);
  }
  kept.push_back(nullptr);
  return kept;
}

// What the child does before it becomes the program.
class SpawnPlan {
 public:
  SpawnPlan(const Descriptor& input, const Descriptor& output) {
    Check(::posix_spawn_file_actions_init(&actions_));
    Check(::posix_spawnattr_init(&attributes_));
    Check(::posix_spawn_file_actions_adddup2(&actions_, input.Number(), STDIN_FILENO));
    Check(::posix_spawn_file_actions_adddup2(&actions_, output.Number(), STDOUT_FILENO));
    Check(::posix_spawn_file_actions_adddup2(&actions_, output.Number(), STDERR_FILENO));
    Check(::posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1));
    sigset_t none;
    sigset_t every;
    ::sigemptyset(&none);
    ::sigfillset(&every);
    Check(::posix_spawnattr_setsigmask(&attributes_, &none));
    Check(::posix_spawnattr_setsigdefault(&attributes_, &every));
    Check(::posix_spawnattr_setpgroup(&attributes_, 0));
    Check(::posix_spawnattr_setflags(&attributes_,
                                     POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP));
  }
  SpawnPlan(const SpawnPlan&) = delete;
  SpawnPlan& operator=(const SpawnPlan&) = delete;
  SpawnPlan(SpawnPlan&&) = delete;
  SpawnPlan& operator=(SpawnPlan&&) = delete;
  ~SpawnPlan() {
    ::posix_spawnattr_destroy(&attributes_);
    ::posix_spawn_file_actions_destroy(&actions_);
  }

  [[nodiscard]] pid_t Run(const std::string& program, std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), program);
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    pid_t pid = -1;
    Check(::posix_spawn(&pid, program.c_str(), &actions_, &attributes_, pointers.data(),
                        CleanEnvironment().data()));
    return pid;
  }

 private:
  static void Check(int error) {
    if (error != 0) Raise(error, "posix_spawn");
  }

  posix_spawn_file_actions_t actions_{};
  posix_spawnattr_t attributes_{};
};

}  // namespace

Child::Child(const std::string& program, const std::vector<std::string>& arguments) {
  Pipe input = NewPipe();
  Pipe output = NewPipe();
  DoNotBlock(input.write);
  DoNotBlock(output.read);
  pid_ = SpawnPlan(input.read, output.write).Run(program, arguments);
  input_ = std::move(input.write);
  outputEnd_ = std::move(output.read);
}

Child::~Child() {
  Kill();
}

Child::Written Child::Write(std::string_view bytes, Milliseconds stall) {
  const posix::PipeSignalHeld held;
  auto deadline = Clock::now() + stall;
  while (!bytes.empty()) {
    std::array<pollfd, 2> ends{{{input_.Number(), POLLOUT, 0}, {outputEnd_.Number(), POLLIN, 0}}};
    const int ready = ::poll(ends.data(), ends.size(), MillisecondsUntil(deadline));
    if (ready < 0 && errno != EINTR) Raise(errno, "poll");
    if (ready <= 0) {
      if (Clock::now() >= deadline) return Written::kTimedOut;
      continue;
    }
    if (ends[1].revents != 0) ReadOutput();
    if (ends[0].revents == 0) continue;
    const ssize_t count = ::write(input_.Number(), bytes.data(), bytes.size());
    if (count >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
      deadline = Clock::now() + stall;
    } else if (errno == EPIPE) {
      return Written::kClosed;
    } else if (errno != EAGAIN && errno != EINTR) {
      Raise(errno, "write");
    }
  }
  return Written::kAll;
}

// Waits for the program itself, not for the end of its output, which something it left running may hold open.
std::optional<Child::End> Child::Wait(Milliseconds timeout) {
  constexpr int kLook = 10;  // milliseconds between two checks
  const auto deadline = Clock::now() + timeout;
  while (!Ended()) {
    const int left = MillisecondsUntil(deadline);
    if (left == 0) return {};
    pollfd end{outputEnd_.Number(), POLLIN, 0};
    if (::poll(&end, 1, std::min(left, kLook)) > 0) ReadOutput();
  }
  ReadOutput();
  return end_;
}

void Child::Kill() noexcept {
  if (pid_ < 0) return;
  ::kill(-pid_, SIGKILL);
  int status = 0;
  while (::waitpid(pid_, &status, 0) < 0 && errno == EINTR) {
  }
  pid_ = -1;
  end_ = {0, SIGKILL};
  input_.Close();
}

// Reads everything available, keeps the beginning, and drops an output that has ended.
void Child::ReadOutput() {
  std::array<char, 4096> piece{};
  while (outputEnd_.Number() >= 0) {
    const ssize_t count = ::read(outputEnd_.Number(), piece.data(), piece.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 && errno == EAGAIN) return;
    if (count <= 0) {
      outputEnd_.Close();
      return;
    }
    const std::size_t room = kKeptOutput - std::min(kKeptOutput, output_.size());
    output_.append(piece.data(), std::min(room, static_cast<std::size_t>(count)));
  }
}

bool Child::Ended() {
  if (pid_ < 0) return true;
  int status = 0;
  const pid_t ended = ::waitpid(pid_, &status, WNOHANG);
  if (ended == 0 || (ended < 0 && errno == EINTR)) return false;
  pid_ = -1;
  if (ended < 0) Raise(errno, "waitpid");
  if (WIFEXITED(status)) end_.status = WEXITSTATUS(status);
  if (WIFSIGNALED(status)) end_.signal = WTERMSIG(status);
  return true;
}

}  // namespace orve::adapters::mapi
