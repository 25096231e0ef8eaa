// A directory of a test's own, removed with everything in it at the end.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace orve::support {

class TempDir {
 public:
  TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;
  TempDir(TempDir&&) = delete;
  TempDir& operator=(TempDir&&) = delete;
  ~TempDir();

  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
  /// Writes a file in the directory and returns its path.
  std::string Write(const std::string& name, std::string_view content) const;
  /// Makes a file of `size` zero bytes, which takes no space on disk, and returns its path.
  [[nodiscard]] std::string MakeLarge(const std::string& name, std::uintmax_t size) const;

 private:
  std::filesystem::path path_;
};

/// The whole content of a file; raises std::runtime_error when it cannot be read.
[[nodiscard]] std::string ReadFile(const std::filesystem::path& path);

}  // namespace orve::support
