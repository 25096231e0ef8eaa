// The key of the stored passwords: 32 random bytes in a file of their own, which nobody but the owner may
// read.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace orve::adapters::password {

class Chiave {
 public:
  static constexpr std::size_t kByte = 32;

  /// A new random key, for bound passwords only.
  [[nodiscard]] static Chiave Nuova();
  /// The key in the file. Raises 70 when the file is missing, is not a regular file, belongs to somebody
  /// else, can be read or written by others, or holds no key.
  [[nodiscard]] static Chiave Leggi(const std::string& file);

  Chiave(const Chiave&) = delete;
  Chiave& operator=(const Chiave&) = delete;
  Chiave(Chiave&& altra) noexcept;
  Chiave& operator=(Chiave&&) = delete;
  /// Wipes the bytes.
  ~Chiave();

  /// Writes the key into a new file with mode 600. Raises 70 when something already exists there
  /// or the file cannot be written.
  void Scrivi(const std::string& file) const;

  /// Rewrites the file that this key was read from, so that it opens bound passwords only: next to it first,
  /// then in its place, with its owner and mode. Raises 70, and leaves the file as it is, when
  /// it is a link or no longer holds this key, when something exists at Nascente that is not from an
  /// interrupted run, or when it cannot be written.
  void RiservaALegate(const std::string& file) const;
  /// Where a rewritten key is kept until it takes the place of `file`.
  [[nodiscard]] static std::string Nascente(const std::string& file);

  /// Whether nothing unbound was ever enciphered with it.
  [[nodiscard]] bool SoloLegate() const { return soloLegate_; }

  [[nodiscard]] const std::array<std::uint8_t, kByte>& Byte() const { return byte_; }

 private:
  Chiave() = default;

  void ScriviNuovo(const std::string& file, bool soloLegate) const;

  std::array<std::uint8_t, kByte> byte_{};
  bool soloLegate_ = true;
};

}  // namespace orve::adapters::password
