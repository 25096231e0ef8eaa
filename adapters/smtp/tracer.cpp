#include "smtp/tracer.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "text/text.h"

namespace orve::adapters::smtp {

namespace {

constexpr std::string_view kMask = "***";

// A run of a secret is shorter than this, even letter by letter and in several codes.
constexpr std::size_t kRemembered = 1024;
constexpr std::size_t kCode = 4;            // "250 "
constexpr std::string_view kGivenUp = "*";  // sent by the client instead of an answer to a challenge
constexpr std::string_view kLeave = "QUIT";

bool IsCodeDigit(char c) {
  return c >= '0' && c <= '9';
}

bool HasCode(std::string_view line) {
  return line.size() >= kCode && std::all_of(line.begin(), line.begin() + 3, IsCodeDigit) &&
         (line[3] == ' ' || line[3] == '-');
}

/// A server's final answer to credentials, as opposed to a request for more.
bool IsOutcome(std::string_view line) {
  return line.size() >= 3 && (line[0] == '2' || line[0] == '4' || line[0] == '5') && IsCodeDigit(line[1]) &&
         IsCodeDigit(line[2]) && (line.size() == 3 || line[3] == ' ' || line[3] == '-');
}

bool IsRefusal(std::string_view line) {
  return !line.empty() && line[0] != '2' && line[0] != '3';
}

/// Without the reply code and the three-part one after it, which would break up what continues from line to
/// line.
std::string_view WithoutCodes(std::string_view line) {
  if (!HasCode(line)) return line;
  line.remove_prefix(kCode);
  const std::string_view status = line.substr(0, line.find(' '));
  const bool numbers =
      std::all_of(status.begin(), status.end(), [](char c) { return IsCodeDigit(c) || c == '.'; });
  if (numbers && std::count(status.begin(), status.end(), '.') == 2)
    line.remove_prefix(std::min(line.size(), status.size() + 1));
  return line;
}

template <class Action>
void ForEachLine(std::string_view lines, Action action) {
  while (!lines.empty()) {
    const std::size_t end = lines.find('\n');
    std::string_view line = lines.substr(0, end);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    action(line);
    lines = end == std::string_view::npos ? std::string_view() : lines.substr(end + 1);
  }
}

}  // namespace

Tracer::Tracer(Sink sink, std::string_view password) : sink_(std::move(sink)) {
  secrets_.Add(password);
}

void Tracer::Sent(std::string_view lines) {
  ForEachLine(lines, [this](std::string_view line) { Write("C: ", MaskedCommand(line)); });
}

std::string Tracer::Received(std::string_view lines) {
  std::string shown;
  bool masked = false;
  ForEachLine(lines, [&](std::string_view line) {
    const std::string reply = MaskedReply(line);
    Write("S: ", reply);
    masked = masked || reply != line;
    shown.append(shown.empty() ? "" : "\n").append(reply);
  });
  return masked ? shown : std::string(lines);
}

void Tracer::Note(std::string_view text) {
  if (!sink_) return;
  ForEachLine(text, [this](std::string_view line) { Write("* ", Masked(line)); });
}

std::string Tracer::Masked(std::string_view text) const {
  if (secrets_.Empty()) return std::string(text);
  std::string said;
  for (std::string_view rest = text; !rest.empty();) {
    const std::size_t end = rest.find(kBetweenLines);
    said.append(1, '\n').append(WithoutCodes(rest.substr(0, end)));
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + kBetweenLines.size());
  }
  return std::string(secrets_.In(said) ? kMask : text);
}

std::string Tracer::MaskedCommand(std::string_view line) {
  if (!text::EqualsIgnoreCase(line.substr(0, 5), "AUTH ")) {
    if (authenticating_ && line != kGivenUp && line != kLeave) {
      secrets_.AddCredentials(line);
      return std::string(kMask);
    }
    if (secrets_.MostlyIn(line)) return std::string(kMask);
    secrets_.Allow(line);
    return std::string(line);
  }
  authenticating_ = true;
  const std::size_t mechanismEnd = line.find(' ', 5);
  if (mechanismEnd == std::string_view::npos) return std::string(line);
  secrets_.AddCredentials(line.substr(mechanismEnd + 1));
  return std::string(line.substr(0, mechanismEnd + 1)) + std::string(kMask);
}

std::string Tracer::MaskedReply(std::string_view line) {
  const bool challenge = authenticating_ && !IsOutcome(line);
  if (!challenge && !CompletesSecret(line)) return std::string(line);
  return std::string(HasCode(line) ? line.substr(0, kCode) : "") + std::string(kMask);
}

/// True when `line` shows a secret, or completes what those before it began. In the latter case there is no
/// telling where it ends, so what follows is masked too until the beginning is out of range.
bool Tracer::CompletesSecret(std::string_view line) {
  // Without a trace only refusals are shown, in the text of a failure.
  if (secrets_.Empty() || (!sink_ && !IsRefusal(line))) return false;
  const std::string_view words = WithoutCodes(line);
  if (secrets_.In(words)) return true;
  said_.append(1, '\n').append(words);
  const bool complete = secrets_.In(said_);
  said_.erase(0, said_.size() - std::min(said_.size(), kRemembered));
  return complete;
}

void Tracer::Write(std::string_view prefix, std::string_view text) {
  try {
    sink_(std::string(prefix) + std::string(text));
  } catch (...) {  // NOLINT(bugprone-empty-catch): a trace that cannot be written must not stop a delivery
  }
}

}  // namespace orve::adapters::smtp
