// The owner of a file descriptor.
#pragma once

namespace orve::adapters::posix {

/// Closes the descriptor with the object, and says nothing of a failure: where it matters whether the last
/// bytes arrived, the owner calls Close.
class Descriptor {
 public:
  Descriptor() noexcept = default;
  /// Takes over the descriptor; a negative number stands for none.
  explicit Descriptor(int number) noexcept : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(other.Release()) {}
  Descriptor& operator=(Descriptor&& other) noexcept;
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { Close(); }

  /// Negative for none.
  [[nodiscard]] int Number() const noexcept { return number_; }
  [[nodiscard]] explicit operator bool() const noexcept { return number_ >= 0; }
  /// Hands the descriptor over to the caller.
  [[nodiscard]] int Release() noexcept;
  /// Closes it, if there is one. Returns the error that the system gave, 0 for none; the descriptor is gone
  /// either way.
  int Close() noexcept;

 private:
  int number_ = -1;
};

}  // namespace orve::adapters::posix
