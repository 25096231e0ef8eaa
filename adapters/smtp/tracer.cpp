#include "smtp/tracer.h"

#include <algorithm>
#include <utility>

#include "text/text.h"

namespace orve::adapters::smtp {

namespace {

constexpr std::string_view kMask = "***";

std::string Base64(std::string_view bytes) {
  static constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  unsigned bits = 0;
  int count = 0;
  for (const char byte : bytes) {
    bits = (bits << 8U) | static_cast<unsigned char>(byte);
    for (count += 8; count >= 6; count -= 6) text += kDigits[(bits >> (count - 6)) & 0x3fU];
  }
  if (count > 0) text += kDigits[(bits << (6 - count)) & 0x3fU];
  return text;  // without padding: it is only searched for
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

Tracer::Tracer(Sink sink, const std::vector<std::string>& secrets) : sink_(std::move(sink)) {
  for (const std::string& secret : secrets) {
    if (secret.empty()) continue;
    secrets_.push_back(secret);
    secrets_.push_back(Base64(secret));
  }
}

void Tracer::Sent(std::string_view lines) {
  if (!sink_) return;
  ForEachLine(lines, [this](std::string_view line) { Write("C: ", MaskedCommand(line)); });
}

void Tracer::Received(std::string_view lines) {
  if (!sink_) return;
  ForEachLine(lines, [this](std::string_view line) { Write("S: ", MaskedReply(line)); });
}

void Tracer::Note(std::string_view text) {
  if (!sink_) return;
  ForEachLine(text, [this](std::string_view line) { Write("* ", Masked(line)); });
}

std::string Tracer::Masked(std::string_view text) const {
  const bool secret = std::any_of(secrets_.begin(), secrets_.end(), [&](const std::string& s) {
    return text.find(s) != std::string_view::npos;
  });
  return std::string(secret ? kMask : text);
}

std::string Tracer::MaskedCommand(std::string_view line) {
  if (authenticating_) return std::string(kMask);
  if (!text::EqualsIgnoreCase(line.substr(0, 5), "AUTH ")) return std::string(line);
  authenticating_ = true;
  const std::size_t mechanismEnd = line.find(' ', 5);
  if (mechanismEnd == std::string_view::npos) return std::string(line);
  return std::string(line.substr(0, mechanismEnd + 1)) + std::string(kMask);
}

std::string Tracer::MaskedReply(std::string_view line) {
  if (authenticating_ && line.substr(0, 3) == "334") return "334 " + std::string(kMask);
  authenticating_ = false;
  std::string masked = Masked(line);
  const bool coded = line.size() > 3 && (line[3] == ' ' || line[3] == '-');
  return masked == line || !coded ? masked : std::string(line.substr(0, 4)) + masked;
}

void Tracer::Write(std::string_view prefix, std::string_view text) {
  try {
    sink_(std::string(prefix) + std::string(text));
  } catch (...) {  // NOLINT(bugprone-empty-catch): a trace that cannot be written must not stop a delivery
  }
}

}  // namespace orve::adapters::smtp
