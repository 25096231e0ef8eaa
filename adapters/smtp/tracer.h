// The trace of a dialogue, line by line and without secrets.
//
// Two guards keep credentials out: everything from AUTH until the login is over is masked by its place in the
// dialogue, and anything else said by either side is masked where it repeats the password or what was sent in
// AUTH.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "secrets/secret_finder.h"

namespace orve::adapters::smtp {

class Tracer {
 public:
  using Sink = std::function<void(std::string_view)>;

  /// Separates the lines of a reply that was made into one text.
  static constexpr std::string_view kBetweenLines = " / ";

  /// Neither `password`, which may be empty, nor what is sent in AUTH ever shows.
  Tracer(Sink sink, std::string_view password);

  /// Where lines go from now on; empty: nowhere.
  void Into(Sink sink) { sink_ = std::move(sink); }

  /// One or more lines that were sent, or received, with or without line ends. For received lines, the result
  /// is what may be shown elsewhere: the same text, or the single lines if one of them is masked.
  void Sent(std::string_view lines);
  std::string Received(std::string_view lines);
  /// No more credentials are sent unless another AUTH is. Only the sender knows that: whatever the server
  /// says, the client may take it for a request for more.
  void LoginOver() { authenticating_ = false; }
  /// Anything else that happened.
  void Note(std::string_view text);

  /// `text`, in which kBetweenLines joins the lines of a reply, or "***" when it shows a secret.
  [[nodiscard]] std::string Masked(std::string_view text) const;

 private:
  [[nodiscard]] std::string MaskedCommand(std::string_view line);
  [[nodiscard]] std::string MaskedReply(std::string_view line);
  [[nodiscard]] bool CompletesSecret(std::string_view line);
  void Write(std::string_view prefix, std::string_view text);

  Sink sink_;
  secrets::SecretFinder secrets_;
  std::string said_;  // recently said by the server, without codes: a secret may come in several lines
  bool authenticating_ = false;
};

}  // namespace orve::adapters::smtp
