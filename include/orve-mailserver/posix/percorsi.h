// Paths in the system's own form, with `\` between their components, and in the form of Unix.
//
// The library's rules on paths know `\` only: the name of a file is what follows the last one. What comes
// from the library is therefore converted at the system call and nowhere else, and what a program hands to
// the library is converted once, at the entrance. A `\` can be part of a Unix file name; such a file has no
// name inside the library, and it is refused at the entrance rather than looked for in a folder that does not
// exist.
#pragma once

#include <string>
#include <string_view>

#include "orve-mailserver/api.h"

namespace orve::adapters::posix {

/// A path of the library in the form that system calls take: every `\` is a separator; `/` is accepted as one
/// too. Raises 52 for a path that is empty or holds a NUL, which no system call could take whole.
[[nodiscard]] ORVE_API std::string PercorsoUnix(std::string_view percorso);

/// A Unix path in the form that the library takes. Raises 52 for a path that is empty, holds a NUL, or names
/// a file or folder with a `\` in its name.
[[nodiscard]] ORVE_API std::string PercorsoLibreria(std::string_view percorso);

/// The same for a path relative to the current folder, made absolute and without "." and ".." where that is
/// possible without consulting the disk; symbolic links stay. A file in the root is given as `\.\name`, so
/// every name has a folder before it.
[[nodiscard]] ORVE_API std::string PercorsoLibreriaAssoluto(std::string_view percorso);

}  // namespace orve::adapters::posix
