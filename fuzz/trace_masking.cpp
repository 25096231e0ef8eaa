// The trace of a dialogue with a server that repeats the password: in any of the forms that programs undo,
// one inside the other, spread over words, lines and replies, with anything before and after it. And of a
// login during which it says anything at all.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "smtp/tracer.h"
#include "support.h"

namespace orve::fuzz {
namespace {

using adapters::smtp::Tracer;

constexpr std::string_view kPassword = "Parola.Segreta-42";
constexpr std::string_view kToken = "AHV0ZW50ZQBQYXJvbGEuU2VncmV0YS00Mg==";
constexpr std::size_t kRun =
    8;  // characters that count as a secret by themselves, in a secret of this length

std::string EachByte(const char* format, std::string_view bytes) {
  std::string text;
  for (const char byte : bytes) {
    std::array<char, 16> one{};
    std::snprintf(one.data(), one.size(), format, static_cast<unsigned>(static_cast<unsigned char>(byte)));
    text += one.data();
  }
  return text;
}

std::string Base64Of(std::string_view bytes) {
  static constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t at = 0; at < bytes.size(); at += 3) {
    unsigned group = 0;
    for (std::size_t i = 0; i < 3; ++i) {
      group = group << 8U | (at + i < bytes.size() ? static_cast<unsigned char>(bytes[at + i]) : 0U);
    }
    const std::size_t digits = std::min<std::size_t>(4, bytes.size() - at + 1);
    for (std::size_t i = 0; i < 4; ++i) text += i < digits ? kDigits[(group >> (18 - 6 * i)) & 0x3fU] : '=';
  }
  return text;
}

std::string Encoded(unsigned form, const std::string& text) {
  switch (form % 8) {
    case 0:
      return Base64Of(text);
    case 1:
      return Base64Of("x" + text);
    case 2:
      return Base64Of("xy" + text);
    case 3:
      return EachByte("%02x", text);
    case 4:
      return EachByte("%02X", text);
    case 5:
      return EachByte("%%%02X", text);
    case 6:
      return EachByte("&#%u;", text);
    default:
      return text;
  }
}

/// The lines in pieces of that size, each after a code.
std::string InPieces(const std::string& text, std::size_t size) {
  std::string lines;
  for (std::size_t at = 0; at < text.size(); at += size) lines += "550-" + text.substr(at, size) + "\r\n";
  return lines;
}

/// The part of the server's words that is in the trace, put together again.
std::string Shown(const std::vector<std::string>& trace) {
  std::string shown;
  for (const std::string& line : trace) {
    if (line.starts_with("S: 550-") && line != "S: 550-***") shown += line.substr(7);
  }
  return shown;
}

/// The text of a failure, put together from refusals as a session does.
std::string Refusals(Tracer& tracer, const std::string& text, std::size_t size) {
  std::string joined;
  for (std::size_t at = 0; at < text.size(); at += size) {
    if (!joined.empty()) joined += "; ";
    joined += "RCPT TO:<b@x.example>: " + tracer.Received("550 " + text.substr(at, size));
  }
  return joined;
}

/// The part of the server's words that is in such a text.
std::string Told(const std::string& refusals) {
  static constexpr std::string_view kBefore = "RCPT TO:<b@x.example>: 550 ";
  std::string told;
  for (std::size_t at = refusals.find(kBefore); at != std::string::npos;) {
    const std::size_t next = refusals.find(kBefore, at + 1);
    const std::size_t end =
        next == std::string::npos ? refusals.size() : next - std::string_view("; ").size();
    const std::string words = refusals.substr(at + kBefore.size(), end - at - kBefore.size());
    if (words != "***") told += words;
    at = next;
  }
  return told;
}

/// A login over which the server says `words`, as often as it is asked.
void LogIn(std::string_view words) {
  std::vector<std::string> trace;
  Tracer tracer([&](std::string_view line) { trace.emplace_back(line); }, kPassword);
  tracer.Sent("AUTH LOGIN\r\n");
  tracer.Received(words);
  tracer.Sent("dXRlbnRl\r\n");
  tracer.Received(words);
  const std::string password = Base64Of(kPassword);
  tracer.Sent(password + "\r\n");
  tracer.LoginOver();
  tracer.Sent("MAIL FROM:<a@x.example>\r\n");
  tracer.Received("550 " + password + "\r\n");
  std::size_t commands = 0;
  for (const std::string& line : trace) {
    if (line.starts_with("C: ")) ++commands;
    Require(line.find(password) == std::string::npos, "no line shows the password that was sent");
    Require(line != "C: dXRlbnRl", "no line shows the user that was sent");
  }
  Require(commands == 4, "every command is told");
}

}  // namespace
}  // namespace orve::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orve::fuzz;
  if (size > 4096) return 0;
  LogIn({reinterpret_cast<const char*>(data), size});
  Input input(data, size);
  const unsigned flags = input.Byte();
  const std::size_t from = input.Byte() % (kPassword.size() - kRun + 1);
  const std::size_t length = kRun + input.Byte() % (kPassword.size() - kRun - from + 1);
  std::string repeated((flags & 1U) != 0 ? kToken : kPassword.substr(from, length));
  const unsigned depth = flags >> 1U & 3U;  // codes, one inside the other
  for (unsigned i = 0; i < depth; ++i) repeated = Encoded(input.Byte(), repeated);
  const std::size_t piece = 1 + input.Byte() % 64U;
  if (repeated.size() / piece + repeated.size() > 1000) return 0;  // longer than the trace looks back
  std::vector<std::string> trace;
  Tracer tracer([&](std::string_view line) { trace.emplace_back(line); }, kPassword);
  tracer.Sent("AUTH PLAIN " + std::string(kToken) + "\r\n");
  tracer.Received("235 Ok\r\n");
  tracer.LoginOver();
  tracer.Received(input.Rest());  // whatever else the server says
  trace.clear();
  tracer.Received("250 Ok\r\n" + InPieces(repeated, piece));
  Require(Shown(trace).find(repeated) == std::string::npos,
          "no form of a run of the secret stands in the trace");

  tracer.Received(input.Rest());
  for (const std::string& line : trace) {
    for (std::size_t at = 0; at + kRun <= kPassword.size(); ++at) {
      Require(line.find(kPassword.substr(at, kRun)) == std::string::npos,
              "no line shows a run of the secret");
    }
    Require(line.find(kToken.substr(0, kRun * 2)) == std::string::npos,
            "no line shows what was sent as credentials");
  }
  for (const bool traced : {false, true}) {
    Tracer other(traced ? Tracer::Sink([](std::string_view) {}) : Tracer::Sink(), kPassword);
    other.Sent("AUTH PLAIN " + std::string(kToken) + "\r\n");
    other.LoginOver();
    Require(Told(Refusals(other, repeated, piece)).find(repeated) == std::string::npos,
            "the text of several refusals shows no form of the secret");
  }
  const std::string words = std::string(input.Rest().substr(0, 100)) + " / 550 " + repeated;
  Require(tracer.Masked(words) == "***", "the text of a failure shows no form of the secret");
  return 0;
}
