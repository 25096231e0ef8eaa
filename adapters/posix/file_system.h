// The file-system object and its text stream, as the send log uses them, on the files of Unix.
//
// Text goes out in the single-byte code page with carriage return and line feed, whatever the platform, so
// the log of a machine reads the same wherever it was written. Several processes append to the same file
// without a lock: each line is handed to the system in one piece and lands at what is then the end of the
// file.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "orve-mailserver/host/file_system.h"

namespace orve::adapters::posix {

class FileSystem : public host::FileSystem {
 public:
  /// Also false for a path that cannot be examined.
  [[nodiscard]] bool FolderExists(const std::string& cartella) override;
  /// True for anything that exists and is not a folder.
  [[nodiscard]] bool FileExists(const std::string& file) override;
  /// Raises 5 for a mode or format other than appending and single-byte, 52 for a name that no file can have,
  /// 53 when the file is missing and must not be created, 70 when it may not be written, 76 when its folder
  /// is missing, 61 when the disk is full, 57 for any other failure. A pipe or socket is refused with 70, so
  /// the call can never wait for a reader.
  [[nodiscard]] std::shared_ptr<host::TextStream> OpenTextFile(const std::string& file, std::int32_t modo,
                                                               bool crea, std::int32_t formato) override;
};

}  // namespace orve::adapters::posix
