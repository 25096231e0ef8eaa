// Text that must not stay in memory longer than it is used.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "orve-mailserver/api.h"

namespace orve::adapters::secrets {

/// Bytes that are wiped when the object is destroyed or takes another value. Moving leaves an empty one
/// behind.
class ORVE_API Secret {
 public:
  Secret() = default;
  ///@{
  /// The text given, of which this is a copy.
  // Implicit, so that text can be passed where a secret is expected; the way back is explicit.
  Secret(std::string_view text) : bytes_(text.begin(), text.end()) {}  // NOLINT(google-explicit-constructor)
  Secret(const std::string& text) : Secret(std::string_view(text)) {}  // NOLINT(google-explicit-constructor)
  Secret(const char* text) : Secret(std::string_view(text)) {}         // NOLINT(google-explicit-constructor)
  ///@}
  /// `size` bytes, all 0, to be written through Data().
  explicit Secret(std::size_t size) : bytes_(size, '\0') {}
  Secret(const Secret&) = default;
  Secret(Secret&& other) noexcept : bytes_(std::move(other.bytes_)) { other.bytes_.clear(); }
  /// A copy; what was held is wiped.
  Secret& operator=(const Secret& other) {
    if (this != &other) *this = Secret(other);
    return *this;
  }
  /// Leaves an empty one behind; what was held is wiped.
  Secret& operator=(Secret&& other) noexcept {
    bytes_.swap(other.bytes_);
    other.Wipe();
    return *this;
  }
  ~Secret() { Wipe(); }

  /// The bytes, for as long as the object lives unchanged.
  [[nodiscard]] std::string_view View() const { return {bytes_.data(), bytes_.size()}; }
  /// Whether there are none.
  [[nodiscard]] bool Empty() const { return bytes_.empty(); }
  /// The same bytes, to be written.
  [[nodiscard]] char* Data() { return bytes_.data(); }
  bool operator==(const Secret&) const = default;

 private:
  void Wipe() noexcept;

  std::vector<char> bytes_;  // never grows, so that no part of it is left where it was
};

}  // namespace orve::adapters::secrets
