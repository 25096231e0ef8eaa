// Base64 as a message carries it: lines of 76 characters, each ended by CR LF.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace orve::adapters::mime {

/// Encodes bytes that arrive in pieces of any size.
class Base64Lines {
 public:
  Base64Lines();
  Base64Lines(const Base64Lines&) = delete;
  Base64Lines& operator=(const Base64Lines&) = delete;
  Base64Lines(Base64Lines&&) = delete;
  Base64Lines& operator=(Base64Lines&&) = delete;
  ~Base64Lines();

  /// Appends the lines that `bytes` complete to `out`, and the beginning of the next.
  void Add(std::string_view bytes, std::string& out);
  /// Appends the rest of the last line to `out`, if any bytes are left for one.
  void Finish(std::string& out);

 private:
  struct Encoder;
  std::unique_ptr<Encoder> encoder_;
};

}  // namespace orve::adapters::mime
