// Files that nobody but their owner may read: the key of the stored passwords, the directory's password.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string>

namespace orve::app {

/// An open file. `cosa` is what the file is, for the person.
class FileAperto {
 public:
  /// Raises ErroreProgramma (kNonUtilizzabile).
  FileAperto(const std::string& cosa, const std::string& file, int modalita, mode_t permessi = 0);
  FileAperto(const FileAperto&) = delete;
  FileAperto& operator=(const FileAperto&) = delete;
  FileAperto(FileAperto&&) = delete;
  FileAperto& operator=(FileAperto&&) = delete;
  ~FileAperto();
  [[nodiscard]] int Numero() const { return numero_; }

 private:
  int numero_;
};

/// The first `massimo` bytes of the file. Raises ErroreProgramma (kNonUtilizzabile) when it is missing, is no
/// plain file, belongs to somebody else, or can be read or written by others.
[[nodiscard]] std::string LeggiFileRiservato(const std::string& cosa, const std::string& file,
                                             std::size_t massimo);

}  // namespace orve::app
