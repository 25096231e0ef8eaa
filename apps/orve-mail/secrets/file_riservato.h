// Files that nobody but their owner may read: the key of the stored passwords, the directory's password, and
// what the program writes about messages and their recipients.
#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>
#include <optional>
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

/// The first `massimo` bytes of the file. Raises ErroreProgramma (kNonUtilizzabile) when it is missing, is
/// not a regular file, belongs to somebody else, or can be read or written by others.
[[nodiscard]] std::string LeggiFileRiservato(const std::string& cosa, const std::string& file,
                                             std::size_t massimo);

/// Opens a file for writing, with `modalita` added to the flags: created with mode 600 when it is missing,
/// never through a link, and never another user's file except root's; root may write the file of any user
/// whose folder is not open to everybody. A system name for this program's own output (/dev/stdout) means
/// that output. Never waits for a pipe's reader. The descriptor is the caller's. Raises ErroreProgramma
/// (kFileMancante): `cosa`, the file and the reason.
[[nodiscard]] int ApriFileProprio(const std::string& cosa, const std::string& file, int modalita);

/// The same for lines that are appended to it. It may also be a terminal, /dev/null or the program's own
/// output, but nothing else that is not a file: a full pipe would hold up the send.
[[nodiscard]] int ApriFilePerRighe(const std::string& cosa, const std::string& file);

/// Whether both describe the same file, under whatever names.
[[nodiscard]] bool StessoFile(const struct stat& uno, const struct stat& altro);

/// The descriptor of the program's output, or of its errors, when it is this file.
[[nodiscard]] std::optional<int> UscitaDelProgramma(const struct stat& stato);

/// What something other than a regular file is, for the person.
[[nodiscard]] const char* NonFile(mode_t modo);

/// Whether the owner of a file may be trusted with what this user writes: the user, or root.
[[nodiscard]] bool ProprietarioFidato(uid_t proprietario);

/// Whether anybody at all could have planted a file under this name: its folder accepts files from everybody.
[[nodiscard]] bool CartellaDiTutti(const std::string& file);

/// Whether the owner of its folder, who may replace it at any time, may be trusted.
[[nodiscard]] bool CartellaFidata(const std::string& file);

}  // namespace orve::app
