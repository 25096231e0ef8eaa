#include "support/temp_dir.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace orve::support {

TempDir::TempDir() {
  std::string pattern = (std::filesystem::temp_directory_path() / "orve-test-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary directory: " + pattern);
  path_ = pattern;
}

TempDir::~TempDir() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string TempDir::Write(const std::string& name, std::string_view content) const {
  const std::filesystem::path path = path_ / name;
  std::ofstream file(path, std::ios::binary);
  file.write(content.data(), static_cast<std::streamsize>(content.size()));
  if (!file.flush()) throw std::runtime_error("cannot write " + path.string());
  return path.string();
}

std::string TempDir::MakeLarge(const std::string& name, std::uintmax_t size) const {
  std::string path = Write(name, "");
  std::filesystem::resize_file(path, size);
  return path;
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path.string());
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace orve::support
