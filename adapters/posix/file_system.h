// The file-system object and its text stream, as the send log uses them, on the files of Unix.
//
// Text goes out in the single-byte code page with carriage return and line feed, whatever the platform, so
// that the log of a machine reads the same wherever it was written. Several processes append to the same
// file without a lock: each line is handed to the system in one piece, at the file's end as it is then.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host/file_system.h"

namespace orve::adapters::posix {

class FileSystem : public host::FileSystem {
 public:
  /// False also for a path that cannot be looked at.
  [[nodiscard]] bool FolderExists(const std::string& cartella) override;
  /// True for anything that is there and is no folder.
  [[nodiscard]] bool FileExists(const std::string& file) override;
  /// Raises 5 for a mode or format other than appending and single-byte, 52 for a name that no file can have,
  /// 53 when the file is missing and not to be made, 70 when it may not be written, 76 when its folder is
  /// missing, 61 when the disk is full, 57 for any other failure. A pipe or socket is refused with 70, so
  /// that the call can never wait for a reader.
  [[nodiscard]] std::shared_ptr<host::TextStream> OpenTextFile(const std::string& file, std::int32_t modo,
                                                               bool crea, std::int32_t formato) override;
};

}  // namespace orve::adapters::posix
