// A program that takes bytes on its standard input and may say something: started without a shell, bounded in
// time, never left behind.
//
// It inherits nothing from this process but the folder and the few variables that say who is calling, where,
// and in which language: no descriptors, no blocked or ignored signals. It runs in a process group of its
// own, so that ending it also ends what it started, and an interrupt typed at the terminal does not end a
// delivery halfway.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "posix/descriptor.h"

namespace orve::adapters::mapi {

class Child {
 public:
  using Milliseconds = std::chrono::milliseconds;

  /// Starts the program at a path, with these arguments after its name. Raises std::system_error with the
  /// system's number when it cannot be started.
  Child(const std::string& program, const std::vector<std::string>& arguments);
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  Child(Child&&) = delete;
  Child& operator=(Child&&) = delete;
  /// Ends the program if it still runs.
  ~Child();

  enum class Written { kAll, kClosed, kTimedOut };
  /// Hands over all of `bytes`. kClosed: the program has stopped reading; kTimedOut: it took nothing for that
  /// long. Raises std::system_error when writing fails for another reason.
  [[nodiscard]] Written Write(std::string_view bytes, Milliseconds stall);

  /// Ends the program's input: it may now act on what it got.
  void CloseInput() { input_.Close(); }

  struct End {
    int status = 0;  // exit status, when it ended by itself
    int signal = 0;  // the signal that ended it, else 0
  };
  /// Waits for the program to end; none when the time is up. Raises std::system_error when the system does
  /// not tell how it ended.
  [[nodiscard]] std::optional<End> Wait(Milliseconds timeout);

  /// Ends the program and what it started, at once and without letting it see the end of its input.
  void Kill() noexcept;

  /// The first few thousand bytes that the program wrote on its standard output and error.
  [[nodiscard]] const std::string& Output() const { return output_; }

 private:
  using Clock = std::chrono::steady_clock;

  void ReadOutput();
  [[nodiscard]] bool Ended();

  posix::Descriptor input_;
  posix::Descriptor outputEnd_;
  pid_t pid_ = -1;  // -1: none, or its end is known
  End end_;
  std::string output_;
};

}  // namespace orve::adapters::mapi
