#include "mime/base64_lines.h"

#include <algorithm>
#include <cstring>

namespace orve::adapters::mime {

namespace {

constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::size_t kLineCharacters = 76;
constexpr std::string_view kLineEnd = "\r\n";

using Pair = std::array<char, 2>;

/// Both characters of each twelve bits: half as many steps as one character at a time.
constexpr std::array<Pair, 4096> Pairs() {
  std::array<Pair, 4096> pairs{};
  for (std::size_t i = 0; i < pairs.size(); ++i) pairs[i] = {kDigits[i >> 6U], kDigits[i & 0x3fU]};
  return pairs;
}
constexpr std::array<Pair, 4096> kPairs = Pairs();

/// Encodes `count` groups of three bytes; returns the end of what it wrote.
char* EncodeGroups(const char* from, std::size_t count, char* to) {
  for (; count > 0; --count, from += 3, to += 4) {
    const unsigned bits = static_cast<unsigned>(static_cast<unsigned char>(from[0])) << 16U |
                          static_cast<unsigned>(static_cast<unsigned char>(from[1])) << 8U |
                          static_cast<unsigned>(static_cast<unsigned char>(from[2]));
    std::memcpy(to, kPairs[bits >> 12U].data(), 2);
    std::memcpy(to + 2, kPairs[bits & 0xfffU].data(), 2);
  }
  return to;
}

}  // namespace

void Base64Lines::Add(std::string_view bytes, std::string& out) {
  if (bytes.empty()) return;
  if (begunBytes_ > 0) {
    const std::size_t missing = std::min(kLineBytes - begunBytes_, bytes.size());
    std::memcpy(begun_.data() + begunBytes_, bytes.data(), missing);
    begunBytes_ += missing;
    bytes.remove_prefix(missing);
    if (begunBytes_ < kLineBytes) return;
    Finish(out);
  }
  const std::size_t lines = bytes.size() / kLineBytes;
  const std::size_t start = out.size();
  out.resize(start + lines * (kLineCharacters + kLineEnd.size()));
  char* to = out.data() + start;
  for (std::size_t i = 0; i < lines; ++i) {
    to = EncodeGroups(bytes.data() + i * kLineBytes, kLineBytes / 3, to);
    to = std::copy(kLineEnd.begin(), kLineEnd.end(), to);
  }
  bytes.remove_prefix(lines * kLineBytes);
  std::copy(bytes.begin(), bytes.end(), begun_.begin());
  begunBytes_ = bytes.size();
}

void Base64Lines::Finish(std::string& out) {
  if (begunBytes_ == 0) return;
  const std::size_t padding = (3 - begunBytes_ % 3) % 3;
  std::fill_n(begun_.begin() + static_cast<std::ptrdiff_t>(begunBytes_), padding, '\0');
  const std::size_t groups = (begunBytes_ + padding) / 3;
  const std::size_t start = out.size();
  out.resize(start + groups * 4);
  EncodeGroups(begun_.data(), groups, out.data() + start);
  out.replace(out.size() - padding, padding, padding, '=');
  out.append(kLineEnd);
  begunBytes_ = 0;
}

}  // namespace orve::adapters::mime
