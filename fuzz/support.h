// What the fuzzers share: cutting an input into texts, and ending the run when a property does not hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orve::fuzz {

/// Ends the process with the property's words when it does not hold, so that the input is kept.
void Require(bool holds, std::string_view property);
/// The same for two texts that must agree, which are shown.
void RequireSame(std::string_view found, std::string_view wanted, std::string_view property);

/// An input as texts. They are separated by bytes 1F, which no subject gives a meaning to; missing ones are
/// empty, and the last one runs to the end.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : rest_(reinterpret_cast<const char*>(data), size) {}

  [[nodiscard]] std::string_view Text();
  /// The byte at the front, 0 when there is none.
  [[nodiscard]] std::uint8_t Byte();
  [[nodiscard]] std::string_view Rest() const { return rest_; }

 private:
  std::string_view rest_;
};

/// The parts between the separators, at least one.
[[nodiscard]] std::vector<std::string> Parts(std::string_view text, char separator);

/// Every `from` that is not empty replaced by `to`, from left to right, in the plainest way. ASCII letters
/// are alike in both cases when `ignoreCase` is set.
[[nodiscard]] std::string PlainReplace(std::string_view text, std::string_view from, std::string_view to,
                                       bool ignoreCase);

/// A copy that ends where the text ends, so that reading past the end is noticed.
class Exact {
 public:
  explicit Exact(std::string_view text);
  [[nodiscard]] std::string_view View() const { return {bytes_.get(), size_}; }

 private:
  std::unique_ptr<char[]> bytes_;  // NOLINT(modernize-avoid-c-arrays): no room past the end
  std::size_t size_;
};

}  // namespace orve::fuzz
