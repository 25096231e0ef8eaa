// One pass over a file that is attached to a message.
#pragma once

#include <cstddef>
#include <string>

namespace orve::adapters::mime {

/// Delivers as many bytes as the file held when it was opened: one that shrinks meanwhile would go out
/// truncated, and one that grows would have no end.
class FileReader {
 public:
  /// Opens the file; raises the errors of mime/attachment.h, which name it as `shown`; empty: by its path.
  explicit FileReader(const std::string& localPath, const std::string& shown = {});
  FileReader(const FileReader&) = delete;
  FileReader& operator=(const FileReader&) = delete;
  FileReader(FileReader&&) = delete;
  FileReader& operator=(FileReader&&) = delete;
  ~FileReader();

  /// Bytes read into `into`, 0 at the end. Raises the errors of mime/attachment.h, among them 75 when the end
  /// comes too early.
  [[nodiscard]] std::size_t Read(char* into, std::size_t size);

 private:
  std::string shown_;
  long long expected_ = 0;
  long long seen_ = 0;
  int file_;
};

}  // namespace orve::adapters::mime
