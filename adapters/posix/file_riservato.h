// Files that nobody but their owner may read: keys and passwords.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string>

#include "posix/descriptor.h"

namespace orve::adapters::posix {

/// An open file. `cosa` is what the file is, for the person.
class FileAperto {
 public:
  /// Raises 70: what the file is, its name and the system's reason.
  FileAperto(const std::string& cosa, const std::string& file, int modalita, mode_t permessi = 0);
  [[nodiscard]] int Numero() const { return descrittore_.Number(); }

 private:
  Descriptor descrittore_;
};

/// Ends the use of a file: raises 70 with what the file is, its name and the reason.
[[noreturn]] void FileInutilizzabile(const std::string& cosa, const std::string& file,
                                     const std::string& motivo);

/// The first `massimo` bytes of the file. Raises 70 when it is missing, is not a regular file, belongs to
/// somebody else, or can be read or written by others.
[[nodiscard]] std::string LeggiFileRiservato(const std::string& cosa, const std::string& file,
                                             std::size_t massimo);

/// Whether the owner of a file may be trusted with what this user reads and writes: the user, or root.
[[nodiscard]] bool ProprietarioFidato(uid_t proprietario);

/// Whether anybody at all could have planted a file under this name: its folder accepts files from everybody.
[[nodiscard]] bool CartellaDiTutti(const std::string& file);

/// Whether the owner of its folder, who may replace it at any time, may be trusted.
[[nodiscard]] bool CartellaFidata(const std::string& file);

}  // namespace orve::adapters::posix
