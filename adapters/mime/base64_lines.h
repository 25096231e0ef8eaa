// Base64 as a message carries it: lines of 76 characters, each ended by CR LF.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace orve::adapters::mime {

/// Encodes bytes that come in pieces of any size.
class Base64Lines {
 public:
  /// Appends the lines that `bytes` complete to `out`.
  void Add(std::string_view bytes, std::string& out);
  /// Appends the last line to `out`, if any bytes are left for one.
  void Finish(std::string& out);

 private:
  static constexpr std::size_t kLineBytes = 57;

  std::array<char, kLineBytes> begun_{};  // of the line that is not complete yet
  std::size_t begunBytes_ = 0;
};

}  // namespace orve::adapters::mime
