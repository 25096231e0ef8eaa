// The trace of a dialogue, line by line and without secrets.
//
// Two guards keep credentials out: everything between AUTH and its final reply is masked by its place in the
// dialogue, and a line of the server's that repeats a secret is masked by its content.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orve::adapters::smtp {

class Tracer {
 public:
  using Sink = std::function<void(std::string_view)>;

  /// `secrets` are texts that must never show, in clear or in base64.
  Tracer(Sink sink, const std::vector<std::string>& secrets);

  /// Where lines go from now on; empty: nowhere.
  void Into(Sink sink) { sink_ = std::move(sink); }

  /// One or more lines that were sent, or received, with or without line ends.
  void Sent(std::string_view lines);
  void Received(std::string_view lines);
  /// What happened besides.
  void Note(std::string_view text);

  /// `text` itself, or "***" when it holds a secret.
  [[nodiscard]] std::string Masked(std::string_view text) const;

 private:
  [[nodiscard]] std::string MaskedCommand(std::string_view line);
  [[nodiscard]] std::string MaskedReply(std::string_view line);
  void Write(std::string_view prefix, std::string_view text);

  Sink sink_;
  std::vector<std::string> secrets_;
  bool authenticating_ = false;
};

}  // namespace orve::adapters::smtp
