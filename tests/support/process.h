// Another program, started by a test, bounded in time and ended with the object.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "posix/descriptor.h"

namespace orve::support {

/// Only so that a program that hangs is reported with its output before the test's own time is up.
constexpr std::chrono::seconds kLongestRun{100};

class Process {
 public:
  /// Starts `command`, a program and its arguments, with standard output and error in one pipe. The program
  /// ends with this process at the latest. Raises std::runtime_error when it cannot be started.
  explicit Process(const std::vector<std::string>& command);
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;
  Process(Process&&) = delete;
  Process& operator=(Process&&) = delete;
  /// Ends the program: asks first, then forces.
  ~Process();

  [[nodiscard]] pid_t Pid() const { return pid_; }

  /// Reads output up to the first line that begins with `prefix` and returns that line. Raises
  /// std::runtime_error, with the output so far, when the program ends or the time is up before it comes.
  std::string WaitForLine(std::string_view prefix, std::chrono::milliseconds timeout = kLongestRun);

  /// Waits for the end of the program and returns its exit status, or 128 and the signal's number. Raises
  /// std::runtime_error when the time is up.
  int Wait(std::chrono::milliseconds timeout = kLongestRun);

  /// Everything the program has said, as far as it has been read.
  [[nodiscard]] const std::string& Output() const { return output_; }

  /// Ends the program now.
  void Stop() noexcept;

 private:
  /// False at the end of the output.
  bool ReadSome(std::chrono::steady_clock::time_point deadline);
  [[nodiscard]] bool Ended();

  pid_t pid_ = -1;
  adapters::posix::Descriptor pipe_;
  int status_ = -1;
  bool ended_ = false;
  std::string output_;
};

struct ProcessResult {
  int status = 0;
  std::string output;  // standard output and error
};

/// Runs a program to its end.
ProcessResult RunProgram(const std::vector<std::string>& command,
                         std::chrono::milliseconds timeout = kLongestRun);

}  // namespace orve::support
